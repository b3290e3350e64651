/// @file
/// Showing some nodes only, and nothing is lost by it.
#include <set>

#include "tests/window/treefixture.h"

namespace {

using support::GraphState;
using support::WidgetInfo;
using testing::ElementsAre;
using testing::HasSubstr;

using Names = std::set<std::string>;

class ShowOnly : public TreeTest {
 protected:
  Names shown() {
    Names names;
    for (const auto& node : editor_.graph().nodes)
      if (!node.hidden) names.insert(node.name);
    return names;
  }
  /// Where nodes lie, measured from the scene's.
  Places places() {
    const GraphState graph = editor_.graph();
    const support::Point origin = graph.node("scene_0").box.centre();
    Places places;
    for (const auto& node : graph.nodes) places[node.name] = {node.box.x - origin.x, node.box.y - origin.y};
    return places;
  }
  std::string button() {
    const auto found =
        editor_.find([](const WidgetInfo& w) { return w.isAt("strip/showAll") && w.viewable; });
    return found ? found->label : "";
  }
  void expectSaved(const std::string& commands) {
    editor_.saveAs(path("saved.quil"));
    EXPECT_TRUE(sameBytes(read_file(path("saved.quil")), edited(table(), commands).bytes));
  }
};

TEST_F(ShowOnly, WithStepsAroundByKeys) {
  openTree(30);
  const Places before = places();
  clickNode("obj_1");
  press("1");
  const Names one{"obj_0", "obj_1", "obj_5", "obj_6", "obj_7", "obj_8"};
  EXPECT_EQ(shown(), one);
  EXPECT_EQ(button(), "Show All (6 of 30)");
  EXPECT_THAT(selected(), ElementsAre("obj_1"));
  press("2");
  const Names two = shown();
  EXPECT_TRUE(two.contains("scene_0") && two.contains("obj_2") && two.contains("obj_21")) << "2 of 3 ways";
  EXPECT_FALSE(two.contains("obj_9"));
  press("3");
  EXPECT_TRUE(shown().contains("obj_9"));
  press("s");
  EXPECT_EQ(shown(), Names{"obj_1"});
  press("a");
  EXPECT_EQ(shown().size(), 30u);
  EXPECT_EQ(button(), "");
  expectSame(places(), before);
}

TEST_F(ShowOnly, ByTheMenuAndTheButton) {
  editor_.open(table());
  const Places before = places();
  clickNode("mat_0", 3);
  choosePopupItem("nodeMenu", "Show Only These");
  choosePopupItem("ShowOnlyThesePane", "With 1 Step Around");
  EXPECT_TRUE(shown().contains("mat_0"));
  EXPECT_LT(shown().size(), before.size());
  const GraphState graph = editor_.graph();
  for (const auto& node : graph.nodes) {
    if (node.hidden) continue;
    EXPECT_TRUE(node.name == "mat_0" || graph.hasArc("mat_0", node.name) || graph.hasArc(node.name, "mat_0"));
  }
  editor_.click("strip/showAll");
  editor_.settle();
  expectSame(places(), before);
}

TEST_F(ShowOnly, ALargeGraphsNeighbourhoodIsAPictureOfItsOwn) {
  openTree(1000);
  const Places before = places();
  find("obj_20");
  press("Escape");
  press("1");
  EXPECT_EQ(shown(), (Names{"obj_4", "obj_20", "obj_81", "obj_82", "obj_83", "obj_84"}));
  const GraphState graph = editor_.graph();
  EXPECT_EQ(graph.zoom, 1) << "all has room";
  EXPECT_LT(graph.node("obj_4").box.y, graph.node("obj_20").box.y);
  EXPECT_LT(graph.node("obj_20").box.y, graph.node("obj_83").box.y);
  press("a");
  expectSame(places(), before);
}

TEST_F(ShowOnly, WhatIsFoundComesBesideThemAndGoesWithTheNextFound) {
  openTree(30);
  clickNode("obj_1");
  press("s");
  find("obj_12");
  EXPECT_EQ(shown(), (Names{"obj_1", "obj_12"})) << "not what was found while the name was typed";
  find("obj_13");
  EXPECT_EQ(shown(), (Names{"obj_1", "obj_13"}));
  EXPECT_THAT(selected(), ElementsAre("obj_13"));
}

TEST_F(ShowOnly, EditsAndUndoBringWhatTheyConcernToSight) {
  editor_.open(table());
  editor_.toggleEditMode();
  const auto arcs = shownArcs();
  const Places before = places();
  editor_.drawArc("obj_0", "mat_1");
  clickNode("obj_4");
  press("s");
  EXPECT_EQ(shown(), Names{"obj_4"});
  press("z", {"Control_L"});
  EXPECT_EQ(shownArcs(), arcs);
  EXPECT_EQ(shown(), (Names{"obj_0", "obj_4"})) << "where something was taken back";
  press("y", {"Control_L"});
  EXPECT_EQ(shown(), (Names{"mat_1", "obj_0", "obj_4"})) << "both ends of the arc";
  expectSaved("add obj_0 mat_1\n");
  press("z", {"Control_L"});
  press("a");
  expectSame(places(), before);
}

TEST_F(ShowOnly, LinksDrawnThereAreAsOthers) {
  editor_.open(table());
  editor_.toggleEditMode();
  const Places before = places();
  clickNode("obj_8");
  clickNode("mat_1", 1, {"Shift_L"});
  press("s");
  EXPECT_EQ(shown(), (Names{"mat_1", "obj_8"}));
  editor_.drawArc("obj_8", "mat_1");
  EXPECT_TRUE(editor_.graph().hasArc("obj_8", "mat_1"));
  EXPECT_EQ(shown(), (Names{"mat_1", "obj_8"}));
  expectSaved("add obj_8 mat_1\n");
  press("z", {"Control_L"});
  press("a");
  expectSame(places(), before);
}

TEST_F(ShowOnly, NodesThatAreMovedAreMovedInTheWholePicture) {
  editor_.open(table());
  Places expected = places();
  clickNode("obj_8");
  press("s");
  const support::Point from = editor_.graph().node("obj_8").box.centre();
  editor_.driver().drag(from, {from.x + 30, from.y + 40});
  press("a");
  expected["obj_8"].first += 30;
  expected["obj_8"].second += 40;
  expectSame(places(), expected);
}

TEST_F(ShowOnly, TogetherWithFolds) {
  editor_.open(table());
  const Places before = places();
  clickNode("obj_4");
  press("minus");
  press("1");
  const Names both = shown();
  EXPECT_TRUE(both.contains("obj_4"));
  EXPECT_FALSE(both.contains("obj_5")) << "it is folded";
  press("plus", {"Shift_L"});
  EXPECT_TRUE(shown().contains("obj_5")) << "one step around";
  press("a");
  expectSame(places(), before);
}

TEST_F(ShowOnly, AnotherSceneIsShownInFull) {
  openTree(30);
  clickNode("obj_1");
  press("1");
  editor_.open(table());
  EXPECT_EQ(button(), "");
  for (const auto& node : editor_.graph().nodes) EXPECT_FALSE(node.hidden) << node.name;
}

}  // namespace
