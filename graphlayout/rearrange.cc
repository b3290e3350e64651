/// @file
/// Placing new nodes and drawing new arcs amid what stays.
#include "graphlayout/rearrange.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

#include "graphlayout/adjacency.h"
#include "graphlayout/layered.h"
#include "graphlayout/router.h"
#include "graphlayout/simplegraph.h"

namespace graphlayout {
namespace {

constexpr double kFarthest = 1e9;  // no place is beyond: the numbers stay exact enough
/// How many steps over nodes or lines one call may take: some tenths of a second.
constexpr std::size_t kMostSteps = 300'000'000;

bool is_place(const Point& p) { return std::abs(p.x) <= kFarthest && std::abs(p.y) <= kFarthest; }

class Rearrangement {
 public:
  Rearrangement(std::span<const Size> sizes, std::span<const Arc> arcs, const Present& present,
                const Options& options)
      : options_(options), arcs_(arcs), present_(present), graph_(simplify(sizes, arcs)) {
    const std::size_t count = sizes.size();
    up_ = Neighbours(count, graph_.arcs, Incidence::kIn);
    down_ = Neighbours(count, graph_.arcs, Incidence::kOut);
    places_.resize(count);
    placed_.assign(count, true);
    wanted_.assign(count, false);
    moved_.assign(count, false);
    for (std::size_t v = 0; v < count; ++v) {
      const bool known = v < present.nodes.size() && is_place(present.nodes[v]);
      if (known) places_[v] = present.nodes[v];
      placed_[v] = wanted_[v] = known;
    }
    for (const std::uint32_t v : present.new_nodes)
      if (v < count) placed_[v] = false;
  }

  Changes run() {
    place_new_nodes();
    std::vector<bool> loose(arcs_.size(), false);
    for (const std::uint32_t i : present_.new_arcs) {
      if (i >= arcs_.size() || graph_.arc_of[i] == kNone) continue;
      loose[i] = true;
      push_below(arcs_[i].from, arcs_[i].to);
    }
    for (std::size_t i = 0; i < arcs_.size(); ++i) {
      if (graph_.arc_of[i] != kNone && (moved_[arcs_[i].from] || moved_[arcs_[i].to])) loose[i] = true;
    }
    draw(std::move(loose));
    return std::move(changes_);
  }

 private:
  double middle(std::uint32_t v) const { return places_[v].x + graph_.sizes[v].width / 2; }
  double bottom(std::uint32_t v) const { return places_[v].y + graph_.sizes[v].height; }
  bool held(std::uint32_t v) const { return v < present_.held.size() && present_.held[v]; }
  bool may_step(std::size_t steps) {
    steps_ += steps;
    return steps_ <= kMostSteps;
  }

  void put(std::uint32_t v, const Point& place) {
    places_[v] = place;
    placed_[v] = true;
    if (moved_[v]) return;
    moved_[v] = true;
    changes_.nodes.push_back(v);
  }

  /// How far to the right or left a node at `place` would have to go to be clear of all placed nodes, those
  /// of `leaving` aside.
  double way_aside(std::uint32_t v, const Point& place, std::span<const std::uint32_t> leaving) {
    struct Stretch {
      double low, high;
    };
    const Size& size = graph_.sizes[v];
    const double gap = options_.node_gap, half = gap / 2;
    std::vector<Stretch> taken;
    for (std::uint32_t other = 0; other < places_.size(); ++other) {
      if (!placed_[other] || other == v || places_[other].y >= place.y + size.height + half ||
          bottom(other) + half <= place.y || std::ranges::find(leaving, other) != leaving.end())
        continue;
      taken.push_back({places_[other].x - gap - size.width - place.x,
                       places_[other].x + graph_.sizes[other].width + gap - place.x});
    }
    double right = 0, left = 0;
    std::ranges::sort(taken, {}, &Stretch::low);
    for (const Stretch& s : taken)
      if (s.low < right && right < s.high) right = s.high;
    if (right == 0) return 0;
    std::ranges::sort(taken, std::ranges::greater{}, &Stretch::high);
    for (const Stretch& s : taken)
      if (s.low < left && left < s.high) left = s.low;
    return right <= -left ? right : left;
  }

