/// @file
/// Words turn between file and host order, whatever their number and place.
#include "qilib/byteorder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <numeric>

#include "qilib/files.h"
#include "qilib/words.h"
#include "tests/support/bytes.h"

namespace {

TEST(EndianSwap4, TurnsFileOrderIntoNumbersForAnyCount) {
  for (const std::size_t words : {0u, 1u, 2u, 3u, 4u, 7u, 64u, 1000u}) {
    Bytes file;
    Words expected(words);
    std::iota(expected.begin(), expected.end(), 0x12345678u);
    for (const Word word : expected) file.u32(word);
    Words host(words);
    if (words != 0) std::memcpy(host.data(), file.str().data(), file.size());
    endianSwap4(host.data(), host.size() * 4);
    EXPECT_EQ(host, expected);
    endianSwap4(host.data(), host.size() * 4);
    EXPECT_TRUE(words == 0 || std::memcmp(host.data(), file.str().data(), file.size()) == 0);
  }
}

TEST(EndianSwap4, LeavesBytesAfterTheLastWholeWord) {
  char bytes[] = "abcdefg";
  endianSwap4(bytes, 7);
  EXPECT_STREQ(bytes, "dcbaefg");
}

TEST(EndianSwap4, TakesAnyAddress) {
  char bytes[] = "xabcd";
  endianSwap4(bytes + 1, 4);
  EXPECT_STREQ(bytes, "xdcba");
}

TEST(FileWords, ComeBackAndLeaveTheCallersMemoryAlone) {
  const qi::File file(std::tmpfile());
  Words words(10000);
  std::iota(words.begin(), words.end(), 7u);
  const Words before = words;
  EXPECT_EQ(fwriteEndianSwap4(words.data(), 40, 1000, file.get()), 1000u);
  EXPECT_EQ(words, before);
  std::rewind(file.get());
  EXPECT_EQ(std::fgetc(file.get()), 0) << "the most significant byte comes first";
  std::rewind(file.get());
  Words read(10001);
  EXPECT_EQ(freadEndianSwap4(read.data(), 40004, file.get()), 40000u) << "what the file has";
  read.pop_back();
  EXPECT_EQ(read, before);
}

TEST(FileWords, AWriteThatFailsReturnsTheElementsThatWereWritten) {
  const qi::File full(std::fopen("/dev/full", "wb"));
  ASSERT_TRUE(full);
  std::setvbuf(full.get(), nullptr, _IONBF, 0);
  const Words words(10);
  EXPECT_EQ(fwriteEndianSwap4(words.data(), 8, 5, full.get()), 0u);
}

}  // namespace
