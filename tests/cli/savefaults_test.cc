/// @file
/// Saves of the built program that fail or are killed.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include "tests/cli/quilscene_run.h"
#include "tests/support/preload.h"
#include "tests/support/process.h"

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
  constexpr int kKills = 500;
  put("script", "name obj_0 robot\n");
  const std::string robot = scene_path("robot");
  const auto program = [&](bool edits) {
    std::vector<std::string> command = {support::built_program("cli/quilscene"), edits ? "edit" : "resave",
                                        robot, "-o", target_};
    if (edits) command.insert(command.end(), {"--script", scratch_ / "script"});
    support::Process::Start start;
    start.command = command;
    return start;
  };
  std::string saved[2];
  std::chrono::duration<double> time{};
  for (const bool edits : {false, true}) {
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(support::Process(program(edits)).waitForExit(), 0);
    time = std::max(time, std::chrono::duration<double>(std::chrono::steady_clock::now() - begin));
    saved[edits ? 1 : 0] = read_file(target_);
  }
  std::mt19937 random(std::random_device{}());
  std::uniform_real_distribution<> moment(0, 1.2 * time.count());
  int killed = 0, replaced = 0;
  for (int i = 0; i < kKills && !HasFailure(); ++i) {
    prepare();
    const bool edits = i % 2 != 0;
    const std::chrono::duration<double> pause(moment(random));
    SCOPED_TRACE(pause.count());
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    const support::Descriptor still_open(ends[0]);
    support::Process::Start start = program(edits);
    start.kept_fd = ends[1];
    support::Process process(start);
    close(ends[1]);
    std::this_thread::sleep_for(pause);
    process.signal(SIGKILL);
    killed += process.waitForExit() == 128 + SIGKILL;
    char none = 0;
    EXPECT_EQ(read(still_open.get(), &none, 1), 0) << "waits for helpers of the program too";
    const bool is_replaced = read_file(target_) == saved[edits ? 1 : 0];
    EXPECT_TRUE(is_replaced || is_old());
    replaced += is_replaced;
    expect_no_leftovers();
  }
  EXPECT_GT(killed, 0);
  EXPECT_GT(replaced, 0);
}

}  // namespace
