/// @file
/// A graph cut into ranks, or layers: what the ordering and the coordinates work on.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/adjacency.h"
#include "graphlayout/layout.h"

namespace graphlayout {

/// Items are the graph's nodes and, for each rank that an arc passes through, a dummy node that keeps room
/// for it: all segments of arcs lead from one rank to the next (a proper layering). Items are numbered rank
/// by rank: rank r holds items rank_starts[r] to rank_starts[r + 1], in `order` from left to right.
struct Layers {
  static constexpr std::uint32_t kDummy = 0xFFFFFFFF;

  std::vector<std::uint32_t> rank_starts;  ///< one more than ranks
  std::vector<std::uint32_t> order;        ///< items of each rank, left to right; a permutation of its range
  std::vector<std::uint32_t> node;         ///< per item the node it stands for, or kDummy
  std::vector<double> width;               ///< per item, pixels
  Neighbours up, down;                     ///< per item the items it has segments to, one rank above or below

  std::vector<std::uint32_t> item_of;  ///< per node its item
  /// Arc i passes passages[passage_starts[i]] to passages[passage_starts[i + 1]], from above.
  std::vector<std::size_t> passage_starts;
  std::vector<std::uint32_t> passages;  ///< dummies, arc by arc

  std::size_t rank_count() const { return rank_starts.size() - 1; }
  std::size_t item_count() const { return node.size(); }
  std::span<std::uint32_t> rank(std::size_t r) {
    return std::span(order).subspan(rank_starts[r], rank_starts[r + 1] - rank_starts[r]);
  }
  std::span<const std::uint32_t> rank(std::size_t r) const {
    return std::span(order).subspan(rank_starts[r], rank_starts[r + 1] - rank_starts[r]);
  }
  bool is_dummy(std::uint32_t item) const { return node[item] == kDummy; }
  std::span<const std::uint32_t> passage(std::size_t arc) const {
    return std::span(passages).subspan(passage_starts[arc], passage_starts[arc + 1] - passage_starts[arc]);
  }
};

/// Cuts a graph into ranks, each in the order of a depth-first walk, which leaves trees without crossings.
/// Arcs over many ranks can ask for more dummies than memory holds: beyond a budget that grows with the
/// graph, the longest arcs get none. They are drawn straight and don't take part in the ordering.
/// @param arcs  each from a lower rank to a higher one.
Layers build_layers(std::span<const Size> sizes, std::span<const Arc> arcs,
                    std::span<const std::uint32_t> ranks);

/// The least distance of the middles of two items that are neighbours in their rank.
double distance(const Layers& layers, std::uint32_t left, std::uint32_t right, const Options& options);

}  // namespace graphlayout
