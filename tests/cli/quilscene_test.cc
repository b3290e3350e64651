/// @file
/// Runs the built quilscene on sample scenes and on spoilt ones: output, exit status, files written.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tests/cli/quilscene_run.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/places.h"
#include "tests/support/shared_scenes.h"

namespace {

using testing::AllOf;
using testing::ContainerEq;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// What every sample scene goes through.

class SampleScene : public Quilscene, public testing::WithParamInterface<const char*> {
 protected:
  const SharedScene facts_ = shared_scene(GetParam());
  const std::string& file_ = facts_.path;
};

TEST_P(SampleScene, GraphHasItsNodesAndArcsInOrder) {
  const Ran ran = run("graph " + file_);
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.err, IsEmpty());
  EXPECT_THAT(lines_with(ran.out, "node"), ContainerEq(facts_.nodes));
  std::vector<std::string> arcs;
  for (const auto& [parent, child] : facts_.arcs) arcs.push_back(parent + " " + child);
  EXPECT_THAT(lines_with(ran.out, "arc"), ContainerEq(arcs));
}

TEST_P(SampleScene, InfoHasItsVersionCountsAndNames) {
  const Ran ran = run("info " + file_);
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.err, IsEmpty());
  std::istringstream words{ran.out};
  std::map<std::string, long> numbers;  // the first number after each word: version, sizes, records of a list
  for (std::string line; std::getline(words, line);) {
    std::istringstream row{line};
    std::string name;
    long number = 0;
    if (row >> name >> number) numbers[name] = number;
  }
  EXPECT_EQ(numbers["version"], facts_.version / 0x100);
  EXPECT_EQ(numbers["file_size"], facts_.bytes);
  for (const auto& [list, count] : facts_.counts) EXPECT_EQ(numbers[list + "List"], count) << list;
  std::vector<std::string> names;
  for (const std::string& name : facts_.names) names.push_back(std::to_string(names.size()) + " " + name);
  EXPECT_THAT(lines_with(ran.out, "name"), ContainerEq(names));
}

TEST_P(SampleScene, ResavesByteForByteInBothModes) {
  for (const char* mode : {"1", "2"}) {
    SCOPED_TRACE(mode);
    const Ran ran = run("resave " + file_ + " -o out.quil --mode " + mode);
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.out + ran.err, "");
    EXPECT_TRUE(written("out.quil") == read_file(file_));
  }
}

TEST_P(SampleScene, ChecksWellWithNothingButNotes) {
  const Ran ran = run("check " + file_);
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.err, IsEmpty());
  std::istringstream lines{ran.out};
  std::string line;
  for (; std::getline(lines, line) && line.starts_with(file_);)
    EXPECT_THAT(line, StartsWith(file_ + ": note: "));
  EXPECT_THAT(line, StartsWith("1 file: 0 errors, 0 warnings, "));
  EXPECT_FALSE(std::getline(lines, line));
}

TEST_P(SampleScene, EmptyScriptSavesTheSameFile) {
  const Ran ran = run("edit " + file_ + " -o out.quil");
  EXPECT_EQ(ran.status, 0);
  EXPECT_TRUE(written("out.quil") == read_file(file_));
}

INSTANTIATE_TEST_SUITE_P(Data, SampleScene, testing::ValuesIn(kSharedScenes),
                         [](const auto& row) { return std::string{row.param}; });

// Results in detail.

TEST_F(Quilscene, GraphForGraphvizLabelsLevelsOfDetail) {
  const Ran ran = run("graph --dot " + scene_path("robot"));
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.out, AllOf(StartsWith("digraph scene {\n"), HasSubstr("  \"scene_0\";\n"),
                             HasSubstr("  \"lod_13\" [label=\"LOD\"];\n"),
                             HasSubstr("  \"obj_13\" -> \"lod_13\";\n"), testing::EndsWith("}\n")));
}

TEST_F(Quilscene, InfoOfVersion1HasNoExtensionLists) {
  EXPECT_THAT(run("info " + scene_path("tiny_v1")).out,
              AllOf(HasSubstr("NameList"), Not(HasSubstr("CiImgList"))));
  EXPECT_THAT(run("info " + scene_path("tiny_v2")).out, HasSubstr("CiImgList"));
}

