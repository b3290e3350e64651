/// @file
/// Draws single arcs around the nodes of a picture.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layout.h"

namespace graphlayout {

/// Knows where nodes are and which lines are drawn. Sizes and places are kept by reference.
class Router {
 public:
  Router(std::span<const Size> sizes, std::span<const Point> places, const Options& options)
      : sizes_(sizes), places_(places), options_(options) {}

  /// Tells how many pieces of lines are to come, about.
  void expect(std::size_t lines) { lines_.reserve(lines); }
  /// Notes how an arc is drawn.
  void add(const Arc& arc, std::span<const Point> bends);
  std::size_t lines() const { return lines_.size(); }

  /// Whether an arc that is drawn so leads through a node at neither of its ends.
  bool leads_through(const Arc& arc, std::span<const Point> bends, std::uint32_t node) const;
  /// The bends of such an arc with those that lead it past the node, close to its side.
  std::vector<Point> lead_around(const Arc& arc, std::span<const Point> bends, std::uint32_t node) const;

  /// The bends of a way past all nodes, which crosses few of the lines. Empty for a straight line, and when
  /// there are too many rows of nodes between its ends.
  std::vector<Point> route(const Arc& arc) const;

 private:
  struct Line {
    Point top, bottom;
  };
  /// Nodes side by side, which an arc passes in a gap between them or outside.
  struct Band {
    double top = 0, bottom = 0;
    std::vector<Point> gaps;  // x from, to; ascending
  };
  /// A line that leads up to a band, or away from it.
  struct Near {
    double near, far;             ///< its x at the band, and at the next band or the arc's end
    std::uint32_t before, up_to;  ///< how many of the band's places are less than `near`, and not more
  };
  using Lines = std::vector<Near>;
  /// A band with the places in it that are tried, and the lines that cross the spaces above and below it.
  /// Each line is looked up once, however often the way's neighbouring bends move.
  struct Passage {
    const Band& band;
    std::vector<double> places;  ///< ascending
    Lines upper, lower;
    void note(Lines& lines, double near, double far) const;
    /// The place that causes the fewest crossings between these x at the bands above and below.
    double least_crossings(double above, double below) const;
  };
  double clearance() const { return std::min(options_.arc_gap, options_.node_gap / 2) * 0.8; }
  bool leads_through(const Point& a, const Point& b, std::uint32_t node) const;
  std::vector<Band> bands(const Arc& arc, const Point& upper, const Point& lower, double left,
                          double right) const;

  const std::span<const Size> sizes_;
  const std::span<const Point> places_;
  const Options& options_;
  std::vector<Line> lines_;
};

}  // namespace graphlayout
