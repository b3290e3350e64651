/// @file
/// Linking the selected nodes with one that is found by its name.
#include "tests/window/editorfixture.h"

namespace {

using support::WidgetInfo;
using testing::ElementsAre;
using testing::StartsWith;
using testing::UnorderedElementsAre;

class LinkTo : public EditorTest {
 protected:
  LinkTo() { editor_.open(table()); }
  void select(std::initializer_list<std::string_view> nodes) {
    editor_.click("strip/zoomFit");
    const auto graph = editor_.graph();
    for (const std::string_view node : nodes) {
      if (node == *nodes.begin())
        editor_.driver().click(graph.node(node).box.centre());
      else
        editor_.driver().click(graph.node(node).box.centre(), 1, {"Shift_L"});
    }
    editor_.settle();
  }
  void startLinkTo() {
    editor_.key("l", {"Shift_L", "Control_L"});
    editor_.await("the focus in the field",
                  [](const WidgetInfo& w) { return w.isAt("strip/find") && w.focused; });
  }
  void type(std::string_view text) {
    editor_.driver().type(text);
    editor_.settle();
  }
  void press(std::string_view key) {
    editor_.driver().key(key);
    editor_.settle();
  }
  std::string status() { return editor_.await("status").label; }
  std::string fieldLabel() { return editor_.await("findLabel").label; }
};

TEST_F(LinkTo, IsForEditModeAndNeedsSelectedNodes) {
  EXPECT_FALSE(editor_.find([](const WidgetInfo& w) { return w.label == "Link to..."; })->sensitive);
  editor_.toggleEditMode();
  editor_.chooseMenu({"Edit", "Link to..."});
  EXPECT_THAT(status(), StartsWith("Select the nodes that are to be linked to another one"));
  EXPECT_EQ(fieldLabel(), "Find:");
}

TEST_F(LinkTo, ReturnLinksToWhatWasFound) {
  editor_.toggleEditMode();
  const auto before = shownArcs();
  select({"obj_7"});
  startLinkTo();
  EXPECT_EQ(fieldLabel(), "Link to:");
  type("mat:");
  EXPECT_THAT(status(), StartsWith("Return: link obj_7 to mat_0"));
  press("Down");
  EXPECT_THAT(status(), StartsWith("Return: link obj_7 to mat_1"));
  press("Up");
  press("Return");
  EXPECT_TRUE(editor_.graph().hasArc("obj_7", "mat_0"));
  EXPECT_EQ(fieldLabel(), "Find:");
  EXPECT_EQ(editor_.await("strip/find").text, "");
  EXPECT_THAT(selected(), ElementsAre("obj_7"));
  EXPECT_TRUE(editor_.graphWidget().focused);
  press("Escape");
  editor_.key("z", {"Control_L"});
  editor_.settle();
  EXPECT_EQ(shownArcs(), before);
}

TEST_F(LinkTo, SaysWhyNotBeforeAndAfter) {
  editor_.toggleEditMode();
  const auto before = shownArcs();
  select({"obj_0"});
  startLinkTo();
  type("shape_2");
  EXPECT_THAT(status(), StartsWith("obj_0 has shape_1 already: move that arc's end instead"));
  press("Return");
  EXPECT_EQ(editor_.message(kWarning), "Can't add link!");
  editor_.answer(kWarning, "OK");
  EXPECT_THAT(editor_.errors(), testing::HasSubstr("obj_0 has shape_1 already"));
  EXPECT_EQ(shownArcs(), before);
}

TEST_F(LinkTo, SeveralNodesAndTheOtherWayRoundAreOneStep) {
  editor_.toggleEditMode();
  const auto before = shownArcs();
  select({"mat_0", "mat_1"});
  startLinkTo();
  type("obj_7");
  EXPECT_THAT(status(), StartsWith("Return: link obj_7 to mat_0")) << "a material refers to no object";
  press("Return");
  EXPECT_TRUE(editor_.graph().hasArc("obj_7", "mat_0"));
  EXPECT_FALSE(editor_.graph().hasArc("obj_7", "mat_1")) << "it has one material";
  EXPECT_THAT(status(), StartsWith("obj_7 has mat_0 already"));
  EXPECT_THAT(selected(), UnorderedElementsAre("mat_0", "mat_1"));
  editor_.key("z", {"Control_L"});
  editor_.settle();
  EXPECT_EQ(shownArcs(), before);
}

TEST_F(LinkTo, EscapeAndAnotherSceneGiveUp) {
  editor_.toggleEditMode();
  const auto before = shownArcs();
  select({"obj_7"});
  startLinkTo();
  type("mat_0");
  press("Escape");
  EXPECT_EQ(fieldLabel(), "Find:");
  EXPECT_THAT(selected(), ElementsAre("obj_7"));
  EXPECT_THAT(status(), StartsWith("Ctrl+drag"));
  press("Return");
  EXPECT_EQ(shownArcs(), before);
  editor_.click("objDialog/buttons/Cancel");
  startLinkTo();
  type("mat_0");
  editor_.open(table());
  EXPECT_EQ(fieldLabel(), "Find:");
  EXPECT_EQ(editor_.await("strip/find").text, "");
}

}  // namespace
