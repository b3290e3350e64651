/// @file
/// Finds the rectangles that touch an area without looking at all of them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "picture/geometry.h"

namespace picture {

/// Rectangles under small whole numbers. Each lies in one cell of one of several grids, by its middle in the
/// grid whose cells are just as large as it, so adding and removing take constant time whatever the sizes.
class BoxIndex {
 public:
  /// Adds a rectangle, or moves it there when the number is known.
  void put(std::uint32_t number, const SgRectangle& box);
  /// Numbers that aren't in are ignored.
  void remove(std::uint32_t number);
  void clear();
  /// Whether a rectangle of that number is in and touches the area.
  bool touches(std::uint32_t number, const SgRectangle& area) const {
    return contains(number) && places_[number].box.touches(area);
  }

  /// Calls `visit(number)` for every rectangle that touches `area`, in no order.
  template <class Visit>
  void visit(const SgRectangle& area, Visit&& visit) const {
    for (std::size_t level = 0; level < kLevels; ++level) {
      const Grid& grid = grids_[level];
      if (grid.empty()) continue;
      const auto inCell = [&](const std::vector<std::uint32_t>& cell) {
        for (const std::uint32_t number : cell)
          if (places_[number].box.touches(area)) visit(number);
      };
      const Cells cells = cellsAround(area, level);
      if (cells.count() >= static_cast<double>(grid.size())) {
        for (const auto& [key, cell] : grid) inCell(cell);
        continue;
      }
      for (std::int32_t y = cells.top; y <= cells.bottom; ++y)
        for (std::int32_t x = cells.left; x <= cells.right; ++x)
          if (const auto found = grid.find(keyOf(x, y)); found != grid.end()) inCell(found->second);
    }
  }

 private:
  using Grid = std::unordered_map<std::uint64_t, std::vector<std::uint32_t>>;
  struct Place {
    SgRectangle box;
    std::uint64_t key = 0;
    std::uint32_t slot = 0;
    std::uint8_t level = kAbsent;
  };
  struct Cells {
    std::int32_t left, top, right, bottom;
    double count() const { return (1.0 + right - left) * (1.0 + bottom - top); }
  };

  static constexpr std::size_t kLevels = 32;
  static constexpr std::uint8_t kAbsent = 255;

  static std::uint64_t keyOf(std::int32_t x, std::int32_t y) {
    return std::uint64_t{static_cast<std::uint32_t>(x)} << 32 | static_cast<std::uint32_t>(y);
  }
  bool contains(std::uint32_t number) const;
  static Cells cellsAround(const SgRectangle& area, std::size_t level);

  std::array<Grid, kLevels> grids_;
  std::vector<Place> places_;
};

}  // namespace picture
