/// @file
/// Items of preference dialogs that hold other items.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "viewkit/vkprefitem.h"

/// Items side by side or one below the other, with a label of its own (unless `noLabel`).
class VkPrefGroup : public VkPrefItem {
 public:
  explicit VkPrefGroup(const char* name, bool horizontal = false, bool noLabel = false)
      : VkPrefItem(name), horizontal_(horizontal), noLabel_(noLabel) {}
  const char* className() const override { return "VkPrefGroup"; }

  /// Appends an item, made before the group's widgets are. @returns the item.
  template <class Item>
  Item& addItem(std::unique_ptr<Item> item) {
    Item& added = *item;
    append(std::move(item));
    return added;
  }

  int size() const { return static_cast<int>(items_.size()); }
  /// The item of that number from 0; null when there is none.
  VkPrefItem* item(int number) const;
  /// The first item with that name; null when there is none.
  VkPrefItem* item(const std::string& name) const;

  bool horizontal() const { return horizontal_; }

  /// Whether one of the items has changed.
  bool changed() const override;
  void applied() override;
  void revert() override;

  void createWidgets(Widget parent) override;
  /// That of the first item that takes the focus.
  Widget focusWidget() const override;

 protected:
  /// An item was appended.
  virtual void added(VkPrefItem& /*item*/) {}

 private:
  void append(std::unique_ptr<VkPrefItem> item);

  std::vector<std::unique_ptr<VkPrefItem>> items_;
  bool horizontal_, noLabel_;
};

/// A group of toggles of which the user turns on one at a time. A program may set them as it likes.
class VkPrefRadio : public VkPrefGroup {
 public:
  using VkPrefGroup::VkPrefGroup;
  const char* className() const override { return "VkPrefRadio"; }

 private:
  void added(VkPrefItem& item) override;
  /// Turns off the others when the user has turned one on.
  void toggleShown(VkPrefToggle* toggle, void* clientData, void* callData);
};

/// Items in a column: the top item of a dialog, or a part of it.
class VkPrefList : public VkPrefGroup {
 public:
  explicit VkPrefList(const char* name) : VkPrefGroup(name, false, true) {}
  const char* className() const override { return "VkPrefList"; }
};
