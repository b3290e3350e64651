/// @file
/// A top-level window with a view and a status line.
#pragma once

#include <optional>
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

  /// Where a window is on the screen, in pixels: the upper left corner of its frame, and its size without it.
  struct Place {
    int x, y, width, height;
  };
  /// Nothing while it isn't shown.
  std::optional<Place> place() const;
  /// To be called before it is shown, and without effect where the user has said where it is to be. What
  /// would not be on the screen comes onto it.
  void setPlace(Place place);

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
  std::string geometry_;
  std::string status_;
  std::string onStatusLine_;  // all of it, whether it fits or not
};
