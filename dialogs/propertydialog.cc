/// @file
/// Label lines, items, widgets, values: in that order.
#include "dialogs/propertydialog.h"

#include "dialogs/prefitems.h"

Widget PropertyDialog::createFrom(const values::Dialog& dialog, Widget parent) {
  setDefaultResources(parent, dialog.lines());
  const auto items = dialog.open(static_cast<Word>(index()));
  if (items) setItem(makePrefItems(*items));
  const Widget made = VkPrefDialog::createDialog(parent);
  if (items) showValues(*item(), *items);
  return made;
}

void PropertyDialog::addSwatch(VkPrefItem* item, const std::vector<VkPrefItem*>& components,
                               ColorSwatch::Read read) {
  if (item) keep(std::make_unique<ColorSwatch>(*item, components, std::move(read)));
}

void PropertyDialog::widgetDestroyed() {
  parts_.clear();
  VkPrefDialog::widgetDestroyed();
  setItem(nullptr);
}
