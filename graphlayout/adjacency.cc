/// @file
/// Grouping arcs by node: a counting sort.
#include "graphlayout/adjacency.h"

namespace graphlayout {
namespace {

std::uint32_t near_end(const Arc& arc, Incidence::Side side) {
  return side == Incidence::kOut ? arc.from : arc.to;
}

std::uint32_t far_end(const Arc& arc, Incidence::Side side) {
  return side == Incidence::kOut ? arc.to : arc.from;
}

std::vector<std::size_t> group_starts(std::size_t node_count, std::span<const Arc> arcs,
                                      Incidence::Side side) {
  std::vector<std::size_t> starts(node_count + 1, 0);
  for (const Arc& arc : arcs) ++starts[near_end(arc, side) + 1];
  for (std::size_t i = 0; i < node_count; ++i) starts[i + 1] += starts[i];
  return starts;
}

}  // namespace

Incidence::Incidence(std::size_t node_count, std::span<const Arc> arcs, Side side)
    : starts_(group_starts(node_count, arcs, side)), arcs_(arcs.size()) {
  std::vector<std::size_t> next = starts_;
  for (std::uint32_t i = 0; i < arcs.size(); ++i) arcs_[next[near_end(arcs[i], side)]++] = i;
}

Neighbours::Neighbours(std::size_t node_count, std::span<const Arc> arcs, Incidence::Side side)
    : starts_(group_starts(node_count, arcs, side)), nodes_(arcs.size()) {
  std::vector<std::size_t> next = starts_;
  for (const Arc& arc : arcs) nodes_[next[near_end(arc, side)]++] = far_end(arc, side);
}

}  // namespace graphlayout
