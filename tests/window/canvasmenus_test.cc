/// @file
/// The menus of the right button, and the keys that do the same.
#include <set>

#include "tests/window/treefixture.h"

namespace {

using support::Box;
using support::GraphState;
using support::Point;
using support::WidgetInfo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAre;

class CanvasMenus : public TreeTest {
 protected:
  CanvasMenus() { newOutput(); }

  void openTable(bool edit = false) {
    editor_.open(table());
    if (edit) editor_.toggleEditMode();
    newOutput();
  }
  Point background() {
    const Box view = editor_.graph().view;
    return {view.x + 5, view.y + 5};
  }
  bool isUp(const std::string& name) {
    return editor_.find([&](const WidgetInfo& w) { return w.isAt(name) && w.viewable; }).has_value();
  }
  bool focused(std::string_view name) {
    return editor_.find([&](const WidgetInfo& w) { return w.isAt(name) && w.focused; }).has_value();
  }
  bool inView(const std::string& name) {
    const GraphState graph = editor_.graph();
    const Point at = graph.node(name).box.centre();
    return at.x >= graph.view.x && at.x < graph.view.x + graph.view.width && at.y >= graph.view.y &&
           at.y < graph.view.y + graph.view.height;
  }
  /// The keys that the items of a menu show, by their labels.
  std::map<std::string, std::string> keysShown(const std::string& menu) {
    std::map<std::string, std::string> keys;
    for (const WidgetInfo& widget : editor_.widgets())
      if (widget.viewable && widget.path.find("/" + menu + "/") != std::string::npos &&
          widget.class_name.find("Button") != std::string::npos)
        keys[widget.label] = editor_.resource(widget, "acceleratorText");
    return keys;
  }
};

TEST_F(CanvasMenus, OfANode) {
  openTable();
  clickNode("obj_4", 3);
  EXPECT_THAT(selected(), ElementsAre("obj_4"));
  EXPECT_FALSE(popupItem("nodeMenu", "Expand").sensitive);
  EXPECT_FALSE(popupItem("nodeMenu", "Link Selected").sensitive) << "not in Edit Mode";
  choosePopupItem("nodeMenu", "Select Children");
  const auto children = selected();
  EXPECT_GT(children.size(), 2u);
  for (const std::string& child : children)
    EXPECT_TRUE(child == "obj_4" || editor_.graph().hasArc("obj_4", child)) << child;
  clickNode("obj_4", 3);
  choosePopupItem("nodeMenu", "Values...");
  EXPECT_TRUE(isUp("objDialog"));
}

TEST_F(CanvasMenus, OfAnArc) {
  openTable(true);
  const auto before = shownArcs();
  const auto menuOf = [&](const char* parent, const char* child) {
    editor_.driver().click(editor_.graph().arc(parent, child).middle, 3);
  };
  menuOf("obj_5", "anim_0");
  choosePopupItem("arcMenu", "Go to Parent");
  EXPECT_THAT(selected(), ElementsAre("obj_5"));
  menuOf("obj_5", "anim_0");
  choosePopupItem("arcMenu", "Go to Child");
  EXPECT_THAT(selected(), ElementsAre("anim_0"));
  menuOf("obj_5", "anim_0");
  choosePopupItem("arcMenu", "Delete Link");
  EXPECT_FALSE(editor_.graph().hasArc("obj_5", "anim_0"));
  press("z", {"Control_L"});
  EXPECT_EQ(shownArcs(), before);
  editor_.toggleEditMode();
  menuOf("obj_5", "anim_0");
  EXPECT_FALSE(popupItem("arcMenu", "Delete Link").sensitive);
}

TEST_F(CanvasMenus, DeleteLinksDeletesAllThatAreSelectedInOneStep) {
  openTable(true);
  const auto before = shownArcs();
  editor_.selectArc("obj_5", "anim_0");
  editor_.selectArc("shape_1", "mat_0", {"Shift_L"});
  editor_.selectArc("obj_4", "obj_5", {"Shift_L"});
  editor_.driver().click(editor_.graph().arc("obj_4", "obj_5").middle, 3);
  choosePopupItem("arcMenu", "Delete 3 Links");
  EXPECT_EQ(shownArcs().size(), before.size() - 3);
  editor_.saveAs(path("saved.quil"));
  EXPECT_TRUE(
      sameBytes(read_file(path("saved.quil")),
                edited(table(), "delete obj_5 anim_0\ndelete shape_1 mat_0\ndelete obj_4 obj_5\n").bytes));
  press("z", {"Control_L"});
  EXPECT_EQ(shownArcs(), before);
  press("y", {"Control_L"});
  EXPECT_EQ(shownArcs().size(), before.size() - 3);
}

TEST_F(CanvasMenus, TheKeyDeletesAllLinksAndDeleteTheFirst) {
  openTable(true);
  const auto before = shownArcs();
  editor_.selectArc("obj_5", "anim_0");
  editor_.selectArc("shape_1", "mat_0", {"Shift_L"});
  press("Delete");
  EXPECT_EQ(shownArcs().size(), before.size() - 1);
  EXPECT_FALSE(editor_.graph().hasArc("obj_5", "anim_0"));
  editor_.selectArc("obj_4", "obj_5", {"Shift_L"});
  press("Delete", {"Shift_L"});
  EXPECT_EQ(shownArcs().size(), before.size() - 3);
}

TEST_F(CanvasMenus, OfTheBackgroundWithTogglesThatShowTheState) {
  openTable();
  editor_.driver().click(background(), 3);
  EXPECT_FALSE(popupItem("backgroundMenu", "Edit Mode").set);
  choosePopupItem("backgroundMenu", "Edit Mode");
  EXPECT_EQ(editor_.resource(editor_.graphWidget(), "editableArcs"), "1");
  EXPECT_TRUE(editor_.find([](const WidgetInfo& w) { return w.isAt("EditPane/EditMode"); })->set);
  editor_.driver().click(background(), 3);
  EXPECT_TRUE(popupItem("backgroundMenu", "Edit Mode").set);
  choosePopupItem("backgroundMenu", "Zoom Out");
  EXPECT_LT(editor_.graph().zoom, 1);
  editor_.driver().click(background(), 3);
  choosePopupItem("backgroundMenu", "Zoom to 100 %");
  EXPECT_EQ(editor_.graph().zoom, 1);
}

TEST_F(CanvasMenus, ItemsShowTheirKeys) {
  openTable();
  editor_.driver().click(background(), 3);
  popupItem("backgroundMenu", "About");
  const auto keys = keysShown("backgroundMenu");
  EXPECT_EQ(keys.at("Fit"), "F");
  EXPECT_EQ(keys.at("Zoom In"), "Ctrl++");
  EXPECT_EQ(keys.at("Edit Mode"), "Ctrl+E");
  EXPECT_EQ(keys.at("Overview"), "M");
  EXPECT_EQ(keys.at("Keys and Gestures"), "F1");
}

TEST_F(CanvasMenus, KeysAndGesturesAndAbout) {
  openTable();
  editor_.driver().click(background(), 3);
  choosePopupItem("backgroundMenu", "About");
  EXPECT_THAT(editor_.message("informationDialog"), StartsWith("QUILeditor Version"));
  editor_.answer("informationDialog", "OK");
  editor_.key("F1");
  const std::string text = editor_.await("keysDialog/text").text;
  EXPECT_THAT(text, HasSubstr("Ctrl+L "));
  EXPECT_THAT(text, HasSubstr("selects the parents of the selected nodes"));
  const WidgetInfo bar = editor_.awaitAt("textSW/HorScrollBar", [](const WidgetInfo&) { return true; });
  EXPECT_EQ(editor_.resource(bar, "sliderSize"), editor_.resource(bar, "maximum")) << "the longest line fits";
  editor_.driver().key("Escape");
  EXPECT_TRUE(support::waitFor([&] { return !isUp("keysDialog/text"); }));
  EXPECT_TRUE(editor_.graphWidget().box.width > 0) << "the editor lives";
}

TEST_F(CanvasMenus, F1AlsoWorksFromTheFindField) {
  openTable();
  find("obj");
  press("F1");
  EXPECT_THAT(editor_.await("keysDialog/text").text, HasSubstr("In the find field"));
}

class MenusByKey : public CanvasMenus {
 protected:
  void expectFocus(const std::string& item) {
    EXPECT_TRUE(support::waitFor([&] { return isUp(item) && focused(item); })) << item;
  }
  /// Presses Escape, and waits until the menu is gone.
  void close(const std::string& menu) {
    press("Escape");
    EXPECT_TRUE(support::waitFor([&] { return !isUp(menu); })) << menu;
  }
  /// The menus that are up.
  std::vector<std::string> menus() {
    std::vector<std::string> names;
    for (const char* const name : {"nodeMenu", "arcMenu", "backgroundMenu"})
      if (isUp(name)) names.emplace_back(name);
    return names;
  }
};

TEST_F(MenusByKey, TakeKeysHoweverShortTheClickWas) {
  openTable();
  for (int i = 0; i < 8; ++i) {
    SCOPED_TRACE(i);
    clickNode("mat_1", 3);
    popupItem("nodeMenu", "Values...");
    expectFocus("nodeMenu/Values");
    press("Down");
    expectFocus("nodeMenu/GotoParent");  // nothing to fold nor unfold
    press("Escape");
    editor_.click("menuBar/View");
    expectFocus("ViewPane/Default");
    press("Right");
    expectFocus("KAVOtoolPane/KAVOQuickpreviewDXVIEWER");
    press("Escape");
    editor_.settle();
  }
}

TEST_F(MenusByKey, TheMenuKeyBringsUpOneThatTakesKeys) {
  openTable();
  for (int i = 0; i < 5; ++i) {
    SCOPED_TRACE(i);
    clickNode("mat_1");
    press("Menu");
    expectFocus("nodeMenu/Values");
    EXPECT_THAT(menus(), ElementsAre("nodeMenu"));
    press("Down");
    expectFocus("nodeMenu/GotoParent");
    close("nodeMenu");
    press("Escape");  // nothing is selected then
    press("Menu");
    expectFocus("backgroundMenu/Fit");
    EXPECT_THAT(menus(), ElementsAre("backgroundMenu"));
    close("backgroundMenu");
    clickNode("mat_1", 3);
    expectFocus("nodeMenu/Values");
    close("nodeMenu");
    editor_.driver().click(background(), 3);
    expectFocus("backgroundMenu/Fit");
    close("backgroundMenu");
    editor_.selectArc("obj_5", "anim_0");
    press("Menu");
    expectFocus("arcMenu/GotoParent");
    EXPECT_THAT(menus(), ElementsAre("arcMenu"));
    close("arcMenu");
  }
}

TEST_F(MenusByKey, LettersSubmenusAndReturnWorkThere) {
  openTable();
  clickNode("obj_4");
  press("F10", {"Shift_L"});
  expectFocus("nodeMenu/Values");
  press("v");
  EXPECT_TRUE(support::waitFor([&] { return isUp("objDialog"); }));
  editor_.click("objDialog/buttons/Cancel");
  editor_.key("Menu");
  expectFocus("nodeMenu/Values");
  press("Up");
  press("Up");
  expectFocus("nodeMenu/ShowOnlyThese");
  press("Right");
  expectFocus("ShowOnlyThesePane/TheseAlone");
  press("Down");
  press("Return");
  EXPECT_THAT(menus(), IsEmpty());
  EXPECT_LT(std::ranges::count_if(editor_.graph().nodes, [](const auto& node) { return !node.hidden; }),
            static_cast<long>(editor_.graph().nodes.size()));
  press("Menu");
  expectFocus("nodeMenu/Values");
  press("Menu");
  EXPECT_TRUE(support::waitFor([&] { return menus().empty(); })) << "the key takes the menu away again";
}

TEST_F(MenusByKey, ComeUpBelowTheNodeOrAtTheEdgeThatItIsBeyond) {
  openTree(300);
  editor_.settle();  // the menu has gone, which takes all keys
  find("obj_1");
  press("Escape");
  const auto place = [&] {
    press("Menu");
    expectFocus("nodeMenu/Values");
    const Box menu = editor_.await("nodeMenu").box;
    close("nodeMenu");
    return menu;
  };
  const Box node = editor_.graph().node("obj_1").box;
  const Box there = place();
  EXPECT_NEAR(there.x, node.centre().x, 2);
  EXPECT_NEAR(there.y, node.y + node.height, 2);
  for (int i = 0; i < 3; ++i) press("Next", {"Shift_L"});
  EXPECT_FALSE(inView("obj_1"));
  const Box beyond = place();
  const Box view = editor_.graph().view;
  EXPECT_NEAR(beyond.x, view.x, 2) << "it was scrolled out to the left";
}

TEST_F(MenusByKey, NoneComesInTheFindFieldNorDuringADrag) {
  openTable();
  find("mat_1");
  press("Menu");
  EXPECT_THAT(menus(), IsEmpty());
  press("Escape");
  clickNode("mat_1");
  press("Menu");
  expectFocus("nodeMenu/Values");
  close("nodeMenu");
  const Point from = editor_.graph().node("mat_1").box.centre();
  editor_.driver().moveTo(from);
  editor_.driver().press();
  editor_.driver().moveTo({from.x + 20, from.y + 20});
  press("Menu");
  EXPECT_THAT(menus(), IsEmpty());
  editor_.driver().release();
  press("Menu");
  expectFocus("nodeMenu/Values");
}

class CanvasKeys : public CanvasMenus {};

TEST_F(CanvasKeys, SelectAllButOnlyTheTextWhereOneTypes) {
  openTable();
  clickNode("obj_4");
  press("a", {"Control_L"});
  EXPECT_EQ(selected().size(), editor_.graph().nodes.size());
  press("Escape");
  EXPECT_THAT(selected(), IsEmpty());
  find("obj_4");
  press("a", {"Control_L"});
  EXPECT_THAT(selected(), ElementsAre("obj_4")) << "it went to the text";
  editor_.driver().type("mat_0");
  EXPECT_EQ(editor_.await("strip/find").text, "mat_0") << "in the place of all of it";
}

TEST_F(CanvasKeys, ZoomAndScroll) {
  openTree(300);
  editor_.driver().click(background());
  press("0");
  EXPECT_EQ(editor_.graph().zoom, 1);
  press("minus");
  const double out = editor_.graph().zoom;
  EXPECT_LT(out, 1);
  press("plus", {"Shift_L"});
  EXPECT_EQ(editor_.graph().zoom, 1);
  press("minus", {"Control_L"});
  EXPECT_EQ(editor_.graph().zoom, out);
  press("0", {"Control_L"});
  EXPECT_EQ(editor_.graph().zoom, 1);
  press("f");
  const double fitted = editor_.graph().zoom;
  EXPECT_LT(fitted, 1);
  clickNode("obj_280");
  press("f", {"Shift_L"});
  EXPECT_EQ(editor_.graph().zoom, 1) << "one node isn't shown larger";
  EXPECT_TRUE(inView("obj_280"));
  press("Home");
  EXPECT_EQ(editor_.graph().zoom, 1);
  EXPECT_TRUE(inView("scene_0"));
  const int before = editor_.graph().node("scene_0").box.y;
  press("Next");
  EXPECT_LT(editor_.graph().node("scene_0").box.y, before);
  const int below = editor_.graph().node("scene_0").box.y;
  press("Prior");
  EXPECT_GT(editor_.graph().node("scene_0").box.y, below);
}

TEST_F(CanvasKeys, ArrowsFollowArcs) {
  openTree(30);
  clickNode("obj_0");
  press("Up");
  EXPECT_THAT(selected(), ElementsAre("scene_0"));
  press("Down");
  EXPECT_THAT(selected(), ElementsAre("obj_0"));
  press("Down");
  ASSERT_EQ(selected().size(), 1u);
  EXPECT_TRUE(editor_.graph().hasArc("obj_0", selected()[0]));
  for (int i = 0; i < 3; ++i) press("Left");
  const std::string first = selected()[0];
  std::set<std::string> siblings{first};
  for (int i = 0; i < 3; ++i) {
    press("Right");
    siblings.insert(selected()[0]);
  }
  EXPECT_THAT(siblings, UnorderedElementsAre("obj_1", "obj_2", "obj_3", "obj_4"));
  press("Up");
  EXPECT_THAT(selected(), ElementsAre("obj_0"));
}

TEST_F(CanvasKeys, UpLeadsBackToTheParentThatOneCameFrom) {
  openTable();
  // mat_0 is used by several: from whichever one comes, there one goes back.
  for (const auto& arc : editor_.graph().arcs) {
    if (arc.child != "mat_0") continue;
    clickNode(arc.parent);
    press("Down");
    if (selected() != std::vector<std::string>{"mat_0"}) continue;
    press("Up");
    EXPECT_THAT(selected(), ElementsAre(arc.parent));
  }
}

TEST_F(CanvasKeys, SelectWhatIsAboveAndBelow) {
  openTree(30);
  clickNode("obj_1");
  press("p");
  EXPECT_THAT(selected(), UnorderedElementsAre("obj_0", "obj_1"));
  press("Escape");
  clickNode("obj_1");
  press("p", {"Shift_L"});
  EXPECT_THAT(selected(), UnorderedElementsAre("obj_0", "obj_1", "scene_0"));
  clickNode("obj_1");
  press("c");
  EXPECT_THAT(selected(), UnorderedElementsAre("obj_1", "obj_5", "obj_6", "obj_7", "obj_8"));
  clickNode("obj_1");
  press("c", {"Shift_L"});
  EXPECT_EQ(selected().size(), 13u) << "with those below obj_5 and obj_6";
}

}  // namespace
