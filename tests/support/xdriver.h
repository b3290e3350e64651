/// @file
/// What a person does with pointer and keyboard: events as the X server makes them from real devices.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

struct _XDisplay;

namespace support {

/// A place on the screen, in pixels from its upper left corner.
struct Point {
  int x = 0, y = 0;
  bool operator==(const Point&) const = default;
};

/// Keys held down meanwhile, by keysym name ("Shift_L", "Control_L").
using Held = std::initializer_list<std::string_view>;

/// Drives the pointer and the keyboard of one X server. Every call returns once the server has made the
/// events.
class XDriver {
 public:
  explicit XDriver(const std::string& display);
  ~XDriver();
  XDriver(XDriver&&) noexcept;

  void moveTo(Point to);
  void press(unsigned button = 1);
  void release(unsigned button = 1);

  /// A single click, never taken for the second half of a double click.
  void click(Point at, unsigned button = 1, Held held = {});
  /// Clicks an entry of a menu that a click has opened. (The toolkit takes what comes soon after that for a
  /// part of it.)
  void clickInMenu(Point at);
  void doubleClick(Point at, unsigned button = 1, Held held = {});
  void drag(Point from, Point to, unsigned button = 1, Held held = {});

  /// Turns the wheel: up for positive `clicks`, down for negative ones.
  void wheel(Point at, int clicks, Held held = {});

  /// Presses and releases a key by keysym name ("Return", "a", "F10").
  void key(std::string_view keysym, Held held = {});
  void hold(std::string_view keysym);
  void letGo(std::string_view keysym);

  /// Types printable ASCII text.
  void type(std::string_view text);

  /// Waits until the window manager has handled what came before. (It gets a press in a window that is not
  /// active, and hands it on to the program later.)
  void awaitWindowManager();

 private:
  struct Implementation;
  std::unique_ptr<Implementation> impl_;
};

}  // namespace support
