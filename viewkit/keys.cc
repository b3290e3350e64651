/// @file
/// Key presses and releases on their way to the toolkit.
#include "viewkit/keys.h"

#include <X11/Intrinsic.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>
#include <Xm/Text.h>
#include <Xm/TextF.h>

namespace viewkit {
namespace {

XtEventDispatchProc nextDispatcher;
XtEventDispatchProc nextReleaseDispatcher;
XKeyEvent lastPress;

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
  lastPress = key;
  const bool plain = !(key.state & (ControlMask | Mod1Mask));
  if (plain && isEditingKey(XLookupKeysym(&key, 0))) {
    if (const Widget text = focusedText(key)) {
      // Sent to the text itself: the usual way leads to the menu bar, which would run the item of that key.
      return XFilterEvent(event, XtWindow(text)) || XtDispatchEventToWidget(text, event);
    }
  }
  return nextDispatcher(event);
}

Boolean dispatchRelease(XEvent* event) {
  XKeyEvent& key = event->xkey;
  // A menu bar opens its menus when the letter is released, and only if Alt is still down. Many people
  // release Alt first: the release of the letter gets the modifiers of its press.
  if (key.keycode == lastPress.keycode) key.state |= lastPress.state;
  return nextReleaseDispatcher(event);
}

}  // namespace

void installKeyDispatcher(Display* display) {
  nextDispatcher = XtSetEventDispatcher(display, KeyPress, &dispatchKey);
  nextReleaseDispatcher = XtSetEventDispatcher(display, KeyRelease, &dispatchRelease);
}

}  // namespace viewkit
