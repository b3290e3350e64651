/// @file
/// What differs between two scenes, record by record. Records are told apart by their numbers: those that
/// were renumbered differ.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "qilib/lists.h"
#include "qilib/references.h"

namespace qi {

/// A run of a record, of what a list says of itself or of the header that is not the same in both scenes.
struct PieceDifference {
  enum class Unit : std::uint8_t { words, bytes, parts };

  std::string piece;  ///< "fixed", "array2", "texels", "structure.array1", "parts1[4].block1"
  Unit unit = Unit::words;
  std::size_t before = 0, after = 0;  ///< its length in each
  std::size_t differing = 0;          ///< how many units that both have are not the same
  /// Which, from 0; of a run of fixed length alone.
  std::vector<std::size_t> places = {};
};

/// A reference that the graph shows and that only one of the scenes has.
struct LinkDifference {
  const Reference* kinds;
  Word child;
  bool added;
};

/// What differs in one place.
struct Difference {
  enum class How : std::uint8_t { changed, added, removed };

  const ListInfo* list = nullptr;  ///< null: the header, or what follows the last list
  /// The record, its second kinds after those of the first; nothing: what the list says of itself.
  std::optional<Word> number = {};
  How how = How::changed;
  std::uint64_t words = 0;  ///< that a record takes which only one scene has
  std::vector<LinkDifference> links = {};
  /// Of a changed record, and as far as the links don't say it. A count that differs as the length of its
  /// array does is left out.
  std::vector<PieceDifference> pieces = {};
};
using DifferenceSink = std::function<void(const Difference&)>;

/// Compares what a save in mode 2 writes of two scenes, and tells each difference: the header's first, then
/// those of each list, its own after those of its records.
/// @returns how many there were; 0: both are saved as the same file.
std::size_t compare_scenes(const Qis& before, const Qis& after, const DifferenceSink& sink);

}  // namespace qi
