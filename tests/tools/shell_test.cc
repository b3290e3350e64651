/// @file
/// Shell command lines: what is printed, what commands find as their input, what comes back.
#include "tools/shell.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include "tests/support/files.h"

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

class Shell : public testing::Test {
 protected:
  const ScratchDirectory scratch_;
};

TEST_F(Shell, TheLineIsPrintedBeforeWhatItsCommandsPrint) {
  CaptureStdout();
  std::printf("before\n");
  EXPECT_EQ(run_shell("echo said"), 0);
  EXPECT_EQ(GetCapturedStdout(), "before\necho said\nsaid\n");
}

TEST_F(Shell, TheLineIsNoFormat) {
  CaptureStdout();
  run_shell("true %s %n");
  EXPECT_EQ(GetCapturedStdout(), "true %s %n\n");
}

TEST_F(Shell, FailureIsNotZero) {
  CaptureStdout();
  EXPECT_NE(run_shell("false"), 0);
  EXPECT_NE(run_shell("no-such-command-anywhere 2>&1"), 0);
  EXPECT_NE(run_shell("kill -KILL $$"), 0) << "the shell itself was killed";
  EXPECT_NE(run_shell("sh -c 'kill -SEGV $$'"), 0) << "a command was killed";
  GetCapturedStdout();
}

TEST_F(Shell, CommandsFindTheirInputEmptyAndOursIsLeftAlone) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ASSERT_EQ(write(ends[1], "ours", 4), 4);
  const int kept = dup(STDIN_FILENO);
  dup2(ends[0], STDIN_FILENO);
  CaptureStdout();
  EXPECT_EQ(run_shell("cat >'" + (scratch_ / "read") + "'"), 0);
  GetCapturedStdout();
  char left[8] = "";
  const auto count = read(STDIN_FILENO, left, sizeof left);
  dup2(kept, STDIN_FILENO);
  for (const int fd : {ends[0], ends[1], kept}) close(fd);
  EXPECT_EQ(read_file(scratch_ / "read"), "");
  EXPECT_EQ(count, 4);
  EXPECT_STREQ(left, "ours");
}

TEST_F(Shell, AClosedInputStaysClosed) {
  const int kept = dup(STDIN_FILENO);
  CaptureStdout();
  close(STDIN_FILENO);
  EXPECT_EQ(run_shell("cat"), 0) << "the command still finds one, and it is empty";
  const bool closed = fcntl(STDIN_FILENO, F_GETFD) == -1;
  dup2(kept, STDIN_FILENO);
  close(kept);
  EXPECT_EQ(GetCapturedStdout(), "cat\n");
  EXPECT_TRUE(closed);
}

TEST_F(Shell, LotsOfOutputDoesNotBlock) {
  CaptureStdout();
  EXPECT_EQ(run_shell("yes | head -c 3000000"), 0);
  EXPECT_GT(GetCapturedStdout().size(), 3000000U);
}

}  // namespace
