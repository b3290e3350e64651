/// @file
/// Sweeps of ordering by barycentres.
#include "graphlayout/barycentre.h"

#include <algorithm>

namespace graphlayout {

BarycentreOrdering::BarycentreOrdering(Layers& layers, const Options& options)
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

void BarycentreOrdering::sweep(bool down) {
  const std::size_t ranks = layers_.rank_count();
  for (std::size_t k = 0; k < ranks; ++k) order_rank(down ? k : ranks - 1 - k);
}

void BarycentreOrdering::order_rank(std::size_t r) {
  const auto items = layers_.rank(r);
  entries_.clear();
  for (const std::uint32_t item : items) entries_.push_back({barycentre(item), item});
  if (!std::ranges::is_sorted(entries_, {}, &Entry::barycentre))
    std::ranges::stable_sort(entries_, {}, &Entry::barycentre);
  spacing_.clear();
  for (std::size_t i = 0; i < items.size(); ++i) {
    items[i] = entries_[i].item;
    spacing_.add(entries_[i].barycentre, 1, i == 0 ? 0 : distance(layers_, items[i - 1], items[i], options_));
  }
  spacing_.finish([&](std::size_t i, double x) { x_[items[i]] = x; });
}

double BarycentreOrdering::barycentre(std::uint32_t item) const {
  const auto above = layers_.up.of(item), below = layers_.down.of(item);
  if (above.empty() && below.empty()) return x_[item];
  double sum = 0;
  for (const std::uint32_t u : above) sum += x_[u];
  for (const std::uint32_t w : below) sum += x_[w];
  return sum / static_cast<double>(above.size() + below.size());
}

}  // namespace graphlayout
