/// @file
/// Files that several people work on: who may do what before, during and after a save.
#include <fcntl.h>
#include <sys/stat.h>

#include <array>
#include <functional>
#include <future>
#include <string_view>

#include "tests/storage/savefixture.h"
#include "tests/support/faults.h"
#include "tests/support/users.h"

namespace {

namespace fs = std::filesystem;
using support::Faults;
using testing::ElementsAre;

/// A folder in which all may write, and Alice's state folder; only root can play the users.
class SharedFolder : public Saving {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only root can be other users";
    fs::permissions(scratch_.path(), fs::perms{0755});
    own(dir_, kArtists, 0777);
    fs::create_directory(state_);
    ASSERT_EQ(chown(state_.c_str(), kAlice.id, kAlice.group), 0);
    umask(022);
  }

  static void own(const fs::path& path, gid_t group, unsigned mode, uid_t owner = 0) {
    ASSERT_EQ(chown(path.c_str(), owner, group), 0);
    fs::permissions(path, fs::perms{mode});
  }
  void target(uid_t owner, gid_t group, unsigned mode) const {
    write_file(target_, kOld);
    own(target_, group, mode, owner);
  }
  std::string save_as(const User& user) const {
    const int status = as_user(user, [&] {
      const std::string message = save();
      return message.empty() ? 0 : message.find("Permission denied") != message.npos ? 2 : 1;
    });
    return status == 0 ? "saved" : status == 2 ? "refused" : "failed " + std::to_string(status);
  }
  std::string whose() const {
    const struct stat found = status(target_);
    char text[100];
    std::snprintf(text, sizeof text, "%u:%u %o", found.st_uid, found.st_gid, found.st_mode & 07777u);
    return text;
  }
  bool is_new() const { return read_file(target_) == kNew; }
};

TEST_F(SharedFolder, OwnerGroupAndModeStay) {
  target(0, kArtists, 0664);
  EXPECT_EQ(save(), "");
  EXPECT_EQ(whose(), "0:70100 664");
  target(kBob.id, kArtists, 0660);
  EXPECT_EQ(save(), "");
  EXPECT_EQ(whose(), "70002:70100 660");
}

TEST_F(SharedFolder, AMemberOfTheTeamKeepsTheGroupAndBecomesTheOwner) {
  target(0, kArtists, 0664);
  EXPECT_EQ(save_as(kAlice), "saved");
  EXPECT_TRUE(is_new());
  EXPECT_EQ(whose(), "70001:70100 664");
}

TEST_F(SharedFolder, SetIdBitsStayWithTheOwner) {
  target(kBob.id, kArtists, 06775);
  EXPECT_EQ(save(), "");
  EXPECT_EQ(whose(), "70002:70100 6775");
  EXPECT_EQ(save_as(kAlice), "saved");
  EXPECT_EQ(whose(), "70001:70100 775");
}

TEST_F(SharedFolder, AGroupThatCannotBeGivenIsKeptByWritingInPlace) {
  target(kBob.id, kBob.group, 04606);
  EXPECT_EQ(save_as(kAlice), "saved");
  EXPECT_TRUE(is_new());
  EXPECT_EQ(whose(), "70002:70002 606");
  EXPECT_EQ(files_in(state_), 0);
}

TEST_F(SharedFolder, AnAccessListStaysAndItsMaskHoldsBackTheGroup) {
  target(0, kArtists, 0660);
  const std::string list = access_list(6, 4);
  ASSERT_TRUE(set_attribute(target_, kAccessList, list));
  ASSERT_EQ(whose(), "0:70100 640") << "the group's bits are those of the mask";
  EXPECT_EQ(save(), "");
  EXPECT_TRUE(is_new());
  EXPECT_EQ(attribute(target_, kAccessList), list);
  EXPECT_EQ(whose(), "0:70100 640");
}

