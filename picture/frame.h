/// @file
/// A part of the plane on a window or a sheet of paper.
#pragma once

#include <algorithm>

#include "picture/geometry.h"

namespace picture {

/// Shows the plane from `corner` on, `zoom` window units to a plane unit. A window unit is a pixel, or on
/// paper whatever the surface makes of it.
struct Frame {
  double zoom = 1;
  SgPoint corner;                // the place of the plane at the window's upper left corner
  double width = 1, height = 1;  // of the window

  SgPoint toWindow(SgPoint plane) const { return {(plane.x - corner.x) * zoom, (plane.y - corner.y) * zoom}; }
  SgRectangle toWindow(const SgRectangle& plane) const {
    const SgPoint place = toWindow(SgPoint{plane.x, plane.y});
    return {place.x, place.y, plane.width * zoom, plane.height * zoom};
  }
  SgPoint toPlane(SgPoint window) const { return {window.x / zoom + corner.x, window.y / zoom + corner.y}; }
  /// The part of the plane that is shown.
  SgRectangle visible() const { return {corner.x, corner.y, width / zoom, height / zoom}; }
  /// The part of a box, in window coordinates, that is not far from the window.
  SgRectangle near(const SgRectangle& box) const {
    constexpr double kFar = 100;
    const double left = std::max(box.x, -kFar), top = std::max(box.y, -kFar);
    return {left, top, std::max(std::min(box.right(), width + kFar) - left, 1.0),
            std::max(std::min(box.bottom(), height + kFar) - top, 1.0)};
  }
  friend bool operator==(const Frame&, const Frame&) = default;
  SgRectangle window() const { return {0, 0, width, height}; }
};

}  // namespace picture
