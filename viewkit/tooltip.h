/// @file
/// A few lines about what the pointer rests on.
#pragma once

#include <X11/Intrinsic.h>

#include <functional>
#include <string>

#include "viewkit/timer.h"

namespace viewkit {

/// A small window beside the pointer, which takes no input. Widgets: shell "tooltip", label "tip".
class Tooltip {
 public:
  /// @param parent  must live as long as this.
  explicit Tooltip(Widget parent);
  ~Tooltip();
  Tooltip(const Tooltip&) = delete;
  Tooltip& operator=(const Tooltip&) = delete;

  /// Shows what `text` gives once the pointer has rested for a moment, in place of what is shown now.
  void showSoon(std::function<std::string()> text);
  void hide();

 private:
  void show();

  Widget shell_, tip_;
  std::function<std::string()> text_;
  Timer timer_{[this] { show(); }};
};

}  // namespace viewkit
