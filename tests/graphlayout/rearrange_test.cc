/// @file
/// Pictures that are edited: what stays, and where what is new comes to lie.
#include "graphlayout/rearrange.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

#include "tests/graphlayout/drawing.h"
#include "tests/support/scene_like_graph.h"

namespace {

using graphlayout::Arc;
using graphlayout::Bends;
using graphlayout::Changes;
using graphlayout::Point;

/// A graph with its picture, edited step by step.
struct Edited {
  Graph graph;
  std::vector<Point> nodes;
  std::vector<std::vector<Point>> bends;
  std::vector<bool> held;

  explicit Edited(Graph start) : graph(std::move(start)) {
    const graphlayout::Layout layout = layout_of(graph);
    nodes = layout.nodes;
    for (std::size_t i = 0; i < graph.arcs.size(); ++i) {
      const auto points = layout.bends.of(i);
      bends.emplace_back(points.begin(), points.end());
    }
  }

  Bends flat() const {
    Bends flat;
    flat.starts.push_back(0);
    for (const auto& points : bends) {
      flat.points.insert(flat.points.end(), points.begin(), points.end());
      flat.starts.push_back(flat.points.size());
    }
    return flat;
  }

  Changes rearrange(const std::vector<std::uint32_t>& new_nodes, const std::vector<std::uint32_t>& new_arcs) {
    const Bends before = flat();
    const Changes changes =
        graphlayout::rearrange(graph.sizes, graph.arcs, {nodes, before, new_nodes, new_arcs, held});
    for (std::size_t i = 0; i < changes.nodes.size(); ++i) nodes[changes.nodes[i]] = changes.positions[i];
    for (std::size_t i = 0; i < changes.arcs.size(); ++i) {
      const auto points = changes.bends.of(i);
      bends[changes.arcs[i]].assign(points.begin(), points.end());
    }
    return changes;
  }
  std::uint32_t add_node(Point wanted) {
    graph.sizes.push_back({80, 24});
    nodes.push_back(wanted);
    return static_cast<std::uint32_t>(nodes.size() - 1);
  }
  std::uint32_t add_arc(std::uint32_t from, std::uint32_t to) {
    graph.arcs.push_back({from, to});
    bends.emplace_back();
    return static_cast<std::uint32_t>(bends.size() - 1);
  }

