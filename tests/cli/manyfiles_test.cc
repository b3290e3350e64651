/// @file
/// Commands on many files: folders, lists, workers, and where the results go.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/cli/quilscene_run.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class ManyFiles : public Quilscene {
 protected:
  ManyFiles() {
    std::filesystem::create_directories(scratch_ / "scenes/deep");
    for (const char* name : {"scenes/b.quil", "scenes/a.quil", "scenes/deep/c.quil"})
      put(name, read_file(scene_path("tiny_v1")));
    put("scenes/notes.txt", "no scene");
    put("drop", "delete obj_0 mat_0\n");
  }
  std::string dropped() const {
    run("edit " + scene_path("tiny_v1") + " -o dropped.quil --script drop");
    return written("dropped.quil");
  }
};

TEST_F(ManyFiles, FoldersStandForTheScenesBelowThem) {
  const std::string headings = run("info -r scenes | grep '==>'").out;
  EXPECT_EQ(headings, "==> scenes/a.quil <==\n==> scenes/b.quil <==\n==> scenes/deep/c.quil <==\n");
  EXPECT_EQ(run("check scenes").status, 3) << "a folder without -r is no file";
  std::filesystem::create_directory(scratch_ / "empty");
  EXPECT_EQ(run("check -r empty").status, 2);
}

TEST_F(ManyFiles, ListsNameFiles) {
  put("list", "scenes/b.quil\n\nscenes/a.quil");
  EXPECT_THAT(run("check @list").out, StartsWith("2 files: "));
  put("a\nb.quil", read_file(scene_path("tiny_v1")));
  EXPECT_THAT(run("check -0 @-", "", "printf 'a\\nb.quil\\0scenes/a.quil' | ").out,
              StartsWith("2 files: 0 errors"));
  EXPECT_EQ(run("check @missing").status, 3);
  EXPECT_EQ(run("info @missing").status, 1);
}

TEST_F(ManyFiles, ResultsAreInTheOrderOfTheFiles) {
  std::string files;
  for (int i = 0; i < 50; ++i) {
    const std::string name = "f" + std::to_string(i) + ".quil";
    put(name, i % 7 == 0 ? read_file(scene_path("robot")) : "bad" + std::to_string(i));
    files += " " + name;
  }
  const Ran one = run("check --jobs 1" + files), four = run("check --jobs 4" + files);
  EXPECT_EQ(four.out, one.out);
  EXPECT_EQ(four.status, 1);
  std::vector<int> order;
  std::istringstream lines{four.out};
  for (std::string line; std::getline(lines, line) && line[0] == 'f';)
    order.push_back(std::stoi(line.substr(1)));
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_F(ManyFiles, AWorkerThatIsKilledIsAFileThatFailed) {
  // A worker waits for the end of standard input; when the other file has been printed, it is killed.
  const std::string program = support::built_program("cli/quilscene").string();
  put("kill.sh", "mkfifo pipe\n" + program + " check --jobs 2 " + scene_path("robot") +
                     " - <pipe >printed 2>complained &\n"
                     "exec 3>pipe\n"
                     "until grep -q orphan printed; do sleep 0.01; done\n"
                     "kill -9 $(cat /proc/$!/task/$!/children)\n"
                     "wait $!; echo $? >status\n");
  run("--version", "; sh kill.sh");
  EXPECT_EQ(written("status"), "1\n");
  EXPECT_EQ(written("complained"), "==> - <==\nquilscene: -: ended by signal 9\n");
  EXPECT_THAT(written("printed"), HasSubstr("2 files: "));
}

TEST_F(ManyFiles, AreEditedInPlace) {
  const Ran ran = run("edit -r scenes -i --script drop");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out,
            "==> scenes/a.quil <==\n-> 1\n==> scenes/b.quil <==\n-> 1\n==> scenes/deep/c.quil <==\n-> 1\n");
  const std::string expected = dropped();
  for (const char* name : {"scenes/a.quil", "scenes/b.quil", "scenes/deep/c.quil"})
    EXPECT_TRUE(written(name) == expected) << name;
}

