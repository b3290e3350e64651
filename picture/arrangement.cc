/// @file
/// The two layouts, and the arcs that go with each.
#include "picture/arrangement.h"

#include <algorithm>

#include "graphlayout/compact.h"

namespace picture {

namespace {

/// Whether a line over such points turns at right angles only.
bool isSquare(std::span<const SgPoint> bends) {
  const auto slanted = [](const SgPoint& a, const SgPoint& b) { return a.x != b.x && a.y != b.y; };
  return !bends.empty() && std::ranges::adjacent_find(bends, slanted) == bends.end();
}

}  // namespace

Arrangement usualArrangement(std::size_t nodeCount) {
  return nodeCount >= graphlayout::kCompactFrom ? Arrangement::Compact : Arrangement::Layered;
}

graphlayout::Layout freshLayout(Arrangement arrangement, std::span<const graphlayout::Size> sizes,
                                std::span<const graphlayout::Arc> arcs) {
  if (arrangement == Arrangement::Compact) return graphlayout::compact(sizes, arcs).layout;
  return graphlayout::layout(sizes, arcs);
}

ArcStyle styleOf(Arrangement arrangement, std::span<const SgPoint> bends) {
  if (arrangement == Arrangement::Layered) return ArcStyle::Whole;
  return bends.empty() ? ArcStyle::Stubs : isSquare(bends) ? ArcStyle::Square : ArcStyle::Whole;
}

}  // namespace picture
