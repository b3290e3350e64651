/// @file
/// A top-level window with a menu bar.
#include "viewkit/vkwindow.h"

VkWindow::VkWindow(const char* name)
    : VkSimpleWindow(name), menuBar_(std::make_unique<VkMenuBar>(mainWindowWidget())) {
  XtVaSetValues(mainWindowWidget(), XmNmenuBar, menuBar_->baseWidget(), nullptr);
}

VkWindow::~VkWindow() = default;

VkSubMenu* VkWindow::addMenuPane(const char* label, const VkMenuDesc* table, XtPointer clientData) {
  return menuBar_->addSubmenu(label, table, clientData);
}

VkMenu* VkWindow::menu() const { return menuBar_.get(); }