TEST_F(SharedFolder, AnAccessListThatTheFolderGivesToNewFilesIsNotForOldOnes) {
  ASSERT_TRUE(set_attribute(dir_, "system.posix_acl_default", access_list(6, 6)));
  target(0, kArtists, 0640);
  ASSERT_EQ(removexattr(target_.c_str(), kAccessList), 0);
  fs::permissions(target_, fs::perms{0640});
  EXPECT_EQ(save(), "");
  EXPECT_EQ(attribute(target_, kAccessList), "");
  EXPECT_EQ(whose(), "0:70100 640");
}

TEST_F(SharedFolder, ANewFileHasTheAccessListOfItsFolder) {
  ASSERT_TRUE(set_attribute(dir_, "system.posix_acl_default", access_list(6, 4)));
  write_file(dir_ / "by hand", "");
  EXPECT_EQ(save(), "");
  EXPECT_EQ(attribute(target_, kAccessList), attribute(dir_ / "by hand", kAccessList));
  EXPECT_EQ(whose(), "0:0 640");
}

TEST_F(SharedFolder, ANewFileHasTheGroupOfAFolderThatGivesItsOwn) {
  own(dir_, kArtists, 02777);
  EXPECT_EQ(save(), "");
  EXPECT_EQ(whose(), "0:70100 644");
}

TEST_F(SharedFolder, AttributesStay) {
  target(0, kArtists, 0660);
  ASSERT_TRUE(set_attribute(target_, "user.colour", "blue"));
  ASSERT_TRUE(set_attribute(target_, "user.empty", ""));
  ASSERT_TRUE(set_attribute(target_, "trusted.seen", std::string("\0\1", 2)));
  EXPECT_EQ(save(), "");
  EXPECT_EQ(attribute(target_, "user.colour"), "blue");
  EXPECT_EQ(getxattr(target_.c_str(), "user.empty", nullptr, 0), 0);
  EXPECT_EQ(attribute(target_, "trusted.seen"), std::string("\0\1", 2));
}

TEST_F(SharedFolder, AFileInAFolderThatIsNotToBeWrittenIsWrittenInPlace) {
  target(kBob.id, kArtists, 0664);
  own(dir_, kArtists, 0755);
  EXPECT_EQ(save_as(kAlice), "saved");
  EXPECT_TRUE(is_new());
  EXPECT_EQ(whose(), "70002:70100 664");
  EXPECT_EQ(files_in(state_), 0);
  EXPECT_EQ(save_as(kStranger), "refused");
}

TEST_F(SharedFolder, AnothersFileInAStickyFolderIsWrittenInPlace) {
  target(kBob.id, kArtists, 0664);
  own(dir_, kArtists, 01777);
  EXPECT_EQ(save_as(kAlice), "saved");
  EXPECT_TRUE(is_new());
  EXPECT_EQ(whose(), "70002:70100 664");
  EXPECT_THAT(names(), ElementsAre("scene.quil"));
  EXPECT_EQ(files_in(state_), 0);
}

TEST_F(SharedFolder, AReadOnlyFileIsRefused) {
  target(kBob.id, kArtists, 0444);
  EXPECT_EQ(save_as(kAlice), "refused");
  EXPECT_EQ(read_file(target_), kOld);
}

TEST_F(SharedFolder, ANewFileInAFolderThatIsNotToBeWrittenIsRefused) {
  own(dir_, kArtists, 0755);
  EXPECT_EQ(save_as(kAlice), "refused");
  EXPECT_EQ(files_in(dir_), 0);
}

TEST_F(SharedFolder, ARecoveryFolderOfSomebodyElseIsNotUsed) {
  target(kBob.id, kArtists, 0664);
  own(dir_, kArtists, 0755);
  fs::create_directories(state_ / "quileditor/recovery");
  own(state_ / "quileditor", kStranger.group, 0755, kStranger.id);
  own(state_ / "quileditor/recovery", kStranger.group, 0777, kStranger.id);
  EXPECT_EQ(save_as(kAlice), "failed 1");
  EXPECT_EQ(read_file(target_), kOld);
  EXPECT_EQ(files_in(state_), 0);
}

