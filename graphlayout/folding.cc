/// @file
/// Finding what a folded node hides, and closing the gaps that it leaves.
#include "graphlayout/folding.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "graphlayout/adjacency.h"
#include "graphlayout/simplegraph.h"

namespace graphlayout {

namespace {

/// Finds what single nodes hide.
class Hiding {
 public:
  Hiding(std::size_t node_count, std::span<const Arc> arcs)
      : out_(node_count, arcs, Incidence::kOut), in_(node_count, arcs, Incidence::kIn), marks_(node_count) {}

  /// Calls `hide(v)` for everything that is reached through `head` only.
  template <class Hide>
  void visit(std::uint32_t head, Hide&& hide) {
    const std::uint64_t reached = ++mark_, seen = ++mark_;
    std::vector<std::uint32_t> below;
    marks_[head] = reached;
    spread(
        {head}, reached, [&](std::uint32_t v) { return marks_[v] != reached; }, below);
    std::vector<std::uint32_t> from_elsewhere, kept;
    for (const std::uint32_t v : below)
      if (std::ranges::any_of(in_.of(v), [&](std::uint32_t parent) { return marks_[parent] < reached; })) {
        marks_[v] = seen;
        from_elsewhere.push_back(v);
      }
    spread(
        from_elsewhere, seen, [&](std::uint32_t v) { return v != head && marks_[v] != seen; }, kept);
    for (const std::uint32_t v : below)
      if (marks_[v] == reached) hide(v);
  }

 private:
  /// Marks all that follows the nodes and is `wanted`, and appends it to `found`.
  template <class Wanted>
  void spread(std::vector<std::uint32_t> open, std::uint64_t mark, Wanted&& wanted,
              std::vector<std::uint32_t>& found) {
    while (!open.empty()) {
      const std::uint32_t v = open.back();
      open.pop_back();
      for (const std::uint32_t child : out_.of(v)) {
        if (!wanted(child)) continue;
        marks_[child] = mark;
        found.push_back(child);
        open.push_back(child);
      }
    }
  }

  Neighbours out_, in_;
  std::vector<std::uint64_t> marks_;  // those of an earlier head are smaller
  std::uint64_t mark_ = 0;
};

/// How places along one axis move where gaps are closed and nodes grow.
class Axis {
 public:
  /// A node's extent along the axis.
  struct Span {
    double from = 0, to = 0, shown_to = 0;
    bool hidden = false;
  };

  explicit Axis(std::vector<Span> spans) {
    std::ranges::sort(spans, {}, &Span::from);
    double moved = 0;
    double end = kFarLeft, hidden_end = kFarLeft;  // of the shown nodes so far, and of the hidden ones
    double covered = kFarLeft,
           widest = 0;  // of the gap after them: up to where it is taken, its largest free part
    bool any = false;   // whether there was a shown node
    for (const Span& span : spans) {
      if (any && span.from > covered) widest = std::max(widest, span.from - covered);
      covered = std::max(covered, span.to);
      if (span.hidden) {
        hidden_end = std::max(hidden_end, span.to);
        continue;
      }
      if (any && hidden_end > end && span.from > end) {
        const double gap = span.from - end, left = std::max(widest, std::min(gap, kLeastGap));
        steps_.push_back({end, end + moved});
        moved -= gap - left;
        steps_.push_back({span.from, span.from + moved});
      }
      if (any && span.to < end) continue;
      any = true;
      end = span.to;
      covered = std::max(end, hidden_end);
      widest = 0;
    }
    std::erase_if(spans, [](const Span& span) { return span.hidden || span.shown_to <= span.to; });
    std::ranges::sort(spans, {}, &Span::to);
    double grown = 0;
    for (const Span& span : spans) growths_.push_back({span.to, grown += span.shown_to - span.to});
  }

  double operator()(double place) const {
    double to = place;
    if (const auto after = std::ranges::upper_bound(steps_, place, {}, &Step::first);
        after != steps_.begin()) {
      const Step& last = *(after - 1);
      to += last.second - last.first;
      if (after != steps_.end() && after->second - after->first != last.second - last.first)
        to = last.second + (place - last.first) * (after->second - last.second) / (after->first - last.first);
    }
    const auto grown = std::ranges::lower_bound(growths_, place, {}, &Step::first);
    return grown == growths_.begin() ? to : to + (grown - 1)->second;
  }

 private:
  static constexpr double kFarLeft = -HUGE_VAL;
  static constexpr double kLeastGap = 20;  // between nodes that hidden ones have parted
  using Step = std::pair<double, double>;
  std::vector<Step> steps_;    // a place, and where it comes to lie; what is between moves in proportion
  std::vector<Step> growths_;  // a place, and how far what comes after it moves
};

}  // namespace

std::vector<std::uint32_t> fold(std::size_t node_count, std::span<const Arc> arcs,
                                std::span<const std::uint32_t> folded) {
  std::vector<std::uint32_t> face(node_count, kShown);
  if (folded.empty()) return face;
  std::vector<Arc> legal;
  for (const Arc& arc : arcs)
    if (arc.from < node_count && arc.to < node_count) legal.push_back(arc);
  Hiding hiding(node_count, legal);
  for (const std::uint32_t head : folded)
    if (head < node_count && face[head] == kShown)
      hiding.visit(head, [&](std::uint32_t v) { face[v] = head; });
  return face;
}

Closed close_up(std::span<const Size> sizes, std::span<const Point> nodes, const Bends& bends,
                const Closing& closing) {
  std::vector<Axis::Span> across, down;
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    const Size now = sane(sizes[i]), shown = sane(closing.sizes[i]);
    const Point& at = nodes[i];
    across.push_back({at.x, at.x + now.width, at.x + shown.width, closing.hidden[i]});
    down.push_back({at.y, at.y + now.height, at.y + shown.height, closing.hidden[i]});
  }
  const Axis x(std::move(across)), y(std::move(down));
  Closed closed{{}, bends};
  for (const Point& at : nodes) closed.nodes.push_back({x(at.x), y(at.y)});
  for (Point& bend : closed.bends.points) bend = {x(bend.x), y(bend.y)};
  return closed;
}

}  // namespace graphlayout
