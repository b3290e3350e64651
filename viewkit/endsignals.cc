/// @file
/// A pipe from the signal handler to the event loop.
#include "viewkit/endsignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <tuple>
#include <utility>

namespace viewkit {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t handlers_end = -1;

void handle(int number) {
  const int error = errno;
  const char byte = static_cast<char>(number);
  std::ignore = write(handlers_end, &byte, 1);  // a full pipe has been told often enough
  errno = error;
}

}  // namespace

EndSignals::EndSignals(XtAppContext context, std::function<void(int)> heard) : heard_(std::move(heard)) {
  if (pipe2(ends_, O_CLOEXEC | O_NONBLOCK) != 0) return;
  handlers_end = ends_[1];
  input_ =
      XtAppAddInput(context, ends_[0],
                    reinterpret_cast<XtPointer>(XtInputReadMask),  // NOLINT: Xt takes the mask as a pointer
                    &inputCallback, this);
  struct sigaction action {
  }, before{};
  action.sa_handler = &handle;  // unlike a blocked signal, a handler is not inherited
  action.sa_flags = SA_RESTART;
  for (const int number : kSignals)
    if (sigaction(number, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
      sigaction(number, &action, nullptr);
}

EndSignals::~EndSignals() {
  if (input_ == 0) return;
  XtRemoveInput(input_);
  // The handlers stay, for signals that arrive while the program ends; nobody hears of them any more.
  handlers_end = -1;
  for (const int end : ends_) close(end);
}

void EndSignals::inputCallback(XtPointer self, int* fd, XtInputId*) {
  char byte = 0;
  while (read(*fd, &byte, 1) == 1) static_cast<EndSignals*>(self)->heard_(byte);
}

}  // namespace viewkit
