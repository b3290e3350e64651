/// @file
/// Points, rectangles and lines of the plane; nothing of the window system.
#pragma once

#include <span>

/// A place on the plane or in the window.
struct SgPoint {
  double x = 0, y = 0;
  friend bool operator==(const SgPoint&, const SgPoint&) = default;
};

/// Upper left corner and extent, on the plane or in the window.
struct SgRectangle {
  double x = 0, y = 0, width = 0, height = 0;

  double right() const { return x + width; }
  double bottom() const { return y + height; }
  SgPoint middle() const { return {x + width / 2, y + height / 2}; }
  bool contains(SgPoint p) const { return p.x >= x && p.x < right() && p.y >= y && p.y < bottom(); }
  /// Whether they have a point in common, edges included.
  bool touches(const SgRectangle& other) const {
    return x <= other.right() && other.x <= right() && y <= other.bottom() && other.y <= bottom();
  }
  SgRectangle grownBy(double margin) const {
    return {x - margin, y - margin, width + 2 * margin, height + 2 * margin};
  }
  friend bool operator==(const SgRectangle&, const SgRectangle&) = default;
};

namespace picture {

/// Cuts the line from `a` to `b` down to its part inside `box`.
/// @returns false, with both ends unchanged, when no part of it is inside.
bool clipLine(SgPoint& a, SgPoint& b, const SgRectangle& box);

double distance(SgPoint a, SgPoint b);
/// From a point to the nearest point of a line through all of `path`; infinite for an empty one.
double distanceToPath(SgPoint p, std::span<const SgPoint> path);

double pathLength(std::span<const SgPoint> path);

/// The point at a fraction (0..1) of the path's length; the origin for an empty one.
SgPoint pathPoint(std::span<const SgPoint> path, double fraction);

/// The point of the line from `a` towards `b` that is `length` away from `a`, but at most a third of the way.
SgPoint along(SgPoint a, SgPoint b, double length);

/// The smallest rectangle that holds both.
SgRectangle united(const SgRectangle& a, const SgRectangle& b);
/// The smallest rectangle around the points; empty at the origin for none.
SgRectangle boundsOf(std::span<const SgPoint> points);

}  // namespace picture
