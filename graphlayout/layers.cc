/// @file
/// Cutting a graph into ranks.
#include "graphlayout/layers.h"

#include <algorithm>
#include <numeric>

namespace graphlayout {
namespace {

/// Whether each arc may have its dummies: short ones first, until the budget is used up.
std::vector<bool> grant_dummies(std::size_t node_count, std::span<const Arc> arcs,
                                std::span<const std::uint32_t> ranks) {
  constexpr std::size_t kPerElement = 8, kMost = 4'000'000;
  const std::size_t budget = std::min(kPerElement * (node_count + arcs.size()), kMost);
  const auto span_of = [&](std::uint32_t arc) { return ranks[arcs[arc].to] - ranks[arcs[arc].from]; };

  std::vector<std::uint32_t> by_span(arcs.size());
  std::iota(by_span.begin(), by_span.end(), 0u);
  std::ranges::stable_sort(by_span, {}, span_of);
  std::vector<bool> granted(arcs.size(), false);
  std::size_t used = 0;
  for (const std::uint32_t arc : by_span) {
    used += span_of(arc) - 1;
    if (used > budget) break;
    granted[arc] = true;
  }
  return granted;
}

/// All items in the order of a depth-first walk over the segments. Parents come before children: a node's
/// other parents are placed, with all above them, before the walk goes on below it, so that trees that grow
/// up as well as trees that grow down come out without crossings.
std::vector<std::uint32_t> walk_order(std::size_t item_count, std::span<const Arc> segments) {
  const Neighbours up(item_count, segments, Incidence::kIn), down(item_count, segments, Incidence::kOut);
  std::vector<std::uint32_t> order;
  order.reserve(item_count);
  std::vector<bool> seen(item_count, false);
  struct Step {
    std::uint32_t item;
    std::size_t next;
  };
  std::vector<Step> path;
  const auto visit = [&](std::uint32_t item) {
    if (seen[item]) return;
    seen[item] = true;
    order.push_back(item);
    path.push_back({item, 0});
  };
  const auto walk = [&](std::uint32_t start) {
    visit(start);
    while (!path.empty()) {
      const std::uint32_t item = path.back().item;
      const std::size_t next = path.back().next++;
      const auto above = up.of(item), below = down.of(item);
      if (next < above.size()) {
        visit(above[next]);
      } else if (next - above.size() < below.size()) {
        visit(below[next - above.size()]);
      } else {
        path.pop_back();
      }
    }
  };
  for (std::uint32_t item = 0; item < item_count; ++item) {
    if (up.of(item).empty()) walk(item);
  }
  return order;
}

}  // namespace

Layers build_layers(std::span<const Size> sizes, std::span<const Arc> arcs,
                    std::span<const std::uint32_t> ranks) {
  const std::size_t node_count = sizes.size();
  const std::vector<bool> granted = grant_dummies(node_count, arcs, ranks);

  // Numbered as they come first: nodes, then dummies arc by arc.
  std::vector<std::uint32_t> item_rank(ranks.begin(), ranks.end());
  std::vector<Arc> segments;
  Layers layers;
  layers.passage_starts.reserve(arcs.size() + 1);
  layers.passage_starts.push_back(0);
  for (std::size_t i = 0; i < arcs.size(); ++i) {
    if (granted[i]) {
      std::uint32_t last = arcs[i].from;
      for (std::uint32_t r = ranks[arcs[i].from] + 1; r < ranks[arcs[i].to]; ++r) {
        const auto dummy = static_cast<std::uint32_t>(item_rank.size());
        item_rank.push_back(r);
        layers.passages.push_back(dummy);
        segments.push_back({last, dummy});
        last = dummy;
      }
      segments.push_back({last, arcs[i].to});
    }
    layers.passage_starts.push_back(layers.passages.size());
  }

  // Renumbered by rank, in the order of the walk: neighbours on the screen are neighbours in memory.
  const std::size_t item_count = item_rank.size();
  const std::uint32_t rank_count = item_rank.empty() ? 0 : std::ranges::max(ranks) + 1;
  layers.rank_starts.assign(rank_count + std::size_t{1}, 0);
  for (const std::uint32_t r : item_rank) ++layers.rank_starts[r + 1];
  for (std::size_t r = 0; r < rank_count; ++r) layers.rank_starts[r + 1] += layers.rank_starts[r];
  std::vector<std::uint32_t> next(layers.rank_starts.begin(), layers.rank_starts.end() - 1),
      number(item_count);
  for (const std::uint32_t item : walk_order(item_count, segments)) number[item] = next[item_rank[item]]++;

  layers.order.resize(item_count);
  std::iota(layers.order.begin(), layers.order.end(), 0u);
  layers.node.assign(item_count, Layers::kDummy);
  layers.width.assign(item_count, 0);
  for (std::uint32_t v = 0; v < node_count; ++v) {
    layers.node[number[v]] = v;
    layers.width[number[v]] = sizes[v].width;
  }
  layers.item_of.assign(number.begin(), number.begin() + static_cast<std::ptrdiff_t>(node_count));
  for (std::uint32_t& dummy : layers.passages) dummy = number[dummy];
  for (Arc& segment : segments) segment = {number[segment.from], number[segment.to]};
  layers.up = Neighbours(item_count, segments, Incidence::kIn);
  layers.down = Neighbours(item_count, segments, Incidence::kOut);
  return layers;
}

double distance(const Layers& layers, std::uint32_t left, std::uint32_t right, const Options& options) {
  const bool arc = layers.is_dummy(left) || layers.is_dummy(right);
  return (layers.width[left] + layers.width[right]) / 2 + (arc ? options.arc_gap : options.node_gap);
}

}  // namespace graphlayout
