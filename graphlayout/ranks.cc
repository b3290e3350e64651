/// @file
/// Cycle breaking and ranks.
#include "graphlayout/ranks.h"

#include <algorithm>

#include "graphlayout/adjacency.h"

namespace graphlayout {
namespace {

/// Nodes in a topological order: every arc leads to a later one (Kahn 1962).
std::vector<std::uint32_t> topological_order(std::size_t node_count, const Neighbours& up,
                                             const Neighbours& down) {
  std::vector<std::uint32_t> order, waiting(node_count);
  order.reserve(node_count);
  for (std::uint32_t v = 0; v < node_count; ++v) {
    waiting[v] = static_cast<std::uint32_t>(up.of(v).size());
    if (waiting[v] == 0) order.push_back(v);
  }
  for (std::size_t i = 0; i < order.size(); ++i) {
    for (const std::uint32_t w : down.of(order[i])) {
      if (--waiting[w] == 0) order.push_back(w);
    }
  }
  return order;
}

/// Renumbers ranks so that none is empty.
void close_gaps(std::vector<std::uint32_t>& rank) {
  if (rank.empty()) return;
  std::vector<std::uint32_t> number(std::ranges::max(rank) + std::size_t{1}, 0);
  for (const std::uint32_t r : rank) number[r] = 1;
  std::uint32_t next = 0;
  for (std::uint32_t& n : number) n = n == 0 ? 0 : next++;
  for (std::uint32_t& r : rank) r = number[r];
}

}  // namespace

std::vector<bool> break_cycles(std::size_t node_count, std::vector<Arc>& arcs) {
  const Incidence out(node_count, arcs, Incidence::kOut);
  enum class State : std::uint8_t { kNew, kOpen, kDone };
  std::vector<State> state(node_count, State::kNew);
  std::vector<bool> turned(arcs.size(), false);
  struct Step {
    std::uint32_t node;
    std::size_t next;
  };
  std::vector<Step> path;  // an explicit stack: chains may be as long as the graph

  const auto walk = [&](std::uint32_t start) {
    if (state[start] != State::kNew) return;
    state[start] = State::kOpen;
    path.push_back({start, 0});
    while (!path.empty()) {
      auto& [node, next] = path.back();
      const auto node_arcs = out.of(node);
      if (next == node_arcs.size()) {
        state[node] = State::kDone;
        path.pop_back();
        continue;
      }
      const std::uint32_t arc = node_arcs[next++];
      const std::uint32_t to = arcs[arc].to;
      if (state[to] == State::kOpen) {
        turned[arc] = true;
      } else if (state[to] == State::kNew) {
        state[to] = State::kOpen;
        path.push_back({to, 0});
      }
    }
  };

  std::vector<bool> has_parent(node_count, false);
  for (const Arc& arc : arcs) has_parent[arc.to] = true;
  for (std::uint32_t v = 0; v < node_count; ++v) {
    if (!has_parent[v]) walk(v);
  }
  for (std::uint32_t v = 0; v < node_count; ++v) walk(v);
  for (std::size_t i = 0; i < arcs.size(); ++i) {
    if (turned[i]) std::swap(arcs[i].from, arcs[i].to);
  }
  return turned;
}

std::vector<std::uint32_t> assign_ranks(std::size_t node_count, std::span<const Arc> arcs) {
  const Neighbours up(node_count, arcs, Incidence::kIn), down(node_count, arcs, Incidence::kOut);
  const std::vector<std::uint32_t> order = topological_order(node_count, up, down);
  std::vector<std::uint32_t> rank(node_count, 0);
  for (const std::uint32_t v : order) {
    for (const std::uint32_t w : down.of(v)) rank[w] = std::max(rank[w], rank[v] + 1);
  }

  // A node's arcs get shorter in sum when it moves towards the side on which it has more of them. What one
  // node gives up its neighbours can use in the same pass; few passes are enough.
  constexpr int kPasses = 8;
  bool moved = true;
  for (int pass = 0; pass < kPasses && moved; ++pass) {
    moved = false;
    for (auto it = order.rbegin(); it != order.rend(); ++it) {
      const std::uint32_t v = *it;
      const auto above = up.of(v), below = down.of(v);
      if (below.size() <= above.size()) continue;
      std::uint32_t lowest = rank[below.front()];
      for (const std::uint32_t w : below) lowest = std::min(lowest, rank[w]);
      if (rank[v] != lowest - 1) rank[v] = lowest - 1, moved = true;
    }
    for (const std::uint32_t v : order) {
      const auto above = up.of(v), below = down.of(v);
      if (above.size() <= below.size()) continue;
      std::uint32_t highest = 0;
      for (const std::uint32_t u : above) highest = std::max(highest, rank[u] + 1);
      if (rank[v] != highest) rank[v] = highest, moved = true;
    }
  }
  close_gaps(rank);
  return rank;
}

}  // namespace graphlayout
