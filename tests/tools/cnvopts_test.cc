/// @file
/// The options file in a scratch home directory, and the command line made from it.
#include "tools/cnvopts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "tests/support/files.h"
#include "tests/support/places.h"
#include "tests/support/scratch_home.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

class ConvertOptions : public testing::Test {
 protected:
  ConvertOptions() { ngops = NgOps{}; }

  void put(const std::string& text) const { write_file(home_.options_file(), text); }
  std::string kept() const { return read_file(home_.options_file()); }
  /// Reads the file; returns what was written to standard output.
  static std::string read() {
    CaptureStderr();
    CaptureStdout();
    read_convert_options();
    GetCapturedStderr();
    return GetCapturedStdout();
  }
  static std::string write() {
    CaptureStderr();
    CaptureStdout();
    EXPECT_EQ(write_convert_options(), 1);
    GetCapturedStderr();
    return GetCapturedStdout();
  }
  void expectWriteToFail() const {
    CaptureStderr();
    CaptureStdout();
    EXPECT_EQ(write_convert_options(), 0);
    EXPECT_THAT(GetCapturedStderr(),
                HasSubstr("Can't write convert options. " + home_.options_file().string() + "\n" +
                          home_.options_file().string() + ": can't "));
    GetCapturedStdout();
  }
  /// Reads a file of these lines after the two first words.
  void read_lines(const std::string& lines) const {
    put("out/\nmodel.c\n" + lines);
    read();
  }

  const ScratchHome home_;
};

/// Every field filled with a text of its own, as the file has it.
constexpr char kFullFile[] =
    "out/\n"
    "model.c\n"
    "-header model.h\n"
    "-label two words\n"
    "-scale 1.5\n"
    "-quilinfo info.txt\n"
    "-nocomdef\n"
    "-vtxshare 3\n"
    "-vtxcache 16\n"
    "-vtxload 8\n"
    "-strictflat\n"
    "-regmask 9\n"
    "-noalignpad\n"
    "-outobj arm\n"
    "-nogeomclr\n"
    "-outmask 512\n"
    "-preview pre\n"
    "-strictcidx\n"
    "-vtxseg 5\n"
    "-imgseg 6\n"
    "-tlutseg 7\n"
    "-envseg 4\n"
    "-noreduct\n"
    "-fogoff\n"
    "/usr/bin/view\n"
    "scene.zex\n";

/// The same fields in the order of the record.
constexpr char kFullEcho[] =
    "out/\nmodel.h\nmodel.c\ntwo words\n1.5\ninfo.txt\n-nocomdef\n3\n16\n-strictflat\n-noalignpad\narm\n"
    "-nogeomclr\n9\n512\npre\n5\n6\n7\n-strictcidx\n8\n-noreduct\n/usr/bin/view\nscene.zex\n-fogoff\n4\n";

TEST_F(ConvertOptions, ReadsEveryFieldAndEchoesThemInRecordOrder) {
  put(kFullFile);
  const std::string paths = home_.dir().string() + "\n" + home_.options_file().string() + "\n";
  EXPECT_EQ(read(), paths + kFullEcho);
  EXPECT_STREQ(ngops.output_dir, "out/");
  EXPECT_STREQ(ngops.output, "model.c");
  EXPECT_STREQ(ngops.envseg, "4");
  EXPECT_STREQ(ngops.preview_path, "scene.zex");
}

TEST_F(ConvertOptions, EchoesThenWritesEveryFieldInFileOrder) {
  put(kFullFile);
  read();
  std::filesystem::remove(home_.options_file());
  EXPECT_THAT(write(), StartsWith(kFullEcho));
  EXPECT_EQ(kept(), kFullFile);
}

TEST_F(ConvertOptions, ClearFlagsAndEmptyValuesAreWrittenAsKeysAndEmptyLines) {
  set_option(ngops.output_dir, "out/");
  set_option(ngops.output, "model.c");
  write();
  EXPECT_EQ(
      kept(),
      "out/\nmodel.c\n-header \n-label \n-scale \n-quilinfo \n\n-vtxshare \n-vtxcache \n-vtxload \n\n"
      "-regmask \n\n-outobj \n\n-outmask \n-preview \n\n-vtxseg \n-imgseg \n-tlutseg \n-envseg \n\n\n\n\n");
}

