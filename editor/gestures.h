/// @file
/// The gestures with which the user edits links in the graph.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "editor/model/history.h"
#include "editor/prompts.h"
#include "viewkit/vkgraph.h"

class EditStep;

/// Carries out the gestures of Edit Mode. A gesture goes to the link rules first, and only when they accept
/// it is the picture changed and the step added to the history. The graph widget never changes the picture by
/// itself.
class GraphGestures {
 public:
  /// @param graph, prompts, history  outlive this.
  GraphGestures(VkGraph& graph, Prompts& prompts, History& history)
      : graph_(graph), prompts_(prompts), history_(history) {}

  /// Edit Mode: whether the user can change arcs and add nodes.
  bool editing() const;
  void setEditing(bool on);
  /// A line of help on the gestures that are possible now, for VkSimpleWindow::setStatus.
  const char* hint() const;

  /// @name The graph widget's callbacks.
  /// @{
  /// Clears `doit` where the link rules would refuse the arc.
  static void mayLink(SgGraphCallbackStruct& call);
  /// What the arc that is being drawn or moved would be, or why it can't be; empty where it has no end.
  static std::string whatWouldBe(const SgGraphCallbackStruct& call);
  /// Adds a node that stands for no record, where the pointer is.
  void newNode(SgGraphCallbackStruct& call);
  void newArc(SgGraphCallbackStruct& call);
  void arcMoved(SgGraphCallbackStruct& call);
  /// @}

  /// Links the node that was selected first to the others that are selected, in Edit Mode; a step.
  void linkSelected();
  /// Has the user find a node, in Edit Mode, and links the selected nodes with it: to it, or the other way
  /// round where only that can be; a step.
  /// @param say  is told what would be done, as whatWouldBe() tells it
  void linkToFound(const std::function<void(const std::string&)>& say);

  /// Deletes the first of the selected links, in Edit Mode.
  void deleteSelectedLink();
  /// Deletes all of them as far as the rules allow, in Edit Mode; in one step.
  void deleteSelectedLinks();

  /// Another picture of the same graph; each is a step where it changes anything.
  /// @{
  void arrange(VkGraph::Arrangement arrangement);
  void arrangeAgain();
  /// @}

  /// The user has moved nodes by hand.
  void nodesMoved(const VkGraph::Moved& moved);

  /// After `child` has moved to `parent`: where a parent can have only one child of that kind, the child that
  /// was there before, to which an arc is still drawn; null when there is none.
  static VkNode* displaced(const VkNode* parent, const VkNode* child);

 private:
  /// Takes one link out of the records and the picture. @returns whether the rules allow it.
  static bool deleteLink(EditStep& step, VkNode* from, VkNode* to);
  using Ends = std::pair<VkNode*, VkNode*>;  ///< parent, child
  /// Links what can be linked, in one step, and says of the rest why not.
  /// @param label  of the step, from the number of links that were made
  void linkAll(const std::vector<Ends>& links, const std::function<std::string(std::size_t)>& label);
  /// Says why a gesture is refused, then that it is.
  void refuse(EditStep& step, const char* text, const std::string& reason);

  VkGraph& graph_;
  Prompts& prompts_;
  History& history_;
};
