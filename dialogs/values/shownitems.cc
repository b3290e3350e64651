/// @file
/// What nodes' dialogs show.
#include "dialogs/values/shownitems.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "dialogs/values/dispatch.h"
#include "dialogs/values/itemtext.h"

namespace values {

std::optional<std::vector<ShownItem>> shown_items(Qis& scene, std::string_view node) {
  const auto on = dialog_of_node(node);
  if (!on || !on->dialog->has_record(scene, on->number)) return std::nullopt;
  std::vector<ShownItem> shown;
  for_each_shown(*on->dialog->items(scene, on->number), [&](const std::string& path, const Item& item) {
    shown.push_back({path, shown_text(item, on->dialog->lines())});
  });
  return shown;
}

std::vector<ItemDifference> item_differences(Qis& before, Qis& after, std::string_view node) {
  const auto a = shown_items(before, node), b = shown_items(after, node);
  if (!a || !b) return {};
  std::unordered_map<std::string_view, const ShownItem*> in_after;
  for (const ShownItem& item : *b) in_after.emplace(item.path, &item);
  std::vector<ItemDifference> differences;
  for (const ShownItem& item : *a) {
    const auto found = in_after.find(item.path);
    if (found == in_after.end()) {
      differences.push_back({item.path, item.text, std::nullopt});
    } else {
      if (found->second->text != item.text)
        differences.push_back({item.path, item.text, found->second->text});
      in_after.erase(found);
    }
  }
  for (const ShownItem& item : *b)
    if (in_after.contains(item.path)) differences.push_back({item.path, std::nullopt, item.text});
  return differences;
}

}  // namespace values
