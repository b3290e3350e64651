/// @file
/// The displayed part of a graph in the terms of the layout.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layout.h"
#include "viewkit/sggraph/Graph.h"

class VkNode;

/// The displayed nodes and the arcs between them.
struct GraphPicture {
  static constexpr std::uint32_t kHidden = 0xffffffff;

  std::vector<VkNode*> nodes;
  std::vector<std::uint32_t> numberOf;  ///< by place in the graph: number in `nodes`, kHidden
  std::vector<graphlayout::Size> sizes;
  std::vector<graphlayout::Point> positions;
  std::vector<SgArc> arcIds;
  std::vector<graphlayout::Arc> arcs;
  std::vector<std::vector<SgPoint>> bends;  ///< of each arc
};

inline std::vector<SgPoint> pointsOf(std::span<const graphlayout::Point> bends) {
  std::vector<SgPoint> points;
  points.reserve(bends.size());
  for (const graphlayout::Point& bend : bends) points.push_back({bend.x, bend.y});
  return points;
}
