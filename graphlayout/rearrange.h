/// @file
/// The layered layout of a graph that has changed: from the picture that is there.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layout.h"

namespace graphlayout {

/// The picture that is there, and what in it is new. Numbers that are no node or arc are ignored.
struct Present {
  /// Top left corners, one per node. Of a loose node: where it is wanted. What is missing or not finite: a
  /// loose node that is wanted near its neighbours.
  std::span<const Point> nodes;
  const Bends& bends;                        ///< of all arcs
  std::span<const std::uint32_t> new_nodes;  ///< those that have no place yet
  std::span<const std::uint32_t> new_arcs;   ///< those that are not drawn yet
  std::vector<bool> held = {};               ///< nodes that may not move, by number; none when empty
};

/// What another picture needs that the one before didn't have; all else stays. `nodes` and `arcs` are numbers
/// in the caller's lists, each once.
struct Changes {
  std::vector<std::uint32_t> nodes;
  std::vector<Point> positions;  ///< top left corner of each of `nodes`
  std::vector<std::uint32_t> arcs;
  Bends bends;  ///< one entry per entry of `arcs`
};

/// Places new nodes near where they are wanted and draws new arcs around the nodes that are there. What a new
/// arc leads up to is moved below its parent, if that takes few nodes and none that is held; or else the arc
/// is drawn uphill. Arcs of nodes that moved, and those that would lead through one now, are drawn anew. No
/// node comes to lie over another. Linear in the graph for each new node and arc; when these are so many that
/// it would take too long, the last nodes stand in rows below the picture and the last arcs are straight.
Changes rearrange(std::span<const Size> sizes, std::span<const Arc> arcs, const Present& present,
                  const Options& options = {});

}  // namespace graphlayout
