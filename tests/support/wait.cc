/// @file
/// Polling a condition.
#include "tests/support/wait.h"

#include <algorithm>
#include <thread>

namespace support {

bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  constexpr std::chrono::milliseconds kShortest{1}, kLongest{50};
  const auto deadline = std::chrono::steady_clock::now() + limit;
  for (auto pause = kShortest; !condition(); pause = std::min(2 * pause, kLongest)) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    std::this_thread::sleep_for(pause);
  }
  return true;
}

}  // namespace support
