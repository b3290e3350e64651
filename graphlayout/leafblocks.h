/// @file
/// Many leaves of one parent, folded into one block so that they don't make an endless row.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layout.h"
#include "graphlayout/simplegraph.h"

namespace graphlayout {

/// A graph in which each large group of leaves has become one node, and the way back.
class LeafBlocks {
 public:
  LeafBlocks(const SimpleGraph& graph, const Options& options);

  std::span<const Size> sizes() const { return sizes_; }
  std::span<const Arc> arcs() const { return arcs_; }

  /// Turns a layout of the folded graph into one of the whole: leaves stand in the rows of their block, and
  /// arcs reach the lower rows through the gap to the left of their column.
  Layout unfold(const Layout& folded) const;

 private:
  struct Block {
    std::vector<std::uint32_t> leaves;                  // in the order of their arcs, row by row
    std::vector<double> column_x, column_width, row_y;  // within the block
    std::uint32_t node = 0;                             // in the folded graph
  };
  void arrange(Block& block);

  const SimpleGraph& graph_;
  Options options_;
  std::vector<Size> sizes_;
  std::vector<Arc> arcs_;
  std::vector<Block> blocks_;
  std::vector<std::uint32_t> node_of_, arc_of_;  // per node and arc of the graph, those of the folded one
  std::vector<std::uint32_t> block_of_, place_;  // per node its block, or kNone, and its place in it
};

}  // namespace graphlayout
