/// @file
/// The KAVO tool menu: which programs run, where, with what, in which order, and what is on the screen
/// meanwhile.
#include <filesystem>

#include "tests/support/wait.h"
#include "tests/window/converterfixture.h"
#include "tests/window/screen.h"

namespace {

namespace fs = std::filesystem;

using support::Editor;
using support::WidgetInfo;
using testing::HasSubstr;

constexpr auto kQuickDxViewer = "KAVO Quick preview(DX-VIEWER)";
constexpr auto kQuickEmuBoard = "KAVO Quick preview(Emu-Board)";
constexpr auto kFullDxViewer = "Kavo preview(DX-VIEWER)";
constexpr auto kFullEmuBoard = "Kavo preview(Emu-Board)";

class KavoTool : public ConverterTest {
 protected:
  KavoTool() : ConverterTest("quil2gfxDialog") {}

  void choose(const std::string& item) { editor_.chooseMenu({"KAVO tool", item}); }
  void chooseConvert() { chooseDialog({"KAVO tool", "Convert to KAVO DL", "Set Options and Go"}); }
  void toggle(const std::string& item) {
    editor_.click(dialog_ + "/" + item + "Base");
    editor_.settle();
  }
  std::string options() { return read_file(editor_.home() / ".quilcnvops"); }
};

TEST_F(KavoTool, FullPreviewOfTheEmuBoardLoadsInTheBackground) {
  openScene("robot");
  hold("kavoprev: pxsend");
  choose(kFullEmuBoard);
  awaitHeld();
  EXPECT_EQ(newOutput(),
            "pxsend -s -o0x200000 ../kavoprev/quickprev/clean.bin\n"
            "killpxsend\n"
            "killbxsend\n"
            "rm -f ../kavoprev/quilpv\n"
            "(cd ../kavoprev ; ./quil2gfx  -label prev -header model.h quilpv model.c ; make)\n"
            "(cd ../kavoprev ; pxsend) &\n");
  EXPECT_FALSE(isBusy());
  release();
  EXPECT_EQ(ran(6), (Lines{"scenes: pxsend -s -o0x200000 ../kavoprev/quickprev/clean.bin",
                           "scenes: killpxsend", "scenes: killbxsend",
                           "kavoprev: quil2gfx -label prev -header model.h quilpv model.c | quilpv",
                           "kavoprev: make | quilpv", "kavoprev: pxsend | quilpv &"}));
}

TEST_F(KavoTool, FullPreviewOfTheDxViewerLoadsInTheBackground) {
  openScene("robot");
  hold("kavoprev: bxsend rom");
  choose(kFullDxViewer);
  awaitHeld();
  EXPECT_EQ(newOutput(),
            "bxsend -n -v -s0x200000 ../kavoprev/quickprev/clean.bin\n"
            "killpxsend\n"
            "killbxsend\n"
            "rm -f ../kavoprev/quilpv\n"
            "(cd ../kavoprev ; ./quil2gfx  -label prev -header model.h quilpv model.c; make)\n"
            "cd ../kavoprev\n"
            "(cd ../kavoprev ; bxsend rom)&\n");
  release();
  EXPECT_EQ(ran(6), (Lines{"scenes: bxsend -n -v -s0x200000 ../kavoprev/quickprev/clean.bin",
                           "scenes: killpxsend", "scenes: killbxsend",
                           "kavoprev: quil2gfx -label prev -header model.h quilpv model.c | quilpv",
                           "kavoprev: make | quilpv", "kavoprev: bxsend rom | quilpv &"}));
}

TEST_F(KavoTool, QuickPreviewOfTheEmuBoardWaitsForEveryLoader) {
  openScene("robot");
  choose(kQuickEmuBoard);
  EXPECT_EQ(newOutput(),
            "killpxsend\n"
            "killbxsend\n"
            "rm -f ../kavoprev/quilpv\n"
            "(cd ../kavoprev/quickprev; pxsend -s -o0x200000 clean.bin; pxsend -s quickprev.kavo)\n"
            "(cd ../kavoprev ; ./quil2gfx  -label prev -b quilpv quickprev/model.bin)\n"
            "(cd ../kavoprev/quickprev ; pxsend -s -o0x200000 model.bin)\n");
  EXPECT_EQ(ran(), (Lines{"scenes: killpxsend", "scenes: killbxsend",
                          "kavoprev/quickprev: pxsend -s -o0x200000 clean.bin | quilpv",
                          "kavoprev/quickprev: pxsend -s quickprev.kavo | quilpv",
                          "kavoprev: quil2gfx -label prev -b quilpv quickprev/model.bin | quilpv",
                          "kavoprev/quickprev: pxsend -s -o0x200000 model.bin | quilpv"}));
}

TEST_F(KavoTool, QuickPreviewOfTheDxViewerWaitsForEveryLoader) {
  openScene("robot");
  choose(kQuickDxViewer);
  EXPECT_EQ(ran(), (Lines{"scenes: killpxsend", "scenes: killbxsend",
                          "kavoprev/quickprev: bxsend -n -v -s0x200000 clean.bin | quilpv",
                          "kavoprev/quickprev: bxsend -n -v quickprev.kavo | quilpv",
                          "kavoprev: quil2gfx -label prev -b quilpv quickprev/model.bin | quilpv",
                          "kavoprev/quickprev: bxsend -n -v -s0x200000 model.bin | quilpv"}));
}

TEST_F(KavoTool, OnlyTheFirstFullPreviewAndTheOneAfterAQuickOneLoadTheCleanImage) {
  openScene("tiny_v1");
  const std::string clean = "pxsend -s -o0x200000 ../kavoprev/quickprev/clean.bin\n";
  const auto first_line = [&] {
    const std::string output = newOutput();
    return output.substr(0, output.find('\n') + 1);
  };
  choose(kFullEmuBoard);
  EXPECT_EQ(first_line(), clean);
  choose(kFullEmuBoard);
  EXPECT_EQ(first_line(), "killpxsend\n");
  choose(kQuickDxViewer);
  EXPECT_EQ(first_line(), "killpxsend\n");
  choose(kFullEmuBoard);
  EXPECT_EQ(first_line(), clean) << "the flag is one for both boards";
  choose(kFullDxViewer);
  EXPECT_EQ(first_line(), "killpxsend\n");
}

TEST_F(KavoTool, ThePreviewShowsTheSceneAsItIsEdited) {
  openScene("robot");
  expectScene(edited(path("robot.quil"), "add obj_1 mat_0\n").bytes);
  editor_.toggleEditMode();
  editor_.drawArc("obj_1", "mat_0");
  choose(kQuickEmuBoard);
  const Lines lines = ran();
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_THAT(lines[4], HasSubstr("| quilpv"));
  EXPECT_THAT(lines[4], testing::Not(HasSubstr("?")));
}

TEST_F(KavoTool, ConversionAsksForOptionsAndThenUsesThem) {
  openScene("robot");
  chooseConvert();
  enter("output", "robot.c");
  enter("header", "robot.h");
  enter("label", "two words");
  toggle("nocomdef");
  toggle("bit0");
  toggle("bit3");
  toggle("scene");
  enter("vtxseg", "9");
  press("OK");
  const std::string output = newOutput();
  EXPECT_THAT(output,
              HasSubstr("APPLY.\nCall applyOptions.\nngops(before) = model.c\nngops(after) = robot.c\n"
                        "Get Values from Dialog.\n./\nrobot.h\nrobot.c\ntwo words\n"));
  EXPECT_THAT(output, HasSubstr("OK.\nkillpxsend\nkillbxsend\nrm -f ../kavoprev/quilpv\n"));
  EXPECT_EQ(ran(), (Lines{"scenes: killpxsend", "scenes: killbxsend",
                          "kavoprev: quil2gfx -regmask 9 -nocomdef -outmask 512 -vtxseg 9 -header ./robot.h"
                          " -label two words quilpv ./robot.c | quilpv"}));
  EXPECT_THAT(options(), HasSubstr("-regmask 9\n"));
  EXPECT_THAT(options(), HasSubstr("-outmask 512\n"));
}

TEST_F(KavoTool, ApplyWritesTheOptionsAtOnceAndCancelThenRunsNothing) {
  openScene("robot");
  chooseConvert();
  enter("scale", "2.5");
  EXPECT_FALSE(field("dirName").sensitive);
  press("Apply");
  EXPECT_THAT(options(), HasSubstr("-scale 2.5\n"));
  EXPECT_THAT(options(), testing::StartsWith("./\nmodel.c\n")) << "the directory is only shown";
  press("Cancel");
  EXPECT_EQ(ran(), Lines{});
  chooseConvert();
  EXPECT_EQ(editor_.await(dialog_ + "/scaleBase").text, "2.5");
  EXPECT_EQ(field("dirName").text, "./");
}

TEST_F(KavoTool, ACancelledDialogRunsNothingAndWritesNothing) {
  openScene("robot");
  const std::string before = options();
  chooseConvert();
  enter("scale", "2.5");
  press("Cancel");
  EXPECT_EQ(newOutput(), "Canceled.\n");
  EXPECT_EQ(ran(), Lines{});
  EXPECT_EQ(options(), before);
  EXPECT_FALSE(fs::exists(path("kavoprev/quilpv")));
}

TEST_F(KavoTool, KillEndsBothLoaders) {
  choose("kill [pb]xsend");
  EXPECT_EQ(newOutput(), "killpxsend\nkillbxsend\n");
  EXPECT_EQ(ran(), (Lines{"scenes: killpxsend", "scenes: killbxsend"}));
}

// What goes wrong.

TEST_F(KavoTool, AFailedMakeIsToldAndLoadsNothing) {
  openScene("tiny_v1");
  behave("make", "exit 2");
  for (const char* item : {kFullEmuBoard, kFullDxViewer}) {
    choose(item);
    expectWarning("Can't make KAVO data.");
    EXPECT_THAT(ran().back(), HasSubstr("kavoprev: make"));
  }
}

TEST_F(KavoTool, AFailedQuickConversionIsToldAndLoadsNothing) {
  openScene("tiny_v1");
  behave("quil2gfx", "exit 3");
  for (const char* item : {kQuickEmuBoard, kQuickDxViewer}) {
    choose(item);
    expectWarning("Can't make KAVO data.");
    EXPECT_THAT(ran().back(), HasSubstr("quickprev/model.bin"));
  }
}

TEST_F(KavoTool, AConverterThatIsKilledIsToldAndKillsNobody) {
  openScene("tiny_v1");
  for (const char* end : {"kill -SEGV $$", "kill -KILL $$", "kill -KILL $PPID"}) {
    behave("quil2gfx", end);
    choose(kQuickEmuBoard);
    expectWarning("Can't make KAVO data.");
    ran();
  }
}

TEST_F(KavoTool, AFailedConversionOfItsOwnIsNotTold) {
  openScene("tiny_v1");
  behave("quil2gfx", "exit 3");
  chooseConvert();
  press("OK");
  EXPECT_EQ(ran().size(), 3U);
  EXPECT_FALSE(editor_.asks(Editor::kWarning));
}

TEST_F(KavoTool, AConverterThatPrintsALotAndReadsItsInputIsWaitedFor) {
  openScene("tiny_v1");
  behave("quil2gfx", "cat >'" + path("input") + "'; yes | head -c 2000000; yes | head -c 2000000 >&2");
  choose(kQuickEmuBoard);
  EXPECT_EQ(ran().size(), 6U);
  EXPECT_EQ(read_file(path("input")), "");
  EXPECT_FALSE(editor_.asks(Editor::kWarning));
  EXPECT_GT(newOutput().size(), 2000000U);
}

TEST_F(KavoTool, AScratchSceneThatCannotBeWrittenIsToldAndTheCommandGoesOn) {
  openScene("tiny_v1");
  fs::create_directories(path("kavoprev/quilpv/in the way"));
  choose(kQuickEmuBoard);
  expectWarning("Can't output QUIL data!");
  const Lines lines = ran();
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_EQ(lines.back(), "kavoprev/quickprev: pxsend -s -o0x200000 model.bin");
}

TEST_F(KavoTool, WithoutASceneNothingIsWrittenAndTheCommandGoesOn) {
  write_file(path("kavoprev/quilpv"), "of another day");
  choose(kQuickEmuBoard);
  expectWarning("Can't output QUIL data!");
  EXPECT_EQ(ran().back(), "kavoprev/quickprev: pxsend -s -o0x200000 model.bin") << "the old one is gone";
}

TEST_F(KavoTool, AMissingPreviewDirectoryIsToldByTheCheckOfTheRom) {
  openScene("tiny_v1");
  fs::remove_all(path("kavoprev"));
  choose(kFullDxViewer);
  expectWarning("Can't output QUIL data!");
  expectWarning("Can't make rom.");
  EXPECT_EQ(ran().back(), "scenes: make");
}

// On the screen.

TEST_F(KavoTool, BusyIsShownAndEverythingPaintedWhileAPreviewIsMade) {
  openScene("robot");
  choose("kill [pb]xsend");
  ran();
  const WidgetInfo status = editor_.await("status");
  const Picture before = pictureOf(server_.display());
  hold("kavoprev: quil2gfx -label prev -b quilpv quickprev/model.bin");
  choose(kQuickEmuBoard);
  awaitHeld();
  EXPECT_TRUE(isBusy());
  const Picture meanwhile = pictureOf(server_.display());
  EXPECT_TRUE(meanwhile.without(status.box) == before.without(status.box))
      << "the menu is gone, and what was below it painted";
  EXPECT_FALSE(meanwhile == before) << "the message is there";
  release();
  editor_.settle();
  EXPECT_FALSE(isBusy());
  EXPECT_TRUE(pictureOf(server_.display()) == before);
}

TEST_F(KavoTool, BusyIsShownAndTheDialogGoneWhileASceneIsConverted) {
  openScene("robot");
  // The frame that shows the focus may come back later.
  constexpr int kFrame = 4;
  support::Box graph = editor_.graph().view;
  graph = {graph.x + kFrame, graph.y + kFrame, graph.width - 2 * kFrame, graph.height - 2 * kFrame};
  const Picture before = pictureOf(server_.display()).within(graph);
  hold("kavoprev: quil2gfx quilpv ./model.c");
  chooseConvert();
  EXPECT_FALSE(pictureOf(server_.display()).within(graph) == before) << "the dialog is above it";
  editor_.click(dialog_ + "/OK");
  awaitHeld();
  EXPECT_TRUE(isBusy());
  EXPECT_TRUE(pictureOf(server_.display()).within(graph) == before);
  release();
  editor_.settle();
  EXPECT_FALSE(isBusy());
}

}  // namespace
