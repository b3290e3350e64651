/// @file
/// Sifting.
#include "graphlayout/sifting.h"

#include <algorithm>
#include <vector>

#include "graphlayout/sorted_neighbours.h"

namespace graphlayout {
namespace {

/// How many crossings come about when an item changes from left of another to right of it, seen from one
/// side. Both lists are ascending.
std::int64_t change(std::span<const std::uint32_t> mover, std::span<const std::uint32_t> passed) {
  std::int64_t sum = 0;
  std::size_t left = 0,
              up_to = 0;  // how many neighbours of `passed` are left of one of `mover`, or not right of it
  for (const std::uint32_t place : mover) {
    while (left < passed.size() && passed[left] < place) ++left;
    while (up_to < passed.size() && passed[up_to] <= place) ++up_to;
    sum += static_cast<std::int64_t>(passed.size() - up_to) - static_cast<std::int64_t>(left);
  }
  return sum;
}

class Sifter {
 public:
  Sifter(Layers& layers, std::size_t reach)
      : layers_(layers),
        reach_(reach),
        above_(layers, SortedNeighbours::kAbove),
        below_(layers, SortedNeighbours::kBelow),
        place_(layers.item_count()) {}

  std::uint64_t rank(std::size_t r) {
    above_.fill(r);
    below_.fill(r);
    items_ = layers_.rank(r);
    movers_.assign(items_.begin(), items_.end());
    for (std::size_t i = 0; i < items_.size(); ++i) place_[items_[i]] = i;
    std::uint64_t gone = 0;
    for (const std::uint32_t item : movers_) gone += move(item);
    return gone;
  }

 private:
  std::int64_t pass(std::uint32_t mover, std::uint32_t passed) const {
    return change(above_.of(mover), above_.of(passed)) + change(below_.of(mover), below_.of(passed));
  }

  std::uint64_t move(std::uint32_t item) {
    const std::size_t from = place_[item];
    std::size_t best = from;
    std::int64_t fewest = 0, now = 0;
    const std::size_t last = std::min(items_.size() - 1, from + reach_),
                      first = from - std::min(from, reach_);
    for (std::size_t to = from + 1; to <= last; ++to) {
      now += pass(item, items_[to]);
      if (now < fewest) fewest = now, best = to;
    }
    now = 0;
    for (std::size_t to = from; to-- > first;) {
      now -= pass(item, items_[to]);
      if (now < fewest) fewest = now, best = to;
    }
    const auto at = [&](std::size_t i) { return items_.begin() + static_cast<std::ptrdiff_t>(i); };
    if (best > from) std::rotate(at(from), at(from + 1), at(best + 1));
    if (best < from) std::rotate(at(best), at(from), at(from + 1));
    for (std::size_t i = std::min(from, best); i <= std::max(from, best); ++i) place_[items_[i]] = i;
    return static_cast<std::uint64_t>(-fewest);
  }

  Layers& layers_;
  const std::size_t reach_;
  SortedNeighbours above_, below_;
  std::vector<std::size_t> place_;  // per item, in its rank
  std::span<std::uint32_t> items_;
  std::vector<std::uint32_t> movers_;
};

}  // namespace

std::uint64_t sift(Layers& layers, std::size_t reach) {
  Sifter sifter(layers, reach);
  std::uint64_t gone = 0;
  for (std::size_t r = 0; r < layers.rank_count(); ++r) gone += sifter.rank(r);
  return gone;
}

}  // namespace graphlayout
