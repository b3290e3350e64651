/// @file
/// Where gliding nodes are.
#include "viewkit/sggraph/glide.h"

#include <utility>

namespace sggraph {

namespace {

constexpr std::chrono::duration<double> kTime = std::chrono::milliseconds(150);
constexpr std::size_t kMostNodes = 200'000;                     // of a graph
constexpr std::size_t kMostGliding = 1'000, kMostArcs = 4'000;  // what is painted of it many times a second

}  // namespace

double Glide::left() const {
  if (!begun_) return 1;
  const double part = std::chrono::duration<double>(Clock::now() - *begun_) / kTime;
  return part >= 1 ? 0 : (1 - part) * (1 - part);  // it comes to rest slowly
}

void Glide::note(const picture::Drawing& drawing, const picture::Frame& frame) {
  before_.clear();
  if (drawing.countNodes() > kMostNodes) return;
  zoom_ = frame.zoom;
  const double rest = left();
  drawing.visitAllNodes([&](picture::NodeId node) {
    SgPoint corner{drawing.box(node).x, drawing.box(node).y};
    if (const auto way = ways_.find(node); way != ways_.end())
      corner = {corner.x + rest * way->second.x, corner.y + rest * way->second.y};
    before_.push_back({drawing.stableNodeId(node), frame.toWindow(corner)});
  });
}

void Glide::start(const picture::Drawing& drawing, const picture::Frame& frame) {
  ways_.clear();
  begun_.reset();
  const std::vector<Seen> before = std::exchange(before_, {});
  if (frame.zoom != zoom_) return;
  std::size_t arcs = 0;
  for (const Seen& seen : before) {
    const picture::NodeId node = drawing.nodeOf(seen.node);
    if (node == picture::kNone || !drawing.shown(node)) continue;
    const SgRectangle now = frame.toWindow(drawing.box(node));
    const SgRectangle then{seen.corner.x, seen.corner.y, now.width, now.height};
    constexpr double kLeast = 0.5;  // pixels
    if (picture::distance({then.x, then.y}, {now.x, now.y}) < kLeast) continue;
    // What comes from far away is not seen to come.
    const SgRectangle near = frame.window().grownBy(frame.width + frame.height);
    if (!now.touches(frame.window()) && !then.touches(frame.window())) continue;
    if (!near.touches(then)) continue;
    ways_[node] = {(then.x - now.x) / frame.zoom, (then.y - now.y) / frame.zoom};
    drawing.visitDrawnArcsOf(node, [&](picture::ArcId) { ++arcs; });
    if (ways_.size() > kMostGliding || arcs > kMostArcs) {
      ways_.clear();
      return;
    }
  }
}

const picture::Offsets& Glide::offsets() {
  if (!begun_) begun_ = Clock::now();
  const double rest = left();
  if (rest == 0) stop();
  offsets_.clear();
  for (const auto& [node, way] : ways_) offsets_[node] = {rest * way.x, rest * way.y};
  return offsets_;
}

}  // namespace sggraph
