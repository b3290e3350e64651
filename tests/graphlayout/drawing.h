/// @file
/// What the layout tests share: small graphs in short notation and what must hold for every layout.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "graphlayout/layout.h"
#include "tests/support/scene_like_graph.h"

struct Graph {
  std::vector<graphlayout::Size> sizes;
  std::vector<graphlayout::Arc> arcs;
};

inline Graph graph_of(std::size_t nodes, std::vector<graphlayout::Arc> arcs) {
  return {std::vector<graphlayout::Size>(nodes, {80, 24}), std::move(arcs)};
}

/// A random graph of about so many nodes, of the shape that scenes have.
inline Graph graph_like_a_scene(std::uint32_t nodes, std::uint64_t seed) {
  const SceneLikeGraph made = scene_like_graph(nodes, seed);
  Graph graph = graph_of(made.names.size(), {});
  for (const auto& [from, to] : made.arcs) graph.arcs.push_back({from, to});
  return graph;
}

inline graphlayout::Layout layout_of(const Graph& graph, const graphlayout::Options& options = {}) {
  return graphlayout::layout(graph.sizes, graph.arcs, options);
}

inline std::uint64_t crossings_of(const Graph& graph, const graphlayout::Layout& layout) {
  return graphlayout::crossings(graph.sizes, graph.arcs, layout.nodes, layout.bends);
}

/// The first pair of nodes that share more than an edge, or "".
inline std::string overlap(std::span<const graphlayout::Size> sizes,
                           std::span<const graphlayout::Point> nodes) {
  std::vector<std::uint32_t> order(nodes.size());
  for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
  std::ranges::sort(order, {}, [&](std::uint32_t i) { return nodes[i].x; });
  // Those that reach to the right of the present place. They share no height, or two would have been found
  // already: so only the next ones above and below can overlap a further node.
  using Edge = std::pair<double, std::uint32_t>;
  std::set<Edge> by_top, by_right;
  for (const std::uint32_t i : order) {
    for (; !by_right.empty() && by_right.begin()->first <= nodes[i].x; by_right.erase(by_right.begin())) {
      const std::uint32_t gone = by_right.begin()->second;
      by_top.erase({nodes[gone].y, gone});
    }
    const double bottom = nodes[i].y + sizes[i].height;
    const auto overlaps = [&](std::uint32_t k) {
      return nodes[k].y < bottom && nodes[i].y < nodes[k].y + sizes[k].height;
    };
    const auto pair_with = [&](std::uint32_t k) { return std::to_string(k) + " and " + std::to_string(i); };
    const auto below = by_top.lower_bound({nodes[i].y, 0});
    for (auto next = below; next != by_top.end() && next->first < bottom; ++next)
      if (overlaps(next->second)) return pair_with(next->second);
    for (auto next = below; next != by_top.begin();) {
      const std::uint32_t above = (--next)->second;
      if (overlaps(above)) return pair_with(above);
      if (sizes[above].height > 0) break;
    }
    by_top.insert({nodes[i].y, i});
    by_right.insert({nodes[i].x + sizes[i].width, i});
  }
  return "";
}

/// What holds for the layout of any graph.
inline void expect_sound(const Graph& graph, const graphlayout::Layout& layout) {
  ASSERT_EQ(layout.nodes.size(), graph.sizes.size());
  ASSERT_EQ(layout.bends.starts.size(), graph.arcs.size() + 1);
  EXPECT_EQ(overlap(graph.sizes, layout.nodes), "");
  std::size_t outside = 0;
  const auto check = [&](double x, double y, double width, double height) {
    const bool inside =
        x >= 0 && y >= 0 && x + width <= layout.width + 0.01 && y + height <= layout.height + 0.01;
    outside += inside ? 0 : 1;  // NaN counts as outside
  };
  for (std::size_t i = 0; i < graph.sizes.size(); ++i) {
    check(layout.nodes[i].x, layout.nodes[i].y, graph.sizes[i].width, graph.sizes[i].height);
  }
  for (const graphlayout::Point& p : layout.bends.points) check(p.x, p.y, 0, 0);
  EXPECT_EQ(outside, 0u);
}

/// How many arcs don't lead down from bend to bend, self-links left out.
inline std::size_t arcs_not_down(const Graph& graph, const graphlayout::Layout& layout) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < graph.arcs.size(); ++i) {
    const auto [from, to] = graph.arcs[i];
    if (from == to) continue;
    double y = layout.nodes[from].y + graph.sizes[from].height;
    bool down = y < layout.nodes[to].y;
    for (const graphlayout::Point& bend : layout.bends.of(i)) down = down && y <= bend.y, y = bend.y;
    count += down && y <= layout.nodes[to].y ? 0 : 1;
  }
  return count;
}
