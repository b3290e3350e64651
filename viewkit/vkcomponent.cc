/// @file
/// How a component and its base widget learn that the other one is destroyed, and default resources.
#include "viewkit/vkcomponent.h"

#include <X11/StringDefs.h>
#include <X11/Xresource.h>

#include <string_view>
#include <utility>

#include "viewkit/forward.h"

namespace {

/// The text that the resources give a widget called `name` below `widget`, or null.
const char* resourceOf(Widget widget, const std::string& name, std::string resource) {
  std::string type = XtRString;
  std::string immediate = XtRImmediate;
  char* found = nullptr;
  XtResource wanted{resource.data(),  resource.data(), type.data(), sizeof found, 0,
                    immediate.data(), nullptr};
  XtGetSubresources(widget, &found, name.c_str(), name.c_str(), &wanted, 1, nullptr, 0);
  return found;
}

/// Whether somebody has said something about this very widget's resource, not about widgets in general.
/// @param key  what stands before the colon of a resource line: "*okLabel.labelString"
bool isSetByUser(Widget widget, std::string_view key) {
  const auto point = key.find_last_of(".*");
  if (point == key.npos || point == 0) return false;
  const auto start = key.find_last_of(".*", point - 1);
  const std::string name(key.substr(start + 1, point - start - 1));
  const std::string resource(key.substr(point + 1));
  return resourceOf(widget, name, resource) != resourceOf(widget, "anyOtherWidget", resource);
}

}  // namespace

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

void VkComponent::setDefaultResources(Widget widget, std::span<const char* const> lines) {
  std::string text;
  for (const std::string_view line : lines)
    if (!isSetByUser(widget, line.substr(0, line.find(':'))))
      text.append("*").append(name_).append(line) += '\n';
  XrmDatabase database = XtScreenDatabase(XtScreen(widget));
  XrmCombineDatabase(XrmGetStringDatabase(text.c_str()), &database, False);
}

void VkComponent::widgetDestroyedCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkComponent::forgetWidget>::call(widget, self, data);
}

void VkComponent::forgetWidget() {
  baseWidget_ = nullptr;
  widgetDestroyed();
}

void VkComponent::show() {
  if (baseWidget_) XtManageChild(baseWidget_);
}

void VkComponent::hide() {
  if (baseWidget_) XtUnmanageChild(baseWidget_);
}
