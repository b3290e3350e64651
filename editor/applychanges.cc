/// @file
/// From an applied property dialog to its record.
#include "dialogs/values/dispatch.h"
#include "dialogs/writeback.h"
#include "editor/graphwindow.h"

int GraphWindow::applyChanges(VkPrefDialog* dialog, int, int) {
  if (!dialog->item()) return 0;
  const auto* const property = dynamic_cast<const PropertyDialog*>(dialog);
  const unsigned long index = property ? property->index() : 0;
  const values::Dialog* const kind = values::applied_dialog(dialog->name(), static_cast<Word>(index));
  return kind ? writeBack(*kind, *dialog->item(), index) : 0;
}
