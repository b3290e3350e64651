/// @file
/// First stages of a layered layout: which way each arc points, and on which rank each node stands.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layout.h"

namespace graphlayout {

/// Turns round the arcs that close a cycle, so that all arcs lead down an order: those that a depth-first
/// walk from the nodes without arcs into them (then from the rest, in their order) meets going back.
/// @param arcs  no self-links.
/// @returns per arc whether it was turned.
std::vector<bool> break_cycles(std::size_t node_count, std::vector<Arc>& arcs);

/// Ranks from 0, without gaps, every arc from a lower number to a higher one: the longest way from above,
/// then nodes with more arcs down than up moved towards their children, which keeps arcs short.
/// @param arcs  free of cycles.
std::vector<std::uint32_t> assign_ranks(std::size_t node_count, std::span<const Arc> arcs);

}  // namespace graphlayout