TEST_F(ManyFiles, AreWrittenBelowAnotherFolderWithTheTreeKept) {
  EXPECT_EQ(run("edit -r scenes -C out/new --quiet --script drop").out, "");
  EXPECT_TRUE(written("out/new/scenes/deep/c.quil") == dropped());
  EXPECT_TRUE(written("scenes/deep/c.quil") == read_file(scene_path("tiny_v1")));
  EXPECT_EQ(run("resave ./scenes/a.quil -C again").status, 0);
  EXPECT_TRUE(exists("again/scenes/a.quil"));
  EXPECT_EQ(run("resave " + (scratch_ / "scenes/a.quil") + " -C absolute").status, 0);
  EXPECT_TRUE(exists("absolute" + (scratch_ / "scenes/a.quil")));
}

TEST_F(ManyFiles, TargetsThatMakeNoSenseAreWrongUse) {
  for (const char* line :
       {"resave scenes/a.quil scenes/b.quil -o out.quil", "resave scenes/a.quil -i -o out.quil",
        "resave scenes/a.quil -i -C out", "resave scenes/a.quil", "resave scenes/../scenes/a.quil -C out",
        "resave scenes/a.quil ./scenes/a.quil -C out", "resave - -i", "graph scenes/a.quil scenes/b.quil"}) {
    const Ran ran = run(line);
    EXPECT_EQ(ran.status, 2) << line;
    EXPECT_THAT(ran.err, StartsWith("quilscene: ")) << line;
  }
  EXPECT_FALSE(exists("out"));
}

TEST_F(ManyFiles, AtomicEditsAreAllOrNothing) {
  put("mixed", "delete obj_0 mat_0\n\nadd obj_0 shape_0\n");
  const Ran atomic = run("edit scenes/a.quil -o out.quil --atomic --script mixed");
  EXPECT_EQ(atomic.status, 1);
  EXPECT_THAT(atomic.err, AllOf(HasSubstr("quilscene: mixed:3: obj_0 has shape_0 already\n"),
                                HasSubstr("nothing is written\n")));
  EXPECT_FALSE(exists("out.quil"));
  const Ran all = run("edit scenes/a.quil -o out.quil --script mixed");
  EXPECT_EQ(all.status, 1);
  EXPECT_TRUE(written("out.quil") == dropped());
}

TEST_F(ManyFiles, QuietEditsPrintRefusalsAlone) {
  put("mixed", "delete obj_0 mat_0\nname obj_9 x\nnew joint\n");
  const Ran ran = run("edit scenes/a.quil -o out.quil --quiet --script mixed");
  EXPECT_THAT(ran.out, IsEmpty());
  EXPECT_EQ(ran.err,
            "quilscene: mixed:2: obj_9 can't be named\n"
            "quilscene: mixed:3: scenes of version 1 have no such elements\n");
}

TEST_F(ManyFiles, RefusalsTellTheirFile) {
  put("scenes/b.quil", "bad");
  const Ran ran = run("edit -r scenes -i --script drop");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err, AllOf(StartsWith("==> scenes/b.quil <==\n"), HasSubstr("can't read scenes/b.quil\n"),
                             Not(HasSubstr("a.quil"))));
}

TEST_F(ManyFiles, ABarIsDrawnOnATerminalWhileThereIsMuchLeft) {
  put("list", [] {
    std::string names;
    for (int i = 0; i < 200000; ++i) names += "scenes/a.quil\n";
    return names;
  }());
  const std::string program = support::built_program("cli/quilscene").string();
  put("bar.sh", "script -qfc '" + program +
                    " check --quiet @list' typescript >/dev/null &\n"
                    "until grep -q 'files, .* s left' typescript; do kill -0 $! || exit 1; sleep 0.05; done\n"
                    "kill $!\nwait $!\nexit 0\n");
  EXPECT_EQ(run("--version", "; sh bar.sh").status, 0);
  EXPECT_THAT(written("typescript"), HasSubstr(" of 200000 files, "));
}

TEST_F(ManyFiles, NoBarIsDrawnInAPipe) { EXPECT_THAT(run("check -r scenes").err, IsEmpty()); }

}  // namespace
