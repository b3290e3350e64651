/// @file
/// Counts the crossings of a drawing.
#include <algorithm>
#include <cmath>

#include "graphlayout/fenwick.h"
#include "graphlayout/layered.h"
#include "graphlayout/layout.h"

namespace graphlayout {
namespace {

/// A piece of an arc's line, from its upper end to its lower one.
struct Line {
  Point top, bottom;
  bool slanted() const { return top.x != bottom.x; }
  double x_at(double y) const {
    if (y <= top.y) return top.x;
    if (y >= bottom.y) return bottom.x;
    return top.x + (bottom.x - top.x) * ((y - top.y) / (bottom.y - top.y));
  }
};

std::vector<Line> lines_of(std::span<const Size> sizes, std::span<const Arc> arcs,
                           std::span<const Point> positions, const Bends& bends) {
  std::vector<Line> lines;
  const std::size_t node_count = std::min(sizes.size(), positions.size());
  for (std::size_t i = 0; i < arcs.size(); ++i) {
    if (arcs[i].from >= node_count || arcs[i].to >= node_count || arcs[i].from == arcs[i].to) continue;
    const Ends ends = ends_of(arcs[i], sizes, positions);
    Point last = ends.from;
    const auto add = [&](const Point& next) {
      if (last.y < next.y) lines.push_back({last, next});
      if (last.y > next.y) lines.push_back({next, last});
      last = next;
    };
    for (const Point& bend : bends.of(i)) add(bend);
    add(ends.to);
  }
  std::erase_if(lines, [](const Line& line) {
    return !std::isfinite(line.top.x + line.top.y + line.bottom.x + line.bottom.y);
  });
  return lines;
}

/// Crossings of lines that all run from one height to another: pairs in opposite order at the two, counted as
/// in count_crossings().
class Slab {
 public:
  std::uint64_t crossings(std::span<const Line> lines, double top, double bottom) {
    ends_.clear();
    below_.clear();
    for (const Line& line : lines) {
      ends_.push_back({line.x_at(top), line.x_at(bottom)});
      below_.push_back(ends_.back().below);
    }
    std::ranges::sort(ends_);
    std::ranges::sort(below_);
    seen_.clear(below_.size());
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < ends_.size();) {  // those that start at one point don't cross there
      const std::size_t first = i;
      for (; i < ends_.size() && ends_[i].above == ends_[first].above; ++i) count += seen_.beyond(place(i));
      for (std::size_t k = first; k < i; ++k) seen_.add(place(k));
    }
    return count;
  }

 private:
  struct EndsAcross {
    double above, below;
    friend auto operator<=>(const EndsAcross&, const EndsAcross&) = default;
  };
  std::size_t place(std::size_t i) const {
    return static_cast<std::size_t>(std::ranges::lower_bound(below_, ends_[i].below) - below_.begin());
  }

  std::vector<EndsAcross> ends_;
  std::vector<double> below_;
  Fenwick seen_;
};

}  // namespace

std::uint64_t crossings(std::span<const Size> sizes, std::span<const Arc> arcs,
                        std::span<const Point> positions, const Bends& bends) {
  std::vector<Line> lines = lines_of(sizes, arcs, positions, bends);
  std::ranges::sort(lines, {}, [](const Line& line) { return line.top.y; });
  std::vector<double> levels, slants_begin, slants_end;
  for (const Line& line : lines) {
    levels.push_back(line.top.y);
    levels.push_back(line.bottom.y);
    if (!line.slanted()) continue;
    slants_begin.push_back(line.top.y);
    slants_end.push_back(line.bottom.y);
  }
  std::ranges::sort(slants_end);
  std::ranges::sort(levels);
  levels.erase(std::unique(levels.begin(), levels.end()), levels.end());

  std::uint64_t count = 0;
  std::vector<Line> active;
  Slab slab;
  std::size_t next = 0, begun = 0, ended = 0;
  for (std::size_t k = 0; k + 1 < levels.size(); ++k) {
    const double top = levels[k], bottom = levels[k + 1];
    while (begun < slants_begin.size() && slants_begin[begun] <= top) ++begun;
    while (ended < slants_end.size() && slants_end[ended] <= top) ++ended;
    if (begun == ended) continue;  // upright lines only
    for (; next < lines.size() && lines[next].top.y <= top; ++next) active.push_back(lines[next]);
    std::erase_if(active, [top](const Line& line) { return line.bottom.y <= top; });
    count += slab.crossings(active, top, bottom);
  }
  return count;
}

}  // namespace graphlayout
