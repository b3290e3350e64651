/// @file
/// The picture stays where it is while people edit it, and changes when they ask for another one.
#include <map>
#include <optional>

#include "tests/support/wait.h"
#include "tests/window/treefixture.h"

namespace {

using support::GraphState;
using support::Point;
using support::WidgetInfo;

class CalmPicture : public TreeTest {
 protected:
  using TreeTest::TreeTest;

  /// Where every node is in the window, also where it is scrolled out of view.
  static std::map<std::string, std::pair<int, int>> places(const GraphState& graph) {
    std::map<std::string, std::pair<int, int>> places;
    for (const auto& node : graph.nodes) {
      const Point at = node.box.centre();
      places[node.name] = {at.x, at.y};
    }
    return places;
  }
  std::map<std::string, std::pair<int, int>> places() { return places(editor_.graph()); }

  /// The same, measured from the scene's node.
  std::map<std::string, std::pair<int, int>> placesFromTheScene() {
    auto all = places();
    const auto origin = all.at("scene_0");
    for (auto& [name, at] : all) at = {at.first - origin.first, at.second - origin.second};
    return all;
  }

  bool isSet(const std::string& label) {
    return editor_.find([&](const WidgetInfo& w) { return w.label == label; })->set;
  }

  /// Two objects in view of which the one could become the child of the other.
  std::optional<std::pair<std::string, std::string>> pairInView(const GraphState& graph) {
    std::vector<const GraphState::Node*> seen;
    for (const auto& node : graph.nodes) {
      const Point p = node.box.centre();
      const auto& view = graph.view;
      if (node.name.starts_with("obj_") && p.x > view.x + 60 && p.y > view.y + 30 &&
          p.x < view.x + view.width - 60 && p.y < view.y + view.height - 30)
        seen.push_back(&node);
    }
    for (const auto* parent : seen)
      for (const auto* child : seen)
        if (child->box.centre().y > parent->box.centre().y + 40 && !graph.hasArc(parent->name, child->name))
          return {{parent->name, child->name}};
    return std::nullopt;
  }