TEST_F(Quilscene, CheckNotesRecordsThatNothingRefersTo) {
  const Ran ran = run("check " + scene_path("robot"));
  EXPECT_THAT(ran.out, AllOf(HasSubstr(": note: obj_17 (orphan): nothing refers to it\n"),
                             HasSubstr(": note: anim_5 (a_unused): nothing refers to it\n")));
}

/// tiny_v1 with its object's record found: 88 bytes after the list's header and size table.
struct TinyObject {
  std::string file = read_file(scene_path("tiny_v1"));
  std::size_t record = 0;
  TinyObject() {
    std::size_t list = 100;
    for (std::size_t entry = 0; entry < 4; ++entry) list += word_at(file, 16 + 4 * entry);
    record = list + 24 + 4;
  }
};

TEST_F(Quilscene, CheckReportsAReferenceOutsideItsList) {
  const TinyObject tiny;
  ASSERT_EQ(word_at(tiny.file, tiny.record), 0x20100u);
  put("bad.quil", with_word(tiny.file, tiny.record + 4 * 16, 7));
  const Ran ran = run("check bad.quil");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.out, HasSubstr("bad.quil: reference: obj_0: shape 7 is outside its list of 1\n"));
}

TEST_F(Quilscene, CheckReportsWhatTheReaderSays) {
  put("bad.quil", with_word(TinyObject{}.file, 8, 1));
  const Ran ran = run("check bad.quil");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.out,
            "bad.quil: message: tag error.\n"
            "bad.quil: message: FileHeader, byte 8: header_tag 0x00000001, expected 0\n"
            "bad.quil: message: can't be opened\n"
            "1 file: 2 errors, 0 warnings, 0 notes, 0 hints\n");
  EXPECT_THAT(ran.err, IsEmpty());
}

/// A size word of tiny_v1's only object and of what contains it, the sort of finding when it is wrong, and
/// the exit status.
struct SizeRow {
  const char* name;
  std::size_t before_record;  ///< bytes from the word to the record; 0: the word is in the record
  const char* finding;
  int status;
};
class WrongSize : public Quilscene, public testing::WithParamInterface<SizeRow> {};

TEST_P(WrongSize, IsReportedAndStays) {
  const TinyObject tiny;
  const SizeRow& row = GetParam();
  const std::size_t offset = row.before_record == 0 ? tiny.record + 8 : tiny.record - row.before_record;
  const std::string bad = with_word(tiny.file, offset, word_at(tiny.file, offset) + 400);
  put("bad.quil", bad);
  const Ran ran = run("check bad.quil");
  EXPECT_EQ(ran.status, row.status);
  EXPECT_THAT(ran.out, StartsWith(std::string{"bad.quil: "} + row.finding + ": "));
  EXPECT_TRUE(written("bad.quil") == bad) << "a check changes no file";
}

INSTANTIATE_TEST_SUITE_P(Rows, WrongSize,
                         testing::Values(SizeRow{"OfTheRecord", 0, "hint", 0},
                                         SizeRow{"InTheSizeTable", 4, "hint", 0},
                                         SizeRow{"OfTheList", 20, "hint", 0},
                                         SizeRow{"InTheDirectory", TinyObject{}.record - 32, "message", 1},
                                         SizeRow{"OfTheFile", TinyObject{}.record - 4, "message", 1}),
                         CaseName{});

TEST_F(Quilscene, ResaveKeepsSizesThatNothingReads) {
  const TinyObject tiny;
  std::string odd = tiny.file;
  for (const std::size_t offset : {tiny.record + 8, tiny.record - 4, tiny.record - 20})
    odd = with_word(odd, offset, 0);
  put("odd.quil", odd);
  for (const char* mode : {"1", "2"}) {
    const Ran ran = run(std::string{"resave odd.quil -o out.quil --mode "} + mode);
    EXPECT_EQ(ran.status, 0);
    EXPECT_EQ(ran.out + ran.err, "");
    EXPECT_TRUE(written("out.quil") == odd) << mode;
  }
}

