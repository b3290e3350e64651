/// @file
/// An optional value on the heap: copies are independent, and what is absent stays absent.
#include "qilib/heapoptional.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using qi::HeapOptional;

TEST(HeapOptional, IsAbsentUntilMade) {
  HeapOptional<std::string> part;
  EXPECT_FALSE(part);
  EXPECT_FALSE(part.has_value());
  EXPECT_THROW(part.value(), std::bad_optional_access);
  part.emplace() = "made";
  EXPECT_TRUE(part);
  EXPECT_EQ(*part, "made");
  EXPECT_EQ(part.value(), "made");
  part.reset();
  EXPECT_FALSE(part);
}

TEST(HeapOptional, EmplaceBeginsAfresh) {
  HeapOptional<std::string> part;
  part.emplace() = "made";
  EXPECT_EQ(part.emplace(), "");
}

TEST(HeapOptional, CopiesAreIndependent) {
  HeapOptional<std::string> part;
  part.emplace() = "first";
  HeapOptional<std::string> copy = part;
  *copy = "second";
  EXPECT_EQ(*part, "first");
  part = copy;
  copy->clear();
  EXPECT_EQ(*part, "second");
  const HeapOptional<std::string>& same = part;
  part = same;
  EXPECT_EQ(*part, "second");
  part = HeapOptional<std::string>{};
  EXPECT_FALSE(part);
}

TEST(HeapOptional, TakesTheRoomOfAPointer) { EXPECT_EQ(sizeof(HeapOptional<std::string>), sizeof(void*)); }

}  // namespace
