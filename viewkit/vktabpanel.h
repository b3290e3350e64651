/// @file
/// A row or column of tabs of which one is selected.
#pragma once

#include <vector>

#include "viewkit/vkcomponent.h"

/// Tabs as buttons; the selected one is pressed in. The panel carries no pages: whoever cares listens to
/// tabSelectedCallback and shows what belongs to the tab.
class VkTabPanel : public VkComponent {
 public:
  /// Called when another tab was selected; the call data is the tab's client data.
  static const char* const tabSelectedCallback;

  VkTabPanel(const char* name, Widget parent, bool horizontal = true);
  const char* className() const override { return "VkTabPanel"; }

  /// Appends a tab with that label; the first one is selected. @returns its index from 0.
  int addTab(const char* label, void* clientData = nullptr);
  int size() const { return static_cast<int>(tabs_.size()); }
  /// The index of the selected tab; -1 without tabs.
  int selectedTab() const { return selected_; }
  /// Selects a tab; other indices are ignored.
  void selectTab(int index);

 private:
  struct Tab {
    Widget button;
    void* clientData;
  };

  void clicked(Widget button, XtPointer data);
  void showSelection();
  void widgetDestroyed() override { tabs_.clear(); }

  std::vector<Tab> tabs_;
  int selected_ = -1;
};
