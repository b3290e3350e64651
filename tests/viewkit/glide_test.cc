/// @file
/// Nodes are seen on their way to new places.
#include "tests/viewkit/graph_test.h"

namespace {

class Gliding : public GraphTest {
 protected:
  void SetUp() override {
    GraphTest::SetUp();
    moved_ = node("moved", 50, 50);
    child_ = node("child", 50, 250);
    SgGraphAddArc(graph_, moved_, child_);
    SgGraphScrollTo(graph_, {0, 0}, {20, 20});
    settle();
    SgGraphUpdate(graph_);
    old_ = SgGraphNodeRectangle(moved_);
  }
  void move() {
    SgGraphBeginMove(graph_);
    SgGraphSetNodePosition(moved_, {250, 150});
    SgGraphScrollTo(graph_, {0, 0}, {20, 20});
    SgGraphEndMove(graph_);
    SgGraphUpdate(graph_);
  }
  /// Whether it is seen at a place that it had or has.
  bool isSeenAt(const SgRectangle& box) {
    return pixelAt(graph_, {box.x + 6, box.y + 6}) == resource<Pixel>(moved_, SgNtint);
  }
  SgRectangle now() { return SgGraphNodeRectangle(moved_); }

  Widget moved_ = nullptr, child_ = nullptr;
  SgRectangle old_;
};

TEST_F(Gliding, BeginsWhereTheNodeWasAndEndsWhereItIs) {
  move();
  EXPECT_NE(now(), old_) << "it is there at once";
  EXPECT_TRUE(isSeenAt(old_));
  EXPECT_FALSE(isSeenAt(now()));
  EXPECT_TRUE(eventually([&] {
    SgGraphUpdate(graph_);
    return isSeenAt(now());
  }));
  EXPECT_FALSE(isSeenAt(old_));
}

TEST_F(Gliding, APressAKeyAndTheWheelEndIt) {
  const auto expectEnd = [&](const char* what, const std::function<void()>& gesture) {
    SCOPED_TRACE(what);
    SgGraphSetNodePosition(moved_, {50, 50});
    SgGraphScrollTo(graph_, {0, 0}, {20, 20});
    SgGraphUpdate(graph_);
    move();
    ASSERT_TRUE(isSeenAt(old_));
    gesture();
    settle();
    SgGraphUpdate(graph_);
    EXPECT_TRUE(isSeenAt(now()));
  };
  expectEnd("press", [&] { hands().click(at(nowhere())); });
  expectEnd("key", [&] { hands().key("a"); });
  expectEnd("wheel", [&] { hands().wheel(at(nowhere()), -1); });
  // A press takes what is there, not what is seen on its way.
  move();
  click(at(moved_));
  EXPECT_EQ(selectedNodes(), std::vector{moved_});
}

TEST_F(Gliding, CanBeTurnedOff) {
  XtVaSetValues(graph_, SgNglide, False, nullptr);
  move();
  EXPECT_TRUE(isSeenAt(now()));
  EXPECT_FALSE(isSeenAt(old_));
}

TEST_F(Gliding, ManyNodesAreInTheirPlacesAtOnce) {
  std::vector<Widget> many;
  for (int i = 0; i < 1500; ++i) many.push_back(node("many", 400 + i % 50, 100 + i / 50));
  SgGraphUpdate(graph_);
  SgGraphBeginMove(graph_);
  for (const Widget node : many) {
    const SgRectangle at = SgGraphNodeBounds(node);
    SgGraphSetNodePosition(node, {at.x, at.y + 30});
  }
  move();
  SgGraphEndMove(graph_);
  SgGraphUpdate(graph_);
  EXPECT_TRUE(isSeenAt(now()));
}

TEST_F(Gliding, WhatGoesMeanwhileIsGone) {
  move();
  SgGraphRemoveNode(moved_);
  SgGraphUpdate(graph_);
  const Widget other = node("other", 400, 200);
  SgGraphUpdate(graph_);
  EXPECT_EQ(pixelAt(graph_, {SgGraphNodeRectangle(other).x + 6, SgGraphNodeRectangle(other).y + 6}),
            resource<Pixel>(other, SgNtint));
  SgGraphBeginMove(graph_);
  SgGraphClear(graph_);
  SgGraphEndMove(graph_);
  SgGraphUpdate(graph_);
}

}  // namespace
