/// @file
/// What a double-click on a node does: the property dialog of its record, and what becomes of its answers.
#include <algorithm>
#include <cstdio>
#include <utility>

#include "dialogs/prefitems.h"
#include "dialogs/propertydialogs.h"
#include "dialogs/values/optionvalues.h"
#include "editor/graphwindow.h"

void GraphWindow::defaultAction(Widget, XtPointer data) {
  std::printf("In defaultActionCallback\n");
  nodeAction(*static_cast<const SgGraphCallbackStruct*>(data));
}

void GraphWindow::nodeAction(const SgGraphCallbackStruct& action) {
  if (action.reason != SgCR_DEFAULT_ACTION) return;
  const VkNode* const node = VkNode::of(action.node);
  if (!node) return;
  std::printf("%s\n", node->label());
  const auto record = values::dialog_of_node(node->name());
  auto dialog = record ? makePropertyDialog(*record) : nullptr;
  if (!dialog) return;
  dialog->show();
  // Dialogs come up in the middle of the window, where this one would hide the last.
  const auto open =
      std::find_if(dialogs_.rbegin(), dialogs_.rend(), [](const auto& d) { return d->isPosted(); });
  if (open != dialogs_.rend()) dialog->placeBeside(**open);
  dialog->addCallback(VkPrefDialog::prefCallback, this, &GraphWindow::handlePrefs);
  dialogs_.push_back(std::move(dialog));
}

void GraphWindow::handlePrefs(VkComponent* component, void*, void* reason) {
  auto* const dialog = dynamic_cast<VkPrefDialog*>(component);
  const auto answer = *static_cast<const VkDialogReason*>(reason);
  if (!dialog) return;
  switch (values::handlePrefs(dialog->name(), static_cast<int>(answer))) {
    case values::PrefAction::nothing:
      break;
    case values::PrefAction::applyOptions:
      applyOptions(dialog);
      break;
    case values::PrefAction::applyOptions2:
      applyOptions2(dialog);
      break;
    case values::PrefAction::applyChanges:
      if (editsArcs())
        applyChanges(dialog, 0, 0);
      else
        dialog->refuseApply();
  }
}

void GraphWindow::applyOptions(VkPrefDialog* dialog) {
  if (dialog->item()) values::quil2gfx_dialog().apply(valuesOf(*dialog->item()));
}

void GraphWindow::applyOptions2(VkPrefDialog* dialog) {
  if (dialog->item()) values::quil2zex_dialog().apply(valuesOf(*dialog->item()));
}

bool GraphWindow::editsArcs() const {
  Boolean editable = False;
  XtVaGetValues(graph_->graphWidget(), SgNeditableArcs, &editable, nullptr);
  return editable;
}

void GraphWindow::closeDialogs() {
  for (const auto& dialog : dialogs_) dialog->hide();
}
