/// @file
/// The shared question and warning dialogs.
#pragma once

#include "viewkit/symbols.h"
#include "viewkit/vkdialogmanager.h"
#include "viewkit/xraii.h"

/// A dialog that shows a message beside a symbol.
class VkMessageDialog : public VkDialogManager {
 public:
  const char* className() const override { return "VkMessageDialog"; }

 protected:
  VkMessageDialog(const char* name, viewkit::Symbol symbol, bool canCancel)
      : VkDialogManager(name), symbolKind_(symbol), canCancel_(canCancel) {}
  Widget createDialog(Widget parent) override;
  void prepare(const char* message) override;

 private:
  viewkit::Symbol symbolKind_;
  bool canCancel_;
  viewkit::PixmapId symbol_;
};

/// Asks with OK and Cancel.
class VkQuestionDialog final : public VkMessageDialog {
 public:
  explicit VkQuestionDialog(const char* name) : VkMessageDialog(name, viewkit::Symbol::QUESTION, true) {}
  const char* className() const override { return "VkQuestionDialog"; }
};

/// Tells about a failure; OK only.
class VkWarningDialog final : public VkMessageDialog {
 public:
  explicit VkWarningDialog(const char* name) : VkMessageDialog(name, viewkit::Symbol::WARNING, false) {}
  const char* className() const override { return "VkWarningDialog"; }
};

/// Tells something; OK only.
class VkInformationDialog final : public VkMessageDialog {
 public:
  explicit VkInformationDialog(const char* name)
      : VkMessageDialog(name, viewkit::Symbol::INFORMATION, false) {}
  const char* className() const override { return "VkInformationDialog"; }
};

/// The application's shared dialogs, made at first use and owned by theApplication.
VkQuestionDialog* getTheQuestionDialog();
VkWarningDialog* getTheWarningDialog();
VkInformationDialog* getTheInformationDialog();
