/// @file
/// The arcs of a graph grouped by the node they start (or end) at.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layout.h"

namespace graphlayout {

/// Per node the numbers of its arcs, in the order of the arc list. All arcs' ends must be below `node_count`.
class Incidence {
 public:
  enum Side { kOut, kIn };
  Incidence(std::size_t node_count, std::span<const Arc> arcs, Side side);

  std::span<const std::uint32_t> of(std::uint32_t node) const {
    return std::span(arcs_).subspan(starts_[node], starts_[node + 1] - starts_[node]);
  }

 private:
  std::vector<std::size_t> starts_;
  std::vector<std::uint32_t> arcs_;
};

/// Per node its neighbours at the other end of the arcs, in the order of the arc list.
class Neighbours {
 public:
  Neighbours() = default;
  Neighbours(std::size_t node_count, std::span<const Arc> arcs, Incidence::Side side);

  std::span<const std::uint32_t> of(std::uint32_t node) const {
    return std::span(nodes_).subspan(starts_[node], starts_[node + 1] - starts_[node]);
  }
  /// Where of(node) begins in an array that holds all lists one after the other.
  std::size_t start(std::uint32_t node) const { return starts_[node]; }
  std::size_t total() const { return nodes_.size(); }

 private:
  std::vector<std::size_t> starts_;
  std::vector<std::uint32_t> nodes_;
};

}  // namespace graphlayout
