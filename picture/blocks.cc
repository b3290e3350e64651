/// @file
/// Blocks by the tree of the right-angled arcs.
#include "picture/blocks.h"

#include <algorithm>
#include <ranges>

#include "picture/drawing.h"

namespace picture {

namespace {

struct InTree {
  NodeId parent = kNone;
  std::uint32_t children = 0, unseen = 0;  // of the children, those whose bounds are not known yet
  Block block;

  bool isHead(const std::vector<InTree>& nodes) const {
    return children > 0 && (parent == kNone || nodes[parent].children > 1);
  }
};

/// The nodes that have a parent or children.
std::vector<InTree> treeOf(const Drawing& drawing) {
  std::vector<InTree> nodes;
  drawing.visitAllArcs([&](ArcId arc) {
    if (!drawing.isSquare(arc) || !drawing.arcShown(arc) || drawing.isRedirected(arc)) return;
    const NodeId from = drawing.from(arc), to = drawing.to(arc);
    nodes.resize(std::max<std::size_t>(nodes.size(), std::max(from, to) + 1));
    if (nodes[to].parent != kNone) return;
    nodes[to].parent = from;
    nodes[from].unseen = ++nodes[from].children;
  });
  return nodes;
}

}  // namespace

std::vector<Block> blocksOf(const Drawing& drawing) {
  std::vector<InTree> nodes = treeOf(drawing);
  // Children before parents. Nodes in a circle never have their turn.
  std::vector<NodeId> order;
  for (NodeId node = 0; node < nodes.size(); ++node) {
    if (nodes[node].parent == kNone && nodes[node].children == 0) continue;
    nodes[node].block = {.node = node, .box = drawing.box(node)};
    if (nodes[node].children == 0) order.push_back(node);
  }
  for (std::size_t i = 0; i < order.size(); ++i) {
    const InTree& child = nodes[order[i]];
    if (child.parent == kNone) continue;
    InTree& parent = nodes[child.parent];
    parent.block.box = united(parent.block.box, child.block.box);
    parent.block.height = std::max(parent.block.height, child.block.height + (child.isHead(nodes) ? 1 : 0));
    if (--parent.unseen == 0) order.push_back(child.parent);
  }

  std::vector<Block> blocks;
  for (const NodeId number : std::views::reverse(order)) {
    InTree& node = nodes[number];
    if (node.parent != kNone) {
      const InTree& parent = nodes[node.parent];
      node.block.depth = parent.block.depth + (parent.isHead(nodes) ? 1 : 0);
    }
    if (node.isHead(nodes)) blocks.push_back(node.block);
  }
  std::ranges::stable_sort(blocks, {}, &Block::depth);
  return blocks;
}

}  // namespace picture
