/// @file
/// What the user draws in the graph.
#pragma once

#include "editor/prompts.h"
#include "viewkit/vkgraph.h"

/// Edits the links of the current scene by gestures in its graph, in Edit Mode. A gesture goes to the link
/// rules first, and only what they accept changes the picture; the graph widget never does by itself.
class GraphGestures {
 public:
  /// @param graph, prompts  outlive this.
  GraphGestures(VkGraph& graph, Prompts& prompts) : graph_(graph), prompts_(prompts) {}

  /// Edit Mode.
  bool editing() const;
  void setEditing(bool on);
  /// One line about the gestures there are just now, its parts apart for VkSimpleWindow::setStatus.
  const char* hint() const;

  /// @name What the graph widget tells.
  /// @{
  /// Adds a node that stands for no record.
  void newNode(SgGraphCallbackStruct& call);
  void newArc(SgGraphCallbackStruct& call);
  void arcMoved(SgGraphCallbackStruct& call);
  /// @}

  /// Deletes the first of the selected links, in Edit Mode.
  void deleteSelectedLink();

  /// @name The picture alone.
  /// @{
  /// Removes one arc parent -> child; the nodes stay.
  void removeArc(VkNode* parent, VkNode* child);
  /// After a move to `parent`: removes the arc of the child that `child` displaced from a single slot.
  void removeDisplaced(VkNode* parent, const VkNode* child);
  /// @}

 private:
  VkGraph& graph_;
  Prompts& prompts_;
};
