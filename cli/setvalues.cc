/// @file
/// Changing values by a script.
#include "cli/setvalues.h"

#include "cli/printable.h"
#include "dialogs/values/dispatch.h"
#include "dialogs/values/itemtext.h"

int set_values(Qis& scene, const std::vector<std::string>& operands) {
  const std::string& node = operands.front();
  const auto on = values::dialog_of_node(node);
  if (!on || !on->dialog->has_record(scene, on->number)) throw ValueError("no such node: " + printable(node));
  auto top = on->dialog->open(scene, on->number);
  std::vector<values::TextEdit> edits;
  for (std::size_t i = 1; i + 1 < operands.size(); i += 2) edits.push_back({operands[i], operands[i + 1]});
  if (const auto complaint = values::edit_texts(*top, edits))
    throw ValueError(printable(node + ": " + *complaint));
  values::handlePrefs(on->dialog->name(), values::kPrefApply);
  return values::applyChanges(scene, on->dialog->name(), *top, on->number);
}
