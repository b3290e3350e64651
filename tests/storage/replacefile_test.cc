/// @file
/// Replacing a file: what is there before, during and after, and when something fails.
#include "storage/replacefile.h"

#include <gtest/gtest.h>

#include "tests/support/files.h"

namespace {

namespace fs = std::filesystem;

class Replacing : public testing::Test {
 protected:
  std::ptrdiff_t files() const { return std::distance(fs::directory_iterator{dir_}, {}); }

  const ScratchDirectory scratch_;
  const fs::path dir_ = scratch_.path();
  const fs::path target_ = dir_ / "scene.quil";
};

TEST_F(Replacing, NewFileAppearsOnCommit) {
  ReplacingFile file{target_};
  ASSERT_TRUE(file.stream());
  std::fputs("new", file.stream());
  EXPECT_FALSE(fs::exists(target_));
  EXPECT_TRUE(file.commit());
  EXPECT_EQ(read_file(target_), "new");
  EXPECT_EQ(files(), 1);
}

TEST_F(Replacing, NotCommittedLeavesTheTargetAndNothingElse) {
  write_file(target_, "old");
  {
    ReplacingFile file{target_};
    ASSERT_TRUE(file.stream());
    std::fputs("new", file.stream());
  }
  EXPECT_EQ(read_file(target_), "old");
  EXPECT_EQ(files(), 1);
}

TEST_F(Replacing, PermissionsAreKept) {
  write_file(target_, "old");
  fs::permissions(target_, fs::perms{0640});
  ReplacingFile file{target_};
  ASSERT_TRUE(file.commit());
  EXPECT_EQ(fs::status(target_).permissions(), fs::perms{0640});
  EXPECT_EQ(read_file(target_), "");
}

TEST_F(Replacing, SymbolicLinkStaysAndItsTargetIsReplaced) {
  fs::create_directory(dir_ / "elsewhere");
  write_file(dir_ / "elsewhere/real", "old");
  fs::create_symlink("elsewhere/real", target_);
  ReplacingFile file{target_};
  ASSERT_TRUE(file.stream());
  std::fputs("new", file.stream());
  EXPECT_TRUE(file.commit());
  EXPECT_TRUE(fs::is_symlink(target_));
  EXPECT_EQ(read_file(dir_ / "elsewhere/real"), "new");
}

TEST_F(Replacing, DanglingLinkGetsItsTarget) {
  fs::create_symlink("real", target_);
  ReplacingFile file{target_};
  EXPECT_TRUE(file.commit());
  EXPECT_TRUE(fs::is_symlink(target_));
  EXPECT_TRUE(fs::exists(dir_ / "real"));
}

TEST_F(Replacing, LoopOfLinksFailsToOpen) {
  fs::create_symlink("other", target_);
  fs::create_symlink("scene.quil", dir_ / "other");
  EXPECT_FALSE(ReplacingFile{target_}.stream());
}

TEST_F(Replacing, DirectoryFailsToOpen) { EXPECT_FALSE(ReplacingFile{dir_}.stream()); }

TEST_F(Replacing, MissingDirectoryFailsToOpen) {
  ReplacingFile file{dir_ / "missing/scene.quil"};
  EXPECT_FALSE(file.stream());
  EXPECT_FALSE(file.commit());
}

TEST_F(Replacing, FullDeviceIsWrittenDirectlyAndFails) {
  ReplacingFile file{"/dev/full"};
  ASSERT_TRUE(file.stream());
  std::fputs("new", file.stream());
  EXPECT_FALSE(file.commit());
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(Replacing, ATargetThatBecameADirectoryFailsAndNothingIsLeft) {
  ReplacingFile file{target_};
  ASSERT_TRUE(file.stream());
  fs::create_directory(target_);
  EXPECT_FALSE(file.commit());
  EXPECT_FALSE(file.commit()) << "once is enough";
  EXPECT_TRUE(fs::is_directory(target_));
}

TEST_F(Replacing, LongestFileNameIsNoObstacle) {
  const fs::path longest = dir_ / std::string(255, 'n');
  ReplacingFile file{longest};
  EXPECT_TRUE(file.commit());
  EXPECT_TRUE(fs::exists(longest));
}

}  // namespace
