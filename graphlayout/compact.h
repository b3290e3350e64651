/// @file
/// The compact picture: blocks within blocks, for graphs whose layered picture would be an endless ribbon.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/folding.h"
#include "graphlayout/layout.h"

namespace graphlayout {

/// From so many nodes on a graph is compact, unless somebody wants it otherwise.
inline constexpr std::size_t kCompactFrom = 500;

/// A tree of the graph's arcs as blocks, and which arcs these are.
struct Compact {
  static constexpr std::uint32_t kNoArc = 0xFFFFFFFF;

  /// Tree arcs run in right angles and share their lines, from the bottom of the upper node straight down to
  /// the first bend, and from the last one level to the left side of the lower node. Within a folded chain
  /// the last one lies above the lower node. Others have no bends.
  Layout layout;
  /// Per node the arc that leads to it in the tree; kNoArc for a root.
  std::vector<std::uint32_t> tree_arcs;
  /// Per node the extent of its block, which holds it in the upper left corner and all below it in the tree.
  /// That of a node within a folded chain is its own.
  std::vector<Size> blocks;
};

/// The tree has every node under the first of its parents that is found from the roots by breadth; each
/// parent has the blocks of its children below it, in rows and columns that make its own block neither a
/// ribbon nor a tower and take short lines. Chains of only children are folded into columns.
/// No two nodes overlap. Linear.
/// @param options  of the gaps, `node_gap` alone.
Compact compact(std::span<const Size> sizes, std::span<const Arc> arcs, const Options& options = {});

/// A compact picture, and the same one without its hidden nodes: what is left keeps its row and its column,
/// and these close up. Of the closed one, the places of hidden nodes mean nothing.
struct CompactFolding {
  Layout open, closed;
};
CompactFolding compact_folding(std::span<const Size> sizes, std::span<const Arc> arcs, const Closing& closing,
                               const Options& options = {});

}  // namespace graphlayout
