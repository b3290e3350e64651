/// @file
/// Tabs made of toggles.
#include "viewkit/vktabpanel.h"

#include <Xm/RowColumn.h>
#include <Xm/ToggleB.h>

#include <algorithm>

#include "viewkit/forward.h"
#include "viewkit/xraii.h"

const char* const VkTabPanel::tabSelectedCallback = "tabSelectedCallback";

VkTabPanel::VkTabPanel(const char* name, Widget parent, bool horizontal) : VkComponent(name) {
  setBaseWidget(XtVaCreateWidget(name, xmRowColumnWidgetClass, parent, XmNorientation,
                                 horizontal ? XmHORIZONTAL : XmVERTICAL, XmNpacking, XmPACK_TIGHT,
                                 XmNnavigationType, XmEXCLUSIVE_TAB_GROUP, nullptr));
}

int VkTabPanel::addTab(const char* label, void* clientData) {
  const Widget button = XtVaCreateManagedWidget(label, xmToggleButtonWidgetClass, baseWidget(),
                                                XmNindicatorOn, XmINDICATOR_NONE, XmNshadowThickness, 1,
                                                XmNlabelString, viewkit::xmString(label).get(), nullptr);
  XtAddCallback(button, XmNvalueChangedCallback, &viewkit::Forward<&VkTabPanel::clicked>::call, this);
  tabs_.push_back({button, clientData});
  if (selected_ < 0) selected_ = 0;
  showSelection();
  return size() - 1;
}

void VkTabPanel::selectTab(int index) {
  if (index < 0 || index >= size()) return;
  const bool another = index != selected_;
  selected_ = index;
  showSelection();
  if (another) callCallbacks(tabSelectedCallback, tabs_[static_cast<std::size_t>(index)].clientData);
}

void VkTabPanel::clicked(Widget button, XtPointer) {
  const auto tab = std::ranges::find(tabs_, button, &Tab::button);
  selectTab(static_cast<int>(tab - tabs_.begin()));
}

void VkTabPanel::showSelection() {
  for (int i = 0; i < size(); ++i)
    XmToggleButtonSetState(tabs_[static_cast<std::size_t>(i)].button, i == selected_, False);
}
