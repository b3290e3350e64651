/// @file
/// The order of the items within each rank, with few crossings.
#pragma once

#include <cstdint>

#include "graphlayout/layers.h"

namespace graphlayout {

/// Reorders the ranks of `layers`. An order without crossings is left as it is.
void reduce_crossings(Layers& layers, const Options& options);

/// Crossings of segments between all neighbouring ranks in the present order, counted as inversions in a tree
/// of sums, as by Barth, Jünger and Mutzel (2002): O(s log n) for s segments.
std::uint64_t count_crossings(const Layers& layers);

}  // namespace graphlayout
