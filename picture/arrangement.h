/// @file
/// How a graph is laid out, and how its arcs are drawn then: in the window and in files alike.
#pragma once

#include <cstddef>
#include <span>

#include "graphlayout/layout.h"
#include "picture/arcpath.h"

namespace picture {

enum class Arrangement {
  Layered,  ///< ranks, arcs from above to below
  Compact   ///< blocks of a tree; other arcs as stubs
};

/// That of a graph with so many nodes, unless somebody wants it otherwise.
Arrangement usualArrangement(std::size_t nodeCount);

/// Places for all nodes, and bends.
graphlayout::Layout freshLayout(Arrangement arrangement, std::span<const graphlayout::Size> sizes,
                                std::span<const graphlayout::Arc> arcs);

/// The style of an arc with such bends.
ArcStyle styleOf(Arrangement arrangement, std::span<const SgPoint> bends);

}  // namespace picture
