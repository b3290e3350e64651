/// @file
/// Signals that ask the program to end, as something that the event loop hears of.
#pragma once

#include <X11/Intrinsic.h>

#include <functional>

#include "viewkit/xraii.h"

namespace viewkit {

/// Hears SIGTERM, SIGINT and SIGHUP from now on; one per process. A signal that whoever started the program
/// has it ignore (`nohup`, a background job of a script) stays ignored. The programs that this one starts
/// have them as usual.
class EndSignals {
 public:
  /// @param heard  is called in the event loop with the signal's number, once for each of them.
  EndSignals(XtAppContext context, std::function<void(int)> heard);
  ~EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;

 private:
  static void inputCallback(XtPointer self, int* fd, XtInputId* input);

  std::function<void(int)> heard_;
  int ends_[2] = {-1, -1};  ///< of a pipe: where the loop reads, and where the handler writes
  XtInputId input_ = 0;
};

}  // namespace viewkit
