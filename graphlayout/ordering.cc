/// @file
/// Crossing reduction: many sweeps in which items float to the middle of their neighbours, then fine work on
/// the best order found.
#include "graphlayout/ordering.h"

#include <algorithm>
#include <utility>

#include "graphlayout/fenwick.h"
#include "graphlayout/spacing.h"

namespace graphlayout {
namespace {

/// Lists of neighbours' positions, each ascending, without sorting: the neighbours are gone through in their
/// order.
class SortedNeighbours {
 public:
  SortedNeighbours(const Neighbours& lists) : lists_(lists), positions_(lists.total()) {}

  /// Fills the lists of all items of `rank` from `other`, the rank its lists lead to; `back` leads from there
  /// to `rank`.
  void fill(const Layers& layers, std::size_t rank, std::size_t other, const Neighbours& back) {
    fill_.assign(layers.rank_starts[rank + 1] - layers.rank_starts[rank], 0);
    const auto items = layers.rank(other);
    for (std::uint32_t i = 0; i < items.size(); ++i) {
      for (const std::uint32_t v : back.of(items[i])) {
        positions_[lists_.start(v) + fill_[v - layers.rank_starts[rank]]++] = i;
      }
    }
  }

  std::span<const std::uint32_t> of(std::uint32_t item) const {
    return std::span(positions_).subspan(lists_.start(item), lists_.of(item).size());
  }

 private:
  const Neighbours& lists_;
  std::vector<std::uint32_t> positions_;
  std::vector<std::uint32_t> fill_;
};

/// Lets every item float: it wants to be in the middle of its neighbours above and below, its rank keeps it
/// at a distance from the others, and the rank is put in the order of the wishes. Seeing both sides and true
/// distances, rather than positions in one neighbouring rank, is what makes this find good orders.
class Floating {
 public:
  Floating(Layers& layers, const Options& options)
      : layers_(layers), options_(options), x_(layers.item_count()) {
    for (std::size_t r = 0; r < layers_.rank_count(); ++r) {
      double x = 0;
      const auto items = layers_.rank(r);
      for (std::size_t i = 0; i < items.size(); ++i) {
        if (i > 0) x += distance(layers_, items[i - 1], items[i], options_);
        x_[items[i]] = x;
      }
      for (const std::uint32_t item : items) x_[item] -= x / 2;
    }
  }

  void sweep(bool down) {
    const std::size_t ranks = layers_.rank_count();
    for (std::size_t k = 0; k < ranks; ++k) settle(down ? k : ranks - 1 - k);
  }

 private:
  void settle(std::size_t r) {
    const auto items = layers_.rank(r);
    wishes_.clear();
    for (const std::uint32_t item : items) wishes_.push_back({wish(item), item});
    if (!std::ranges::is_sorted(wishes_, {}, &Wish::x)) std::ranges::stable_sort(wishes_, {}, &Wish::x);
    spacing_.clear();
    for (std::size_t i = 0; i < items.size(); ++i) {
      items[i] = wishes_[i].item;
      spacing_.add(wishes_[i].x, 1, i == 0 ? 0 : distance(layers_, items[i - 1], items[i], options_));
    }
    spacing_.finish([&](std::size_t i, double x) { x_[items[i]] = x; });
  }

  double wish(std::uint32_t item) const {
    const auto above = layers_.up.of(item), below = layers_.down.of(item);
    if (above.empty() && below.empty()) return x_[item];
    double sum = 0;
    for (const std::uint32_t u : above) sum += x_[u];
    for (const std::uint32_t w : below) sum += x_[w];
    return sum / static_cast<double>(above.size() + below.size());
  }

  struct Wish {
    double x;
    std::uint32_t item;
  };
  Layers& layers_;
  const Options& options_;
  std::vector<double> x_;
  std::vector<Wish> wishes_;
  Spacing spacing_;
};

}  // namespace

std::uint64_t count_crossings(const Layers& layers) {
  SortedNeighbours below(layers.down);
  Fenwick seen;
  std::uint64_t crossings = 0;
  for (std::size_t r = 0; r + 1 < layers.rank_count(); ++r) {
    below.fill(layers, r, r + 1, layers.up);
    seen.clear(layers.rank(r + 1).size());
    for (const std::uint32_t item : layers.rank(r)) {
      for (const std::uint32_t pos : below.of(item)) crossings += seen.beyond(pos);
      for (const std::uint32_t pos : below.of(item)) seen.add(pos);
    }
  }
  return crossings;
}

void reduce_crossings(Layers& layers, const Options& options) {
  std::uint64_t fewest = count_crossings(layers);
  if (fewest == 0) return;
  std::vector<std::uint32_t> best = layers.order;
  const auto keep_if_better = [&] {
    const std::uint64_t now = count_crossings(layers);
    if (now < fewest) fewest = now, best = layers.order;
    return fewest == 0;
  };

  const std::size_t elements = layers.item_count() + layers.up.total();
  const std::size_t sweeps = std::clamp<std::size_t>(60'000'000 / elements, 8, 100);
  Floating floating(layers, options);
  for (std::size_t i = 0; i < sweeps; ++i) {
    floating.sweep(i % 2 == 0);
    if (i % 8 == 7 && keep_if_better()) break;
  }
  layers.order = std::move(best);
}

}  // namespace graphlayout
