/// @file
/// From a node to its dialog, and from a dialog's answer to the write-back.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "dialogs/values/dialog.h"

namespace values {

/// All dialogs, in the order of the table of kinds, in which their names are tested.
std::span<const Dialog* const> dialogs();

/// A dialog, and the number of the record that it is opened on (which may not exist).
struct DialogOn {
  const Dialog* dialog;
  Word number;
};

/// What the node with this name opens: "mat_0" the material dialog on record 0, "lod_3" the level-of-detail
/// dialog on object 3. Nothing for a name that no node has.
std::optional<DialogOn> dialog_of_node(std::string_view name);

/// How a dialog was answered: the reason of its preference callback.
enum PrefReason : int { kPrefCancel = 0, kPrefOk = 1, kPrefApply = 2 };

/// What an answer asks for.
enum class PrefAction {
  nothing,
  applyOptions,   ///< of the dialog for quil2gfx
  applyOptions2,  ///< of the dialog for quil2zex
  applyChanges    ///< of a record, in Edit Mode only: outside it, nothing is changed and nothing said
};

/// Prints the trace of a dialog's answer.
PrefAction handlePrefs(std::string_view dialog_name, int reason);

/// Prints which dialog is applied and writes its items back to the scene (see Dialog::write_back).
/// @param dialog_name  contains the name of one of the dialogs, the first of which counts; otherwise nothing
///                     happens.
/// @returns 1, or 0 when there is no such dialog or record.
int applyChanges(Qis& scene, std::string_view dialog_name, Item& top, Word number);

}  // namespace values
