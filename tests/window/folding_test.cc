/// @file
/// Nodes are folded and unfolded with pointer and keyboard, and nothing is lost by it.
#include <map>
#include <set>

#include "tests/support/picturefile.h"
#include "tests/window/treefixture.h"

namespace {

using support::GraphState;
using support::Point;
using support::WidgetInfo;
using testing::HasSubstr;
using testing::IsEmpty;

class Folding : public TreeTest {
 protected:
  // All that belongs to the table, and nothing that the box beside it has, too.
  const std::set<std::string> kTable{"anim_0", "mat_0", "obj_0",   "obj_1",   "obj_2",
                                     "obj_3",  "obj_5", "shape_0", "shape_1", "tex_0"};

  std::set<std::string> folded() {
    std::set<std::string> names;
    for (const auto& node : editor_.graph().nodes)
      if (node.folded) names.insert(node.name);
    return names;
  }
  /// Where nodes lie, measured from the scene's.
  std::map<std::string, std::pair<int, int>> places() {
    const GraphState graph = editor_.graph();
    const Point origin = graph.node("scene_0").box.centre();
    std::map<std::string, std::pair<int, int>> places;
    for (const auto& node : graph.nodes) places[node.name] = {node.box.x - origin.x, node.box.y - origin.y};
    return places;
  }

