/// @file
/// Crossing reduction: barycentres find the large-scale order, sifting mends what is left from place to
/// place.
#include "graphlayout/ordering.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>

#include "graphlayout/barycentre.h"
#include "graphlayout/fenwick.h"
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

namespace {

/// Improves the present order. How much work goes into a graph falls with its size (items and segments), so
/// that the largest take seconds, not minutes. @returns the crossings that are left.
std::uint64_t improve(Layers& layers, const Options& options, std::size_t size) {
  std::uint64_t fewest = count_crossings(layers);
  std::vector<std::uint32_t> best = layers.order;
  const std::size_t sweeps = std::clamp<std::size_t>(60'000'000 / size, 8, 200);
  constexpr std::size_t kSweepsPerCount = 10;
  BarycentreOrdering ordering(layers, options);
  for (std::size_t i = 1; i <= sweeps && fewest > 0; ++i) {
    ordering.sweep(i % 2 == 1);
    if (i % kSweepsPerCount != 0 && i != sweeps) continue;
    const std::uint64_t now = count_crossings(layers);
    if (now < fewest) fewest = now, best = layers.order;
  }
  layers.order = std::move(best);

  const auto reach =
      static_cast<std::size_t>(std::clamp(10'000 / std::sqrt(static_cast<double>(size)), 8.0, 100.0));
  constexpr int kPasses = 12;
  constexpr std::uint64_t kWorthwhile = 500;  // a pass has to remove this fraction of the crossings
  for (int pass = 0; pass < kPasses; ++pass) {
    const std::uint64_t gone = sift(layers, reach);
    fewest -= gone;
    if (gone <= fewest / kWorthwhile) break;
  }
  return fewest;
}

/// Puts each rank in an arbitrary order, the same for the same seed.
void shuffle(Layers& layers, std::uint32_t seed) {
  std::minstd_rand random(seed);
  for (std::size_t r = 0; r < layers.rank_count(); ++r) {
    const auto items = layers.rank(r);
    for (std::size_t i = items.size(); i > 1; --i) std::swap(items[i - 1], items[random() % i]);
  }
}

}  // namespace

void reduce_crossings(Layers& layers, const Options& options) {
  if (count_crossings(layers) == 0) return;
  const std::size_t size = layers.item_count() + layers.up.total();
  std::uint64_t fewest = improve(layers, options, size);

  // How few crossings are reached depends on the order that one begins with. Small graphs are quickly tried
  // again from other orders.
  const auto starts = static_cast<std::uint32_t>(std::clamp<std::size_t>(10'000 / size, 1, 8));
  std::vector<std::uint32_t> best = layers.order;
  for (std::uint32_t start = 1; start < starts && fewest > 0; ++start) {
    shuffle(layers, start);
    const std::uint64_t now = improve(layers, options, size);
    if (now < fewest) fewest = now, best = layers.order;
  }
  layers.order = std::move(best);
}

}  // namespace graphlayout
