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

void move(Layout& layout, const Point& by) {
  for (Point& p : layout.nodes) p = {p.x + by.x, p.y + by.y};
  for (Point& p : layout.bends.points) p = {p.x + by.x, p.y + by.y};
}

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
  move(layout, {-left, -top});
  layout.width = right - left;
  layout.height = bottom - top;
}

/// A connected component of a graph; numbers are those of the graph.
struct Component {
  std::vector<std::uint32_t> nodes, arcs;
};

/// The components in the order of their first nodes, found by a disjoint-set forest. All nodes without arcs
/// count as one component.
std::vector<Component> split(std::size_t node_count, std::span<const Arc> arcs) {
  std::vector<std::uint32_t> root(node_count);
  for (std::uint32_t v = 0; v < node_count; ++v) root[v] = v;
  const auto find = [&](std::uint32_t v) {
    while (root[v] != v) v = root[v] = root[root[v]];
    return v;
  };
  std::vector<bool> single(node_count, true);
  for (const Arc& arc : arcs) {
    single[arc.from] = single[arc.to] = false;
    const auto [low, high] = std::minmax({find(arc.from), find(arc.to)});
    root[high] = low;  // the least node stays the root
  }
  std::vector<Component> components;
  std::vector<std::uint32_t> component_of(node_count, kNone);
  std::uint32_t singles = kNone;
  for (std::uint32_t v = 0; v < node_count; ++v) {
    std::uint32_t& component = single[v] ? singles : component_of[find(v)];
    if (component == kNone) {
      component = static_cast<std::uint32_t>(components.size());
      components.emplace_back();
    }
    components[component].nodes.push_back(v);
    component_of[v] = component;
  }
  for (std::uint32_t i = 0; i < arcs.size(); ++i) components[component_of[arcs[i].from]].arcs.push_back(i);
  return components;
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

/// Lays out nodes without arcs: a close block.
Layout lay_out_singles(std::span<const Size> sizes, const Options& options) {
  Layout layout;
  layout.nodes = pack(sizes, options.node_gap, options.aspect);
  fit(layout, sizes);
  return layout;
}

/// Lays out each component and packs them.
Layout lay_out_components(std::span<const Size> sizes, std::span<const Arc> arcs, const Options& options) {
  const std::vector<Component> components = split(sizes.size(), arcs);
  std::vector<Layout> layouts;
  std::vector<Size> boxes;
  std::vector<std::uint32_t> number(sizes.size());
  for (const Component& component : components) {
    std::vector<Size> own_sizes;
    std::vector<Arc> own_arcs;
    for (const std::uint32_t v : component.nodes) {
      number[v] = static_cast<std::uint32_t>(own_sizes.size());
      own_sizes.push_back(sizes[v]);
    }
    for (const std::uint32_t i : component.arcs)
      own_arcs.push_back({number[arcs[i].from], number[arcs[i].to]});
    layouts.push_back(own_arcs.empty() ? lay_out_singles(own_sizes, options)
                                       : lay_out(own_sizes, std::move(own_arcs), options));
    boxes.push_back({layouts.back().width, layouts.back().height});
  }
  const std::vector<Point> corners = pack(boxes, options.component_gap, options.aspect);

  Layout whole;
  whole.nodes.resize(sizes.size());
  std::vector<std::span<const Point>> bends(arcs.size());
  for (std::size_t c = 0; c < components.size(); ++c) {
    const auto& [nodes, own_arcs] = components[c];
    move(layouts[c], corners[c]);
    for (std::size_t k = 0; k < nodes.size(); ++k) whole.nodes[nodes[k]] = layouts[c].nodes[k];
    for (std::size_t k = 0; k < own_arcs.size(); ++k) bends[own_arcs[k]] = layouts[c].bends.of(k);
  }
  whole.bends.starts.push_back(0);
  for (const auto& points : bends) {
    whole.bends.points.insert(whole.bends.points.end(), points.begin(), points.end());
    whole.bends.starts.push_back(whole.bends.points.size());
  }
  return whole;
}

}  // namespace

Layout layered(const SimpleGraph& graph, const Options& options) {
  const LeafBlocks blocks(graph, options);
  Layout layout = blocks.unfold(lay_out_components(blocks.sizes(), blocks.arcs(), options));
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
