/// @file
/// Key presses and releases on their way to the toolkit.
#pragma once

#include <X11/Intrinsic.h>

#include <functional>

namespace viewkit {

/// A key press.
struct PressedKey {
  KeySym symbol;  ///< of the key with no modifiers: lower-case letters
  bool ctrl, alt, shift;
  bool into_text;  ///< it goes to a text field
};
/// @returns whether that was all: nobody else gets the key then.
using KeyListener = std::function<bool(const PressedKey& key)>;

/// From now on, until the shell is destroyed, `listener` is told of the keys that go to the shell before
/// anybody else is.
void listenToKeys(Widget shell, KeyListener listener);

/// From now on a text field with the focus gets the plain editing keys (Delete, say) even if a menu item has
/// one of them as its accelerator, and a key's release comes with the modifiers that it was pressed with: a
/// menu opens by its mnemonic whether Alt or the letter is let go first.
void installKeyDispatcher(Display* display);

}  // namespace viewkit
