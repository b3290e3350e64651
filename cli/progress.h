/// @file
/// A progress bar on the terminal.
#pragma once

#include <chrono>
#include <cstddef>

/// Shows how far some work is on standard error, if that is a terminal and the work takes long enough.
class Progress {
 public:
  explicit Progress(std::size_t all);
  ~Progress() { clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// One more is done.
  void step() { ++done_; }
  /// Shows the bar, when more than two seconds are left and it was not shown just now.
  void show();
  /// Takes it away before anything else is printed.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;
  std::size_t all_, done_ = 0;
  bool is_terminal_, is_shown_ = false;
  Clock::time_point start_ = Clock::now(), shown_at_ = start_;
};
