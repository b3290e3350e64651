/// @file
/// Where the neighbours of a rank's items stand, in ascending order.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layers.h"

namespace graphlayout {

/// One side's lists of neighbours as positions in the neighbouring rank. They come sorted without sorting:
/// the neighbours are gone through in their order.
class SortedNeighbours {
 public:
  enum Side { kAbove, kBelow };
  SortedNeighbours(const Layers& layers, Side side)
      : layers_(layers),
        above_(side == kAbove),
        lists_(above_ ? layers.up : layers.down),
        positions_(lists_.total()) {}

  /// Brings the lists of all items of rank `r` up to date; of() is good for these until a rank next to it
  /// changes.
  void fill(std::size_t r) {
    if (above_ ? r == 0 : r + 1 == layers_.rank_count()) return;
    const std::uint32_t first = layers_.rank_starts[r];
    filled_.assign(layers_.rank_starts[r + 1] - first, 0);
    const auto others = layers_.rank(above_ ? r - 1 : r + 1);
    for (std::uint32_t i = 0; i < others.size(); ++i) {
      for (const std::uint32_t item : (above_ ? layers_.down : layers_.up).of(others[i])) {
        positions_[lists_.start(item) + filled_[item - first]++] = i;
      }
    }
  }

  std::span<const std::uint32_t> of(std::uint32_t item) const {
    return std::span(positions_).subspan(lists_.start(item), lists_.of(item).size());
  }

 private:
  const Layers& layers_;
  const bool above_;
  const Neighbours& lists_;
  std::vector<std::uint32_t> positions_;
  std::vector<std::uint32_t> filled_;  // per item of the rank, how much of its list
};

}  // namespace graphlayout
