/// @file
/// Waiting for a condition with a deadline.
#pragma once

#include <chrono>
#include <functional>

namespace support {

/// How long a condition may take before it counts as failed: generous, since machines may be slow and shared.
inline constexpr std::chrono::milliseconds kPatience{30000};

/// Asks `condition` again and again until it holds. @returns whether it did within `limit`.
bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit = kPatience);

}  // namespace support
