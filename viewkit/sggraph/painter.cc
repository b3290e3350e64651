/// @file
/// Arcs in batches of lines, nodes as boxes, labels and pictures.
#include "viewkit/sggraph/painter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sggraph {

namespace {

constexpr double kOutlineZoom = 0.25;  // below it boxes have no outline and arcs no heads
constexpr double kFarZoom = 0.4;       // below it arcs are paler, so as not to hide the nodes
constexpr double kHandleAway = 16;     // pixels from the node to the handle of an arc

short toShort(double place) { return static_cast<short>(std::lround(std::clamp(place, -16000.0, 16000.0))); }
unsigned short toExtent(double extent) {
  return static_cast<unsigned short>(std::lround(std::clamp(extent, 1.0, 16000.0)));
}
XPoint toXPoint(SgPoint p) { return {toShort(p.x), toShort(p.y)}; }

/// The part of a box near the viewport, so that the coordinates of a huge node fit the 16 bits of X.
SgRectangle cut(const SgRectangle& box, const Viewport& view) {
  const double left = std::max(box.x, -100.0), top = std::max(box.y, -100.0);
  return {left, top, std::max(std::min(box.right(), view.width() + 100) - left, 1.0),
          std::max(std::min(box.bottom(), view.height() + 100) - top, 1.0)};
}

/// The corners of an arrow head at the end of a line, all in window coordinates.
std::array<XPoint, 3> arrowHead(SgPoint tip, SgPoint before, double headLength) {
  const double length = std::max(distance(before, tip), 1e-6);
  const double dx = (tip.x - before.x) / length * headLength, dy = (tip.y - before.y) / length * headLength;
  constexpr double kSlim = 0.4;
  return {toXPoint(tip), toXPoint({tip.x - dx - dy * kSlim, tip.y - dy + dx * kSlim}),
          toXPoint({tip.x - dx + dy * kSlim, tip.y - dy - dx * kSlim})};
}

XSegment segment(short x1, short y1, short x2, short y2) { return {x1, y1, x2, y2}; }
short plus(short a, int b) { return static_cast<short>(a + b); }

}  // namespace

HandlePlaces handlePlaces(std::span<const SgPoint> path, const Viewport& view) {
  if (path.size() < 2) return {};
  const double away = kHandleAway / view.zoom();
  return {view.toWindow(along(path[0], path[1], away)),
          view.toWindow(along(path[path.size() - 1], path[path.size() - 2], away))};
}

