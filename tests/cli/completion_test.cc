/// @file
/// Completes command lines in the shells, with what the program prints for them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/cli/quilscene_run.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class Completions : public Quilscene {
 protected:
  /// The lines that a script of that shell prints once it has the completions, in the file "script".
  std::vector<std::string> lines_of(const std::string& shell, const std::string& script) const {
    EXPECT_EQ(run("completion " + shell + " >script").status, 0);
    put("test", script);
    std::vector<std::string> lines;
    std::istringstream printed{run("--version >/dev/null", "; " + shell + " test").out};
    for (std::string line; std::getline(printed, line);) lines.push_back(line);
    return lines;
  }
  /// What bash offers for the last of the words.
  std::vector<std::string> in_bash(const std::string& words) const {
    return lines_of("bash", "source ./script\nCOMP_WORDS=(quilscene " + words +
                                ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_quilscene\n"
                                "printf '%s\\n' \"${COMPREPLY[@]}\"\n");
  }
  std::vector<std::string> in_fish(const std::string& line) const {
    return lines_of("fish", "source ./script\ncomplete -C '" + line + "'\n");
  }
  /// What zsh is told when it completes the last of the words.
  std::vector<std::string> in_zsh(const std::string& words) const {
    return lines_of("zsh",
                    "_describe() { print -rl -- $commands }\n_arguments() { print -rl -- \"$@\" }\n"
                    "words=(quilscene " +
                        words + " '')\nCURRENT=$#words\nrun() { source ./script }\nrun\n");
  }
};

TEST_F(Completions, OfBash) {
  EXPECT_THAT(in_bash("re"), ElementsAre("render", "resave", "recover"));
  EXPECT_THAT(in_bash("graph --d"), ElementsAre("--dot"));
  EXPECT_THAT(in_bash("resave a --mode ''"), ElementsAre("1", "2"));
  EXPECT_THAT(in_bash("help opt"), ElementsAre("options"));
  put("a scene.quil", "");
  EXPECT_THAT(in_bash("info 'a '"), ElementsAre("a scene.quil"));
  EXPECT_THAT(in_bash("edit a --script ''"), Contains("a scene.quil"));
}

TEST_F(Completions, OfFish) {
  EXPECT_THAT(in_fish("quilscene reco"),
              ElementsAre("recover\tthe copies of unsaved work; take one out, forget one"));
  EXPECT_THAT(in_fish("quilscene graph --do"), ElementsAre("--dot\tFor Graphviz"));
  EXPECT_THAT(in_fish("quilscene resave --mode "), testing::SizeIs(2));
  EXPECT_THAT(in_fish("quilscene info --d"), Not(Contains(testing::StartsWith("--dot"))));
}

TEST_F(Completions, OfZsh) {
  EXPECT_THAT(in_zsh(""), Contains("graph:nodes and arcs in their order, or as a Graphviz graph"));
  EXPECT_THAT(in_zsh("graph"), Contains("--dot[For Graphviz]"));
  EXPECT_THAT(in_zsh("show"),
              AllOf(Contains("1:The scene:_files"), Contains("*:As graph names them:_files")));
  EXPECT_THAT(in_zsh("completion"), Contains("1:The shell:(bash zsh fish)"));
}

TEST_F(Completions, OfNoOtherShell) { EXPECT_EQ(run("completion tcsh").status, 2); }

}  // namespace
