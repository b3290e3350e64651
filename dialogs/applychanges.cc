/// @file
/// The way of the values through the write-back.
#include "dialogs/applychanges.h"

#include "dialogs/prefitems.h"
#include "dialogs/propertydialog.h"
#include "dialogs/values/dispatch.h"

int applyChanges(VkPrefDialog& dialog) {
  if (!dialog.item()) return 0;
  const auto* const property = dynamic_cast<const PropertyDialog*>(&dialog);
  values::Item top = valuesOf(*dialog.item());
  const int result =
      values::applyChanges(dialog.name(), top, property ? static_cast<Word>(property->index()) : 0);
  showActivation(*dialog.item(), top);
  return result;
}
