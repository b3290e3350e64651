/// @file
/// Sheets of paper, and how a picture is spread over them.
#pragma once

#include <string_view>
#include <vector>

#include "picture/frame.h"

namespace picture {

/// Upright, in points.
struct Paper {
  std::string_view name;
  double width, height;
};
inline constexpr Paper kPapers[] = {{"A5", 420, 595},     {"A4", 595, 842},      {"A3", 842, 1191},
                                    {"A2", 1191, 1684},   {"A1", 1684, 2384},    {"A0", 2384, 3370},
                                    {"Letter", 612, 792}, {"Tabloid", 792, 1224}};
inline constexpr const Paper* kA4 = &kPapers[1];

/// The paper of that name, in capitals or not; null for none.
const Paper* paperOf(std::string_view name);

/// Where the pictures on the sheets of a print lie.
struct Sheets {
  static constexpr double kMargin = 28;  ///< points that printers leave free

  bool lying;            ///< the sheets are turned by a quarter
  double width, height;  ///< of a sheet as it is looked at, in points
  double scale;          ///< points to a window unit
  unsigned columns, rows;

  /// What a sheet shows of the frame that all of them show together.
  Frame part(const Frame& whole, unsigned column, unsigned row) const;
};
/// @param scale  points to a unit of the frame's window; made smaller when the sheets would be too many.
Sheets spread(const Frame& whole, const Paper& paper, double scale);
/// All of it on one sheet, no larger than a point to a unit.
Sheets fitOnto(const Frame& whole, const Paper& paper);

}  // namespace picture
