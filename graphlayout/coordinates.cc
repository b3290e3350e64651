/// @file
/// Coordinates and bends.
#include "graphlayout/coordinates.h"

#include <algorithm>
#include <cmath>

#include "graphlayout/spacing.h"

namespace graphlayout {
namespace {

/// The x of the middles of all items. Sweep by sweep, each rank is placed as near to the weighted barycentres
/// of its items' neighbours as their order and distances allow.
std::vector<double> place_across(const Layers& layers, const Options& options) {
  std::vector<double> x(layers.item_count());
  Spacing spacing;
  const auto place_rank = [&](std::size_t r, auto pull_on) {
    const auto items = layers.rank(r);
    spacing.clear();
    for (std::size_t i = 0; i < items.size(); ++i) {
      const auto [target, weight] = pull_on(items[i]);
      spacing.add(target, weight, i == 0 ? 0 : distance(layers, items[i - 1], items[i], options));
    }
    spacing.finish([&](std::size_t i, double place) { x[items[i]] = place; });
  };
  struct Pull {
    double target, weight;
  };
  for (std::size_t r = 0; r < layers.rank_count(); ++r) {
    place_rank(r, [](std::uint32_t) { return Pull{0, 1}; });
  }

  const auto barycentre = [&](std::uint32_t item) {
    Pull sum{0, 0};
    const auto add = [&](std::uint32_t other) {
      // A bend in the middle of an arc is uglier than a slanted end: the weights that Gansner, Koutsofios,
      // North and Vo (1993) give to the segments of long arcs.
      const double weight = layers.is_dummy(item) ? (layers.is_dummy(other) ? 8 : 2) : 1;
      sum.target += weight * x[other];
      sum.weight += weight;
    };
    for (const std::uint32_t other : layers.up.of(item)) add(other);
    for (const std::uint32_t other : layers.down.of(item)) add(other);
    if (sum.weight == 0) return Pull{x[item], 1};
    return Pull{sum.target / sum.weight, sum.weight};
  };
  constexpr int kSweeps = 16;
  for (int sweep = 0; sweep < kSweeps; ++sweep) {
    for (std::size_t k = 0; k < layers.rank_count(); ++k) {
      place_rank(sweep % 2 == 0 ? layers.rank_count() - 1 - k : k, barycentre);
    }
  }
  for (double& place : x) place = std::round(place);  // lines that are upright but for a fraction become so
  return x;
}

struct Band {
  double top = 0, bottom = 0;
};

/// Where each rank begins and ends. A gap grows with how far its arcs run sideways, or they would be lost in
/// a flat tangle.
std::vector<Band> place_down(const Layers& layers, std::span<const Size> sizes, std::span<const double> x,
                             const Options& options) {
  std::vector<Band> bands(layers.rank_count());
  double y = 0;
  for (std::size_t r = 0; r < bands.size(); ++r) {
    double height = 0, run = 0;
    std::size_t segments = 0;
    for (const std::uint32_t item : layers.rank(r)) {
      if (!layers.is_dummy(item)) height = std::max(height, sizes[layers.node[item]].height);
      for (const std::uint32_t below : layers.down.of(item)) run += std::abs(x[below] - x[item]), ++segments;
    }
    bands[r] = {y, y + height};
    constexpr double kFlattest = 10;  // mean sideways run per pixel down
    const double wanted = segments == 0 ? 0 : run / static_cast<double>(segments) / kFlattest;
    y +=
        height + std::clamp(wanted, options.rank_gap, options.rank_gap * std::max(1.0, options.rank_stretch));
  }
  return bands;
}

}  // namespace

Layout place(const Layers& layers, std::span<const Size> sizes, std::span<const Arc> arcs,
             const Options& options) {
  const std::vector<double> x = place_across(layers, options);
  const std::vector<Band> bands = place_down(layers, sizes, x, options);
  Layout layout;
  layout.nodes.resize(sizes.size());
  std::vector<std::uint32_t> rank_of(sizes.size());
  for (std::uint32_t r = 0; r < layers.rank_count(); ++r) {
    double end = -HUGE_VAL;  // computed as it is compared, so that rounding can't make neighbours overlap
    for (const std::uint32_t item : layers.rank(r)) {
      const std::uint32_t v = layers.node[item];
      if (v == Layers::kDummy) continue;
      layout.nodes[v] = {std::max(x[item] - sizes[v].width / 2, end), bands[r].top};
      end = layout.nodes[v].x + sizes[v].width;
      rank_of[v] = r;
    }
  }

  layout.bends.starts.reserve(arcs.size() + 1);
  layout.bends.starts.push_back(0);
  std::vector<Point>& points = layout.bends.points;
  for (std::size_t i = 0; i < arcs.size(); ++i) {
    std::uint32_t r = rank_of[arcs[i].from];
    const Point from{x[layers.item_of[arcs[i].from]], bands[r].top + sizes[arcs[i].from].height};
    // Below a node that is shorter than its rank the way leads straight down, past its neighbours.
    if (bands[r].bottom > from.y) points.push_back({from.x, bands[r].bottom});
    for (const std::uint32_t dummy : layers.passage(i)) {
      ++r;
      points.push_back({x[dummy], bands[r].top});
      points.push_back({x[dummy], bands[r].bottom});
    }
    layout.bends.starts.push_back(points.size());
  }
  return layout;
}

}  // namespace graphlayout
