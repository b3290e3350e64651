/// @file
/// The picture, what lies over it, and copying both to the window.
#include "viewkit/sggraph/painter.h"

#include <algorithm>
#include <cmath>

namespace sggraph {

namespace {

unsigned pixels(double extent) {
  return static_cast<unsigned>(std::lround(std::clamp(extent, 1.0, 16000.0)));
}

}  // namespace

Painter::Painter(Display* display, Window window, XmRenderTable fonts, Pixels& pixelTable,
                 const std::vector<PixmapSource>& pictures)
    : display_(display), window_(window), surface_(display, window, fonts, pixelTable, pictures) {}

void Painter::fit(const picture::Frame& frame) {
  const unsigned width = pixels(frame.width), height = pixels(frame.height);
  if (picture_ && width == width_ && height == height_) return;
  width_ = width;
  height_ = height;
  surface_.setTarget(None);
  picture_ = viewkit::PixmapId(display_, XCreatePixmap(display_, window_, width, height, surface_.depth()));
  front_ = viewkit::PixmapId(display_, XCreatePixmap(display_, window_, width, height, surface_.depth()));
  frontPainted_ = false;
}

void Painter::paint(const picture::Content& content, const picture::Frame& frame,
                    const picture::Manner& manner) {
  fit(frame);
  surface_.setTarget(picture_.get());
  picture::paint(surface_, content, frame, manner);
}

void Painter::paintMap(const picture::Content& content, const picture::Frame& frame) {
  map_ = viewkit::PixmapId(display_, XCreatePixmap(display_, window_, pixels(frame.width),
                                                   pixels(frame.height), surface_.depth()));
  surface_.setTarget(map_.get());
  picture::paint(surface_, content, frame, {.patchesOnly = true});
}

void Painter::showMap(const Map& map, const picture::Frame& frame, const OverlayInks& inks) {
  if (!map_) return;
  XCopyArea(display_, map_.get(), front_.get(), surface_.gc(), 0, 0, pixels(map.box.width),
            pixels(map.box.height), static_cast<int>(map.box.x), static_cast<int>(map.box.y));
  surface_.drawRectangle(map.box.grownBy(1), inks.border);
  const SgRectangle seen = map.frame.toWindow(frame.visible());
  const double left = std::max(seen.x, 0.0), top = std::max(seen.y, 0.0);
  const SgRectangle view{map.box.x + left, map.box.y + top, std::min(seen.right(), map.box.width) - left,
                         std::min(seen.bottom(), map.box.height) - top};
  surface_.outlineBox(view, inks.selection, 2);
}

void Painter::showLines(std::string_view lines, const picture::Frame& frame, const picture::Color& color) {
  constexpr double kLeading = 1.6;  // from line to line, in heights of the text
  surface_.setTextZoom(1);
  const double step = kLeading * surface_.textHeight();
  SgPoint middle = frame.window().middle();
  middle.y -= step / 2 * static_cast<double>(std::ranges::count(lines, '\n'));
  for (std::size_t begin = 0; begin < lines.size(); middle.y += step) {
    const std::size_t end = std::min(lines.find('\n', begin), lines.size());
    surface_.drawText(middle, lines.substr(begin, end - begin), color);
    begin = end + 1;
  }
}

void Painter::showMode(std::string_view mode, const picture::Frame& frame, const OverlayInks& inks) {
  constexpr int kFrame = 5, kPadding = 6;  // pixels
  for (int i = 2; i < kFrame; ++i) surface_.drawRectangle(frame.window().grownBy(-i), inks.target);
  surface_.setTextZoom(1);
  // Graphs begin at the left or in the middle.
  const double width = surface_.textWidth(mode) + 2 * kPadding;
  const SgRectangle tag{frame.width - kFrame - width, kFrame, width, surface_.textHeight() + kPadding};
  surface_.fillBoxes({&tag, 1}, inks.target);
  surface_.drawText(tag.middle(), mode, picture::kWhite);
}

void Painter::paintOverlay(const picture::Drawing& drawing, const picture::Frame& frame,
                           const Overlay& overlay, const OverlayInks& inks) {
  if (!picture_) return;
  XCopyArea(display_, picture_.get(), front_.get(), surface_.gc(), 0, 0, width_, height_, 0, 0);
  surface_.setTarget(front_.get());
  surface_.setFrame(frame);
  frontPainted_ = true;
  corner_ = inks.corner;
  showLines(overlay.lines, frame, inks.text);
  const auto boxOf = [&](picture::NodeId node) { return frame.toWindow(drawing.box(node)); };
  if (overlay.hoverArc != picture::kNone && !drawing.arcSelected(overlay.hoverArc)) {
    picture::ArcBatch batch(frame, 0);
    batch.add(drawing.path(overlay.hoverArc));
    batch.draw(surface_, inks.hover, 2);
  }
  if (overlay.hoverNode != picture::kNone) {
    // What leads to and from the node is shown whole.
    picture::ArcBatch batch(frame, 0);
    const picture::ArcDetail detail = picture::arcDetail(frame);
    drawing.visitArcsOf(overlay.hoverNode, [&](picture::ArcId arc) {
      if (drawing.arcShown(arc) && drawing.inStubs(arc, detail)) batch.add(drawing.path(arc));
    });
    batch.draw(surface_, inks.hover, 0);
    surface_.outlineBox(boxOf(overlay.hoverNode),
                        drawing.nodeSelected(overlay.hoverNode) ? inks.selection : inks.hover, 2);
  }
  if (overlay.foldable != picture::kNone)
    drawFoldHandle(surface_, foldHandle(boxOf(overlay.foldable), frame), false,
                   {inks.handle, inks.border, inks.text});
  if (overlay.currentNode != picture::kNone && frame.zoom >= picture::kOutlineZoom) {
    const SgRectangle box = boxOf(overlay.currentNode).grownBy(-std::clamp(3 * frame.zoom, 2.0, 4.0));
    if (box.width > 4 && box.height > 4) {
      surface_.setDashed(true);
      surface_.drawRectangle(box, inks.focus);
      surface_.setDashed(false);
    }
  }
  std::vector<SgRectangle> dimmed;
  for (const picture::NodeId node : overlay.dimmed) dimmed.push_back(boxOf(node).grownBy(1));
  surface_.veil(dimmed, inks.background);
  for (const picture::NodeId node : overlay.allowed)
    surface_.outlineBox(boxOf(node), inks.target, frame.zoom < picture::kOutlineZoom ? 1 : 2);
  if (overlay.target != picture::kNone)
    surface_.outlineBox(boxOf(overlay.target), overlay.targetRefused ? inks.refused : inks.target, 4);
  if (overlay.rubberLine) {
    picture::ArcBatch batch(frame, 11);
    batch.addStraight(overlay.rubberParent, overlay.rubberChild);
    batch.draw(surface_, inks.selection, 2);
  }
  if (overlay.map) showMap(*overlay.map, frame, inks);
  if (!overlay.mode.empty()) showMode(overlay.mode, frame, inks);
  for (int i = 0; i < (overlay.focus ? 2 : 1); ++i)
    surface_.drawRectangle(frame.window().grownBy(-i), overlay.focus ? inks.focus : inks.border);
}

void Painter::show(int x, int y, unsigned width, unsigned height) {
  if (!frontPainted_) return;
  const int pastRight = x + static_cast<int>(width) - static_cast<int>(width_);
  const int pastBottom = y + static_cast<int>(height) - static_cast<int>(height_);
  // The corner between the scroll bars, as far as the part reaches into it.
  if (pastRight > 0 && pastBottom > 0) {
    surface_.setForeground(corner_);
    XFillRectangle(display_, window_, surface_.gc(), static_cast<int>(width_), static_cast<int>(height_),
                   static_cast<unsigned>(pastRight), static_cast<unsigned>(pastBottom));
  }
  // A copy from outside of the pixmap would paint with the background.
  const int copied = static_cast<int>(width) - std::max(pastRight, 0);
  const int copiedDown = static_cast<int>(height) - std::max(pastBottom, 0);
  if (copied > 0 && copiedDown > 0)
    XCopyArea(display_, front_.get(), window_, surface_.gc(), x, y, static_cast<unsigned>(copied),
              static_cast<unsigned>(copiedDown), x, y);
}

}  // namespace sggraph
