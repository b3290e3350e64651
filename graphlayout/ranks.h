/// @file
/// First stages of a layered layout: which way each arc points, and on which rank each node stands.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layout.h"

namespace graphlayout {

/// Turns round the arcs that close a cycle: the back arcs of a depth-first search that begins at the nodes
/// without arcs into them and goes on with the rest, in their order. All arcs then lead down an order.
/// @param arcs  no self-links.
/// @returns per arc whether it was turned.
std::vector<bool> break_cycles(std::size_t node_count, std::vector<Arc>& arcs);

/// Ranks from 0, without gaps, every arc from a lower number to a higher one. They begin as those of the
/// longest path from above; then single nodes are moved for shorter arcs. The aim, the least sum of the
/// arcs' lengths in ranks, is that of the network simplex of Gansner, Koutsofios, North and Vo (1993), which
/// reaches it for certain but takes longer.
/// @param arcs  free of cycles.
std::vector<std::uint32_t> assign_ranks(std::size_t node_count, std::span<const Arc> arcs);

}  // namespace graphlayout
