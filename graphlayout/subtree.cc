/// @file
/// The layout of a node and what hangs below it, amid nodes that stay.
#include <algorithm>
#include <cmath>

#include "graphlayout/adjacency.h"
#include "graphlayout/layered.h"
#include "graphlayout/layout.h"
#include "graphlayout/simplegraph.h"

namespace graphlayout {
namespace {

struct Box {
  double left, top, right, bottom;
};

std::vector<std::uint32_t> reachable(const SimpleGraph& graph, std::uint32_t root) {
  const Neighbours down(graph.sizes.size(), graph.arcs, Incidence::kOut);
  std::vector<bool> seen(graph.sizes.size(), false);
  std::vector<std::uint32_t> found{root};
  seen[root] = true;
  for (std::size_t i = 0; i < found.size(); ++i) {
    for (const std::uint32_t child : down.of(found[i])) {
      if (!seen[child]) seen[child] = true, found.push_back(child);
    }
  }
  return found;
}

/// The outlines of the ranks below the root, from above. When comparing them with all that stays would take
/// too long, one outline for all.
std::vector<Box> outlines(std::span<const Size> sizes, const Layout& layout, std::size_t staying) {
  std::vector<Box> boxes;
  for (std::size_t i = 1; i < sizes.size(); ++i) {
    const Point& p = layout.nodes[i];
    boxes.push_back({p.x, p.y, p.x + sizes[i].width, p.y + sizes[i].height});
  }
  std::ranges::sort(boxes, {}, &Box::top);
  const auto unite = [&](auto belongs) {
    std::vector<Box> united;
    for (const Box& box : boxes) {
      if (united.empty() || !belongs(united.back(), box)) {
        united.push_back(box);
        continue;
      }
      Box& last = united.back();
      last = {std::min(last.left, box.left), last.top, std::max(last.right, box.right),
              std::max(last.bottom, box.bottom)};
    }
    return united;
  };
  constexpr std::size_t kMostPairs = 2'000'000;
  std::vector<Box> ranks = unite([](const Box& last, const Box& box) { return box.top < last.bottom; });
  if (ranks.size() * staying <= kMostPairs) return ranks;
  return unite([](const Box&, const Box&) { return true; });
}

/// A stretch of shifts that would cover something.
struct Forbidden {
  double low, high;
};

/// The least shifts up (at least 0) and down (at most 0) that are in no forbidden stretch.
struct Free {
  double up = 0, down = 0;
};
Free nearest_free(std::vector<Forbidden>& stretches) {
  Free free;
  std::ranges::sort(stretches, {}, &Forbidden::low);
  for (const Forbidden& f : stretches) {
    if (f.low < free.up && free.up < f.high) free.up = f.high;
  }
  std::ranges::sort(stretches, std::ranges::greater{}, &Forbidden::high);
  for (const Forbidden& f : stretches) {
    if (f.low < free.down && free.down < f.high) free.down = f.low;
  }
  return free;
}

/// The least shift, right, left or down, at which none of `moving` touches any of `staying`.
Point clear_shift(std::span<const Box> moving, std::span<const Box> staying) {
  std::vector<Forbidden> across, down;
  for (const Box& m : moving) {
    for (const Box& s : staying) {
      if (s.top < m.bottom && m.top < s.bottom) across.push_back({s.left - m.right, s.right - m.left});
      if (s.left < m.right && m.left < s.right) down.push_back({s.top - m.bottom, s.bottom - m.top});
    }
  }
  const Free sideways = nearest_free(across);
  const double below = nearest_free(down).up;
  if (below <= sideways.up && below <= -sideways.down) return {0, below};
  return {sideways.up <= -sideways.down ? sideways.up : sideways.down, 0};
}

}  // namespace

Subtree layout_subtree(std::span<const Size> sizes, std::span<const Arc> arcs,
                       std::span<const Point> positions, std::uint32_t root, const Options& options) {
  Subtree result;
  if (root >= sizes.size()) return result;
  const auto position = [&](std::size_t node) {
    if (node >= positions.size()) return Point{};
    const Point& p = positions[node];
    return std::isfinite(p.x) && std::isfinite(p.y) ? p : Point{};
  };
  result.nodes = reachable(simplify(sizes, arcs), root);

  std::vector<std::uint32_t> number(sizes.size(), kNone);
  std::vector<Size> moved_sizes;
  for (std::uint32_t i = 0; i < result.nodes.size(); ++i) {
    number[result.nodes[i]] = i;
    moved_sizes.push_back(sizes[result.nodes[i]]);
  }
  std::vector<Arc> moved_arcs;
  for (std::uint32_t i = 0; i < arcs.size(); ++i) {
    const Arc& arc = arcs[i];
    if (arc.from >= sizes.size() || arc.to >= sizes.size() || number[arc.from] == kNone) continue;
    result.arcs.push_back(i);  // what an arc leads to from a node that moves moves too
    moved_arcs.push_back({number[arc.from], number[arc.to]});
  }
  const Options sane_options = sane(options);
  const SimpleGraph graph = simplify(moved_sizes, moved_arcs);
  Layout layout = layered(graph, sane_options);
  const Point origin = position(root), at = layout.nodes.front();
  for (Point& p : layout.nodes) p = {p.x - at.x + origin.x, p.y - at.y + origin.y};
  for (Point& p : layout.bends.points) p = {p.x - at.x + origin.x, p.y - at.y + origin.y};

  std::vector<Box> staying;
  for (std::size_t v = 0; v < sizes.size(); ++v) {
    if (number[v] != kNone) continue;
    const Point p = position(v);
    const Size size = sane(sizes[v]);
    const double gap = sane_options.node_gap / 2;
    staying.push_back({p.x - gap, p.y - gap, p.x + size.width + gap, p.y + size.height + gap});
  }
  const Point shift = clear_shift(outlines(graph.sizes, layout, staying.size()), staying);
  for (Point& p : layout.bends.points) p = {p.x + shift.x, p.y + shift.y};
  for (std::size_t i = 1; i < layout.nodes.size(); ++i) {
    layout.nodes[i] = {layout.nodes[i].x + shift.x, layout.nodes[i].y + shift.y};
  }
  result.bends = bends_of(graph, layout, moved_arcs);
  result.positions = std::move(layout.nodes);
  return result;
}

}  // namespace graphlayout
