/// @file
/// Counting and placing sheets.
#include "picture/paper.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <iterator>

namespace picture {

namespace {

constexpr double kMostSheets = 10000;

/// Sheets that lie if the picture does, without a scale.
Sheets sheetsFor(const Frame& whole, const Paper& paper) {
  const bool lying = whole.width > whole.height;
  return {.lying = lying,
          .width = lying ? paper.height : paper.width,
          .height = lying ? paper.width : paper.height,
          .scale = 1,
          .columns = 1,
          .rows = 1};
}

double room(double extent) { return extent - 2 * Sheets::kMargin; }

}  // namespace

const Paper* paperOf(std::string_view name) {
  const auto same = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  };
  const auto* const found = std::ranges::find_if(
      kPapers, [&](const Paper& paper) { return std::ranges::equal(paper.name, name, same); });
  return found == std::end(kPapers) ? nullptr : found;
}

Frame Sheets::part(const Frame& whole, unsigned column, unsigned row) const {
  const double across = room(width) / scale, down = room(height) / scale;
  return {.zoom = whole.zoom,
          .corner = whole.toPlane({across * column, down * row}),
          .width = std::min(across, whole.width - across * column),
          .height = std::min(down, whole.height - down * row)};
}

Sheets spread(const Frame& whole, const Paper& paper, double scale) {
  Sheets sheets = sheetsFor(whole, paper);
  for (;; scale /= 1.25) {
    const double columns = std::ceil(whole.width * scale / room(sheets.width));
    const double rows = std::ceil(whole.height * scale / room(sheets.height));
    if (!(columns * rows <= kMostSheets)) continue;
    sheets.scale = scale;
    sheets.columns = static_cast<unsigned>(std::max(columns, 1.0));
    sheets.rows = static_cast<unsigned>(std::max(rows, 1.0));
    return sheets;
  }
}

Sheets fitOnto(const Frame& whole, const Paper& paper) {
  Sheets sheets = sheetsFor(whole, paper);
  sheets.scale = std::min({1.0, room(sheets.width) / whole.width, room(sheets.height) / whole.height});
  return sheets;
}

}  // namespace picture
