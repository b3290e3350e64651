/// @file
/// Boxes, lines, texts and pictures as requests to the X server.
#include "viewkit/sggraph/xsurface.h"

#include <algorithm>
#include <cmath>

namespace sggraph {

namespace {

constexpr double kFarthest = 16000;  // pixels from the window's corner; X has 16 bits for a place

short toShort(double place) {
  return static_cast<short>(std::lround(std::clamp(place, -kFarthest, kFarthest)));
}
unsigned short toExtent(double extent) {
  return static_cast<unsigned short>(std::lround(std::clamp(extent, 1.0, kFarthest)));
}
XPoint toXPoint(SgPoint p) { return {toShort(p.x), toShort(p.y)}; }
XRectangle toXRectangle(const SgRectangle& box) {
  return {toShort(box.x), toShort(box.y), toExtent(box.width), toExtent(box.height)};
}

XSegment segment(short x1, short y1, short x2, short y2) { return {x1, y1, x2, y2}; }
short plus(short a, int b) { return static_cast<short>(a + b); }

}  // namespace

XSurface::XSurface(Display* display, Window window, XmRenderTable fonts, Pixels& pixels,
                   const std::vector<PixmapSource>& pictures)
    : display_(display), pixels_(pixels), pictures_(pictures) {
  XWindowAttributes attributes{};
  XGetWindowAttributes(display, window, &attributes);
  visual_ = attributes.visual;
  colormap_ = attributes.colormap;
  depth_ = static_cast<unsigned>(attributes.depth);
  screen_ = attributes.screen;
  XGCValues values{};
  values.graphics_exposures = False;
  gc_ = viewkit::Gc(display, XCreateGC(display, window, GCGraphicsExposures, &values));
  setFonts(fonts);
}

void XSurface::setFonts(XmRenderTable fonts) {
  font_ = std::make_unique<TextFont>(screen_, fonts);
  textTarget_ = None;
}

void XSurface::setTarget(Drawable target) {
  target_ = target;
  if (target != None) return;
  font_->setTarget(None, nullptr, None);
  textTarget_ = None;
}

void XSurface::setForeground(const picture::Color& color) {
  XSetForeground(display_, gc_.get(), pixels_.pixelOf(color));
}

void XSurface::setDashed(bool dashed) {
  XSetLineAttributes(display_, gc_.get(), 0, dashed ? LineOnOffDash : LineSolid, CapButt, JoinMiter);
  constexpr char kDashes[] = {2, 2};
  if (dashed) XSetDashes(display_, gc_.get(), 0, kDashes, 2);
}

void XSurface::drawRectangle(const SgRectangle& box, const picture::Color& color) {
  const XRectangle edge = toXRectangle(frame_.near(box));
  setForeground(color);
  XDrawRectangle(display_, target_, gc_.get(), edge.x, edge.y, std::max(edge.width - 1u, 1u),
                 std::max(edge.height - 1u, 1u));
}

void XSurface::veil(std::span<const SgRectangle> boxes, const picture::Color& color) {
  if (boxes.empty()) return;
  if (!dots_) {
    constexpr char kDots[] = {0x01, 0x02};
    dots_ = viewkit::PixmapId(display_, XCreateBitmapFromData(display_, target_, kDots, 2, 2));
  }
  XSetStipple(display_, gc_.get(), dots_.get());
  XSetFillStyle(display_, gc_.get(), FillStippled);
  fillBoxes(boxes, color);
  XSetFillStyle(display_, gc_.get(), FillSolid);
}

void XSurface::begin(const picture::Frame& frame, picture::Color background) {
  frame_ = frame;
  if (scaledZoom_ != frame.zoom) {
    scaled_.clear();
    scaledZoom_ = frame.zoom;
  }
  setForeground(background);
  XFillRectangle(display_, target_, gc_.get(), 0, 0, toExtent(frame.width), toExtent(frame.height));
}

void XSurface::fillBoxes(std::span<const SgRectangle> boxes, picture::Color color) {
  std::vector<XRectangle> filled;
  filled.reserve(boxes.size());
  for (const SgRectangle& box : boxes) filled.push_back(toXRectangle(frame_.near(box)));
  setForeground(color);
  XFillRectangles(display_, target_, gc_.get(), filled.data(), static_cast<int>(filled.size()));
}

void XSurface::fillInside(const SgRectangle& box, picture::Color color) {
  const XRectangle outer = toXRectangle(frame_.near(box));
  setForeground(color);
  XFillRectangle(display_, target_, gc_.get(), outer.x + 1, outer.y + 1, std::max(outer.width - 2u, 1u),
                 std::max(outer.height - 2u, 1u));
}

void XSurface::outlineBox(const SgRectangle& box, picture::Color color, int width) {
  const XRectangle edge = toXRectangle(frame_.near(box));
  std::vector<XSegment> lines;
  for (int i = 0; i < width; ++i) {
    const short left = plus(edge.x, -i), top = plus(edge.y, -i);
    const short right = plus(left, edge.width - 1 + 2 * i), bottom = plus(top, edge.height - 1 + 2 * i);
    // Corners are cut by two pixels, which looks round.
    const int corner = box.height < 10 ? 0 : 2;
    lines.push_back(segment(plus(left, corner), top, plus(right, -corner), top));
    lines.push_back(segment(plus(left, corner), bottom, plus(right, -corner), bottom));
    lines.push_back(segment(left, plus(top, corner), left, plus(bottom, -corner)));
    lines.push_back(segment(right, plus(top, corner), right, plus(bottom, -corner)));
    if (corner == 0) continue;
    const short left1 = plus(left, 1), right1 = plus(right, -1), top1 = plus(top, 1),
                bottom1 = plus(bottom, -1);
    for (const short x : {left1, right1})
      for (const short y : {top1, bottom1}) lines.push_back(segment(x, y, x, y));
  }
  setForeground(color);
  XDrawSegments(display_, target_, gc_.get(), lines.data(), static_cast<int>(lines.size()));
}

void XSurface::drawLines(std::span<const picture::Line> lines, picture::Color color, unsigned width) {
  std::vector<XSegment> segments;
  segments.reserve(lines.size());
  for (const auto& [a, b] : lines)
    segments.push_back(segment(toShort(a.x), toShort(a.y), toShort(b.x), toShort(b.y)));
  setForeground(color);
  XSetLineAttributes(display_, gc_.get(), width, LineSolid, CapRound, JoinRound);
  // Xlib splits a long list of segments by itself.
  XDrawSegments(display_, target_, gc_.get(), segments.data(), static_cast<int>(segments.size()));
  XSetLineAttributes(display_, gc_.get(), 0, LineSolid, CapButt, JoinMiter);
}

void XSurface::fillTriangles(std::span<const picture::Triangle> triangles, picture::Color color) {
  setForeground(color);
  for (const picture::Triangle& triangle : triangles) {
    std::array corners{toXPoint(triangle[0]), toXPoint(triangle[1]), toXPoint(triangle[2])};
    XFillPolygon(display_, target_, gc_.get(), corners.data(), static_cast<int>(corners.size()), Convex,
                 CoordModeOrigin);
  }
}

void XSurface::drawHandle(SgPoint middle, picture::Color inside, picture::Color edge) {
  if (!frame_.window().grownBy(picture::kHandleSize).contains(middle)) return;
  constexpr int kSize = picture::kHandleSize;
  const int x = toShort(middle.x) - kSize, y = toShort(middle.y) - kSize;
  setForeground(inside);
  XFillRectangle(display_, target_, gc_.get(), x, y, 2 * kSize, 2 * kSize);
  setForeground(edge);
  XDrawRectangle(display_, target_, gc_.get(), x, y, 2 * kSize, 2 * kSize);
}

void XSurface::setTextZoom(double zoom) {
  textZoom_ = zoom;
  font_->setZoom(zoom);
}

void XSurface::drawText(SgPoint middle, std::string_view text, picture::Color color) {
  if (std::abs(middle.x) > kFarthest || std::abs(middle.y) > kFarthest) return;
  if (textTarget_ != target_) {
    font_->setTarget(target_, visual_, colormap_);
    textTarget_ = target_;
  }
  font_->draw(gc_.get(), toShort(middle.x), toShort(middle.y), text, pixels_.pixelOf(color));
}

void XSurface::drawPicture(picture::NodeId node, const SgRectangle& box, picture::Color foreground,
                           picture::Color background) {
  if (std::abs(box.middle().x) > kFarthest || std::abs(box.middle().y) > kFarthest) return;
  const int x = static_cast<int>(std::lround(box.x)), y = static_cast<int>(std::lround(box.y));
  const auto scaledExtent = [](double extent) {
    return static_cast<unsigned>(std::max(std::lround(extent), 1L));
  };
  ScaledPart part{scaledExtent(box.width), scaledExtent(box.height), 0, 0, 0, 0};
  part.partWidth = part.width;
  part.partHeight = part.height;
  // A picture of moderate size is scaled once; of a huge one no more than what is in view.
  constexpr unsigned kModerate = 2048;
  if (part.width > kModerate || part.height > kModerate) {
    part.x = std::max(-x, 0);
    part.y = std::max(-y, 0);
    const int right = std::min(static_cast<int>(part.width), toExtent(frame_.width) - x);
    const int bottom = std::min(static_cast<int>(part.height), toExtent(frame_.height) - y);
    if (right <= part.x || bottom <= part.y) return;
    part.partWidth = static_cast<unsigned>(right - part.x);
    part.partHeight = static_cast<unsigned>(bottom - part.y);
  }
  const viewkit::PixmapId* scaled = pictureOf(node, part);
  if (!scaled) return;
  if (pictures_[node].depth == depth_) {
    XCopyArea(display_, scaled->get(), target_, gc_.get(), 0, 0, part.partWidth, part.partHeight, x + part.x,
              y + part.y);
  } else if (pictures_[node].depth == 1) {
    setForeground(foreground);
    XSetBackground(display_, gc_.get(), pixels_.pixelOf(background));
    XCopyPlane(display_, scaled->get(), target_, gc_.get(), 0, 0, part.partWidth, part.partHeight, x + part.x,
               y + part.y, 1);
  }
}

const viewkit::PixmapId* XSurface::pictureOf(picture::NodeId node, const ScaledPart& part) {
  const auto known = scaled_.find(node);
  if (known != scaled_.end() && known->second.part == part) return &known->second.pixmap;
  viewkit::PixmapId made = scaledPixmap(display_, pictures_[node], part);
  if (!made) return nullptr;
  constexpr std::size_t kKept = 500;  // enough for a view; scrolling past thousands mustn't keep them all
  if (scaled_.size() >= kKept) scaled_.clear();
  Scaled& kept = scaled_[node];
  kept = {part, std::move(made)};
  return &kept.pixmap;
}

}  // namespace sggraph
