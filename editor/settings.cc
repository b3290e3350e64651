/// @file
/// Reading the application's resources.
#include "editor/settings.h"

#include <X11/StringDefs.h>

#include <algorithm>
#include <cctype>
#include <string>

namespace {

/// @param type  what Xt calls a Value
template <class Value>
Value setting(Widget shell, std::string name, std::string type, Value fallback) {
  std::string class_name = name;
  class_name.front() = static_cast<char>(std::toupper(class_name.front()));
  Value value{};
  XtResource row{name.data(), class_name.data(), type.data(), sizeof value, 0, type.data(), &fallback};
  XtGetApplicationResources(shell, &value, &row, 1, nullptr, 0);
  return value;
}

bool is_on(Widget shell, const char* name, bool at_first = false) {
  return setting<Boolean>(shell, name, XtRBoolean, at_first) != False;
}

}  // namespace

Settings read_settings(Widget shell) {
  constexpr int kMinute = 60;
  return {is_on(shell, "trueColorTextures"),
          is_on(shell, "confirmUnsavedChanges"),
          is_on(shell, "recordNames"),
          is_on(shell, "highlightNeighbours", true),
          is_on(shell, "backupOnSave"),
          std::chrono::seconds(std::max(setting<int>(shell, "recoveryInterval", XtRInt, kMinute), 1))};
}