TEST_F(ConvertOptions, LineWithOnlyTheLabelKeyYieldsAnEmptyLabel) {
  set_option(ngops.label, "old");
  read_lines("-label\n");
  EXPECT_STREQ(ngops.label, "");
}

TEST_F(ConvertOptions, LabelOfTwoWordsKeepsBothAndTheBlank) {
  read_lines("-label left arm\n");
  EXPECT_STREQ(ngops.label, "left arm");
}

TEST_F(ConvertOptions, LineWithTwoKeysBelongsToTheOneSearchedFirst) {
  read_lines("-vtxseg 5 -vtxshare 3\n-outobj x -nogeomclr\n");
  EXPECT_STREQ(ngops.vtxshare, "5 -vtxshare 3");
  EXPECT_STREQ(ngops.vtxseg, "");
  EXPECT_STREQ(ngops.nogeomclr, "-outobj x -noge");
  EXPECT_STREQ(ngops.outobj, "");
}

TEST_F(ConvertOptions, EmptyAndCommentLinesChangeNothing) {
  put("out/\nmodel.c\n");
  const std::string before = read();
  put("out/\nmodel.c\n\n# a comment\nnothing known -here\n \n");
  EXPECT_EQ(read(), before);
}

TEST_F(ConvertOptions, ClearAndSetFlagsComeBackAsTheyWere) {
  set_option(ngops.output_dir, "out/");
  set_option(ngops.output, "model.c");
  set_option(ngops.noalignpad, "-noalignpad");
  write();
  ngops = NgOps{};
  read();
  EXPECT_STREQ(ngops.noalignpad, "-noalignpad");
  EXPECT_STREQ(ngops.nocomdef, "");
}

TEST_F(ConvertOptions, ScriptLineTakesThePreviewFileFromTheNextLine) {
  read_lines("/usr/bin/view second\n/data/scene.zex third\n-label arm\n");
  EXPECT_STREQ(ngops.script_path, "/usr/bin/view");
  EXPECT_STREQ(ngops.preview_path, "/data/scene.zex");
  EXPECT_STREQ(ngops.label, "arm");
}

TEST_F(ConvertOptions, ScriptLineThatComesLastIsHarmlesslyTakenTwice) {
  read_lines("/usr/bin/view\n");
  EXPECT_STREQ(ngops.script_path, "/usr/bin/view");
  EXPECT_STREQ(ngops.preview_path, "");
}

TEST_F(ConvertOptions, AbsolutePreviewFileAfterAnEmptyScriptIsReadAsTheScript) {
  set_option(ngops.output_dir, "out/");
  set_option(ngops.output, "model.c");
  set_option(ngops.preview_path, "/data/scene.zex");
  write();
  read();
  EXPECT_STREQ(ngops.script_path, "/data/scene.zex");
  EXPECT_STREQ(ngops.preview_path, "");
}

TEST_F(ConvertOptions, ReadingEmptiesThePathsThatTheFileDoesNotHold) {
  set_option(ngops.script_path, "old");
  set_option(ngops.preview_path, "old");
  read_lines("");
  EXPECT_STREQ(ngops.script_path, "");
  EXPECT_STREQ(ngops.preview_path, "");
}

TEST_F(ConvertOptions, RestOfTheSecondWordsLineIsReadAway) {
  put("out/ model.c -label no\n-scale 2\n");
  read();
  EXPECT_STREQ(ngops.output, "model.c");
  EXPECT_STREQ(ngops.label, "");
  EXPECT_STREQ(ngops.scale, "2");
}

TEST_F(ConvertOptions, LastLineWithoutNewlineIsRead) {
  read_lines("-scale 2");
  EXPECT_STREQ(ngops.scale, "2");
}

TEST_F(ConvertOptions, LineLongerThan99CharactersGoesOnAsAnother) {
  read_lines("-outobj " + std::string(91, 'a') + "-scale 2\n");
  EXPECT_EQ(ngops.outobj, std::string(91, 'a'));
  EXPECT_STREQ(ngops.scale, "2");
}

