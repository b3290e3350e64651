/// @file
/// The picture of a graph: what lies where, arcs side by side, stable ids, selection.
#include "picture/drawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>

#include "tests/support/scene_like_graph.h"

namespace {

using picture::ArcDetail;
using picture::ArcId;
using picture::BoxIndex;
using picture::Drawing;
using picture::kNone;
using picture::NodeId;
using picture::united;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

std::vector<std::uint32_t> found(const BoxIndex& index, const SgRectangle& area) {
  std::vector<std::uint32_t> numbers;
  index.visit(area, [&](std::uint32_t number) { numbers.push_back(number); });
  std::ranges::sort(numbers);
  return numbers;
}

TEST(BoxIndex, FindsWhatASearchOfAllFinds) {
  Random random(7);
  const auto place = [&] { return static_cast<double>(random.below(20000)) - 10000; };
  const auto extent = [&] { return std::ldexp(random.below(100), static_cast<int>(random.below(12))); };
  BoxIndex index;
  std::vector<SgRectangle> boxes(500);
  std::vector<bool> in(boxes.size());
  for (int round = 0; round < 4000; ++round) {
    const std::uint32_t number = random.below(500);
    in[number] = !random.chance(20);
    boxes[number] = {place(), place(), extent(), extent()};
    if (in[number])
      index.put(number, boxes[number]);
    else
      index.remove(number);
    if (round % 40 != 0) continue;
    const SgRectangle area{place(), place(), extent(), extent()};
    std::vector<std::uint32_t> expected;
    for (std::uint32_t i = 0; i < boxes.size(); ++i)
      if (in[i] && boxes[i].touches(area)) expected.push_back(i);
    ASSERT_EQ(found(index, area), expected) << round;
  }
  index.clear();
  EXPECT_THAT(found(index, {-1e9, -1e9, 2e9, 2e9}), IsEmpty());
}

TEST(BoxIndex, TakesBoxesOfAnySizeAnywhere) {
  BoxIndex index;
  index.put(0, {-1e9, -1e9, 2e9, 2e9});
  index.put(1, {1e9, 1e9, 0, 0});
  index.put(2, {0, 0, 1e300, 1e300});
  EXPECT_THAT(found(index, {0, 0, 10, 10}), ElementsAre(0u, 2u));
  EXPECT_THAT(found(index, {1e9, 1e9, 1, 1}), ElementsAre(0u, 1u, 2u));
  index.remove(9);
  EXPECT_THAT(found(index, {0, 0, 10, 10}), ElementsAre(0u, 2u));
}

/// Nodes of 60 x 20 at the given places, shown.
class Picture : public testing::Test {
 protected:
  NodeId node(double x, double y) {
    const NodeId made = drawing.addNode();
    drawing.resizeNode(made, 60, 20);
    drawing.moveNode(made, {x, y});
    drawing.showNode(made, true);
    return made;
  }
  SgPoint middleOf(ArcId arc) { return picture::pathPoint(drawing.path(arc), 0.5); }
  std::vector<ArcId> allArcs() {
    std::vector<ArcId> arcs;
    drawing.visitAllArcs([&](ArcId arc) { arcs.push_back(arc); });
    return arcs;
  }

