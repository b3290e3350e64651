/// @file
/// The shared file selection dialog.
#pragma once

#include <string>

#include "viewkit/vkdialogmanager.h"

/// Lets the user choose a file, one that exists or one to be. Opens in the working directory at first and
/// then where it was left. Shows the files of the filter pattern, or all of them when the user sets "Show all
/// files". "~" at the beginning of what is typed is the home directory.
class VkFileSelectionDialog final : public VkDialogManager {
 public:
  explicit VkFileSelectionDialog(const char* name) : VkDialogManager(name) {}
  const char* className() const override { return "VkFileSelectionDialog"; }

  /// The absolute path that the last OK answered; "" before.
  const char* fileName() const { return fileName_.c_str(); }

  /// Where the next showing starts: in a directory, then with a path filled in. A path that is a directory
  /// itself is where it starts.
  void setDirectory(const std::string& directory) { directory_ = directory; }
  void setSelection(const std::string& path);

  /// Offers a choice beside the file at the next showing, unset at first.
  void setOption(const char* label) { option_ = label; }
  /// Whether the user set the choice that the last showing offered.
  bool optionChosen() const;

  /// Which names are shown: a shell pattern without directory, at first "*".
  void setFilterPattern(const char* pattern);

 private:
  Widget createDialog(Widget parent) override;
  void prepare(const char* message) override;
  void ok() override;
  void cancel() override;
  void widgetDestroyed() override;

  static void showAllCallback(Widget widget, XtPointer self, XtPointer data);
  void showAll();
  void search(const std::string& directory);
  Widget selectionText() const;
  void showSelection();

  std::string fileName_;
  std::string directory_;
  std::string selection_;  // filled in at the next showing
  std::string pattern_ = "*";
  std::string option_;  // offered at the next showing; empty: none
  Widget showAllToggle_ = nullptr, optionToggle_ = nullptr;
};

/// The application's one file selection dialog, made at first use and owned by theApplication.
VkFileSelectionDialog* getTheFileSelectionDialog();
