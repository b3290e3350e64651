/// @file
/// The part of the plane that a window shows: offset, zoom and their limits.
#pragma once

#include "picture/frame.h"

/// Zooms out to SgMinZoom, and further until all of the drawing is in view.
inline constexpr double SgMinZoom = 0.1, SgMaxZoom = 4.0;

namespace picture {

/// What one scroll bar shows. `value` runs from 0 to `maximum` - `slider`; all are at least 0, `slider` 1.
struct ScrollRange {
  int maximum = 1, slider = 1, value = 0;
  double unit = 1;  ///< plane units per scroll bar unit
  friend bool operator==(const ScrollRange&, const ScrollRange&) = default;
};

/// Maps plane to window. Whatever is asked for, the view keeps hold of the drawing: the middle of the view
/// stays over it, unless all of it is in view.
class Viewport {
 public:
  const Frame& frame() const { return frame_; }
  double zoom() const { return frame_.zoom; }
  double width() const { return frame_.width; }
  double height() const { return frame_.height; }
  SgPoint toWindow(SgPoint plane) const { return frame_.toWindow(plane); }
  SgRectangle toWindow(const SgRectangle& plane) const { return frame_.toWindow(plane); }
  SgPoint toPlane(SgPoint window) const { return frame_.toPlane(window); }
  /// The part of the plane in view.
  SgRectangle visible() const { return frame_.visible(); }

  /// @param width,height  in pixels; the upper left corner stays.
  void resize(double width, double height);
  /// Where the drawing is. A drawing without extent has nothing to scroll.
  void setExtents(const SgRectangle& extents);

  /// Puts a place of the plane at a place of the window, as far as the limits allow.
  void scrollTo(SgPoint plane, SgPoint window);
  /// Moves what is seen by that many pixels: (10, 0) shows what is 10 pixels to the right.
  void scrollBy(double dx, double dy);
  void zoomAround(double zoom, SgPoint window);
  /// All of the drawing in the middle, at 100 % or less.
  void fit() { fit(extents_); }
  /// The same for a part of it.
  void fit(const SgRectangle& part);
  /// The top of the drawing: its upper edge, and `middle` on the plane, at 100 %.
  void showTop(double middle);
  /// Scrolls as little as needed to show all of `box`; to the middle when it is more than a view away.
  void reveal(const SgRectangle& box);

  ScrollRange horizontal() const;
  ScrollRange vertical() const;
  void setHorizontal(int value);
  void setVertical(int value);

 private:
  struct Limits {
    double least = 0, most = 0;
  };
  Limits limits(double start, double end, double view) const;
  Limits horizontalLimits() const;
  Limits verticalLimits() const;
  /// The zoom at which a part of the plane has room, held to what can be computed with.
  double fittingZoom(const SgRectangle& part) const;
  void hold();

  Frame frame_;
  SgRectangle extents_;
};

}  // namespace picture
