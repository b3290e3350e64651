/// @file
/// The dialogs by their kinds.
#include "dialogs/propertydialogs.h"

#include "editor/model/nodenames.h"

namespace {

template <class Key>
std::unique_ptr<PropertyDialog> make(const char* name, unsigned long index) {
  if constexpr (std::is_constructible_v<KindDialog<Key>, const char*, unsigned long>) {
    return std::make_unique<KindDialog<Key>>(name, index);
  } else {
    return std::make_unique<KindDialog<Key>>(name);
  }
}

constexpr auto kMakers = per_kind([]<class Key>() { return &make<Key>; });

}  // namespace

std::unique_ptr<PropertyDialog> makePropertyDialog(const values::DialogOn& on) {
  const auto& [dialog, number] = on;
  if (!dialog->require_record(number)) return nullptr;
  const NodeKind& kind = dialog->kind();
  auto made = kMakers[kind_place(kind)](kind.dialog, number);
  made->setTitle(node_name(kind, number).c_str());
  return made;
}
