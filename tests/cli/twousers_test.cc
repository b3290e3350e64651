/// @file
/// Several processes and users that edit the same file with the built program; only root can play the users.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <functional>

#include "tests/cli/quilscene_run.h"
#include "tests/support/users.h"

namespace {

namespace fs = std::filesystem;
using testing::AnyOf;

/// A file that is edited, in a folder of its own.
class SharedFile : public Quilscene {
 protected:
  void SetUp() override {
    fs::create_directory(folder_);
    put("scene.quil", read_file(scene_path("tiny_v1")));
    fs::copy_file(scratch_ / "scene.quil", file_);
  }

  /// Two edit the file at the same time, again and again.
  /// @param become   what stands before the command of each
  /// @param prepare  is called when the file is as it was
  void both_edit(
      const std::array<std::string, 2>& become, const std::function<void()>& prepare = [] {}) const {
    std::array<std::string, 2> edited, arguments;
    for (std::size_t who = 0; who < edited.size(); ++who) {
      const std::string script = "script_" + std::to_string(who);
      put(script, "name obj_0 " + std::string(5 + 20 * who, 'x') + "\n");
      ASSERT_EQ(run("edit scene.quil -o edited.quil --script " + script).status, 0);
      edited.at(who) = written("edited.quil");
      arguments.at(who) = "edit " + file_ + " -o " + file_ + " --script " + script;
    }
    const std::string second =
        become[1] + support::built_program("cli/quilscene").string() + " " + arguments[1];
    for (int round = 0; round < 20; ++round) {
      SCOPED_TRACE(round);
      write_file(file_, written("scene.quil"));
      prepare();
      const Ran ran =
          run(arguments[0], "& first=$!; " + second + "; second=$?; wait $first; echo $? $second >ends",
              become[0]);
      // Who comes later overwrites, or is told that the file is no longer the one that was read.
      EXPECT_THAT(written("ends"), AnyOf("0 0\n", "0 1\n", "1 0\n")) << ran.err;
      EXPECT_TRUE(read_file(file_) == edited[0] || read_file(file_) == edited[1]);
      EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1) << "no leftovers";
    }
  }

  const fs::path folder_ = scratch_ / "shared";
  const std::string file_ = folder_ / "scene.quil";
};

TEST_F(SharedFile, EditedByTwoProcessesAtOnceIsOneOfTheNewFiles) { both_edit({}); }

class TwoUsers : public SharedFile {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only root can be other users";
    SharedFile::SetUp();
    fs::permissions(scratch_.path(), fs::perms{0755});
    for (const User* user : {&kAlice, &kBob, &kStranger}) {
      const fs::path home = scratch_ / std::to_string(user->id);
      fs::create_directory(home);
      own(home, user->group, 0700, user->id);
    }
    put("script", "name obj_0 renamed\n");
    if (run_as(kStranger, "--version").status != 0) GTEST_SKIP() << "the program is not for others to run";
  }

  static void own(const fs::path& path, gid_t group, unsigned mode, uid_t owner = 0) {
    ASSERT_EQ(chown(path.c_str(), owner, group), 0);
    fs::permissions(path, fs::perms{mode});
  }
  /// What makes the command that follows the user's.
  std::string as(const User& user) const {
    const std::string id = std::to_string(user.id), group = std::to_string(user.group);
    return "XDG_STATE_HOME=" + (scratch_ / id) + " setpriv --reuid=" + id + " --regid=" + group +
           " --groups=" + (user.other_groups.empty() ? group : std::to_string(kArtists)) + " ";
  }
  Ran run_as(const User& user, const std::string& arguments) const { return run(arguments, "", as(user)); }
  Ran edit_as(const User& user) const {
    return run_as(user, "edit " + file_ + " -o " + file_ + " --script script");
  }
  bool is_edited() const { return read_file(file_) != written("scene.quil"); }
  std::string group_and_mode() const {
    struct stat found {};
    EXPECT_EQ(stat(file_.c_str(), &found), 0);
    return std::to_string(found.st_gid) + " " + std::to_string(found.st_mode & 07777u);
  }
};

TEST_F(TwoUsers, OfATeamEditTheSameFileOneAfterTheOther) {
  own(folder_, kArtists, 0775);
  own(file_, kArtists, 0664);
  const std::string before = group_and_mode();
  int round = 0;
  for (const User* user : {&kAlice, &kBob, &kAlice}) {
    put("script", "name obj_0 name_" + std::to_string(++round) + "\n");
    const Ran ran = edit_as(*user);
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_NE(run("info " + file_).out.find("name_" + std::to_string(round)), ran.out.npos);
    EXPECT_EQ(group_and_mode(), before);
  }
}

TEST_F(TwoUsers, OfATeamEditAFileInAFolderThatIsNotTheirs) {
  own(folder_, 0, 0755);
  own(file_, kArtists, 0664);
  const std::string before = group_and_mode();
  const Ran ran = edit_as(kAlice);
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_TRUE(is_edited());
  EXPECT_EQ(group_and_mode(), before);
  EXPECT_EQ(run_as(kAlice, "recover").out, "") << "the copy went when the file was complete";
}

TEST_F(TwoUsers, OneOfThemAStrangerWritesNothing) {
  own(folder_, kArtists, 0777);
  own(file_, kArtists, 0664);
  const Ran ran = edit_as(kStranger);
  EXPECT_EQ(ran.status, 1);
  EXPECT_NE(ran.err.find(file_ + ": can't be opened for writing: Permission denied"), ran.err.npos)
      << ran.err;
  EXPECT_FALSE(is_edited());
}

TEST_F(TwoUsers, WhoEditTheFileAtOnceLeaveOneOfTheNewFiles) {
  own(folder_, kArtists, 0775);
  both_edit({as(kAlice), as(kBob)}, [this] { own(file_, kArtists, 0664); });
}

TEST_F(TwoUsers, WhoWriteItInPlaceAtOnceLeaveOneOfTheNewFiles) {
  own(folder_, 0, 0755);
  both_edit({as(kAlice), as(kBob)}, [this] { own(file_, kArtists, 0664); });
}

}  // namespace
