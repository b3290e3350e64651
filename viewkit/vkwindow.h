/// @file
/// A top-level window with a menu bar.
#pragma once

#include <memory>

#include "viewkit/vkmenu.h"
#include "viewkit/vksimplewindow.h"

class VkWindow : public VkSimpleWindow {
 public:
  explicit VkWindow(const char* name);
  ~VkWindow() override;
  const char* className() const override { return "VkWindow"; }

  /// Appends a pane to the menu bar.
  /// @param table ends with an END entry; read during the call only.
  /// @param clientData for the entries that have none of their own.
  VkSubMenu* addMenuPane(const char* label, const VkMenuDesc* table, XtPointer clientData = nullptr);

  /// The menu bar; its items are the panes.
  VkMenu* menu() const;

 private:
  std::unique_ptr<VkMenuBar> menuBar_;
};
