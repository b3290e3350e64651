/// @file
/// The joint dialog's tab panel, which carries no values.
#include "dialogs/jointdialog.h"

#include <Xm/Form.h>

#include "dialogs/values/kinds.h"
#include "viewkit/preflayout.h"

Widget JointDialog::createDialog(Widget parent) {
  const Widget dialog = createFrom(values::joint_dialog(), parent);
  const Widget form = XtVaCreateManagedWidget("form", xmFormWidgetClass, dialog, nullptr);
  tab_ = std::make_unique<VkTabPanel>("tab", form, true);
  tab_->addTab("default");
  tab_->show();
  XtVaSetValues(tab_->baseWidget(), XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM,
                XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
  XtVaSetValues(form, XmNheight, viewkit::naturalSize(tab_->baseWidget()).height, nullptr);
  addBelowItems(form);
  return dialog;
}
