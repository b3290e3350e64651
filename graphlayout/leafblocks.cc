/// @file
/// Folding and unfolding of leaves.
#include "graphlayout/leafblocks.h"

#include <algorithm>
#include <cmath>

namespace graphlayout {

LeafBlocks::LeafBlocks(const SimpleGraph& graph, const Options& options)
    : graph_(graph), options_(options), block_of_(graph.sizes.size(), kNone), place_(graph.sizes.size(), 0) {
  const std::size_t node_count = graph.sizes.size();
  std::vector<std::uint32_t> parents(node_count, 0), children(node_count, 0), leaves(node_count, 0);
  for (const Arc& arc : graph.arcs) ++children[arc.from], ++parents[arc.to];
  const auto is_leaf = [&](std::uint32_t v) { return parents[v] == 1 && children[v] == 0; };
  for (const Arc& arc : graph.arcs) leaves[arc.from] += is_leaf(arc.to);

  std::vector<std::uint32_t> block_under(node_count, kNone);
  for (const Arc& arc : graph.arcs) {
    if (options_.wrap_leaves == 0 || leaves[arc.from] < options_.wrap_leaves || !is_leaf(arc.to)) continue;
    std::uint32_t& number = block_under[arc.from];
    if (number == kNone) {
      number = static_cast<std::uint32_t>(blocks_.size());
      blocks_.emplace_back();
    }
    block_of_[arc.to] = number;
    place_[arc.to] = static_cast<std::uint32_t>(blocks_[number].leaves.size());
    blocks_[number].leaves.push_back(arc.to);
  }

  // A block comes where the first of its leaves was.
  node_of_.resize(node_count);
  std::vector<std::uint32_t> block_node(blocks_.size(), kNone);
  for (std::uint32_t v = 0; v < node_count; ++v) {
    const auto next = static_cast<std::uint32_t>(sizes_.size());
    if (block_of_[v] == kNone) {
      node_of_[v] = next;
      sizes_.push_back(graph.sizes[v]);
      continue;
    }
    Block& block = blocks_[block_of_[v]];
    if (block_node[block_of_[v]] == kNone) {
      block_node[block_of_[v]] = block.node = next;
      sizes_.emplace_back();
      arrange(block);
    }
    node_of_[v] = block.node;
  }
  arc_of_.reserve(graph.arcs.size());
  std::vector<std::uint32_t> block_arc(blocks_.size(), kNone);
  for (const Arc& arc : graph.arcs) {
    std::uint32_t* seen = block_of_[arc.to] == kNone ? nullptr : &block_arc[block_of_[arc.to]];
    if (seen != nullptr && *seen != kNone) {
      arc_of_.push_back(*seen);
      continue;
    }
    arc_of_.push_back(static_cast<std::uint32_t>(arcs_.size()));
    if (seen != nullptr) *seen = arc_of_.back();
    arcs_.push_back({node_of_[arc.from], node_of_[arc.to]});
  }
}

void LeafBlocks::arrange(Block& block) {
  constexpr double kAspect = 3;  // wide rather than high: the ranks below have to wait for the last row
  const std::size_t count = block.leaves.size();
  const double row_gap = options_.rank_gap / 2;
  double width = 0, height = 0;
  for (const std::uint32_t leaf : block.leaves) {
    width += graph_.sizes[leaf].width + options_.node_gap;
    height += graph_.sizes[leaf].height + row_gap;
  }
  const double wanted = height > 0
                            ? std::sqrt(kAspect * height / std::max(width, 1.0) * static_cast<double>(count))
                            : static_cast<double>(count);
  const auto columns =
      static_cast<std::size_t>(std::clamp(std::ceil(wanted), 1.0, static_cast<double>(count)));
  const std::size_t rows = (count + columns - 1) / columns;

  block.column_width.assign(columns, 0);
  std::vector<double> row_height(rows, 0);
  for (std::size_t i = 0; i < count; ++i) {
    const Size& size = graph_.sizes[block.leaves[i]];
    block.column_width[i % columns] = std::max(block.column_width[i % columns], size.width);
    row_height[i / columns] = std::max(row_height[i / columns], size.height);
  }
  Size& size = sizes_[block.node];
  for (const double w : block.column_width) {
    size.width += options_.node_gap;  // the first one too: the way down to the first column
    block.column_x.push_back(size.width);
    size.width += w;
  }
  for (const double h : row_height) {
    if (!block.row_y.empty()) size.height += row_gap;
    block.row_y.push_back(size.height);
    size.height += h;
  }
}

Layout LeafBlocks::unfold(const Layout& folded) const {
  Layout whole;
  whole.nodes.reserve(graph_.sizes.size());
  for (std::uint32_t v = 0; v < graph_.sizes.size(); ++v) {
    Point p = folded.nodes[node_of_[v]];
    if (block_of_[v] != kNone) {
      const Block& block = blocks_[block_of_[v]];
      const std::size_t columns = block.column_x.size(), column = place_[v] % columns;
      p.x += block.column_x[column] + (block.column_width[column] - graph_.sizes[v].width) / 2;
      p.y += block.row_y[place_[v] / columns];
    }
    whole.nodes.push_back(p);
  }
  whole.bends.starts.push_back(0);
  for (std::size_t i = 0; i < graph_.arcs.size(); ++i) {
    const auto bends = folded.bends.of(arc_of_[i]);
    std::vector<Point>& points = whole.bends.points;
    points.insert(points.end(), bends.begin(), bends.end());
    const std::uint32_t leaf = graph_.arcs[i].to;
    if (block_of_[leaf] != kNone) {
      const Block& block = blocks_[block_of_[leaf]];
      const std::size_t columns = block.column_x.size(), row = place_[leaf] / columns;
      if (row > 0) {
        const Point origin = folded.nodes[block.node];
        const double x = origin.x + block.column_x[place_[leaf] % columns] - options_.node_gap / 2;
        points.push_back({x, origin.y});
        points.push_back({x, origin.y + block.row_y[row] - options_.rank_gap / 2});
      }
    }
    whole.bends.starts.push_back(points.size());
  }
  return whole;
}

}  // namespace graphlayout
