/// @file
/// Components: objects that own a tree of widgets.
#pragma once

#include <X11/Intrinsic.h>

#include <span>
#include <string>

#include "viewkit/vkcallbackobject.h"

/// Owns the widget tree below one base widget. A destroyed widget clears the component's pointer to it; a
/// destroyed component takes its widget along.
class VkComponent : public VkCallbackObject {
 public:
  ~VkComponent() override;

  /// The name given at construction, as a rule the base widget's; valid as long as the component.
  const char* name() const { return name_.c_str(); }
  virtual const char* className() const { return "VkComponent"; }

  /// The root of the component's widgets; null before it is made and after it was destroyed.
  Widget baseWidget() const { return baseWidget_; }

  /// Makes the component visible, or not, each without effect while there is no base widget.
  virtual void show();
  virtual void hide();

 protected:
  explicit VkComponent(std::string name);

  /// Makes `widget` the base widget, owned by this component from now on. Null gives up the ownership.
  void setBaseWidget(Widget widget);

  /// Gives the widgets of components with this one's name, and no others, defaults from X resource lines,
  /// each of which starts with the asterisk or point that binds it to the component. A line gives way to one
  /// of the user's about the same resource of a widget of that name. As in any resource line, blanks in front
  /// of the value don't count. Call it before the widgets below `widget` are made.
  void setDefaultResources(Widget widget, std::span<const char* const> lines);

  /// Called when the base widget was destroyed by someone else; baseWidget() is null by then. May not delete
  /// the component.
  virtual void widgetDestroyed() {}

 private:
  static void widgetDestroyedCallback(Widget widget, XtPointer self, XtPointer data);
  void forgetWidget();

  std::string name_;
  Widget baseWidget_ = nullptr;
};
