/// @file
/// The program that writes the samples, and the edit scripts that come with them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <algorithm>

#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/places.h"
#include "tests/support/process.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;

const std::string kMakeSamples = support::built_program("samples/make_samples");
const std::string kQuilscene = support::built_program("cli/quilscene");

struct Ran {
  std::optional<int> status;
  std::string output, errors;
};

class MakeSamples : public testing::Test {
 protected:
  Ran run(const std::vector<std::string>& command) {
    support::Process::Start start;
    start.command = command;
    start.output = scratch_ / "output";
    start.errors = scratch_ / "errors";
    const std::optional<int> status = support::Process(start).waitForExit();
    return {status, read_file(start.output), read_file(start.errors)};
  }

  const ScratchDirectory scratch_;
  const std::string scenes_ = scratch_ / "new/scenes";
};

/// What a check printed: lines about files, and how many findings there are.
void expect_notes_alone(const std::string& printed) {
  std::istringstream lines(printed);
  std::string line;
  for (; std::getline(lines, line) && line.starts_with('/');) EXPECT_THAT(line, HasSubstr(": note: "));
  EXPECT_THAT(line, HasSubstr(": 0 errors, 0 warnings, "));
}

TEST_F(MakeSamples, WritesScenesWithoutFindings) {
  const Ran made = run({kMakeSamples, scenes_});
  EXPECT_EQ(made.status, 0);
  EXPECT_EQ(made.output + made.errors, "");
  const Ran checked = run({kQuilscene, "check", scenes_ + "/table.quil", scenes_ + "/harbour.quil",
                           scenes_ + "/dog.quil", scenes_ + "/arm.quil"});
  EXPECT_EQ(checked.status, 0);
  EXPECT_EQ(checked.errors, "");
  expect_notes_alone(checked.output);
}

TEST_F(MakeSamples, WritesALargeSceneAlone) {
  EXPECT_EQ(run({kMakeSamples, "--objects", "2000", "--textures", "2", scenes_}).status, 0);
  EXPECT_THAT(run({kQuilscene, "info", scenes_ + "/city.quil"}).output,
              HasSubstr("ObjList                2000"));
  EXPECT_FALSE(std::filesystem::exists(scenes_ + "/table.quil"));
}

TEST_F(MakeSamples, SaysWhatItTakes) {
  const Ran help = run({kMakeSamples, "--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.output, HasSubstr("usage: make_samples"));
  for (const std::vector<std::string>& wrong :
       std::vector<std::vector<std::string>>{{},
                                             {"a", "b"},
                                             {"--objects"},
                                             {"--objects", "many", "a"},
                                             {"--objects", "-1", "a"},
                                             {"--textures", "99999999999", "a"},
                                             {"--other", "a"}}) {
    std::vector<std::string> command{kMakeSamples};
    command.insert(command.end(), wrong.begin(), wrong.end());
    const Ran ran = run(command);
    EXPECT_EQ(ran.status, 2) << testing::PrintToString(wrong);
    EXPECT_THAT(ran.errors, HasSubstr("usage: make_samples"));
  }
}

TEST_F(MakeSamples, FailsWhereItCannotWrite) {
  write_file(scratch_ / "file", "in the way");
  const Ran ran = run({kMakeSamples, scratch_ / "file"});
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.errors, HasSubstr("make_samples: "));
}

struct Script {
  std::string name;
  std::vector<std::string> answers;
  std::string reason;  ///< why the last was refused
};

class EditScripts : public MakeSamples {
 protected:
  /// Runs the script of that name on the scene of that name, giving "edited.quil".
  Ran edited(const std::string& name) {
    EXPECT_EQ(run({kMakeSamples, scenes_}).status, 0);
    return run({kQuilscene, "edit", scenes_ + "/" + name + ".quil", "-o", scenes_ + "/edited.quil",
                "--script", support::project_file("samples/edits/" + name + ".txt").string()});
  }
};

class EditScript : public EditScripts, public testing::WithParamInterface<Script> {};

TEST_P(EditScript, DoesWhatItsCommentsSay) {
  const Ran ran = edited(GetParam().name);
  std::vector<std::string> answers;
  std::istringstream lines(ran.output);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("->")) answers.push_back(line);
  }
  EXPECT_EQ(answers, GetParam().answers);
  EXPECT_THAT(ran.errors, EndsWith(GetParam().reason));
  EXPECT_EQ(std::ranges::count(ran.errors, '\n'), 1);
  EXPECT_EQ(run({kQuilscene, "check", scenes_ + "/edited.quil"}).status, 0);
}

INSTANTIATE_TEST_SUITE_P(All, EditScript,
                         testing::Values(Script{"table",
                                                {"-> 1", "-> 1", "-> 1", "-> 1", "-> 1", "-> 0"},
                                                "obj_4 has obj_0: they can't hold each other\n"},
                                         Script{"dog",
                                                {"-> 1", "-> 1", "-> 1", "-> 1", "-> 1", "-> 0"},
                                                "a joint does not refer to shapes\n"},
                                         Script{"arm",
                                                {"-> 1", "-> 1", "-> 2", "-> 1", "-> 1", "-> 1", "-> 1",
                                                 "-> 1", "-> 1", "-> 1", "-> 1", "-> 1", "-> 1", "-> 1",
                                                 "-> 1", "-> 1", "-> 1", "-> 1", "-> 1", "-> 0"},
                                                "there is no such shape, or the element takes more "
                                                "than 16 MiB\n"}),
                         CaseName());

TEST_F(EditScripts, GiveTheArmASkeletonThatOpensAgain) {
  edited("arm");
  const Ran graph = run({kQuilscene, "graph", scenes_ + "/edited.quil"});
  EXPECT_EQ(graph.errors, "") << "it opens with nothing printed";
  EXPECT_THAT(graph.output, HasSubstr("arc obj_5 ChainRoot_0\n"
                                      "arc ChainRoot_0 joint_0\n"
                                      "arc joint_0 obj_0\n"
                                      "arc joint_0 joint_1\n"
                                      "arc joint_1 obj_1\n"
                                      "arc joint_1 effector_0\n"
                                      "arc effector_0 obj_2\n"));
  EXPECT_THAT(graph.output, HasSubstr("arc obj_5 obj_3\narc obj_5 obj_4\n"));
  EXPECT_THAT(run({kQuilscene, "info", scenes_ + "/edited.quil"}).output, HasSubstr(" shoulder_joint\n"));

  const Ran checked = run({kQuilscene, "check", scenes_ + "/edited.quil"});
  expect_notes_alone(checked.output);

  ASSERT_EQ(run({kQuilscene, "resave", scenes_ + "/edited.quil", "-o", scenes_ + "/again.quil"}).status, 0);
  EXPECT_TRUE(read_file(scenes_ + "/again.quil") == read_file(scenes_ + "/edited.quil"));
}

}  // namespace