TEST_F(Quilscene, CheckReportsLoopsAmongObjects) {
  ASSERT_EQ(edit("robot", "add obj_5 obj_1\n").status, 0);
  const Ran ran = run("check out.quil");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.out, HasSubstr("out.quil: loop: obj_1 -> obj_2 -> obj_4 -> obj_5 -> obj_1\n"));
}

TEST_F(Quilscene, CheckGoesOnAfterABadFile) {
  const Ran ran = run("check missing.quil " + scene_path("tiny_v1") + " also_missing.quil");
  EXPECT_EQ(ran.status, 3);
  EXPECT_THAT(ran.out, AllOf(HasSubstr("missing.quil: message: Input File Open Error\n"),
                             HasSubstr("also_missing.quil: message: can't be opened\n")));
}

TEST_F(Quilscene, ControlCharactersInNamesAreShownAsCodes) {
  std::string file = read_file(scene_path("tiny_v1"));
  const std::size_t name = file.find("tiny");
  ASSERT_NE(name, std::string::npos);
  file.replace(name, 4, "t\x1b\ny");
  put("odd.quil", file);
  EXPECT_THAT(run("info odd.quil").out, HasSubstr("name 0 t\\x1b\\x0ay\n"));
}

// Edits.

TEST_F(Quilscene, EditRunsTheRulesAndSaysHowEachWent) {
  const Ran ran =
      edit("tiny_v1", "# take the material away, and put it back\n\ndelete obj_0 mat_0\nadd obj_0 mat_0\n");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out,
            "-> 1\n"
            "parent = obj_0, child = mat_0\n"
            " parent = 0x00020100, 0\n"
            " child  = 0x000a0100, 0\n"
            "-> 1\n");
  EXPECT_TRUE(written("out.quil") == read_file(scene_path("tiny_v1")));
}

TEST_F(Quilscene, RefusedEditFailsButTheOthersAreSaved) {
  const Ran ran = edit("tiny_v1", "add obj_0 shape_0\ndelete obj_0 mat_0\n");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.out, HasSubstr("-> 0\n-> 1\n"));
  EXPECT_EQ(ran.err, "quilscene: script:1: obj_0 has shape_0 already\n");
  EXPECT_THAT(run("graph out.quil").out, AllOf(HasSubstr("arc obj_0 shape_0\n"), Not(HasSubstr("mat_0"))));
}

TEST_F(Quilscene, MoveTakesFourNodes) {
  const Ran ran = edit("robot", "move obj_4 obj_5 obj_8 obj_5\n");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(run("graph out.quil").out,
              AllOf(HasSubstr("arc obj_8 obj_5\n"), Not(HasSubstr("arc obj_4 obj_5\n"))));
}

TEST_F(Quilscene, NameTakesTheRestOfTheLine) {
  EXPECT_EQ(edit("tiny_v1", "name obj_0  a long new #1 name  \n").status, 0);
  EXPECT_THAT(run("info out.quil").out, HasSubstr(" a_long_new_#1_name\n"));
  EXPECT_EQ(run("check out.quil").status, 0);
}

TEST_F(Quilscene, ScriptComesFromStandardInputByDefault) {
  put("script", "delete obj_0 mat_0");
  const Ran ran = run("edit " + scene_path("tiny_v1") + " -o out.quil", "<script");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out, "-> 1\n");
}

TEST_F(Quilscene, EditDoesNotOverwriteAFileThatSomebodyChangedMeanwhile) {
  put("scene.quil", read_file(scene_path("tiny_v1")));
  std::filesystem::create_symlink("scene.quil", scratch_ / "link.quil");
  for (const char* output : {"scene.quil", "./scene.quil", "link.quil"}) {
    SCOPED_TRACE(output);
    put("scene.quil", read_file(scene_path("tiny_v1")));
    // The pipe opens when the scene has been read and its script is wanted.
    const Ran ran = run(std::string("edit scene.quil -o ") + output + " --script pipe", "",
                        "rm -f pipe; mkfifo pipe; (exec 3>pipe; cp " + scene_path("robot") +
                            " scene.quil; echo delete obj_0 mat_0 >&3) & ");
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.err, HasSubstr("quilscene: scene.quil changed on disk since it was opened, nothing is "
                                   "written\n"));
    EXPECT_TRUE(written("scene.quil") == read_file(scene_path("robot")));
  }
}

