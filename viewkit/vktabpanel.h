/// @file
/// A row or column of tabs of which one is selected.
#pragma once

#include "viewkit/vkcomponent.h"

/// Tabs as buttons; the selected one, at first the first one, is pressed in. The panel carries no pages.
class VkTabPanel : public VkComponent {
 public:
  VkTabPanel(const char* name, Widget parent, bool horizontal = true);
  const char* className() const override { return "VkTabPanel"; }

  /// Appends a tab with that label, which names its button, too.
  void addTab(const char* label);

 private:
  bool empty_ = true;
};
