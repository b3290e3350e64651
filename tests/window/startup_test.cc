/// @file
/// Starting and ending the editor.
#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <set>

#include "tests/support/case_name.h"
#include "tests/support/places.h"
#include "tests/window/editorfixture.h"
#include "tests/window/screen.h"

namespace {

using support::Editor;
using support::Program;
using support::WidgetInfo;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

class StartUp : public EditorTest {
 protected:
  /// The labels of the items of a menu pane in their order; "---" for a separator.
  std::vector<std::string> items(const std::string& pane) {
    std::vector<std::string> labels;
    for (const WidgetInfo& w : editor_.widgets()) {
      const std::size_t slash = w.path.rfind('/');
      if (!w.path.substr(0, slash).ends_with("/" + pane)) continue;
      labels.push_back(w.class_name == "XmSeparatorGadget" ? "---" : w.label);
    }
    return labels;
  }
};

TEST_F(StartUp, MenusHoldTheirItemsInOrder) {
  std::vector<std::string> panes;
  for (const WidgetInfo& w : editor_.widgets()) {
    if (w.viewable && w.class_name == "XmCascadeButtonGadget") panes.push_back(w.label);
  }
  EXPECT_THAT(panes, ElementsAre("File", "Edit", "View", "KAVO tool", "QUIL2 tool"));
  EXPECT_THAT(items("FilePane"), ElementsAre("New", "Open", "Save", "Save As...", "Open Recent",
                                             "Export Picture...", "Recover...", "---", "Quit"));
  EXPECT_THAT(items("EditPane"), ElementsAre("Edit Mode", "Delete Link", "---", "Undo", "Redo", "---", "Find",
                                             "Select All", "Link Selected", "Link to..."));
  EXPECT_THAT(items("ViewPane"),
              ElementsAre("Default", "Display Texture Image", "---", "Layered", "Compact", "Arrange Again",
                          "Expand All", "Show All", "Overview", "Record Names", "Highlight Neighbours",
                          "Links", "Unlinked Records", "Rebuild Graph"));
  EXPECT_THAT(
      items("KAVOtoolPane"),
      ElementsAre("KAVO Quick preview(DX-VIEWER)", "KAVO Quick preview(Emu-Board)", "Kavo preview(DX-VIEWER)",
                  "Kavo preview(Emu-Board)", "Convert to KAVO DL", "kill [pb]xsend"));
  EXPECT_THAT(items("ConverttoKAVODLPane"), ElementsAre("Set Options and Go", "Set Output Directory"));
  EXPECT_THAT(items("QUIL2toolPane"),
              ElementsAre("Preview(DX-VIEWER)", "Preview(Emu-Board)", "Convert to ZEX", "---",
                          "Execute Script", "Preview Script", "Preview File", "kill [pb]xsend"));
  EXPECT_THAT(items("ConverttoZEXPane"), ElementsAre("Set Options and Go", "Set Output Directory"));
}

TEST_F(StartUp, TheGraphIsEmptyAndCannotBeEdited) {
  const WidgetInfo graph = editor_.graphWidget();
  EXPECT_EQ(editor_.resource(graph, "editableArcs"), "0");
  EXPECT_EQ(editor_.resource(graph, "okToAdd"), "0");
  EXPECT_EQ(editor_.resource(graph, "arcWidth"), "20");
  EXPECT_EQ(editor_.resource(graph, "arcDirection"), "1");
  EXPECT_TRUE(editor_.graph().nodes.empty());
  EXPECT_TRUE(editor_.graph().arcs.empty());
}

TEST_F(StartUp, SaysNothingOnStandardErrorButThatThereIsNoLogin) {
  EXPECT_EQ(editor_.errors(), "Can't get login name.\n");
  EXPECT_THAT(editor_.output(), HasSubstr((editor_.home() / ".quilcnvops").string() + "\n./\n"));
}

TEST_F(StartUp, AReaderOfTheTracesThatGoesAwayDoesNotEndTheProgram) {
  editor_.process().signal(SIGPIPE);
  editor_.open(data("tiny_v1"));
  EXPECT_EQ(editor_.quit(), 0);
}

TEST_F(StartUp, WithoutAnOptionsFileTheProgramEnds) {
  Program::Start fresh = start();
  fresh.executable = support::built_program("editor/quileditor");
  Program program(server_, fresh);
  EXPECT_EQ(program.process().waitForExit(), 255);
  EXPECT_THAT(program.errors(),
              EndsWith("Can't read convert options. " + (program.home() / ".quilcnvops").string() + "\n"));
}

TEST_F(StartUp, QuitAsksNothingAndKillsTheLoaders) {
  editor_.open(data("tiny_v1"));
  editor_.toggleEditMode();
  editor_.drawArc("shape_0", "mat_0");
  EXPECT_EQ(commandsRun(), "");
  EXPECT_EQ(editor_.quit(), 0) << editor_.errors();
  EXPECT_EQ(commandsRun(), "killpxsend\nkillbxsend\n");
}

TEST_F(StartUp, ClosingTheWindowIsQuit) {
  editor_.key("F4", {"Alt_L"});  // the window manager's key for it
  EXPECT_EQ(editor_.process().waitForExit(), 0);
  EXPECT_EQ(commandsRun(), "killpxsend\nkillbxsend\n");
}

TEST_F(StartUp, AKeyWillQuit) {
  editor_.key("q", {"Control_L"});
  EXPECT_EQ(editor_.process().waitForExit(), 0);
}

TEST_F(StartUp, ADisplayThatGoesAwayEndsTheProgramInOrder) {
  editor_.settle();
  server_.end();
  const std::optional<int> status = editor_.process().waitForExit();
  ASSERT_TRUE(status);
  EXPECT_LT(*status, 128) << "ended by a signal";
  EXPECT_EQ(commandsRun(), "killpxsend\nkillbxsend\n");
}

/// Signals that ask the program to end.
class EndsInOrder : public StartUp, public testing::WithParamInterface<int> {};

TEST_P(EndsInOrder, AndKillsTheLoaders) {
  editor_.open(data("tiny_v1"));
  editor_.process().signal(GetParam());
  EXPECT_EQ(editor_.process().waitForExit(), 128 + GetParam());
  EXPECT_EQ(commandsRun(), "killpxsend\nkillbxsend\n");
}

TEST_P(EndsInOrder, EvenWhileAQuestionWaitsForItsAnswer) {
  editor_.chooseMenu({"File", "Save"});
  EXPECT_EQ(editor_.message(Editor::kQuestion), "Overwrite OK?");
  editor_.process().signal(GetParam());
  EXPECT_EQ(editor_.process().waitForExit(), 128 + GetParam());
  EXPECT_EQ(commandsRun(), "killpxsend\nkillbxsend\n");
}

INSTANTIATE_TEST_SUITE_P(Signals, EndsInOrder, testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST_F(StartUp, AKillBesideItIsStillHeardByTheProgramsThatItStarts) {
  write_file(files_ / "bin/killbxsend",
             "#!/bin/sh\nkill -TERM $$\necho lives >>'" + path("commands") + "'\n");
  EXPECT_EQ(editor_.quit(), 0);
  EXPECT_EQ(commandsRun(), "killpxsend\n");
}

TEST_F(StartUp, KillCommandsAreRunFromEitherMenu) {
  newOutput();
  editor_.chooseMenu({"KAVO tool", "kill [pb]xsend"});
  EXPECT_EQ(newOutput(), "killpxsend\nkillbxsend\n");
  editor_.chooseMenu({"QUIL2 tool", "kill [pb]xsend"});
  EXPECT_EQ(newOutput(), "killpxsend\nkillbxsend\n");
  EXPECT_EQ(commandsRun(), "killpxsend\nkillbxsend\nkillpxsend\nkillbxsend\n");
}

TEST_F(StartUp, TheStatusLineShowsAllHintsThatHaveRoom) {
  EXPECT_THAT(editor_.await("status").label,
              testing::AllOf(testing::StartsWith("Click: select"), testing::EndsWith("Ctrl+E: edit mode")));
}

TEST_F(StartUp, FontSizesAreResources) {
  const auto heights = [](Editor& editor) {
    return std::array{editor.await("status").box.height, editor.await("strip/find").box.height};
  };
  Editor large(server_, start({.executable = {}, .arguments = {"-xrm", "quileditor*rt.fontSize: 20"}}));
  EXPECT_GT(heights(large)[0], heights(editor_)[0] + 6);
  EXPECT_GT(heights(large)[1], heights(editor_)[1] + 6);
}

TEST_F(StartUp, EveryMenuItemHasAMnemonicOfItsOwnInItsPane) {
  std::map<std::string, std::set<char>> panes;
  for (const WidgetInfo& w : editor_.widgets()) {
    if (w.path.find("/menuBar/") == std::string::npos || w.label.empty() ||
        w.class_name == "XmSeparatorGadget")
      continue;
    const char mnemonic = static_cast<char>(std::stoi(editor_.resource(w, "mnemonic")));
    EXPECT_THAT(w.label, testing::Contains(mnemonic));
    const std::string pane = w.path.substr(0, w.path.rfind('/'));
    EXPECT_TRUE(panes[pane].insert(static_cast<char>(std::tolower(mnemonic))).second) << w.path;
  }
  EXPECT_EQ(panes.size(), 9u) << "the bar, its five panes and three submenus";
}

TEST_F(StartUp, TheVersionIsSaidWithItsRights) {
  EXPECT_THAT(editor_.symbol("version_string"),
              testing::MatchesRegex("QUILeditor Version" + std::string(support::project_version()) +
                                    " [0-9-]+\n.*Copyright.*\n.*MIT License.*"));
}

TEST_F(StartUp, SettingsOfTheMachineGoBeforeTheEditorsOwnAndLeaveTheOthers) {
  write_file(path("quileditor"), "*graph.width: 700\n");
  Editor set(server_, start({.executable = {}, .environment = {{"XFILESEARCHPATH", path("%N")}}}));
  EXPECT_EQ(editor_.graphWidget().box.width - set.graphWidget().box.width, 1040 - 700);
  const auto undo = set.find([](const WidgetInfo& w) { return w.label == "Undo"; });
  ASSERT_TRUE(undo);
  EXPECT_EQ(set.resource(*undo, "mnemonic"), std::to_string('U'));
}

TEST_F(StartUp, TextureImagesPressedTwiceAreOff) {
  const auto shown = [&] {
    return editor_.find([](const WidgetInfo& w) { return w.label == "Display Texture Image"; })->set;
  };
  editor_.chooseMenu({"View", "Display Texture Image"});
  EXPECT_TRUE(shown());
  editor_.chooseMenu({"View", "Display Texture Image"});
  EXPECT_FALSE(shown());
}

TEST_F(StartUp, TheOverviewIsTurnedOnAndOffByMenuAndKey) {
  const auto shown = [&] {
    return editor_.find([](const WidgetInfo& w) { return w.label == "Overview"; })->set;
  };
  EXPECT_TRUE(shown());
  editor_.chooseMenu({"View", "Overview"});
  EXPECT_FALSE(shown());
  editor_.key("m");
  editor_.settle();
  EXPECT_TRUE(shown());
}

TEST_F(StartUp, TextureImagesAreToggledAndResetByDefault) {
  const auto shown = [&] {
    return editor_.find([](const WidgetInfo& w) { return w.label == "Display Texture Image"; })->set;
  };
  EXPECT_FALSE(shown());
  editor_.chooseMenu({"View", "Display Texture Image"});
  EXPECT_TRUE(shown());
  editor_.chooseMenu({"View", "Default"});
  EXPECT_FALSE(shown());
}

TEST_F(StartUp, ASecondEditorOnTheDisplayWorksBesideTheFirst) {
  Program::Start again = start();
  again.name = "quileditor";
  Editor second(server_, again);
  EXPECT_EQ(second.errors(), "Can't get login name.\n");
  EXPECT_EQ(second.quit(), 0);
  editor_.settle();
  EXPECT_TRUE(editor_.process().running());
}

struct Accelerator {
  const char* name;
  const char* keysym;
  bool shift;
  std::string_view dialog;
  const char* message;  ///< of the dialog
};

class Accelerators : public StartUp, public testing::WithParamInterface<Accelerator> {};

TEST_P(Accelerators, RunTheirCommand) {
  if (GetParam().shift) {
    editor_.key(GetParam().keysym, {"Shift_L", "Control_L"});
  } else {
    editor_.key(GetParam().keysym, {"Control_L"});
  }
  const WidgetInfo dialog = editor_.await(GetParam().dialog);
  const bool files = GetParam().dialog == Editor::kFiles;
  EXPECT_EQ(files ? editor_.resource(dialog, "dialogTitle") : dialog.label, GetParam().message);
  editor_.answer(GetParam().dialog, "Cancel");
}

INSTANTIATE_TEST_SUITE_P(All, Accelerators,
                         testing::Values(Accelerator{"New", "n", false, Editor::kQuestion,
                                                     "All data is deleted. OK?"},
                                         Accelerator{"Open", "o", false, Editor::kFiles, "Open"},
                                         Accelerator{"Save", "s", false, Editor::kQuestion, "Overwrite OK?"},
                                         Accelerator{"SaveAs", "s", true, Editor::kFiles, "Save As"}),
                         CaseName());

class UserResources : public EditorTest {
 protected:
  UserResources()
      : EditorTest(24, {.executable = {},
                        .home_files = {{".Xdefaults",
                                        "quileditor*objTint: #ffd0d0\n"
                                        "quileditor*SaveAs.accelerator: Ctrl<Key>F12\n"
                                        "quileditor*SaveAs.acceleratorText: Ctrl+F12\n"}}}) {}
};

TEST_F(UserResources, WinOverTheProgramsOwn) {
  editor_.open(data("tiny_v1"));
  const support::GraphState graph = editor_.graph();
  EXPECT_EQ(graph.node("obj_0").tint, 0xffd0d0u);
  EXPECT_NE(graph.node("shape_0").tint, 0xffd0d0u);
  editor_.key("F12", {"Control_L"});
  editor_.answer(Editor::kFiles, "Cancel");
}

class Depths : public EditorTest, public testing::WithParamInterface<int> {
 protected:
  Depths() : EditorTest(GetParam()) {}
};

/// The colour of each kind's nodes, by what their names begin with: on the screens with smoothed text, and on
/// the one of 8 bits.
struct Tint {
  const char* prefix;
  unsigned smooth, plain;
};
constexpr Tint kTints[] = {
    {"scene", 0xffe7a5, 0xffff55}, {"shape", 0xceefc6, 0xaaffaa},   {"tex", 0xf7c6de, 0xffaaff},
    {"obj", 0xc6def7, 0xaaaaff},   {"mat", 0xffd6b5, 0xffaa55},     {"cam", 0xced6de, 0xbfbfbf},
    {"env", 0xbdefef, 0x55ffff},   {"light", 0xfff7bd, 0xffffaa},   {"part", 0xe7f7de, 0xaaffff},
    {"anim", 0xdecef7, 0xaaaaaa},  {"lod", 0xdedede, 0xd5d5d5},     {"ChainRoot", 0xf7bdb5, 0xffaaaa},
    {"joint", 0xefd6bd, 0x55aaaa}, {"effector", 0xded6a5, 0xaaaa55}};

TEST_P(Depths, ShowASceneWithoutComplaint) {
  const unsigned precision = GetParam() == 16 ? 0xF8FCF8 : 0xFFFFFF;
  std::set<std::string> kinds;
  for (const char* scene : {"robot", "skeleton"}) {
    editor_.open(data(scene));
    EXPECT_EQ(shownArcs(), arcsOf(data(scene)));
    for (const auto& node : editor_.graph().nodes) {
      const std::string prefix = node.name.substr(0, node.name.find('_'));
      const auto tint = std::ranges::find(kTints, prefix, &Tint::prefix);
      ASSERT_NE(tint, std::end(kTints)) << node.name;
      const unsigned expected = GetParam() == 8 ? tint->plain : tint->smooth;
      EXPECT_EQ((shownColor(server_.display(), node.tint) ^ expected) & precision, 0U) << node.name;
      kinds.insert(prefix);
    }
  }
  EXPECT_EQ(kinds.size(), std::size(kTints)) << "together, they have nodes of every kind";
  EXPECT_EQ(editor_.errors(), "Can't get login name.\n");
  EXPECT_EQ(editor_.quit(), 0) << editor_.errors();
}

INSTANTIATE_TEST_SUITE_P(All, Depths, testing::Values(8, 16, 24), testing::PrintToStringParamName());

}  // namespace
