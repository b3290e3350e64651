/// @file
/// Several users who edit the same file with the built program; only root can play them.
#include <sys/stat.h>
#include <unistd.h>

#include "tests/cli/quilscene_run.h"
#include "tests/support/users.h"

namespace {

namespace fs = std::filesystem;

class TwoUsers : public Quilscene {
 protected:
  void SetUp() override {
    if (geteuid() != 0) GTEST_SKIP() << "only root can be other users";
    fs::permissions(scratch_.path(), fs::perms{0755});
    fs::create_directory(folder_);
    for (const User* user : {&kAlice, &kBob, &kStranger}) {
      const fs::path home = scratch_ / std::to_string(user->id);
      fs::create_directory(home);
      own(home, user->group, 0700, user->id);
    }
    put("scene.quil", read_file(scene_path("tiny_v1")));
    fs::copy_file(scratch_ / "scene.quil", file_);
    put("script", "name obj_0 renamed\n");
    if (run_as(kStranger, "--version").status != 0) GTEST_SKIP() << "the program is not for others to run";
  }

  static void own(const fs::path& path, gid_t group, unsigned mode, uid_t owner = 0) {
    ASSERT_EQ(chown(path.c_str(), owner, group), 0);
    fs::permissions(path, fs::perms{mode});
  }
  Ran run_as(const User& user, const std::string& arguments) const {
    const std::string id = std::to_string(user.id), group = std::to_string(user.group);
    return run(arguments, "",
               "XDG_STATE_HOME=" + (scratch_ / id) + " setpriv --reuid=" + id + " --regid=" + group +
                   " --groups=" + (user.other_groups.empty() ? group : std::to_string(kArtists)) + " ");
  }
  Ran edit_as(const User& user) const {
    return run_as(user, "edit " + file_ + " -o " + file_ + " --script script");
  }
  bool is_edited() const { return read_file(file_) != written("scene.quil"); }
  std::string group_and_mode() const {
    struct stat found {};
    EXPECT_EQ(stat(file_.c_str(), &found), 0);
    return std::to_string(found.st_gid) + " " + std::to_string(found.st_mode & 07777u);
  }

  const fs::path folder_ = scratch_ / "shared";
  const std::string file_ = folder_ / "scene.quil";
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

}  // namespace
