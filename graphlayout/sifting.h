/// @file
/// Improves an order by moving single items: sifting.
#pragma once

#include <cstdint>

#include "graphlayout/layers.h"

namespace graphlayout {

/// Sifting, after Matuszewski, Schönfeld and Molitor (1999): moves each item of each rank, one after the
/// other, to the place at which it causes the fewest crossings with both neighbouring ranks. Only places
/// within `reach` of its own are tried. The order is never worse afterwards.
/// @returns how many crossings are gone.
std::uint64_t sift(Layers& layers, std::size_t reach);

}  // namespace graphlayout
