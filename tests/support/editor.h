/// @file
/// The built editor on a virtual display, used as a person would: menus, dialogs, the graph.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/program.h"

namespace support {

/// What the graph shows. All places are on the screen.
struct GraphState {
  struct Node {
    std::string name, label;
    Box box;
    unsigned long tint = 0;  ///< pixel value of its colour
    bool managed = false, selected = false;
    bool folded = false;  ///< another one stands for it
    bool hidden = false;  ///< it is not seen, whatever stands for it
  };
  struct Arc {
    std::string parent, child;
    Point middle;                       ///< a press here picks it
    Point parent_handle, child_handle;  ///< a drag from here moves that end while the arc is selected
    bool selected = false;
  };
  double zoom = 1;
  Box view;  ///< the part of the window that shows nodes
  std::vector<Node> nodes;
  std::vector<Arc> arcs;

  /// The node of that name. Throws std::out_of_range when there is none.
  const Node& node(std::string_view name) const;
  bool hasNode(std::string_view name) const;
  /// The first arc from `parent` to `child`. Throws std::out_of_range when there is none.
  const Arc& arc(std::string_view parent, std::string_view child) const;
  int countArcs(std::string_view parent, std::string_view child) const;
  bool hasArc(std::string_view parent, std::string_view child) const { return countArcs(parent, child) != 0; }
};

class Editor : public Program {
 public:
  static constexpr std::string_view kQuestion = "questionDialog", kWarning = "warningDialog",
                                    kFiles = "fileSelectionDialog";

  /// Starts the editor with an options file of its own, unless `start` brings one, and waits until its window
  /// shows.
  /// @param start  what to change; its executable is filled in
  explicit Editor(const XServer& server, Start start = {});

  /// Waits for a dialog. @returns what it says.
  std::string message(std::string_view dialog);
  /// Presses a button of a dialog ("OK", "Cancel") and waits until the dialog is gone.
  void answer(std::string_view dialog, std::string_view button);
  /// Whether the dialog is up now that everything has been handled.
  bool asks(std::string_view dialog);

  /// Types a path into the file selection dialog and presses OK.
  void chooseFile(const std::filesystem::path& path);

  void open(const std::filesystem::path& path);
  /// Save As; answers the question about overwriting, if it comes, with OK.
  void saveAs(const std::filesystem::path& path);
  void toggleEditMode();
  /// Chooses Quit. @returns the exit code.
  std::optional<int> quit();

  GraphState graph();
  WidgetInfo graphWidget();

  /// Presses a key in the main window once that has the focus.
  void key(std::string_view keysym, Held held = {});
  /// Draws an arc: Ctrl + drag from node to node.
  void drawArc(std::string_view parent, std::string_view child);
  void doubleClickNode(std::string_view name);
  /// Clicks an arc.
  void selectArc(std::string_view parent, std::string_view child, Held held = {});
  /// Selects an arc and drags one of its ends to another node.
  void moveChildEnd(std::string_view parent, std::string_view child, std::string_view new_child);
  void moveParentEnd(std::string_view parent, std::string_view child, std::string_view new_parent);

 private:
  /// The graph with all of it in view, zoomed out if need be.
  GraphState wholeGraph();
  void moveEnd(std::string_view parent, std::string_view child, Point GraphState::Arc::*handle,
               std::string_view to);
};

}  // namespace support
