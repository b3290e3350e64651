/// @file
/// Putting right the sizes that a scene states when they are not what the writer will write.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "qilib/qis.h"

/// Compares every size held in the scene (of records and their parts, version-2 blocks, size tables, lists,
/// directory and extension table, header, file) with what a save in that mode writes, and corrects those
/// that differ, with a line on standard error for each. A scene saved right after it opens again.
///
/// Some edits leave such differences on purpose: adding a texture that a material holds already grows the
/// material's size by 4 all the same.
/// @returns how many sizes were corrected.
int qiCheckSizes(Qis& scene, int mode);

namespace qi {

/// A size that was held and is not what the writer will write.
struct WrongSize {
  const std::string& where;  ///< "ObjList: record 3"
  std::string_view what;     ///< "size in the size table"
  Word held;
  std::uint64_t written;
};

/// `qiCheckSizes` for callers with words of their own: calls `report` for each size in place of printing it.
int correct_sizes(Qis& scene, int mode, const std::function<void(const WrongSize&)>& report);

}  // namespace qi
