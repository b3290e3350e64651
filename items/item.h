/// @file
/// The items of a dialog as a tree of values: what each shows, whether that has changed, and how it looks.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace items {

/// `list` is the top of a dialog, and a column of items inside one; a `radio` is a group of toggles of which
/// the user turns on one at a time.
enum class ItemKind { list, group, radio, toggle, text, option, label, separator };

/// How an item looks, beside its kind and name.
struct Look {
  bool horizontal = false;                ///< group, radio: the items stand side by side
  bool no_label = false;                  ///< group, radio: without a label of its own
  int columns = 0;                        ///< text: width in characters
  std::size_t capacity = 0;               ///< text: how many bytes it may have; 0: any number
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

class Item;

/// Shows an item on the screen, and is told when there is something else to show.
class Watcher {
 public:
  /// The item, or one in it, shows another value.
  virtual void shown() = 0;
  /// The item, or one in it, was to show a text that is longer than it may be; it shows what it did.
  virtual void refused(Item& item) = 0;
  /// The item was activated or greyed, or has another label.
  virtual void restyled() = 0;

 protected:
  ~Watcher() = default;
};

/// One item with all that is in it. It is never copied or moved, so that others may refer to it.
class Item {
 public:
  Item(ItemKind kind, std::string name, Look look = {})
      : kind_(kind), name_(std::move(name)), look_(std::move(look)) {}
  virtual ~Item() = default;
  Item(const Item&) = delete;
  Item& operator=(const Item&) = delete;

  ItemKind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  const Look& look() const { return look_; }
  /// To be changed before the item is on the screen.
  Look& look() { return look_; }

  std::size_t size() const { return items_.size(); }
  const Item& item(std::size_t i) const { return *items_[i]; }
  Item& item(std::size_t i) { return *items_[i]; }
  /// Appends an item. @returns it.
  Item& add(std::unique_ptr<Item> item);
  Item& add(ItemKind kind, std::string name, Look look = {});
  /// The item that this one was added to; null at the top.
  const Item* holder() const { return holder_; }
  /// The first item that a path such as "cc_g.cc_quil" leads to; null when there is none.
  const Item* find(std::string_view path) const { return find_in(this, path); }
  Item* find(std::string_view path) { return find_in(this, path); }

  /// The text of its label, where that depends on the record; otherwise the dialog's label lines say it.
  const std::optional<std::string>& label() const { return label_; }
  void set_label(std::string label);

  /// Whether the user may change it (the opposite of greyed out).
  bool activated() const { return activated_; }
  void set_activated(bool activated);

  const Value& value() const { return shown_; }
  const std::string& text() const { return shown_.text; }
  bool on() const { return shown_.on; }
  int option() const { return shown_.option; }
  /// The label of the entry that an option is on; the index, as a number, when it lies beyond the menu.
  std::string entry() const { return entry(shown_.option); }
  std::string entry(int index) const;

  /// Shows a value from the record: the item has not changed.
  void set_value(Value value);
  /// Shows what the user makes of it. From then on the item has changed until the value is applied or set.
  /// A toggle of a radio that is turned on turns off the others.
  void edit(Value value);

  /// Whether it may hold that text.
  bool has_room_for(const std::string& text) const {
    return look_.capacity == 0 || text.size() <= look_.capacity;
  }
  /// Tells the watchers that the user entered a text for which there is no room.
  void refuse();

  /// Whether what is shown, here or in an item below, has differed at any moment from what was last set or
  /// applied.
  bool changed() const;
  /// What is shown, here and in the items below, counts as applied: nothing has changed any more.
  void applied();
  /// Shows again what was last set or applied, here and in the items below.
  void revert();

  /// Whether this is a toggle of a radio.
  bool in_radio() const;

  /// Makes `watcher` the only one that is told of changes; null: nobody is. The watcher must live until
  /// another call replaces it.
  void watch(Watcher* watcher) { watcher_ = watcher; }

 private:
  template <class Self>
  static Self* find_in(Self* found, std::string_view path) {
    while (found && !path.empty()) {
      const std::string_view name = path.substr(0, path.find('.'));
      path.remove_prefix(std::min(name.size() + 1, path.size()));
      const auto item = std::ranges::find(found->items_, name, [](const auto& it) { return it->name(); });
      found = item == found->items_.end() ? nullptr : item->get();
    }
    return found;
  }

  /// Calls `tell` with the watchers of this item and of those that hold it.
  template <class Tell>
  void tell_watchers(const Tell& tell) {
    for (const Item* item = this; item; item = item->holder_)
      if (item->watcher_) tell(*item->watcher_);
  }
  void show(Value value);

  ItemKind kind_;
  std::string name_;
  Look look_;
  std::optional<std::string> label_;
  bool activated_ = true;
  Value shown_, settled_;
  bool changed_ = false;
  std::vector<std::unique_ptr<Item>> items_;
  Item* holder_ = nullptr;
  Watcher* watcher_ = nullptr;
};

// The values of the item that a path leads to; off, 0 or empty when the tree has no such item, as when the
// dialog was built for another kind of record.
bool on_at(const Item& top, std::string_view path);
int option_at(const Item& top, std::string_view path);
std::string text_at(const Item& top, std::string_view path);

}  // namespace items
