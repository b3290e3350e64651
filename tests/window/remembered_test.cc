/// @file
/// What is as the user left it: the last files, the name of the scene, the window.
#include <cstdlib>
#include <filesystem>

#include "tests/window/editorfixture.h"

namespace {

namespace fs = std::filesystem;

using support::Editor;
using support::WidgetInfo;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

class SaveAs : public EditorTest {
 protected:
  std::string offered() {
    editor_.chooseMenu({"File", "Save As..."});
    return editor_.await(std::string(kFiles) + "/Text").text;
  }
  std::string status() { return editor_.await("status").label; }
};

TEST_F(SaveAs, OffersTheCurrentName) {
  EXPECT_THAT(offered(), testing::Not(EndsWith(".quil")));
  editor_.answer(kFiles, "Cancel");
  const std::string file = table();
  editor_.open(file);
  EXPECT_EQ(offered(), file);
  editor_.answer(kFiles, "OK");
  EXPECT_EQ(editor_.message(kQuestion), "Overwrite OK?");
  editor_.answer(kQuestion, "Cancel");
}

TEST_F(SaveAs, KnowsTheHomeDirectoryAndTheEndingOfScenes) {
  editor_.open(table());
  editor_.saveAs("~/mine");
  EXPECT_TRUE(fs::exists(editor_.home() / "mine.quil")) << status();
  EXPECT_FALSE(fs::exists(editor_.home() / "mine"));
  editor_.saveAs("~/mine.old");
  EXPECT_TRUE(fs::exists(editor_.home() / "mine.old"));
  write_file(path("plain"), "a file without an ending");
  editor_.saveAs(path("plain"));
  EXPECT_TRUE(sameBytes(read_file(path("plain")), read_file(table()))) << "what is there is meant";
}

TEST_F(SaveAs, SaysOnTheStatusLineWhyItFailed) {
  editor_.open(table());
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile("~/no/such/folder");
  editor_.answer(kWarning, "OK");
  EXPECT_THAT(status(), HasSubstr("folder.quil: can't "));
  EXPECT_THAT(status(), HasSubstr("No such file or directory"));
}

class LastFiles : public EditorTest {
 protected:
  /// What File > Open Recent shows.
  static std::vector<std::string> offered(Editor& editor) {
    std::vector<std::string> labels;
    for (const WidgetInfo& w : editor.widgets())
      if (w.name().starts_with("Recent") && w.managed && !w.label.empty()) labels.push_back(w.label);
    return labels;
  }
  static bool isActive(Editor& editor) {
    return editor.find([](const WidgetInfo& w) { return w.label == "Open Recent"; })->sensitive;
  }
};

TEST_F(LastFiles, AreOfferedAndOpened) {
  EXPECT_FALSE(isActive(editor_));
  const std::string robot = data("robot"), tiny = data("tiny_v1");
  editor_.open(robot);
  editor_.open(tiny);
  EXPECT_THAT(offered(editor_), ElementsAre("1  " + tiny, "2  " + robot));
  editor_.openMenu({"File", "Open Recent", "2  " + robot});
  editor_.driver().release();
  editor_.settle();
  EXPECT_EQ(shownArcs(), arcsOf(robot));
  EXPECT_THAT(offered(editor_), ElementsAre("1  " + robot, "2  " + tiny));
  editor_.saveAs(path("copy.quil"));
  EXPECT_THAT(offered(editor_), SizeIs(3));
  EXPECT_EQ(editor_.quit(), 0);

  Editor next(server_, start());
  EXPECT_THAT(offered(next), ElementsAre("1  " + path("copy.quil"), "2  " + robot, "3  " + tiny));
  EXPECT_THAT(next.resource(next.graphWidget(), "emptyText"), HasSubstr(path("copy.quil")));
  EXPECT_EQ(next.quit(), 0);
}

TEST_F(LastFiles, OneThatIsGoneIsToldAsByOpen) {
  const std::string file = data("tiny_v1");
  editor_.open(file);
  fs::remove(file);
  editor_.chooseMenu({"File", "Open Recent", "1  " + file});
  EXPECT_EQ(editor_.message(kWarning), "Can't Read QUIL File!");
  editor_.answer(kWarning, "OK");
  EXPECT_FALSE(editor_.graph().nodes.empty());
}

TEST_F(LastFiles, ALongNameIsShortened) {
  const std::string folder = path(std::string(200, 'd'));
  fs::create_directory(folder);
  fs::copy_file(data("tiny_v1"), folder + "/tiny.quil");
  editor_.open(folder + "/tiny.quil");
  ASSERT_THAT(offered(editor_), SizeIs(1));
  EXPECT_THAT(offered(editor_)[0], StartsWith("1  .../"));
  EXPECT_THAT(offered(editor_)[0], EndsWith("/tiny.quil"));
}

class WindowState : public EditorTest {
 protected:
  static support::Box window(Editor& editor) {
    return editor.await("the window", [](const WidgetInfo& w) { return w.isAt("QUILeditor2") && w.viewable; })
        .box;
  }
  static bool overview(Editor& editor) {
    return editor.find([](const WidgetInfo& w) { return w.label == "Overview"; })->set;
  }
};

TEST_F(WindowState, PlaceSizeAndTogglesAreAsTheyWereLeft) {
  EXPECT_EQ(editor_.quit(), 0);
  const std::string place = "820x600+60+40";
  Editor first(server_, start({.executable = {}, .arguments = {"-geometry", place}}));
  first.chooseMenu({"View", "Overview"});
  const support::Box left = window(first);
  EXPECT_EQ(left.width, 820);
  EXPECT_EQ(first.quit(), 0);

  Editor next(server_, start());
  const support::Box found = window(next);
  EXPECT_EQ(found.x, left.x);
  EXPECT_EQ(found.y, left.y);
  EXPECT_EQ(found.width, left.width);
  EXPECT_EQ(found.height, left.height);
  EXPECT_FALSE(overview(next));
  EXPECT_EQ(next.quit(), 0);

  Editor asked(server_, start({.executable = {}, .arguments = {"-geometry", "700x500+5+5"}}));
  EXPECT_EQ(window(asked).width, 700) << "what the user says counts";
  EXPECT_EQ(asked.quit(), 0);
}

TEST_F(WindowState, SpoiltFilesDoNoHarm) {
  EXPECT_EQ(editor_.quit(), 0);
  write_file(path("state/quileditor/window"), "x 2000000000\ny -5\nwidth -7\nheight 2000000000\nx");
  write_file(path("state/quileditor/recent"), std::string("\0\xff\n/\xff\xfe\n", 7));
  Editor next(server_, start());
  const support::Box found = window(next);
  EXPECT_GE(found.width, 200);
  EXPECT_LE(found.height, 1000);
  EXPECT_LT(found.x, 1280);
  EXPECT_EQ(next.quit(), 0);
}

}  // namespace