  /// Whether a piece of the arc's line goes through the inside of a node at neither end.
  bool leads_through_a_node(std::uint32_t arc) const {
    const auto [from, to] = graph.arcs[arc];
    const bool down = nodes[from].y <= nodes[to].y;
    const auto end = [&](std::uint32_t v, bool bottom) {
      return Point{nodes[v].x + graph.sizes[v].width / 2, nodes[v].y + (bottom ? graph.sizes[v].height : 0)};
    };
    std::vector<Point> line{end(from, down)};
    line.insert(line.end(), bends[arc].begin(), bends[arc].end());
    line.push_back(end(to, !down));
    for (std::size_t k = 0; k + 1 < line.size(); ++k)
      for (int step = 0; step <= 100; ++step) {
        const double t = step / 100.0;
        const Point p{line[k].x + t * (line[k + 1].x - line[k].x),
                      line[k].y + t * (line[k + 1].y - line[k].y)};
        for (std::uint32_t v = 0; v < nodes.size(); ++v)
          if (v != from && v != to && p.x > nodes[v].x && p.x < nodes[v].x + graph.sizes[v].width &&
              p.y > nodes[v].y && p.y < nodes[v].y + graph.sizes[v].height)
            return true;
      }
    return false;
  }
};

constexpr Point kAnywhere{std::numeric_limits<double>::quiet_NaN(), 0};

TEST(Rearrange, WithNothingNewNothingMoves) {
  Edited edited(graph_of(4, {{0, 1}, {0, 2}, {1, 3}}));
  const Changes changes = edited.rearrange({}, {});
  EXPECT_TRUE(changes.nodes.empty());
  EXPECT_TRUE(changes.arcs.empty());
}

TEST(Rearrange, AnArcThatLeadsDownMovesNoNode) {
  Edited edited(graph_of(7, {{0, 1}, {0, 2}, {0, 3}, {1, 4}, {2, 5}, {3, 6}}));
  const Changes changes = edited.rearrange({}, {edited.add_arc(0, 5)});
  EXPECT_TRUE(changes.nodes.empty());
  EXPECT_EQ(changes.arcs, (std::vector<std::uint32_t>{6}));
  EXPECT_FALSE(edited.leads_through_a_node(6)) << "though node 2 stands between the two";
}

TEST(Rearrange, AnArcToTheSameRowPutsTheChildBelow) {
  Edited edited(graph_of(4, {{0, 1}, {0, 2}, {0, 3}}));
  const auto before = edited.nodes;
  const Changes changes = edited.rearrange({}, {edited.add_arc(1, 2)});
  EXPECT_EQ(changes.nodes, (std::vector<std::uint32_t>{2}));
  EXPECT_GT(edited.nodes[2].y, edited.nodes[1].y + 24);
  for (const std::uint32_t v : {0u, 1u, 3u}) EXPECT_EQ(edited.nodes[v], before[v]);
  for (const std::uint32_t arc : {0u, 1u, 2u, 3u}) EXPECT_FALSE(edited.leads_through_a_node(arc)) << arc;
}

TEST(Rearrange, WhatIsHeldStaysAndTheArcLeadsUphill) {
  Edited edited(graph_of(4, {{0, 1}, {0, 2}, {0, 3}}));
  edited.held.assign(4, true);
  EXPECT_TRUE(edited.rearrange({}, {edited.add_arc(1, 3)}).nodes.empty());
  EXPECT_FALSE(edited.leads_through_a_node(3));
}

TEST(Rearrange, AnArcThatClosesALoopMovesNothing) {
  Edited edited(graph_of(4, {{0, 1}, {1, 2}, {2, 3}}));
  EXPECT_TRUE(edited.rearrange({}, {edited.add_arc(3, 0)}).nodes.empty());
  EXPECT_FALSE(edited.leads_through_a_node(3));
}

TEST(Rearrange, ANewNodeComesWhereItIsWantedOrBeside) {
  Edited edited(graph_of(3, {{0, 1}, {0, 2}}));
  const std::uint32_t alone = edited.add_node({2000, 1000});
  edited.rearrange({alone}, {});
  EXPECT_EQ(edited.nodes[alone], (Point{2000, 1000}));
  const std::uint32_t beside = edited.add_node({2010, 1010});
  edited.rearrange({beside}, {});
  EXPECT_LT(std::hypot(edited.nodes[beside].x - 2010, edited.nodes[beside].y - 1010), 120);
  EXPECT_EQ(overlap(edited.graph.sizes, edited.nodes), "");
}

TEST(Rearrange, ANewChildComesIntoTheRowOfItsSiblings) {
  Edited edited(graph_of(3, {{0, 1}, {0, 2}}));
  const std::uint32_t child = edited.add_node(kAnywhere);
  edited.rearrange({child}, {edited.add_arc(0, child)});
  EXPECT_EQ(edited.nodes[child].y, edited.nodes[1].y);
  EXPECT_EQ(overlap(edited.graph.sizes, edited.nodes), "");
}

TEST(Rearrange, NumbersBeyondTheListsAreIgnored) {
  Edited edited(graph_of(2, {{0, 1}, {0, 9}}));
  const Changes changes = edited.rearrange({7}, {1, 8});
  EXPECT_TRUE(changes.nodes.empty());
  EXPECT_TRUE(changes.arcs.empty());
  const Bends none;
  const Changes all = graphlayout::rearrange(edited.graph.sizes, edited.graph.arcs, {{}, none, {}, {}, {}});
  EXPECT_EQ(all.nodes.size(), 2u) << "nodes without a place are new";
}

TEST(Rearrange, ThousandsOfNewNodesComeToAnEnd) {
  Edited edited(graph_of(20'000, {}));
  std::vector<std::uint32_t> added;
  for (int i = 0; i < 20'000; ++i) added.push_back(edited.add_node(kAnywhere));
  EXPECT_EQ(edited.rearrange(added, {}).nodes.size(), added.size());
  EXPECT_EQ(overlap(edited.graph.sizes, edited.nodes), "");
}

TEST(Rearrange, RandomEditsMoveLittleAndCoverNothing) {
  for (std::uint64_t seed = 0; seed < 20 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const SceneLikeGraph scene = scene_like_graph(20 + random.below(300), seed);
    Graph graph = graph_of(scene.names.size(), {});
    for (const auto& [from, to] : scene.arcs) graph.arcs.push_back({from, to});
    Edited edited(std::move(graph));
    for (int step = 0; step < 60; ++step) {
      const auto before = edited.nodes;
      const auto node = [&] { return random.below(static_cast<std::uint32_t>(edited.nodes.size())); };
      std::size_t most = 10;
      switch (random.below(4)) {
        case 0: {  // deleted
          const std::uint32_t arc = random.below(static_cast<std::uint32_t>(edited.graph.arcs.size()));
          edited.graph.arcs.erase(edited.graph.arcs.begin() + arc);
          edited.bends.erase(edited.bends.begin() + arc);
          edited.rearrange({}, {});
          most = 0;
          break;
        }
        case 1: {
          const std::uint32_t added = edited.add_node(random.chance(50) ? kAnywhere : before[node()]);
          edited.rearrange({added}, {edited.add_arc(node(), added)});
          break;
        }
        case 2:  // by hand, perhaps onto another
          edited.nodes[node()] = {static_cast<double>(random.below(3000)), 1e6 + 100.0 * step};
          continue;
        default:
          edited.rearrange({}, {edited.add_arc(node(), node())});
      }
      std::size_t moved = 0;
      for (std::size_t v = 0; v < before.size(); ++v) moved += edited.nodes[v] == before[v] ? 0 : 1;
      EXPECT_LE(moved, most);
      ASSERT_EQ(overlap(edited.graph.sizes, edited.nodes), "") << "step " << step;
    }
  }
}

}  // namespace
