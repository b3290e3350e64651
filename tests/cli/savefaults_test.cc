/// @file
/// Saves of the built program that fail or are killed.
#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <random>

#include "tests/cli/quilscene_run.h"
#include "tests/support/preload.h"

namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;

class SaveFaults : public Quilscene {
 protected:
  SaveFaults() { fs::create_directory(scenes_); }

  void prepare() const {
    write_file(target_, read_file(scene_path("skeleton")));
    fs::remove(scratch_ / "happened");
  }

  /// Runs `before quilscene arguments`, and waits for helpers of the program too.
  Ran run_to_the_end(const std::string& before, const std::string& arguments) const {
    Ran ran = run(arguments, "; echo $? >status; } | cat", "{ " + before);
    ran.status = std::stoi(written("status"));
    return ran;
  }

  /// Runs the command with system calls that fail (tests/support/faults.h).
  Ran run_with(const std::string& faults, const std::string& arguments) const {
    return run_to_the_end(
        "XDG_STATE_HOME=" + (scratch_ / "state") + " QUIL_FAULTS_HAPPENED=" + (scratch_ / "happened") +
            " QUIL_FAULTS=" + faults +
            " LD_PRELOAD=" + preload_variable(scratch_.path(), {"tests/support/faults.so"}) + " ",
        arguments);
  }
  bool happened() const { return exists("happened"); }

  bool is_old() const { return read_file(target_) == read_file(scene_path("skeleton")); }
  bool is_new() const { return read_file(target_) == read_file(scene_path("robot")); }
  void expect_no_leftovers() const {
    if (!has_nameless_files(scenes_)) return;
    for (const auto& entry : fs::directory_iterator(scenes_)) EXPECT_EQ(entry.path(), target_);
  }

  const fs::path scenes_ = scratch_.path() / "scenes", target_ = scenes_ / "scene.quil";
  const std::string resave_ = "resave " + scene_path("robot") + " -o scenes/scene.quil";
};

TEST_F(SaveFaults, EachCallThatFailsIsToldAndLeavesTheOldFile) {
  int at = 0;
  do {
    SCOPED_TRACE(++at);
    prepare();
    const Ran ran = run_with(":" + std::to_string(at) + ":" + std::to_string(EIO), resave_);
    ASSERT_THAT(ran.status, AnyOf(0, 1)) << ran.err;
    expect_no_leftovers();
    EXPECT_TRUE(is_new() || (ran.status == 1 && is_old()));
    if (ran.status == 1) {
      EXPECT_THAT(ran.err, HasSubstr("Input/output error\nquilscene: can't write scenes/scene.quil\n"));
    } else {
      EXPECT_EQ(ran.err, "");
    }
  } while (happened());
  EXPECT_GT(at, 8) << "calls that a save makes";
}

TEST_F(SaveFaults, EachCallThatIsTheLastLeavesTheOldOrTheNewFile) {
  int at = 0;
  do {
    SCOPED_TRACE(++at);
    prepare();
    const int status = run_with(":" + std::to_string(at) + ":kill", resave_).status;
    EXPECT_EQ(status, happened() ? 128 + SIGKILL : 0);
    EXPECT_TRUE(is_old() || is_new());
    expect_no_leftovers();
  } while (happened());
}

TEST_F(SaveFaults, AKillAtARandomMomentLeavesTheOldOrTheNewFile) {
  put("script", "name obj_0 robot\n");
  const std::string edit = "edit " + scene_path("robot") + " --script script -o ";
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_EQ(run(edit + "edited.quil").status, 0);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  std::mt19937 random(std::random_device{}());
  std::uniform_real_distribution<> moment(0, 1.2 * time.count());
  int killed = 0, replaced = 0;
  for (int i = 0; i < 30; ++i) {
    prepare();
    const bool edits = i % 2 != 0;
    const std::string command = edits ? edit + "scenes/scene.quil" : resave_;
    char before[100];
    std::snprintf(before, sizeof before, "timeout -s KILL %.6f ", moment(random));
    SCOPED_TRACE(before + command);
    killed += run_to_the_end(before, command).status == 128 + SIGKILL;
    const bool is_replaced =
        read_file(target_) == (edits ? written("edited.quil") : read_file(scene_path("robot")));
    EXPECT_TRUE(is_replaced || is_old());
    replaced += is_replaced;
    expect_no_leftovers();
  }
  RecordProperty("killed", killed);
  RecordProperty("replaced", replaced);
}

}  // namespace
