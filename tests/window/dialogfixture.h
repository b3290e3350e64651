/// @file
/// The property dialogs of the built editor, opened and filled in as a person does.
#pragma once

#include <string>

#include "tests/window/editorfixture.h"

class Dialogs : public EditorTest {
 protected:
  explicit Dialogs(int width = 1280, int height = 1000) : EditorTest(24, {}, width, height) {}

  /// Opens a scene in Edit Mode.
  void edit(const std::string& file);

  /// Double-clicks a node and waits for its dialog. @param dialog  such as "matDialog".
  void openDialog(const std::string& node, const std::string& dialog);
  void awaitDialog(const std::string& dialog);

  /// The widget of an item, given as in "cc_g.cc_quil.quil_color_type0.vtx".
  support::WidgetInfo widget(const std::string& item, const std::string& part = "Base");

  /// What an item shows, as the command line prints it.
  std::string shown(const std::string& item);

  /// Gives an item a value as a person would: types it, clicks a toggle until it shows it, picks a menu
  /// entry.
  void enter(const std::string& item, const std::string& value);

  void press(const std::string& button);
  bool isOpen();

  /// What the dialog's notice of that name says; empty when it is not shown.
  std::string notice(const std::string& name);

  /// The file that Save As writes.
  std::string saved();

  /// What the command line prints when it makes the same change, from "APPLY." on.
  std::string trace(const std::string& command) const;

  std::string file_, dialog_;
};