  /// The free place nearest to the wanted one, at its height or somewhat below.
  Point free_place(std::uint32_t v, const Point& wanted, std::span<const std::uint32_t> leaving = {}) {
    constexpr int kRows = 8;
    constexpr double kDearer = 6;  // another row, than as far aside
    Point best = wanted;
    double least = HUGE_VAL;
    for (int row = 0; row < kRows; ++row) {
      const double down = row * (graph_.sizes[v].height + options_.node_gap);
      if (kDearer * down >= least) break;
      const Point place{wanted.x, wanted.y + down};
      const double aside = way_aside(v, place, leaving), cost = std::abs(aside) + kDearer * down;
      if (cost < least) least = cost, best = {place.x + aside, place.y};
    }
    return best;
  }

  /// Where a child of `parent` belongs: in the row of the children that it has, or else in the row below.
  double row_below(std::uint32_t parent, std::uint32_t child) const {
    const double highest = bottom(parent) + options_.rank_gap / 2;
    double row = HUGE_VAL;
    for (const std::uint32_t other : down_.of(parent)) {
      if (other != child && placed_[other] && places_[other].y >= highest)
        row = std::min(row, places_[other].y);
    }
    if (row < HUGE_VAL) return row;
    for (std::uint32_t other = 0; other < places_.size(); ++other) {
      if (other != child && placed_[other] && places_[other].y >= highest)
        row = std::min(row, places_[other].y);
    }
    const double usual = bottom(parent) + options_.rank_gap;
    return row <= usual + options_.rank_gap * std::max(1.0, options_.rank_stretch) ? row : usual;
  }

  Point wish(std::uint32_t v) const {
    const Size& size = graph_.sizes[v];
    for (const std::uint32_t parent : up_.of(v)) {
      if (placed_[parent]) return {middle(parent) - size.width / 2, row_below(parent, v)};
    }
    for (const std::uint32_t child : down_.of(v)) {
      if (placed_[child])
        return {middle(child) - size.width / 2, places_[child].y - options_.rank_gap - size.height};
    }
    double low = 0, left = HUGE_VAL;
    for (std::uint32_t other = 0; other < places_.size(); ++other) {
      if (!placed_[other]) continue;
      low = left == HUGE_VAL ? bottom(other) : std::max(low, bottom(other));
      left = std::min(left, places_[other].x);
    }
    return left == HUGE_VAL ? Point{} : Point{left, low + options_.component_gap};
  }

  /// Those that are wanted somewhere first, then those next to placed ones, then the rest.
  void place_new_nodes() {
    std::vector<std::uint32_t> waiting, next;
    for (std::uint32_t v = 0; v < places_.size(); ++v)
      if (!placed_[v]) waiting.push_back(v);
    if (waiting.empty()) return;
    const auto place = [&](std::uint32_t v) {
      if (placed_[v]) return;
      if (!may_step(8 * places_.size())) {
        crowd_.push_back(v);
        return;
      }
      put(v, free_place(v, wanted_[v] ? places_[v] : wish(v)));
      next.push_back(v);
    };
    std::vector<bool> queued(places_.size(), false);
    const auto spread = [&] {
      for (std::size_t i = 0; i < next.size(); ++i) {
        for (const auto* side : {&down_, &up_})
          for (const std::uint32_t other : side->of(next[i]))
            if (!placed_[other] && !queued[other]) queued[other] = true, place(other);
      }
    };
    for (const std::uint32_t v : waiting)
      if (wanted_[v]) place(v);
    for (std::uint32_t v = 0; v < places_.size(); ++v)
      if (placed_[v] && !moved_[v]) next.push_back(v);
    spread();
    for (const std::uint32_t v : waiting) {
      if (placed_[v] || queued[v]) continue;
      next.clear();
      queued[v] = true;
      place(v);
      spread();
    }
    place_crowd();
  }

  /// What there is no time to find places for, in rows below all else.
  void place_crowd() {
    if (crowd_.empty()) return;
    const Point start = wish(crowd_.front());  // it may be near a neighbour: only below all is surely free
    double low = start.y;
    for (std::uint32_t v = 0; v < places_.size(); ++v)
      if (placed_[v]) low = std::max(low, bottom(v) + options_.component_gap);
    constexpr double kWidth = 4000;
    Point at{start.x, low};
    double height = 0;
    for (const std::uint32_t v : crowd_) {
      const Size& size = graph_.sizes[v];
      if (at.x > start.x && at.x + size.width > start.x + kWidth) {
        at = {start.x, at.y + height + options_.node_gap};
        height = 0;
      }
      put(v, at);
      at.x += size.width + options_.node_gap;
      height = std::max(height, size.height);
    }
  }