  Drawing drawing;
};

TEST_F(Picture, HiddenNodesAndTheirArcsAreNowhere) {
  const NodeId a = node(0, 0), b = node(0, 100);
  const ArcId arc = drawing.addArc(a, b);
  EXPECT_EQ(drawing.nodeAt({5, 5}), a);
  EXPECT_EQ(drawing.arcAt({30, 60}, 5), arc);
  drawing.showNode(a, false);
  EXPECT_EQ(drawing.nodeAt({5, 5}), kNone);
  EXPECT_EQ(drawing.arcAt({30, 60}, 5), kNone);
  EXPECT_EQ(drawing.extents(), drawing.box(b));
  drawing.showNode(a, true);
  EXPECT_EQ(drawing.arcAt({30, 60}, 5), arc);
}

TEST_F(Picture, TheNearestArcWithinReachIsPicked) {
  const NodeId a = node(0, 0), b = node(0, 100), c = node(100, 0), d = node(100, 100);
  const ArcId left = drawing.addArc(a, b), right = drawing.addArc(c, d);
  EXPECT_EQ(drawing.arcAt({40, 60}, 10), left);
  EXPECT_EQ(drawing.arcAt({41, 60}, 10), kNone);
  EXPECT_EQ(drawing.arcAt({79, 60}, 60), left);
  EXPECT_EQ(drawing.arcAt({81, 60}, 60), right);
}

TEST_F(Picture, TheNodeAddedLastLiesOnTop) {
  node(0, 0);
  const NodeId upper = node(10, 0);
  EXPECT_EQ(drawing.nodeAt({20, 10}), upper);
}

TEST_F(Picture, MovingANodeTakesItsArcsAlongAndStraightensThem) {
  const NodeId a = node(0, 0), b = node(0, 100);
  const ArcId arc = drawing.addArc(a, b);
  const SgPoint bend[] = {{200, 60}};
  drawing.setBends(arc, bend);
  EXPECT_EQ(drawing.arcAt({200, 60}, 3), arc);
  drawing.moveNode(b, {0, 200});
  EXPECT_EQ(drawing.arcAt({200, 60}, 3), kNone);
  EXPECT_EQ(middleOf(arc), (SgPoint{30, 110}));
  EXPECT_EQ(drawing.extents(), (SgRectangle{0, 0, 60, 220}));
}

TEST_F(Picture, NumbersThatAreNoneBecomeNoTrouble) {
  const NodeId a = node(std::nan(""), std::numeric_limits<double>::infinity());
  EXPECT_EQ(drawing.box(a), (SgRectangle{0, 0, 60, 20}));
  drawing.moveNode(a, {1e300, -1e300});
  EXPECT_EQ(drawing.box(a), (SgRectangle{1e9, -1e9, 60, 20}));
  EXPECT_EQ(drawing.nodeAt({1e9, -1e9}), a);
}

TEST_F(Picture, DuplicatesLieSideBySideAndMoveUpWhenOneGoes) {
  const NodeId a = node(0, 0), b = node(0, 100);
  const ArcId first = drawing.addArc(a, b);
  EXPECT_EQ(middleOf(first).x, 30);
  const ArcId second = drawing.addArc(a, b), back = drawing.addArc(b, a);
  EXPECT_THAT((std::vector{middleOf(first).x, middleOf(second).x, middleOf(back).x}),
              ElementsAre(20, 30, 40));
  EXPECT_THAT(allArcs(), ElementsAre(first, second, back));
  drawing.removeArc(first);
  EXPECT_THAT((std::vector{middleOf(second).x, middleOf(back).x}), ElementsAre(25, 35));
  drawing.removeArc(back);
  EXPECT_EQ(middleOf(second).x, 30);
}

TEST_F(Picture, OfDuplicatesASelectedOneIsFoundFirst) {
  const NodeId a = node(0, 0), b = node(0, 100), c = node(100, 100);
  const ArcId first = drawing.addArc(a, b), second = drawing.addArc(a, b), third = drawing.addArc(a, b);
  EXPECT_EQ(drawing.findArc(a, b), third);
  drawing.selectArc(second);
  EXPECT_EQ(drawing.findArc(a, b), second);
  drawing.deselectAll();
  for (int i = 0; i < 5; ++i) drawing.selectArc(drawing.addArc(a, c));
  drawing.selectArc(first);
  EXPECT_EQ(drawing.findArc(a, b), first);
  EXPECT_EQ(drawing.findArc(b, a), kNone);
  EXPECT_EQ(drawing.findArc(c, c), kNone);
}

TEST_F(Picture, ASelfLinkIsALoopBesideItsNode) {
  const NodeId a = node(0, 0);
  const ArcId loop = drawing.addArc(a, a);
  EXPECT_EQ(drawing.nodeAt(middleOf(loop)), kNone);
  EXPECT_EQ(drawing.arcAt(middleOf(loop), 1), loop);
  drawing.removeNode(a);
  EXPECT_THAT(allArcs(), IsEmpty());
}

TEST_F(Picture, StableIdsOfWhatIsGoneStayVoid) {
  const NodeId a = node(0, 0), b = node(0, 100);
  const ArcId arc = drawing.addArc(a, b);
  const auto stableNode = drawing.stableNodeId(a), stableArc = drawing.stableArcId(arc);
  EXPECT_EQ(drawing.nodeOf(stableNode), a);
  EXPECT_EQ(drawing.arcOf(stableArc), arc);
  drawing.removeNode(a);
  EXPECT_THAT(allArcs(), IsEmpty());
  const NodeId reused = node(0, 0);
  EXPECT_EQ(reused, a);
  EXPECT_EQ(drawing.addArc(reused, b), arc);
  EXPECT_EQ(drawing.nodeOf(stableNode), kNone);
  EXPECT_EQ(drawing.arcOf(stableArc), kNone);
  const auto kept = drawing.stableNodeId(b);
  drawing = drawing.emptied();
  EXPECT_EQ(drawing.nodeOf(kept), kNone);
  EXPECT_EQ(node(0, 0), 0u);
  EXPECT_EQ(drawing.nodeOf(kept), kNone);
  for (const picture::StableId nonsense : {0ull, 1ull << 40, ~0ull})
    EXPECT_EQ(drawing.nodeOf(nonsense), kNone);
}

TEST_F(Picture, SelectionKeepsItsOrderAndLosesWhatIsRemoved) {
  const NodeId a = node(0, 0), b = node(0, 100), c = node(0, 200);
  for (const NodeId n : {c, a, b, a}) drawing.selectNode(n);
  const auto order = [&] {
    std::vector<NodeId> nodes;
    for (const auto& [key, n] : drawing.selectedNodes()) nodes.push_back(n);
    return nodes;
  };
  EXPECT_THAT(order(), ElementsAre(c, a, b));
  drawing.removeNode(a);
  EXPECT_THAT(order(), ElementsAre(c, b));
  drawing.deselectAll();
  EXPECT_THAT(order(), IsEmpty());
  EXPECT_FALSE(drawing.nodeSelected(b));
}

TEST_F(Picture, NeighboursLieInTheDirectionAskedFor) {
  const NodeId middle = node(1000, 1000), right = node(1100, 1000), below = node(1000, 1100),
               farLeft = node(-5000, 1000), above = node(1010, 500);
  EXPECT_EQ(drawing.neighbour(middle, 1, 0), right);
  EXPECT_EQ(drawing.neighbour(middle, 0, 1), below);
  EXPECT_EQ(drawing.neighbour(middle, -1, 0), farLeft);
  EXPECT_EQ(drawing.neighbour(middle, 0, -1), above);
  EXPECT_EQ(drawing.neighbour(right, 1, 0), kNone);
  drawing.showNode(right, false);
  EXPECT_EQ(drawing.neighbour(middle, 1, 0), kNone);
}

TEST_F(Picture, VisitingAnAreaSeesTheArcsThatCrossIt) {
  const NodeId a = node(0, 0), b = node(3000, 3000), c = node(0, 5000);
  const ArcId across = drawing.addArc(a, b);
  drawing.addArc(b, c);
  std::vector<ArcId> seen;
  drawing.visitArcs({1500, 1500, 10, 10}, [&](ArcId arc) { seen.push_back(arc); });
  EXPECT_THAT(seen, UnorderedElementsAre(across));
}

// Arcs that are not drawn from node to node

TEST_F(Picture, AnArcInStubsIsPickedAtItsEndsOnly) {
  const NodeId a = node(0, 0), b = node(0, 1000);
  const ArcId arc = drawing.addArc(a, b);
  drawing.setArcStyle(arc, picture::ArcStyle::Stubs);
  for (const double y : {25.0, 55.0, 965.0, 995.0}) EXPECT_EQ(drawing.arcAt({30, y}, 4), arc) << y;
  for (const double y : {70.0, 500.0, 950.0}) EXPECT_EQ(drawing.arcAt({30, y}, 4), kNone) << y;
  EXPECT_EQ(drawing.arcAt({30, 25}, 4, {.stubs = false}), kNone);
}

TEST_F(Picture, AnArcInStubsIsVisitedNearItsEndsOnlyUnlessItIsWhole) {
  const NodeId a = node(0, 0), b = node(0, 3000);
  const ArcId arc = drawing.addArc(a, b);
  drawing.setArcStyle(arc, picture::ArcStyle::Stubs);
  const auto visited = [&](const SgRectangle& area) {
    std::vector<ArcId> arcs;
    drawing.visitArcs(area, [&](ArcId seen) { arcs.push_back(seen); });
    return arcs;
  };
  const SgRectangle all{-10, -10, 100, 4000}, middle{0, 1500, 60, 10}, end{0, 2970, 60, 10};
  EXPECT_THAT(visited(all), ElementsAre(arc));
  EXPECT_THAT(visited(end), ElementsAre(arc));
  EXPECT_THAT(visited(middle), IsEmpty());
  const auto select = [&](auto what) {
    what();
    EXPECT_THAT(visited(all), ElementsAre(arc));
    EXPECT_THAT(visited(middle), ElementsAre(arc));
  };
  select([&] { drawing.selectNode(b); });
  select([&] { drawing.selectNode(a); });
  select([&] { drawing.selectArc(arc); });
  drawing.deselectAll();
  EXPECT_THAT(visited(middle), IsEmpty());
}

TEST_F(Picture, WhateverIsDrawnInAnAreaIsVisitedOnce) {
  Random random(9);
  std::vector<NodeId> nodes;
  for (int i = 0; i < 120; ++i) nodes.push_back(node(random.below(6000), random.below(6000)));
  std::vector<ArcId> arcs;
  for (int i = 0; i < 1200; ++i) {
    arcs.push_back(drawing.addArc(nodes[random.below(120)], nodes[random.below(i % 2 ? 120 : 12)]));
    if (random.chance(70)) drawing.setArcStyle(arcs.back(), picture::ArcStyle::Stubs);
  }
  for (std::size_t i = 100; i < 115; ++i) drawing.foldNode(nodes[i], nodes[i - 90]);
  drawing.hideNode(nodes[116]);
  std::size_t drawn = 0;
  const auto look = [&] {
    for (int i = 0; i < 40; ++i) {
      const SgRectangle area{1.0 * random.below(6000), 1.0 * random.below(6000), 300, 300};
      std::map<ArcId, int> visits;
      drawing.visitArcs(area, [&](ArcId arc) { ++visits[arc]; });
      for (const auto& [arc, count] : visits) {
        EXPECT_EQ(count, 1) << arc;
        EXPECT_TRUE(drawing.arcShown(arc)) << arc;
      }
      for (const ArcId arc : arcs) {
        if (!drawing.arcShown(arc)) continue;
        drawing.visitPieces(arc, {}, [&](std::span<const SgPoint> piece, bool) {
          SgPoint a = piece.front(), b = piece.back();
          if (!picture::clipLine(a, b, area)) return;
          EXPECT_EQ(visits.count(arc), 1u) << arc;
          ++drawn;
        });
      }
    }
  };
  look();
  for (std::size_t i = 20; i < 80; ++i) drawing.hideNode(nodes[i]);
  look();
  for (std::size_t i = 0; i < 120; i += 5) drawing.selectNode(nodes[i]);
  for (std::size_t i = 0; i < 1200; i += 7) drawing.selectArc(arcs[i]);
  look();
  for (const NodeId each : nodes) drawing.selectNode(each);
  for (const ArcId each : arcs) drawing.selectArc(each);
  look();
  drawing.unfoldAll();
  drawing.deselectAll();
  for (std::size_t i = 0; i < 50; ++i) drawing.removeArc(arcs[i]);
  arcs.erase(arcs.begin(), arcs.begin() + 50);
  drawing.moveNode(nodes[3], {100, 100});
  look();
  EXPECT_GT(drawn, 500u);
}

TEST_F(Picture, AnArcIsWholeWhileItOrANodeOfItIsSelected) {
  const NodeId a = node(0, 0), b = node(0, 1000);
  const ArcId arc = drawing.addArc(a, b);
  const ArcDetail window{.longest = 500};
  EXPECT_FALSE(drawing.inStubs(arc, {.longest = 2000}));
  const auto whole = [&](auto select) {
    EXPECT_EQ(drawing.arcAt({30, 500}, 4, window), kNone);
    select();
    EXPECT_EQ(drawing.arcAt({30, 500}, 4, window), arc);
    drawing.deselectAll();
  };
  whole([&] { drawing.selectArc(arc); });
  whole([&] { drawing.selectNode(a); });
  whole([&] { drawing.selectNode(b); });
}

TEST_F(Picture, StubsPointToTheOtherEnd) {
  const SgRectangle left{0, 0, 60, 20}, right{900, 1200, 60, 20};
  const picture::Stubs stubs = picture::stubsBetween(left, right);
  const auto direction = [](const std::array<SgPoint, 2>& stub) {
    return std::atan2(stub[1].y - stub[0].y, stub[1].x - stub[0].x);
  };
  EXPECT_NEAR(direction(stubs.parent), std::atan2(1200, 900), 1e-6);
  EXPECT_NEAR(direction(stubs.child), std::atan2(1200, 900), 1e-6);
  EXPECT_NEAR(picture::distance(stubs.parent[0], stubs.parent[1]), 40, 1e-6);
  EXPECT_NEAR(picture::distance(stubs.child[0], stubs.child[1]), 40, 1e-6);
  // Between neighbours there is a gap all the same.
  const picture::Stubs near = picture::stubsBetween(left, {0, 50, 60, 20});
  EXPECT_LT(near.parent[1].y, near.child[0].y);
}

TEST_F(Picture, ASquareArcLeavesAndReachesItsNodesLevelWithItsBends) {
  const NodeId a = node(0, 0), b = node(100, 50);
  const ArcId arc = drawing.addArc(a, b);
  drawing.setArcStyle(arc, picture::ArcStyle::Square);
  const SgPoint down_and_across[] = {{6, 35}, {130, 35}};
  drawing.setBends(arc, down_and_across);
  EXPECT_THAT(drawing.path(arc),
              ElementsAre(SgPoint{6, 20}, SgPoint{6, 35}, SgPoint{130, 35}, SgPoint{130, 50}));
  const SgPoint from_the_side[] = {{80, 10}, {80, 60}};
  drawing.setBends(arc, from_the_side);
  EXPECT_THAT(drawing.path(arc),
              ElementsAre(SgPoint{60, 10}, SgPoint{80, 10}, SgPoint{80, 60}, SgPoint{100, 60}));
}

TEST_F(Picture, ArcsOfAFoldedNodeAreStubsAtTheNodeThatStandsForIt) {
  const NodeId block = node(0, 0), inner = node(0, 100), shared = node(1000, 0);
  const ArcId within = drawing.addArc(block, inner), out = drawing.addArc(inner, shared),
              twin = drawing.addArc(inner, shared);
  drawing.foldNode(inner, block);
  EXPECT_EQ(drawing.countFolded(block), 1u);
  EXPECT_FALSE(drawing.shown(inner));
  EXPECT_FALSE(drawing.arcShown(within));
  EXPECT_EQ(drawing.nodeAt({5, 105}), kNone);
  EXPECT_EQ(drawing.arcAt({80, 10}, 5), out) << "it begins at the block";
  EXPECT_EQ(drawing.arcAt({500, 10}, 5), kNone);
  EXPECT_TRUE(drawing.isRedirected(twin));
  drawing.selectNode(block);
  EXPECT_EQ(drawing.arcAt({500, 10}, 5), kNone) << "it is not the block's own";
  drawing.selectNode(shared);
  EXPECT_NE(drawing.arcAt({500, 10}, 5), kNone);
  drawing.deselectAll();
  drawing.moveNode(block, {0, 400});
  EXPECT_EQ(drawing.arcAt({80, 10}, 5), kNone) << "it follows the block";
  drawing.removeArc(out);
  EXPECT_NE(drawing.arcAt({990, 26}, 5), kNone) << "the other of the same stands for it";
  drawing.unfoldAll();
  EXPECT_EQ(drawing.nodeAt({5, 105}), inner);
  EXPECT_EQ(drawing.countFolded(block), 0u);
}

TEST_F(Picture, WhatIsFoldedIntoARemovedNodeIsThereAgain) {
  const NodeId block = node(0, 0), inner = node(0, 100), other = node(0, 200);
  drawing.foldNode(inner, block);
  drawing.foldNode(other, block);
  drawing.removeNode(other);
  EXPECT_EQ(drawing.countFolded(block), 1u);
  drawing.removeNode(block);
  EXPECT_EQ(drawing.nodeAt({5, 105}), inner);
  drawing.showNode(inner, false);
  EXPECT_EQ(drawing.nodeAt({5, 105}), kNone);
}

TEST_F(Picture, HiddenNodesAndTheirArcsAreNotSeenButCounted) {
  const NodeId parent = node(0, 0), left = node(0, 100), right = node(200, 100);
  const ArcId toLeft = drawing.addArc(parent, left), toRight = drawing.addArc(parent, right);
  drawing.addArc(left, right);
  const SgRectangle all = drawing.extents();
  drawing.hideNode(right);
  EXPECT_FALSE(drawing.shown(right));
  EXPECT_FALSE(drawing.isSeen(right));
  EXPECT_TRUE(drawing.arcShown(toLeft));
  EXPECT_FALSE(drawing.arcShown(toRight));
  EXPECT_EQ(drawing.nodeAt(drawing.box(right).middle()), picture::kNone);
  EXPECT_LT(drawing.extents().width, all.width);
  EXPECT_EQ(drawing.hiddenArcs(parent).out, 1u);
  EXPECT_EQ(drawing.hiddenArcs(parent).in, 0u);
  EXPECT_EQ(drawing.hiddenArcs(left).out, 1u);
  drawing.unfoldAll();
  EXPECT_TRUE(drawing.shown(right));
  EXPECT_TRUE(drawing.arcShown(toRight));
  EXPECT_EQ(drawing.extents(), all);
  EXPECT_EQ(drawing.hiddenArcs(parent).out, 0u);
}

TEST_F(Picture, WhatChangesWhileItIsHiddenIsFoundWhereItIsThen) {
  const NodeId moved = node(0, 0), removed = node(300, 0), parent = node(0, 600);
  const ArcId arc = drawing.addArc(parent, moved);
  drawing.addArc(parent, removed);
  EXPECT_EQ(drawing.arcAt(middleOf(arc), 5), arc);
  const SgPoint before = middleOf(arc);
  drawing.hideNode(moved);
  drawing.hideNode(removed);
  EXPECT_THAT(drawing.path(arc), IsEmpty());
  EXPECT_EQ(drawing.arcAt(before, 5), kNone);
  drawing.moveNode(moved, {900, 0});
  drawing.resizeNode(moved, 80, 30);
  drawing.removeNode(removed);
  drawing.unfoldAll();
  EXPECT_EQ(drawing.nodeAt({5, 5}), kNone);
  EXPECT_EQ(drawing.nodeAt({975, 25}), moved);
  EXPECT_EQ(drawing.nodeAt({305, 5}), kNone);
  EXPECT_EQ(drawing.arcAt(before, 5), kNone);
  EXPECT_EQ(drawing.arcAt(middleOf(arc), 5), arc);
  // What takes the removed one's place is nowhere before it is shown.
  const NodeId next = drawing.addNode();
  EXPECT_EQ(next, removed);
  EXPECT_EQ(drawing.nodeAt({305, 5}), kNone);
}

TEST_F(Picture, OnlyAFewStubsOfANodeAreDrawnAndTheOthersCounted) {
  const NodeId hub = node(0, 0);
  std::vector<ArcId> arcs;
  for (int i = 0; i < 10; ++i) {
    arcs.push_back(drawing.addArc(node(1000.0 + 100 * i, 1000), hub));
    drawing.setArcStyle(arcs.back(), picture::ArcStyle::Stubs);
  }
  const auto pieces = [&](ArcId arc) {
    int count = 0;
    drawing.visitPieces(arc, {}, [&](std::span<const SgPoint>, bool) { ++count; });
    return count;
  };
  const auto drawn = [&] {
    int count = 0;
    for (const ArcId arc : arcs) count += pieces(arc);
    return count;
  };
  EXPECT_EQ(drawn(), 10 + 3) << "each at its own parent, three at the hub";
  EXPECT_EQ(drawing.undrawnStubs(hub).in, 7u);
  EXPECT_EQ(drawing.undrawnStubs(hub).out, 0u);
  drawing.removeArc(arcs.front());
  arcs.erase(arcs.begin());
  EXPECT_EQ(drawn(), 9 + 3) << "another takes its place";
  drawing.selectNode(hub);
  EXPECT_EQ(drawn(), 9) << "all of them whole";
}

TEST_F(Picture, OfTheArcsThatAreTooLongForTheWindowAlsoOnlyAFewStubsAreDrawn) {
  const NodeId hub = node(0, 0);
  std::vector<ArcId> arcs;
  for (int i = 0; i < 10; ++i) arcs.push_back(drawing.addArc(hub, node(100.0 * i, 2000)));
  const auto linesAtHub = [&](double longest) {
    int count = 0;
    for (const ArcId arc : arcs)
      drawing.visitPieces(arc, {.longest = longest},
                          [&](std::span<const SgPoint>, bool reachesChild) { count += !reachesChild; });
    return count;
  };
  EXPECT_EQ(linesAtHub(1000), 3);
  EXPECT_EQ(drawing.undrawnStubs(hub, {.longest = 1000}).out, 7u);
  EXPECT_EQ(linesAtHub(10000), 0) << "all of them reach their child";
  EXPECT_EQ(drawing.undrawnStubs(hub, {.longest = 10000}).out, 0u);
  EXPECT_EQ(drawing.undrawnStubs(hub, {.longest = 1000}).out, 7u) << "the window has become smaller";
  drawing.moveNode(drawing.to(arcs.back()), {0, 100});
  EXPECT_EQ(drawing.undrawnStubs(hub, {.longest = 1000}).out, 6u) << "one of them is near";
}

TEST_F(Picture, OfLongLinesAtRightAnglesTheEndsAreSeenWhereTheyRun) {
  const NodeId parent = node(0, 0);
  const ArcDetail window{.longest = 500}, afar{.longest = 500, .stubs = false};
  const auto pieces = [&](ArcId arc, const ArcDetail& detail) {
    std::vector<std::vector<SgPoint>> lines;
    drawing.visitPieces(arc, detail, [&](std::span<const SgPoint> piece, bool) {
      lines.emplace_back(piece.begin(), piece.end());
    });
    return lines;
  };
  for (int i = 0; i < 5; ++i) {
    const NodeId child = node(3000 + 100 * i, 1000);
    const ArcId arc = drawing.addArc(parent, child);
    drawing.setArcStyle(arc, picture::ArcStyle::Square);
    const double x = drawing.box(child).middle().x, bottom = drawing.box(parent).bottom();
    drawing.setBends(arc, std::array{SgPoint{6, 990}, SgPoint{x, 990}});
    EXPECT_THAT(pieces(arc, window),
                ElementsAre(ElementsAre(SgPoint{x - 30, 990}, SgPoint{x, 990}, SgPoint{x, 1000}),
                            ElementsAre(SgPoint{6, bottom}, SgPoint{6, bottom + 40})));
    const std::vector<std::vector<SgPoint>> whole = pieces(arc, {});
    EXPECT_THAT(whole, ElementsAre(testing::SizeIs(4)));
    EXPECT_EQ(pieces(arc, afar), whole) << "a line among lines";
  }
  EXPECT_EQ(drawing.undrawnStubs(parent, window).out, 0u) << "they lie on each other";
}

// Blocks

class Blocks : public Picture {
 protected:
  ArcId square(NodeId from, NodeId to) {
    const ArcId arc = drawing.addArc(from, to);
    const SgRectangle &parent = drawing.box(from), &child = drawing.box(to);
    drawing.setBends(arc, std::array{SgPoint{parent.x, parent.bottom()}, SgPoint{child.middle().x, child.y}});
    drawing.setArcStyle(arc, picture::ArcStyle::Square);
    return arc;
  }
  std::vector<SgRectangle> boxes(std::uint32_t depth) const {
    std::vector<SgRectangle> boxes;
    for (const picture::Block& block : drawing.blocks())
      if (block.depth == depth) boxes.push_back(block.box);
    return boxes;
  }
};

TEST_F(Blocks, HoldANodeAndAllBelowItByDepth) {
  const NodeId top = node(0, 0), left = node(20, 100), right = node(500, 100), leaf = node(40, 200);
  square(top, left);
  square(top, right);
  square(left, leaf);
  const ArcId farther = square(left, node(40, 300));
  drawing.addArc(right, leaf);  // not of the tree
  EXPECT_THAT(boxes(0), ElementsAre(united(drawing.box(top),
                                           united(drawing.box(right), drawing.box(drawing.to(farther))))));
  EXPECT_THAT(boxes(1), ElementsAre(united(drawing.box(left), drawing.box(drawing.to(farther)))));
  EXPECT_EQ(drawing.blocks().size(), 2u);
  EXPECT_EQ(drawing.blocks().front().node, top);
  EXPECT_EQ(drawing.blocks().front().height, 1u) << "one is in it";

  const SgRectangle before = boxes(1).front();
  drawing.moveNode(drawing.to(farther), {4000, 4000});
  EXPECT_THAT(boxes(1), ElementsAre(united(drawing.box(left), drawing.box(leaf))))
      << "what lies elsewhere is in none";
  drawing.removeArc(farther);
  square(left, node(40, 300));
  EXPECT_EQ(boxes(1).front(), before);
  drawing.showNode(left, false);
  EXPECT_THAT(boxes(0), ElementsAre(united(drawing.box(top), drawing.box(right))));
}

TEST_F(Blocks, OfAChainAreOne) {
  std::vector<NodeId> chain{node(0, 0)};
  for (int i = 1; i < 1000; ++i) {
    chain.push_back(node(0, 100.0 * i));
    square(chain[static_cast<std::size_t>(i - 1)], chain.back());
  }
  EXPECT_THAT(boxes(0), ElementsAre(drawing.extents()));
  EXPECT_EQ(drawing.blocks().size(), 1u);
  square(chain.back(), chain.front());
  EXPECT_TRUE(drawing.blocks().empty()) << "a circle has no top";
}

TEST_F(Picture, AHubOf50000ChildrenIsTakenApartArcByArc) {
  // Takes many minutes if anything in it searches what it needn't.
  constexpr std::uint32_t kChildren = 50000;
  const NodeId hub = node(0, 0);
  for (std::uint32_t i = 0; i < kChildren; ++i) drawing.addArc(hub, node(i * 70.0, 100));
  for (std::uint32_t i = 0; i < kChildren; ++i) drawing.addArc(hub, hub + 1);
  EXPECT_NE(drawing.arcAt({30, 60}, 5), kNone);
  for (std::uint32_t i = 0; i < kChildren; ++i) {
    const ArcId arc = drawing.findArc(hub, hub + 1 + (i * 7919) % kChildren);
    ASSERT_NE(arc, kNone);
    drawing.removeArc(arc);
  }
  EXPECT_EQ(allArcs().size(), kChildren);
  for (ArcId arc; (arc = drawing.findArc(hub, hub + 1)) != kNone;) drawing.removeArc(arc);
  EXPECT_THAT(allArcs(), IsEmpty());
  for (NodeId n = 0; n <= kChildren; ++n) drawing.removeNode(n);
  EXPECT_EQ(drawing.extents(), SgRectangle{});
}

}  // namespace
