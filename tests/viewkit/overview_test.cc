/// @file
/// The map in the corner of the graph.
#include "tests/viewkit/graph_test.h"

namespace {

/// Four nodes at the corners of a square of 8,000, the view at the upper left one.
class Overview : public GraphTest {
 protected:
  void SetUp() override {
    GraphTest::SetUp();
    XtVaSetValues(graph_, SgNshowOverview, True, nullptr);
    for (const double y : {0.0, 8000.0})
      for (const double x : {0.0, 8000.0}) corners_.push_back(node("corner", x, y));
    SgGraphScrollTo(graph_, {0, 0}, {30, 30});
    settle();
    SgGraphUpdate(graph_);
  }
  /// The map's colours at its edge and of its frame; where it ends, ten pixels from the corner of the view.
  bool isShown() {
    const SgRectangle view = SgGraphViewport(graph_);
    return pixelAt(graph_, {view.width - 60, view.height - 10}) ==
           resource<Pixel>(graph_, SgNnodeBorderColor);
  }
  /// A place on the map, by parts of the square.
  SgPoint onMap(double across, double down) {
    const SgRectangle view = SgGraphViewport(graph_);
    const double side = std::min(150.0, 0.3 * std::min(view.width, view.height));
    return {view.width - 10 - side + across * side, view.height - 10 - side + down * side};
  }
  bool seen(Widget node) { return SgGraphViewport(graph_).touches(SgGraphNodeRectangle(node)); }

  std::vector<Widget> corners_;
};

TEST_F(Overview, IsThereWhileNotAllIsInView) {
  EXPECT_TRUE(isShown());
  SgGraphZoomToFit(graph_);
  SgGraphUpdate(graph_);
  EXPECT_FALSE(isShown());
  SgGraphSetZoom(graph_, 1);
  SgGraphUpdate(graph_);
  EXPECT_TRUE(isShown());
}

TEST_F(Overview, AClickOnItGoesThere) {
  click(at(onMap(0.99, 0.99)));
  EXPECT_TRUE(seen(corners_[3]));
  click(at(onMap(0.99, 0.01)));
  EXPECT_TRUE(seen(corners_[1]));
  EXPECT_TRUE(selectedNodes().empty());
}

TEST_F(Overview, NeverLiesOverWhatIsRevealed) {
  // Just outside the view, on its way from the upper left: it would come to rest in the map's corner.
  const SgRectangle view = SgGraphViewport(graph_);
  const SgPoint corner = SgGraphToPlane(graph_, {view.width + 5, view.height + 5});
  const Widget wanted = node("wanted", corner.x, corner.y);
  SgGraphRevealNode(graph_, wanted);
  SgGraphUpdate(graph_);
  EXPECT_TRUE(isShown());
  const SgPoint place = SgGraphNodeRectangle(wanted).middle(), map = onMap(0, 0);
  EXPECT_TRUE(view.contains(place));
  EXPECT_TRUE(place.x < map.x || place.y < map.y);
}

TEST_F(Overview, ItsFrameIsDragged) {
  drag(at(onMap(0.02, 0.02)), at(onMap(0.02, 0.97)));
  EXPECT_TRUE(seen(corners_[2]));
  EXPECT_FALSE(seen(corners_[0]));
  beginDrag(at(onMap(0.02, 0.97)), at(onMap(0.9, 0.5)));
  EXPECT_FALSE(seen(corners_[2]));
  key("Escape");
  drop();
  EXPECT_TRUE(seen(corners_[2]));
}

TEST_F(Overview, ADoubleClickOnItMakesNoNode) {
  editMode(true);
  hands().doubleClick(at(onMap(0.5, 0.5)));
  settle();
  EXPECT_TRUE(calls_.empty());
}

TEST_F(Overview, ItsKeyTurnsItOffAndOn) {
  int told = 0;
  XtAddCallback(
      graph_, SgNoverviewCallback, [](Widget, XtPointer count, XtPointer) { ++*static_cast<int*>(count); },
      &told);
  click(at(nowhere()));
  for (const bool shown : {false, true}) {
    key("m");
    SgGraphUpdate(graph_);
    EXPECT_EQ(resource<Boolean>(graph_, SgNshowOverview), shown);
    EXPECT_EQ(isShown(), shown);
  }
  EXPECT_EQ(told, 2);
}

TEST_F(Overview, ShowsWhereNodesAre) {
  const Widget moved = node("moved", 4000, 0);
  XtVaSetValues(moved, SgNtint, Pixel{0xff0000}, nullptr);
  SgGraphUpdate(graph_);
  const Pixel patch = 0xb30000;  // darker, as from afar
  EXPECT_TRUE(hasPixelNear(graph_, onMap(0.5, 0), patch));
  SgGraphSetNodePosition(moved, {4000, 4000});
  SgGraphUpdate(graph_);
  EXPECT_FALSE(hasPixelNear(graph_, onMap(0.5, 0), patch));
  EXPECT_TRUE(hasPixelNear(graph_, onMap(0.5, 0.5), patch));
}

TEST_F(Overview, TheWordForEditingIsWhereGraphsHaveRoom) {
  editMode(true);
  SgGraphUpdate(graph_);
  const Pixel green = resource<Pixel>(graph_, SgNtargetColor);
  const SgRectangle view = SgGraphViewport(graph_);
  EXPECT_EQ(pixelAt(graph_, {view.width - 8, 8}), green);
  EXPECT_NE(pixelAt(graph_, {8, 8}), green) << "the first node is near";
}

}  // namespace
