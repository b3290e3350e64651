/// @file
/// The menus of the graph's right button, and the keys that do what they offer.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "editor/gestures.h"
#include "viewkit/forward.h"
#include "viewkit/vkgraph.h"
#include "viewkit/vkmenu.h"

/// Fills the graph's menus for nodes, arcs and the background. A key that is pressed in the graph does what
/// the menu item with this key does, be it in one of them or in the menu bar.
class CanvasMenus : public VkCallbackObject {
 public:
  using OpenDialog = std::function<void(const std::string& node)>;
  /// @param graph, gestures  outlive this.
  /// @param bar        some of its items are offered by the background's menu, too; outlives this.
  /// @param openDialog opens the dialog of a node's record.
  CanvasMenus(VkGraph& graph, GraphGestures& gestures, const VkMenu& bar, OpenDialog openDialog);

  /// Lists all keys and gestures.
  void showKeys();

 private:
  void menuAsked(VkGraph* graph, void* clientData, void* asked);
  void keyPressed(VkGraph* graph, void* clientData, void* key);
  /// Greys what makes no sense now, and shows the state of the toggles.
  void showWhatIsPossible();
  VkMenuDesc fromBar(VkMenuItemType type, const char* label) const;

  void values();
  void collapse() { graph_.collapse(graph_.current()); }
  void expand() { graph_.expand(graph_.current()); }
  void goToParent() { SgGraphWalk(graph_.graphWidget(), SgWALK_UP); }
  void goToChild() { SgGraphWalk(graph_.graphWidget(), SgWALK_DOWN); }
  template <VkGraph::Kin Kin>
  void select() {
    graph_.selectKin(Kin);
  }
  template <int Steps>
  void showOnly() {
    graph_.showOnlySelected(Steps);
  }
  void goToParentEnd() { goToEnd(true); }
  void goToChildEnd() { goToEnd(false); }
  void goToEnd(bool parent);
  void deleteLinks() { gestures_.deleteSelectedLinks(); }
  void fit() { graph_.fit(); }
  void fitSelected() { graph_.fitSelected(); }
  void zoomIn() { graph_.zoomIn(); }
  void zoomOut() { graph_.zoomOut(); }
  void zoomTo100() { SgGraphSetZoom(graph_.graphWidget(), 1); }
  void showTop() { graph_.showTop(); }
  void about();

  template <auto Member>
  static constexpr XtCallbackProc forward = viewkit::Forward<Member>::call;

  VkGraph& graph_;
  GraphGestures& gestures_;
  const VkMenu& bar_;
  const OpenDialog openDialog_;
};
