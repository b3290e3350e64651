/// @file
/// The item tree: values, changes, and who is told of them.
#include "items/item.h"

namespace items {

Item& Item::add(std::unique_ptr<Item> item) {
  item->holder_ = this;
  return *items_.emplace_back(std::move(item));
}

Item& Item::add(ItemKind kind, std::string name, Look look) {
  return add(std::make_unique<Item>(kind, std::move(name), std::move(look)));
}

void Item::set_label(std::string label) {
  label_ = std::move(label);
  if (watcher_) watcher_->restyled();
}

void Item::set_activated(bool activated) {
  activated_ = activated;
  if (watcher_) watcher_->restyled();
}

std::string Item::entry(int index) const {
  const auto number = static_cast<std::size_t>(index);
  return index >= 0 && number < look_.entries.size() ? look_.entries[number] : std::to_string(index);
}

void Item::show(Value value) {
  if (value == shown_) return;
  shown_ = std::move(value);
  tell_watchers([](Watcher& watcher) { watcher.shown(); });
}

void Item::set_value(Value value) {
  settled_ = value;
  changed_ = false;
  show(std::move(value));
}

void Item::edit(Value value) {
  if (value != settled_) changed_ = true;
  const bool turned_on = value.on;
  show(std::move(value));
  if (!turned_on || !in_radio()) return;
  for (const auto& other : holder_->items_)
    if (other.get() != this && other->on()) other->edit({.on = false});
}

void Item::refuse() {
  tell_watchers([this](Watcher& watcher) { watcher.refused(*this); });
}

bool Item::changed() const {
  return changed_ || std::ranges::any_of(items_, [](const auto& item) { return item->changed(); });
}

void Item::applied() {
  settled_ = shown_;
  changed_ = false;
  for (const auto& item : items_) item->applied();
}

void Item::revert() {
  set_value(settled_);
  for (const auto& item : items_) item->revert();
}

bool Item::in_radio() const {
  return kind_ == ItemKind::toggle && holder_ && holder_->kind_ == ItemKind::radio;
}

bool on_at(const Item& top, std::string_view path) {
  const Item* const item = top.find(path);
  return item && item->on();
}

int option_at(const Item& top, std::string_view path) {
  const Item* const item = top.find(path);
  return item ? item->option() : 0;
}

std::string text_at(const Item& top, std::string_view path) {
  const Item* const item = top.find(path);
  return item ? item->text() : std::string();
}

}  // namespace items
