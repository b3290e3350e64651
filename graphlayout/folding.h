/// @file
/// A picture some nodes of which are folded: what they hide, and the picture without that.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "graphlayout/layout.h"

namespace graphlayout {

/// Per node the folded node that stands for it, or kShown. A folded node hides all that is reached from it
/// and from elsewhere only through it. One that is hidden itself by an earlier one stands for nothing.
inline constexpr std::uint32_t kShown = 0xFFFFFFFF;
/// Linear for each folded node in what is reached from it. Numbers that are no nodes are ignored.
std::vector<std::uint32_t> fold(std::size_t node_count, std::span<const Arc> arcs,
                                std::span<const std::uint32_t> folded);

/// Which nodes a picture is shown without.
struct Closing {
  const std::vector<bool>& hidden;
  std::span<const Size> sizes;  ///< of the nodes that are shown: a folded one may have another size now
};

struct Closed {
  std::vector<Point> nodes;  ///< top left corners; those of hidden nodes mean nothing
  Bends bends;
};

/// The same picture where strips across and down all of it in which nothing but hidden nodes lay are closed.
/// What was beside, above or below another node still is, and none comes to lie over another.
Closed close_up(std::span<const Size> sizes, std::span<const Point> nodes, const Bends& bends,
                const Closing& closing);

}  // namespace graphlayout
