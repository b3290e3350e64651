/// @file
/// Counts how many of the numbers seen so far are beyond a given one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace graphlayout {

/// A binary indexed tree (Fenwick 1994) over the numbers 0 to size - 1: O(log size) per call.
class Fenwick {
 public:
  void clear(std::size_t size) {
    counts_.assign(size + 1, 0);
    total_ = 0;
  }

  void add(std::size_t number) {
    ++total_;
    for (std::size_t i = number + 1; i < counts_.size(); i += i & (~i + 1)) ++counts_[i];
  }

  /// How many of the numbers added are greater than `number`.
  std::uint64_t beyond(std::size_t number) const {
    std::uint64_t up_to = 0;
    for (std::size_t i = number + 1; i > 0; i &= i - 1) up_to += counts_[i];
    return total_ - up_to;
  }

 private:
  std::vector<std::uint32_t> counts_;
  std::uint64_t total_ = 0;
};

}  // namespace graphlayout
