/// @file
/// Label lines, items, widgets: in that order.
#include "dialogs/optionsdialog.h"

Widget ConverterDialog::createDialog(Widget parent) {
  setDefaultResources(parent, values_.lines);
  setItem(std::make_unique<VkPrefList>(values_.items()));
  return VkPrefDialog::createDialog(parent);
}
