/// @file
/// The item tree.
#include "dialogs/values/item.h"

namespace values {

std::string Item::entry() const {
  const auto index = static_cast<std::size_t>(shown_.option);
  return shown_.option >= 0 && index < look_.entries.size() ? look_.entries[index]
                                                            : std::to_string(shown_.option);
}

void Item::setValue(Value value) { mirror(std::move(value), false); }

void Item::edit(Value value) {
  shown_ = std::move(value);
  if (shown_ != settled_) changed_ = true;
}

void Item::mirror(Value value, bool changed) {
  shown_ = std::move(value);
  if (!changed) settled_ = shown_;
  changed_ = changed;
}

bool Item::changed() const { return changed_ || std::ranges::any_of(items_, &Item::changed); }

void Item::applied() {
  settled_ = shown_;
  changed_ = false;
  for (Item& item : items_) item.applied();
}

void Item::revert() {
  shown_ = settled_;
  changed_ = false;
  for (Item& item : items_) item.revert();
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

}  // namespace values
