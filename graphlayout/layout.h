/// @file
/// Positions for the nodes and arcs of a graph: a pure function from sizes and arcs to coordinates.
///
/// The method is the layered drawing of Sugiyama, Tagawa and Toda (1981): arcs that close a cycle are turned
/// round (ranks.h), nodes get ranks, or layers (ranks.h), long arcs get dummy nodes (layers.h), the ranks are
/// ordered for few crossings (ordering.h), and then come the coordinates (coordinates.h).
///
/// Everything is in pixels, x to the right and y down, the drawing's top left corner at (0, 0). Nothing here
/// keeps state: the same input gives the same output. Time and memory stay close to linear in nodes and arcs,
/// whatever the graph looks like. The only exception that can leave these functions is std::bad_alloc.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace graphlayout {

/// A node's extent in pixels. NaN and negative values count as 0, values beyond kMaxSize as kMaxSize.
struct Size {
  double width = 0, height = 0;
};
inline constexpr double kMaxSize = 1e6;

struct Point {
  double x = 0, y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

/// An arc between two nodes, given by their positions in the list of sizes, from 0. Self-links and duplicates
/// are legal. An arc that names a node beyond the list is ignored: it moves nothing and gets no bends.
struct Arc {
  std::uint32_t from = 0, to = 0;
  friend bool operator==(const Arc&, const Arc&) = default;
};

/// Distances in pixels; NaN counts as the default, negative values as 0, values beyond kMaxSize as kMaxSize.
struct Options {
  double node_gap = 20;       ///< between neighbours of one rank
  double rank_gap = 60;       ///< between ranks; grows up to `rank_stretch` times where arcs run far sideways
  double rank_stretch = 4;    ///< 1: all rank gaps are equal
  double arc_gap = 10;        ///< what an arc that passes through a rank keeps free on each side
  double component_gap = 60;  ///< between the connected components of a graph
  double aspect = 1.6;        ///< width to height that the components are packed into
  /// From this many childless children that no other parent shares, a node has them in rows of a block below
  /// it instead of in one endless row; 0: never.
  std::uint32_t wrap_leaves = 24;
};

/// The inner points of each arc, in the direction of the arc; one flat array for all arcs.
struct Bends {
  std::vector<Point> points;
  /// One more entry than arcs: arc i owns points starts[i] to starts[i + 1].
  std::vector<std::size_t> starts;

  /// The bends of arc `arc`; none for a straight arc, a self-link, an ignored one or a number beyond the
  /// last.
  std::span<const Point> of(std::size_t arc) const {
    if (starts.empty() || arc >= starts.size() - 1) return {};
    return std::span(points).subspan(starts[arc], starts[arc + 1] - starts[arc]);
  }
};

struct Layout {
  std::vector<Point> nodes;  ///< top left corners, one per node
  /// An arc is meant to be drawn from the middle of its upper node's bottom edge over the bends to the middle
  /// of its lower node's top edge. Duplicates of one arc have the same bends, unless they would be millions:
  /// then the last of them have none.
  Bends bends;
  double width = 0, height = 0;  ///< the smallest size that holds every node and bend
};

/// A layered layout: arcs point down, but for those that close a cycle; no two nodes overlap; trees have no
/// crossings and keep the order in which their arcs come. Connected components are packed side by side and
/// below each other, the first node's first.
Layout layout(std::span<const Size> sizes, std::span<const Arc> arcs, const Options& options = {});

/// How often arcs cross each other when drawn as Layout says: touching ends and shared stretches don't count,
/// nor do arcs that run level. Takes O(s log n) per pair of neighbouring heights at which slanted lines begin
/// or end, s the lines between them: linear for a fresh layout, slower the more nodes were moved by hand.
std::uint64_t crossings(std::span<const Size> sizes, std::span<const Arc> arcs,
                        std::span<const Point> positions, const Bends& bends);

}  // namespace graphlayout