  /// Draws an arc between two nodes in view, and expects every node where it was.
  void expectThatAnArcMovesNothing() {
    const GraphState before = editor_.graph();
    const auto pair = pairInView(before);
    ASSERT_TRUE(pair);
    const auto& [parent, child] = *pair;
    editor_.driver().drag(before.node(parent).box.centre(), before.node(child).box.centre(), 1,
                          {"Control_L"});
    const GraphState after = editor_.graph();
    EXPECT_TRUE(after.hasArc(parent, child)) << parent << " to " << child;
    EXPECT_EQ(places(after), places(before));
  }
};

TEST_F(CalmPicture, AnArcInASceneOfTenThousandNodesMovesNothing) {
  openTree(10'000);
  EXPECT_EQ(editor_.graph().nodes.size(), 10'000u);
  expectThatAnArcMovesNothing();
  editor_.chooseMenu({"View", "Layered"});
  for (int i = 0; i < 4; ++i) editor_.click("strip/zoomOut");
  expectThatAnArcMovesNothing();
}

TEST_F(CalmPicture, EachPictureIsAStep) {
  editor_.open(table());
  editor_.toggleEditMode();
  EXPECT_TRUE(isSet("Layered"));
  EXPECT_FALSE(isSet("Compact"));
  const auto layered = places();
  editor_.chooseMenu({"View", "Compact"});
  EXPECT_TRUE(isSet("Compact"));
  const auto compact = places();
  EXPECT_NE(compact, layered);
  editor_.key("z", {"Control_L"});
  EXPECT_TRUE(isSet("Layered"));
  editor_.key("z", {"Control_L", "Shift_L"});
  EXPECT_TRUE(isSet("Compact"));
  EXPECT_EQ(places(), compact);
}

TEST_F(CalmPicture, TheChosenPictureStaysChosen) {
  editor_.open(table());
  editor_.chooseMenu({"View", "Compact"});
  const auto compact = placesFromTheScene();
  editor_.open(table());
  EXPECT_TRUE(isSet("Compact"));
  EXPECT_EQ(placesFromTheScene(), compact);
  editor_.chooseMenu({"View", "Compact"});
  EXPECT_TRUE(isSet("Compact")) << "chosen again, it stays set";
  EXPECT_EQ(placesFromTheScene(), compact);
}

TEST_F(CalmPicture, ArrangeAgainBringsBackOrderAndCanBeTakenBack) {
  editor_.open(table());
  editor_.toggleEditMode();
  const auto fresh = placesFromTheScene();
  const Point from = editor_.graph().node("obj_6").box.centre();
  editor_.driver().drag(from, {from.x + 90, from.y + 140});
  const auto moved = placesFromTheScene();
  EXPECT_NE(moved, fresh);
  editor_.chooseMenu({"View", "Arrange Again"});
  const auto again = placesFromTheScene();
  EXPECT_NE(again, moved);
  EXPECT_EQ(placesFromTheScene(), fresh);
  editor_.key("z", {"Control_L"});
  EXPECT_EQ(placesFromTheScene(), moved);
}

TEST_F(CalmPicture, WhatIsPlacedByHandStaysWhenAnArcIsDrawn) {
  editor_.open(table());
  editor_.toggleEditMode();
  const Point from = editor_.graph().node("obj_6").box.centre();
  editor_.driver().drag(from, {from.x + 90, from.y + 140});
  const auto before = places();
  editor_.drawArc("obj_0", "mat_1");
  EXPECT_TRUE(editor_.graph().hasArc("obj_0", "mat_1"));
  EXPECT_EQ(places(), before);
}

TEST_F(CalmPicture, WhatIsPlacedByHandIsSoAgainWhenAnArrangementIsTakenBack) {
  for (const char* const item : {"Arrange Again", "Compact"}) {
    SCOPED_TRACE(item);
    editor_.open(table());
    editor_.toggleEditMode();
    const Point from = editor_.graph().node("obj_8").box.centre();
    editor_.driver().drag(from, {from.x + 20, from.y});
    const auto before = placesFromTheScene();
    editor_.chooseMenu({"View", item});
    editor_.key("z", {"Control_L"});
    editor_.drawArc("obj_6", "obj_8");  // which would push it down
    EXPECT_TRUE(editor_.graph().hasArc("obj_6", "obj_8"));
    EXPECT_EQ(placesFromTheScene().at("obj_8"), before.at("obj_8"));
    editor_.toggleEditMode();
  }
}

TEST_F(CalmPicture, ANewNodeComesWhereItWasAskedFor) {
  editor_.open(table());
  editor_.toggleEditMode();
  const GraphState before = editor_.graph();
  const Point corner{before.view.x + before.view.width - 120, before.view.y + before.view.height - 60};
  editor_.driver().doubleClick(corner);
  const GraphState after = editor_.graph();
  const Point at = after.node("newNode").box.centre();
  EXPECT_NEAR(at.x, corner.x, 2);
  EXPECT_NEAR(at.y, corner.y, 2);
  auto now = places(after);
  now.erase("newNode");
  EXPECT_EQ(now, places(before));
}

/// With `glide` turned off by its resource, as with it on in the other tests.
class NoGlide : public CalmPicture {
 protected:
  NoGlide() : CalmPicture(24, {.executable = {}, .arguments = {"-xrm", "quileditor*glide: False"}}) {}
};

TEST_F(NoGlide, ArrangementsComeAtOnceAndCanBeTakenBack) {
  const WidgetInfo canvas = editor_.graphWidget();
  EXPECT_EQ(editor_.resource(canvas, "glide"), "0");
  editor_.open(table());
  editor_.toggleEditMode();
  const auto layered = placesFromTheScene();
  editor_.chooseMenu({"View", "Compact"});
  EXPECT_NE(placesFromTheScene(), layered);
  editor_.key("z", {"Control_L"});
  expectSame(placesFromTheScene(), layered);
}

TEST_F(CalmPicture, GesturesDontWaitForNodesToArrive) {
  EXPECT_EQ(editor_.resource(editor_.graphWidget(), "glide"), "1");
  editor_.open(table());
  editor_.toggleEditMode();
  const auto layered = placesFromTheScene();
  editor_.chooseMenu({"View", "Compact"});
  // The next one as soon as the one before was taken, whatever is still seen on its way. (The toolkit loses
  // keys of menu items that come faster than that.)
  const auto press = [&](support::Held held, const std::string& line) {
    editor_.key("z", held);
    EXPECT_TRUE(support::waitFor([&] { return editor_.output().ends_with(line); })) << line;
  };
  press({"Control_L"}, "Undo compact picture\n");
  for (int i = 0; i < 4; ++i) {
    press({"Control_L", "Shift_L"}, "Redo compact picture\n");
    press({"Control_L"}, "Undo compact picture\n");
  }
  expectSame(placesFromTheScene(), layered);
  editor_.chooseMenu({"View", "Compact"});
  const Point from = editor_.graph().node("obj_8").box.centre();
  editor_.driver().drag(from, {from.x + 40, from.y + 30});
  const Point to = editor_.graph().node("obj_8").box.centre();
  EXPECT_EQ(to.x - from.x, 40);
  EXPECT_EQ(to.y - from.y, 30);
  press({"Control_L"}, "Undo move obj_8\n");
  press({"Control_L"}, "Undo compact picture\n");
  expectSame(placesFromTheScene(), layered);
}

}  // namespace