TEST_F(ConvertOptions, TextsAreCutToTheirFieldsAndSpillNowhere) {
  put(std::string(300, 'd') + " " + std::string(40, 'o') + "\n-label " + std::string(80, 'l') +
      "\n-nocomdef" + std::string(60, 'n') + "\n");
  read();
  EXPECT_EQ(ngops.output_dir, std::string(255, 'd'));
  EXPECT_EQ(ngops.output, std::string(31, 'o'));
  EXPECT_EQ(ngops.label, std::string(31, 'l'));
  EXPECT_EQ(ngops.nocomdef, "-nocomdef" + std::string(6, 'n'));
  EXPECT_STREQ(ngops.scale, "");
  EXPECT_STREQ(ngops.vtxshare, "");
}

TEST_F(ConvertOptions, ShippedTemplateIsReadAndWrittenAsItStands) {
  const std::string shipped = read_file(support::project_file("samples/quilcnvops.template"));
  put(shipped);
  read();
  EXPECT_STREQ(ngops.output_dir, "./");
  EXPECT_STREQ(ngops.output, "model.c");
  EXPECT_STREQ(ngops.header, "");
  write();
  EXPECT_EQ(kept(), shipped);
}

TEST_F(ConvertOptions, EmptyFileLeavesTheRecordAsItWas) {
  put("");
  set_option(ngops.output_dir, "out/");
  read();
  EXPECT_STREQ(ngops.output_dir, "out/");
}

TEST_F(ConvertOptions, MissingFileEndsTheProcessWithItsMessage) {
  EXPECT_EXIT(read_convert_options(), testing::ExitedWithCode(255),
              "Can't read convert options\\. " + home_.options_file().string() + "\n");
}

TEST_F(ConvertOptions, DirectoryInTheFilesPlaceEndsTheProcess) {
  std::filesystem::create_directory(home_.options_file());
  EXPECT_EXIT(read_convert_options(), testing::ExitedWithCode(255), "Can't read convert options\\.");
}

TEST_F(ConvertOptions, APipeThatNobodyWritesToEndsTheProcessInsteadOfWaiting) {
  ASSERT_EQ(mkfifo(home_.options_file().c_str(), 0600), 0);
  EXPECT_EXIT(read_convert_options(), testing::ExitedWithCode(255), "Can't read convert options\\.");
}

TEST_F(ConvertOptions, AnEndlessDeviceIsNoOptionsFile) { EXPECT_FALSE(read_options_file("/dev/zero")); }

TEST_F(ConvertOptions, FailedWriteLeavesTheFileThatIsThere) {
  std::filesystem::create_directories(home_.options_file() / "in the way");
  expectWriteToFail();
  EXPECT_TRUE(std::filesystem::exists(home_.options_file() / "in the way"));
}

TEST_F(ConvertOptions, AFullDeviceFailsTheWrite) {
  std::filesystem::create_symlink("/dev/full", home_.options_file());
  expectWriteToFail();
}

TEST_F(ConvertOptions, WritingLeavesNothingBesideTheFile) {
  write();
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator{home_.dir()}, {}), 1);
}

TEST_F(ConvertOptions, WritingFollowsASymbolicLink) {
  const auto target = home_.dir() / "dotfile";
  write_file(target, "old\n");
  std::filesystem::create_symlink(target, home_.options_file());
  write();
  EXPECT_TRUE(std::filesystem::is_symlink(home_.options_file()));
  EXPECT_THAT(kept(), HasSubstr("-header "));
}

TEST_F(ConvertOptions, LoginNamesHomeWinsOverHome) {
  user_lookup.login_name = [] { return "lara"; };
  user_lookup.home_of = [](const char* login) {
    return login == std::string{"lara"} ? "/homes/lara" : nullptr;
  };
  CaptureStdout();
  EXPECT_EQ(getcnvoptpath(), "/homes/lara/.quilcnvops");
  EXPECT_EQ(GetCapturedStdout(), "/homes/lara\n/homes/lara/.quilcnvops\n");
}

TEST_F(ConvertOptions, NoLoginNameIsSaidAndFallsBackToHome) {
  CaptureStdout();
  CaptureStderr();
  EXPECT_EQ(getcnvoptpath(), home_.options_file());
  EXPECT_EQ(GetCapturedStderr(), "Can't get login name.\n");
  GetCapturedStdout();
}

TEST_F(ConvertOptions, LoginNameWithoutAHomeFallsBackToHome) {
  user_lookup.login_name = [] { return "nobody here"; };
  user_lookup.home_of = [](const char*) -> const char* { return nullptr; };
  CaptureStdout();
  EXPECT_EQ(getcnvoptpath(), home_.options_file());
  GetCapturedStdout();
}

