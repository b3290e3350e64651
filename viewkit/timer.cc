/// @file
/// Xt's timers, which end with their owner.
#include "viewkit/timer.h"

#include "viewkit/vkapp.h"

namespace viewkit {

void Timer::start(std::chrono::milliseconds time) {
  stop();
  id_ = XtAppAddTimeOut(theApplication->appContext(), static_cast<unsigned long>(time.count()),
                        &timeOutCallback, this);
}

void Timer::stop() {
  if (id_ != 0) XtRemoveTimeOut(id_);
  id_ = 0;
}

void Timer::timeOutCallback(XtPointer self, XtIntervalId*) {
  auto& timer = *static_cast<Timer*>(self);
  timer.id_ = 0;
  timer.action_();
}

}  // namespace viewkit
