/// @file
/// Polling a condition.
#include "tests/support/wait.h"

#include <thread>

namespace support {

bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  constexpr std::chrono::milliseconds kPollInterval{5};
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= deadline) return false;
    std::this_thread::sleep_for(kPollInterval);
  }
  return true;
}

}  // namespace support
