/// @file Key presses on their way to the toolkit.
#include "viewkit/keys.h"

#include <X11/Intrinsic.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>
#include <Xm/Text.h>
#include <Xm/TextF.h>

#include <span>

#include "viewkit/xraii.h"

namespace viewkit {
namespace {

XtEventDispatchProc nextDispatcher;
unsigned int numLockMask;

struct FreeModifiers {
  void operator()(XModifierKeymap* map) const noexcept { XFreeModifiermap(map); }
};

/// The modifier bit that NumLock sets on this display; 0 if it has none.
unsigned int findNumLock(Display* display) {
  const KeyCode wanted = XKeysymToKeycode(display, XK_Num_Lock);
  const std::unique_ptr<XModifierKeymap, FreeModifiers> map(XGetModifierMapping(display));
  if (!wanted || !map) return 0;
  const auto perModifier = static_cast<std::size_t>(map->max_keypermod);
  const std::span codes(map->modifiermap, 8 * perModifier);
  for (std::size_t i = 0; i < codes.size(); ++i)
    if (codes[i] == wanted) return 1U << (i / perModifier);
  return 0;
}

/// Keys whose meaning no lock changes. Keypad keys are none of them, nor are those that make text.
bool isCommandKey(KeySym symbol) {
  return IsCursorKey(symbol) || IsFunctionKey(symbol) || IsMiscFunctionKey(symbol) || symbol == XK_Delete ||
         symbol == XK_Escape || symbol == XK_Return || symbol == XK_Tab;
}

/// Keys that a text field needs for itself.
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

Boolean dispatchKey(XEvent* event) {
  XKeyEvent& key = event->xkey;
  const KeySym symbol = XLookupKeysym(&key, 0);
  const bool modified = key.state & (ControlMask | Mod1Mask);
  if (modified || isCommandKey(symbol)) key.state &= ~(LockMask | numLockMask);
  if (!modified && isEditingKey(symbol)) {
    if (const Widget text = focusedText(key)) {
      // Straight to the text: on the usual way the menu bar's grab of the shell would take the key.
      return XFilterEvent(event, XtWindow(text)) || XtDispatchEventToWidget(text, event);
    }
  }
  return nextDispatcher(event);
}

}  // namespace

void installKeyDispatcher(Display* display) {
  numLockMask = findNumLock(display);
  nextDispatcher = XtSetEventDispatcher(display, KeyPress, &dispatchKey);
  XtSetEventDispatcher(display, KeyRelease, &dispatchKey);
}

}  // namespace viewkit
