/// @file
/// The blocks of a compact picture: what lies below a node, as far as one line can tell.
#pragma once

#include <cstdint>
#include <vector>

#include "picture/geometry.h"

namespace picture {

class Drawing;

/// The bounds of a node and all that right-angled arcs lead to from it, directly or not.
struct Block {
  std::uint32_t node = 0;  ///< its NodeId
  SgRectangle box;
  std::uint32_t depth = 0;   ///< how many other blocks it is in
  std::uint32_t height = 0;  ///< how many are in each other in it
};

/// Those that are shown, outer ones before what is in them. An only child has no block of its own: a chain is
/// one. Linear.
std::vector<Block> blocksOf(const Drawing& drawing);

}  // namespace picture
