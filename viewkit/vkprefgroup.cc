/// @file
/// Groups of items, and toggles that turn each other off.
#include "viewkit/vkprefgroup.h"

#include <Xm/DrawingA.h>

#include <algorithm>

void VkPrefGroup::append(std::unique_ptr<VkPrefItem> item) {
  added(*item);
  items_.push_back(std::move(item));
}

VkPrefItem* VkPrefGroup::item(int number) const {
  return number >= 0 && number < size() ? items_[static_cast<std::size_t>(number)].get() : nullptr;
}

VkPrefItem* VkPrefGroup::item(const std::string& name) const {
  const auto found = std::ranges::find_if(items_, [&](const auto& item) { return item->name() == name; });
  return found == items_.end() ? nullptr : found->get();
}

bool VkPrefGroup::changed() const {
  return std::ranges::any_of(items_, [](const auto& item) { return item->changed(); });
}

void VkPrefGroup::applied() {
  for (const auto& item : items_) item->applied();
}

void VkPrefGroup::revert() {
  for (const auto& item : items_) item->revert();
}

void VkPrefGroup::createWidgets(Widget parent) {
  if (!noLabel_) createLabel(parent);
  showIn(XtVaCreateWidget(baseName().c_str(), xmDrawingAreaWidgetClass, parent, XmNmarginWidth, 0,
                          XmNmarginHeight, 0, XmNresizePolicy, XmRESIZE_NONE, nullptr));
  for (const auto& item : items_) item->createWidgets(baseWidget());
}

Widget VkPrefGroup::focusWidget() const {
  for (const auto& item : items_)
    if (const Widget focus = item->focusWidget()) return focus;
  return nullptr;
}

void VkPrefRadio::added(VkPrefItem& item) {
  auto* const toggle = dynamic_cast<VkPrefToggle*>(&item);
  if (!toggle) return;
  toggle->exclusive_ = true;
  toggle->addCallback(VkPrefItem::shownCallback, this, &VkPrefRadio::toggleShown);
}

void VkPrefRadio::toggleShown(VkPrefToggle* toggle, void*, void*) {
  if (!toggle->getValue() || !toggle->changed()) return;
  for (int i = 0; i < size(); ++i) {
    auto* const other = dynamic_cast<VkPrefToggle*>(item(i));
    if (other && other != toggle && other->getValue()) other->edit(false);
  }
}
