/// @file
/// The table of keys and gestures, and what is made of it.
#include "editor/keys.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>

#include "viewkit/keys.h"

namespace {

constexpr Gesture kMenus[] = {
    {"Ctrl+N", "clears the picture; the scene stays in memory", "New"},
    {"Ctrl+O", "opens a scene", "Open"},
    {"Ctrl+S", "saves the scene", "Save"},
    {"Shift+Ctrl+S", "saves it under another name", "Save As..."},
    {"Ctrl+Q", "ends the program", "Quit"},
    {"Ctrl+E", "turns Edit Mode on and off", "Edit Mode"},
    {"Del", "deletes the first of the selected links, in Edit Mode", "Delete Link"},
    {"Ctrl+Z", "takes back the last step, in Edit Mode", "Undo"},
    {"Shift+Ctrl+Z, Ctrl+Y", "makes again what was taken back, in Edit Mode", "Redo"},
    {"Ctrl+L", "links the node that was selected first to the others, in Edit Mode", "Link Selected"},
    {"Shift+Ctrl+L", "links the selected nodes with one that is found by its name, in Edit Mode",
     "Link to..."},
    {"Ctrl+F", "goes to the find field", "Find"},
    {"F10", "goes to the menus; Alt and an underlined letter opens one"},
};

constexpr Gesture kGraph[] = {
    {"click a node or an arc", "selects it; with Shift one more; the background clears the selection"},
    {"point at a node, or select it", "shows all of its arcs from end to end"},
    {"click the stub of an arc", "selects the arc, and shows the node at its other end"},
    {"drag a node", "moves it and the other selected ones; no record changes"},
    {"drag the background", "pans; so does the middle button anywhere"},
    {"wheel", "scrolls; Shift: sideways; Ctrl: zooms around the pointer, up to 400 %"},
    {"click the handle at a node's left", "folds the node, and unfolds it"},
    {"right button, or the Menu key", "a menu for the node, the arc or the background"},
    {"double-click a node", "opens the dialog with its record's values"},
    {"Return", "the same for the node that was selected last", "Values..."},
    {"Up", "goes to a parent: the one you came from, or the nearest", "Go to Parent"},
    {"Down", "goes to the nearest child", "Go to Child"},
    {"Left, Right", "goes to the parent's child before it, or after it"},
    {"P", "selects the parents of the selected nodes, too", "Select Parents"},
    {"C", "selects their children, too", "Select Children"},
    {"Shift+P", "selects all from which they are reached, too", "Select Everything Above"},
    {"Shift+C", "selects all that is reached from them, too", "Select Everything Below"},
    {"Ctrl+A", "selects all nodes", "Select All"},
    {"S", "shows only the selected nodes", "These Alone"},
    {"1", "shows only them and what is one arc away", "With 1 Step Around"},
    {"2", "the same with what is two arcs away", "With 2 Steps Around"},
    {"3", "the same with what is three arcs away", "With 3 Steps Around"},
    {"A", "shows all nodes again", "Show All"},
    {"-", "folds the selected node; without one zooms out", "Collapse"},
    {"+", "unfolds it; without one zooms in", "Expand"},
    {"Ctrl+-, -", "zooms out", "Zoom Out"},
    {"Ctrl++, +", "zooms in", "Zoom In"},
    {"0, Ctrl+0", "zooms to 100 %", "Zoom to 100 %"},
    {"F", "shows the whole graph, however large", "Fit"},
    {"Shift+F", "shows what is selected as large as it can be", "Fit Selection"},
    {"Home", "goes to the top of the graph", "Top of the Graph"},
    {"Page Up, Page Down", "scrolls by a window; with Shift sideways"},
    {"M", "turns the map of the whole graph on and off", "Overview"},
    {"Escape", "gives up a drag; clears the selection"},
    {"Tab", "goes on to the zoom buttons and the find field"},
    {"F1", "lists keys and gestures", "Keys and Gestures"},
};

constexpr Gesture kEditing[] = {
    {"Ctrl + drag from a node to a node", "a new reference from the first to the second"},
    {"drag the end of a selected arc", "moves it to another node"},
    {"Shift+Del", "takes the references of all selected arcs out, in one step", "Delete Links"},
    {"drag to the edge of the canvas", "scrolls it, until the pointer leaves the edge"},
    {"double-click the background", "a new node there, for notes; it stands for no record"},
};

constexpr Gesture kFinding[] = {
    {"Return or Down, Shift+Return or Up", "go to the next, to the one before"},
    {"Ctrl+Return", "selects all that were found"},
    {"Escape", "empties the field and goes back to the graph"},
};

constexpr Gesture kLinks[] = {
    {"click a row", "selects its link, which Del deletes in Edit Mode"},
    {"double-click a row, or Return", "goes to that node"},
    {"drag a row onto a node", "links the two, in Edit Mode"},
};

constexpr Gesture kDialogs[] = {
    {"OK, or Return", "applies, and closes"},
    {"Apply", "writes the values into the record, and stays"},
    {"Cancel, or Escape", "forgets what was entered since the last Apply, and closes"},
    {"Ctrl+S", "applies, and saves the scene"},
    {"Ctrl+Z", "in a text: takes back what was typed, change by change"},
    {"Tab", "walks from item to item"},
};

constexpr GestureGroup kGroups[] = {
    {"Anywhere in the main window", kMenus, true},
    {"In the graph", kGraph},
    {"In the graph, in Edit Mode", kEditing},
    {"In the find field", kFinding},
    {"In the list of links", kLinks},
    {"In the dialog of a record", kDialogs},
};

std::string resource_name(std::string_view label) {
  std::string name;
  std::ranges::copy_if(label, std::back_inserter(name), [](unsigned char c) { return std::isalnum(c); });
  return name;
}

}  // namespace

std::span<const GestureGroup> gesture_groups() { return kGroups; }

std::string keys_and_gestures() {
  std::size_t width = 0;
  for (const GestureGroup& group : kGroups)
    for (const Gesture& gesture : group.gestures)
      width = std::max(width, std::string_view(gesture.how).size());
  std::string text;
  for (const GestureGroup& group : kGroups) {
    text += (text.empty() ? "" : "\n") + std::string(group.title) + "\n\n";
    for (const Gesture& gesture : group.gestures) {
      std::string how = gesture.how;
      how.resize(width, ' ');
      text += "  " + how + "  " + gesture.does + "\n";
    }
  }
  return text;
}

std::vector<std::string> menu_key_lines() {
  std::vector<std::string> lines;
  for (const GestureGroup& group : kGroups)
    for (const Gesture& gesture : group.gestures) {
      if (!gesture.item) continue;
      const std::string item = "*" + resource_name(gesture.item);
      const std::string shown(viewkit::splitKeys(gesture.how).front());
      lines.push_back(item + ".acceleratorText: " + shown);
      if (group.anywhere) lines.push_back(item + ".accelerator: " + viewkit::acceleratorOf(gesture.how));
    }
  return lines;
}
