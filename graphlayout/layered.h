/// @file
/// The layered layout of any graph: its connected components, each in layers, packed.
#pragma once

#include "graphlayout/layout.h"
#include "graphlayout/simplegraph.h"

namespace graphlayout {

/// Positions and bends (per arc of `graph`, in its direction) with the top left corner at (0, 0). Bends may
/// lie on the straight line of their arc.
Layout layered(const SimpleGraph& graph, const Options& options);

/// Hands the bends of simple arcs to the caller's arcs, but for those on an upright line.
/// @param layout  of `graph`.
Bends bends_of(const SimpleGraph& graph, const Layout& layout, std::span<const Arc> arcs);

/// The points at which an arc's line begins and ends, before its bends and after them.
struct Ends {
  Point from, to;
};
Ends ends_of(const Arc& arc, std::span<const Size> sizes, std::span<const Point> positions);

}  // namespace graphlayout
