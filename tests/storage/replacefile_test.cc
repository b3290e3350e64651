/// @file
/// Replacing a file: what is there before, during and after, and when something fails.
#include "storage/replacefile.h"

#include <sys/file.h>
#include <sys/mount.h>

#include "tests/storage/savefixture.h"
#include "tests/support/faults.h"

namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::StartsWith;

class Replacing : public Saving {};

TEST_F(Replacing, NewFileAppearsOnCommit) {
  ReplacingFile file{target_};
  ASSERT_TRUE(file.stream());
  std::fputs("new", file.stream());
  EXPECT_FALSE(fs::exists(target_));
  EXPECT_TRUE(file.commit());
  EXPECT_EQ(read_file(target_), "new");
  EXPECT_THAT(names(), ElementsAre("scene.quil"));
}

TEST_F(Replacing, NotCommittedLeavesTheTargetAndNothingElse) {
  write_file(target_, "old");
  {
    ReplacingFile file{target_};
    ASSERT_TRUE(file.stream());
    std::fputs("new", file.stream());
  }
  EXPECT_EQ(read_file(target_), "old");
  EXPECT_THAT(names(), ElementsAre("scene.quil"));
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

TEST_F(Replacing, AFileThatIsWrittenHasNoName) {
  if (!has_nameless_files(dir_)) GTEST_SKIP() << "not on this file system";
  write_file(target_, "old");
  const ReplacingFile file{target_};
  ASSERT_TRUE(file.stream());
  EXPECT_THAT(names(), ElementsAre("scene.quil"));
}

TEST_F(Replacing, WhereFilesNeedNamesItHasATemporaryOneForItsOwnerOnly) {
  const support::Faults no_nameless_files({{"tmpfile", 1, EOPNOTSUPP, true}});
  ReplacingFile file{target_};
  ASSERT_TRUE(file.stream());
  ASSERT_THAT(names(), ElementsAre(StartsWith(".quil-")));
  EXPECT_EQ(status(dir_ / names()[0]).st_mode & 07777u, 0600u);
  EXPECT_TRUE(file.commit());
  EXPECT_THAT(names(), ElementsAre("scene.quil"));
}

TEST_F(Replacing, ANewFileHasTheModeThatTheUserWants) {
  for (const mode_t mask : {0022u, 0077u}) {
    umask(mask);
    EXPECT_EQ(save(dir_ / std::to_string(mask)), "");
    EXPECT_EQ(status(dir_ / std::to_string(mask)).st_mode & 07777u, 0666u & ~mask);
  }
  umask(022);
}

TEST_F(Replacing, TemporaryFilesOfDeadProcessesGoWithTheNextSave) {
  write_file(dir_ / ".quil-1-0.tmp", "left");
  write_file(dir_ / ".quil-1-1.tmp", "being written");
  const storage::Descriptor written(open((dir_ / ".quil-1-1.tmp").c_str(), O_RDWR));
  ASSERT_EQ(flock(written.get(), LOCK_EX), 0);
  write_file(dir_ / ".quilting.tmp.quil", "a scene");
  EXPECT_EQ(save(), "");
  EXPECT_THAT(names(), ElementsAre(".quil-1-1.tmp", ".quilting.tmp.quil", "scene.quil"));
}

TEST_F(Replacing, TwoSavesAtTheSameTimeDoNotDisturbEachOther) {
  const support::Faults no_nameless_files({{"tmpfile", 1, EOPNOTSUPP, true}});
  ReplacingFile first{target_}, second{target_};
  std::fputs("first", first.stream());
  std::fputs("second", second.stream());
  EXPECT_TRUE(second.commit());
  EXPECT_EQ(read_file(target_), "second");
  EXPECT_TRUE(first.commit());
  EXPECT_EQ(read_file(target_), "first");
  EXPECT_THAT(names(), ElementsAre("scene.quil"));
}

TEST_F(Replacing, AnErrorTellsTheFileTheStepAndTheReason) {
  EXPECT_EQ(save("/dev/full"), "/dev/full: can't write the new contents: No space left on device");
  EXPECT_EQ(save(dir_ / "missing/scene"),
            (dir_ / "missing/scene: can't be opened for writing: No such file or directory").string());
  EXPECT_EQ(save(dir_), dir_.string() + ": can't be opened for writing: Is a directory");
  const struct {
    const char* call;
    int at;
    const char* words;
  } steps[]{{"open", 3, "can't create a file in its folder"},
            {"write", 1, "can't write the new contents"},
            {"chmod", 1, "can't keep the owner, the mode or the attributes"},
            {"fsync", 1, "can't flush the new contents to the disk"},
            {"rename", 1, "can't put the new file in place of the old one"},
            {"fsync", 2, "can't flush its folder to the disk"}};
  for (const auto& step : steps) {
    write_file(target_, kOld);
    const support::Faults fault({{step.call, step.at, EDQUOT, true}});
    EXPECT_EQ(save(), target_ + ": " + step.words + ": Disk quota exceeded");
  }
}

TEST_F(Replacing, AnErrorIsKnownAsSoonAsAWriteFails) {
  ReplacingFile file{"/dev/full"};
  EXPECT_FALSE(file.error());
  std::fwrite(kNew.data(), 1, kNew.size(), file.stream());
  EXPECT_EQ(file.error().number, ENOSPC);
  EXPECT_EQ(file.error().step, WriteStep::write);
}

TEST_F(Replacing, AStreamStandsWhereItWrote) {
  ReplacingFile file{target_};
  std::fwrite(kNew.data(), 1, kNew.size(), file.stream());
  EXPECT_EQ(ftello(file.stream()), static_cast<off_t>(kNew.size()));
}

TEST_F(Replacing, AFileWithSeveralNamesStaysOneFile) {
  write_file(target_, kOld);
  fs::create_hard_link(target_, dir_ / "other");
  for (const std::string& contents : {kNew, std::string("short"), std::string(), kNew}) {
    EXPECT_EQ(save(target_, contents), "");
    EXPECT_TRUE(read_file(target_) == contents);
    EXPECT_TRUE(read_file(dir_ / "other") == contents);
  }
  EXPECT_EQ(status(target_).st_nlink, 2u);
  EXPECT_TRUE(copies().empty());
  EXPECT_EQ(files_in(state_), 0);
}

TEST_F(Replacing, AFullDiskLeavesAFileThatIsWrittenInPlaceAsItWas) {
  write_file(target_, kOld);
  fs::create_hard_link(target_, dir_ / "other");
  const support::Faults full({{"fsync", 4, ENOSPC}});  // after two of the copy and one of its folder
  EXPECT_EQ(save(), target_ + ": can't be written in place: No space left on device");
  EXPECT_TRUE(full.happened());
  EXPECT_EQ(read_file(target_), kOld);
  EXPECT_EQ(files_in(state_), 0);
}

TEST_F(Replacing, AFileThatCouldNotBeCompletedInPlaceIsARecoveryCopy) {
  write_file(target_, kOld);
  fs::create_hard_link(target_, dir_ / "other");
  const support::Faults broken({{"truncate", 1, EIO}});
  EXPECT_EQ(save(), target_ +
                        ": can't be written in place: Input/output error; the file may be incomplete, its "
                        "new contents are recovery copy 1");
  ASSERT_EQ(copies().size(), 1u);
  EXPECT_TRUE(read_file(copies()[0].path) == kNew);
  EXPECT_EQ(copies()[0].origin, fs::canonical(target_));
}

TEST_F(Replacing, ASecondNameNeedsARecoveryFolderAndSaysSo) {
  write_file(target_, kOld);
  fs::create_hard_link(target_, dir_ / "other");
  write_file(state_, "no folder");
  EXPECT_EQ(
      save(),
      (state_ / "quileditor/recovery: can't keep a recovery copy in this folder: Not a directory").string());
  EXPECT_EQ(read_file(target_), kOld);
}

TEST_F(Replacing, WithoutARecoveryFolderOtherFilesAreSaved) {
  write_file(target_, kOld);
  write_file(state_, "no folder");
  EXPECT_EQ(save(), "");
}

/// Puts a file over another one's name while it lives.
class BoundOver {
 public:
  BoundOver(const std::string& file, const std::string& name)
      : name_(name), bound_(mount(file.c_str(), name.c_str(), nullptr, MS_BIND, nullptr) == 0) {}
  ~BoundOver() {
    if (bound_) umount2(name_.c_str(), MNT_DETACH);
  }
  BoundOver(const BoundOver&) = delete;
  BoundOver& operator=(const BoundOver&) = delete;
  explicit operator bool() const { return bound_; }

 private:
  const std::string name_;
  const bool bound_;
};

TEST_F(Replacing, AMountPointIsWrittenInPlace) {
  write_file(target_, "below");
  write_file(scratch_ / "elsewhere", kOld);
  {
    const BoundOver bound(scratch_ / "elsewhere", target_);
    if (!bound) GTEST_SKIP() << "this user may not mount";
    EXPECT_EQ(save(), "");
    EXPECT_THAT(names(), ElementsAre("scene.quil"));
  }
  EXPECT_TRUE(read_file(scratch_ / "elsewhere") == kNew);
  EXPECT_EQ(read_file(target_), "below");
  EXPECT_EQ(files_in(state_), 0);
}

}  // namespace
