/// @file
/// The program's busy state, for as long as something takes.
#pragma once

#include "viewkit/vkapp.h"

/// Shows the program as busy while it lives: the watch pointer and the message, if there is one, are on the
/// screen when it is made, and everything is painted, so that the caller may block.
class Busy {
 public:
  explicit Busy(const char* message = nullptr) { theApplication->busy(message); }
  ~Busy() { theApplication->notBusy(); }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;
};
