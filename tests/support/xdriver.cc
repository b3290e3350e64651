/// @file
/// Fake devices by the XTEST extension.
#include "tests/support/xdriver.h"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <poll.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>

namespace support {

namespace {

using Clock = std::chrono::steady_clock;

/// Longer than the time within which two clicks count as a double click (the toolkit's is 200).
constexpr std::chrono::milliseconds kClicksApart{400};

/// Without an answer for so long, it is taken for gone.
constexpr std::chrono::seconds kWindowManagersTime{10};

}  // namespace

struct XDriver::Implementation {
  struct CloseDisplay {
    void operator()(Display* opened) const { XCloseDisplay(opened); }
  };

  std::unique_ptr<Display, CloseDisplay> display;
  Clock::time_point last_click{};
  Point last_place{};
  Window ping = None;  ///< never shown
  int ping_x = 0;

  void button(unsigned number, bool down, unsigned long delay = CurrentTime) {
    XTestFakeButtonEvent(display.get(), number, down, delay);
  }

  void key(KeySym symbol, bool down) {
    const KeyCode code = XKeysymToKeycode(display.get(), symbol);
    if (code == 0) throw std::invalid_argument("no key for keysym " + std::to_string(symbol));
    XTestFakeKeyEvent(display.get(), code, down, CurrentTime);
  }

  /// Whether the symbol stands on the upper half of its key.
  bool shifted(KeySym symbol) {
    const KeyCode code = XKeysymToKeycode(display.get(), symbol);
    return XkbKeycodeToKeysym(display.get(), code, 0, 0) != symbol;
  }

  void sync() { XSync(display.get(), False); }

  void clicks(int count, XDriver& driver, Point at, unsigned number, Held held, bool apart = false) {
    for (const std::string_view name : held) driver.hold(name);
    driver.moveTo(at);
    const bool soon = (apart || at == last_place) && Clock::now() - last_click < kClicksApart;
    for (int i = 0; i < count; ++i) {  // in one request to the server, so that they are close in time
      button(number, true, soon && i == 0 ? static_cast<unsigned long>(kClicksApart.count()) : CurrentTime);
      button(number, false);
    }
    sync();
    last_click = Clock::now();
    last_place = at;
    for (const std::string_view name : held) driver.letGo(name);
  }
};

namespace {

KeySym symbolOf(std::string_view name) {
  const KeySym symbol = XStringToKeysym(std::string(name).c_str());
  if (symbol == NoSymbol) throw std::invalid_argument("no keysym " + std::string(name));
  return symbol;
}

}  // namespace

XDriver::XDriver(const std::string& display) : impl_(std::make_unique<Implementation>()) {
  impl_->display.reset(XOpenDisplay(display.c_str()));
  if (!impl_->display) throw std::runtime_error("can't open display " + display);
  // A server that a test ends must not end the test: the first of these says nothing, the second does not
  // exit.
  XSetIOErrorHandler([](Display*) { return 0; });
  XSetIOErrorExitHandler(
      impl_->display.get(), [](Display*, void*) {}, nullptr);
}

XDriver::~XDriver() = default;
XDriver::XDriver(XDriver&&) noexcept = default;

void XDriver::moveTo(Point to) {
  XTestFakeMotionEvent(impl_->display.get(), -1, to.x, to.y, CurrentTime);
  impl_->sync();
}

void XDriver::press(unsigned button) {
  impl_->button(button, true);
  impl_->sync();
}

void XDriver::release(unsigned button) {
  impl_->button(button, false);
  impl_->sync();
}

void XDriver::hold(std::string_view keysym) {
  impl_->key(symbolOf(keysym), true);
  impl_->sync();
}

void XDriver::letGo(std::string_view keysym) {
  impl_->key(symbolOf(keysym), false);
  impl_->sync();
}

void XDriver::clickInMenu(Point at) { impl_->clicks(1, *this, at, Button1, {}, true); }

void XDriver::click(Point at, unsigned button, Held held) { impl_->clicks(1, *this, at, button, held); }

void XDriver::doubleClick(Point at, unsigned button, Held held) { impl_->clicks(2, *this, at, button, held); }

void XDriver::drag(Point from, Point to, unsigned button, Held held) {
  constexpr int kSteps = 8;
  for (const std::string_view key : held) hold(key);
  moveTo(from);
  press(button);
  for (int step = 1; step <= kSteps; ++step) {
    moveTo({from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps});
  }
  release(button);
  for (const std::string_view key : held) letGo(key);
}

void XDriver::wheel(Point at, int clicks, Held held) {
  for (const std::string_view key : held) hold(key);
  moveTo(at);
  const unsigned button = clicks > 0 ? 4 : 5;
  for (int i = 0; i < std::abs(clicks); ++i) {
    press(button);
    release(button);
  }
  for (const std::string_view key : held) letGo(key);
}

void XDriver::key(std::string_view keysym, Held held) {
  for (const std::string_view modifier : held) hold(modifier);
  hold(keysym);
  letGo(keysym);
  for (const std::string_view modifier : held) letGo(modifier);
}

void XDriver::type(std::string_view text) {
  for (const char c : text) {
    const auto symbol =
        static_cast<KeySym>(static_cast<unsigned char>(c));  // Latin-1 keysyms are the characters
    const bool shift = impl_->shifted(symbol);
    if (shift) impl_->key(symbolOf("Shift_L"), true);
    impl_->key(symbol, true);
    impl_->key(symbol, false);
    if (shift) impl_->key(symbolOf("Shift_L"), false);
  }
  impl_->sync();
}

void XDriver::awaitWindowManager() {
  Display* const display = impl_->display.get();
  if (impl_->ping == None) {
    impl_->ping = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
    XSelectInput(display, impl_->ping, StructureNotifyMask);
  }
  // What a program asks for its windows on the screen goes to the window manager, which does it in its turn.
  impl_->ping_x = impl_->ping_x % 100 + 1;
  XMoveWindow(display, impl_->ping, impl_->ping_x, 0);
  const auto moved = [&] {
    XEvent event;
    while (XCheckTypedWindowEvent(display, impl_->ping, ConfigureNotify, &event))
      if (event.xconfigure.x == impl_->ping_x) return true;
    return false;
  };
  const auto end = Clock::now() + kWindowManagersTime;
  while (!moved() && Clock::now() < end) {
    pollfd ready{ConnectionNumber(display), POLLIN, 0};
    poll(&ready, 1, 100);
  }
}

}  // namespace support
