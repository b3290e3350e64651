/// @file
/// Packing the blocks of a tree.
#include "graphlayout/compact.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "graphlayout/adjacency.h"
#include "graphlayout/simplegraph.h"

namespace graphlayout {
namespace {

constexpr double kIndent = 16;              // of children: the trunk runs to their left
constexpr double kTrunk = 6;                // from the parent's left edge
constexpr double kTick = kIndent - kTrunk;  // from the line that leads down beside a column to its blocks
constexpr double kDrop = 10;                // from the line above a row down to its blocks
constexpr double kRowGap = 36;
constexpr double kLooser = 1.25;                  // gaps between columns, against those of a layered rank
constexpr double kWider = 1.3;                    // what a column may hold, against its first block
constexpr double kLevelGap = 24;                  // from a node to the first row below it
constexpr std::size_t kShortestFold = 6;          // nodes; shorter chains run down
constexpr double kAspect = 1.75;                  // width to height that blocks should have
constexpr double kColumnHeights[] = {1, 0.5, 0};  // tried, in parts of the height that a block should have

/// Where a block stands in the block that holds it.
struct Slot {
  Point corner;
  double line = 0;          // y of the line above its row
  bool stacked = false;     // below another block of the same row
  bool begins_row = false;  // the first of its row
};

/// How good an extent is: near to the aspect that it should have, and small.
double cost(const Size& size) {
  return std::max(size.width, kAspect * size.height) + 0.15 * std::sqrt(size.width * size.height);
}

/// Rows of blocks, in their order.
class Rows {
 public:
  explicit Rows(double gap) : gap_(gap) {}

  /// Finds the best length of rows and height of columns, and the slots. @param head  the extent above the
  /// rows.
  Size pack(std::span<const Size> blocks, const Size& head, Point start, std::vector<Slot>& slots) {
    double widest = 0, lowest = HUGE_VAL, sum = 0, area = 0;
    for (const Size& block : blocks) {
      widest = std::max(widest, block.width);
      lowest = std::min(lowest, block.height);
      sum += block.width + gap_;
      area += (block.width + gap_) * (block.height + kRowGap);
    }
    constexpr int kTries = 19;
    const double growth = std::pow(std::max(sum / std::max(widest, 1.0), 1.0), 1.0 / (kTries - 1));
    const int tries = blocks.size() == 1 ? 1 : kTries;
    const double height = std::sqrt(area / kAspect);
    Shape shape{widest, 0}, best = shape;
    double least = HUGE_VAL;
    for (int i = 0; i < tries; ++i, shape.length = std::max(shape.length * growth, shape.length + 1)) {
      for (const double part : kColumnHeights) {
        shape.height = part * height;
        if (part > 0 && shape.height < 2 * lowest + kRowGap) continue;  // nothing is stacked then
        const Arranged arranged = arrange(blocks, head, start, shape, nullptr);
        const double now = cost(arranged);
        if (now < least) least = now, best = shape;
      }
      if (shape.length > sum) break;
    }
    slots.resize(blocks.size());
    return arrange(blocks, head, start, best, slots.data()).size;
  }

  /// The rows and columns that the slots say, for blocks of other extents. Those of no extent take no room.
  Size keep(std::span<const Size> blocks, const Size& head, Point start, std::vector<Slot>& slots) const {
    Size size = head;
    double row_top = start.y, row_bottom = start.y;
    double column_x = start.x, column_width = 0, column_end = start.y;
    bool row_taken = false, column_taken = false;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      if (!slots[i].stacked) {
        if (column_taken) column_x += column_width + gap_;
        column_taken = false;
        column_width = 0;
      }
      if (slots[i].begins_row) {
        if (row_taken) row_top = row_bottom + kRowGap;
        row_taken = false;
        column_x = start.x;
      }
      const Size& block = blocks[i];
      if (is_empty(block)) continue;
      slots[i].corner = {column_x, column_taken ? column_end + kRowGap : row_top};
      slots[i].line = row_top - kDrop;
      slots[i].stacked = column_taken;
      column_width = std::max(column_width, block.width);
      column_end = slots[i].corner.y + block.height;
      row_bottom = std::max(row_taken ? row_bottom : row_top, column_end);
      row_taken = column_taken = true;
      size.width = std::max(size.width, column_x + block.width);
      size.height = std::max(size.height, column_end);
    }
    return size;
  }

