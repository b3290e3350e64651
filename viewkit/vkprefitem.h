/// @file
/// The widgets that show the items of preference dialogs, and change them as the user does.
#pragma once

#include <X11/Intrinsic.h>
#include <Xm/Xm.h>

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "items/item.h"
#include "viewkit/vkcomponent.h"

class VkPrefGroup;

/// Shows an item of a preference dialog. The item holds its value and whether that has changed; the widgets,
/// which come and go with the dialog's windows, only show that, whoever changes it.
///
/// The item is one of a tree that is given; or, when this is made with a name, one of its own, which becomes
/// part of the tree of the group that this is added to.
///
/// The base widget is named `<name>Base`. An item with a label of its own has it in a widget `<name>Label`
/// beside that; a label without text takes no room.
class VkPrefItem : public VkComponent, private items::Watcher {
 public:
  /// Called whenever the item, or one in it, shows another value, be it that the user changed it or the
  /// program.
  static const char* const shownCallback;

  /// Called when the user enters a text that is longer than the item, or one in it, may hold; the call data
  /// is the `items::Item*` of that one.
  static const char* const refusedCallback;

  /// Makes the object that shows an item of that kind. The item must outlive it.
  static std::unique_ptr<VkPrefItem> showing(items::Item& item);

  ~VkPrefItem() override;
  const char* className() const override { return "VkPrefItem"; }

  /// The item that is shown.
  items::Item& model() const { return item_; }

  /// Whether what is shown has differed, at any moment, from what was last set or applied.
  bool changed() const { return item_.changed(); }
  /// What is shown counts as applied from now on.
  void applied() { item_.applied(); }
  /// Shows again what was last set or applied.
  void revert() { item_.revert(); }

  /// Makes the item usable, or greys it.
  void setActivated(bool activated) { item_.set_activated(activated); }
  bool activated() const { return item_.activated(); }

  /// The object that shows the item that a path such as "fog.fog_color" leads to; null when there is none.
  virtual VkPrefItem* find(std::string_view path) { return path.empty() ? this : nullptr; }

  /// This, when the item holds others; otherwise null.
  virtual const VkPrefGroup* asGroup() const { return nullptr; }

  /// Makes the item's widgets below `parent`, unmanaged and not placed yet.
  virtual void createWidgets(Widget parent) = 0;
  /// The widget `<name>Label`; null without one.
  Widget labelWidget() const { return label_; }
  /// The widget that a key goes to when the item has the focus; null when it takes none.
  virtual Widget focusWidget() const { return nullptr; }

  /// Destroys the item's widgets. createWidgets makes them again.
  void releaseWidgets();

  /// Puts a widget, made below the base widget's parent, after the item. It stays its maker's.
  void setTail(Widget tail) { tail_ = tail; }
  Widget tail() const { return tail_; }

 protected:
  explicit VkPrefItem(items::Item& item);
  /// Shows an item of its own.
  explicit VkPrefItem(std::unique_ptr<items::Item> item);

  std::string baseName() const { return std::string(name()) + "Base"; }
  void createLabel(Widget parent);
  /// To be called by createWidgets with its base widget.
  void showIn(Widget base);
  void widgetDestroyed() override;

  /// Makes the widgets show the item's value, if there are any.
  virtual void showValue() {}

 private:
  friend class VkPrefGroup;

  void shown() override;
  void refused(items::Item& item) override;
  void restyled() override;

  std::unique_ptr<items::Item> own_;  // null when the item belongs to a tree
  items::Item& item_;
  Widget label_ = nullptr;
  Widget tail_ = nullptr;
};

/// Shows an item with a value, which the user may change.
template <class Value, Value items::Value::*kMember>
class VkPrefValue : public VkPrefItem {
 public:
  /// Shows a value; the item has not changed.
  void setValue(Value value) { model().set_value(holding(std::move(value))); }
  const Value& getValue() const { return model().value().*kMember; }

  /// Shows a value as if the user had entered it.
  void edit(Value value) { model().edit(holding(std::move(value))); }

