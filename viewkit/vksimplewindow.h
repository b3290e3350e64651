/// @file
/// A top-level window with a view and a status line.
#pragma once

#include <string>

#include "viewkit/vkcomponent.h"
#include "viewkit/xraii.h"

/// A top-level shell (the base widget) around a main window with one view and a status line under it.
/// Needs theApplication.
class VkSimpleWindow : public VkComponent {
 public:
  explicit VkSimpleWindow(const char* name);
  ~VkSimpleWindow() override;
  const char* className() const override { return "VkSimpleWindow"; }

  /// The XmMainWindow: parent of the view and of whatever else belongs into the window.
  Widget mainWindowWidget() const { return mainWindow_; }

  /// Makes a child of mainWindowWidget() the window's view and manages it. The component stays its owner's.
  void addView(VkComponent* view);
  void addView(Widget view);

  void show() override;
  void hide() override;

  /// The text of the window's title bar; at first the window's name.
  void setTitle(const char* title);
  /// The text of the window's icon; at first the window's name.
  void setIconName(const char* text);

  /// Stands between the parts of a status text.
  static constexpr const char* kStatusSeparator = "  |  ";
  /// The one-line text under the view. Where it is too long for the window, parts at its end aren't shown.
  void setStatus(const char* text);

 protected:
  /// The window manager asks to close the window: quits the application.
  virtual void handleWmDeleteMessage();
  /// The window gets the focus of the keyboard.
  virtual void handleFocus() {}
  void widgetDestroyed() override;

 private:
  friend class VkApp;
  static void wmDeleteCallback(Widget widget, XtPointer self, XtPointer data);
  /// Shows `message` on the status line in place of the status.
  void showBusyMessage(const char* message) { showOnStatusLine(message); }
  void hideBusyMessage() { showOnStatusLine(status_); }
  void showOnStatusLine(const std::string& text);
  void fitStatusLine();
  static void focusHandler(Widget widget, XtPointer self, XEvent* event, Boolean* goOn);
  static void statusResizedHandler(Widget widget, XtPointer self, XEvent* event, Boolean* goOn);

  Widget mainWindow_ = nullptr;
  Widget statusLine_ = nullptr;
  std::string status_;
  std::string onStatusLine_;  // all of it, whether it fits or not
};
