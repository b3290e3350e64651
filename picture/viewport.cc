/// @file
/// Zooming and scrolling arithmetic.
#include "picture/viewport.h"

#include <algorithm>
#include <cmath>

namespace picture {

namespace {

constexpr double kMargin = 24;         // pixels kept free around the drawing
constexpr double kFinestScroll = 1e6;  // most steps of a scroll bar, which computes in int and float

ScrollRange scrollRange(double least, double most, double view, double offset, double zoom) {
  const double whole = most - least + view;
  const double unit = std::max(1 / zoom, whole / kFinestScroll);
  ScrollRange range;
  range.unit = unit;
  range.slider = std::max(1, static_cast<int>(std::lround(view / unit)));
  range.maximum = range.slider + static_cast<int>(std::lround((most - least) / unit));
  range.value =
      std::clamp(static_cast<int>(std::lround((offset - least) / unit)), 0, range.maximum - range.slider);
  return range;
}

}  // namespace

void Viewport::resize(double width, double height) {
  frame_.width = std::max(width, 1.0);
  frame_.height = std::max(height, 1.0);
  hold();
}

void Viewport::setExtents(const SgRectangle& extents) {
  extents_ = extents;
  hold();
}

void Viewport::scrollTo(SgPoint plane, SgPoint window) {
  frame_.corner = {plane.x - window.x / frame_.zoom, plane.y - window.y / frame_.zoom};
  hold();
}

void Viewport::scrollBy(double dx, double dy) {
  frame_.corner.x += dx / frame_.zoom;
  frame_.corner.y += dy / frame_.zoom;
  hold();
}

void Viewport::zoomAround(double zoom, SgPoint window) {
  const SgPoint plane = toPlane(window);
  frame_.zoom =
      std::isfinite(zoom) ? std::clamp(zoom, std::min(SgMinZoom, fittingZoom(extents_)), SgMaxZoom) : 1;
  scrollTo(plane, window);
}

double Viewport::fittingZoom(const SgRectangle& part) const {
  constexpr double kLeast = 1e-9, kLeastRoom = 10;
  const double wide = std::max(frame_.width - 2 * kMargin, kLeastRoom) / std::max(part.width, 1.0);
  const double high = std::max(frame_.height - 2 * kMargin, kLeastRoom) / std::max(part.height, 1.0);
  return std::clamp(std::min(wide, high), kLeast, 1.0);
}

void Viewport::fit(const SgRectangle& part) {
  frame_.zoom = fittingZoom(part);
  scrollTo(part.middle(), {frame_.width / 2, frame_.height / 2});
}

void Viewport::showTop(double middle) {
  frame_.zoom = 1;
  // What is no wider than the view is centred as a whole.
  const double half = frame_.width / 2 - kMargin, first = extents_.x + half, last = extents_.right() - half;
  middle = first < last ? std::clamp(middle, first, last) : extents_.middle().x;
  scrollTo({middle, extents_.y}, {frame_.width / 2, kMargin});
}

void Viewport::reveal(const SgRectangle& box) {
  const SgRectangle view = visible();
  const double margin = kMargin / frame_.zoom;
  const SgRectangle wanted = box.grownBy(margin);
  if (wanted.x > view.right() + view.width || wanted.right() < view.x - view.width ||
      wanted.y > view.bottom() + view.height || wanted.bottom() < view.y - view.height) {
    scrollTo(box.middle(), {frame_.width / 2, frame_.height / 2});
    return;
  }
  // The upper left corner wins when the box is larger than the view.
  frame_.corner.x = std::min(std::max(view.x, wanted.right() - view.width), wanted.x);
  frame_.corner.y = std::min(std::max(view.y, wanted.bottom() - view.height), wanted.y);
  if (wanted.width > view.width) frame_.corner.x = std::clamp(view.x, wanted.x, wanted.right() - view.width);
  if (wanted.height > view.height)
    frame_.corner.y = std::clamp(view.y, wanted.y, wanted.bottom() - view.height);
  hold();
}

Viewport::Limits Viewport::limits(double start, double end, double view) const {
  if (extents_ == SgRectangle{}) return {};  // nothing to scroll
  const double margin = kMargin / frame_.zoom;
  start -= margin;
  end += margin;
  return {std::min(start - view / 2, end - view), std::max(end - view / 2, start)};
}

Viewport::Limits Viewport::horizontalLimits() const {
  return limits(extents_.x, extents_.right(), frame_.width / frame_.zoom);
}

Viewport::Limits Viewport::verticalLimits() const {
  return limits(extents_.y, extents_.bottom(), frame_.height / frame_.zoom);
}

void Viewport::hold() {
  const Limits x = horizontalLimits(), y = verticalLimits();
  frame_.corner.x = std::isfinite(frame_.corner.x) ? std::clamp(frame_.corner.x, x.least, x.most) : x.least;
  frame_.corner.y = std::isfinite(frame_.corner.y) ? std::clamp(frame_.corner.y, y.least, y.most) : y.least;
}

ScrollRange Viewport::horizontal() const {
  const Limits x = horizontalLimits();
  return scrollRange(x.least, x.most, frame_.width / frame_.zoom, frame_.corner.x, frame_.zoom);
}

ScrollRange Viewport::vertical() const {
  const Limits y = verticalLimits();
  return scrollRange(y.least, y.most, frame_.height / frame_.zoom, frame_.corner.y, frame_.zoom);
}

void Viewport::setHorizontal(int value) {
  frame_.corner.x = horizontalLimits().least + value * horizontal().unit;
  hold();
}

void Viewport::setVertical(int value) {
  frame_.corner.y = verticalLimits().least + value * vertical().unit;
  hold();
}

}  // namespace picture
