/// @file
/// Places boxes beside and below each other in a compact area.
#pragma once

#include <span>
#include <vector>

#include "graphlayout/layout.h"

namespace graphlayout {

/// Shelf packing: next fit by decreasing height (Coffman, Garey, Johnson and Tarjan 1980), with boxes stacked
/// on a shelf where they fit.
/// @param aspect  width to height to aim at; the widest box may force more.
/// @returns the top left corner of each box; the first one is at (0, 0), the rest come by height.
std::vector<Point> pack(std::span<const Size> boxes, double gap, double aspect);

}  // namespace graphlayout