TEST_F(Quilscene, EditOfAFileThatIsGoneMeanwhileIsSaved) {
  put("scene.quil", read_file(scene_path("tiny_v1")));
  const Ran ran = run("edit scene.quil -o scene.quil --script pipe", "",
                      "mkfifo pipe; (exec 3>pipe; rm scene.quil; echo delete obj_0 mat_0 >&3) & ");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_THAT(run("graph scene.quil").out, Not(HasSubstr("mat_0")));
}

TEST_F(Quilscene, OutputMayBeTheInput) {
  put("scene.quil", read_file(scene_path("tiny_v1")));
  put("script", "delete obj_0 mat_0\n");
  EXPECT_EQ(run("edit scene.quil -o scene.quil --script script").status, 0);
  EXPECT_THAT(run("graph scene.quil").out, Not(HasSubstr("mat_0")));
}

TEST_F(Quilscene, RepeatedChildIsSavedAsAFileThatOpens) {
  const Ran ran = edit("robot", "add obj_2 obj_3\nadd mat_0 tex_0\n");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(lines_with(ran.out, "->"), (std::vector<std::string>(2, "1")));
  EXPECT_THAT(ran.err, Not(IsEmpty())) << "the four bytes that each added are taken back";
  EXPECT_TRUE(written("out.quil") == read_file(scene_path("robot")));
}

struct ScriptRow {
  const char* name;
  const char* line;
};
class MalformedScript : public Quilscene, public testing::WithParamInterface<ScriptRow> {};

TEST_P(MalformedScript, EndsWithStatus2AndWritesNothing) {
  const Ran ran =
      edit("tiny_v1", std::string{"delete obj_0 mat_0\n"} + GetParam().line + "\nadd obj_0 mat_0\n");
  EXPECT_EQ(ran.status, 2);
  EXPECT_EQ(ran.out, "-> 1\n");
  EXPECT_THAT(ran.err, HasSubstr("script:2: malformed line"));
  EXPECT_FALSE(exists("out.quil"));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MalformedScript,
    testing::Values(ScriptRow{"UnknownCommand", "link obj_0 mat_0"},
                    ScriptRow{"CapitalLetters", "ADD obj_0 mat_0"}, ScriptRow{"TooFewNodes", "add obj_0"},
                    ScriptRow{"TooManyNodes", "delete obj_0 mat_0 shape_0"},
                    ScriptRow{"MoveOfThree", "move obj_0 mat_0 obj_1"}, ScriptRow{"NothingToAdd", "add"},
                    ScriptRow{"NameOfNothing", "name"}, ScriptRow{"NameWithoutText", "name obj_0"},
                    ScriptRow{"NameOfBlanks", "name obj_0   "},
                    ScriptRow{"NodeInAComment", "add obj_0 # mat_0"}, ScriptRow{"SetOfNothing", "set"},
                    ScriptRow{"SetWithoutItem", "set obj_0"}, ScriptRow{"SetOfAComment", "set obj_0 # a=1"},
                    ScriptRow{"SetWithoutValue", "set obj_0 type_g.type"},
                    ScriptRow{"SetWithoutItemName", "set obj_0 =1"},
                    ScriptRow{"SetOfABareWordAfter", "set obj_0 type_g.type=1 word"},
                    ScriptRow{"SetWithoutClosingMark", "set obj_0 title.nodeName=\"a b"},
                    ScriptRow{"SetWithAnEscapedClosingMark", "set obj_0 title.nodeName=\"a\\\""},
                    ScriptRow{"SetWithTextAfterTheMark", "set obj_0 title.nodeName=\"a\"b"}),
    CaseName{});

struct WellFormedRow {
  const char* name;
  const char* line;
};
class WellFormedScript : public Quilscene, public testing::WithParamInterface<WellFormedRow> {};

