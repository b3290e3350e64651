/// @file
/// Key presses and releases on their way to the toolkit.
#pragma once

#include <X11/Xlib.h>

namespace viewkit {

/// From now on a text field with the focus gets the plain editing keys (Delete, say) even if a menu item has
/// one of them as its accelerator, and a key's release comes with the modifiers that it was pressed with: a
/// menu opens by its mnemonic whether Alt or the letter is let go first.
void installKeyDispatcher(Display* display);

}  // namespace viewkit
