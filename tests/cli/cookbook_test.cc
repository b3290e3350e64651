/// @file
/// Runs every block of the cookbook, and the programs that it names when something is wrong.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/cli/quilscene_run.h"

namespace {

class Cookbook : public Quilscene {
 protected:
  Cookbook() {
    std::filesystem::create_directories(scratch_ / "scenes/deep");
    std::filesystem::create_directories(scratch_ / "home");
    for (const char* name : {"robot.quil", "scenes/a.quil", "scenes/deep/b.quil"})
      put(name, read_file(scene_path("robot")));
    put("skeleton.quil", read_file(scene_path("skeleton")));
    // Another machine is a folder on this one; as on any, who logs in gets a shell.
    std::filesystem::create_directories(scratch_ / "bin");
    put("bin/ssh",
        "#!/bin/sh\nwhile :; do case $1 in\n-l | -o) shift 2 ;;\n-*) shift ;;\n*) break ;;\nesac; done\n"
        "shift\n[ \"$1\" != -- ] || shift\nexport SHELL=/bin/sh\ncd \"$HOME\" && exec sh -c \"$*\"\n");
    std::filesystem::permissions(scratch_ / "bin/ssh", std::filesystem::perms::owner_all);
  }
  /// Runs a block in bash, which ends with the first command that fails.
  Ran block(const std::string& text) const {
    put("block", text);
    const std::string programs = support::built_program("cli/quilscene").parent_path().string();
    return run("--version >/dev/null", "; bash -eo pipefail block",
               "export PATH=" + (scratch_ / "bin:") + programs + ":$PATH HOME=" + (scratch_ / "home") + "; ");
  }
};

std::vector<std::string> blocks() {
  std::vector<std::string> found;
  std::istringstream lines{read_file(support::project_file("docs/cookbook.md"))};
  bool inside = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("```")) {
      inside = line == "```sh";
      if (inside) found.emplace_back();
    } else if (inside) {
      found.back() += line + "\n";
    }
  }
  return found;
}

TEST_F(Cookbook, EveryBlockRuns) {
  EXPECT_GE(blocks().size(), 12u);
  for (const std::string& text : blocks()) {
    const Ran ran = block(text);
    EXPECT_EQ(ran.status, 0) << text << ran.out << ran.err;
  }
  EXPECT_TRUE(exists("scenes/deep/b.new")) << "parallel brought the result back";
  EXPECT_TRUE(exists("scenes/deep/b.ok"));
}

TEST_F(Cookbook, ProgramsThatStartMoreUnderstandTheExitStatus) {
  put("scenes/bad.quil", "bad");
  EXPECT_EQ(block("find scenes -name '*.quil' -print0 | xargs -0 -P 2 -n 1 quilscene check --quiet").status,
            123);
  EXPECT_EQ(
      block("ls scenes/*.quil scenes/deep/*.quil | parallel --will-cite quilscene check --quiet").status, 1);
  EXPECT_EQ(block("ls scenes/*.quil | parallel --will-cite --sshlogin box --transfer --cleanup "
                  "quilscene check --quiet {}")
                .status,
            1);
  EXPECT_EQ(block("printf 'all:\\n\\tquilscene check --quiet scenes/bad.quil\\n' > Makefile\nmake").status,
            2);
}

}  // namespace
