/// @file
/// The progress bar.
#include "cli/progress.h"

#include <unistd.h>

#include <cstdio>
#include <string>

Progress::Progress(std::size_t all) : all_(all), is_terminal_(isatty(STDERR_FILENO) == 1) {}

void Progress::show() {
  using Seconds = std::chrono::duration<double>;
  if (!is_terminal_ || done_ == 0) return;
  const auto now = Clock::now();
  if (is_shown_ && now - shown_at_ < std::chrono::milliseconds(100)) return;
  const double taken = Seconds(now - start_).count();
  if (taken < 0.2) return;  // too little to judge by
  const double rate = static_cast<double>(done_) / taken;
  const double left = static_cast<double>(all_ - done_) / rate;
  if (!is_shown_ && left <= 2) return;
  constexpr std::size_t kWidth = 30;
  const std::size_t full = kWidth * done_ / all_;
  std::fprintf(stderr, "\r[%s%s] %zu of %zu files, %.0f a second, %.0f s left\x1b[K",
               std::string(full, '#').c_str(), std::string(kWidth - full, '.').c_str(), done_, all_, rate,
               left);
  shown_at_ = now;
  is_shown_ = true;
}

void Progress::clear() {
  if (is_shown_) std::fputs("\r\x1b[K", stderr);
  is_shown_ = false;
}
