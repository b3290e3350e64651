/// @file The bond between a component and its base widget.
#include "viewkit/vkcomponent.h"

#include <X11/StringDefs.h>

#include <utility>

#include "viewkit/forward.h"

VkComponent::VkComponent(std::string name) : name_(std::move(name)) {}

VkComponent::~VkComponent() {
  announceDeletion();
  if (const Widget widget = baseWidget_) {
    setBaseWidget(nullptr);
    XtDestroyWidget(widget);
  }
}

void VkComponent::setBaseWidget(Widget widget) {
  if (baseWidget_) XtRemoveCallback(baseWidget_, XtNdestroyCallback, &widgetDestroyedCallback, this);
  baseWidget_ = widget;
  if (baseWidget_) XtAddCallback(baseWidget_, XtNdestroyCallback, &widgetDestroyedCallback, this);
}

void VkComponent::widgetDestroyedCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkComponent::forgetWidget>::call(widget, self, data);
}

void VkComponent::forgetWidget() {
  baseWidget_ = nullptr;
  widgetDestroyed();
}

void VkComponent::show() { manage(); }

void VkComponent::hide() { unmanage(); }

void VkComponent::manage() {
  if (baseWidget_) XtManageChild(baseWidget_);
}

void VkComponent::unmanage() {
  if (baseWidget_) XtUnmanageChild(baseWidget_);
}