  void chooseFor(const std::string& node, const std::string& item) {
    clickNode(node, 3);
    choosePopupItem("nodeMenu", item);
  }
  WidgetInfo menuItem(const std::string& label) { return popupItem("nodeMenu", label); }
  void clickHandle(const std::string& name) {
    const support::Box box = editor_.graph().node(name).box;
    editor_.driver().moveTo(box.centre());
    editor_.settle();
    editor_.driver().click({box.x, box.centre().y});
    editor_.settle();
  }
  void fold(const std::string& name) {
    clickNode(name);
    editor_.key("minus");
    editor_.settle();
  }
  void expectSaved(const std::string& commands) {
    editor_.saveAs(path("saved.quil"));
    EXPECT_TRUE(sameBytes(read_file(path("saved.quil")), edited(table(), commands).bytes));
  }
};

TEST_F(Folding, ByTheMenuOfTheRightButton) {
  editor_.open(table());
  const auto before = places();
  clickNode("obj_4", 3);
  EXPECT_TRUE(menuItem("Collapse").sensitive);
  EXPECT_FALSE(menuItem("Expand").sensitive);
  editor_.driver().clickInMenu(menuItem("Collapse").box.centre());
  editor_.settle();
  EXPECT_EQ(folded(), kTable);
  const GraphState graph = editor_.graph();
  EXPECT_EQ(graph.nodes.size(), before.size()) << "they are all there";
  EXPECT_GT(graph.node("obj_4").box.width, graph.node("obj_7").box.width) << "it shows a count as well";
  EXPECT_NE(places(), before) << "the others close up";
  clickNode("obj_4", 3);
  EXPECT_FALSE(menuItem("Collapse").sensitive);
  editor_.driver().clickInMenu(menuItem("Expand").box.centre());
  editor_.settle();
  EXPECT_THAT(folded(), IsEmpty());
  EXPECT_EQ(places(), before);
}

TEST_F(Folding, ByTheHandle) {
  editor_.open(table());
  const auto before = places();
  clickHandle("obj_4");
  EXPECT_EQ(folded(), kTable);
  clickHandle("obj_4");
  EXPECT_THAT(folded(), IsEmpty());
  EXPECT_EQ(places(), before);
  clickHandle("mat_1");
  EXPECT_THAT(folded(), IsEmpty()) << "nothing is below it";
  EXPECT_TRUE(editor_.graph().node("mat_1").selected);
}

TEST_F(Folding, ByKeysAndWithinAnother) {
  editor_.open(table());
  const auto before = places();
  fold("obj_5");
  EXPECT_EQ(folded(), std::set<std::string>{"anim_0"});
  fold("obj_4");
  EXPECT_EQ(folded(), kTable);
  editor_.key("plus", {"Shift_L"});
  EXPECT_EQ(folded(), std::set<std::string>{"anim_0"}) << "what was folded in it still is";
  editor_.chooseMenu({"View", "Expand All"});
  EXPECT_THAT(folded(), IsEmpty());
  EXPECT_EQ(places(), before);
}

TEST_F(Folding, FindUnfolds) {
  editor_.open(table());
  fold("obj_5");
  fold("obj_4");
  editor_.fillIn("strip/find", "anim_0");
  editor_.settle();
  EXPECT_THAT(folded(), IsEmpty());
  EXPECT_TRUE(editor_.graph().node("anim_0").selected);
}

TEST_F(Folding, EditsElsewhereKeepTheFoldAndItsContents) {
  editor_.open(table());
  editor_.toggleEditMode();
  const auto open = places();
  fold("obj_4");
  const auto closed = places();
  editor_.drawArc("obj_8", "mat_1");
  EXPECT_TRUE(editor_.graph().hasArc("obj_8", "mat_1"));
  EXPECT_EQ(folded(), kTable);
  EXPECT_EQ(places(), closed) << "it moves nothing";
  expectSaved("add obj_8 mat_1\n");
  editor_.key("z", {"Control_L"});
  EXPECT_EQ(folded(), kTable);
  EXPECT_EQ(places(), closed);
  editor_.chooseMenu({"View", "Expand All"});
  EXPECT_EQ(places(), open);
  editor_.key("z", {"Control_L", "Shift_L"});
  EXPECT_EQ(places(), open);
  expectSaved("add obj_8 mat_1\n");
}

TEST_F(Folding, AnArcFromAFoldedNodeUnfoldsIt) {
  editor_.open(table());
  editor_.toggleEditMode();
  fold("obj_4");
  editor_.drawArc("obj_4", "obj_8");
  EXPECT_THAT(folded(), IsEmpty());
  EXPECT_TRUE(editor_.graph().hasArc("obj_4", "obj_8"));
  editor_.key("z", {"Control_L"});
  EXPECT_FALSE(editor_.graph().hasArc("obj_4", "obj_8"));
}

TEST_F(Folding, AnArcOfAFoldedNodeIsSeenBeforeItIsDeleted) {
  editor_.open(table());
  editor_.toggleEditMode();
  fold("obj_4");
  editor_.driver().click({editor_.graph().view.x + 5, editor_.graph().view.y + 5});
  editor_.selectArc("obj_5", "shape_2");
  EXPECT_TRUE(editor_.graph().arc("obj_5", "shape_2").selected) << "it is drawn from the folded node";
  editor_.key("Delete");
  editor_.settle();
  EXPECT_THAT(folded(), IsEmpty());
  EXPECT_TRUE(editor_.graph().hasArc("obj_5", "shape_2"));
  EXPECT_TRUE(editor_.graph().arc("obj_5", "shape_2").selected);
  editor_.key("Delete");
  editor_.settle();
  EXPECT_FALSE(editor_.graph().hasArc("obj_5", "shape_2"));
}

TEST_F(Folding, WhatIsFoldedGoesAlongWhenTheNodeIsMoved) {
  editor_.open(table());
  editor_.toggleEditMode();
  auto expected = places();
  const auto open = expected;
  fold("obj_4");
  const Point from = editor_.graph().node("obj_4").box.centre();
  editor_.driver().drag(from, {from.x + 30, from.y + 200});
  editor_.chooseMenu({"View", "Expand All"});
  for (const std::string& name : kTable) {
    expected[name].first += 30;
    expected[name].second += 200;
  }
  expected["obj_4"].first += 30;
  expected["obj_4"].second += 200;
  EXPECT_EQ(places(), expected);
  editor_.key("z", {"Control_L"});
  EXPECT_EQ(places(), open);
}

TEST_F(Folding, TheWholePictureIsExportedUnfolded) {
  editor_.open(table());
  const auto boxes = [&](const std::string& name) {
    editor_.chooseMenu({"File", "Export Picture..."});
    editor_.chooseFile(path(name));
    editor_.settle();
    std::vector<std::pair<double, double>> corners;
    for (const auto& filled : support::filledBoxes(read_file(path(name))))
      corners.emplace_back(filled.box.x, filled.box.y);
    return corners;
  };
  const auto open = boxes("open.svg");
  EXPECT_EQ(open.size(), editor_.graph().nodes.size());
  fold("obj_4");
  const auto closed = places();
  editor_.driver().click({editor_.graph().view.x + 5, editor_.graph().view.y + 5});
  EXPECT_EQ(boxes("folded.svg"), open);
  EXPECT_EQ(folded(), kTable);
  EXPECT_EQ(places(), closed);
}

TEST_F(Folding, AnotherSceneKnowsNothingOfIt) {
  editor_.open(table());
  const auto open = places();
  fold("obj_4");
  editor_.open(table());
  EXPECT_THAT(folded(), IsEmpty());
  EXPECT_EQ(places(), open);
}

TEST_F(Folding, ABlockOfALargeSceneGivesItsRoomToTheOthers) {
  openTree(1'000);
  const auto open = places();
  fold("obj_0");
  const auto hidden = folded();
  EXPECT_GT(hidden.size(), 900u) << "it is the root of the tree";
  editor_.key("plus", {"Shift_L"});
  editor_.settle();
  expectSame(places(), open);
  editor_.fillIn("strip/find", "obj_17");
  clickHandle("obj_17");
  const std::size_t count = folded().size();
  EXPECT_GT(count, 3u);
  EXPECT_LT(count, 100u);
  EXPECT_TRUE(editor_.graph().node("obj_17").selected);
  const auto closed = places();
  int nearer = 0;
  for (const auto& [name, place] : closed) {
    EXPECT_LE(place.first, open.at(name).first + 1) << name;
    nearer += place != open.at(name);
  }
  EXPECT_GT(nearer, static_cast<int>(count));
  editor_.chooseMenu({"View", "Expand All"});
  expectSame(places(), open);
}

}  // namespace
