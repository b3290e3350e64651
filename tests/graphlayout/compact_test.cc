/// @file
/// The compact picture: blocks in blocks.
#include "graphlayout/compact.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <vector>

#include "tests/graphlayout/drawing.h"

namespace {

using graphlayout::Arc;
using graphlayout::Compact;
using graphlayout::Point;

Compact compact_of(const Graph& graph) { return graphlayout::compact(graph.sizes, graph.arcs); }

/// No overlaps, every child in its parent's block, tree arcs in right angles and past all nodes.
void expect_sound(const Graph& graph, const Compact& picture) {
  expect_sound(graph, picture.layout);
  const std::vector<Point>& nodes = picture.layout.nodes;
  for (std::uint32_t v = 0; v < nodes.size(); ++v) {
    const std::uint32_t arc = picture.tree_arcs[v];
    if (arc == Compact::kNoArc) continue;
    ASSERT_EQ(graph.arcs[arc].to, v);
    const std::uint32_t parent = graph.arcs[arc].from;
    const auto line = picture.layout.bends.of(arc);
    ASSERT_FALSE(line.empty());
    EXPECT_GE(line.front().y, nodes[parent].y + graph.sizes[parent].height);
    const bool from_above = line.back().x == nodes[v].x + graph.sizes[v].width / 2;
    EXPECT_TRUE(from_above
                    ? line.back().y <= nodes[v].y
                    : line.back().x < nodes[v].x && line.back().y == nodes[v].y + graph.sizes[v].height / 2);
    EXPECT_TRUE(line.front().x >= nodes[parent].x &&
                line.front().x <= nodes[parent].x + graph.sizes[parent].width);
    for (std::size_t i = 0; i + 1 < line.size(); ++i)
      EXPECT_TRUE(line[i].x == line[i + 1].x || line[i].y == line[i + 1].y) << "arc " << arc;
  }
}

/// The lines of tree arcs that go through a node.
std::size_t lines_through_nodes(const Graph& graph, const Compact& picture) {
  std::size_t found = 0;
  const std::vector<Point>& nodes = picture.layout.nodes;
  for (std::size_t arc = 0; arc < graph.arcs.size(); ++arc) {
    const auto given = picture.layout.bends.of(arc);
    std::vector<Point> bends(given.begin(), given.end());
    if (!bends.empty()) {  // the pieces from node to bend and from bend to node, too
      const auto& [from, to] = graph.arcs[arc];
      bends.insert(bends.begin(), {bends.front().x, nodes[from].y + graph.sizes[from].height});
      const bool level = bends.back().x < nodes[to].x;
      bends.push_back(level ? Point{nodes[to].x, bends.back().y} : Point{bends.back().x, nodes[to].y});
    }
    for (std::size_t i = 0; i + 1 < bends.size(); ++i)
      for (std::size_t v = 0; v < nodes.size(); ++v) {
        const auto [left, right] = std::minmax(bends[i].x, bends[i + 1].x);
        const auto [top, bottom] = std::minmax(bends[i].y, bends[i + 1].y);
        found += left < nodes[v].x + graph.sizes[v].width && right > nodes[v].x &&
                         top < nodes[v].y + graph.sizes[v].height && bottom > nodes[v].y
                     ? 1
                     : 0;
      }
  }
  return found;
}

Graph chain(std::uint32_t nodes) {
  Graph graph = graph_of(nodes, {});
  for (std::uint32_t i = 0; i + 1 < nodes; ++i) graph.arcs.push_back({i, i + 1});
  return graph;
}

TEST(Compact, ChildrenStandBelowTheirParentInTheOrderOfTheirArcs) {
  const Graph graph = graph_of(4, {{0, 2}, {0, 1}, {0, 3}});
  const Compact picture = compact_of(graph);
  expect_sound(graph, picture);
  const auto& nodes = picture.layout.nodes;
  for (const std::uint32_t v : {1u, 2u, 3u}) EXPECT_GT(nodes[v].y, nodes[0].y + 24);
  EXPECT_TRUE(nodes[2].y < nodes[1].y || nodes[2].x < nodes[1].x);
}

TEST(Compact, LeavesStandInColumnsThatShareALine) {
  Graph graph = graph_of(13, {});
  for (std::uint32_t i = 1; i < 13; ++i) graph.arcs.push_back({0, i});
  const Compact picture = compact_of(graph);
  expect_sound(graph, picture);
  std::map<double, std::vector<double>> columns;  // y of the leaves by x of the line that leads to them
  for (std::uint32_t v = 1; v < 13; ++v) {
    const Point& end = picture.layout.bends.of(v - 1).back();
    EXPECT_LT(end.x, picture.layout.nodes[v].x);
    columns[end.x].push_back(picture.layout.nodes[v].y);
  }
  EXPECT_EQ(columns.size(), 4u);
  for (const auto& [x, tops] : columns) {
    EXPECT_EQ(tops.size(), 3u);
    EXPECT_TRUE(std::ranges::is_sorted(tops)) << "in the order of their arcs";
  }
}

TEST(Compact, AnArcThatIsNoTreeArcHasNoBends) {
  const Graph graph = graph_of(4, {{0, 1}, {0, 2}, {1, 3}, {2, 3}, {3, 0}, {3, 3}, {0, 9}});
  const Compact picture = compact_of(graph);
  expect_sound(graph, picture);
  EXPECT_EQ(picture.tree_arcs, (std::vector<std::uint32_t>{Compact::kNoArc, 0, 1, 2}))
      << "the only node that nothing leads to but a loop is the root";
  for (const std::size_t arc : {3u, 4u, 5u, 6u}) EXPECT_TRUE(picture.layout.bends.of(arc).empty());
}

TEST(Compact, BlocksHoldWhatIsBelow) {
  const Graph graph = graph_like_a_scene(300, 7);
  const Compact picture = compact_of(graph);
  const auto& nodes = picture.layout.nodes;
  for (std::uint32_t v = 0; v < nodes.size(); ++v) {
    if (picture.tree_arcs[v] == Compact::kNoArc) continue;
    const std::uint32_t parent = graph.arcs[picture.tree_arcs[v]].from;
    EXPECT_GE(nodes[v].x, nodes[parent].x);
    EXPECT_LE(nodes[v].x + picture.blocks[v].width, nodes[parent].x + picture.blocks[parent].width + 0.01);
    EXPECT_LE(nodes[v].y + picture.blocks[v].height, nodes[parent].y + picture.blocks[parent].height + 0.01);
  }
}

TEST(Compact, ScenesAreNeitherRibbonsNorTowersAndNoLineGoesThroughANode) {
  for (const std::uint32_t nodes : {30u, 300u, 1'000u, 10'000u}) {
    SCOPED_TRACE(nodes);
    const Graph graph = graph_like_a_scene(nodes, nodes);
    const Compact picture = compact_of(graph);
    expect_sound(graph, picture);
    EXPECT_LT(picture.layout.width, 3 * picture.layout.height);
    EXPECT_LT(picture.layout.height, 2 * picture.layout.width);
    if (nodes <= 1'000) {
      EXPECT_EQ(lines_through_nodes(graph, picture), 0u);
    }
  }
}

TEST(Compact, AChainIsFolded) {
  const Graph graph = chain(3'000);
  const Compact picture = compact_of(graph);
  expect_sound(graph, picture);
  EXPECT_LT(picture.layout.width, 3 * picture.layout.height);
  EXPECT_LT(picture.layout.height, 2 * picture.layout.width);
  EXPECT_EQ(lines_through_nodes(graph, picture), 0u);
}

TEST(Compact, AnyGraphIsSound) {
  for (std::uint64_t seed = 0; seed < 200 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const std::uint32_t nodes = random.below(80);
    Graph graph;
    for (std::uint32_t i = 0; i < nodes; ++i)
      graph.sizes.push_back({20.0 + random.below(100), random.chance(10) ? 100.0 : 24});
    for (std::uint32_t i = 0; i < nodes; ++i)
      graph.arcs.push_back({random.below(nodes), random.below(nodes)});
    const Compact picture = compact_of(graph);
    expect_sound(graph, picture);
    EXPECT_EQ(lines_through_nodes(graph, picture), 0u);
    EXPECT_EQ(compact_of(graph).layout.nodes, picture.layout.nodes);
  }
}

TEST(Compact, LongChainsAndWideFamiliesTakeLinearTime) {
  expect_sound(chain(100'000), compact_of(chain(100'000)));
  Graph wide = graph_of(100'001, {});
  for (std::uint32_t i = 1; i <= 100'000; ++i) wide.arcs.push_back({0, i});
  expect_sound(wide, compact_of(wide));
  Graph comb = graph_of(40'000, {});  // each with a leaf and another such
  for (std::uint32_t i = 0; i + 2 < 40'000; i += 2)
    comb.arcs.insert(comb.arcs.end(), {{i, i + 1}, {i, i + 2}});
  expect_sound(comb, compact_of(comb));
}

TEST(Compact, SizesThatAreNoneAreNone) {
  Graph graph = graph_of(3, {{0, 1}, {0, 2}});
  graph.sizes[1] = {std::numeric_limits<double>::quiet_NaN(), -5};
  const Compact picture = compact_of(graph);
  for (const Point& p : picture.layout.nodes) EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
  EXPECT_TRUE(compact_of({}).layout.nodes.empty());
}

}  // namespace
