/// @file
/// The dialog with a long text.
#include "viewkit/vktextdialog.h"

#include <Xm/Form.h>
#include <Xm/PushB.h>
#include <Xm/Text.h>

#include <array>

Widget VkTextDialog::createDialog(Widget parent) {
  std::string widgetName = name();
  const Widget form = XmCreateFormDialog(parent, widgetName.data(), nullptr, 0);
  XtVaSetValues(form, XmNautoUnmanage, False, nullptr);
  const Widget close = XtVaCreateManagedWidget("close", xmPushButtonWidgetClass, form, XmNbottomAttachment,
                                               XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
  XtAddCallback(close, XmNactivateCallback, &cancelCallback, this);
  XtVaSetValues(form, XmNcancelButton, close, nullptr);
  std::string textName = "text";
  std::array<Arg, 3> args{Arg{const_cast<char*>(XmNeditMode), XmMULTI_LINE_EDIT},
                          Arg{const_cast<char*>(XmNeditable), False},
                          Arg{const_cast<char*>(XmNcursorPositionVisible), False}};
  const Widget shown =
      XmCreateScrolledText(form, textName.data(), args.data(), static_cast<Cardinal>(args.size()));
  XtVaSetValues(XtParent(shown), XmNtopAttachment, XmATTACH_FORM, XmNleftAttachment, XmATTACH_FORM,
                XmNrightAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_WIDGET, XmNbottomWidget,
                close, nullptr);
  XtManageChild(shown);
  XtVaSetValues(form, XmNinitialFocus, XtParent(shown), nullptr);
  return form;
}

Widget VkTextDialog::text() const { return XtNameToWidget(baseWidget(), "*text"); }

void VkTextDialog::prepare(const char* text) {
  std::string copy = text ? text : "";
  XmTextSetString(VkTextDialog::text(), copy.data());
  XmTextShowPosition(VkTextDialog::text(), 0);
}
