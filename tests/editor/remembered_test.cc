/// @file
/// What is remembered from one run to the next, and files of it that somebody has spoilt.
#include "editor/remembered.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/support/files.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

class Remembering : public testing::Test {
 protected:
  const ScratchDirectory directory_;
  const std::filesystem::path folder_ = directory_ / "state/quileditor";
};

TEST_F(Remembering, FilesComeBackNewestFirstAndOnce) {
  Remembered first(folder_);
  for (const char* file : {"/a", "/b", "/a", "/c d"}) first.addFile(file);
  EXPECT_THAT(first.files(), ElementsAre("/c d", "/a", "/b"));
  EXPECT_THAT(Remembered(folder_).files(), ElementsAre("/c d", "/a", "/b"));
}

TEST_F(Remembering, TenFilesAreEnough) {
  Remembered first(folder_);
  for (int i = 0; i < 12; ++i) first.addFile("/" + std::to_string(i));
  EXPECT_EQ(first.files().size(), 10u);
  EXPECT_EQ(first.files().back(), "/2");
}

TEST_F(Remembering, WhatAnotherRunHasAddedStays) {
  Remembered first(folder_), second(folder_);
  first.addFile("/first");
  second.addFile("/second");
  EXPECT_THAT(second.files(), ElementsAre("/second", "/first"));
}

TEST_F(Remembering, ANameOfTwoLinesIsNotKept) {
  Remembered first(folder_);
  first.addFile("/a\n/b");
  EXPECT_THAT(Remembered(folder_).files(), IsEmpty());
}

TEST_F(Remembering, NumbersComeBack) {
  Remembered first(folder_);
  first.setNumber("width", 1040);
  first.setNumber("x", -3);
  first.keepNumbers();
  const Remembered second(folder_);
  EXPECT_EQ(second.number("width"), 1040);
  EXPECT_EQ(second.number("x"), -3);
  EXPECT_EQ(second.number("height"), std::nullopt);
}

TEST_F(Remembering, NonsenseIsPassedOver) {
  std::filesystem::create_directories(folder_);
  write_file(folder_ / "window", "x\nx 99999999999999\ny \nz 4z\n\n width 3\nheight 7\nend 5");
  write_file(folder_ / "recent", "relative\n\n/good\n/nul\0byte\n/good\n/cut"s);
  const Remembered read(folder_);
  EXPECT_THAT(read.files(), ElementsAre("/good"));
  for (const char* name : {"x", "y", "z", "end", "width"}) EXPECT_EQ(read.number(name), std::nullopt) << name;
  EXPECT_EQ(read.number("height"), 7);

  write_file(folder_ / "recent", std::string(1'000'000, 'x'));
  EXPECT_THAT(Remembered(folder_).files(), IsEmpty());
}

TEST_F(Remembering, WhatCannotBeReadOrWrittenKeepsNobodyWaiting) {
  std::filesystem::create_directories(folder_ / "window");
  ASSERT_EQ(mkfifo((folder_ / "recent").c_str(), 0600), 0);
  Remembered first(folder_);
  first.addFile("/a");
  first.keepNumbers();
  EXPECT_THAT(first.files(), ElementsAre("/a"));
  EXPECT_TRUE(std::filesystem::is_fifo(folder_ / "recent"));

  Remembered nowhere({});
  nowhere.addFile("/b");
  nowhere.addFile("/a");
  nowhere.keepNumbers();
  EXPECT_THAT(nowhere.files(), ElementsAre("/a", "/b"));
}

}  // namespace
