/// @file
/// The order of the items within each rank, with few crossings.
#pragma once

#include <cstdint>

#include "graphlayout/layers.h"

namespace graphlayout {

/// Reorders the ranks of `layers`. An order without crossings is left as it is.
void reduce_crossings(Layers& layers, const Options& options);

/// Crossings of segments between all neighbouring ranks in the present order.
std::uint64_t count_crossings(const Layers& layers);

}  // namespace graphlayout
