/// @file
/// Key presses and releases on their way to the toolkit.
#include "viewkit/keys.h"

#include <X11/Xutil.h>
#include <X11/keysym.h>
#include <Xm/Text.h>
#include <Xm/TextF.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <iterator>
#include <map>
#include <thread>
#include <utility>

namespace viewkit {
namespace {

XtEventDispatchProc nextDispatcher;
XtEventDispatchProc nextKeyReleaseDispatcher;
XtEventDispatchProc nextButtonPressDispatcher;
XtEventDispatchProc nextButtonReleaseDispatcher;
XKeyEvent lastPress;
Time lastButtonPress;
std::map<Widget, KeyListener> listeners;  // by shell

/// Keys that have other names than the X server's, for people and for the toolkit's accelerators.
struct KeyName {
  KeySym symbol;
  const char* text;
  const char* accelerator;
};
constexpr KeyName kKeyNames[] = {
    {XK_Delete, "Del", "osfDelete"},
    {XK_Home, "Home", "osfBeginLine"},
    {XK_F1, "F1", "F1"},
};

bool isEditingKey(KeySym symbol) {
  return IsCursorKey(symbol) || symbol == XK_Delete || symbol == XK_BackSpace || symbol == XK_Insert;
}

/// The text widget that has the focus below the widget that the key was sent to, or null. A posted menu,
/// which is sent the keys while the text keeps its focus, is not above it.
Widget focusedText(const XKeyEvent& key) {
  const Widget receiver = XtWindowToWidget(key.display, key.window);
  const Widget focus = receiver ? XmGetFocusWidget(receiver) : nullptr;
  if (!focus || !(XmIsText(focus) || XmIsTextField(focus))) return nullptr;
  Widget above = focus;
  while (above && above != receiver) above = XtParent(above);
  return above ? focus : nullptr;
}

bool isTakenByListener(XKeyEvent& key) {
  if (listeners.empty()) return false;
  Widget shell = XtWindowToWidget(key.display, key.window);
  while (shell && !XtIsShell(shell)) shell = XtParent(shell);
  const auto found = listeners.find(shell);
  if (found == listeners.end()) return false;
  const KeyListener listener = found->second;  // a copy: it may destroy the shell
  return listener({.symbol = XLookupKeysym(&key, 0),
                   .ctrl = (key.state & ControlMask) != 0,
                   .alt = (key.state & Mod1Mask) != 0,
                   .shift = (key.state & ShiftMask) != 0,
                   .into_text = focusedText(key) != nullptr});
}

Boolean dispatchKey(XEvent* event) {
  XKeyEvent& key = event->xkey;
  lastPress = key;
  if (isTakenByListener(key)) return True;
  const bool plain = !(key.state & (ControlMask | Mod1Mask));
  if (plain && isEditingKey(XLookupKeysym(&key, 0))) {
    if (const Widget text = focusedText(key)) {
      // Sent to the text itself: the usual way leads to the menu bar, which would run the item of that key.
      return XFilterEvent(event, XtWindow(text)) || XtDispatchEventToWidget(text, event);
    }
  }
  return nextDispatcher(event);
}

Boolean dispatchButtonPress(XEvent* event) {
  lastButtonPress = event->xbutton.time;
  return nextButtonPressDispatcher(event);
}

Boolean dispatchButtonRelease(XEvent* event) {
  // The toolkit gives a menu the keyboard as of the release, but not at the very time of the press, as when a
  // touchpad is tapped. A time that the server has not reached yet would be refused.
  Time& time = event->xbutton.time;
  if (time == lastButtonPress) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    ++time;
  }
  return nextButtonReleaseDispatcher(event);
}

Boolean dispatchKeyRelease(XEvent* event) {
  XKeyEvent& key = event->xkey;
  // A menu bar opens its menus when the letter is released, and only if Alt is still down. Many people
  // release Alt first: the release of the letter gets the modifiers of its press.
  if (key.keycode == lastPress.keycode) key.state |= lastPress.state;
  return nextKeyReleaseDispatcher(event);
}

}  // namespace

std::string keyText(XKeyEvent key) {
  const bool ctrl = (key.state & ControlMask) != 0, alt = (key.state & Mod1Mask) != 0;
  bool shift = (key.state & ShiftMask) != 0;
  key.state &= ~static_cast<unsigned>(ControlMask | Mod1Mask);
  KeySym symbol = NoSymbol;
  std::array<char, 8> typed{};
  const int length = XLookupString(&key, typed.data(), static_cast<int>(typed.size()), &symbol, nullptr);
  std::string text;
  if (const auto* named = std::ranges::find(kKeyNames, symbol, &KeyName::symbol);
      named != std::end(kKeyNames)) {
    text = named->text;
  } else if (length == 1 && std::isgraph(static_cast<unsigned char>(typed[0]))) {
    const auto letter = static_cast<unsigned char>(typed[0]);
    text = static_cast<char>(std::toupper(letter));
    shift = shift && std::isalpha(letter);  // elsewhere Shift makes it another character
  }
  if (text.empty()) return text;
  return std::string(shift ? "Shift+" : "") + (ctrl ? "Ctrl+" : "") + (alt ? "Alt+" : "") + text;
}

std::vector<std::string_view> splitKeys(std::string_view keys) {
  constexpr std::string_view kBetween = ", ";
  std::vector<std::string_view> names;
  for (std::size_t end; (end = keys.find(kBetween)) != keys.npos; keys.remove_prefix(end + kBetween.size()))
    names.push_back(keys.substr(0, end));
  names.push_back(keys);
  return names;
}

std::string acceleratorOf(std::string_view keys) {
  std::string accelerators;
  for (std::string_view key : splitKeys(keys)) {
    std::string modifiers;
    for (std::size_t plus; (plus = key.find('+')) != key.npos && plus + 1 < key.size();
         key.remove_prefix(plus + 1))
      modifiers += (modifiers.empty() ? "" : " ") + std::string(key.substr(0, plus));
    std::string name(key);
    if (const auto* named = std::ranges::find(kKeyNames, key, &KeyName::text); named != std::end(kKeyNames))
      name = named->accelerator;
    else
      std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
    accelerators += (accelerators.empty() ? "" : ", ") + modifiers + "<Key>" + name;
  }
  return accelerators;
}

void StopListening::operator()(Widget shell) const { listeners.erase(shell); }

KeyListening listenToKeys(Widget shell, KeyListener listener) {
  listeners.insert_or_assign(shell, std::move(listener));
  return KeyListening(shell);
}

void installKeyDispatcher(Display* display) {
  nextDispatcher = XtSetEventDispatcher(display, KeyPress, &dispatchKey);
  nextButtonPressDispatcher = XtSetEventDispatcher(display, ButtonPress, &dispatchButtonPress);
  nextButtonReleaseDispatcher = XtSetEventDispatcher(display, ButtonRelease, &dispatchButtonRelease);
  nextKeyReleaseDispatcher = XtSetEventDispatcher(display, KeyRelease, &dispatchKeyRelease);
}

}  // namespace viewkit
