/// @file
/// The dialogs for the converters' options, without their windows: what they show of `ngops` and what they
/// write back.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "dialogs/values/dialog.h"
#include "tools/cnvopts.h"

namespace values {

/// One item of a group of options.
struct OptionRow {
  const char* name;
  OptionField field = nullptr;  ///< null for the toggle of a bit of the group's mask
  int columns = 20;             ///< of a text
  const char* flag = nullptr;   ///< of a toggle: what the field holds when it is on
  bool only_shown = false;
};

/// Options that are written back together, if one of them has changed.
struct OptionGroup {
  const char* name;
  Look look;
  std::span<const OptionRow> rows;
  OptionField mask = nullptr;  ///< the field that holds, in decimal, a bit for each row, from bit 0 on
};

/// The dialog of one converter.
struct OptionsDialog {
  const char* name;
  std::span<const OptionGroup> groups;
  std::vector<const char*> lines;  ///< the label lines

  /// The items, filled from `ngops`.
  std::unique_ptr<Item> items() const;

  /// Writes the changed groups of `top` to `ngops`, with their traces, echoes `ngops`, and writes the options
  /// file.
  /// @returns the labels of the options that the file could not hold as they are, each of which is told on
  ///          standard error.
  std::vector<std::string> apply(const Item& top) const;
};

/// "quil2gfxDialog": the display-list converter.
const OptionsDialog& quil2gfx_dialog();
/// "quil2zexDialog": the viewer-format converter.
const OptionsDialog& quil2zex_dialog();

}  // namespace values
