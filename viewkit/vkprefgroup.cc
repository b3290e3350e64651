/// @file
/// Groups of items, and what shows an item of which kind.
#include "viewkit/vkprefgroup.h"

#include <Xm/DrawingA.h>

#include <algorithm>
#include <utility>

#include "viewkit/longcolumns.h"

using items::Item;
using items::ItemKind;
using items::Look;

std::unique_ptr<VkPrefItem> VkPrefItem::showing(Item& item) {
  switch (item.kind()) {
    case ItemKind::list:
      return std::make_unique<VkPrefList>(item);
    case ItemKind::group:
      return std::make_unique<VkPrefGroup>(item);
    case ItemKind::radio:
      return std::make_unique<VkPrefRadio>(item);
    case ItemKind::toggle:
      return std::make_unique<VkPrefToggle>(item);
    case ItemKind::text:
      return std::make_unique<VkPrefText>(item);
    case ItemKind::option:
      return std::make_unique<VkPrefOption>(item);
    case ItemKind::label:
      return std::make_unique<VkPrefLabel>(item);
    case ItemKind::separator:
      break;
  }
  return std::make_unique<VkPrefSeparator>(item);
}

VkPrefGroup::VkPrefGroup(const char* name, bool horizontal, bool noLabel)
    : VkPrefGroup(std::make_unique<Item>(ItemKind::group, name,
                                         Look{.horizontal = horizontal, .no_label = noLabel})) {}

VkPrefRadio::VkPrefRadio(const char* name, bool horizontal, bool noLabel)
    : VkPrefGroup(std::make_unique<Item>(ItemKind::radio, name,
                                         Look{.horizontal = horizontal, .no_label = noLabel})) {}

VkPrefList::VkPrefList(const char* name) : VkPrefList(std::make_unique<Item>(ItemKind::list, name)) {}

VkPrefGroup::VkPrefGroup(Item& group) : VkPrefItem(group) { showItems(); }

VkPrefGroup::VkPrefGroup(std::unique_ptr<Item> group) : VkPrefItem(std::move(group)) { showItems(); }

VkPrefGroup::~VkPrefGroup() = default;

void VkPrefGroup::showItems() {
  for (std::size_t i = 0; i < model().size(); ++i) items_.push_back(showing(model().item(i)));
}

void VkPrefGroup::append(std::unique_ptr<VkPrefItem> item) {
  model().add(std::move(item->own_));
  items_.push_back(std::move(item));
}

VkPrefItem* VkPrefGroup::item(int number) const {
  return number >= 0 && number < size() ? items_[static_cast<std::size_t>(number)].get() : nullptr;
}

VkPrefItem* VkPrefGroup::item(std::string_view name) const {
  const auto found = std::ranges::find_if(items_, [&](const auto& item) { return item->name() == name; });
  return found == items_.end() ? nullptr : found->get();
}

VkPrefItem* VkPrefGroup::find(std::string_view path) {
  if (path.empty()) return this;
  const std::string_view name = path.substr(0, path.find('.'));
  VkPrefItem* const found = item(name);
  return found ? found->find(path.substr(std::min(name.size() + 1, path.size()))) : nullptr;
}

void VkPrefGroup::createWidgets(Widget parent) {
  if (model().kind() != ItemKind::list && !model().look().no_label) createLabel(parent);
  showIn(XtVaCreateWidget(baseName().c_str(), xmDrawingAreaWidgetClass, parent, XmNmarginWidth, 0,
                          XmNmarginHeight, 0, XmNresizePolicy, XmRESIZE_NONE, nullptr));
  if (viewkit::LongColumns::isOne(*this)) return;  // the group that holds it makes its rows
  for (const auto& item : items_) item->createWidgets(baseWidget());
  if (std::ranges::any_of(items_, [](const auto& item) { return viewkit::LongColumns::isOne(*item); }))
    longColumns_ = std::make_unique<viewkit::LongColumns>(*this);
}

void VkPrefGroup::widgetDestroyed() {
  longColumns_.reset();
  VkPrefItem::widgetDestroyed();
}

Widget VkPrefGroup::focusWidget() const {
  if (!activated()) return nullptr;
  for (const auto& item : items_)
    if (const Widget focus = item->activated() ? item->focusWidget() : nullptr) return focus;
  return nullptr;
}
