/// @file
/// The property dialogs that the user opens from the graph.
#pragma once

#include <memory>
#include <vector>

#include "dialogs/propertydialog.h"

/// Makes a new dialog at each opening, also for the same record, and owns them all.
class NodeDialogs {
 public:
  /// Opens a dialog on the record that the node with this name stands for.
  /// @param editing  see PropertyDialog::showEditMode
  /// @returns the dialog, so that the caller hears its answers; null when there is none for the node.
  PropertyDialog* open(const char* node, bool editing);
  /// Closes all of them and applies nothing: for when the records that they show are gone.
  void closeAll();
  /// Tells all of them whether Edit Mode is on.
  void showEditMode(bool on);
  /// Has all of them tell when their record has changed, see PropertyDialog::showWhetherCurrent.
  void showWhetherCurrent();

 private:
  std::vector<std::unique_ptr<PropertyDialog>> dialogs_;  ///< every one that was ever opened
};
