/// @file
/// Label lines, items, widgets, values: in that order.
#include "dialogs/optionsdialog.h"

#include "dialogs/prefitems.h"

Widget ConverterDialog::createDialog(Widget parent) {
  setDefaultResources(parent, values_.lines);
  const values::Item items = values_.items();
  setItem(makePrefItems(items));
  const Widget made = VkPrefDialog::createDialog(parent);
  showValues(*item(), items);
  return made;
}
