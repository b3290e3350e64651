/// @file
/// From a node to its dialog on the screen.
#include "editor/editflags.h"

#include <algorithm>
#include <utility>

#include "dialogs/propertydialogs.h"

PropertyDialog* NodeDialogs::open(const char* node, bool editing) {
  const auto record = values::dialog_of_node(node);
  auto dialog = record ? makePropertyDialog(*record) : nullptr;
  if (!dialog) return nullptr;
  dialog->showEditMode(editing);
  dialog->show();
  // Every dialog comes up in the middle of the window, where it would hide the one opened before.
  const auto last =
      std::find_if(dialogs_.rbegin(), dialogs_.rend(), [](const auto& d) { return d->isPosted(); });
  if (last != dialogs_.rend()) dialog->placeBeside(**last);
  return dialogs_.emplace_back(std::move(dialog)).get();
}

void NodeDialogs::closeAll() {
  for (const auto& dialog : dialogs_) dialog->hide();
}

void NodeDialogs::showWhetherCurrent() {
  for (const auto& dialog : dialogs_)
    if (dialog->isPosted()) dialog->showWhetherCurrent();
}

void NodeDialogs::showEditMode(bool on) {
  for (const auto& dialog : dialogs_) dialog->showEditMode(on);
}