  static bool is_empty(const Size& block) { return block.width < 0; }
  static constexpr Size kEmpty{-1, -1};

 private:
  struct Shape {
    double length;  // of rows
    double height;  // up to which blocks are stacked, where no block of the row is so tall
  };
  struct Arranged {
    Size size;
    double lines;  // the length of those that lead to the blocks, but for what any arrangement has
  };

  /// Few lines make a picture easier to read.
  static double cost(const Arranged& arranged) {
    constexpr double kPerLine = 0.02;
    const double side = std::sqrt(std::max(arranged.size.width * arranged.size.height, 1.0));
    return graphlayout::cost(arranged.size) * (1 + kPerLine * arranged.lines / side);
  }

  Arranged arrange(std::span<const Size> blocks, const Size& head, Point start, const Shape& shape,
                   Slot* slots) const {
    Size size = head;
    double row_top = start.y, row_bottom = start.y;
    double column_x = start.x, column_width = 0;
    double lines = 0, trunk_end = start.y, last_top = start.y, last_x = start.x;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      const Size& block = blocks[i];
      const bool wider = block.width > column_width;
      const bool has_room = !wider || (block.width <= kWider * column_width &&
                                       column_x + block.width <= start.x + shape.length);
      const double below = i == 0 ? start.y : last_top + blocks[i - 1].height + kRowGap;
      Slot slot;
      if (i > 0 && has_room && below + block.height <= std::max(row_bottom, row_top + shape.height)) {
        slot = {{column_x, below}, row_top - kDrop, true, false};
        column_width = std::max(column_width, block.width);
      } else {
        if (i > 0) column_x += column_width + gap_;
        if (i > 0 && column_x + block.width > start.x + shape.length) {
          row_top = row_bottom + kRowGap;
          column_x = start.x;
        }
        column_width = block.width;
        slot = {{column_x, row_top}, row_top - kDrop, false, column_x == start.x};
      }
      const Point& at = slot.corner;
      if (at.x == start.x)
        lines += at.y - std::exchange(trunk_end, at.y);
      else
        lines += slot.stacked ? at.y - last_top : at.x - last_x + 2 * kDrop;
      last_x = at.x;
      last_top = at.y;
      row_bottom = std::max(row_bottom, at.y + block.height);
      size.width = std::max(size.width, at.x + block.width);
      size.height = std::max(size.height, at.y + block.height);
      if (slots) slots[i] = slot;
    }
    return {size, lines};
  }

  const double gap_;
};

class Packing {
 public:
  Packing(std::span<const Size> sizes, std::span<const Arc> arcs, const Options& options)
      : arcs_(arcs),
        gap_(kLooser * options.node_gap),
        rows_(kLooser * options.node_gap),
        out_(sizes.size(), {}, Incidence::kOut) {
    for (const Size& size : sizes) sizes_.push_back(sane(size));
    std::vector<Arc> legal;
    for (std::uint32_t i = 0; i < arcs.size(); ++i) {
      if (arcs[i].from >= sizes.size() || arcs[i].to >= sizes.size() || arcs[i].from == arcs[i].to) continue;
      legal.push_back(arcs[i]);
      number_.push_back(i);
    }
    out_ = Incidence(sizes.size(), legal, Incidence::kOut);
    grow_tree(legal);
  }

  Compact run() {
    compact_.blocks = sizes_;
    slots_.resize(sizes_.size());
    base_ = parent_;
    pack_all();
    return compact_;
  }

  /// After run(): the same rows and columns without what is hidden.
  Layout close(const Closing& closing) {
    closing_ = &closing;
    for (std::size_t v = 0; v < sizes_.size(); ++v)
      sizes_[v] = closing.hidden[v] ? Rows::kEmpty : sane(closing.sizes[v]);
    compact_.blocks = sizes_;
    pack_all();
    return compact_.layout;
  }

 private:
  void pack_all() {
    unpacked_ = chains_.size();
    for (auto v = order_.rbegin(); v != order_.rend(); ++v) {
      if (!folded_[*v]) pack_block(*v);
    }
    pack_roots();
    place();
    bend();
  }

  bool is_shown(std::uint32_t v) const { return !closing_ || !closing_->hidden[v]; }

  std::span<const std::uint32_t> children(std::uint32_t v) const {
    return std::span(children_).subspan(first_child_[v], child_count_[v]);
  }

