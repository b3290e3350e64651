/// @file
/// What belongs to a selected node can be told from what doesn't.
#include "tests/window/treefixture.h"

namespace {

using support::Box;
using support::Point;
using support::WidgetInfo;

class Neighbourhood : public TreeTest {
 protected:
  explicit Neighbourhood(support::Program::Start how = {}) : TreeTest(24, std::move(how)) {}

  /// The colour of a node's box, beside its text.
  unsigned tintOf(const std::string& name) {
    const Box box = editor_.graph().node(name).box;
    return colorAt({box.x + 4, box.centre().y});
  }
  /// The pointer stays where it marks nothing.
  void select(const std::string& name) {
    clickNode(name);
    const Box canvas = editor_.graph().view;
    editor_.driver().moveTo({canvas.x + 5, canvas.y + 5});
    editor_.settle();
  }
};

TEST_F(Neighbourhood, OthersArePaleWhileANodeIsSelected) {
  openTree(14);
  const unsigned full = tintOf("obj_0");
  select("obj_0");
  EXPECT_EQ(tintOf("obj_1"), full) << "a child";
  EXPECT_EQ(tintOf("obj_4"), full);
  const unsigned pale = tintOf("obj_6");
  EXPECT_NE(pale, full);
  for (const int shift : {0, 8, 16}) EXPECT_GE(pale >> shift & 255, full >> shift & 255);
  select("obj_1");
  EXPECT_EQ(tintOf("obj_0"), full) << "its parent";
  EXPECT_EQ(tintOf("obj_6"), full) << "its child now";
  EXPECT_EQ(tintOf("obj_2"), pale);
  press("Escape");
  EXPECT_EQ(tintOf("obj_2"), full);
}

TEST_F(Neighbourhood, InTheLayeredPictureAndInTheCompactOne) {
  openTree(14);
  for (const char* arrangement : {"Compact", "Layered"}) {
    SCOPED_TRACE(arrangement);
    editor_.chooseMenu({"View", arrangement});
    select("obj_2");
    EXPECT_EQ(tintOf("obj_0"), tintOf("obj_9"));
    EXPECT_NE(tintOf("obj_1"), tintOf("obj_9"));
    press("Escape");
    EXPECT_EQ(tintOf("obj_1"), tintOf("obj_9"));
  }
}

TEST_F(Neighbourhood, CanBeTurnedOffWhichIsRemembered) {
  openTree(14);
  editor_.chooseMenu({"View", "Highlight Neighbours"});
  select("obj_0");
  EXPECT_EQ(tintOf("obj_6"), tintOf("obj_1"));
  EXPECT_EQ(editor_.quit(), 0);
  support::Editor next(server_, start());
  EXPECT_FALSE(next.find([](const WidgetInfo& w) { return w.label == "Highlight Neighbours"; })->set);
  EXPECT_EQ(next.quit(), 0);
}

class NoNeighbourhood : public Neighbourhood {
 protected:
  NoNeighbourhood()
      : Neighbourhood({.executable = {}, .arguments = {"-xrm", "quileditor.highlightNeighbours: False"}}) {}
};

TEST_F(NoNeighbourhood, WhereTheUserHasSaidSo) {
  openTree(14);
  select("obj_0");
  EXPECT_EQ(tintOf("obj_6"), tintOf("obj_1"));
}

TEST_F(Neighbourhood, IsNotMixedUpWithWhereAnArcMayEnd) {
  openTree(14);
  select("obj_1");
  const unsigned pale = tintOf("obj_11");
  const Point from = editor_.graph().node("obj_1").box.centre();
  editor_.driver().hold("Control_L");
  editor_.driver().moveTo(from);
  editor_.driver().press();
  editor_.driver().moveTo({from.x + 20, from.y + 60});
  editor_.settle();
  EXPECT_NE(tintOf("obj_11"), pale) << "an arc may end there, and so it is not pale";
  editor_.driver().key("Escape");
  editor_.driver().release();
  editor_.driver().letGo("Control_L");
}

}  // namespace
