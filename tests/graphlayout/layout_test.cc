/// @file
/// The layout of whole graphs: each shape of graph that a scene can have, and input that no scene should
/// have.
#include "graphlayout/layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/graphlayout/drawing.h"

namespace {

using graphlayout::Arc;
using graphlayout::Layout;
using graphlayout::Options;
using graphlayout::Point;
using graphlayout::Size;

TEST(Overlap, IsFoundWhereverAnyTwoNodesShareMoreThanAnEdge) {
  // Few places and sizes, so that nodes often touch; some have no height.
  std::mt19937 random(1);
  const auto below = [&](unsigned end) { return static_cast<double>(random() % end); };
  int found = 0;
  for (int round = 0; round < 2000; ++round) {
    std::vector<Size> sizes;
    std::vector<Point> corners;
    for (int i = 0; i < 6; ++i) {
      sizes.push_back({1 + below(3), below(4)});
      corners.push_back({below(12), below(12)});
    }
    const auto overlap_of = [&](std::size_t a, std::size_t b) {
      return corners[a].x < corners[b].x + sizes[b].width && corners[b].x < corners[a].x + sizes[a].width &&
             corners[a].y < corners[b].y + sizes[b].height && corners[b].y < corners[a].y + sizes[a].height;
    };
    bool expected = false;
    for (std::size_t a = 0; a < sizes.size(); ++a)
      for (std::size_t b = 0; b < a; ++b) expected = expected || overlap_of(a, b);
    ASSERT_EQ(!overlap(sizes, corners).empty(), expected) << "round " << round;
    found += expected;
  }
  EXPECT_GT(found, 500);
  EXPECT_LT(found, 1500);
}

TEST(Layout, EmptyGraphTakesNoRoom) {
  const Layout layout = graphlayout::layout({}, {});
  EXPECT_TRUE(layout.nodes.empty());
  EXPECT_EQ(layout.width, 0);
  EXPECT_EQ(layout.height, 0);
  EXPECT_TRUE(layout.bends.of(0).empty());
}

TEST(Layout, SingleNodeStandsAtTheOrigin) {
  const Layout layout = layout_of(graph_of(1, {}));
  EXPECT_EQ(layout.nodes[0], (Point{0, 0}));
  EXPECT_EQ(layout.width, 80);
  EXPECT_EQ(layout.height, 24);
}

TEST(Layout, ChildStandsStraightBelowItsParent) {
  const Graph graph = graph_of(2, {{1, 0}});
  const Layout layout = layout_of(graph);
  EXPECT_EQ(layout.nodes[1], (Point{0, 0}));
  EXPECT_EQ(layout.nodes[0], (Point{0, 24 + Options{}.rank_gap}));
  EXPECT_TRUE(layout.bends.of(0).empty());
}

TEST(Layout, ParentStandsInTheMiddleOfItsChildrenInTheOrderOfTheArcs) {
  const Graph graph = graph_of(4, {{0, 3}, {0, 1}, {0, 2}});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_LT(layout.nodes[3].x, layout.nodes[1].x);
  EXPECT_LT(layout.nodes[1].x, layout.nodes[2].x);
  EXPECT_NEAR(layout.nodes[0].x, layout.nodes[1].x, 0.01);
  EXPECT_NEAR(layout.nodes[1].x - layout.nodes[3].x, 80 + Options{}.node_gap, 0.01);
}

TEST(Layout, SharedChildStandsBelowAllItsParents) {
  const Graph graph = graph_of(4, {{0, 1}, {1, 2}, {0, 3}, {2, 3}});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(arcs_not_down(graph, layout), 0u);
  EXPECT_GT(layout.nodes[3].y, layout.nodes[2].y);
  EXPECT_FALSE(layout.bends.of(2).empty()) << "the arc from 0 to 3 has to go round 1 and 2";
}

TEST(Layout, LongArcsPassNoNode) {
  Graph graph = graph_of(12, {});
  for (std::uint32_t i = 0; i < 11; ++i) graph.arcs.push_back({i, i + 1});
  graph.arcs.push_back({0, 11});
  graph.arcs.push_back({2, 9});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  for (std::size_t i = 11; i < graph.arcs.size(); ++i) {
    std::vector<Point> line(layout.bends.of(i).begin(), layout.bends.of(i).end());
    ASSERT_GE(line.size(), 2u);
    for (std::size_t k = 0; k + 1 < line.size(); ++k) {
      for (std::uint32_t v = 0; v < 12; ++v) {
        const Point& n = layout.nodes[v];
        const bool beside =
            std::max(line[k].x, line[k + 1].x) < n.x || std::min(line[k].x, line[k + 1].x) > n.x + 80;
        const bool apart = line[k + 1].y <= n.y || line[k].y >= n.y + 24;
        EXPECT_TRUE(beside || apart) << "arc " << i << " node " << v;
      }
    }
  }
}

TEST(Layout, MeshIsUntangled) {
  // Row r holds r + 1 nodes; each leads to the two below it. Depth-first order leaves crossings here.
  constexpr std::uint32_t kRows = 8;
  Graph graph = graph_of(kRows * (kRows + 1) / 2, {});
  for (std::uint32_t r = 0, node = 0; r + 1 < kRows; ++r) {
    for (std::uint32_t i = 0; i <= r; ++i, ++node) {
      graph.arcs.push_back({node, node + r + 2});
      graph.arcs.insert(graph.arcs.begin(), {node, node + r + 1});
    }
  }
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(crossings_of(graph, layout), 0u);
}

TEST(Layout, CycleHasOneArcUpAndKeepsItsFirstNodeOnTop) {
  const Graph graph = graph_of(3, {{0, 1}, {1, 2}, {2, 0}});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(arcs_not_down(graph, layout), 1u);
  EXPECT_LT(layout.nodes[0].y, layout.nodes[1].y);
  EXPECT_LT(layout.nodes[1].y, layout.nodes[2].y);
  const auto bends = layout.bends.of(2);
  ASSERT_FALSE(bends.empty());
  EXPECT_GT(bends.front().y, bends.back().y) << "bends run in the direction of the arc";
}

TEST(Layout, ArcsBothWaysBetweenTwoNodes) {
  const Graph graph = graph_of(2, {{0, 1}, {1, 0}});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_LT(layout.nodes[0].y, layout.nodes[1].y);
}

TEST(Layout, SelfLinkMovesNothingAndHasNoBends) {
  const Graph with = graph_of(3, {{0, 1}, {1, 1}, {1, 2}, {0, 0}}), without = graph_of(3, {{0, 1}, {1, 2}});
  const Layout layout = layout_of(with);
  EXPECT_EQ(layout.nodes, layout_of(without).nodes);
  EXPECT_TRUE(layout.bends.of(1).empty());
}

TEST(Layout, DuplicateArcsShareTheirBends) {
  const Graph once = graph_of(3, {{0, 1}, {1, 2}, {0, 2}}),
              twice = graph_of(3, {{0, 2}, {0, 1}, {1, 2}, {0, 2}});
  const Layout layout = layout_of(twice);
  expect_sound(twice, layout);
  const auto first = layout.bends.of(0), second = layout.bends.of(3);
  ASSERT_FALSE(first.empty());
  EXPECT_TRUE(std::ranges::equal(first, second));
  EXPECT_EQ(layout.height, layout_of(once).height);
}

TEST(Layout, UnconnectedNodesMakeABlock) {
  const Graph graph = graph_of(400, {});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(layout.nodes[0], (Point{0, 0}));
  EXPECT_LT(layout.width, 3 * layout.height);
  EXPECT_LT(layout.height, 3 * layout.width);
}

TEST(Layout, UnconnectedPartsArePackedWithTheFirstNodesPartOnTop) {
  Graph graph = graph_of(300, {{0, 1}});
  for (std::uint32_t i = 2; i + 2 < 200; i += 3)
    graph.arcs.insert(graph.arcs.end(), {{i, i + 1}, {i + 1, i + 2}});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(arcs_not_down(graph, layout), 0u);
  EXPECT_EQ(layout.nodes[0], (Point{0, 0}));
  EXPECT_LT(layout.width, 3 * layout.height);
  EXPECT_LT(layout.height, 3 * layout.width);
}

TEST(Layout, ManyLeavesOfOneNodeMakeABlockBelowIt) {
  Graph graph = graph_of(5001, {});
  for (std::uint32_t i = 1; i <= 5000; ++i) graph.arcs.push_back({0, i});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(arcs_not_down(graph, layout), 0u);
  EXPECT_LT(layout.width, 5 * layout.height);
  EXPECT_EQ(crossings_of(graph, layout), 0u);
  EXPECT_EQ(layout.nodes[1].y, layout.nodes[2].y);
  EXPECT_LT(layout.nodes[1].x, layout.nodes[2].x);
}

TEST(Layout, FewLeavesStandInARow) {
  Graph graph = graph_of(Options{}.wrap_leaves, {});
  for (std::uint32_t i = 1; i < graph.sizes.size(); ++i) graph.arcs.push_back({0, i});
  const Layout layout = layout_of(graph);
  EXPECT_EQ(layout.nodes[1].y, layout.nodes.back().y);
}

TEST(Layout, WrappingCanBeSwitchedOff) {
  Graph graph = graph_of(1001, {});
  for (std::uint32_t i = 1; i <= 1000; ++i) graph.arcs.push_back({0, i});
  const Layout layout = layout_of(graph, {.wrap_leaves = 0});
  expect_sound(graph, layout);
  EXPECT_EQ(layout.nodes[1].y, layout.nodes[1000].y);
}

TEST(Layout, WideRankOfSharedLeaves) {
  Graph graph = graph_of(50'002, {});
  for (std::uint32_t i = 2; i < graph.sizes.size(); ++i)
    graph.arcs.insert(graph.arcs.end(), {{0, i}, {1, i}});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(arcs_not_down(graph, layout), 0u);
}

TEST(Layout, DeepChainIsOneColumn) {
  Graph graph = graph_of(100'000, {});
  for (std::uint32_t i = 0; i + 1 < graph.sizes.size(); ++i) graph.arcs.push_back({i, i + 1});
  const Layout layout = layout_of(graph);
  ASSERT_EQ(layout.nodes.size(), graph.sizes.size());
  EXPECT_EQ(layout.width, 80);
  EXPECT_EQ(arcs_not_down(graph, layout), 0u);
  EXPECT_TRUE(layout.bends.points.empty());
}

TEST(Layout, DeepChainWithAnArcFromTheTopToEachNodeStaysSmall) {
  Graph graph = graph_of(20'000, {});
  for (std::uint32_t i = 0; i + 1 < graph.sizes.size(); ++i) graph.arcs.push_back({i, i + 1});
  for (std::uint32_t i = 2; i < graph.sizes.size(); ++i) graph.arcs.push_back({0, i});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(arcs_not_down(graph, layout), 0u);
  EXPECT_LT(layout.bends.points.size(), 8'000'000u);
}

TEST(Layout, ManyDuplicatesOfAnArcWithManyBendsStaySmall) {
  // The long arcs that begin and end at other places push those of interest aside again and again.
  Graph graph = graph_of(2'000, {});
  for (std::uint32_t i = 0; i + 1 < graph.sizes.size(); ++i) graph.arcs.push_back({i, i + 1});
  for (std::uint32_t i = 0; i < 40; ++i) graph.arcs.push_back({i * 20, 1'999 - i * 20});
  for (std::uint32_t i = 0; i < 100'000; ++i) graph.arcs.push_back({0, 1'999});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_LT(layout.bends.points.size(), 8'000'000u);
}

TEST(Layout, SizesDifferByNode) {
  Graph graph = graph_of(7, {{0, 1}, {0, 2}, {0, 3}, {1, 4}, {2, 5}, {3, 6}, {0, 6}});
  graph.sizes = {{10, 10}, {300, 200}, {1, 1}, {40, 400}, {0, 0}, {500, 3}, {64, 64}};
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(arcs_not_down(graph, layout), 0u);
  EXPECT_GE(layout.nodes[5].y, layout.nodes[3].y + 400) << "the next rank begins below the highest node";
}

TEST(Layout, ArcOfAShortNodeLeavesTheRankStraightDown) {
  Graph graph = graph_of(5, {{0, 1}, {0, 2}, {1, 3}, {1, 4}});
  graph.sizes[2].height = 200;
  const Layout layout = layout_of(graph);
  const auto bends = layout.bends.of(2);
  ASSERT_EQ(bends.size(), 1u);
  EXPECT_EQ(bends[0].y, layout.nodes[2].y + 200);
  EXPECT_NEAR(bends[0].x, layout.nodes[1].x + 40, 0.01);
}

TEST(Layout, SizesThatAreNoNumbersCountAsNothing) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN(),
                   kInf = std::numeric_limits<double>::infinity();
  Graph graph = graph_of(6, {{0, 1}, {0, 2}, {1, 3}, {2, 3}, {3, 4}});
  graph.sizes = {{kNan, 24}, {80, kNan}, {-5, -kInf}, {kInf, 20}, {1e300, 1e300}, {-0.0, kNan}};
  const Layout layout = layout_of(graph);
  Graph counted = graph;
  counted.sizes = {{0, 24}, {80, 0}, {0, 0}, {1e6, 20}, {1e6, 1e6}, {0, 0}};
  expect_sound(counted, layout);
  EXPECT_TRUE(std::isfinite(layout.width) && std::isfinite(layout.height));
}

TEST(Layout, OptionsThatAreNoNumbersCountAsDefaults) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const Graph graph = graph_of(4, {{0, 1}, {0, 2}});
  const Options bad{kNan, kNan, kNan, kNan, kNan, kNan, 24};
  EXPECT_EQ(layout_of(graph, bad).nodes, layout_of(graph).nodes);
  const Options negative{-1, -1, -1, -1, -1, -1, 1};
  const Layout layout = layout_of(graph, negative);
  expect_sound(graph, layout);
}

TEST(Layout, ArcsOfNodesThatDoNotExistAreIgnored) {
  const Graph graph = graph_of(3, {{0, 1}, {3, 0}, {0, 3}, {0xFFFFFFFF, 0xFFFFFFFF}, {1, 2}});
  const Layout layout = layout_of(graph);
  expect_sound(graph, layout);
  EXPECT_EQ(layout.nodes, layout_of(graph_of(3, {{0, 1}, {1, 2}})).nodes);
  EXPECT_TRUE(layout.bends.of(1).empty());
  EXPECT_TRUE(layout.bends.of(99).empty());
}

TEST(Layout, ArcsWithoutNodesAreIgnored) {
  const std::vector<Arc> arcs{{0, 1}, {0, 0}};
  const Layout layout = graphlayout::layout({}, arcs);
  EXPECT_TRUE(layout.nodes.empty());
  EXPECT_TRUE(layout.bends.of(0).empty());
}

}  // namespace
