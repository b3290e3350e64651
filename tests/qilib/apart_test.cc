/// @file
/// A part held apart is a value: copies are independent, and absent is absent.
#include "qilib/apart.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using qi::Apart;

TEST(Apart, IsAbsentUntilMade) {
  Apart<std::string> part;
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

TEST(Apart, EmplaceBeginsAfresh) {
  Apart<std::string> part;
  part.emplace() = "made";
  EXPECT_EQ(part.emplace(), "");
}

TEST(Apart, CopiesAreIndependent) {
  Apart<std::string> part;
  part.emplace() = "first";
  Apart<std::string> copy = part;
  *copy = "second";
  EXPECT_EQ(*part, "first");
  part = copy;
  copy->clear();
  EXPECT_EQ(*part, "second");
  const Apart<std::string>& same = part;
  part = same;
  EXPECT_EQ(*part, "second");
  part = Apart<std::string>{};
  EXPECT_FALSE(part);
}

TEST(Apart, TakesTheRoomOfAPointer) { EXPECT_EQ(sizeof(Apart<std::string>), sizeof(void*)); }

}  // namespace
