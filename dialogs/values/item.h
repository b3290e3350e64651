/// @file
/// A dialog's items as a tree of values: what the value half knows of the widgets.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace values {

/// `list` is the top of a dialog, and a column of items inside one; a `radio` is a group of toggles of which
/// one is on.
enum class ItemKind { list, group, radio, toggle, text, option, label, separator };

/// What a widget builder needs to know beside an item's kind and name.
struct Look {
  bool horizontal = false;                ///< group, radio: the items stand side by side
  bool no_label = false;                  ///< group, radio: without a label of its own
  int columns = 0;                        ///< text: width in characters
  std::vector<std::string> entries = {};  ///< option: the labels of the menu
  bool force_label_format = false;        ///< toggle: a label in front, and a button without one
};

/// What an item shows. Only the member of its kind counts: `on` of a toggle, `option` (the entry's index in
/// the menu, which may lie beyond it) of an option, `text` of a text.
struct Value {
  std::string text = {};
  bool on = false;
  int option = 0;
  friend bool operator==(const Value&, const Value&) = default;
};

/// One item with all that it holds.
class Item {
 public:
  Item(ItemKind kind, std::string name, Look look = {})
      : kind_(kind), name_(std::move(name)), look_(std::move(look)) {}

  ItemKind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  const Look& look() const { return look_; }
  Look& look() { return look_; }

  std::size_t size() const { return items_.size(); }
  const Item& item(std::size_t i) const { return items_[i]; }
  Item& item(std::size_t i) { return items_[i]; }
  Item& add(Item item) { return items_.emplace_back(std::move(item)); }
  /// The first item that a path such as "cc_g.cc_quil" leads to; null when there is none.
  const Item* find(std::string_view path) const { return find_in(this, path); }
  Item* find(std::string_view path) { return find_in(this, path); }

  /// The text of its label, where that depends on the record; otherwise the dialog's label lines say it.
  const std::optional<std::string>& label() const { return label_; }
  void set_label(std::string label) { label_ = std::move(label); }

  /// Whether the user may change it (the opposite of greyed out).
  bool activated() const { return activated_; }
  void setActivated(bool activated) { activated_ = activated; }

  const Value& value() const { return shown_; }
  const std::string& text() const { return shown_.text; }
  bool on() const { return shown_.on; }
  int option() const { return shown_.option; }
  /// The label of the entry that an option is on; the index, as a number, when it lies beyond the menu.
  std::string entry() const;

  /// Shows a value from the record: the item has not changed.
  void setValue(Value value);
  /// Shows what the user makes of it. From then on the item has changed until the value is applied or set.
  void edit(Value value);
  /// Shows what a widget shows, which knows itself whether it has changed.
  void mirror(Value value, bool changed);

  /// Whether the item, or one of those in it, has changed.
  bool changed() const;
  /// What is shown is applied: nothing below has changed any more.
  void applied();
  /// Back to what was last set or applied, for all below.
  void revert();

 private:
  template <class Self>
  static Self* find_in(Self* found, std::string_view path) {
    while (found && !path.empty()) {
      const std::string_view name = path.substr(0, path.find('.'));
      path.remove_prefix(std::min(name.size() + 1, path.size()));
      const auto item = std::ranges::find(found->items_, name, &Item::name_);
      found = item == found->items_.end() ? nullptr : &*item;
    }
    return found;
  }

  ItemKind kind_;
  std::string name_;
  Look look_;
  std::optional<std::string> label_;
  bool activated_ = true;
  Value shown_, settled_;
  bool changed_ = false;
  std::vector<Item> items_;
};

// The values of the item that a path leads to; off, 0 or empty when the tree has no such item, as when the
// dialog was built for another kind of record.
bool on_at(const Item& top, std::string_view path);
int option_at(const Item& top, std::string_view path);
std::string text_at(const Item& top, std::string_view path);

/// Names and options end at a line break: a longer text was pasted.
inline std::string first_line(const std::string& text) { return text.substr(0, text.find_first_of("\r\n")); }

}  // namespace values
