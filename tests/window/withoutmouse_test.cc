/// @file
/// The whole window with keys only.
#include "tests/window/editorfixture.h"

namespace {

using support::WidgetInfo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

class WithoutMouse : public EditorTest {
 protected:
  WithoutMouse() { leavePointer(); }

  /// Puts it out of every window.
  void leavePointer() { editor_.driver().moveTo({1279, 999}); }

  void awaitFocus(const std::string& where) {
    editor_.await("the focus in " + where,
                  [&](const WidgetInfo& w) { return w.isAt(where) && w.viewable && w.active && w.focused; });
  }
  void awaitGraph() { awaitFocus("split/canvas"); }
  /// Opens a pane of the menu bar and chooses an item by their underlined letters.
  void chooseByLetters(std::string_view pane, const std::string& first, std::string_view item) {
    editor_.key(pane, {"Alt_L"});
    awaitFocus(first);
    editor_.driver().key(item);
    editor_.settle();
  }
  void goTo(const std::string& node) {
    find(node);
    press("Escape");
    awaitGraph();
    EXPECT_THAT(selected(), ElementsAre(node));
  }
  /// Presses Tab until that has the focus.
  void tabTo(const std::string& where) {
    constexpr int kMost = 100;
    for (int i = 0; i < kMost; ++i) {
      if (editor_.find(where, [](const WidgetInfo& w) { return w.focused; })) return;
      press("Tab");
    }
    ADD_FAILURE() << "Tab doesn't come to " << where;
  }
  std::string title() {
    return editor_.await("QUILeditor2", [](const WidgetInfo& w) { return w.path == "/QUILeditor2"; }).label;
  }
};

TEST_F(WithoutMouse, AScenesLinksAndValuesAreChangedAndSaved) {
  const std::string file = table();
  chooseByLetters("f", "FilePane/New", "o");
  awaitFocus("fileSelectionDialog/Text");
  editor_.driver().key("slash", {"Control_L"});
  editor_.driver().type(file);
  press("Return");
  awaitGraph();
  EXPECT_EQ(shownArcs(), arcsOf(file));
  EXPECT_EQ(title(), "table.quil - QUILeditor2");

  press("F10");
  awaitFocus("menuBar/File");
  press("Right");
  press("Down");
  awaitFocus("EditPane/EditMode");
  press("Return");
  EXPECT_EQ(editor_.resource(editor_.graphWidget(), "editableArcs"), "1");

  // A value.
  goTo("mat_1");
  press("Up");
  press("Down");
  EXPECT_THAT(selected(), ElementsAre("mat_1"));
  press("Menu");
  awaitFocus("nodeMenu/Values");
  press("Return");
  awaitFocus("matDialog/items/ClipWindow/prefListBase/titleBase/nodeNameBase");
  editor_.driver().key("a", {"Control_L"});
  editor_.driver().type("shiny");
  tabTo("matDialog/buttons/Apply");
  press("space");
  EXPECT_EQ(title(), "*table.quil - QUILeditor2");
  press("Escape");
  awaitGraph();
  EXPECT_FALSE(editor_.asks("matDialog"));
  chooseByLetters("e", "EditPane/EditMode", "u");
  EXPECT_EQ(title(), "table.quil - QUILeditor2");
  chooseByLetters("e", "EditPane/EditMode", "r");
  EXPECT_EQ(title(), "*table.quil - QUILeditor2");

  // Links: to one that is found, between selected ones, and one less.
  goTo("obj_7");
  editor_.key("l", {"Shift_L", "Control_L"});
  awaitFocus("strip/find");
  editor_.driver().type("mat_0");
  press("Return");
  awaitGraph();
  EXPECT_TRUE(editor_.graph().hasArc("obj_7", "mat_0"));
  goTo("mat_1");
  find("tex_0");
  press("Return", {"Control_L"});
  press("Escape");
  awaitGraph();
  EXPECT_THAT(selected(), UnorderedElementsAre("mat_1", "tex_0"));
  editor_.key("l", {"Control_L"});
  editor_.settle();
  EXPECT_TRUE(editor_.graph().hasArc("mat_1", "tex_0"));

  // The file, and the end.
  editor_.key("s", {"Control_L"});
  EXPECT_EQ(editor_.message(kQuestion), "Overwrite OK?");
  awaitFocus("questionDialog/OK");
  press("Return");
  awaitGraph();
  EXPECT_EQ(title(), "table.quil - QUILeditor2");
  const std::string saved = read_file(file);
  table();  // as it was
  EXPECT_TRUE(sameBytes(
      saved, edited(file, "set mat_1 title.nodeName=shiny\nadd obj_7 mat_0\nadd mat_1 tex_0\n").bytes));
  editor_.key("f", {"Alt_L"});
  awaitFocus("FilePane/New");
  editor_.driver().key("q");
  EXPECT_EQ(editor_.process().waitForExit(), 0);
}

TEST_F(WithoutMouse, ALinkIsTakenOutInTheListOfLinks) {
  editor_.open(table());
  leavePointer();
  chooseByLetters("e", "EditPane/EditMode", "e");
  chooseByLetters("v", "ViewPane/Default", "k");
  goTo("obj_5");
  ASSERT_TRUE(editor_.graph().hasArc("obj_5", "anim_0"));
  tabTo("links/childrenSW/children");
  press("Down");
  press("Delete");
  EXPECT_FALSE(editor_.graph().hasArc("obj_5", "anim_0"));
  press("z", {"Control_L"});
  EXPECT_TRUE(editor_.graph().hasArc("obj_5", "anim_0"));
}

TEST_F(WithoutMouse, TheOptionsOfAConverterAreChanged) {
  editor_.open(data("robot"));
  leavePointer();
  editor_.key("k", {"Alt_L"});
  awaitFocus("KAVOtoolPane/KAVOQuickpreviewDXVIEWER");
  press("c");
  awaitFocus("ConverttoKAVODLPane/SetOptionsandGo");
  press("o");
  awaitFocus("quil2gfxDialog/items/ClipWindow/prefListBase/optionsBase/outputBase");
  editor_.driver().key("a", {"Control_L"});
  editor_.driver().type("robot.c");
  tabTo("quil2gfxDialog/buttons/Apply");
  press("space");
  EXPECT_THAT(read_file(editor_.home() / ".quilcnvops"), HasSubstr("robot.c"));
  press("Escape");
  awaitGraph();
}

}  // namespace
