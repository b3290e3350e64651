/// @file
/// A list of what refers to the selected node of a graph, and of what it refers to.
#pragma once

#include <X11/Intrinsic.h>

#include <optional>
#include <string>
#include <vector>

#include "viewkit/forward.h"
#include "viewkit/vkcomponent.h"
#include "viewkit/vkgraph.h"

/// Stands beside a graph, see VkGraph::side(). Widgets, by name: label "subject", and for each direction a
/// label and a list, "parentsLabel", "parents", "childrenLabel", "children". A row has the node's name, its
/// label where that is another one, and its title; a list that would be too long ends with a row that says
/// how many more there are.
///
/// A click on a row selects its link, as a click on the arc does; a double-click or Return goes to the node.
/// Dragged from the list onto a node of the graph, the row's node is linked to it, as by an arc that is
/// drawn.
class LinksPane : public VkComponent {
 public:
  /// Its width, in pixels.
  static constexpr int kLeast = 80, kMost = 2000;
  /// Rows of a list, before the one that says how many more there are.
  static constexpr int kMostRows = 1000;

  /// @param graph  outlives this.
  LinksPane(const char* name, VkGraph& graph);
  ~LinksPane() override;
  const char* className() const override { return "LinksPane"; }

  /// Shows the titles of nodes as they are now.
  void update();

  /// How wide it is, in pixels.
  int width() const;
  /// To be called while it isn't shown.
  void setWidth(int pixels);

 protected:
  void widgetDestroyed() override;

 private:
  struct Side {
    Widget label = nullptr, list = nullptr;
    std::vector<std::string> nodes;  ///< by name, of the rows
    std::vector<std::string> rows;   ///< as they are shown
  };

  Side makeSide(const std::string& name);
  void contentsChanged() { update(); }
  void fill(Side& side, const std::string& heading, int count, VkNode* (VkNode::*other)(int) const,
            const VkNode* subject);
  /// The node of the list's selected row; null for none.
  VkNode* chosen(const Side& side) const;
  Side& sideOf(Widget list) { return list == parents_.list ? parents_ : children_; }
  void rowSelected(Widget list, XtPointer data);
  void rowActivated(Widget list, XtPointer data);
  static void dragAction(Widget list, XEvent* event, String* words, Cardinal* count) noexcept;
  void drag(Widget list, const XEvent& event);

  static constexpr XtCallbackProc contentsCallback = viewkit::Forward<&LinksPane::contentsChanged>::call;

  VkGraph& graph_;
  std::string subject_;  ///< the node that the rows are about; empty: none
  Widget label_ = nullptr;
  Side parents_, children_;
  bool dragging_ = false;
};
