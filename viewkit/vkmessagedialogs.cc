/// @file
/// The shared question and warning dialogs.
#include "viewkit/vkmessagedialogs.h"

#include <Xm/MessageB.h>

#include "viewkit/vkapp.h"

Widget VkMessageDialog::createDialog(Widget parent) {
  std::string widgetName = name();
  const Widget dialog = XmCreateMessageDialog(parent, widgetName.data(), nullptr, 0);
  symbol_ = viewkit::drawSymbol(dialog, symbolKind_);
  XtVaSetValues(dialog, XmNautoUnmanage, False, XmNsymbolPixmap, symbol_.get(), nullptr);
  XtAddCallback(dialog, XmNokCallback, &okCallback, this);
  XtAddCallback(dialog, XmNcancelCallback, &cancelCallback, this);
  XtUnmanageChild(XtNameToWidget(dialog, "Help"));
  if (!canCancel_) XtUnmanageChild(XtNameToWidget(dialog, "Cancel"));
  return dialog;
}

void VkMessageDialog::prepare(const char* message) {
  XtVaSetValues(baseWidget(), XmNmessageString, viewkit::xmString(message ? message : "").get(),
                XmNdefaultButtonType, XmDIALOG_OK_BUTTON, nullptr);
}

VkQuestionDialog* getTheQuestionDialog() {
  return theApplication->shared<VkQuestionDialog>("questionDialog");
}

VkWarningDialog* getTheWarningDialog() { return theApplication->shared<VkWarningDialog>("warningDialog"); }

VkInformationDialog* getTheInformationDialog() {
  return theApplication->shared<VkInformationDialog>("informationDialog");
}
