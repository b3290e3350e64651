/// @file
/// The simple graph in what a caller gives: finite sizes, no self-links, each pair of linked nodes once.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layout.h"

namespace graphlayout {

inline constexpr std::uint32_t kNone = 0xFFFFFFFF;

/// A graph without self-links, duplicates and arcs that lead nowhere.
struct SimpleGraph {
  std::vector<Size> sizes;
  std::vector<Arc> arcs;              ///< grouped by `from`; the arcs of a node in the caller's order
  std::vector<std::uint32_t> arc_of;  ///< per arc of the caller its arc here, or kNone
};

SimpleGraph simplify(std::span<const Size> sizes, std::span<const Arc> arcs);
/// The same with all numbers brought into their range, NaN as layout.h says.
Options sane(const Options& options);
Size sane(const Size& size);

}  // namespace graphlayout