Painter::Painter(Display* display, Window window, XmRenderTable fonts) : display_(display), window_(window) {
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

void Painter::setInks(const Inks& inks) {
  inks_ = inks;
  textOn_.clear();
  farTints_.clear();
}

void Painter::setFonts(XmRenderTable fonts) {
  font_ = std::make_unique<TextFont>(screen_, fonts);
  font_->setTarget(picture_.get(), visual_, colormap_);
}

void Painter::fit(const Viewport& view) {
  const unsigned width = toExtent(view.width()), height = toExtent(view.height());
  if (picture_ && width == width_ && height == height_) return;
  width_ = width;
  height_ = height;
  font_->setTarget(None, nullptr, None);
  picture_ = viewkit::PixmapId(display_, XCreatePixmap(display_, window_, width, height, depth_));
  front_ = viewkit::PixmapId(display_, XCreatePixmap(display_, window_, width, height, depth_));
  frontPainted_ = false;
  font_->setTarget(picture_.get(), visual_, colormap_);
}

void Painter::paint(const Drawing& drawing, const std::vector<NodeLook>& looks,
                    const std::unordered_map<ArcId, std::string>& arcLabels, const Viewport& view,
                    bool handles) {
  fit(view);
  if (picturesZoom_ != view.zoom()) {
    pictures_.clear();
    picturesZoom_ = view.zoom();
  }
  font_->setZoom(view.zoom());
  XSetForeground(display_, gc_.get(), inks_.background);
  XFillRectangle(display_, picture_.get(), gc_.get(), 0, 0, width_, height_);

  const double headLength = view.zoom() < kOutlineZoom ? 0 : std::clamp(9 * view.zoom(), 4.0, 14.0);
  ArcBatch plain, selected;
  std::vector<std::pair<SgPoint, const std::string*>> labels;
  drawing.visitArcs(view.visible().grownBy(20), [&](ArcId arc) {
    addArc(drawing.arcSelected(arc) ? selected : plain, drawing, arc, view, headLength);
    if (arcLabels.empty() || view.zoom() < kTextZoom) return;
    if (const auto label = arcLabels.find(arc); label != arcLabels.end())
      labels.emplace_back(view.toWindow(pathPoint(drawing.path(arc), 0.5)), &label->second);
  });
  drawArcs(picture_.get(), plain, view.zoom() < kFarZoom ? inks_.farArc : inks_.arc, 0);
  drawArcs(picture_.get(), selected, inks_.selection, 3);
  for (const auto& [middle, label] : labels) {
    const double width = font_->zoomedWidth(*label) + 4, height = font_->height() * view.zoom();
    XSetForeground(display_, gc_.get(), inks_.background);
    XFillRectangle(display_, picture_.get(), gc_.get(), toShort(middle.x - width / 2),
                   toShort(middle.y - height / 2), toExtent(width), toExtent(height));
    font_->draw(gc_.get(), toShort(middle.x), toShort(middle.y), *label, inks_.text, width);
  }
  drawNodes(drawing, looks, view);
  if (handles) drawHandles(drawing, view);
}

void Painter::addArc(ArcBatch& batch, const Drawing& drawing, ArcId arc, const Viewport& view,
                     double headLength) const {
  const std::span<const SgPoint> path = drawing.path(arc);
  const SgRectangle window = SgRectangle{0, 0, view.width(), view.height()}.grownBy(2);
  for (std::size_t i = 1; i < path.size(); ++i) {
    SgPoint a = view.toWindow(path[i - 1]), b = view.toWindow(path[i]);
    if (!clipLine(a, b, window)) continue;
    batch.lines.push_back(segment(toShort(a.x), toShort(a.y), toShort(b.x), toShort(b.y)));
  }
  if (path.size() < 2 || headLength == 0) return;
  const SgPoint tip = view.toWindow(path.back()), before = view.toWindow(path[path.size() - 2]);
  if (distance(before, tip) < 1 || !window.grownBy(20).contains(tip)) return;
  const std::array<XPoint, 3> head = arrowHead(tip, before, headLength);
  batch.heads.insert(batch.heads.end(), head.begin(), head.end());
}

void Painter::drawArcs(Drawable target, const ArcBatch& batch, Pixel pixel, unsigned width) {
  if (batch.lines.empty()) return;
  XSetForeground(display_, gc_.get(), pixel);
  XSetLineAttributes(display_, gc_.get(), width, LineSolid, CapRound, JoinRound);
  // Xlib splits a long list of segments by itself.
  std::vector<XSegment> lines = batch.lines;
  XDrawSegments(display_, target, gc_.get(), lines.data(), static_cast<int>(lines.size()));
  XSetLineAttributes(display_, gc_.get(), 0, LineSolid, CapButt, JoinMiter);
  std::vector<XPoint> heads = batch.heads;
  for (std::size_t i = 0; i + 2 < heads.size(); i += 3)
    XFillPolygon(display_, target, gc_.get(), &heads[i], 3, Convex, CoordModeOrigin);
}

void Painter::drawNodes(const Drawing& drawing, const std::vector<NodeLook>& looks, const Viewport& view) {
  std::vector<NodeId> nodes;
  drawing.visitNodes(view.visible(), [&](NodeId node) { nodes.push_back(node); });
  // The same order at every repaint, the order in which nodeAt sees them.
  std::ranges::sort(nodes);
  const bool contents = view.zoom() >= kOutlineZoom;
  if (!contents) {
    // So many that their order doesn't matter: one request per tint.
    std::map<Pixel, std::vector<SgRectangle>> boxes;
    for (const NodeId node : nodes)
      boxes[drawing.nodeSelected(node) ? inks_.selection : farTint(looks[node].tint)].push_back(
          cut(view.toWindow(drawing.box(node)), view));
    for (const auto& [tint, ofTint] : boxes) {
      std::vector<XRectangle> filled;
      filled.reserve(ofTint.size());
      for (const SgRectangle& box : ofTint)
        filled.push_back({toShort(box.x), toShort(box.y), toExtent(box.width), toExtent(box.height)});
      XSetForeground(display_, gc_.get(), tint);
      XFillRectangles(display_, picture_.get(), gc_.get(), filled.data(), static_cast<int>(filled.size()));
    }
    return;
  }
  for (const NodeId node : nodes) {
    const NodeLook& look = looks[node];
    const SgRectangle box = cut(view.toWindow(drawing.box(node)), view);
    const XRectangle outer{toShort(box.x), toShort(box.y), toExtent(box.width), toExtent(box.height)};
    XSetForeground(display_, gc_.get(), look.tint);
    XFillRectangle(display_, picture_.get(), gc_.get(), outer.x + 1, outer.y + 1,
                   std::max(outer.width - 2u, 1u), std::max(outer.height - 2u, 1u));
    drawContents(node, look, view.toWindow(drawing.box(node)), view);
    if (drawing.nodeSelected(node))
      outline(picture_.get(), box, inks_.selection, 2);
    else
      outline(picture_.get(), box, inks_.border, 1);
  }
}

void Painter::drawContents(NodeId node, const NodeLook& look, const SgRectangle& box, const Viewport& view) {
  const SgPoint middle = box.middle();
  if (std::abs(middle.x) > 16000 || std::abs(middle.y) > 16000) return;
  if (look.picture)
    drawPicture(node, look, box, view);
  else if (view.zoom() >= kTextZoom)
    font_->draw(gc_.get(), toShort(middle.x), toShort(middle.y), look.label, textOn(look.tint),
                box.width - 4);
}

void Painter::drawPicture(NodeId node, const NodeLook& look, const SgRectangle& box, const Viewport& view) {
  const int x = static_cast<int>(std::lround(box.x + kPicturePadding * view.zoom()));
  const int y = static_cast<int>(std::lround(box.y + kPicturePadding * view.zoom()));
  const auto scaledExtent = [&](unsigned extent) {
    return static_cast<unsigned>(std::max(std::lround(extent * view.zoom()), 1L));
  };
  ScaledPart part{scaledExtent(look.picture.width), scaledExtent(look.picture.height), 0, 0, 0, 0};
  part.partWidth = part.width;
  part.partHeight = part.height;
  // A picture of moderate size is scaled once; of a huge one no more than what is in view.
  constexpr unsigned kModerate = 2048;
  if (part.width > kModerate || part.height > kModerate) {
    part.x = std::max(-x, 0);
    part.y = std::max(-y, 0);
    const int right = std::min(static_cast<int>(part.width), static_cast<int>(width_) - x);
    const int bottom = std::min(static_cast<int>(part.height), static_cast<int>(height_) - y);
    if (right <= part.x || bottom <= part.y) return;
    part.partWidth = static_cast<unsigned>(right - part.x);
    part.partHeight = static_cast<unsigned>(bottom - part.y);
  }
  const viewkit::PixmapId* scaled = pictureOf(node, look.picture, part);
  if (!scaled) return;
  if (look.picture.depth == depth_) {
    XCopyArea(display_, scaled->get(), picture_.get(), gc_.get(), 0, 0, part.partWidth, part.partHeight,
              x + part.x, y + part.y);
  } else if (look.picture.depth == 1) {
    XSetForeground(display_, gc_.get(), textOn(look.tint));
    XSetBackground(display_, gc_.get(), look.tint);
    XCopyPlane(display_, scaled->get(), picture_.get(), gc_.get(), 0, 0, part.partWidth, part.partHeight,
               x + part.x, y + part.y, 1);
  }
}

const viewkit::PixmapId* Painter::pictureOf(NodeId node, const PixmapSource& source, const ScaledPart& part) {
  const auto known = pictures_.find(node);
  if (known != pictures_.end() && known->second.part == part) return &known->second.pixmap;
  viewkit::PixmapId made = scaledPixmap(display_, source, part);
  if (!made) return nullptr;
  constexpr std::size_t kKept = 500;  // enough for a view; scrolling past thousands mustn't keep them all
  if (pictures_.size() >= kKept) pictures_.clear();
  Scaled& kept = pictures_[node];
  kept = {part, std::move(made)};
  return &kept.pixmap;
}

void Painter::outline(Drawable target, const SgRectangle& box, Pixel pixel, int width) {
  XSetForeground(display_, gc_.get(), pixel);
  std::vector<XSegment> lines;
  for (int i = 0; i < width; ++i) {
    const short left = plus(toShort(box.x), -i), top = plus(toShort(box.y), -i);
    const short right = plus(left, toExtent(box.width) - 1 + 2 * i);
    const short bottom = plus(top, toExtent(box.height) - 1 + 2 * i);
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
  XDrawSegments(display_, target, gc_.get(), lines.data(), static_cast<int>(lines.size()));
}

void Painter::drawHandles(const Drawing& drawing, const Viewport& view) {
  const SgRectangle window = SgRectangle{0, 0, view.width(), view.height()}.grownBy(kHandleSize);
  for (const auto& [order, arc] : drawing.selectedArcs()) {
    if (!drawing.arcShown(arc)) continue;
    const HandlePlaces places = handlePlaces(drawing.path(arc), view);
    for (const SgPoint& place : {places.parent, places.child}) {
      if (!window.contains(place)) continue;
      const int x = toShort(place.x) - kHandleSize, y = toShort(place.y) - kHandleSize;
      XSetForeground(display_, gc_.get(), inks_.handle);
      XFillRectangle(display_, picture_.get(), gc_.get(), x, y, 2 * kHandleSize, 2 * kHandleSize);
      XSetForeground(display_, gc_.get(), inks_.selection);
      XDrawRectangle(display_, picture_.get(), gc_.get(), x, y, 2 * kHandleSize, 2 * kHandleSize);
    }
  }
}

void Painter::paintOverlay(const Drawing& drawing, const Viewport& view, const Overlay& overlay) {
  if (!picture_) return;
  XCopyArea(display_, picture_.get(), front_.get(), gc_.get(), 0, 0, width_, height_, 0, 0);
  frontPainted_ = true;
  const auto boxOf = [&](NodeId node) { return cut(view.toWindow(drawing.box(node)), view); };
  if (overlay.hoverArc != kNone && !drawing.arcSelected(overlay.hoverArc)) {
    ArcBatch batch;
    addArc(batch, drawing, overlay.hoverArc, view, 0);
    drawArcs(front_.get(), batch, inks_.hover, 2);
  }
  if (overlay.hoverNode != kNone)
    outline(front_.get(), boxOf(overlay.hoverNode),
            drawing.nodeSelected(overlay.hoverNode) ? inks_.selection : inks_.hover, 2);
  if (overlay.currentNode != kNone && view.zoom() >= kOutlineZoom) {
    const SgRectangle box = boxOf(overlay.currentNode).grownBy(-std::clamp(3 * view.zoom(), 2.0, 4.0));
    if (box.width > 4 && box.height > 4) {
      XSetForeground(display_, gc_.get(), inks_.focus);
      XSetLineAttributes(display_, gc_.get(), 0, LineOnOffDash, CapButt, JoinMiter);
      constexpr char kDashes[] = {2, 2};
      XSetDashes(display_, gc_.get(), 0, kDashes, 2);
      XDrawRectangle(display_, front_.get(), gc_.get(), toShort(box.x), toShort(box.y),
                     toExtent(box.width) - 1u, toExtent(box.height) - 1u);
      XSetLineAttributes(display_, gc_.get(), 0, LineSolid, CapButt, JoinMiter);
    }
  }
  if (overlay.target != kNone) outline(front_.get(), boxOf(overlay.target), inks_.target, 4);
  if (overlay.rubberLine) {
    ArcBatch batch;
    SgPoint a = overlay.rubberParent, b = overlay.rubberChild;
    if (clipLine(a, b, SgRectangle{0, 0, view.width(), view.height()}.grownBy(2)))
      batch.lines.push_back(segment(toShort(a.x), toShort(a.y), toShort(b.x), toShort(b.y)));
    const std::array<XPoint, 3> head = arrowHead(overlay.rubberChild, overlay.rubberParent, 11);
    batch.heads.assign(head.begin(), head.end());
    drawArcs(front_.get(), batch, inks_.selection, 2);
  }
  XSetForeground(display_, gc_.get(), overlay.focus ? inks_.focus : inks_.border);
  for (unsigned i = 0; i < (overlay.focus ? 2u : 1u); ++i)
    XDrawRectangle(display_, front_.get(), gc_.get(), static_cast<int>(i), static_cast<int>(i),
                   std::max(width_ - 1 - 2 * i, 1u), std::max(height_ - 1 - 2 * i, 1u));
}

void Painter::show(int x, int y, unsigned width, unsigned height) {
  if (!frontPainted_) return;
  const int pastRight = x + static_cast<int>(width) - static_cast<int>(width_);
  const int pastBottom = y + static_cast<int>(height) - static_cast<int>(height_);
  // The corner between the scroll bars, as far as the part reaches into it.
  if (pastRight > 0 && pastBottom > 0) {
    XSetForeground(display_, gc_.get(), inks_.corner);
    XFillRectangle(display_, window_, gc_.get(), static_cast<int>(width_), static_cast<int>(height_),
                   static_cast<unsigned>(pastRight), static_cast<unsigned>(pastBottom));
  }
  // A copy from outside of the pixmap would paint with the background.
  const int copied = static_cast<int>(width) - std::max(pastRight, 0);
  const int copiedDown = static_cast<int>(height) - std::max(pastBottom, 0);
  if (copied > 0 && copiedDown > 0)
    XCopyArea(display_, front_.get(), window_, gc_.get(), x, y, static_cast<unsigned>(copied),
              static_cast<unsigned>(copiedDown), x, y);
}

Pixel Painter::farTint(Pixel tint) {
  if (visual_->c_class != TrueColor) return tint;  // a darker one would take a cell of the colour map
  if (const auto known = farTints_.find(tint); known != farTints_.end()) return known->second;
  XColor color{};
  color.pixel = tint;
  XQueryColor(display_, colormap_, &color);
  for (unsigned short* part : {&color.red, &color.green, &color.blue})
    *part = static_cast<unsigned short>(*part * 7 / 10);
  const Pixel darker = XAllocColor(display_, colormap_, &color) != 0 ? color.pixel : tint;
  return farTints_.emplace(tint, darker).first->second;
}

Pixel Painter::textOn(Pixel tint) {
  if (const auto known = textOn_.find(tint); known != textOn_.end()) return known->second;
  XColor color{};
  color.pixel = tint;
  XQueryColor(display_, colormap_, &color);
  const double brightness = (0.3 * color.red + 0.59 * color.green + 0.11 * color.blue) / 65535;
  const Pixel text = brightness < 0.45 ? WhitePixelOfScreen(screen_) : inks_.text;
  return textOn_.emplace(tint, text).first->second;
}

}  // namespace sggraph
