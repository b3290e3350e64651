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

void Router::Passage::note(Lines& lines, double near, double far) const {
  if (near < places.front() || near > places.back()) return;  // the same for every place
  // Thousands of lines are looked up: without branches, since no guess about them comes true.
  const double* first = places.data();
  for (std::size_t rest = places.size(); rest > 1;) {
    const std::size_t half = rest / 2;
    first += half * (first[half - 1] < near);
    rest -= half;
  }
  first += *first < near;
  const auto before = static_cast<std::uint32_t>(first - places.data());
  const double* const end = places.data() + places.size();
  while (first != end && *first == near) ++first;
  lines.push_back({near, far, before, static_cast<std::uint32_t>(first - places.data())});
}

double Router::Passage::least_crossings(double above, double below) const {
  // A line from `fixed` to a place crosses those that begin left of it and end right of the place, and the
  // other way round: per line one step in the sums over the places.
  std::vector<int> steps(places.size() + 1, 0);
  int crossed = 0;
  const auto count = [&](double fixed, const Lines& lines) {
    for (const Near& line : lines) {
      crossed += line.far < fixed;
      steps[line.before] -= line.far < fixed;
      steps[line.up_to] += line.far > fixed;
    }
  };
  count(above, upper);
  count(below, lower);

  const double straight = (above + below) / 2;
  double best = straight, least = HUGE_VAL;
  const auto compare = [&](double place, int crossings) {
    const double aside = std::abs(place - straight);
    const double cost = crossings + aside / (aside + 1e4);  // of places with as many, the nearest
    if (cost < least) least = cost, best = place;
  };
  for (std::size_t i = 0; i < places.size(); ++i) compare(places[i], crossed += steps[i]);

  const auto crossings_at = [&](double place) {
    int sum = 0;
    const auto add = [&](double fixed, const Lines& lines) {
      for (const Near& line : lines)
        sum += line.far < fixed ? line.near > place : line.far > fixed && line.near < place;
    };
    add(above, upper);
    add(below, lower);
    return sum;
  };
  for (const double wanted : {straight, above, below}) {
    const double place = nearest(band.gaps, wanted);
    if (!std::ranges::binary_search(places, place)) compare(place, crossings_at(place));
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

  std::vector<Passage> passages;
  for (const Band& band : passed) {
    std::vector<double> places;
    for (const Point& gap : band.gaps) {
      const double inset = std::min(options_.arc_gap, (gap.y - gap.x) / 2);
      places.insert(places.end(), {gap.x, gap.x + inset, gap.y - inset, gap.y});
    }
    places.erase(std::unique(places.begin(), places.end()), places.end());
    passages.push_back({band, std::move(places), {}, {}});
  }
  for (const Line& line : lines_) {
    if (line.bottom.y <= upper.y || line.top.y >= lower.y || std::max(line.top.x, line.bottom.x) < left ||
        std::min(line.top.x, line.bottom.x) > right)
      continue;
    const auto begin = std::ranges::lower_bound(passed, line.top.y, {}, &Band::top) - passed.begin();
    for (auto k = static_cast<std::size_t>(begin); k <= count; ++k) {
      const double from = k == 0 ? upper.y : passed[k - 1].bottom;
      const double to = k == count ? lower.y : passed[k].top;
      if (line.bottom.y <= from) break;
      const double above = x_at(line.top, line.bottom, from), below = x_at(line.top, line.bottom, to);
      if (k > 0) passages[k - 1].note(passages[k - 1].lower, above, below);
      if (k < count) passages[k].note(passages[k].upper, below, above);
    }
  }

  std::vector<double> x{upper.x};
  for (const Band& band : passed) {
    const double part = (band.top - upper.y) / std::max(lower.y - upper.y, 1.0);
    x.push_back(nearest(band.gaps, upper.x + (lower.x - upper.x) * part));
  }
  x.push_back(lower.x);
  constexpr int kRounds = 3;
  std::vector<bool> settled(count + 2, false);  // both neighbours are where they were the last time
  for (int round = 0; round < kRounds; ++round) {
    for (std::size_t k = 1; k <= count; ++k) {
      if (settled[k]) continue;
      const double now = passages[k - 1].least_crossings(x[k - 1], x[k + 1]);
      if (now != x[k]) settled[k - 1] = settled[k + 1] = false;
      settled[k] = true;
      x[k] = now;
    }
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