TEST_P(WellFormedScript, IsUnderstood) {
  const Ran ran = edit("tiny_v1", GetParam().line);
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out, "-> 1\n");
}

INSTANTIATE_TEST_SUITE_P(Rows, WellFormedScript,
                         testing::Values(WellFormedRow{"NoNewline", "delete obj_0 mat_0"},
                                         WellFormedRow{"TabsAndBlanks", " \tdelete\tobj_0   mat_0 \n"},
                                         WellFormedRow{"DosLines", "# comment\r\n\r\ndelete obj_0 mat_0\r\n"},
                                         WellFormedRow{"TrailingComment", "delete obj_0 mat_0 # no more\n"}),
                         CaseName{});

TEST_F(Quilscene, MissingScriptFailsAndWritesNothing) {
  const Ran ran = run("edit " + scene_path("tiny_v1") + " -o out.quil --script missing");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err, HasSubstr("can't read missing: No such file or directory"));
  EXPECT_FALSE(exists("out.quil"));
}

TEST_F(Quilscene, AScriptThatCannotBeReadToItsEndEndsWithStatus2AndWritesNothing) {
  // This process's memory: a read at address 0 fails.
  for (const auto& [option, input] : {std::pair{"--script .", ""}, {"", "<."}, {"", "</proc/self/mem"}}) {
    SCOPED_TRACE(std::string{option} + input);
    const Ran ran = run("edit " + scene_path("tiny_v1") + " -o out.quil " + option, input);
    EXPECT_EQ(ran.status, 2);
    EXPECT_THAT(ran.err, HasSubstr("can't read "));
    EXPECT_THAT(ran.out, IsEmpty());
    EXPECT_FALSE(exists("out.quil"));
  }
}

// What a save would lose.

class LongHeaderBlock : public Quilscene {
 protected:
  /// tiny_v2 with 4 bytes more in header block 1.
  LongHeaderBlock() {
    file_ = read_file(scene_path("tiny_v2"));
    for (const std::size_t offset : {4U, 12U, 92U})
      file_ = with_word(file_, offset, word_at(file_, offset) + 4);
    file_.insert(100 + 36, "more");
    put("long.quil", file_);
  }
  std::string file_;
};

TEST_F(LongHeaderBlock, CheckTellsWhatASaveDrops) {
  const Ran ran = run("check long.quil");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.out, AllOf(HasSubstr("long.quil: hint: 4 bytes of header extension block 1"),
                             HasSubstr("save in mode 2\n"), Not(HasSubstr("mode 1"))));
}

TEST_F(LongHeaderBlock, ResaveTellsWhatItDrops) {
  const Ran ran = run("resave long.quil -o out.quil");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT("\n" + ran.err, HasSubstr("\n4 bytes of header extension block 1"));
  EXPECT_TRUE(written("out.quil") == read_file(scene_path("tiny_v2")));
}

TEST_F(LongHeaderBlock, StrictResaveRefusesToDropAnything) {
  const Ran refused = run("resave long.quil -o out.quil --strict");
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err,
              AllOf(StartsWith("4 bytes of header extension block 1"), HasSubstr("nothing is written")));
  EXPECT_FALSE(exists("out.quil"));
  EXPECT_EQ(run("resave long.quil -o out.quil --strict --mode 1").status, 0);
  EXPECT_TRUE(written("out.quil") == file_);
}

TEST_F(Quilscene, NodesThatAreNoneAreRefused) {
  const Ran ran = edit("tiny_v1",
                       "add obj_7 mat_0\nadd obj_0 lod_0\nadd newNode obj_0\nname obj_99 text\n"
                       "delete a_very_long_prefix_0 x_1\n");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(lines_with(ran.out, "->"), (std::vector<std::string>(5, "0")));
  EXPECT_TRUE(written("out.quil") == read_file(scene_path("tiny_v1")));
}

// Wrong use and help.

class WrongUse : public Quilscene, public testing::WithParamInterface<ScriptRow> {};

