/// @file
/// Orders ranks by letting items float to the middle of their neighbours.
#pragma once

#include <cstdint>
#include <vector>

#include "graphlayout/layers.h"
#include "graphlayout/spacing.h"

namespace graphlayout {

/// Every item wants to be in the middle of its neighbours above and below, its rank keeps it at a distance
/// from the others, and the rank is put in the order of the wishes. Seeing both sides and true distances,
/// rather than positions in one neighbouring rank, is what makes this find good orders.
class BarycentreOrdering {
 public:
  /// Both are kept by reference. The sweeps begin with the present order.
  BarycentreOrdering(Layers& layers, const Options& options);

  /// Goes once over all ranks, from above or from below, and reorders each.
  void sweep(bool down);

 private:
  void settle(std::size_t r);
  double wish(std::uint32_t item) const;

  struct Wish {
    double x;
    std::uint32_t item;
  };
  Layers& layers_;
  const Options& options_;
  std::vector<double> x_;  // per item, its middle
  std::vector<Wish> wishes_;
  Spacing spacing_;
};

}  // namespace graphlayout
