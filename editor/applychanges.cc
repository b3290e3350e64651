/// @file
/// From an applied property dialog to its record.
#include "dialogs/values/dispatch.h"
#include "editor/graphwindow.h"
#include "editor/model/currentscene.h"

int GraphWindow::applyChanges(VkPrefDialog* dialog, int, int) {
  if (!dialog->item()) return 0;
  const auto* const property = dynamic_cast<const PropertyDialog*>(dialog);
  const unsigned long index = property ? property->index() : 0;
  return values::applyChanges(*qis, dialog->name(), dialog->item()->model(), static_cast<Word>(index));
}