  /// By breadth, from the nodes without parents first; what loops hide from these, after them.
  void grow_tree(std::span<const Arc> legal) {
    const std::size_t count = sizes_.size();
    compact_.tree_arcs.assign(count, Compact::kNoArc);
    parent_.assign(count, kNone);
    first_child_.assign(count, 0);
    child_count_.assign(count, 0);
    std::vector<bool> has_parent(count, false), seen(count, false);
    for (const Arc& arc : legal) has_parent[arc.to] = true;
    std::size_t done = 0;
    const auto begin = [&](std::uint32_t v) {
      if (seen[v]) return;
      seen[v] = true;
      roots_.push_back(v);
      order_.push_back(v);
    };
    const auto spread = [&] {
      for (; done < order_.size(); ++done) {
        const std::uint32_t v = order_[done];
        first_child_[v] = static_cast<std::uint32_t>(children_.size());
        for (const std::uint32_t i : out_.of(v)) {
          const std::uint32_t child = legal[i].to;
          if (seen[child]) continue;
          seen[child] = true;
          parent_[child] = v;
          compact_.tree_arcs[child] = number_[i];
          children_.push_back(child);
          order_.push_back(child);
          ++child_count_[v];
        }
      }
    };
    for (std::uint32_t v = 0; v < count; ++v)
      if (!has_parent[v]) begin(v);
    spread();
    for (std::uint32_t v = 0; v < count; ++v) {
      begin(v);
      spread();
    }
    find_chains();
  }

  /// A chain is folded at its first node, which holds all that follow.
  void find_chains() {
    folded_.assign(sizes_.size(), false);
    for (const std::uint32_t head : order_) {
      if (folded_[head] || child_count_[head] != 1) continue;
      std::vector<std::uint32_t> chain;
      for (std::uint32_t v = head; child_count_[v] == 1; v = children(v).front())
        chain.push_back(children(v).front());
      if (chain.size() < kShortestFold) continue;
      // The last has a block of its own; the others are single boxes.
      for (std::size_t i = 0; i + 1 < chain.size(); ++i) folded_[chain[i]] = true;
      chains_.push_back({head, std::move(chain)});
    }
  }

  void pack_block(std::uint32_t v) {
    if (child_count_[v] == 0) return;
    if (unpacked_ > 0 && chains_[unpacked_ - 1].head == v) {  // they were found from above
      fold(chains_[--unpacked_]);
      return;
    }
    const Size head = is_shown(v) ? sizes_[v] : Size{};
    const Size block = pack_rows(children(v), head, {kIndent, head.height + kLevelGap});
    if (is_shown(v) || block.width > 0) compact_.blocks[v] = block;
  }

  Size pack_rows(std::span<const std::uint32_t> nodes, const Size& head, Point start) {
    boxes_.clear();
    found_.clear();
    for (const std::uint32_t v : nodes) {
      boxes_.push_back(compact_.blocks[v]);
      found_.push_back(slots_[v]);
    }
    const Size size =
        closing_ ? rows_.keep(boxes_, head, start, found_) : rows_.pack(boxes_, head, start, found_);
    for (std::size_t i = 0; i < nodes.size(); ++i) slots_[nodes[i]] = found_[i];
    return size;
  }

  struct Chain {
    std::uint32_t head;
    std::vector<std::uint32_t> nodes;  // that follow
    double length = 0;                 // of its columns
  };

  /// The chain in columns, each from above, below its head.
  void fold(Chain& chain) {
    if (!closing_) chain.length = best_length(chain);
    const Size size = columns(chain, chain.length, true);
    if (is_shown(chain.head) || size.width > 0) compact_.blocks[chain.head] = size;
  }

  double best_length(const Chain& chain) {
    double sum = 0, tallest = 0;
    for (const std::uint32_t v : chain.nodes) {
      sum += compact_.blocks[v].height + kLevelGap;
      tallest = std::max(tallest, compact_.blocks[v].height);
    }
    constexpr int kTries = 19;
    const double growth = std::pow(std::max(sum / std::max(tallest, 1.0), 1.0), 1.0 / (kTries - 1));
    double length = tallest, best = tallest, least = HUGE_VAL;
    for (int i = 0; i < kTries; ++i, length = std::max(length * growth, length + 1)) {
      const Size size = columns(chain, length, false);
      if (cost(size) < least) least = cost(size), best = length;
    }
    return best;
  }