TEST_F(ConvertOptions, EmptyRecordGivesTheBareCommand) {
  std::string out = "what was there";
  EXPECT_EQ(&cmd_quil2gfx(out), &out);
  EXPECT_EQ(out, "(cd ../kavoprev ; ./quil2gfx ");
}

TEST_F(ConvertOptions, CommandHasTheOptionsInItsOwnOrder) {
  put(kFullFile);
  read();
  std::string out;
  EXPECT_EQ(cmd_quil2gfx(out),
            "(cd ../kavoprev ; ./quil2gfx  -scale 1.5 -quilinfo out/info.txt -vtxshare 3 -vtxcache 16"
            " -vtxload 8 -regmask 9 -nocomdef  -strictflat  -noalignpad  -nogeomclr  -outobj arm -outmask 512"
            " -strictcidx  -vtxseg 5 -imgseg 6 -tlutseg 7 -noreduct ");
}

TEST_F(ConvertOptions, CommandLongerThanAnyOldBufferIsWhole) {
  set_option(ngops.output_dir, std::string(255, 'd'));
  set_option(ngops.quilinfo, std::string(99, 'q'));
  set_option(ngops.outobj, std::string(255, 'o'));
  std::string out;
  EXPECT_EQ(cmd_quil2gfx(out), "(cd ../kavoprev ; ./quil2gfx  -quilinfo " + std::string(255, 'd') + "/" +
                                   std::string(99, 'q') + " -outobj " + std::string(255, 'o'));
}

struct PathRow {
  const char* name;
  std::string first, second, expected;
};
void PrintTo(const PathRow& row, std::ostream* out) { *out << row.name; }
std::string row_name(const testing::TestParamInfo<PathRow>& info) { return info.param.name; }

class SetAbsPath : public testing::TestWithParam<PathRow> {};
TEST_P(SetAbsPath, Joins) {
  EXPECT_EQ(set_abs_path(GetParam().first, GetParam().second), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Rows, SetAbsPath,
                         testing::Values(PathRow{"AddsSlash", "/a/b", "c", "/a/b/c"},
                                         PathRow{"KeepsSlash", "/a/b/", "c", "/a/b/c"},
                                         PathRow{"EmptyDirectory", "", "c", "c"},
                                         PathRow{"EmptyName", "/a", "", "/a/"}),
                         row_name);

class GetDir : public testing::TestWithParam<PathRow> {};
TEST_P(GetDir, IsThePathUpToItsLastSlash) { EXPECT_EQ(getdir(GetParam().first), GetParam().expected); }
INSTANTIATE_TEST_SUITE_P(
    Rows, GetDir,
    testing::Values(PathRow{"File", "/a/b/c.quil", "", "/a/b/"}, PathRow{"Root", "/c", "", "/"},
                    PathRow{"NoSlash", "c.quil", "", "./"}, PathRow{"Empty", "", "", "./"},
                    PathRow{"Long", std::string(300, 'd') + "/c", "", std::string(255, 'd')}),
    row_name);

struct LineRow {
  const char* name;
  const char* line;
  const char* value;
  const char* flag;
};
void PrintTo(const LineRow& row, std::ostream* out) { *out << row.name; }

class OptionLine : public testing::TestWithParam<LineRow> {};
TEST_P(OptionLine, Value) { EXPECT_EQ(getopt_string(GetParam().line), GetParam().value); }
TEST_P(OptionLine, Flag) { EXPECT_EQ(getopt_flag(GetParam().line), GetParam().flag); }
INSTANTIATE_TEST_SUITE_P(
    Rows, OptionLine,
    testing::Values(LineRow{"KeyAndValue", "-scale 2.5\n", "2.5", "-scale 2.5"},
                    LineRow{"BlanksInTheValue", "-label a  b \t\n", "a  b", "-label a  b"},
                    LineRow{"TwoBlanksBeforeTheValue", "-label  a", " a", "-label  a"},
                    LineRow{"KeyAlone", "-label \n", "", "-label"}, LineRow{"NoDash", "label a\n", "", ""},
                    LineRow{"DashAfterTheBlank", "x -label\n", "-label", "-label"},
                    LineRow{"Empty", "", "", ""}),
    [](const auto& row) { return std::string{row.param.name}; });

}  // namespace
