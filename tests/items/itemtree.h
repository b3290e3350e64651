/// @file
/// A small tree with an item of every kind.
#pragma once

#include <memory>

#include "items/item.h"

/// prefList{group(text radio<a b> option) toggle}
inline std::unique_ptr<items::Item> item_tree() {
  using items::Item;
  using items::ItemKind;
  auto top = std::make_unique<Item>(ItemKind::list, "prefList");
  Item& group = top->add(ItemKind::group, "group");
  group.add(ItemKind::text, "text").set_value({.text = "old"});
  Item& radio = group.add(ItemKind::radio, "radio");
  radio.add(ItemKind::toggle, "a").set_value({.on = true});
  radio.add(ItemKind::toggle, "b").set_value({.on = false});
  group.add(ItemKind::option, "option", {.entries = {"zero", "2", "two"}}).set_value({.option = 7});
  top->add(ItemKind::toggle, "toggle").set_value({.on = true});
  top->add(ItemKind::separator, "sep");
  top->add(ItemKind::label, "label");
  return top;
}
