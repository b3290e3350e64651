/// @file
/// The copies of unsaved work on the command line.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <regex>

#include "storage/recovery.h"
#include "tests/cli/quilscene_run.h"
#include "tests/support/preload.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;

class Recover : public Quilscene {
 protected:
  Recover() { fs::create_directory(scratch_ / "state"); }

  Ran recover(const std::string& arguments, const std::string& before = "") const {
    return run("recover " + arguments, "", "XDG_STATE_HOME=" + (scratch_ / "state") + " TZ=UTC " + before);
  }

  /// A session that has written a copy.
  class Session {
   public:
    Session(const RecoveryStore& store, const std::string& origin, const std::string& contents)
        : session_(store, origin) {
      RecoveryWriter writer(session_);
      std::fwrite(contents.data(), 1, contents.size(), writer.stream());
      EXPECT_TRUE(writer.commit());
    }

   private:
    RecoverySession session_;
  };
  void leave(const std::string& origin, const std::string& contents) const {
    const Session session(store_, origin, contents);
  }

  const RecoveryStore store_{scratch_.path() / "state/quileditor/recovery"};
};

TEST_F(Recover, WithoutCopiesNothingIsListed) {
  const Ran ran = recover("");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.out, IsEmpty());
  EXPECT_THAT(ran.err, IsEmpty());
}

TEST_F(Recover, ListsTheNewestFirstWithNumberTimeSizeAndFile) {
  leave("/scenes/robot.quil", "a copy");
  leave("", "another");
  fs::last_write_time(store_.folder() / "1.copy", fs::file_time_type::clock::now() - std::chrono::hours(1));
  const Ran ran = recover("");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.err, IsEmpty());
  EXPECT_TRUE(std::regex_match(
      ran.out, std::regex(" +copy  written +bytes  file\n"
                          " +2  \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d +7  \\(never saved\\)\n"
                          " +1  \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d +6  /scenes/robot.quil\n")))
      << ran.out;
}

TEST_F(Recover, ListsTheTimeOfTheUser) {
  leave("/scenes/robot.quil", "a copy");
  const timespec times[2] = {{1795296389, 0}, {1795296389, 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, (store_.folder() / "1.copy").c_str(), times, 0), 0);
  EXPECT_THAT(recover("").out, HasSubstr("2026-11-21 21:26:29"));
  EXPECT_THAT(recover("", "TZ=EST5 ").out, HasSubstr("2026-11-21 16:26:29"));
}

TEST_F(Recover, ControlCharactersInPathsAreShownAsCodes) {
  leave("/scenes/\n\x1b[2J", "a copy");
  EXPECT_THAT(recover("").out, HasSubstr("/scenes/\\x0a\\x1b[2J\n"));
}

TEST_F(Recover, TakesACopyOutAndKeepsIt) {
  const std::string scene = read_file(scene_path("robot"));
  leave("/scenes/robot.quil", scene);
  for (int i = 0; i < 2; ++i) {
    const Ran ran = recover("1 -o out.quil");
    EXPECT_EQ(ran.status, 0);
    EXPECT_THAT(ran.out + ran.err, IsEmpty());
    EXPECT_TRUE(written("out.quil") == scene);
  }
  EXPECT_EQ(run("check out.quil").status, 0);
}

TEST_F(Recover, ForgetsACopy) {
  leave("/scenes/robot.quil", "one");
  leave("/scenes/robot.quil", "two");
  EXPECT_EQ(recover("--remove 1").status, 0);
  EXPECT_EQ(recover("2 -o out").status, 0) << "numbers stay";
  EXPECT_EQ(written("out"), "two");
  const Ran again = recover("1 --remove");
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, "quilscene: there is no copy 1\n");
}

TEST_F(Recover, ACopyInUseIsToldAndCanBeTakenOutButNotForgotten) {
  const Session session(store_, "/scenes/robot.quil", "a copy");
  EXPECT_THAT(recover("").out, HasSubstr("/scenes/robot.quil (in use)\n"));
  EXPECT_EQ(recover("1 -o out").status, 0);
  const Ran ran = recover("--remove 1");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.err, "quilscene: can't remove copy 1: a program is using it\n");
}

TEST_F(Recover, WhatIsNotThereFails) {
  const Ran ran = recover("7 -o out");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.err, "quilscene: there is no copy 7\n");
  EXPECT_FALSE(exists("out"));
}

TEST_F(Recover, AnOutputThatCannotBeWrittenFailsAndSaysWhy) {
  leave("/scenes/robot.quil", "a copy");
  for (const auto& [output, reason] : {std::pair("missing/out", "No such file or directory"),
                                       std::pair("/dev/full", "No space left on device")}) {
    const Ran ran = recover(std::string("1 -o ") + output);
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.err, MatchesRegex(std::string(output) + ": can't .*: " + reason +
                                      "\nquilscene: can't write " + output + "\n"));
  }
}

TEST_F(Recover, AFolderThatIsNoneFails) {
  put("state/quileditor", "a file");
  const Ran ran = recover("");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.err, "quilscene: can't read " + store_.folder().string() + ": Not a directory\n");
}

TEST_F(Recover, FindsWhatASaveInPlaceWasWritingWhenItWasKilled) {
  const std::string whole = read_file(scene_path("robot")), old = read_file(scene_path("skeleton"));
  std::string held = old;
  for (int at = 1; held == old; ++at) {
    put("scene.quil", old);
    fs::remove(scratch_ / "other");
    fs::create_hard_link(scratch_ / "scene.quil", scratch_ / "other");
    EXPECT_EQ(
        run("resave " + scene_path("robot") + " -o scene.quil", "",
            "XDG_STATE_HOME=" + (scratch_ / "state") + " QUIL_FAULTS=fsync:" + std::to_string(at) +
                ":kill LD_PRELOAD=" + preload_variable(scratch_.path(), {"tests/support/faults.so"}) + " ")
            .status,
        128 + SIGKILL);
    held = written("scene.quil");
  }
  ASSERT_FALSE(held == whole) << "killed while it is neither";
  const Ran listed = recover("");
  std::smatch number;
  ASSERT_TRUE(std::regex_search(listed.out, number,
                                std::regex("\n +(\\d+)  .* " + std::to_string(whole.size()) + "  " +
                                           fs::canonical(scratch_ / "scene.quil").string() + "\n")))
      << listed.out;
  EXPECT_EQ(recover(number[1].str() + " -o scene.quil").status, 0);
  EXPECT_TRUE(written("scene.quil") == whole);
  EXPECT_TRUE(written("other") == whole);
}

}  // namespace
