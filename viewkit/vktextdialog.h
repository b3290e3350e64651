/// @file
/// A dialog that shows a long text.
#pragma once

#include <string>

#include "viewkit/vkdialogmanager.h"

/// Shows lines of text in columns, which can be scrolled and copied, and a Close button. The keyboard is in
/// the text; Escape closes.
class VkTextDialog final : public VkDialogManager {
 public:
  explicit VkTextDialog(const char* name) : VkDialogManager(name) {}
  const char* className() const override { return "VkTextDialog"; }

 private:
  Widget createDialog(Widget parent) override;
  /// @param text  what is shown.
  void prepare(const char* text) override;
  Widget text() const;
};
