/// @file
/// Clipping, distances and bounds.
#include "picture/geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace picture {

bool clipLine(SgPoint& a, SgPoint& b, const SgRectangle& box) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  // Liang-Barsky: the line is a + t * (dx, dy); each edge cuts the interval of t from one side.
  double enters = 0, leaves = 1;
  const auto cut = [&](double towards, double room) {
    if (towards == 0) return room >= 0;
    const double t = room / towards;
    if (towards < 0)
      enters = std::max(enters, t);
    else
      leaves = std::min(leaves, t);
    return enters <= leaves;
  };
  if (!cut(-dx, a.x - box.x) || !cut(dx, box.right() - a.x) || !cut(-dy, a.y - box.y) ||
      !cut(dy, box.bottom() - a.y))
    return false;
  const SgPoint start = a;
  if (enters > 0) a = {start.x + enters * dx, start.y + enters * dy};
  if (leaves < 1) b = {start.x + leaves * dx, start.y + leaves * dy};
  return true;
}

double distance(SgPoint a, SgPoint b) { return std::hypot(b.x - a.x, b.y - a.y); }

namespace {

/// From a point to the nearest point of the line from `a` to `b`.
double distanceToLine(SgPoint p, SgPoint a, SgPoint b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double square = dx * dx + dy * dy;
  if (square == 0) return distance(p, a);
  const double t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / square, 0.0, 1.0);
  return distance(p, {a.x + t * dx, a.y + t * dy});
}

}  // namespace

double distanceToPath(SgPoint p, std::span<const SgPoint> path) {
  double nearest = std::numeric_limits<double>::infinity();
  for (std::size_t i = 1; i < path.size(); ++i)
    nearest = std::min(nearest, distanceToLine(p, path[i - 1], path[i]));
  return nearest;
}

double pathLength(std::span<const SgPoint> path) {
  double length = 0;
  for (std::size_t i = 1; i < path.size(); ++i) length += distance(path[i - 1], path[i]);
  return length;
}

SgPoint pathPoint(std::span<const SgPoint> path, double fraction) {
  if (path.empty()) return {};
  double left = pathLength(path) * fraction;
  for (std::size_t i = 1; i < path.size(); ++i) {
    const SgPoint a = path[i - 1], b = path[i];
    const double length = distance(a, b);
    if (length > 0 && left <= length) {
      const double t = left / length;
      return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
    }
    left -= length;
  }
  return path.back();
}

SgPoint along(SgPoint a, SgPoint b, double length) {
  const double whole = distance(a, b);
  if (whole == 0) return a;
  const double t = std::min(length / whole, 1.0 / 3);
  return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
}

SgRectangle united(const SgRectangle& a, const SgRectangle& b) {
  const double x = std::min(a.x, b.x), y = std::min(a.y, b.y);
  return {x, y, std::max(a.right(), b.right()) - x, std::max(a.bottom(), b.bottom()) - y};
}

SgRectangle boundsOf(std::span<const SgPoint> points) {
  if (points.empty()) return {};
  SgRectangle bounds{points[0].x, points[0].y, 0, 0};
  for (const SgPoint& p : points.subspan(1)) bounds = united(bounds, {p.x, p.y, 0, 0});
  return bounds;
}

}  // namespace picture