/// Opens everything in a folder that it can, until it finds what ends it.
int poll(const fs::path& folder) {
  int hits = 0;
  std::error_code gone;
  for (bool end = false; !end && !gone;) {
    for (const auto& entry : fs::directory_iterator(folder, gone)) {
      const storage::Descriptor file(open(entry.path().c_str(), O_RDONLY | O_CLOEXEC));
      if (file && entry.path().filename() == "end")
        end = true;
      else if (file)
        hits = 1;
    }
  }
  return hits;
}

/// Two processes that save the same file at the same time, each its own contents of its own length.
class AtOnce : public Saving, public testing::WithParamInterface<const char*> {
 protected:
  bool in_place() const { return GetParam() == std::string_view("in_place"); }
  /// Rounds of saves by both; `become` makes a process the first or the second of the users.
  void both_save(const std::function<bool(std::size_t)>& become) {
    const std::array<std::string, 2> contents{std::string(300'000, 'a'), std::string(200'000, 'b')};
    for (int round = 0; round < 30; ++round) {
      SCOPED_TRACE(round);
      const auto save_own = [&](std::size_t who) {
        return in_child([&] { return become(who) && save(target_, contents.at(who)).empty() ? 0 : 1; });
      };
      auto other = std::async(std::launch::async, save_own, 1);
      EXPECT_EQ(save_own(0), 0);
      EXPECT_EQ(other.get(), 0);
      const std::string saved = read_file(target_);
      ASSERT_TRUE(saved == contents[0] || saved == contents[1]);
      ASSERT_EQ(names().size(), in_place() ? 2u : 1u) << "no leftovers";
    }
  }
  void make_target() {
    write_file(target_, kOld);
    if (in_place()) fs::create_hard_link(target_, dir_ / "other name");
  }
};

TEST_P(AtOnce, OneOfTheNewFilesIsThereWhole) {
  make_target();
  both_save([](std::size_t) { return true; });
}

TEST_P(AtOnce, OneOfTheNewFilesIsThereWholeWhenTheyAreTwoUsers) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can be other users";
  make_target();
  fs::permissions(scratch_.path(), fs::perms{0755});
  for (const auto& path : {fs::path(dir_), fs::path(target_)}) {
    ASSERT_EQ(chown(path.c_str(), 0, kArtists), 0);
    fs::permissions(path, fs::perms{path == dir_ ? 0775u : 0664u});
  }
  const std::array users{kAlice, kBob};
  const auto state_of = [&](std::size_t who) { return scratch_ / std::to_string(users.at(who).id); };
  for (std::size_t who = 0; who < users.size(); ++who) {
    fs::create_directory(state_of(who));
    ASSERT_EQ(chown(state_of(who).c_str(), users.at(who).id, users.at(who).group), 0);
  }
  both_save([&](std::size_t who) {
    return setenv("XDG_STATE_HOME", state_of(who).c_str(), 1) == 0 && users.at(who).become();
  });
}

INSTANTIATE_TEST_SUITE_P(Ways, AtOnce, testing::Values("replaced", "in_place"),
                         [](const auto& way) { return std::string(way.param); });

class Poller : public SharedFolder, public testing::WithParamInterface<const char*> {};

TEST_P(Poller, NeverReadsAFileThatIsForItsOwnerOnly) {
  target(kAlice.id, kAlice.group, 0600);
  const pid_t stranger = fork();
  if (stranger == 0) _exit(kStranger.become() ? poll(dir_) : 2);
  {
    const Faults nameless(GetParam() == std::string("temporary")
                              ? std::vector<support::Fault>{{"tmpfile", 1, EOPNOTSUPP, true}}
                              : std::vector<support::Fault>{});
    for (int i = 0; i < 100; ++i) EXPECT_EQ(save(), "");
  }
  write_file(dir_ / "end", "");
  int found = -1;
  ASSERT_EQ(waitpid(stranger, &found, 0), stranger);
  EXPECT_EQ(found, 0) << "a stranger read it";
  EXPECT_EQ(whose(), "70001:70001 600");
}

INSTANTIATE_TEST_SUITE_P(Ways, Poller, testing::Values("nameless", "temporary"),
                         [](const auto& row) { return row.param; });

}  // namespace
