/// @file
/// Shelf packing.
#include "graphlayout/packing.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace graphlayout {

std::vector<Point> pack(std::span<const Size> boxes, double gap, double aspect) {
  std::vector<std::size_t> order(boxes.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (!order.empty()) {
    std::ranges::stable_sort(order.begin() + 1, order.end(), std::ranges::greater{},
                             [&](std::size_t i) { return boxes[i].height; });
  }
  double area = 0, widest = 0;
  for (const Size& box : boxes) {
    area += (box.width + gap) * (box.height + gap);
    widest = std::max(widest, box.width);
  }
  const double width = std::max(widest, std::sqrt(area * aspect));

  // A shelf is as high as its first box; lower boxes are stacked in columns on it.
  std::vector<Point> corners(boxes.size());
  double shelf_top = 0, shelf_bottom = 0, column_x = 0, column_width = 0, y = 0;
  bool empty = true;
  for (const std::size_t i : order) {
    const Size& box = boxes[i];
    if (!empty && box.width <= column_width && y + box.height <= shelf_bottom) {
      corners[i] = {column_x, y};
    } else {
      if (!empty) column_x += column_width + gap;
      if (empty || column_x + box.width > width || shelf_top + box.height > shelf_bottom) {
        shelf_top = empty ? 0 : shelf_bottom + gap;
        shelf_bottom = shelf_top + box.height;
        column_x = 0;
      }
      corners[i] = {column_x, shelf_top};
      column_width = box.width;
    }
    y = corners[i].y + box.height + gap;
    empty = false;
  }
  return corners;
}

}  // namespace graphlayout
