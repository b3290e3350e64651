/// @file
/// Key presses and releases on their way to the toolkit.
#pragma once

#include <X11/Intrinsic.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace viewkit {

/// What people call a key press: "F", "Shift+F", "Ctrl+A", "+", "Home". Empty for keys without a name of
/// their own, such as Shift.
std::string keyText(XKeyEvent key);
/// Such names that stand with ", " between.
std::vector<std::string_view> splitKeys(std::string_view keys);
/// The X accelerator for one or several such names.
std::string acceleratorOf(std::string_view keys);

/// A key press.
struct PressedKey {
  KeySym symbol;  ///< of the key with no modifiers: lower-case letters
  bool ctrl, alt, shift;
  bool into_text;  ///< it goes to a text field
};
/// @returns whether that was all: nobody else gets the key then.
using KeyListener = std::function<bool(const PressedKey& key)>;

struct StopListening {
  void operator()(Widget shell) const;
};
/// Ends the listening to a shell's keys. To be dropped when the shell is destroyed: on its way it still gets
/// keys, of the toolkit's making.
using KeyListening = std::unique_ptr<std::remove_pointer_t<Widget>, StopListening>;

/// As long as what is returned lives, `listener` is told of the keys that go to the shell before anybody else
/// is.
[[nodiscard]] KeyListening listenToKeys(Widget shell, KeyListener listener);

/// From now on a text field with the focus gets the plain editing keys (Delete, say) even if a menu item has
/// one of them as its accelerator, and a key's release comes with the modifiers that it was pressed with: a
/// menu opens by its mnemonic whether Alt or the letter is let go first. A menu takes keys however short the
/// click was that has brought it up.
void installKeyDispatcher(Display* display);

}  // namespace viewkit