  /// Moves `child` below `parent`, and what then has to go down too, unless that is too much.
  void push_below(std::uint32_t parent, std::uint32_t child) {
    const double gap = options_.rank_gap / 2;
    if (places_[child].y >= bottom(parent) + gap) return;
    const std::size_t most = std::clamp<std::size_t>(places_.size() / 50, 4, 10);
    std::vector<std::uint32_t> pushed{child};
    std::unordered_map<std::uint32_t, double> top{{child, row_below(parent, child)}};
    constexpr std::size_t kMostArcs = 64;  // which all have to be drawn anew
    std::size_t arcs = 0;
    for (std::size_t i = 0; i < pushed.size(); ++i) {
      const std::uint32_t v = pushed[i];
      arcs += up_.of(v).size() + down_.of(v).size();
      if (v == parent || held(v) || pushed.size() > most || arcs > kMostArcs) return;
      const double end = top[v] + graph_.sizes[v].height;
      if (!may_step(down_.of(v).size() + places_.size())) return;
      for (const std::uint32_t below : down_.of(v)) {
        const auto known = top.find(below);
        const double now = known == top.end() ? places_[below].y : known->second;
        if (now >= end + gap) continue;
        // A node that is reached again over a longer way counts again: loops come to an end at the limit.
        top[below] = end + options_.rank_gap;
        pushed.push_back(below);
      }
    }
    for (std::size_t i = 0; i < pushed.size(); ++i) {
      const auto rest = std::span(pushed).subspan(i);
      const std::uint32_t v = pushed[i];
      if (std::ranges::find(rest.subspan(1), v) != rest.end()) continue;  // its last turn counts
      double sum = 0;
      std::size_t count = 0;
      for (const auto* side : {&up_, &down_})
        for (const std::uint32_t other : side->of(v)) sum += middle(other), ++count;
      const double x = sum / static_cast<double>(count) - graph_.sizes[v].width / 2;
      may_step(8 * places_.size());
      put(v, free_place(v, {x, top[v]}, rest));
    }
  }

  /// Draws the loose arcs, and leads those that go through a node that was moved around it.
  void draw(std::vector<bool> loose) {
    Router router(graph_.sizes, places_, options_);
    router.expect(arcs_.size() + present_.bends.points.size());
    constexpr std::size_t kMostMoved = 64;  // each is compared with every line
    const std::size_t compared = std::min(changes_.nodes.size(), kMostMoved);
    changes_.bends.starts.push_back(0);
    const auto note = [&](std::uint32_t arc, std::span<const Point> bends) {
      router.add(arcs_[arc], bends);
      changes_.arcs.push_back(arc);
      changes_.bends.points.insert(changes_.bends.points.end(), bends.begin(), bends.end());
      changes_.bends.starts.push_back(changes_.bends.points.size());
    };
    for (std::uint32_t i = 0; i < arcs_.size(); ++i) {
      if (graph_.arc_of[i] == kNone || loose[i]) continue;
      const auto bends = present_.bends.of(i);
      std::vector<Point> around;
      for (std::size_t k = 0; k < compared; ++k) {
        const std::span<const Point> now = around.empty() ? bends : around;
        if (router.leads_through(arcs_[i], now, changes_.nodes[k]))
          around = router.lead_around(arcs_[i], now, changes_.nodes[k]);
      }
      if (around.empty())
        router.add(arcs_[i], bends);
      else
        note(i, around);
    }
    for (std::uint32_t i = 0; i < arcs_.size(); ++i) {
      if (!loose[i]) continue;
      std::vector<Point> bends;
      if (may_step(places_.size() + router.lines())) bends = router.route(arcs_[i]);
      note(i, bends);
    }
    for (const std::uint32_t v : changes_.nodes) changes_.positions.push_back(places_[v]);
  }

  const Options options_;
  const std::span<const Arc> arcs_;
  const Present& present_;
  const SimpleGraph graph_;
  Neighbours up_, down_;
  std::vector<Point> places_;
  std::vector<bool> placed_, wanted_, moved_;
  std::vector<std::uint32_t> crowd_;
  std::size_t steps_ = 0;
  Changes changes_;
};

}  // namespace

Changes rearrange(std::span<const Size> sizes, std::span<const Arc> arcs, const Present& present,
                  const Options& options) {
  return Rearrangement(sizes, arcs, present, sane(options)).run();
}

}  // namespace graphlayout
