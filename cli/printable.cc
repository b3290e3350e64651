/// @file
/// Texts from scene files, made fit for a line on a terminal.
#include "cli/printable.h"

#include <cstdio>

std::string printable(std::string_view text) {
  std::string shown;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20 && code != 0x7f) {
      shown += c;
    } else {
      char escape[5];
      std::snprintf(escape, sizeof escape, "\\x%02x", code);
      shown += escape;
    }
  }
  return shown;
}
