/// @file
/// The widgets of menus and their items.
#include "viewkit/vkmenu.h"

#include <Xm/CascadeBG.h>
#include <Xm/PushBG.h>
#include <Xm/RowColumn.h>
#include <Xm/SeparatoG.h>
#include <Xm/ToggleBG.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <iterator>

#include "viewkit/forward.h"
#include "viewkit/xraii.h"

namespace {

std::string widgetName(std::string_view label) {
  std::string name;
  std::ranges::copy_if(label, std::back_inserter(name), [](unsigned char c) { return std::isalnum(c); });
  return name;
}

bool isInMenuBar(Widget item) {
  Widget above = item;
  while (above && !XtIsTopLevelShell(above)) {
    unsigned char kind = XmMENU_POPUP;
    if (XmIsRowColumn(above)) XtVaGetValues(above, XmNrowColumnType, &kind, nullptr);
    if (XmIsRowColumn(above) && kind == XmMENU_POPUP) return false;
    above = XtParent(above);
  }
  return true;
}

/// Gadgets, since windowed menu buttons draw smoothed accelerator texts over themselves.
Widget makeGadget(WidgetClass kind, Widget parent, const char* label) {
  std::string name = widgetName(label);
  const viewkit::XmStr text = viewkit::xmString(label);
  std::array<Arg, 2> args{Arg{const_cast<char*>(XmNlabelString), reinterpret_cast<XtArgVal>(text.get())},
                          Arg{const_cast<char*>(XmNaccelerator), 0}};
  return XtCreateManagedWidget(name.c_str(), kind, parent, args.data(), isInMenuBar(parent) ? 1 : 2);
}

}  // namespace

VkMenuItem::VkMenuItem(const char* label) : VkComponent(widgetName(label)), label_(label) {}

void VkMenuItem::activate() {
  if (baseWidget()) XtSetSensitive(baseWidget(), True);
}

void VkMenuItem::deactivate() {
  if (baseWidget()) XtSetSensitive(baseWidget(), False);
}

bool VkMenuItem::isActive() const { return baseWidget() && XtIsSensitive(baseWidget()); }

void VkMenuItem::showText(const char* text) {
  if (baseWidget()) XtVaSetValues(baseWidget(), XmNlabelString, viewkit::xmString(text).get(), nullptr);
}

VkMenuSeparator::VkMenuSeparator(Widget parent) : VkMenuItem("separator") {
  setBaseWidget(XtVaCreateManagedWidget(name(), xmSeparatorGadgetClass, parent, nullptr));
}

VkMenuAction::VkMenuAction(Widget parent, const VkMenuDesc& entry, XtPointer clientData)
    : VkMenuItem(entry.name) {
  setBaseWidget(makeGadget(xmPushButtonGadgetClass, parent, entry.name));
  if (entry.callback) XtAddCallback(baseWidget(), XmNactivateCallback, entry.callback, clientData);
}

void VkMenuAction::choose() {
  if (!isActive()) return;
  XmPushButtonCallbackStruct call{};
  call.reason = XmCR_ACTIVATE;
  call.click_count = 1;
  XtCallCallbacks(baseWidget(), XmNactivateCallback, &call);
}

VkMenuToggle::VkMenuToggle(Widget parent, const VkMenuDesc& entry, XtPointer clientData)
    : VkMenuItem(entry.name) {
  setBaseWidget(makeGadget(xmToggleButtonGadgetClass, parent, entry.name));
  if (entry.menuType == VkMenuItemType::RADIO)
    XtVaSetValues(baseWidget(), XmNindicatorType, XmONE_OF_MANY, nullptr);
  if (entry.callback) XtAddCallback(baseWidget(), XmNvalueChangedCallback, entry.callback, clientData);
}

void VkMenuToggle::setVisualState(bool on) {
  if (baseWidget()) XmToggleButtonGadgetSetState(baseWidget(), on, False);
}

void VkMenuToggle::choose() {
  if (isActive()) XmToggleButtonGadgetSetState(baseWidget(), !isSet(), True);
}

bool VkMenuToggle::isSet() const { return baseWidget() && XmToggleButtonGadgetGetState(baseWidget()); }

VkMenu::VkMenu(const char* label) : VkMenuItem(label) {}

