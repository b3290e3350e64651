/// @file
/// Orders ranks by the barycentres of their items.
#pragma once

#include <cstdint>
#include <vector>

#include "graphlayout/layers.h"
#include "graphlayout/spacing.h"

namespace graphlayout {

/// The barycentre method of Sugiyama, Tagawa and Toda (1981), in a variant: an item's barycentre is the mean
/// of the x of its neighbours above and below, each rank is put in the order of its items' barycentres, and
/// then placed as near to them as the items' distances allow. Seeing both sides and true distances, rather
/// than positions in one neighbouring rank, is what makes this find good orders.
class BarycentreOrdering {
 public:
  /// Both are kept by reference. The sweeps begin with the present order.
  BarycentreOrdering(Layers& layers, const Options& options);

  /// Goes once over all ranks, from above or from below, and reorders each.
  void sweep(bool down);

 private:
  void order_rank(std::size_t r);
  double barycentre(std::uint32_t item) const;

  struct Entry {
    double barycentre;
    std::uint32_t item;
  };
  Layers& layers_;
  const Options& options_;
  std::vector<double> x_;       // per item, its middle
  std::vector<Entry> entries_;  // of the rank at hand
  Spacing spacing_;
};

}  // namespace graphlayout
