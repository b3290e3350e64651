/// @file
/// Groups of the items of preference dialogs.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "viewkit/vkprefitem.h"

namespace viewkit {
class LongColumns;
}

/// Items side by side or one below the other, with a label of its own (unless `noLabel`).
class VkPrefGroup : public VkPrefItem {
 public:
  explicit VkPrefGroup(const char* name, bool horizontal = false, bool noLabel = false);
  /// Shows a group with all that is in it.
  explicit VkPrefGroup(items::Item& group);
  ~VkPrefGroup() override;
  const char* className() const override { return "VkPrefGroup"; }

  /// Appends an item that was made with a name, before the group's widgets are made. @returns the item.
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
  VkPrefItem* item(std::string_view name) const;
  VkPrefItem* find(std::string_view path) override;
  const VkPrefGroup* asGroup() const override { return this; }

  bool horizontal() const { return model().look().horizontal; }
  /// What makes the rows of the columns in this group that are too long; null when there are no such columns
  /// or no widgets.
  const viewkit::LongColumns* longColumns() const { return longColumns_.get(); }

  void createWidgets(Widget parent) override;
  /// That of the first item that takes the focus.
  Widget focusWidget() const override;

 protected:
  /// Shows a group of its own, with all that is in it.
  explicit VkPrefGroup(std::unique_ptr<items::Item> group);
  void widgetDestroyed() override;

 private:
  void showItems();
  void append(std::unique_ptr<VkPrefItem> item);

  std::vector<std::unique_ptr<VkPrefItem>> items_;
  std::unique_ptr<viewkit::LongColumns> longColumns_;
};

/// A group of toggles of which the user turns on one at a time. A program may set them as it likes.
class VkPrefRadio : public VkPrefGroup {
 public:
  explicit VkPrefRadio(const char* name, bool horizontal = false, bool noLabel = false);
  explicit VkPrefRadio(items::Item& radio) : VkPrefGroup(radio) {}
  const char* className() const override { return "VkPrefRadio"; }
};

/// Items in a column: the top item of a dialog, or a part of it.
class VkPrefList : public VkPrefGroup {
 public:
  explicit VkPrefList(const char* name);
  explicit VkPrefList(items::Item& list) : VkPrefGroup(list) {}
  /// Shows a whole tree, which lives as long as this.
  explicit VkPrefList(std::unique_ptr<items::Item> tree) : VkPrefGroup(std::move(tree)) {}
  const char* className() const override { return "VkPrefList"; }
};
