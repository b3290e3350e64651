/// @file
/// Every gesture on the graph widget, accepted and refused.
#include "tests/viewkit/graph_test.h"

namespace {

using support::Point;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Gestures : public GraphTest {
 protected:
  void SetUp() override {
    GraphTest::SetUp();
    a_ = node("a", 50, 40);
    b_ = node("b", 50, 240);
    c_ = node("c", 300, 240);
    arc_ = SgGraphAddArc(graph_, a_, b_);
    SgGraphScrollTo(graph_, {0, 0}, {0, 0});
    settle();
  }

  SgPoint corner(Widget widget) {
    const SgRectangle bounds = SgGraphNodeBounds(widget);
    return {bounds.x, bounds.y};
  }
  /// Where the plane's origin is in the window.
  SgPoint origin() { return SgGraphToWindow(graph_, {0, 0}); }
  Point handle(bool ofChild) {
    SgPoint place, parent, child;
    EXPECT_TRUE(SgGraphArcPoint(graph_, arc_, &place, &parent, &child));
    return at(ofChild ? child : parent);
  }

  Widget a_ = nullptr, b_ = nullptr, c_ = nullptr;
  SgArc arc_ = 0;
};

TEST_F(Gestures, AClickSelectsANodeAndShiftAdds) {
  click(at(a_));
  EXPECT_THAT(selectedNodes(), ElementsAre(a_));
  click(at(b_));
  EXPECT_THAT(selectedNodes(), ElementsAre(b_));
  click(at(c_), {"Shift_L"});
  EXPECT_THAT(selectedNodes(), ElementsAre(b_, c_));
  click(at(c_), {"Shift_L"});
  EXPECT_THAT(selectedNodes(), ElementsAre(b_, c_));
  click(at(c_));
  EXPECT_THAT(selectedNodes(), ElementsAre(c_));
}

TEST_F(Gestures, AClickSelectsAnArcAndShiftAdds) {
  const SgArc other = SgGraphAddArc(graph_, a_, c_);
  click(at(arc_));
  EXPECT_THAT(selectedArcs(), ElementsAre(arc_));
  click(at(other), {"Shift_L"});
  click(at(b_), {"Shift_L"});
  EXPECT_THAT(selectedArcs(), ElementsAre(arc_, other));
  EXPECT_THAT(selectedNodes(), ElementsAre(b_));
  click(at(other));
  EXPECT_THAT(selectedArcs(), ElementsAre(other));
  EXPECT_THAT(selectedNodes(), IsEmpty());
}

TEST_F(Gestures, AClickOnAStubSelectsTheArcAndGoesToItsOtherEnd) {
  const Widget far = node("far", 9000, 7000);
  const SgArc stubs = SgGraphAddArc(graph_, a_, far);
  SgGraphUpdate(graph_);
  const SgPoint parent_stub = middle(stubs);
  EXPECT_TRUE(SgGraphViewport(graph_).contains(parent_stub));
  EXPECT_TRUE(hasPixelNear(graph_, parent_stub, resource<Pixel>(graph_, SgNarcColor)));

  click(at(parent_stub));
  EXPECT_THAT(selectedArcs(), ElementsAre(stubs));
  EXPECT_TRUE(SgGraphViewport(graph_).contains(middle(far)));
  // Now it is drawn whole: a click on it changes nothing more.
  const SgPoint before = middle(far);
  click(at(SgPoint{before.x - 45 * 9.0 / 7, before.y - 45}));
  EXPECT_THAT(selectedArcs(), ElementsAre(stubs));
  EXPECT_EQ(middle(far), before);

  click(at(nowhere()));
  click(at(SgPoint{before.x - 25 * 9.0 / 7, before.y - 25}));
  EXPECT_TRUE(SgGraphViewport(graph_).contains(middle(a_)));
}

TEST_F(Gestures, TheEndOfAnArcInStubsCanBeMovedOnceItIsSelected) {
  editMode(true);
  SgGraphSetArcStyle(graph_, arc_, SgARC_STUBS);
  settle();
  click(at(arc_));
  ASSERT_THAT(selectedArcs(), ElementsAre(arc_));
  SgPoint place, parent, child;
  ASSERT_TRUE(SgGraphArcPoint(graph_, arc_, &place, &parent, &child));
  drag(at(child), at(c_));
  EXPECT_EQ(countArcs(graph_, a_, c_), 1u);
  EXPECT_EQ(countArcs(graph_, a_, b_), 0u);
}

TEST_F(Gestures, PointingAtANodeShowsItsArcsWhole) {
  SgGraphSetArcStyle(graph_, arc_, SgARC_STUBS);
  settle();
  const SgPoint between = [&] {
    const SgPoint a = middle(a_), b = middle(b_);
    return SgPoint{(a.x + b.x) / 2, (a.y + b.y) / 2};
  }();
  const Pixel hover = resource<Pixel>(graph_, SgNhoverColor);
  EXPECT_FALSE(hasPixelNear(graph_, between, hover));
  hands().moveTo(at(a_));
  settle();
  SgGraphUpdate(graph_);
  EXPECT_TRUE(hasPixelNear(graph_, between, hover));
  hands().moveTo(at(nowhere()));
  settle();
  SgGraphUpdate(graph_);
  EXPECT_FALSE(hasPixelNear(graph_, between, hover));
}

TEST_F(Gestures, AClickOnTheBackgroundClearsTheSelectionUnlessShiftIsHeld) {
  click(at(a_));
  click(at(arc_), {"Shift_L"});
  click(at(nowhere()), {"Shift_L"});
  EXPECT_THAT(selectedArcs(), ElementsAre(arc_));
  click(at(nowhere()));
  EXPECT_THAT(selectedArcs(), IsEmpty());
  EXPECT_THAT(selectedNodes(), IsEmpty());
}

TEST_F(Gestures, ArcWidthIsTheStripThatPicksAnArc) {
  const SgPoint on = middle(arc_);
  EXPECT_EQ(resource<Dimension>(graph_, SgNarcWidth), 20);
  for (const double zoom : {1.0, 0.5}) {
    SgGraphSetZoom(graph_, zoom);
    const SgPoint place = middle(arc_);
    for (const double side : {-1.0, 1.0}) {
      EXPECT_EQ(arcAt({place.x + side * 9, place.y}), arc_);
      EXPECT_EQ(arcAt({place.x + side * 12, place.y}), 0u);
    }
  }
  SgGraphSetZoom(graph_, 1);
  SgGraphScrollTo(graph_, {0, 0}, {0, 0});
  settle();
  click(at(SgPoint{on.x + 9, on.y}));
  EXPECT_THAT(selectedArcs(), ElementsAre(arc_));
  XtVaSetValues(graph_, SgNarcWidth, 4, nullptr);
  click(at(SgPoint{on.x + 9, on.y}));
  EXPECT_THAT(selectedArcs(), IsEmpty());
}

TEST_F(Gestures, DraggingANodeMovesItOnThePlaneOnly) {
  const Point from = at(a_);
  drag(from, {from.x + 60, from.y + 30});
  EXPECT_EQ(corner(a_), (SgPoint{110, 70}));
  EXPECT_EQ(corner(b_), (SgPoint{50, 240}));
  EXPECT_EQ(origin(), (SgPoint{0, 0}));
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_EQ(arcAt(middle(arc_)), arc_);
}

TEST_F(Gestures, DraggingAtHalfSizeMovesTwiceAsFar) {
  SgGraphSetZoom(graph_, 0.5);
  settle();
  const SgPoint before = corner(a_);
  const Point from = at(a_);
  drag(from, {from.x + 60, from.y + 30});
  EXPECT_EQ(corner(a_), (SgPoint{before.x + 120, before.y + 60}));
}

TEST_F(Gestures, DraggingOneOfSeveralSelectedMovesThemAll) {
  click(at(a_));
  click(at(c_), {"Shift_L"});
  const Point from = at(a_);
  drag(from, {from.x + 20, from.y + 10});
  EXPECT_EQ(corner(a_), (SgPoint{70, 50}));
  EXPECT_EQ(corner(c_), (SgPoint{320, 250}));
  EXPECT_EQ(corner(b_), (SgPoint{50, 240}));
  EXPECT_THAT(selectedNodes(), ElementsAre(a_, c_));
}

TEST_F(Gestures, DraggingTheBackgroundPans) {
  node("far", 3000, 3000);
  const Point from = at(nowhere());
  drag(from, {from.x - 40, from.y - 25});
  EXPECT_EQ(origin(), (SgPoint{-40, -25}));
}

TEST_F(Gestures, TheMiddleButtonPansOverNodesToo) {
  const Point from = at(a_);
  drag(from, {from.x + 30, from.y + 20}, 2);
  EXPECT_EQ(origin(), (SgPoint{30, 20}));
  EXPECT_EQ(corner(a_), (SgPoint{50, 40}));
  EXPECT_THAT(selectedNodes(), IsEmpty());
}

TEST_F(Gestures, TheWheelScrolls) {
  hands().wheel(at(nowhere()), -1);
  settle();
  const SgPoint down = origin();
  EXPECT_EQ(down.x, 0);
  EXPECT_LT(down.y, 0);
  hands().wheel(at(nowhere()), 1);
  settle();
  EXPECT_EQ(origin(), (SgPoint{0, 0}));
}

TEST_F(Gestures, TheWheelWithShiftScrollsSideways) {
  hands().wheel(at(nowhere()), -1, {"Shift_L"});
  settle();
  EXPECT_LT(origin().x, 0);
  EXPECT_EQ(origin().y, 0);
}

TEST_F(Gestures, TheWheelWithControlZoomsAroundThePointer) {
  const SgPoint pointer{200, 150};
  const SgPoint place = SgGraphToPlane(graph_, pointer);
  hands().wheel(at(pointer), 2, {"Control_L"});
  settle();
  EXPECT_GT(SgGraphZoom(graph_), 1.2);
  EXPECT_NEAR(SgGraphToPlane(graph_, pointer).x, place.x, 1e-6);
  EXPECT_NEAR(SgGraphToPlane(graph_, pointer).y, place.y, 1e-6);
  hands().wheel(at(pointer), 30, {"Control_L"});
  settle();
  EXPECT_EQ(SgGraphZoom(graph_), 4);
  hands().wheel(at(pointer), -60, {"Control_L"});
  settle();
  EXPECT_EQ(SgGraphZoom(graph_), 0.1);
}

TEST_F(Gestures, ADoubleClickIsTheDefaultAction) {
  hands().doubleClick(at(b_));
  settle();
  ASSERT_EQ(calls_.size(), 1u);
  EXPECT_EQ(calls_[0].reason, 54);
  EXPECT_EQ(calls_[0].node, b_);
  EXPECT_THAT(selectedNodes(), ElementsAre(b_));
}

TEST_F(Gestures, TwoClicksOnDifferentNodesAreNoDoubleClick) {
  SgGraphSetNodePosition(b_, {corner(a_).x + SgGraphNodeBounds(a_).width, corner(a_).y});
  settle();
  const SgRectangle box = SgGraphNodeRectangle(b_);
  hands().moveTo(at(SgPoint{box.middle().x, box.y - 2}));
  hands().press();
  hands().release();
  hands().moveTo(at(SgPoint{box.x + 1, box.middle().y}));
  hands().press();
  hands().release();
  settle();
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_THAT(selectedNodes(), ElementsAre(b_));
}

TEST_F(Gestures, ReturnIsTheDefaultActionOfTheCurrentNode) {
  key("Return");
  EXPECT_THAT(calls_, IsEmpty());
  click(at(c_));
  key("Return");
  ASSERT_EQ(calls_.size(), 1u);
  EXPECT_EQ(calls_[0].reason, SgCR_DEFAULT_ACTION);
  EXPECT_EQ(calls_[0].node, c_);
  XtUnmanageChild(c_);
  key("Return");
  EXPECT_EQ(calls_.size(), 1u);
}

TEST_F(Gestures, ArrowKeysWalkTheNodes) {
  click(at(nowhere()));
  key("Down");
  EXPECT_THAT(selectedNodes(), ElementsAre(a_));
  key("Down");
  EXPECT_THAT(selectedNodes(), ElementsAre(b_));
  key("Right");
  EXPECT_THAT(selectedNodes(), ElementsAre(c_));
  key("Right");
  EXPECT_THAT(selectedNodes(), ElementsAre(c_));
  key("Left");
  key("Up");
  EXPECT_THAT(selectedNodes(), ElementsAre(a_));
}

TEST_F(Gestures, WalkingScrollsTheNodeIntoView) {
  const Widget far = node("far", 50, 5000);
  click(at(b_));
  key("Down");
  EXPECT_THAT(selectedNodes(), ElementsAre(far));
  const SgRectangle view = SgGraphViewport(graph_), box = SgGraphNodeRectangle(far);
  EXPECT_TRUE(view.contains({box.x, box.y}) && view.contains({box.right(), box.bottom()}));
}

TEST_F(Gestures, CapsLockAndNumLockMakeNoDifference) {
  editMode(true);
  for (const char* lock : {"Caps_Lock", "Num_Lock"}) {
    SCOPED_TRACE(lock);
    key(lock);
    click(at(a_));
    EXPECT_THAT(selectedNodes(), ElementsAre(a_));
    key("Down");
    EXPECT_THAT(selectedNodes(), ElementsAre(b_));
    calls_.clear();
    key("Return");
    drag(at(a_), at(c_), 1, {"Control_L"});
    key(lock);
    ASSERT_EQ(calls_.size(), 3u);
    EXPECT_EQ(calls_[0].reason, SgCR_DEFAULT_ACTION);
    EXPECT_EQ(calls_[1].reason, SgCR_NEW_ARC);
  }
}

TEST_F(Gestures, TheKeyboardFocusCanBeSeen) {
  click(at(nowhere()));
  const SgPoint border{1, SgGraphViewport(graph_).height / 2};
  SgGraphUpdate(graph_);
  EXPECT_EQ(pixelAt(graph_, border), resource<Pixel>(graph_, XmNhighlightColor));
}

// New arcs

TEST_F(Gestures, ControlDragDrawsAnArcWhichTheWidgetMakesItself) {
  editMode(true);
  drag(at(b_), at(c_), 1, {"Control_L"});
  ASSERT_EQ(calls_.size(), 2u);
  EXPECT_EQ(calls_[0].reason, SgCR_NEW_ARC);
  EXPECT_EQ(calls_[0].parent, b_);
  EXPECT_EQ(calls_[0].child, c_);
  EXPECT_TRUE(calls_[0].doit);
  EXPECT_EQ(countArcs(graph_, b_, c_), 1u);
  Widget from = nullptr, to = nullptr;
  ASSERT_TRUE(SgGraphGetArcNodes(graph_, calls_[1].arc, &from, &to));
  EXPECT_EQ(from, b_);
  EXPECT_EQ(to, c_);
  EXPECT_EQ(corner(b_), (SgPoint{50, 240}));
}

TEST_F(Gestures, AClearedFlagLeavesTheNewArcToTheCallback) {
  editMode(true);
  reactions_[SgCR_NEW_ARC] = [](auto& call) { call.doit = False; };
  drag(at(b_), at(c_), 1, {"Control_L"});
  EXPECT_EQ(calls_.size(), 1u);
  EXPECT_EQ(arcCount(), 1u);
}

TEST_F(Gestures, AnArcCanBeDrawnToItsOwnNode) {
  editMode(true);
  hands().hold("Control_L");
  beginDrag(at(c_), {at(c_).x, at(c_).y + 80});
  hands().moveTo(at(c_));
  drop();
  hands().letGo("Control_L");
  EXPECT_EQ(countArcs(graph_, c_, c_), 1u);
}

TEST_F(Gestures, AnArcWithoutAnEndIsNone) {
  editMode(true);
  drag(at(b_), at(nowhere()), 1, {"Control_L"});
  click(at(b_), {"Control_L"});
  drag(at(b_), {at(b_).x + 8, at(b_).y}, 1, {"Control_L"});  // never left the node
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_EQ(arcCount(), 1u);
}

TEST_F(Gestures, ARubberLineFollowsAndTheNodeUnderItLightsUp) {
  editMode(true);
  hands().hold("Control_L");
  beginDrag(at(b_), at(c_));
  SgGraphUpdate(graph_);
  const SgRectangle box = SgGraphNodeRectangle(c_);
  EXPECT_EQ(pixelAt(graph_, {box.middle().x, box.y - 2}), resource<Pixel>(graph_, SgNtargetColor));
  EXPECT_EQ(pixelAt(graph_, {(middle(b_).x + middle(c_).x) / 2, middle(b_).y}),
            resource<Pixel>(graph_, SgNselectionColor));
  drop();
  hands().letGo("Control_L");
  SgGraphUpdate(graph_);
  EXPECT_NE(pixelAt(graph_, {box.middle().x, box.y - 2}), resource<Pixel>(graph_, SgNtargetColor));
}

TEST_F(Gestures, TheWheelBringsAFarNodeUnderADraggedArc) {
  editMode(true);
  const Widget far = node("far", 50, 240 + 600);
  hands().hold("Control_L");
  beginDrag(at(b_), {at(b_).x, at(b_).y + 40});
  hands().letGo("Control_L");
  while (SgGraphNodeRectangle(far).bottom() > SgGraphViewport(graph_).height) {
    hands().wheel({at(b_).x, at(b_).y + 40}, -1);
    settle();
  }
  hands().moveTo(at(far));
  drop();
  EXPECT_EQ(countArcs(graph_, b_, far), 1u);
}

// Moved ends

TEST_F(Gestures, DraggingAHandleMovesThatEnd) {
  editMode(true);
  for (const bool child : {true, false}) {
    SCOPED_TRACE(child);
    calls_.clear();
    click(at(arc_));
    drag(handle(child), at(c_));
    const Widget newParent = child ? a_ : c_, newChild = child ? c_ : b_;
    ASSERT_EQ(calls_.size(), 2u);
    EXPECT_EQ(calls_[0].reason, SgCR_ARC_MOVED);
    EXPECT_EQ(calls_[0].arc, arc_);
    EXPECT_EQ(calls_[0].oldParent, a_);
    EXPECT_EQ(calls_[0].oldChild, b_);
    EXPECT_EQ(calls_[0].newParent, newParent);
    EXPECT_EQ(calls_[0].newChild, newChild);
    EXPECT_EQ(countArcs(graph_, newParent, newChild), 1u);
    EXPECT_EQ(arcCount(), 1u);
    EXPECT_THAT(selectedArcs(), ElementsAre(calls_[1].arc));
    SgGraphRemoveArcBetweenNodes(graph_, newParent, newChild);
    arc_ = SgGraphAddArc(graph_, a_, b_);
  }
}

TEST_F(Gestures, AClearedFlagLeavesTheMoveToTheCallback) {
  editMode(true);
  reactions_[SgCR_ARC_MOVED] = [](auto& call) { call.doit = False; };
  click(at(arc_));
  drag(handle(true), at(c_));
  EXPECT_EQ(calls_.size(), 1u);
  EXPECT_EQ(countArcs(graph_, a_, b_), 1u);
  EXPECT_EQ(countArcs(graph_, a_, c_), 0u);
}

TEST_F(Gestures, AnEndDroppedOnItsOwnNodeOrNowhereStays) {
  editMode(true);
  click(at(arc_));
  drag(handle(true), at(b_));
  drag(handle(true), at(nowhere()));
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_EQ(countArcs(graph_, a_, b_), 1u);
  EXPECT_THAT(selectedArcs(), ElementsAre(arc_));
}

// New nodes

TEST_F(Gestures, ADoubleClickOnTheBackgroundMakesANode) {
  editMode(true);
  const SgPoint place{250, 100};
  hands().doubleClick(at(place));
  settle();
  ASSERT_EQ(calls_.size(), 2u);
  EXPECT_EQ(calls_[0].reason, SgCR_NEW_NODE);
  EXPECT_EQ(calls_[0].position, SgGraphToPlane(graph_, place));
  ASSERT_NE(calls_[1].node, nullptr);
  EXPECT_EQ(SgGraphNodeAt(graph_, place), calls_[1].node);
  EXPECT_TRUE(XtIsManaged(calls_[1].node));
}

TEST_F(Gestures, AClearedFlagLeavesTheNewNodeToTheCallback) {
  editMode(true);
  reactions_[SgCR_NEW_NODE] = [](auto& call) { call.doit = False; };
  hands().doubleClick(at(SgPoint{250, 100}));
  settle();
  EXPECT_EQ(calls_.size(), 1u);
  EXPECT_EQ(SgGraphNodeAt(graph_, {250, 100}), nullptr);
}

TEST_F(Gestures, ADoubleClickOnAnArcMakesNoNode) {
  editMode(true);
  hands().doubleClick(at(arc_));
  settle();
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_THAT(selectedArcs(), ElementsAre(arc_));
}

// What is refused

TEST_F(Gestures, OutsideEditModeNothingIsChanged) {
  click(at(arc_));
  drag(handle(true), at(c_));
  EXPECT_EQ(origin(), (SgPoint{at(c_).x - handle(true).x + 0.0, at(c_).y - handle(true).y + 0.0}))
      << "where no handle is, the background is dragged";
  SgGraphScrollTo(graph_, {0, 0}, {0, 0});
  settle();
  drag(at(b_), at(c_), 1, {"Control_L"});
  hands().doubleClick(at(nowhere()));
  settle();
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_EQ(arcCount(), 1u);
  EXPECT_EQ(corner(b_), (SgPoint{50, 240}));
}

TEST_F(Gestures, LeavingEditModeDuringADragGivesItUp) {
  editMode(true);
  hands().hold("Control_L");
  beginDrag(at(b_), at(c_));
  editMode(false);
  drop();
  hands().letGo("Control_L");
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_EQ(arcCount(), 1u);
}

TEST_F(Gestures, EscapeGivesUpEveryDrag) {
  editMode(true);
  const SgPoint bend[] = {{200, 150}};
  SgGraphSetArcBends(graph_, arc_, bend);
  const auto path = SgGraphArcPath(graph_, arc_);

  beginDrag(at(a_), {at(a_).x + 70, at(a_).y + 10});
  EXPECT_NE(corner(a_), (SgPoint{50, 40}));
  key("Escape");
  EXPECT_EQ(corner(a_), (SgPoint{50, 40}));
  hands().moveTo(at(c_));
  drop();
  EXPECT_EQ(corner(a_), (SgPoint{50, 40}));
  EXPECT_EQ(SgGraphArcPath(graph_, arc_), path);

  beginDrag(at(nowhere()), {at(nowhere()).x - 60, at(nowhere()).y - 60});
  key("Escape");
  drop();
  EXPECT_EQ(origin(), (SgPoint{0, 0}));

  hands().hold("Control_L");
  beginDrag(at(b_), at(c_));
  hands().letGo("Control_L");
  key("Escape");
  drop();

  click(at(arc_));
  beginDrag(handle(true), at(c_));
  key("Escape");
  drop();
  EXPECT_THAT(calls_, IsEmpty());
  EXPECT_EQ(countArcs(graph_, a_, b_), 1u);
  EXPECT_EQ(arcCount(), 1u);
}

// What goes meanwhile

TEST_F(Gestures, ANodeMayGoWhileItIsDragged) {
  beginDrag(at(a_), {at(a_).x + 50, at(a_).y});
  XtDestroyWidget(a_);
  hands().moveTo(at(c_));
  drop();
  EXPECT_EQ(arcCount(), 0u);
  EXPECT_THAT(selectedNodes(), IsEmpty());
}

TEST_F(Gestures, EitherNodeMayGoWhileAnArcIsDrawn) {
  editMode(true);
  for (const Widget goes : {a_, c_}) {
    hands().hold("Control_L");
    beginDrag(at(a_ == goes ? a_ : b_), at(c_));
    SgGraphRemoveNode(goes);
    settle();
    drop();
    hands().letGo("Control_L");
    EXPECT_THAT(calls_, IsEmpty());
  }
}

TEST_F(Gestures, AnArcMayGoWhileItsEndIsDragged) {
  editMode(true);
  click(at(arc_));
  beginDrag(handle(true), at(c_));
  SgGraphRemoveArcBetweenNodes(graph_, a_, b_);
  settle();
  drop();
  EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(Gestures, AllMayGoDuringADrag) {
  beginDrag(at(a_), {at(a_).x + 50, at(a_).y});
  SgGraphClear(graph_);
  hands().moveTo(at(nowhere()));
  drop();
  EXPECT_EQ(arcCount(), 0u);
  EXPECT_EQ(SgGraphExtents(graph_), SgRectangle{});
}

TEST_F(Gestures, CallbacksMayClearTheGraph) {
  editMode(true);
  for (const int reason : {SgCR_DEFAULT_ACTION, SgCR_NEW_ARC, SgCR_ARC_MOVED, SgCR_NEW_NODE})
    reactions_[reason] = [&](auto&) { SgGraphClear(graph_); };
  const auto refill = [&] {
    SgGraphClear(graph_);
    a_ = node("a", 50, 40);
    b_ = node("b", 50, 240);
    c_ = node("c", 300, 240);
    arc_ = SgGraphAddArc(graph_, a_, b_);
    SgGraphScrollTo(graph_, {0, 0}, {0, 0});
    settle();
  };
  hands().doubleClick(at(a_));
  settle();
  EXPECT_EQ(arcCount(), 0u);
  refill();
  drag(at(b_), at(c_), 1, {"Control_L"});
  EXPECT_EQ(arcCount(), 0u);
  refill();
  click(at(arc_));
  drag(handle(true), at(c_));
  EXPECT_EQ(arcCount(), 0u);
  refill();
  click(at(a_));
  key("Return");
  EXPECT_EQ(calls_.size(), 4u);
  EXPECT_THAT(selectedNodes(), IsEmpty());
}

TEST_F(Gestures, CallbacksMayTakeAwayTheNodesTheyAreAskedAbout) {
  editMode(true);
  reactions_[SgCR_NEW_ARC] = [](auto& call) { SgGraphRemoveNode(call.child); };
  drag(at(b_), at(c_), 1, {"Control_L"});
  ASSERT_EQ(calls_.size(), 1u);
  EXPECT_TRUE(calls_[0].doit);
  EXPECT_EQ(arcCount(), 1u);
  EXPECT_EQ(SgGraphNodeAt(graph_, SgGraphToWindow(graph_, {310, 250})), nullptr);
}

TEST_F(Gestures, CallbacksMayDestroyTheGraph) {
  editMode(true);
  reactions_[SgCR_NEW_ARC] = [&](auto&) { XtDestroyWidget(graph_); };
  drag(at(b_), at(c_), 1, {"Control_L"});
  EXPECT_EQ(calls_.size(), 1u);
  EXPECT_EQ(graph_, nullptr);
}

}  // namespace
