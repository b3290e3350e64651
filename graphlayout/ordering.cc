/// @file
/// Crossing reduction: floating finds the large-scale order, sifting mends what is left from place to place.
#include "graphlayout/ordering.h"

#include <algorithm>

#include "graphlayout/fenwick.h"
#include "graphlayout/floating.h"
#include "graphlayout/sifting.h"
#include "graphlayout/sorted_neighbours.h"

namespace graphlayout {

std::uint64_t count_crossings(const Layers& layers) {
  SortedNeighbours below(layers, SortedNeighbours::kBelow);
  Fenwick seen;
  std::uint64_t crossings = 0;
  for (std::size_t r = 0; r + 1 < layers.rank_count(); ++r) {
    below.fill(r);
    seen.clear(layers.rank(r + 1).size());
    for (const std::uint32_t item : layers.rank(r)) {
      for (const std::uint32_t place : below.of(item)) crossings += seen.beyond(place);
      for (const std::uint32_t place : below.of(item)) seen.add(place);
    }
  }
  return crossings;
}

void reduce_crossings(Layers& layers, const Options& options) {
  std::uint64_t fewest = count_crossings(layers);
  if (fewest == 0) return;
  std::vector<std::uint32_t> best = layers.order;

  // How much work goes into a graph falls with its size, so that the largest take seconds, not minutes.
  const std::size_t elements = layers.item_count() + layers.up.total();
  const std::size_t sweeps = std::clamp<std::size_t>(60'000'000 / elements, 8, 250);
  constexpr std::size_t kSweepsPerCount = 10;
  Floating floating(layers, options);
  for (std::size_t i = 1; i <= sweeps && fewest > 0; ++i) {
    floating.sweep(i % 2 == 1);
    if (i % kSweepsPerCount != 0 && i != sweeps) continue;
    const std::uint64_t now = count_crossings(layers);
    if (now < fewest) fewest = now, best = layers.order;
  }
  layers.order = std::move(best);

  const std::size_t reach = std::clamp<std::size_t>(15'000'000 / elements, 8, 100);
  constexpr int kPasses = 12;
  constexpr std::uint64_t kWorthwhile = 500;  // a pass has to remove this fraction of the crossings
  for (int pass = 0; pass < kPasses; ++pass) {
    const std::uint64_t gone = sift(layers, reach);
    fewest -= gone;
    if (gone <= fewest / kWorthwhile) break;
  }
}

}  // namespace graphlayout
