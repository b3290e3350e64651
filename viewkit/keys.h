/// @file
/// Key presses on their way to the toolkit.
#pragma once

#include <X11/Xlib.h>

namespace viewkit {

/// From now on a text field with the focus gets the plain editing keys (Delete, say) even if a menu item has
/// one of them as its accelerator.
void installKeyDispatcher(Display* display);

}  // namespace viewkit
