/// @file
/// Places items in a row as near as possible to where they want to be, without letting them touch.
#pragma once

#include <cstddef>
#include <vector>

namespace graphlayout {

/// Finds the x that minimise the sum of weight * (x - target)^2 with each x at least its gap beyond the one
/// before: isotonic regression, by pooling adjacent violators (Ayer, Brunk, Ewing, Reid and Silverman 1955).
/// Keeps its buffer between rows.
class Spacing {
 public:
  void clear() {
    pools_.clear();
    offset_ = 0;
    offsets_.clear();
  }

  /// Adds the next item. @param gap  least distance from the item before (of the first: any). @param weight >
  /// 0.
  void add(double target, double weight, double gap) {
    offset_ += offsets_.empty() ? 0 : gap;
    offsets_.push_back(offset_);
    Pool pool{target - offset_, weight, 1};
    while (!pools_.empty() && pools_.back().mean >= pool.mean) {
      const Pool& last = pools_.back();
      const double sum = last.weight + pool.weight;
      pool = {(last.mean * last.weight + pool.mean * pool.weight) / sum, sum, last.count + pool.count};
      pools_.pop_back();
    }
    pools_.push_back(pool);
  }

  /// Calls `place(i, x)` for each item in the order of adding.
  template <class Place>
  void finish(Place place) const {
    std::size_t i = 0;
    for (const Pool& pool : pools_) {
      for (std::size_t end = i + pool.count; i < end; ++i) place(i, pool.mean + offsets_[i]);
    }
  }

 private:
  struct Pool {
    double mean, weight;
    std::size_t count;
  };
  std::vector<Pool> pools_;
  std::vector<double> offsets_;
  double offset_ = 0;
};

}  // namespace graphlayout