VkMenu::~VkMenu() = default;

void VkMenu::add(const VkMenuDesc* table, XtPointer clientData) {
  for (; table->menuType != VkMenuItemType::END; ++table) {
    const XtPointer data = table->clientData ? table->clientData : clientData;
    switch (table->menuType) {
      case VkMenuItemType::ACTION:
        items_.push_back(std::make_unique<VkMenuAction>(itemParent(), *table, data));
        break;
      case VkMenuItemType::TOGGLE:
      case VkMenuItemType::RADIO:
        items_.push_back(std::make_unique<VkMenuToggle>(itemParent(), *table, data));
        break;
      case VkMenuItemType::SUBMENU:
        addSubmenu(table->name, table->submenu, data);
        break;
      case VkMenuItemType::SEPARATOR:
        items_.push_back(std::make_unique<VkMenuSeparator>(itemParent()));
        break;
      case VkMenuItemType::END:
        break;
    }
  }
}

VkSubMenu* VkMenu::addSubmenu(const char* label, const VkMenuDesc* table, XtPointer clientData) {
  auto submenu = std::make_unique<VkSubMenu>(itemParent(), label);
  if (table) submenu->add(table, clientData);
  auto* const result = submenu.get();
  items_.push_back(std::move(submenu));
  return result;
}

VkMenuBar::VkMenuBar(Widget parent) : VkMenu("menuBar") {
  std::string barName = name();
  setBaseWidget(XmCreateMenuBar(parent, barName.data(), nullptr, 0));
  XtManageChild(baseWidget());
}

VkSubMenu::VkSubMenu(Widget parent, const char* label) : VkMenu(label) {
  std::string paneName = name() + std::string("Pane");
  pulldown_ = XmCreatePulldownMenu(parent, paneName.data(), nullptr, 0);
  setBaseWidget(makeGadget(xmCascadeButtonGadgetClass, parent, label));
  XtVaSetValues(baseWidget(), XmNsubMenuId, pulldown_, nullptr);
}

VkSubMenu::~VkSubMenu() {
  if (baseWidget()) XtDestroyWidget(pulldown_);
}

void VkSubMenu::activate() {
  VkMenu::activate();
  if (baseWidget()) XtSetSensitive(pulldown_, True);
}

void VkSubMenu::deactivate() {
  VkMenu::deactivate();
  // So that the items know it, too.
  if (baseWidget()) XtSetSensitive(pulldown_, False);
}

VkPopupMenu::VkPopupMenu(Widget parent, const char* name) : VkMenu(name) {
  std::string menuName = VkPopupMenu::name();
  setBaseWidget(XmCreatePopupMenu(parent, menuName.data(), nullptr, 0));
  XtAddCallback(baseWidget(), XmNmapCallback, viewkit::Forward<&VkPopupMenu::place>::call, this);
  XtAddCallback(baseWidget(), XmNunmapCallback, viewkit::Forward<&VkPopupMenu::stayAwayAtMenuKey>::call,
                this);
  stayAwayAtMenuKey();
}

VkPopupMenu::~VkPopupMenu() = default;

void VkPopupMenu::post(int x, int y) {
  if (!baseWidget()) return;
  x_ = x;
  y_ = y;
  XtManageChild(baseWidget());
}

void VkPopupMenu::postAtMenuKey(int x, int y) {
  if (!baseWidget()) return;
  x_ = x;
  y_ = y;
  XtVaSetValues(baseWidget(), XmNmenuAccelerator, "<KeyUp>osfMenu", nullptr);
}

void VkPopupMenu::stayAwayAtMenuKey() {
  // Not by XmNpopupEnabled: without any menu that is enabled the right button's take no keys.
  if (baseWidget()) XtVaSetValues(baseWidget(), XmNmenuAccelerator, "", nullptr);
}

void VkPopupMenu::place() {
  const Widget parent = XtParent(XtParent(baseWidget()));
  Position rootX = 0, rootY = 0;
  XtTranslateCoords(parent, static_cast<Position>(x_), static_cast<Position>(y_), &rootX, &rootY);
  XButtonPressedEvent at{};
  at.x_root = rootX;
  at.y_root = rootY;
  XmMenuPosition(baseWidget(), &at);
}
