/// @file
/// The lines that arcs are drawn as.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "picture/geometry.h"

namespace picture {

/// Where arcs leave and reach nodes: anywhere on their edges, or at the middles of lower and upper edges.
enum class Ports { Any, Down };

/// Whole: one line from node to node. Stubs: only the ends, unless somebody works on the arc. Square: like
/// Whole, but bent at right angles: it leaves and reaches its nodes level with its first and last bend.
enum class ArcStyle { Whole, Stubs, Square };

/// One of the arcs between two nodes, from the view of both.
struct Lane {
  double offset = 0;      ///< plane units beside the middle line, the same way for both directions
  bool reversed = false;  ///< the arc runs against the direction that offsets are measured in
};

/// How far beside the middle line arc `number` (from 0) of `count` between two nodes runs, where the narrower
/// of them is `width` wide: together they take no more than most of it.
double laneOffset(std::size_t number, std::size_t count, double width);

/// From the edge of one node over the bends to the edge of the other.
std::vector<SgPoint> arcPath(const SgRectangle& from, const SgRectangle& to, std::span<const SgPoint> bends,
                             Ports ports, const Lane& lane);

/// The same for an arc of style Square, which needs bends.
std::vector<SgPoint> squarePath(const SgRectangle& from, const SgRectangle& to,
                                std::span<const SgPoint> bends);

inline constexpr double kStubLength = 40;  ///< plane units, at most

/// What is drawn of an arc by its ends only.
struct Stubs {
  std::array<SgPoint, 2> parent;  ///< from the parent's edge towards the child
  std::array<SgPoint, 2> child;   ///< to the child's edge, coming from the parent
};
Stubs stubsBetween(const SgRectangle& from, const SgRectangle& to);
/// A stretch of a path that is as long as a stub, or less: at most so many points.
class PathEnd {
 public:
  /// @param atEnd  the last stretch, else the first; both in the path's direction.
  PathEnd(std::span<const SgPoint> path, bool atEnd);
  std::span<const SgPoint> points() const { return {points_.data(), size_}; }

 private:
  std::array<SgPoint, 5> points_;
  std::size_t size_ = 0;
};

/// The loop of a node to itself; `number` from 0, each larger than the one before.
std::vector<SgPoint> loopPath(const SgRectangle& box, std::size_t number);

}  // namespace picture
