/// @file
/// Something that is done later, in the event loop.
#pragma once

#include <X11/Intrinsic.h>

#include <chrono>
#include <functional>
#include <utility>

namespace viewkit {

/// Runs its action once when its time is up, unless it is stopped before. Needs theApplication.
class Timer {
 public:
  explicit Timer(std::function<void()> action) : action_(std::move(action)) {}
  ~Timer() { stop(); }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  /// From now on; a time that it was started with before counts no more.
  void start(std::chrono::milliseconds time);
  void stop();

 private:
  static void timeOutCallback(XtPointer self, XtIntervalId* id);

  std::function<void()> action_;
  XtIntervalId id_ = 0;  ///< 0: it does not run
};

}  // namespace viewkit
