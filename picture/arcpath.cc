/// @file
/// Ports, parallel lanes and loops.
#include "picture/arcpath.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace picture {

namespace {

constexpr double kLaneGap = 10;       // plane units between arcs that run side by side
constexpr double kUsableWidth = 0.8;  // of a node's edge, for arcs side by side

/// Where the line from `inside` to `outside` crosses the edge of `box`.
SgPoint edgePoint(const SgRectangle& box, SgPoint inside, SgPoint outside) {
  SgPoint leaves = outside;
  SgPoint start = inside;
  clipLine(start, leaves, box);
  return leaves;
}

bool isAbove(const SgRectangle& upper, const SgRectangle& lower) { return upper.bottom() <= lower.y; }

SgPoint port(const SgRectangle& box, SgPoint next, Ports ports, double shift) {
  const double x =
      box.middle().x + std::clamp(shift, -kUsableWidth / 2 * box.width, kUsableWidth / 2 * box.width);
  if (ports == Ports::Down && next.y >= box.bottom()) return {x, box.bottom()};
  if (ports == Ports::Down && next.y <= box.y) return {x, box.y};
  return edgePoint(box, box.middle(), next);
}

std::vector<SgPoint> bentPath(const SgRectangle& from, const SgRectangle& to, std::span<const SgPoint> bends,
                              Ports ports, double shift) {
  std::vector<SgPoint> path;
  path.reserve(bends.size() + 2);
  path.push_back(port(from, bends.front(), ports, shift));
  for (const SgPoint& bend : bends) path.push_back({bend.x + shift, bend.y});
  path.push_back(port(to, bends.back(), ports, shift));
  return path;
}

std::vector<SgPoint> straightDown(const SgRectangle& from, const SgRectangle& to, double offset) {
  const bool down = isAbove(from, to);
  SgPoint start{from.middle().x, down ? from.bottom() : from.y};
  SgPoint end{to.middle().x, down ? to.y : to.bottom()};
  // The ends are moved along the nodes' edges. The flatter the line, the further they must be moved to keep
  // the same distance between parallel lines.
  constexpr double kFlat = 0.4;
  const double steepness = std::abs(end.y - start.y) / std::max(distance(start, end), 1.0);
  const double room = kUsableWidth / 2 * std::min(from.width, to.width);
  const double shift = std::clamp(offset / std::max(steepness, kFlat), -room, room);
  start.x += shift;
  end.x += shift;
  if (steepness >= kFlat || offset == 0) return {start, end};
  // Where the edge is too short for that, the middle of the line moves up or down instead, to the same side.
  const bool falls = (end.x - start.x) * (end.y - start.y) > 0;
  return {start, {(start.x + end.x) / 2, (start.y + end.y) / 2 + (falls ? -offset : offset)}, end};
}

std::vector<SgPoint> straightAny(const SgRectangle& from, const SgRectangle& to, const Lane& lane) {
  SgPoint start = from.middle(), end = to.middle();
  const double length = distance(start, end);
  if (length > 0) {
    const double side = lane.reversed ? -lane.offset : lane.offset;
    const double room = 0.45 * std::min({from.width, from.height, to.width, to.height});
    const double shift = std::clamp(side, -room, room) / length;
    const SgPoint step{-(end.y - start.y) * shift, (end.x - start.x) * shift};
    start = {start.x + step.x, start.y + step.y};
    end = {end.x + step.x, end.y + step.y};
  }
  return {edgePoint(from, start, end), edgePoint(to, end, start)};
}

}  // namespace

double laneOffset(std::size_t number, std::size_t count, double width) {
  if (count < 2) return 0;
  const double last = static_cast<double>(count - 1);
  return (static_cast<double>(number) - last / 2) * std::min(kLaneGap, kUsableWidth * width / last);
}

std::vector<SgPoint> arcPath(const SgRectangle& from, const SgRectangle& to, std::span<const SgPoint> bends,
                             Ports ports, const Lane& lane) {
  if (!bends.empty()) return bentPath(from, to, bends, ports, lane.offset);
  if (ports == Ports::Down && (isAbove(from, to) || isAbove(to, from)))
    return straightDown(from, to, lane.offset);
  return straightAny(from, to, lane);
}

std::vector<SgPoint> squarePath(const SgRectangle& from, const SgRectangle& to,
                                std::span<const SgPoint> bends) {
  const auto levelPort = [](const SgRectangle& box, SgPoint next) -> SgPoint {
    if (next.x >= box.x && next.x <= box.right())
      return {next.x, next.y < box.middle().y ? box.y : box.bottom()};
    if (next.y >= box.y && next.y <= box.bottom()) return {next.x < box.x ? box.x : box.right(), next.y};
    return edgePoint(box, box.middle(), next);
  };
  std::vector<SgPoint> path;
  path.reserve(bends.size() + 2);
  path.push_back(levelPort(from, bends.front()));
  path.insert(path.end(), bends.begin(), bends.end());
  path.push_back(levelPort(to, bends.back()));
  return path;
}

Stubs stubsBetween(const SgRectangle& from, const SgRectangle& to) {
  const SgPoint start = edgePoint(from, from.middle(), to.middle());
  const SgPoint end = edgePoint(to, to.middle(), from.middle());
  return {{start, along(start, end, kStubLength)}, {along(end, start, kStubLength), end}};
}

PathEnd::PathEnd(std::span<const SgPoint> path, bool atEnd) {
  double left = kStubLength;
  for (std::size_t i = 0; i < path.size() && size_ < points_.size() && left > 0; ++i) {
    const SgPoint next = path[atEnd ? path.size() - 1 - i : i];
    const SgPoint last = size_ == 0 ? next : points_[size_ - 1];
    const double step = distance(last, next), part = step > left ? left / step : 1;
    points_[size_++] = {last.x + part * (next.x - last.x), last.y + part * (next.y - last.y)};
    left -= step;
  }
  if (atEnd) std::reverse(points_.begin(), points_.begin() + static_cast<std::ptrdiff_t>(size_));
}

std::vector<SgPoint> loopPath(const SgRectangle& box, std::size_t number) {
  constexpr int kPieces = 12;
  const double reach = 18 + 8 * static_cast<double>(std::min<std::size_t>(number, 20));
  const double half = std::min(box.height * 0.35, reach);
  const SgPoint middle{box.right(), box.middle().y};
  std::vector<SgPoint> path;
  for (int i = 0; i <= kPieces; ++i) {
    // From the upper point of the right edge around to the lower one.
    const double turn = std::numbers::pi * i / kPieces;
    const double bulge = std::sin(turn);
    path.push_back({middle.x + reach * std::sqrt(bulge),
                    middle.y - std::cos(turn) * (half + (reach * 0.6 - half) * bulge * bulge)});
  }
  path.front() = {middle.x, middle.y - half};
  path.back() = {middle.x, middle.y + half};
  return path;
}

}  // namespace picture
