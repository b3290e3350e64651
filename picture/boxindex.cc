/// @file
/// The grids of BoxIndex.
#include "picture/boxindex.h"

#include <algorithm>
#include <cmath>

namespace picture {

namespace {

constexpr double kSmallestCell = 256;  // a few nodes large, so that a view of small nodes takes few look-ups

double cellSize(std::size_t level) { return std::ldexp(kSmallestCell, static_cast<int>(level)); }

std::int32_t cellNumber(double place, std::size_t level) {
  return static_cast<std::int32_t>(std::clamp(std::floor(place / cellSize(level)), -2e9, 2e9));
}

}  // namespace

void BoxIndex::put(std::uint32_t number, const SgRectangle& box) {
  if (number >= places_.size()) places_.resize(number + std::size_t{1});
  std::size_t level = 0;
  while (level + 1 < kLevels && cellSize(level) < std::max(box.width, box.height)) ++level;
  const SgPoint middle = box.middle();
  const std::uint64_t key = keyOf(cellNumber(middle.x, level), cellNumber(middle.y, level));

  Place& place = places_[number];
  if (place.level == level && place.key == key) {
    place.box = box;
    return;
  }
  remove(number);
  std::vector<std::uint32_t>& cell = grids_[level][key];
  cell.push_back(number);
  place = {box, key, static_cast<std::uint32_t>(cell.size() - 1), static_cast<std::uint8_t>(level)};
}

void BoxIndex::remove(std::uint32_t number) {
  if (!contains(number)) return;
  Place& place = places_[number];
  Grid& grid = grids_[place.level];
  const auto cell = grid.find(place.key);
  cell->second[place.slot] = cell->second.back();
  places_[cell->second.back()].slot = place.slot;
  cell->second.pop_back();
  if (cell->second.empty()) grid.erase(cell);
  place.level = kAbsent;
}

bool BoxIndex::contains(std::uint32_t number) const {
  return number < places_.size() && places_[number].level != kAbsent;
}

void BoxIndex::clear() {
  for (Grid& grid : grids_) grid.clear();
  places_.clear();
}

BoxIndex::Cells BoxIndex::cellsAround(const SgRectangle& area, std::size_t level) {
  // A rectangle reaches at most half a cell beyond the cell that its middle is in.
  const double reach = cellSize(level) / 2;
  return {cellNumber(area.x - reach, level), cellNumber(area.y - reach, level),
          cellNumber(area.right() + reach, level), cellNumber(area.bottom() + reach, level)};
}

}  // namespace picture
