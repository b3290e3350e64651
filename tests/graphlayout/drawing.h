/// @file
/// What the layout tests share: small graphs in short notation and what must hold for every layout.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "graphlayout/layout.h"

struct Graph {
  std::vector<graphlayout::Size> sizes;
  std::vector<graphlayout::Arc> arcs;
};

inline Graph graph_of(std::size_t nodes, std::vector<graphlayout::Arc> arcs) {
  return {std::vector<graphlayout::Size>(nodes, {80, 24}), std::move(arcs)};
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
  std::vector<std::uint32_t> open;  // those that reach to the right of the present place
  for (const std::uint32_t i : order) {
    std::erase_if(open, [&](std::uint32_t k) { return nodes[k].x + sizes[k].width <= nodes[i].x; });
    for (const std::uint32_t k : open) {
      if (nodes[k].y < nodes[i].y + sizes[i].height && nodes[i].y < nodes[k].y + sizes[k].height) {
        return std::to_string(k) + " and " + std::to_string(i);
      }
    }
    open.push_back(i);
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
