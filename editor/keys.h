/// @file
/// All keys and gestures of the editor, each with what it does.
#pragma once

#include <span>
#include <string>
#include <vector>

/// What people do, and what it does.
struct Gesture {
  const char* how;   ///< keys by their names (viewkit::keyText), several with ", " between; or words
  const char* does;  ///< begins where the sentence "this ..." would go on
  const char* item = nullptr;  ///< the label of the menu item that does the same
};

struct GestureGroup {
  const char* title;  ///< where they can be used
  std::span<const Gesture> gestures;
  bool anywhere = false;  ///< keys of the menu bar, whatever has the focus in the main window
};

/// The menus take their keys from it, the graph what its keys do; the list of keys and gestures is made of
/// it.
std::span<const GestureGroup> gesture_groups();

/// The list, as lines of text in columns.
std::string keys_and_gestures();

/// X resource lines that give the menu items their keys.
std::vector<std::string> menu_key_lines();
