/// @file
/// The one main window: menus, graph view, and the commands behind them.
#pragma once

#include <memory>
#include <string>

#include "qilib/qis.h"
#include "viewkit/vkgraph.h"
#include "viewkit/vkwindow.h"

/// Reads a scene file into the current scene `qis`. The file is read into a fresh scene first, so that after
/// a failure the scene in memory is what it was.
/// @returns 1 when the file is now the current scene; anything else is a failure.
int quilread(const std::string& path);

/// Writes the current scene `qis` to `path` in mode 2, after its sizes have been put right.
/// @returns 0 when it is written, -1 when it could not be or the scene is of no known version.
int quilsave(const std::string& path);

/// The editor's main window. Every menu callback and graph callback is a static member that forwards to the
/// ordinary member of the same name without "Callback", with the window as client data.
class GraphWindow : public VkWindow {
 public:
  explicit GraphWindow(const char* name);
  ~GraphWindow() override;

  const char* className() override { return "GraphWindow"; }

  /// Builds the nodes and arcs of the current scene into `graph`, in their fixed order. Nodes that the graph
  /// has already are reused by name; level-of-detail nodes are always new.
  void struct_graph(VkGraph* graph);
  /// Adds the arc from `parent` to the node named `child_name`, which is made when the graph lacks it.
  void addChild(VkNode* parent, const std::string& child_name);

  /// Makes the records refer as the arc parent -> child says. @returns 1, or 0 when refused.
  int quilAddLink(const VkNode* parent, const VkNode* child);
  /// Removes the records' reference behind the arc parent -> child. @returns 1, or 0 when there is no rule.
  int quilDeleteLink(const VkNode* parent, const VkNode* child);
  /// Changes one end of the reference behind an arc. @returns 1, or 0 when refused.
  int quilModifyLink(const VkNode* old_parent, const VkNode* old_child, const VkNode* new_parent,
                     const VkNode* new_child);

  /// Removes the arc from the graph only.
  void deleteLink(VkNode* parent, VkNode* child);
  /// After a move to `parent`: removes the arc of the child that `child` displaced from a single slot.
  void deleteDupChild(VkNode* parent, VkNode* child);

  /// Writes the picture of the whole graph as PostScript.
  void print(const std::string& path);

 private:
  // Menu callbacks, in the order of the menus.
  static void newCallback(Widget, XtPointer, XtPointer);
  static void openCallback(Widget, XtPointer, XtPointer);
  static void saveCallback(Widget, XtPointer, XtPointer);
  static void saveAsCallback(Widget, XtPointer, XtPointer);
  static void quitCallback(Widget, XtPointer, XtPointer);
};
