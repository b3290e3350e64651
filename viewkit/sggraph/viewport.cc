/// @file
/// Zooming and scrolling arithmetic.
#include "viewkit/sggraph/viewport.h"

#include <algorithm>
#include <cmath>

namespace sggraph {

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

SgPoint Viewport::toWindow(SgPoint plane) const {
  return {(plane.x - offset_.x) * zoom_, (plane.y - offset_.y) * zoom_};
}

SgRectangle Viewport::toWindow(const SgRectangle& plane) const {
  const SgPoint corner = toWindow(SgPoint{plane.x, plane.y});
  return {corner.x, corner.y, plane.width * zoom_, plane.height * zoom_};
}

SgPoint Viewport::toPlane(SgPoint window) const {
  return {window.x / zoom_ + offset_.x, window.y / zoom_ + offset_.y};
}

SgRectangle Viewport::visible() const { return {offset_.x, offset_.y, width_ / zoom_, height_ / zoom_}; }

void Viewport::resize(double width, double height) {
  width_ = std::max(width, 1.0);
  height_ = std::max(height, 1.0);
  hold();
}

void Viewport::setExtents(const SgRectangle& extents) {
  extents_ = extents;
  hold();
}

void Viewport::scrollTo(SgPoint plane, SgPoint window) {
  offset_ = {plane.x - window.x / zoom_, plane.y - window.y / zoom_};
  hold();
}

void Viewport::scrollBy(double dx, double dy) {
  offset_.x += dx / zoom_;
  offset_.y += dy / zoom_;
  hold();
}

void Viewport::zoomAround(double zoom, SgPoint window) {
  const SgPoint plane = toPlane(window);
  zoom_ = std::isfinite(zoom) ? std::clamp(zoom, SgMinZoom, SgMaxZoom) : 1;
  scrollTo(plane, window);
}

void Viewport::fit() {
  const double wide = (width_ - 2 * kMargin) / std::max(extents_.width, 1.0);
  const double high = (height_ - 2 * kMargin) / std::max(extents_.height, 1.0);
  zoom_ = std::clamp(std::min({wide, high, 1.0}), SgMinZoom, SgMaxZoom);
  scrollTo(extents_.middle(), {width_ / 2, height_ / 2});
}

void Viewport::showTop(double middle) {
  zoom_ = 1;
  // What is no wider than the view is centred as a whole.
  if (extents_.width + 2 * kMargin <= width_) middle = extents_.middle().x;
  scrollTo({middle, extents_.y}, {width_ / 2, kMargin});
}

void Viewport::reveal(const SgRectangle& box) {
  const SgRectangle view = visible();
  const double margin = kMargin / zoom_;
  const SgRectangle wanted = box.grownBy(margin);
  if (wanted.x > view.right() + view.width || wanted.right() < view.x - view.width ||
      wanted.y > view.bottom() + view.height || wanted.bottom() < view.y - view.height) {
    scrollTo(box.middle(), {width_ / 2, height_ / 2});
    return;
  }
  // The upper left corner wins when the box is larger than the view.
  offset_.x = std::min(std::max(view.x, wanted.right() - view.width), wanted.x);
  offset_.y = std::min(std::max(view.y, wanted.bottom() - view.height), wanted.y);
  if (wanted.width > view.width) offset_.x = std::clamp(view.x, wanted.x, wanted.right() - view.width);
  if (wanted.height > view.height) offset_.y = std::clamp(view.y, wanted.y, wanted.bottom() - view.height);
  hold();
}

Viewport::Limits Viewport::limits(double start, double end, double view) const {
  if (extents_ == SgRectangle{}) return {};  // nothing to scroll
  const double margin = kMargin / zoom_;
  start -= margin;
  end += margin;
  return {std::min(start - view / 2, end - view), std::max(end - view / 2, start)};
}

Viewport::Limits Viewport::horizontalLimits() const {
  return limits(extents_.x, extents_.right(), width_ / zoom_);
}

Viewport::Limits Viewport::verticalLimits() const {
  return limits(extents_.y, extents_.bottom(), height_ / zoom_);
}

void Viewport::hold() {
  const Limits x = horizontalLimits(), y = verticalLimits();
  offset_.x = std::isfinite(offset_.x) ? std::clamp(offset_.x, x.least, x.most) : x.least;
  offset_.y = std::isfinite(offset_.y) ? std::clamp(offset_.y, y.least, y.most) : y.least;
}

ScrollRange Viewport::horizontal() const {
  const Limits x = horizontalLimits();
  return scrollRange(x.least, x.most, width_ / zoom_, offset_.x, zoom_);
}

ScrollRange Viewport::vertical() const {
  const Limits y = verticalLimits();
  return scrollRange(y.least, y.most, height_ / zoom_, offset_.y, zoom_);
}

void Viewport::setHorizontal(int value) {
  offset_.x = horizontalLimits().least + value * horizontal().unit;
  hold();
}

void Viewport::setVertical(int value) {
  offset_.y = verticalLimits().least + value * vertical().unit;
  hold();
}

}  // namespace sggraph
