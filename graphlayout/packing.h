/// @file
/// Places boxes beside and below each other in a compact area.
#pragma once

#include <span>
#include <vector>

#include "graphlayout/layout.h"

namespace graphlayout {

/// @param aspect  width to height to aim at; the widest box may force more.
/// @returns the top left corner of each box; they start at (0, 0), and `first` is there.
std::vector<Point> pack(std::span<const Size> boxes, std::size_t first, double gap, double aspect);

}  // namespace graphlayout
