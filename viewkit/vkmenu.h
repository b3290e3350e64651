/// @file
/// Menus, made from tables: the bar, its panes and submenus, menus that pop up, and their items.
#pragma once

#include <X11/Intrinsic.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "viewkit/vkcomponent.h"

/// A RADIO is a toggle that looks like one of several; which of them is set is the callback's to see to.
enum class VkMenuItemType { END, ACTION, TOGGLE, RADIO, SUBMENU, SEPARATOR };

/// One entry of a menu table.
struct VkMenuDesc {
  VkMenuItemType menuType = VkMenuItemType::END;
  const char* name = nullptr;           ///< the label, as shown
  XtCallbackProc callback = nullptr;    ///< of actions and toggles
  const VkMenuDesc* submenu = nullptr;  ///< of a SUBMENU: its table
  XtPointer clientData = nullptr;       ///< null: the client data given with the table
};

/// An item's name, and that of its widget, are the letters and digits of its label ("SaveAs" for "Save
/// As..."), so that users can write X resources for it.
class VkMenuItem : public VkComponent {
 public:
  const char* className() const override { return "VkMenuItem"; }
  /// As the table has it, by which the item is found.
  const char* label() const { return label_.c_str(); }
  /// Shows another text in its place.
  void showText(const char* text);

  /// Makes the item, with all that hangs below it, usable; or greys it, accelerators included.
  virtual void activate();
  virtual void deactivate();
  void setActive(bool active) { active ? activate() : deactivate(); }
  /// Whether it can be chosen, as far as it itself knows.
  bool isActive() const;
  /// Does what choosing it in its menu does, unless it is greyed.
  virtual void choose() {}

 protected:
  explicit VkMenuItem(const char* label);

 private:
  std::string label_;
};

class VkMenuSeparator final : public VkMenuItem {
 public:
  explicit VkMenuSeparator(Widget parent);
  const char* className() const override { return "VkMenuSeparator"; }
};

class VkMenuAction final : public VkMenuItem {
 public:
  VkMenuAction(Widget parent, const VkMenuDesc& entry, XtPointer clientData);
  const char* className() const override { return "VkMenuAction"; }
  void choose() override;
};

class VkMenuToggle final : public VkMenuItem {
 public:
  VkMenuToggle(Widget parent, const VkMenuDesc& entry, XtPointer clientData);
  const char* className() const override { return "VkMenuToggle"; }
  void choose() override;

  /// Shows the state without calling the callback.
  void setVisualState(bool on);
  bool isSet() const;
};

class VkSubMenu;

/// A row or column of items.
class VkMenu : public VkMenuItem {
 public:
  ~VkMenu() override;
  const char* className() const override { return "VkMenu"; }

  /// The first item, depth first in the order of the tables, that has this label and is an `Item`; or null.
  template <class Item = VkMenuItem>
  Item* findNamedItem(std::string_view label) const {
    for (const auto& item : items_) {
      if (auto* found = dynamic_cast<Item*>(item.get()); found && found->label() == label) return found;
      if (const auto* menu = dynamic_cast<const VkMenu*>(item.get()))
        if (auto* found = menu->findNamedItem<Item>(label)) return found;
    }
    return nullptr;
  }

  /// Appends the entries of a table.
  void add(const VkMenuDesc* table, XtPointer clientData = nullptr);
  VkSubMenu* addSubmenu(const char* label, const VkMenuDesc* table, XtPointer clientData = nullptr);

 protected:
  explicit VkMenu(const char* label);
  /// The widget that the items are children of.
  virtual Widget itemParent() const = 0;

 private:
  std::vector<std::unique_ptr<VkMenuItem>> items_;
};

class VkMenuBar final : public VkMenu {
 public:
  explicit VkMenuBar(Widget parent);
  const char* className() const override { return "VkMenuBar"; }

 private:
  Widget itemParent() const override { return baseWidget(); }
};

/// A pulldown menu and the button that opens it (the base widget).
class VkSubMenu final : public VkMenu {
 public:
  VkSubMenu(Widget parent, const char* label);
  ~VkSubMenu() override;
  const char* className() const override { return "VkSubMenu"; }

  void activate() override;
  void deactivate() override;

 private:
  Widget itemParent() const override { return pulldown_; }

  Widget pulldown_ = nullptr;
};

/// A menu that comes up at a place of a widget. Its items show their keys, but these do nothing: they are the
/// menu bar's, or those of the widget that it is a menu of.
class VkPopupMenu final : public VkMenu {
 public:
  /// @param parent  the widget that it is a menu of.
  VkPopupMenu(Widget parent, const char* name);
  ~VkPopupMenu() override;
  const char* className() const override { return "VkPopupMenu"; }

  /// Brings it up at a place of the parent.
  void post(int x, int y);

  /// Lets the toolkit bring it up there when the Menu key, which is down, is released. Only a menu that the
  /// toolkit has brought up by itself gets the keyboard as soon as it is there.
  void postAtMenuKey(int x, int y);
  /// So that only one of several menus comes up. None does at first, nor after it has been up.
  void stayAwayAtMenuKey();

 private:
  Widget itemParent() const override { return baseWidget(); }
  /// Puts it where it is to come up; called just before it does.
  void place();

  int x_ = 0, y_ = 0;  // in the parent
};