 protected:
  using VkPrefItem::VkPrefItem;

 private:
  static items::Value holding(Value value) {
    items::Value held;
    held.*kMember = std::move(value);
    return held;
  }
};

/// A field for a line of text. Control characters can't be entered; Ctrl+Z takes back what was entered last,
/// change by change.
/// The toolkit can't draw a line of more than 32767 pixels: of a text that may be longer, the field shows the
/// beginning and the length, and can't be edited.
class VkPrefText : public VkPrefValue<std::string, &items::Value::text> {
 public:
  VkPrefText(const char* name, int columns);
  explicit VkPrefText(items::Item& item) : VkPrefValue(item) {}
  const char* className() const override { return "VkPrefText"; }
  void createWidgets(Widget parent) override;
  Widget focusWidget() const override { return baseWidget(); }

  int columns() const { return model().look().columns; }
  /// The characters that the field needs to show a number as long as the present one; at least its columns.
  int wantedColumns() const;
  /// Makes the field as wide as that many characters.
  void widen(int columns);

 private:
  /// What stood in the field before a change, and where the cursor was.
  struct Before {
    std::string text;
    XmTextPosition cursor;
  };

  void showValue() override;
  /// What the field shows of its value.
  std::string shownText() const;
  void changes(XmTextVerifyCallbackStruct& change);
  void typed();
  void undoTyping();
  static void keyHandler(Widget widget, XtPointer self, XEvent* event, Boolean* goOn);
  // The cursor is shown only in the field that has the focus.
  void showCursor();
  void hideCursor();

  bool showing_ = false;
  std::deque<Before> before_;  // newest last
  XmTextPosition cursor_ = 0;  // before the change that comes next
};

/// An on/off switch with its label on it; or, with `forceLabelFormat`, with the label in front like that of
/// other items.
class VkPrefToggle : public VkPrefValue<bool, &items::Value::on> {
 public:
  explicit VkPrefToggle(const char* name, bool forceLabelFormat = false);
  explicit VkPrefToggle(items::Item& item) : VkPrefValue(item) {}
  const char* className() const override { return "VkPrefToggle"; }
  void createWidgets(Widget parent) override;
  Widget focusWidget() const override { return baseWidget(); }

 private:
  void showValue() override;
  void clicked();
};

/// A menu of which one entry is chosen; the value is the entry's index from 0. An index beyond the menu is
/// shown as a number and kept until the user picks an entry.
class VkPrefOption : public VkPrefValue<int, &items::Value::option> {
 public:
  VkPrefOption(const char* name, int numEntries);
  explicit VkPrefOption(items::Item& item) : VkPrefValue(item) {}
  const char* className() const override { return "VkPrefOption"; }

  int size() const { return static_cast<int>(model().look().entries.size()); }
  /// The text of an entry; indices beyond the menu are ignored.
  void setLabel(int index, const char* text);
  /// The text that is shown for an index.
  std::string label(int index) const { return model().entry(index); }

  void createWidgets(Widget parent) override;
  Widget focusWidget() const override;

 private:
  void showValue() override;
  void picked(Widget entry, XtPointer data);
  bool hasEntry(int index) const { return index >= 0 && index < size(); }
  void widgetDestroyed() override;

  std::vector<Widget> entries_;
  Widget beyond_ = nullptr;  // not in the menu; its label is shown on the button for an index beyond the menu
};

/// A line of text that the user can't change.
class VkPrefLabel : public VkPrefItem {
 public:
  explicit VkPrefLabel(const char* name);
  explicit VkPrefLabel(items::Item& item) : VkPrefItem(item) {}
  const char* className() const override { return "VkPrefLabel"; }
  void createWidgets(Widget parent) override;
};

/// A line between items.
class VkPrefSeparator : public VkPrefItem {
 public:
  explicit VkPrefSeparator(const char* name);
  explicit VkPrefSeparator(items::Item& item) : VkPrefItem(item) {}
  const char* className() const override { return "VkPrefSeparator"; }
  void createWidgets(Widget parent) override;
};
