/// @file
/// The items that preference dialogs consist of: what they show, whether the user has changed it.
#pragma once

#include <X11/Intrinsic.h>

#include <string>
#include <utility>
#include <vector>

#include "viewkit/vkcomponent.h"

/// An item of a preference dialog. It holds what it shows by itself; its widgets, which come and go with the
/// dialog's windows, only show that.
///
/// The base widget is named `<name>Base`. An item with a label of its own has it in a widget `<name>Label`
/// beside that; a label without text takes no room.
class VkPrefItem : public VkComponent {
 public:
  /// Called whenever the item shows another value, be it that the user changed it or the program.
  static const char* const shownCallback;

  ~VkPrefItem() override;
  const char* className() const override { return "VkPrefItem"; }

  /// Whether what is shown has differed, at any moment, from what was last set or applied.
  virtual bool changed() const { return false; }
  /// What is shown counts as applied from now on.
  virtual void applied() {}
  /// Shows again what was last set or applied.
  virtual void revert() {}

  /// Makes the item usable, or greys it.
  void setActivated(bool activated);
  bool activated() const { return activated_; }

  /// Makes the item's widgets below `parent`, unmanaged and not placed yet.
  virtual void createWidgets(Widget parent) = 0;
  /// The widget `<name>Label`; null without one.
  Widget labelWidget() const { return label_; }
  /// The widget that a key goes to when the item has the focus; null when it takes none.
  virtual Widget focusWidget() const { return nullptr; }

  /// Replaces the text that the resources gave the item's label. For when the widgets exist.
  void setLabelText(const std::string& text);

  /// Puts a widget, made below the base widget's parent, behind the item. It stays its maker's.
  void setTail(Widget tail) { tail_ = tail; }
  Widget tail() const { return tail_; }

 protected:
  explicit VkPrefItem(std::string name);

  std::string baseName() const { return std::string(name()) + "Base"; }
  void createLabel(Widget parent);
  /// To be called by createWidgets with its base widget.
  void showIn(Widget base);
  void widgetDestroyed() override;

 private:
  Widget label_ = nullptr;
  Widget tail_ = nullptr;
  bool activated_ = true;
};

/// An item that shows a value which the user may change.
template <class Value>
class VkPrefValue : public VkPrefItem {
 public:
  bool changed() const override { return changed_; }
  void applied() override {
    settled_ = shown_;
    changed_ = false;
  }
  void revert() override { setValue(settled_); }

  /// Shows a value; the item has not changed.
  void setValue(Value value) {
    settled_ = value;
    changed_ = false;
    become(std::move(value));
  }
  const Value& getValue() const { return shown_; }

  /// Shows a value as if the user had entered it.
  void edit(Value value) {
    if (value != settled_) changed_ = true;
    become(std::move(value));
  }

 protected:
  using VkPrefItem::VkPrefItem;

  /// Makes the widgets show the value, if there are any.
  virtual void showValue() = 0;
  /// The user has made the widgets show `value`.
  void edited(Value value) {
    if (value != settled_) changed_ = true;
    shown_ = std::move(value);
    callCallbacks(shownCallback, nullptr);
  }

 private:
  void become(Value value) {
    shown_ = std::move(value);
    showValue();
    callCallbacks(shownCallback, nullptr);
  }

  Value shown_{}, settled_{};
  bool changed_ = false;
};

/// A field for a line of text.
class VkPrefText : public VkPrefValue<std::string> {
 public:
  VkPrefText(const char* name, int columns) : VkPrefValue(name), columns_(columns) {}
  const char* className() const override { return "VkPrefText"; }
  void createWidgets(Widget parent) override;
  Widget focusWidget() const override { return baseWidget(); }

  int columns() const { return columns_; }
  /// The characters that the field needs to show a number as long as the present one; at least its columns.
  int wantedColumns() const;
  /// Makes the field as wide as that many characters.
  void widen(int columns);

 private:
  void showValue() override;
  void typed();
  // Only the field that is typed in shows where.
  void showCursor();
  void hideCursor();

  int columns_;
  bool showing_ = false;
};

/// An on/off switch with its label on it; or, with `forceLabelFormat`, with the label in front like that of
/// other items.
class VkPrefToggle : public VkPrefValue<bool> {
 public:
  explicit VkPrefToggle(const char* name, bool forceLabelFormat = false)
      : VkPrefValue(name), forceLabelFormat_(forceLabelFormat) {}
  const char* className() const override { return "VkPrefToggle"; }
  void createWidgets(Widget parent) override;
  Widget focusWidget() const override { return baseWidget(); }

 private:
  friend class VkPrefRadio;

  void showValue() override;
  void clicked();

  bool forceLabelFormat_;
  bool exclusive_ = false;  // of a radio: the user turns it off by turning on another
};

/// A menu of which one entry is chosen; the value is the entry's index from 0. An index beyond the menu is
/// shown as a number and kept until the user picks an entry.
class VkPrefOption : public VkPrefValue<int> {
 public:
  VkPrefOption(const char* name, int numEntries)
      : VkPrefValue(name), labels_(static_cast<std::size_t>(numEntries)) {}
  const char* className() const override { return "VkPrefOption"; }

  int size() const { return static_cast<int>(labels_.size()); }
  /// The text of an entry; indices beyond the menu are ignored.
  void setLabel(int index, const char* text);
  /// The text that is shown for an index.
  std::string label(int index) const;

  void createWidgets(Widget parent) override;
  Widget focusWidget() const override;

 private:
  void showValue() override;
  void picked(Widget entry, XtPointer data);
  bool hasEntry(int index) const { return index >= 0 && index < size(); }
  void widgetDestroyed() override;

  std::vector<std::string> labels_;
  std::vector<Widget> entries_;
  Widget beyond_ = nullptr;  // never in the menu: lends its label to the button
};

/// A line of text that the user can't change.
class VkPrefLabel : public VkPrefItem {
 public:
  explicit VkPrefLabel(const char* name) : VkPrefItem(name) {}
  const char* className() const override { return "VkPrefLabel"; }
  void createWidgets(Widget parent) override;
};

/// A line between items.
class VkPrefSeparator : public VkPrefItem {
 public:
  explicit VkPrefSeparator(const char* name) : VkPrefItem(name) {}
  const char* className() const override { return "VkPrefSeparator"; }
  void createWidgets(Widget parent) override;
};
