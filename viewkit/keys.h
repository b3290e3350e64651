/// @file Key presses on their way to the toolkit.
#pragma once

#include <X11/Xlib.h>

namespace viewkit {

/// From now on key events of the display reach the toolkit so that menu accelerators work whether CapsLock
/// and NumLock are on or not, and that a text field with the focus gets the plain keys (Delete, say) that a
/// menu uses as accelerators.
void installKeyDispatcher(Display* display);

}  // namespace viewkit
