/// @file
/// Where the records of a scene stand in its file.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "qilib/qis.h"

namespace checks {

/// Of a scene that is as it was read. A list is gone over when the first of its records is asked for.
class Places {
 public:
  explicit Places(const Qis& scene) : scene_(scene) {}

  /// The byte of the file at which a record begins, or its list where that has two kinds of records; nothing
  /// when there is none.
  std::optional<std::uint64_t> record(Word list_tag, std::size_t number);

 private:
  void go_over(Word list_tag);

  const Qis& scene_;
  Word list_tag_ = 0;                  ///< of the list that was gone over last
  std::vector<std::uint64_t> begins_;  ///< of its records
};

}  // namespace checks
