/// @file
/// The shared list dialog.
#include "viewkit/vklistdialog.h"

#include <Xm/List.h>
#include <Xm/SelectioB.h>

#include "viewkit/vkapp.h"
#include "viewkit/xraii.h"

std::optional<std::size_t> VkListDialog::choose(const char* title, const std::vector<std::string>& rows) {
  rows_ = rows;
  setTitle(title);
  if (postAndWait() != VkDialogReason::OK || !baseWidget()) return std::nullopt;
  int* places = nullptr;
  int count = 0;
  XtVaGetValues(list(), XmNselectedPositions, &places, XmNselectedPositionCount, &count, nullptr);
  if (count == 0) return std::nullopt;
  return static_cast<std::size_t>(places[0]) - 1;
}

Widget VkListDialog::createDialog(Widget parent) {
  std::string widgetName = name();
  const Widget dialog = XmCreateSelectionDialog(parent, widgetName.data(), nullptr, 0);
  XtVaSetValues(dialog, XmNautoUnmanage, False, nullptr);
  XtAddCallback(dialog, XmNokCallback, &okCallback, this);
  XtAddCallback(dialog, XmNcancelCallback, &cancelCallback, this);
  for (const char* const unused : {"Apply", "Help", "Items", "Selection", "Text"})
    XtUnmanageChild(XtNameToWidget(dialog, unused));
  return dialog;
}

Widget VkListDialog::list() const { return XtNameToWidget(baseWidget(), "*ItemsList"); }

void VkListDialog::prepare(const char*) {
  XmListDeleteAllItems(list());
  for (const std::string& row : rows_) XmListAddItemUnselected(list(), viewkit::xmString(row).get(), 0);
  XmListSelectPos(list(), 1, False);
  XmListSetPos(list(), 1);
}

VkListDialog* getTheListDialog() { return theApplication->shared<VkListDialog>("listDialog"); }
