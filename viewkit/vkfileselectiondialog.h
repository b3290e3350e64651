/// @file The shared file selection dialog.
#pragma once

#include <string>

#include "viewkit/vkdialogmanager.h"

/// Lets the user choose a file, one that exists or one to be. Opens in the working directory at first and
/// then where it was left. Shows the files of the filter pattern ("*.quil" at first), or all of them when the
/// user sets "Show all files".
class VkFileSelectionDialog final : public VkDialogManager {
 public:
  explicit VkFileSelectionDialog(const char* name) : VkDialogManager(name) {}
  const char* className() const override { return "VkFileSelectionDialog"; }

  /// The absolute path that the last OK answered; "" before.
  const char* fileName() const { return fileName_.c_str(); }

  /// Which names are shown: a shell pattern without directory.
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

  std::string fileName_;
  std::string directory_;
  std::string pattern_ = "*.quil";
  Widget showAllToggle_ = nullptr;
};

/// The application's one file selection dialog, made at first use and owned by theApplication.
VkFileSelectionDialog* getTheFileSelectionDialog();
