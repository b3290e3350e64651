/// @file
/// What users set as X resources of the application, beside the look.
#pragma once

#include <X11/Intrinsic.h>

#include <chrono>

struct Settings {
  bool true_color_textures = false;      ///< "trueColorTextures": textures in their own colours, on 24 bits
  bool confirm_unsaved_changes = false;  ///< "confirmUnsavedChanges": ask before unsaved changes go
  bool record_names = false;             ///< "recordNames": nodes show the names of their records
  bool highlight_neighbours = true;      ///< "highlightNeighbours": only nodes around selected ones in full
  bool backup_on_save = false;           ///< "backupOnSave": keep a file as it was before its first save
  std::chrono::seconds recovery_interval{};  ///< "recoveryInterval": between a change and the copy of it
};

Settings read_settings(Widget shell);
