/// @file
/// The steps of every conversion in their order: what runs, what is written, what the user is told, and
/// during which of them the window is busy.
#include "editor/converters.h"

#include <algorithm>

#include "tests/editor/recordingprompts.h"
#include "tests/support/case_name.h"
#include "tests/support/scratch_home.h"
#include "tests/tools/options_fixture.h"

namespace {

using Lines = RecordingPrompts::Lines;

class Conversions : public CommandLines {
 protected:
  int save(const std::string& path, int mode) {
    prompts_.note("save mode " + std::to_string(mode), path);
    return saved_;
  }
  int run(const std::string& line) {
    prompts_.note("run", line);
    return line == fails_ ? 1 : 0;
  }

  RecordingPrompts prompts_;
  int saved_ = 0;
  std::string fails_;
  Converters converters_{prompts_, [this](const std::string& path, int mode) { return save(path, mode); },
                         [this](const std::string& line) { return run(line); }};
};

Lines joined(std::initializer_list<Lines> parts) {
  Lines all;
  for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

const Lines kKill = {"busy", "run: killpxsend", "run: killbxsend", "ready"};
const Lines kKavoScratch = {"busy", "run: rm -f ../kavoprev/quilpv", "save mode 2: ../kavoprev/quilpv",
                            "ready"};
const Lines kZexScratch = {"busy", "run: rm -f ../zexview/model.quil", "save mode 2: ../zexview/model.quil",
                           "ready"};
constexpr char kMake[] = "(cd ../kavoprev ; ./quil2gfx  -label prev -header model.h quilpv model.c; make)";
constexpr char kQuickMake[] = "(cd ../kavoprev ; ./quil2gfx  -label prev -b quilpv quickprev/model.bin)";

Lines busy(const std::string& line) { return {"busy", "run: " + line, "ready"}; }
Lines making(const std::string& line) { return {"busy: making KAVO data...", "run: " + line, "ready"}; }

Lines quickPreview(const std::string& start, const std::string& load) {
  return joined({kKill, kKavoScratch, busy("(cd ../kavoprev/quickprev; " + start + ")"), making(kQuickMake),
                 busy("(cd ../kavoprev/quickprev ; " + load + ")")});
}
Lines viewerPreview(const std::string& load) {
  return joined({kKill, kZexScratch,
                 busy("cd ../zexview; ./quil2zex  model.quil model.zex; ./zex2bin scene.zex model.zex "
                      "zexview.bin; " +
                      load)});
}

struct Command {
  const char* name;
  void (*choose)(Converters& converters);
  Lines lines;
};

class EveryConversion : public Conversions, public testing::WithParamInterface<Command> {};

TEST_P(EveryConversion, IsBusyWhileItWaits) {
  GetParam().choose(converters_);
  EXPECT_EQ(prompts_.lines, GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, EveryConversion,
    testing::Values(
        Command{"Kill", [](Converters& c) { c.killLoaders(); }, kKill},
        Command{"FullPreviewOnTheEmuBoard", [](Converters& c) { c.fullPreview(kKavoEmuBoard); },
                joined({busy("pxsend -s -o0x200000 ../kavoprev/quickprev/clean.bin"),
                        kKill,
                        kKavoScratch,
                        making("(cd ../kavoprev ; ./quil2gfx  -label prev -header model.h quilpv model.c ; "
                               "make)"),
                        {"run: (cd ../kavoprev ; pxsend) &"}})},
        Command{"FullPreviewOnTheDxViewer", [](Converters& c) { c.fullPreview(kKavoDxViewer); },
                joined({busy("bxsend -n -v -s0x200000 ../kavoprev/quickprev/clean.bin"),
                        kKill,
                        kKavoScratch,
                        {"busy: making KAVO data...", "run: " + std::string(kMake), "run: cd ../kavoprev",
                         "ready", "run: (cd ../kavoprev ; bxsend rom)&"}})},
        Command{"QuickPreviewOnTheEmuBoard", [](Converters& c) { c.quickPreview(kKavoEmuBoard); },
                quickPreview("pxsend -s -o0x200000 clean.bin; pxsend -s quickprev.kavo",
                             "pxsend -s -o0x200000 model.bin")},
        Command{"QuickPreviewOnTheDxViewer", [](Converters& c) { c.quickPreview(kKavoDxViewer); },
                quickPreview("bxsend -n -v -s0x200000 clean.bin; bxsend -n -v quickprev.kavo",
                             "bxsend -n -v -s0x200000 model.bin")},
        Command{"DisplayLists", [](Converters& c) { c.convertToDisplayLists(); },
                joined({{"set gfx options: Convert to KAVO DL"},
                        kKill,
                        kKavoScratch,
                        busy("(cd ../kavoprev ; ./quil2gfx  quilpv )")})},
        Command{"ViewerPreviewOnTheEmuBoard", [](Converters& c) { c.viewerPreview(ZexBoard::emu_board); },
                viewerPreview("pxsend -s zexview.KAVO; pxsend -s -o 0x200000 zexview.bin")},
        Command{"ViewerPreviewOnTheDxViewer", [](Converters& c) { c.viewerPreview(ZexBoard::dx_viewer); },
                viewerPreview("bxsend -n -e zexview.KAVO; bxsend -n -s 0x200000 zexview.bin")},
        Command{"ViewerFile", [](Converters& c) { c.convertToViewerFile(); },
                joined({{"set zex options: Convert to ZEX"},
                        kZexScratch,
                        busy("cd ../zexview; ./quil2zex  model.quil ")})},
        Command{"Script",
                [](Converters& c) { c.executeScript(); },
                {"busy", "save mode 1: ../zexview/model.quil", "ready",
                 "run: (cd ../zexview/; ../zexview/prev) &"}}),
    CaseName());

TEST_F(Conversions, AreGivenUpWithTheirDialog) {
  prompts_.answer = false;
  converters_.convertToDisplayLists();
  converters_.convertToViewerFile();
  EXPECT_EQ(prompts_.lines,
            (Lines{"set gfx options: Convert to KAVO DL", "set zex options: Convert to ZEX"}));
}

TEST_F(Conversions, AScriptRunsWithoutASceneAndThatIsTold) {
  saved_ = -1;
  converters_.executeScript();
  EXPECT_EQ(prompts_.lines,
            (Lines{"busy", "save mode 1: ../zexview/model.quil", "ready",
                   "tell: No scene was written for the script", "run: (cd ../zexview/; ../zexview/prev) &"}));
}

TEST_F(Conversions, TellWhatIsNotWrittenAndGoOn) {
  saved_ = -1;
  converters_.viewerPreview(ZexBoard::emu_board);
  const auto told = std::ranges::find(prompts_.lines, "warn: Can't output QUIL data!");
  ASSERT_NE(told, prompts_.lines.end());
  EXPECT_EQ(told[-1], "ready") << "nobody could answer while the window is busy";
  EXPECT_EQ(prompts_.lines.end() - told, 4) << "the converter runs with what is there";
}

TEST_F(Conversions, ThatFailLoadNothing) {
  for (const auto& [line, warning] : {std::pair{kMake, "warn: Can't make KAVO data."},
                                      std::pair{"cd ../kavoprev", "warn: Can't make rom."}}) {
    fails_ = line;
    converters_.fullPreview(kKavoDxViewer);
    EXPECT_EQ(Lines(prompts_.lines.end() - 2, prompts_.lines.end()), (Lines{"ready", warning}));
  }
  fails_ = kQuickMake;
  converters_.quickPreview(kKavoEmuBoard);
  EXPECT_EQ(Lines(prompts_.lines.end() - 2, prompts_.lines.end()),
            (Lines{"ready", "warn: Can't make KAVO data."}));
}

TEST_F(Conversions, ClearTheBoardOnceUntilAQuickPreview) {
  const auto first_line = [&](auto preview) {
    prompts_.lines.clear();
    preview();
    return prompts_.lines.at(1);
  };
  const auto full = [&] { converters_.fullPreview(kKavoEmuBoard); };
  const auto quick = [&] { converters_.quickPreview(kKavoEmuBoard); };
  const std::string clear = "run: pxsend -s -o0x200000 ../kavoprev/quickprev/clean.bin";
  EXPECT_EQ(first_line(full), clear);
  EXPECT_EQ(first_line(full), kKill[1]);
  EXPECT_EQ(first_line(quick), kKill[1]);
  EXPECT_EQ(first_line(full), clear);
}

TEST_F(Conversions, KeepTheDirectoryOfAChosenFileForTheirOutput) {
  prompts_.file = "/data/any file";
  converters_.setOutputDirectory();
  EXPECT_STREQ(ngops.output_dir, "/data/");
  prompts_.file = "/other/file";
  prompts_.answer = false;
  converters_.setOutputDirectory();
  EXPECT_STREQ(ngops.output_dir, "/data/");
  EXPECT_EQ(prompts_.lines, (Lines{"choose: Set Output Directory", "choose: Set Output Directory"}));
}

TEST_F(Conversions, StartTheChoiceOfAScriptAtTheLastOneAmongAllFiles) {
  const ScratchHome home;
  prompts_.file = "/opt/viewer/show";
  converters_.chooseScript();
  EXPECT_EQ(prompts_.start.directory, "");
  EXPECT_EQ(prompts_.start.selection, std::filesystem::current_path());
  EXPECT_STREQ(prompts_.start.pattern, "*");
  EXPECT_TRUE(read_file(home.options_file()).ends_with("\n/opt/viewer/show\n\n"));
  prompts_.answer = false;
  converters_.chooseScript();
  EXPECT_EQ(prompts_.start.directory, "/opt/viewer/");
  EXPECT_EQ(prompts_.start.selection, "/opt/viewer/show");
  EXPECT_STREQ(ngops.script_path, "/opt/viewer/show");
  converters_.chooseScriptScene();
  EXPECT_STREQ(prompts_.start.pattern, "*.quil");
}

}  // namespace
