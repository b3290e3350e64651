/// @file
/// The joint dialog's tab panel, which carries no values.
#include "dialogs/propertydialogs.h"

#include <Xm/Form.h>

#include "viewkit/preflayout.h"
#include "viewkit/vktabpanel.h"

template <>
Widget JointDialog::createDialog(Widget parent) {
  const Widget dialog = createFrom(values::dialog_of<qi::Joint>(), parent);
  const Widget form = XtVaCreateManagedWidget("form", xmFormWidgetClass, dialog, nullptr);
  VkTabPanel& tab = keep(std::make_unique<VkTabPanel>("tab", form, true));
  tab.addTab("default");
  tab.show();
  XtVaSetValues(tab.baseWidget(), XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM,
                XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
  XtVaSetValues(form, XmNheight, viewkit::naturalSize(tab.baseWidget()).height, nullptr);
  addBelowItems(form);
  return dialog;
}