TEST_P(WrongUse, EndsWithStatus2AndAMessage) {
  put("a", read_file(scene_path("tiny_v1")));
  const Ran ran = run(GetParam().line);
  EXPECT_EQ(ran.status, 2);
  EXPECT_THAT(ran.out, IsEmpty());
  EXPECT_THAT(ran.err, StartsWith("quilscene: "));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WrongUse,
    testing::Values(
        ScriptRow{"NoCommand", ""}, ScriptRow{"UnknownCommand", "list a"}, ScriptRow{"NoFile", "info"},
        ScriptRow{"NoFileToCheck", "check"}, ScriptRow{"NoNodeToShow", "show a"},
        ScriptRow{"TwoFiles", "graph a a"}, ScriptRow{"NoOutput", "resave a"},
        ScriptRow{"NoOutputName", "resave a -o"}, ScriptRow{"EmptyOutputName", "resave a -o ''"},
        ScriptRow{"UnknownOption", "info --all a"}, ScriptRow{"OptionOfAnotherCommand", "info --dot a"},
        ScriptRow{"ModeThree", "resave a -o b --mode 3"}, ScriptRow{"ModeOfText", "edit a -o b --mode x"},
        ScriptRow{"ValueForAFlag", "graph --dot=yes a"}, ScriptRow{"CopyWithoutOutput", "recover 1"},
        ScriptRow{"OutputWithoutCopy", "recover -o b"}, ScriptRow{"NoCopyToRemove", "recover --remove"},
        ScriptRow{"RemoveAndOutput", "recover 1 --remove -o b"}, ScriptRow{"TwoCopies", "recover 1 2 -o b"},
        ScriptRow{"CopyOfText", "recover 1x -o b"}, ScriptRow{"CopyZero", "recover --remove 0"},
        ScriptRow{"CopyTooHigh", "recover --remove 99999999999"}),
    CaseName{});

TEST_F(Quilscene, OptionsMayStandAnywhereAndEnd) {
  put("-odd.quil", read_file(scene_path("tiny_v1")));
  EXPECT_EQ(run("resave --mode=1 -oout.quil -- -odd.quil").status, 0);
  EXPECT_TRUE(exists("out.quil"));
}

TEST_F(Quilscene, HelpNamesEveryCommand) {
  const Ran ran = run("--help");
  EXPECT_EQ(ran.status, 0);
  for (const char* command : {"info", "check", "graph", "show", "resave", "edit", "options", "recover",
                              "--version", "move OLD_PARENT", "set NODE"})
    EXPECT_THAT(ran.out, HasSubstr(command));
}

TEST_F(Quilscene, HelpIsGivenForACommandToo) {
  const std::string edit = run("help edit").out, all = run("--help").out;
  for (const auto& [line, help] : {std::pair{"-h", all},
                                   {"help", all},
                                   {"edit --help", edit},
                                   {"edit -h", edit},
                                   {"edit a -o out.quil -h", edit}}) {
    const Ran ran = run(line);
    EXPECT_EQ(ran.status, 0) << line;
    EXPECT_EQ(ran.out, help) << line;
    EXPECT_THAT(ran.err, IsEmpty());
  }
  EXPECT_THAT(edit, AllOf(HasSubstr("\nUsage: quilscene edit FILE... [OPTIONS]\n"),
                          HasSubstr("--script SCRIPT"), HasSubstr("new cluster CLUSTERS")));
  EXPECT_NE(run("help info").out, edit);
  EXPECT_EQ(run("help nothing").status, 2);
}

TEST_F(Quilscene, WrongUseSaysWhatIsMissingOrTooMuch) {
  for (const auto& [line, says] : {std::pair{"info", "a FILE is missing"},
                                   {"resave a", "--output OUT is missing"},
                                   {"graph a b", "one FILE too many: b"},
                                   {"info --dot a", "this command has no option --dot"},
                                   {"list", "no such command: list"}})
    EXPECT_THAT(run(line).err, StartsWith(std::string("quilscene: ") + says + "\nTry: quilscene ")) << line;
}

TEST_F(Quilscene, VersionIsTheProjects) {
  EXPECT_EQ(run("--version").out, "quilscene " + std::string(support::project_version()) + "\n");
}

