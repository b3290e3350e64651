/// @file
/// The layout of a subtree amid nodes that stay.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/graphlayout/drawing.h"

namespace {

using graphlayout::Arc;
using graphlayout::Layout;
using graphlayout::Options;
using graphlayout::Point;
using graphlayout::Subtree;

Subtree subtree_of(const Graph& graph, const std::vector<Point>& positions, std::uint32_t root) {
  return graphlayout::layout_subtree(graph.sizes, graph.arcs, positions, root);
}

/// The positions after the subtree has moved.
std::vector<Point> moved(std::vector<Point> positions, const Subtree& subtree) {
  for (std::size_t i = 0; i < subtree.nodes.size(); ++i) positions[subtree.nodes[i]] = subtree.positions[i];
  return positions;
}

TEST(Subtree, HoldsTheRootFirstAndAllBelowIt) {
  const Graph graph = graph_of(6, {{0, 1}, {1, 2}, {1, 3}, {3, 4}, {0, 5}, {5, 4}});
  const Subtree subtree = subtree_of(graph, layout_of(graph).nodes, 1);
  EXPECT_EQ(subtree.nodes.front(), 1u);
  std::vector<std::uint32_t> nodes = subtree.nodes;
  std::ranges::sort(nodes);
  EXPECT_EQ(nodes, (std::vector<std::uint32_t>{1, 2, 3, 4}));
  EXPECT_EQ(subtree.arcs, (std::vector<std::uint32_t>{1, 2, 3}));
}

TEST(Subtree, RootStaysAndItsChildrenHangBelowIt) {
  const Graph graph = graph_of(4, {{0, 1}, {1, 2}, {1, 3}});
  const std::vector<Point> scattered{{0, 0}, {500, 300}, {-900, 0}, {40, -700}};
  const std::vector<Point> now = moved(scattered, subtree_of(graph, scattered, 1));
  EXPECT_EQ(now[0], scattered[0]);
  EXPECT_EQ(now[1], scattered[1]);
  EXPECT_EQ(now[2].y, 300 + 24 + Options{}.rank_gap);
  EXPECT_EQ(now[3].y, now[2].y);
  EXPECT_NEAR((now[2].x + now[3].x) / 2, 500, 0.01);
}

TEST(Subtree, OfTheTopIsTheWholeLayout) {
  const Graph graph = graph_of(5, {{0, 1}, {0, 2}, {1, 3}, {2, 3}, {2, 4}});
  const Layout layout = layout_of(graph);
  const std::vector<Point> now = moved(layout.nodes, subtree_of(graph, layout.nodes, 0));
  for (std::size_t i = 0; i < 5; ++i) {
    EXPECT_NEAR(now[i].x, layout.nodes[i].x, 0.01);
    EXPECT_NEAR(now[i].y, layout.nodes[i].y, 0.01);
  }
}

TEST(Subtree, WithoutChildrenMovesNothing) {
  const Graph graph = graph_of(2, {{0, 1}});
  const std::vector<Point> positions{{7, 8}, {9, 10}};
  const Subtree subtree = subtree_of(graph, positions, 1);
  EXPECT_EQ(subtree.nodes, (std::vector<std::uint32_t>{1}));
  EXPECT_EQ(subtree.positions, (std::vector<Point>{{9, 10}}));
}

TEST(Subtree, EvadesNodesThatStay) {
  const Graph graph = graph_of(8, {{0, 1}, {0, 2}, {0, 3}});
  const double y = 24 + Options{}.rank_gap;
  struct Case {
    const char* name;
    std::vector<Point> staying;
  };
  const Case cases[] = {
      {"one below", {{0, y}}},
      {"a row below", {{-200, y}, {-100, y}, {0, y}, {100, y}}},
      {"a column below", {{0, y}, {0, y + 30}, {0, y + 60}, {0, y + 90}}},
      {"a cage", {{0, y}, {300, y}, {-300, y}, {0, y + 60}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<Point> positions(8, {5000, 5000});
    positions[0] = {0, 0};
    for (std::size_t i = 0; i < 4; ++i) {
      positions[4 + i] =
          i < c.staying.size() ? c.staying[i] : Point{5000.0 + 100 * static_cast<double>(i), 0};
    }
    const std::vector<Point> now = moved(positions, subtree_of(graph, positions, 0));
    EXPECT_EQ(overlap(graph.sizes, now), "");
    EXPECT_EQ(now[0], positions[0]);
    for (std::size_t i = 4; i < 8; ++i) EXPECT_EQ(now[i], positions[i]);
  }
}

TEST(Subtree, LoopsEnd) {
  const Graph graph = graph_of(4, {{0, 1}, {1, 2}, {2, 0}, {2, 1}, {1, 1}, {2, 3}});
  const Layout layout = layout_of(graph);
  const Subtree subtree = subtree_of(graph, layout.nodes, 1);
  EXPECT_EQ(subtree.nodes.size(), 4u);
  const std::vector<Point> now = moved(layout.nodes, subtree);
  EXPECT_EQ(now[1], layout.nodes[1]);
  for (const std::uint32_t v : {0u, 2u, 3u}) EXPECT_GT(now[v].y, now[1].y);
  EXPECT_EQ(overlap(graph.sizes, now), "");
}

TEST(Subtree, DeepChainAmidManyNodes) {
  Graph graph = graph_of(20'000, {});
  for (std::uint32_t i = 0; i < 10'000; ++i) graph.arcs.push_back({i, i + 1});
  const Layout layout = layout_of(graph);
  const Subtree subtree = subtree_of(graph, layout.nodes, 4'000);
  EXPECT_EQ(subtree.nodes.size(), 6'001u);
  EXPECT_EQ(overlap(graph.sizes, moved(layout.nodes, subtree)), "");
}

TEST(Subtree, RootThatIsNoNodeMovesNothing) {
  const Graph graph = graph_of(2, {{0, 1}});
  const Subtree subtree = subtree_of(graph, {{0, 0}, {0, 90}}, 2);
  EXPECT_TRUE(subtree.nodes.empty());
  EXPECT_TRUE(subtree.positions.empty());
  EXPECT_TRUE(graphlayout::layout_subtree({}, {}, {}, 0).nodes.empty());
}

TEST(Subtree, PositionsMissingOrNoNumbersCountAsTheOrigin) {
  const Graph graph = graph_of(4, {{0, 1}, {0, 9}, {9, 0}});
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const Subtree subtree = subtree_of(graph, {{kNan, 5}}, 0);
  ASSERT_EQ(subtree.positions.size(), 2u);
  EXPECT_EQ(subtree.positions[0], (Point{0, 0}));
  EXPECT_EQ(subtree.arcs, (std::vector<std::uint32_t>{0}));
  EXPECT_TRUE(std::isfinite(subtree.positions[1].x) && std::isfinite(subtree.positions[1].y));
}

}  // namespace
