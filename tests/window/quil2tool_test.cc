/// @file
/// The QUIL2 tool menu: which programs run, where, with what, in which order.
#include <filesystem>

#include "tests/support/wait.h"
#include "tests/window/converterfixture.h"

namespace {

namespace fs = std::filesystem;

using support::Editor;
using testing::HasSubstr;

class Quil2Tool : public ConverterTest {
 protected:
  Quil2Tool() : ConverterTest("quil2zexDialog") {}

  void choose(const std::string& item) { editor_.chooseMenu({"QUIL2 tool", item}); }
  void chooseConvert() { chooseDialog({"QUIL2 tool", "Convert to ZEX", "Set Options and Go"}); }
  std::string options() { return read_file(editor_.home() / ".quilcnvops"); }
  std::string directory() { return fs::canonical(path("scenes")); }
};

TEST_F(Quil2Tool, PreviewOnTheDxViewerRunsEverythingInTheForeground) {
  openScene("skeleton");
  choose("Preview(DX-VIEWER)");
  EXPECT_EQ(newOutput(),
            "killpxsend\nkillbxsend\n" + directory() +
                "\nrm -f ../zexview/model.quil\n"
                "cd ../zexview; ./quil2zex  model.quil model.zex; ./zex2bin scene.zex model.zex zexview.bin;"
                " bxsend -n -e zexview.KAVO; bxsend -n -s 0x200000 zexview.bin\n");
  EXPECT_EQ(ran(), (Lines{"scenes: killpxsend", "scenes: killbxsend",
                          "zexview: quil2zex model.quil model.zex | model.quil",
                          "zexview: zex2bin scene.zex model.zex zexview.bin | model.quil",
                          "zexview: bxsend -n -e zexview.KAVO | model.quil",
                          "zexview: bxsend -n -s 0x200000 zexview.bin | model.quil"}));
}

TEST_F(Quil2Tool, PreviewOnTheEmuBoardRunsEverythingInTheForeground) {
  openScene("skeleton");
  choose("Preview(Emu-Board)");
  EXPECT_EQ(ran(), (Lines{"scenes: killpxsend", "scenes: killbxsend",
                          "zexview: quil2zex model.quil model.zex | model.quil",
                          "zexview: zex2bin scene.zex model.zex zexview.bin | model.quil",
                          "zexview: pxsend -s zexview.KAVO | model.quil",
                          "zexview: pxsend -s -o 0x200000 zexview.bin | model.quil"}));
}

TEST_F(Quil2Tool, AFailedPreviewIsNotTold) {
  openScene("skeleton");
  for (const char* name : {"quil2zex", "zex2bin", "bxsend"}) behave(name, "kill -SEGV $$");
  choose("Preview(DX-VIEWER)");
  EXPECT_EQ(ran().size(), 6U);
  EXPECT_FALSE(editor_.asks(Editor::kWarning));
  EXPECT_FALSE(isBusy());
}

TEST_F(Quil2Tool, ConversionAsksForOptionsAndThenUsesThem) {
  openScene("skeleton");
  chooseConvert();
  enter("output", "dog.zex");
  enter("scale", "2");
  enter("envseg", "4");
  editor_.click(dialog_ + "/fogoffBase");
  press("OK");
  EXPECT_THAT(newOutput(),
              HasSubstr("APPLY.\nCall applyOptions.\nngops(before) = model.c\nngops(after) = dog.zex\n"
                        "Get Values from Dialog.\n"));
  EXPECT_EQ(ran(), (Lines{"zexview: quil2zex -scale 2 -fogoff model.quil ./dog.zex | model.quil"}));
  EXPECT_THAT(options(), HasSubstr("-envseg 4\n"));
  EXPECT_THAT(options(), HasSubstr("\n-fogoff\n"));
}

TEST_F(Quil2Tool, ConversionKeepsTheWindowBusyUntilItsEnd) {
  openScene("skeleton");
  hold("zexview: quil2zex model.quil ./model.c");
  chooseConvert();
  editor_.click(dialog_ + "/OK");
  awaitHeld();
  EXPECT_TRUE(isBusy());
  release();
  editor_.settle();
  EXPECT_FALSE(isBusy());
}

TEST_F(Quil2Tool, ConversionWithoutALoaderToEndLeavesThemRunning) {
  openScene("skeleton");
  chooseConvert();
  press("OK");
  EXPECT_EQ(ran(), (Lines{"zexview: quil2zex model.quil ./model.c | model.quil"}));
}

TEST_F(Quil2Tool, TheDialogOnlyShowsTheDirectory) {
  chooseConvert();
  EXPECT_FALSE(field("dirName").sensitive);
  press("Apply");
  press("Cancel");
  EXPECT_THAT(options(), testing::StartsWith("./\nmodel.c\n"));
  EXPECT_EQ(editor_.symbol("ngops"), "./");
}

TEST_F(Quil2Tool, ACancelledDialogRunsNothingAndWritesNothing) {
  openScene("skeleton");
  const std::string before = options();
  chooseConvert();
  enter("scale", "3");
  press("Cancel");
  EXPECT_EQ(newOutput(), "Canceled.\n");
  EXPECT_EQ(ran(), Lines{});
  EXPECT_EQ(options(), before);
  EXPECT_FALSE(fs::exists(path("zexview/model.quil")));
}

TEST_F(Quil2Tool, AMissingViewerDirectoryIsToldByTheScratchSceneAlone) {
  openScene("skeleton");
  fs::remove_all(path("zexview"));
  choose("Preview(DX-VIEWER)");
  expectWarning("Can't output QUIL data!");
  EXPECT_EQ(ran(), (Lines{"scenes: killpxsend", "scenes: killbxsend", "scenes: bxsend -n -e zexview.KAVO",
                          "scenes: bxsend -n -s 0x200000 zexview.bin"}));
  EXPECT_FALSE(isBusy());
}

TEST_F(Quil2Tool, TheScriptWithoutPathsGetsAScratchSceneInModeOneAndRunsInTheBackground) {
  openScene("skeleton");
  expectScene([&] {
    quilscene({"resave", path("skeleton.quil"), "-o", path("mode1.quil"), "--mode", "1"});
    return read_file(path("mode1.quil"));
  }());
  hold("zexview: prev");
  choose("Execute Script");
  awaitHeld();
  EXPECT_EQ(newOutput(), "\n\n(cd ../zexview/; ../zexview/prev) &\n");
  release();
  EXPECT_EQ(ran(1), (Lines{"zexview: prev | model.quil &"}));
}

TEST_F(Quil2Tool, TheScriptGetsStructuresAsTheyWereReadAndThePreviewAsTheyAreEdited) {
  openScene("skeleton");
  editor_.toggleEditMode();
  editor_.doubleClickNode("tex_0");
  editor_.click("texDialog/quil2Base/persBase");
  editor_.click("texDialog/OK");
  editor_.settle();
  choose("Execute Script");
  EXPECT_EQ(ran(1), (Lines{"zexview: prev | model.quil &"}));

  const std::string read = read_file(path("skeleton.quil"));
  const std::string edits = edited(path("skeleton.quil"), "set tex_0 quil2.pers=0\n").bytes;
  ASSERT_FALSE(sameBytes(edits, read));
  expectScene(edits);
  choose("Preview(DX-VIEWER)");
  EXPECT_THAT(ran(), testing::Contains("zexview: quil2zex model.quil model.zex | model.quil"));
}

TEST_F(Quil2Tool, ScriptAndFileAreChosenKeptAndUsed) {
  openScene("skeleton");
  fs::create_directories(path("viewer"));
  fs::copy_file(path("zexview/prev"), path("viewer/show"));
  choose("Preview Script");
  EXPECT_EQ(fs::canonical(editor_.resource(editor_.await(kFiles), "directory")), directory())
      << "without a script, it starts in the working directory";
  editor_.chooseFile(path("viewer/show"));
  EXPECT_THAT(newOutput(), testing::StartsWith("set script = " + path("viewer/show") + "\n./\n"));
  choose("Preview File");
  editor_.chooseFile(path("viewer/scene.quil"));
  EXPECT_THAT(newOutput(),
              testing::StartsWith("set output filename = " + path("viewer/scene.quil") + "\n./\n"));
  EXPECT_THAT(options(),
              testing::EndsWith("\n" + path("viewer/show") + "\n" + path("viewer/scene.quil") + "\n"));

  choose("Execute Script");
  EXPECT_EQ(newOutput(), path("viewer/scene.quil") + "\n" + path("viewer/show") + "\n(cd " + path("viewer/") +
                             "; " + path("viewer/show") + ") &\n");
  EXPECT_EQ(ran(1), (Lines{"viewer: show &"}));
  EXPECT_FALSE(read_file(path("viewer/scene.quil")).empty());
  EXPECT_FALSE(fs::exists(path("zexview/model.quil")));
}

TEST_F(Quil2Tool, TheNextChoiceStartsAtTheLastOne) {
  write_file(path("zexview/other"), "");
  choose("Preview Script");
  editor_.chooseFile(path("zexview/prev"));
  newOutput();
  editor_.chooseMenu({"File", "Open"});
  editor_.chooseFile(data("tiny_v2"));
  newOutput();
  choose("Preview Script");
  EXPECT_EQ(editor_.await(std::string(kFiles) + "/Text").text, path("zexview/prev"));
  EXPECT_EQ(fs::canonical(editor_.resource(editor_.await(kFiles), "directory")),
            fs::canonical(path("zexview")));
  EXPECT_EQ(newOutput(), path("zexview/") + "\n");
  editor_.answer(kFiles, "Cancel");
  EXPECT_EQ(newOutput(), "");
}

TEST_F(Quil2Tool, AnyFileCanBeAScriptAndScenesAreShownEverywhereElse) {
  const auto pattern_of = [&](const std::vector<std::string>& menu) {
    editor_.chooseMenu(menu);
    const std::string pattern = editor_.resource(editor_.await(kFiles), "pattern");
    editor_.answer(kFiles, "Cancel");
    return pattern;
  };
  EXPECT_EQ(pattern_of({"QUIL2 tool", "Preview Script"}), "*");
  EXPECT_EQ(pattern_of({"QUIL2 tool", "Preview File"}), "*.quil");
  EXPECT_EQ(pattern_of({"File", "Open"}), "*.quil");
}

TEST_F(Quil2Tool, ACancelledChoiceKeepsThePathAndWritesNothing) {
  const std::string before = options();
  for (const char* item : {"Preview Script", "Preview File"}) {
    choose(item);
    editor_.answer(kFiles, "Cancel");
  }
  EXPECT_EQ(newOutput(), "");
  EXPECT_EQ(options(), before);
}

TEST_F(Quil2Tool, KillEndsBothLoaders) {
  choose("kill [pb]xsend");
  EXPECT_EQ(ran(), (Lines{"scenes: killpxsend", "scenes: killbxsend"}));
}

}  // namespace
