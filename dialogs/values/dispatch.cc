/// @file
/// The table of dialogs and what goes by it.
#include "dialogs/values/dispatch.h"

#include <algorithm>
#include <cstdio>

#include "dialogs/values/kinds.h"
#include "editor/model/nodenames.h"

namespace values {
namespace {

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

}  // namespace

std::span<const Dialog* const> dialogs() {
  static const auto kDialogs = per_kind([]<class Key>() { return &dialog_of<Key>(); });
  return kDialogs;
}

std::optional<DialogOn> dialog_of_node(std::string_view name) {
  const auto node = find_node(name);
  if (!node) return std::nullopt;
  return DialogOn{dialogs()[kind_place(*node->kind)], node->number};
}

PrefAction handlePrefs(std::string_view dialog_name, int reason) {
  switch (reason) {
    case kPrefCancel:
      std::printf("Canceled.\n");
      return PrefAction::nothing;
    case kPrefOk:
      std::printf("OK.\n");
      return PrefAction::nothing;
    case kPrefApply:
      break;
    default:
      return PrefAction::nothing;
  }
  std::printf("APPLY.\n");
  const bool gfx = contains(dialog_name, "quil2gfxDialog");
  if (!gfx && !contains(dialog_name, "quil2zexDialog")) return PrefAction::applyChanges;
  std::printf("Call applyOptions.\n");
  return gfx ? PrefAction::applyOptions : PrefAction::applyOptions2;
}

int applyChanges(Qis& scene, std::string_view dialog_name, Item& top, Word number) {
  std::printf("This is %.*s, index = %u.\n", static_cast<int>(dialog_name.size()), dialog_name.data(),
              number);
  const auto dialog =
      std::ranges::find_if(dialogs(), [&](const Dialog* d) { return contains(dialog_name, d->name()); });
  if (dialog == dialogs().end()) return 0;
  if (const char* const call = (*dialog)->traced_call()) std::printf("Call %s.\n", call);
  if (*dialog == &dialog_of<qi::Obj>()) std::printf("This node is obj_%u (member func)\n", number);
  return (*dialog)->write_back(scene, top, number);
}

}  // namespace values
