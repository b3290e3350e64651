/// @file
/// One builder for the items of all dialogs.
#include "dialogs/prefitems.h"

namespace {

using values::Item;
using values::ItemKind;

std::unique_ptr<VkPrefItem> makeItem(const Item& item);

template <class Group>
std::unique_ptr<VkPrefGroup> filled(std::unique_ptr<Group> group, const Item& item) {
  for (std::size_t i = 0; i < item.size(); ++i) group->addItem(makeItem(item.item(i)));
  return group;
}

std::unique_ptr<VkPrefItem> makeOption(const Item& item) {
  const auto& entries = item.look().entries;
  auto option = std::make_unique<VkPrefOption>(item.name().c_str(), static_cast<int>(entries.size()));
  for (int i = 0; i < option->size(); ++i) option->setLabel(i, entries[static_cast<std::size_t>(i)].c_str());
  return option;
}

std::unique_ptr<VkPrefItem> makeItem(const Item& item) {
  const char* const name = item.name().c_str();
  const auto& [horizontal, no_label, columns, entries, force_label_format] = item.look();
  switch (item.kind()) {
    case ItemKind::list:
      return filled(std::make_unique<VkPrefList>(name), item);
    case ItemKind::group:
      return filled(std::make_unique<VkPrefGroup>(name, horizontal, no_label), item);
    case ItemKind::radio:
      return filled(std::make_unique<VkPrefRadio>(name, horizontal, no_label), item);
    case ItemKind::toggle:
      return std::make_unique<VkPrefToggle>(name, force_label_format);
    case ItemKind::text:
      return std::make_unique<VkPrefText>(name, columns);
    case ItemKind::option:
      return makeOption(item);
    case ItemKind::label:
      return std::make_unique<VkPrefLabel>(name);
    case ItemKind::separator:
      break;
  }
  return std::make_unique<VkPrefSeparator>(name);
}

void showItem(VkPrefItem& shown, const Item& item) {
  if (auto* const toggle = dynamic_cast<VkPrefToggle*>(&shown)) toggle->setValue(item.on());
  if (auto* const text = dynamic_cast<VkPrefText*>(&shown)) text->setValue(item.text());
  if (auto* const option = dynamic_cast<VkPrefOption*>(&shown)) option->setValue(item.option());
  if (item.label()) shown.setLabelText(*item.label());
}

/// Calls `what` for the items in a group and the values that belong to them, groups first.
template <class What>
void forEachItem(VkPrefGroup& shown, const Item& top, What what) {
  for (std::size_t i = 0; i < top.size(); ++i) {
    VkPrefItem* const item = shown.item(static_cast<int>(i));
    if (!item) return;
    what(*item, top.item(i));
    if (auto* const group = dynamic_cast<VkPrefGroup*>(item)) forEachItem(*group, top.item(i), what);
  }
}

ItemKind kindOf(const VkPrefGroup& group) {
  if (dynamic_cast<const VkPrefList*>(&group)) return ItemKind::list;
  return dynamic_cast<const VkPrefRadio*>(&group) ? ItemKind::radio : ItemKind::group;
}

}  // namespace

std::unique_ptr<VkPrefGroup> makePrefItems(const Item& top) {
  return filled(std::make_unique<VkPrefList>(top.name().c_str()), top);
}

void showValues(VkPrefGroup& shown, const Item& top) {
  forEachItem(shown, top, &showItem);
  showActivation(shown, top);
}

void showActivation(VkPrefGroup& shown, const Item& top) {
  forEachItem(shown, top,
              [](VkPrefItem& item, const Item& values) { item.setActivated(values.activated()); });
}

Item valuesOf(const VkPrefItem& shown) {
  const auto item = [&](ItemKind kind) { return Item(kind, shown.name()); };
  const auto with = [&](ItemKind kind, values::Value value) {
    Item made = item(kind);
    made.mirror(std::move(value), shown.changed());
    made.setActivated(shown.activated());
    return made;
  };
  if (const auto* const toggle = dynamic_cast<const VkPrefToggle*>(&shown))
    return with(ItemKind::toggle, {.on = toggle->getValue()});
  if (const auto* const text = dynamic_cast<const VkPrefText*>(&shown))
    return with(ItemKind::text, {.text = text->getValue()});
  if (const auto* const option = dynamic_cast<const VkPrefOption*>(&shown)) {
    Item made = with(ItemKind::option, {.option = option->getValue()});
    for (int i = 0; i < option->size(); ++i) made.look().entries.push_back(option->label(i));
    return made;
  }
  if (const auto* const group = dynamic_cast<const VkPrefGroup*>(&shown)) {
    Item made = item(kindOf(*group));
    for (int i = 0; i < group->size(); ++i) made.add(valuesOf(*group->item(i)));
    return made;
  }
  return item(dynamic_cast<const VkPrefLabel*>(&shown) ? ItemKind::label : ItemKind::separator);
}