TEST_F(Quilscene, ManPagesAreWellFormed) {
  const std::string line = "mandoc -Tlint -W warning " + support::project_file("docs/quilscene.1").string() +
                           " " + support::project_file("docs/quileditor.1").string() + " >" +
                           scratch_ / "lint";
  EXPECT_EQ(std::system(line.c_str()), 0) << written("lint");
}

// Output that can't be written.

TEST_F(Quilscene, FullDeviceAsStandardOutputFails) {
  const Ran ran = run("graph " + scene_path("robot"), ">/dev/full");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err, HasSubstr("can't write to standard output"));
}

TEST_F(Quilscene, ReaderThatWentAwayFails) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  close(ends[0]);
  const Ran ran = run("graph " + scene_path("robot"), ">&" + std::to_string(ends[1]));
  close(ends[1]);
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err, HasSubstr("can't write to standard output"));
}

TEST_F(Quilscene, ClosedStandardOutputFailsAndSpoilsNoFile) {
  put("scene.quil", read_file(scene_path("tiny_v1")));
  EXPECT_EQ(run("graph scene.quil", ">&-").status, 1);
  put("script", "add obj_0 mat_0\n");
  EXPECT_EQ(run("edit scene.quil -o out.quil --script script", ">&- 2>&- <&-").status, 1);
  EXPECT_TRUE(written("out.quil") == written("scene.quil"));
}

TEST_F(Quilscene, FullDeviceAsOutputFileFails) {
  const Ran ran = run("resave " + scene_path("robot") + " -o /dev/full");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err, HasSubstr("can't write /dev/full"));
}

TEST_F(Quilscene, OutputInAMissingDirectoryFails) {
  const Ran ran = run("resave " + scene_path("robot") + " -o missing/out.quil");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(
      ran.err,
      "Output File Open Error\nmissing/out.quil: can't be opened for writing: No such file or directory\n"
      "quilscene: can't write missing/out.quil\n");
}

TEST_F(Quilscene, AFileSizeLimitFailsAndKeepsTheOldFile) {
  put("out.quil", "the old file");
  const Ran ran = run("resave " + scene_path("robot") + " -o out.quil", "", "ulimit -f 16 && ");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err,
              HasSubstr("Output File Write Error: File too large\nout.quil: can't write the new contents"));
  EXPECT_EQ(written("out.quil"), "the old file");
}

// Hostile files.

TEST_F(Quilscene, FilesCutAnywhereFailWithAMessage) {
  const std::string whole = read_file(scene_path("skeleton"));
  for (std::size_t length = 0; length < whole.size(); length += length < 200 ? 20 : 1111) {
    SCOPED_TRACE(length);
    put("cut.quil", whole.substr(0, length));
    const Ran ran = run("check cut.quil");
    EXPECT_EQ(ran.status, 1);
    EXPECT_THAT(ran.out, HasSubstr("cut.quil: message: can't be opened\n"));
    // The same file, saying of itself that it is complete.
    if (length < 8) continue;
    put("cut.quil", with_word(whole.substr(0, length), 4, static_cast<std::uint32_t>(length)));
    EXPECT_EQ(run("info cut.quil").status, 1);
  }
}

TEST_F(Quilscene, HugeCountsFailWithoutHugeMemory) {
  const std::string whole = read_file(scene_path("robot"));
  const std::size_t header = 100;
  std::size_t files = 0;
  for (std::size_t offset = header; offset < 2000; offset += 4) {
    if (word_at(whole, offset) == 0) continue;
    put("huge" + std::to_string(offset) + ".quil", with_word(whole, offset, 0x7FFFFFF0));
    ++files;
  }
  // Address space for the program, its libraries and a small file, but for no array of two thousand million.
  const Ran ran = run("check --json --jobs 1 huge*.quil", "", limit_memory());
  EXPECT_EQ(ran.status, 1) << ran.err;
  EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(ran.out, '\n')), files) << ran.err;
}

TEST_F(Quilscene, DirectoryAndEmptyFileFail) {
  put("empty.quil", "");
  EXPECT_EQ(run("info empty.quil").status, 1);
  EXPECT_EQ(run("info .").status, 1);
}

}  // namespace
