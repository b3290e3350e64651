/// @file
/// Ways past rows of nodes.
#include "graphlayout/router.h"

#include <algorithm>
#include <cmath>

#include "graphlayout/layered.h"

namespace graphlayout {
namespace {

constexpr double kReach = 3000;  // how far aside of its ends an arc looks for its way
constexpr std::size_t kMostBands = 256;
constexpr double kFewest = 1e-6;  // below it, nothing has room

/// Calls `visit(a, b)` for each straight piece of an arc.
template <class Visit>
void visit_pieces(const Ends& ends, std::span<const Point> bends, Visit visit) {
  Point last = ends.from;
  for (const Point& bend : bends) visit(last, bend), last = bend;
  visit(last, ends.to);
}

double x_at(const Point& top, const Point& bottom, double y) {
  if (y <= top.y) return top.x;
  if (y >= bottom.y) return bottom.x;
  return top.x + (bottom.x - top.x) * ((y - top.y) / (bottom.y - top.y));
}

/// The x in one of the gaps that is nearest to the wanted one.
double nearest(std::span<const Point> gaps, double wanted) {
  double best = wanted, least = HUGE_VAL;
  for (const Point& gap : gaps) {
    const double x = std::clamp(wanted, gap.x, gap.y);
    if (std::abs(x - wanted) < least) least = std::abs(x - wanted), best = x;
  }
  return best;
}

}  // namespace

void Router::add(const Arc& arc, std::span<const Point> bends) {
  visit_pieces(ends_of(arc, sizes_, places_), bends, [&](const Point& a, const Point& b) {
    if (a.y < b.y) lines_.push_back({a, b});
    if (a.y > b.y) lines_.push_back({b, a});
  });
}

bool Router::leads_through(const Point& a, const Point& b, std::uint32_t node) const {
  const double left = places_[node].x, right = left + sizes_[node].width;
  const double top = places_[node].y, bottom = top + sizes_[node].height;
  const auto& [upper, lower] = a.y <= b.y ? std::pair{a, b} : std::pair{b, a};
  if (lower.y <= top || upper.y >= bottom) return false;
  const double x1 = x_at(upper, lower, top), x2 = x_at(upper, lower, bottom);
  return std::max(x1, x2) > left && std::min(x1, x2) < right;
}

bool Router::leads_through(const Arc& arc, std::span<const Point> bends, std::uint32_t node) const {
  if (arc.from == node || arc.to == node) return false;
  bool found = false;
  visit_pieces(ends_of(arc, sizes_, places_), bends,
               [&](const Point& a, const Point& b) { found = found || leads_through(a, b, node); });
  return found;
}

std::vector<Point> Router::lead_around(const Arc& arc, std::span<const Point> bends,
                                       std::uint32_t node) const {
  const double left = places_[node].x - clearance();
  const double right = places_[node].x + sizes_[node].width + clearance();
  const double top = places_[node].y, bottom = top + sizes_[node].height;
  std::vector<Point> around;
  visit_pieces(ends_of(arc, sizes_, places_), bends, [&](const Point& a, const Point& b) {
    if (leads_through(a, b, node)) {
      const double middle = (a.x + b.x) / 2, x = middle - left < right - middle ? left : right;
      const bool down = a.y <= b.y;
      around.push_back({x, down ? top : bottom});
      around.push_back({x, down ? bottom : top});
    }
    around.push_back(b);
  });
  around.pop_back();  // the arc's end
  return around;
}

std::vector<Router::Band> Router::bands(const Arc& arc, const Point& upper, const Point& lower, double left,
                                        double right) const {
  std::vector<std::uint32_t> nodes;
  for (std::uint32_t v = 0; v < places_.size(); ++v) {
    const Point& p = places_[v];
    if (v != arc.from && v != arc.to && p.y < lower.y && p.y + sizes_[v].height > upper.y && p.x <= right &&
        p.x + sizes_[v].width >= left)
      nodes.push_back(v);
  }
  std::ranges::sort(nodes, {}, [&](std::uint32_t v) { return places_[v].y; });
  std::vector<Band> bands;
  std::vector<Point> taken;
  const double clear = clearance();
  const auto finish = [&] {
    if (bands.empty()) return;
    std::ranges::sort(taken, {}, &Point::x);
    double from = left;
    for (const Point& t : taken) {
      if (t.x - from > kFewest) bands.back().gaps.push_back({from, t.x});
      from = std::max(from, t.y);
    }
    if (right - from > kFewest) bands.back().gaps.push_back({from, right});
    taken.clear();
  };
  for (const std::uint32_t v : nodes) {
    const double top = std::max(places_[v].y, upper.y);
    const double bottom = std::min(places_[v].y + sizes_[v].height, lower.y);
    if (bands.empty() || top >= bands.back().bottom) {
      finish();
      bands.push_back({top, bottom, {}});
    }
    bands.back().bottom = std::max(bands.back().bottom, bottom);
    taken.push_back({places_[v].x - clear, places_[v].x + sizes_[v].width + clear});
  }
  finish();
  std::erase_if(bands, [](const Band& band) { return band.gaps.empty(); });
  return bands;
}

double Router::least_crossings(const Band& band, double above, double below, std::span<const Across> upper,
                               std::span<const Across> lower) const {
  constexpr std::size_t kPlaces = 300;  // either side
  const double straight = (above + below) / 2;
  std::vector<double> places{nearest(band.gaps, straight), nearest(band.gaps, above),
                             nearest(band.gaps, below)};
  const auto middle = static_cast<std::size_t>(std::ranges::lower_bound(band.gaps, straight, {}, &Point::x) -
                                               band.gaps.begin());
  const std::size_t first = middle > kPlaces ? middle - kPlaces : 0;
  const std::size_t last = std::min(band.gaps.size(), middle + kPlaces);
  for (std::size_t i = first; i < last; ++i) {
    const Point& gap = band.gaps[i];
    places.push_back(std::clamp(straight, gap.x, gap.y));
    const double inset = std::min(options_.arc_gap, (gap.y - gap.x) / 2);
    places.push_back(gap.x + inset);
    places.push_back(gap.y - inset);
  }
  std::ranges::sort(places);
  places.erase(std::unique(places.begin(), places.end()), places.end());

  // A line from `fixed` to a place crosses those that begin left of it and end right of the place, and the
  // other way round: per line one step in the sums over the places.
  std::vector<double> steps(places.size() + 1, 0);
  double crossed = 0;
  const auto count = [&](double fixed, double far, double near) {
    if (far == fixed) return;
    const auto at = [&](auto bound) { return static_cast<std::size_t>(bound - places.begin()); };
    if (far < fixed) {
      crossed += 1;
      steps[at(std::ranges::lower_bound(places, near))] -= 1;
    } else {
      steps[at(std::ranges::upper_bound(places, near))] += 1;
    }
  };
  for (const Across& line : upper) count(above, line.above, line.below);
  for (const Across& line : lower) count(below, line.below, line.above);

  double best = places.front(), least = HUGE_VAL;
  for (std::size_t i = 0; i < places.size(); ++i) {
    crossed += steps[i];
    const double aside = std::abs(places[i] - straight);
    const double cost = crossed + aside / (aside + 1e4);  // of places with as many, the nearest
    if (cost < least) least = cost, best = places[i];
  }
  return best;
}

std::vector<Point> Router::route(const Arc& arc) const {
  const Ends ends = ends_of(arc, sizes_, places_);
  const bool down = ends.from.y <= ends.to.y;
  const Point upper = down ? ends.from : ends.to, lower = down ? ends.to : ends.from;
  const bool beside = places_[arc.from].y < places_[arc.to].y + sizes_[arc.to].height &&
                      places_[arc.to].y < places_[arc.from].y + sizes_[arc.from].height;
  if (beside) {  // below both
    const double y =
        std::max(places_[arc.from].y + sizes_[arc.from].height, places_[arc.to].y + sizes_[arc.to].height) +
        options_.rank_gap / 3;
    return {{ends.from.x, y}, {ends.to.x, y}};
  }
  const double left = std::min(upper.x, lower.x) - kReach, right = std::max(upper.x, lower.x) + kReach;
  const std::vector<Band> passed = bands(arc, upper, lower, left, right);
  const std::size_t count = passed.size();
  if (count == 0 || count > kMostBands) return {};

  std::vector<std::vector<Across>> across(count + 1);
  for (const Line& line : lines_) {
    if (line.bottom.y <= upper.y || line.top.y >= lower.y || std::max(line.top.x, line.bottom.x) < left ||
        std::min(line.top.x, line.bottom.x) > right)
      continue;
    const auto begin = std::ranges::lower_bound(passed, line.top.y, {}, &Band::top) - passed.begin();
    for (auto k = static_cast<std::size_t>(begin); k <= count; ++k) {
      const double from = k == 0 ? upper.y : passed[k - 1].bottom;
      const double to = k == count ? lower.y : passed[k].top;
      if (line.bottom.y <= from) break;
      across[k].push_back({x_at(line.top, line.bottom, from), x_at(line.top, line.bottom, to)});
    }
  }

  std::vector<double> x{upper.x};
  for (const Band& band : passed) {
    const double part = (band.top - upper.y) / std::max(lower.y - upper.y, 1.0);
    x.push_back(nearest(band.gaps, upper.x + (lower.x - upper.x) * part));
  }
  x.push_back(lower.x);
  constexpr int kRounds = 3;
  for (int round = 0; round < kRounds; ++round) {
    bool changed = false;
    for (std::size_t k = 1; k <= count; ++k) {
      const double now = least_crossings(passed[k - 1], x[k - 1], x[k + 1], across[k - 1], across[k]);
      changed = changed || now != x[k];
      x[k] = now;
    }
    if (!changed) break;
  }

  std::vector<Point> bends;
  for (std::size_t k = 1; k <= count; ++k) {
    for (const double y : {passed[k - 1].top, passed[k - 1].bottom}) bends.push_back({x[k], y});
  }
  // Of those on one upright line, the inner ones are not needed.
  std::vector<Point> needed;
  for (std::size_t i = 0; i < bends.size(); ++i) {
    const Point& last = needed.empty() ? upper : needed.back();
    const Point& next = i + 1 < bends.size() ? bends[i + 1] : lower;
    if (bends[i] == last || (bends[i].x == last.x && bends[i].x == next.x)) continue;
    needed.push_back(bends[i]);
  }
  if (!down) std::ranges::reverse(needed);
  return needed;
}

}  // namespace graphlayout
