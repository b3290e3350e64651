/// @file
/// Tabs made of toggles.
#include "viewkit/vktabpanel.h"

#include <Xm/RowColumn.h>
#include <Xm/ToggleB.h>

#include <utility>

#include "viewkit/xraii.h"

VkTabPanel::VkTabPanel(const char* name, Widget parent, bool horizontal) : VkComponent(name) {
  setBaseWidget(XtVaCreateWidget(name, xmRowColumnWidgetClass, parent, XmNorientation,
                                 horizontal ? XmHORIZONTAL : XmVERTICAL, XmNpacking, XmPACK_TIGHT,
                                 XmNradioBehavior, True, XmNnavigationType, XmEXCLUSIVE_TAB_GROUP, nullptr));
}

void VkTabPanel::addTab(const char* label) {
  XtVaCreateManagedWidget(label, xmToggleButtonWidgetClass, baseWidget(), XmNindicatorOn, XmINDICATOR_NONE,
                          XmNshadowThickness, 1, XmNset, std::exchange(empty_, false) ? XmSET : XmUNSET,
                          XmNlabelString, viewkit::xmString(label).get(), nullptr);
}