  Size columns(const Chain& chain, double length, bool keep) {
    Size size = is_shown(chain.head) ? sizes_[chain.head] : Size{};
    const double top = size.height + kLevelGap;
    double x = kIndent, y = top, width = 0;
    for (const std::uint32_t v : chain.nodes) {
      const Size& block = compact_.blocks[v];
      if (Rows::is_empty(block)) continue;
      if (y > top && y + block.height > top + length) {
        x += width + gap_ + kTrunk;  // room for the line up
        y = top;
        width = 0;
      }
      if (keep) {
        slots_[v] = {{x, y}};
        base_[v] = chain.head;
      }
      width = std::max(width, block.width);
      size.width = std::max(size.width, x + block.width);
      size.height = std::max(size.height, y + block.height + kDrop);  // a line may leave it below
      y += block.height + kLevelGap;
    }
    return size;
  }

  void pack_roots() {
    if (roots_.empty()) return;
    const Size size = pack_rows(roots_, {}, {});
    compact_.layout.width = size.width;
    compact_.layout.height = size.height;
  }

  void place() {
    std::vector<Point>& nodes = compact_.layout.nodes;
    nodes.resize(sizes_.size());
    for (const std::uint32_t v : order_) {
      const Point origin = base_[v] == kNone ? Point{} : nodes[base_[v]];
      nodes[v] = {origin.x + slots_[v].corner.x, origin.y + slots_[v].corner.y};
    }
  }

  void bend() {
    std::vector<std::uint32_t> child_of(arcs_.size(), kNone);
    for (std::uint32_t v = 0; v < sizes_.size(); ++v)
      if (compact_.tree_arcs[v] != Compact::kNoArc) child_of[compact_.tree_arcs[v]] = v;
    Bends& bends = compact_.layout.bends;
    bends = {};
    bends.starts.push_back(0);
    for (std::size_t i = 0; i < arcs_.size(); ++i) {
      const std::uint32_t child = child_of[i];
      if (child != kNone && is_shown(child) && is_shown(parent_[child])) lead_to(child, bends.points);
      bends.starts.push_back(bends.points.size());
    }
  }

  void lead_to(std::uint32_t v, std::vector<Point>& points) const {
    const std::uint32_t parent = parent_[v];
    const Point& p = compact_.layout.nodes[parent];
    const Point& c = compact_.layout.nodes[v];
    const double from = p.x + sizes_[parent].width / 2, to = c.x + sizes_[v].width / 2;
    const double below = p.y + sizes_[parent].height + kDrop;
    if (base_[v] != parent || folded_[v]) {  // from one node of a chain to the next
      points.push_back({from, below});
      const double above = c.y > p.y ? below : c.y - kDrop;
      if (c.y <= p.y) {
        points.push_back({c.x - kTrunk, below});
        points.push_back({c.x - kTrunk, above});
      }
      points.push_back({to, above});
      return;
    }
    const double trunk = p.x + kTrunk, level = c.y + sizes_[v].height / 2;
    if (slots_[v].corner.x > kIndent) {  // not the first column
      const double line = p.y + slots_[v].line;
      points.push_back({trunk, line});
      points.push_back({c.x - kTick, line});
      points.push_back({c.x - kTick, level});
    } else {
      points.push_back({trunk, level});
    }
  }

  const std::span<const Arc> arcs_;
  const double gap_;
  Rows rows_;
  std::vector<Size> sizes_;
  std::vector<std::uint32_t> number_;  // per legal arc, that of the caller
  Incidence out_;
  Compact compact_;
  std::vector<std::uint32_t> parent_, roots_, order_;  // order_: parents before children
  std::vector<std::uint32_t> children_, first_child_, child_count_;
  std::vector<bool> folded_;  // stands in a chain, with no block of its own
  std::vector<Chain> chains_;
  std::size_t unpacked_ = 0;          // of these
  const Closing* closing_ = nullptr;  // while it is closed up
  std::vector<std::uint32_t> base_;   // per node that whose block it is placed in
  std::vector<Slot> slots_, found_;
  std::vector<Size> boxes_;
};

}  // namespace

Compact compact(std::span<const Size> sizes, std::span<const Arc> arcs, const Options& options) {
  return Packing(sizes, arcs, sane(options)).run();
}

CompactFolding compact_folding(std::span<const Size> sizes, std::span<const Arc> arcs, const Closing& closing,
                               const Options& options) {
  Packing packing(sizes, arcs, sane(options));
  Layout open = packing.run().layout;
  return {std::move(open), packing.close(closing)};
}

}  // namespace graphlayout
