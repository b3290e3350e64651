/// @file The shared question and warning dialogs.
#pragma once

#include "viewkit/vkdialogmanager.h"
#include "viewkit/xraii.h"

/// A dialog that shows a message beside a symbol.
class VkMessageDialog : public VkDialogManager {
 public:
  const char* className() const override { return "VkMessageDialog"; }

 protected:
  using VkDialogManager::VkDialogManager;
  Widget createDialog(Widget parent) override;
  void prepare(const char* message) override;

  /// The picture beside the message, in the colours of `dialog`.
  virtual viewkit::PixmapId drawSymbol(Widget dialog) = 0;
  virtual bool canCancel() const = 0;

 private:
  viewkit::PixmapId symbol_;
};

/// Asks with OK and Cancel.
class VkQuestionDialog final : public VkMessageDialog {
 public:
  explicit VkQuestionDialog(const char* name) : VkMessageDialog(name) {}
  const char* className() const override { return "VkQuestionDialog"; }

 private:
  viewkit::PixmapId drawSymbol(Widget dialog) override;
  bool canCancel() const override { return true; }
};

/// Tells about a failure; OK only.
class VkWarningDialog final : public VkMessageDialog {
 public:
  explicit VkWarningDialog(const char* name) : VkMessageDialog(name) {}
  const char* className() const override { return "VkWarningDialog"; }

 private:
  viewkit::PixmapId drawSymbol(Widget dialog) override;
  bool canCancel() const override { return false; }
};

/// The application's shared dialogs, made at first use and owned by theApplication.
VkQuestionDialog* getTheQuestionDialog();
VkWarningDialog* getTheWarningDialog();
