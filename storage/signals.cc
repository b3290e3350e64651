/// @file
/// What a program does at its start to live through its saves.
#include "storage/signals.h"

#include <csignal>

void storage::survive_file_size_limit() {
  struct sigaction action {};
  action.sa_handler = [](int) {};  // unlike SIG_IGN, a handler is not inherited
  action.sa_flags = SA_RESTART;
  sigaction(SIGXFSZ, &action, nullptr);
}
