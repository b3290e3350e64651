/// @file
/// A node of a graph: a name, a label, parents and children, and the widget that shows it.
#pragma once

#include <X11/Intrinsic.h>

#include <cstddef>
#include <string>

#include "picture/geometry.h"
#include "viewkit/linklist.h"
#include "viewkit/vkcomponent.h"

class VkGraph;

/// Made by VkGraph::make or handed to VkGraph::add, which owns it from then on. The node's widget carries the
/// VkNode as its XmNuserData. A second link to the same node stands in the lists a second time.
class VkNode : public VkComponent {
 public:
  /// @param label  the text shown; null: the name.
  explicit VkNode(const char* name, const char* label = nullptr);
  ~VkNode() override;
  const char* className() const override { return "VkNode"; }

  const char* label() const { return label_.c_str(); }

  /// Makes the node's widget, tinted by tintName(), if there is none yet. The graph calls it when the node
  /// enters the graph; derived classes call it first and then dress baseWidget().
  /// @param parent  the graph widget.
  virtual void build(Widget parent);

  /// The graph's resource `<tintName>Tint` colours the node; "" leaves it in the common colour.
  virtual const char* tintName() const { return ""; }

  /// What people call it, beside its name; empty: nothing.
  virtual std::string title() const { return {}; }

  /// Parents and children in the order in which they were linked; numbers from 0. Null beyond the last.
  int nParents() const { return static_cast<int>(parents_.size()); }
  int nChildren() const { return static_cast<int>(children_.size()); }
  VkNode* parent(int number) const { return parents_.at(number); }
  VkNode* child(int number) const { return children_.at(number); }
  /// Whether a parent is another node than `parent`.
  bool hasOtherParent(const VkNode* parent) const;

  /// Take one entry out of the one list; the other node's list and the drawn arc are the caller's to change:
  /// VkGraph::remove does all three. In constant time. Unknown nodes are ignored.
  void removeChild(VkNode* node) { children_.remove(node); }
  void removeParent(VkNode* node) { parents_.remove(node); }

  /// The graph the node is in; null before it enters one.
  VkGraph* graph() const { return graph_; }

  /// The node that a node widget belongs to; null for other widgets.
  static VkNode* of(Widget nodeWidget);

 private:
  friend class VkGraph;

  std::string label_;
  viewkit::LinkList<VkNode> parents_, children_;
  VkGraph* graph_ = nullptr;
  std::size_t number_ = 0;  // place in the graph's list of nodes
  bool placed_ = false;     // it has a position
  SgPoint corner_;          // that, while it has no widget
  bool wanted_ = false;     // without one, but its widget is where one is wanted
  bool byHand_ = false;     // the user gave it the position
};
