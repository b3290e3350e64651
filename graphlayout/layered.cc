/// @file
/// Runs the stages of the layered layout.
#include "graphlayout/layered.h"

#include <algorithm>
#include <cmath>

#include "graphlayout/coordinates.h"
#include "graphlayout/layers.h"
#include "graphlayout/leafblocks.h"
#include "graphlayout/ordering.h"
#include "graphlayout/packing.h"
#include "graphlayout/ranks.h"

namespace graphlayout {
namespace {

/// Moves everything so that the drawing starts at (0, 0), and measures it.
void fit(Layout& layout, std::span<const Size> sizes) {
  double left = HUGE_VAL, top = HUGE_VAL, right = -HUGE_VAL, bottom = -HUGE_VAL;
  const auto include = [&](const Point& p, const Size& size) {
    left = std::min(left, p.x), right = std::max(right, p.x + size.width);
    top = std::min(top, p.y), bottom = std::max(bottom, p.y + size.height);
  };
  for (std::size_t i = 0; i < sizes.size(); ++i) include(layout.nodes[i], sizes[i]);
  for (const Point& p : layout.bends.points) include(p, {});
  if (sizes.empty()) left = top = right = bottom = 0;
  for (Point& p : layout.nodes) p = {p.x - left, p.y - top};
  for (Point& p : layout.bends.points) p = {p.x - left, p.y - top};
  layout.width = right - left;
  layout.height = bottom - top;
}

/// A part of a graph that hangs together; numbers are those of the graph.
struct Part {
  std::vector<std::uint32_t> nodes, arcs;
};

/// The parts in the order of their first nodes.
std::vector<Part> split(std::size_t node_count, std::span<const Arc> arcs) {
  std::vector<std::uint32_t> root(node_count);
  for (std::uint32_t v = 0; v < node_count; ++v) root[v] = v;
  const auto find = [&](std::uint32_t v) {
    while (root[v] != v) v = root[v] = root[root[v]];
    return v;
  };
  for (const Arc& arc : arcs) {
    const auto [low, high] = std::minmax({find(arc.from), find(arc.to)});
    root[high] = low;  // the least node stays the root
  }
  std::vector<std::uint32_t> part_of(node_count);
  std::vector<Part> parts;
  for (std::uint32_t v = 0; v < node_count; ++v) {
    const std::uint32_t r = find(v);
    if (r == v) {
      part_of[v] = static_cast<std::uint32_t>(parts.size());
      parts.emplace_back();
    }
    part_of[v] = part_of[r];
    parts[part_of[v]].nodes.push_back(v);
  }
  for (std::uint32_t i = 0; i < arcs.size(); ++i) parts[part_of[arcs[i].from]].arcs.push_back(i);
  return parts;
}

/// Lays out one connected graph.
Layout lay_out(std::span<const Size> sizes, std::vector<Arc> arcs, const Options& options) {
  const std::vector<bool> turned = break_cycles(sizes.size(), arcs);
  Layers layers = build_layers(sizes, arcs, assign_ranks(sizes.size(), arcs));
  reduce_crossings(layers, options);
  Layout layout = place(layers, sizes, arcs, options);
  for (std::size_t i = 0; i < arcs.size(); ++i) {
    if (!turned[i]) continue;
    const auto begin = layout.bends.points.begin();
    std::reverse(begin + static_cast<std::ptrdiff_t>(layout.bends.starts[i]),
                 begin + static_cast<std::ptrdiff_t>(layout.bends.starts[i + 1]));
  }
  fit(layout, sizes);
  return layout;
}

/// Lays out each part and packs them; single nodes make up a close block of their own.
Layout lay_out_parts(std::span<const Size> sizes, std::span<const Arc> arcs, const Options& options) {
  const std::vector<Part> parts = split(sizes.size(), arcs);
  std::vector<Layout> layouts(parts.size());
  std::vector<Size> boxes, singles;
  std::vector<std::size_t> box_of(parts.size());
  std::vector<std::uint32_t> single_nodes, number(sizes.size());
  std::size_t first_box = 0;
  const bool first_single = !parts.empty() && parts.front().nodes.size() == 1;
  for (std::size_t p = 0; p < parts.size(); ++p) {
    if (parts[p].nodes.size() == 1) {
      single_nodes.push_back(parts[p].nodes.front());
      singles.push_back(sizes[parts[p].nodes.front()]);
      continue;
    }
    std::vector<Size> part_sizes;
    std::vector<Arc> part_arcs;
    for (std::uint32_t i = 0; i < parts[p].nodes.size(); ++i) {
      number[parts[p].nodes[i]] = i;
      part_sizes.push_back(sizes[parts[p].nodes[i]]);
    }
    for (const std::uint32_t i : parts[p].arcs)
      part_arcs.push_back({number[arcs[i].from], number[arcs[i].to]});
    layouts[p] = lay_out(part_sizes, std::move(part_arcs), options);
    box_of[p] = boxes.size();
    boxes.push_back({layouts[p].width, layouts[p].height});
  }

  Layout block;  // of the single nodes
  block.nodes = pack(singles, 0, options.node_gap, options.aspect);
  fit(block, singles);
  if (!singles.empty()) {
    if (first_single) first_box = boxes.size();
    boxes.push_back({block.width, block.height});
  }
  const std::vector<Point> corners = pack(boxes, first_box, options.component_gap, options.aspect);

  Layout whole;
  whole.nodes.resize(sizes.size());
  const auto moved = [](const Point& p, const Point& by) { return Point{p.x + by.x, p.y + by.y}; };
  for (std::size_t i = 0; i < singles.size(); ++i) {
    whole.nodes[single_nodes[i]] = moved(block.nodes[i], corners.back());
  }
  whole.bends.starts.assign(arcs.size() + 1, 0);
  for (std::size_t p = 0; p < parts.size(); ++p) {
    for (std::size_t k = 0; k < parts[p].arcs.size(); ++k) {
      whole.bends.starts[parts[p].arcs[k] + 1] = layouts[p].bends.of(k).size();
    }
  }
  for (std::size_t i = 0; i < arcs.size(); ++i) whole.bends.starts[i + 1] += whole.bends.starts[i];
  whole.bends.points.resize(whole.bends.starts.back());
  for (std::size_t p = 0; p < parts.size(); ++p) {
    if (parts[p].nodes.size() == 1) continue;
    const Point corner = corners[box_of[p]];
    for (std::size_t k = 0; k < parts[p].nodes.size(); ++k) {
      whole.nodes[parts[p].nodes[k]] = moved(layouts[p].nodes[k], corner);
    }
    for (std::size_t k = 0; k < parts[p].arcs.size(); ++k) {
      std::size_t at = whole.bends.starts[parts[p].arcs[k]];
      for (const Point& point : layouts[p].bends.of(k)) whole.bends.points[at++] = moved(point, corner);
    }
  }
  return whole;
}

}  // namespace

Layout layered(const SimpleGraph& graph, const Options& options) {
  const LeafBlocks blocks(graph, options);
  Layout layout = blocks.unfold(lay_out_parts(blocks.sizes(), blocks.arcs(), options));
  fit(layout, graph.sizes);
  return layout;
}

Ends ends_of(const Arc& arc, std::span<const Size> sizes, std::span<const Point> positions) {
  const auto end = [&](std::uint32_t node, bool bottom) {
    const Point& p = positions[node];
    return Point{p.x + sizes[node].width / 2, p.y + (bottom ? sizes[node].height : 0)};
  };
  const bool down = positions[arc.from].y <= positions[arc.to].y;
  return {end(arc.from, down), end(arc.to, !down)};
}

Bends bends_of(const SimpleGraph& graph, const Layout& layout, std::span<const Arc> arcs) {
  // An arc may have thousands of bends and thousands of duplicates: at some point these have to do without.
  constexpr std::size_t kMostForDuplicates = 4'000'000;
  std::vector<bool> drawn(graph.arcs.size(), false);
  Bends bends;
  bends.starts.reserve(arcs.size() + 1);
  bends.starts.push_back(0);
  for (std::size_t i = 0; i < arcs.size(); ++i) {
    const std::uint32_t arc = graph.arc_of[i];
    if (arc != kNone && (!drawn[arc] || bends.points.size() < kMostForDuplicates)) {
      drawn[arc] = true;
      const auto points = layout.bends.of(arc);
      const Ends ends = ends_of(arcs[i], graph.sizes, layout.nodes);
      Point last = ends.from;
      for (std::size_t k = 0; k < points.size(); ++k) {
        const Point& next = k + 1 < points.size() ? points[k + 1] : ends.to;
        const bool upright = points[k].x == last.x && points[k].x == next.x;
        if (upright || points[k] == last) continue;
        bends.points.push_back(last = points[k]);
      }
    }
    bends.starts.push_back(bends.points.size());
  }
  return bends;
}

}  // namespace graphlayout
