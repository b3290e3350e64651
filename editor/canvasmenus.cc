/// @file
/// What the graph's menus offer, and when.
#include "editor/canvasmenus.h"

#include <algorithm>
#include <utility>

#include "editor/keys.h"
#include "editor/menuitems.h"
#include "viewkit/keys.h"
#include "viewkit/vkapp.h"
#include "viewkit/vkmessagedialogs.h"
#include "viewkit/vktextdialog.h"

namespace {

constexpr const char* kValuesLabel = "Values...";
constexpr const char* kCollapseLabel = "Collapse";
constexpr const char* kExpandLabel = "Expand";
constexpr const char* kParentLabel = "Go to Parent";
constexpr const char* kChildLabel = "Go to Child";
constexpr const char* kParentsLabel = "Select Parents";
constexpr const char* kChildrenLabel = "Select Children";
constexpr const char* kAboveLabel = "Select Everything Above";
constexpr const char* kBelowLabel = "Select Everything Below";
constexpr const char* kShowOnlyLabel = "Show Only These";
constexpr const char* kDeleteLinksLabel = "Delete Links";

/// Items of the menu bar that these menus offer, too.
constexpr const char* kFromBar[] = {"Link Selected", "Select All", "Arrange Again", "Expand All",
                                    "Edit Mode",     "Overview",   "Record Names",  "Highlight Neighbours"};

constexpr VkGraph::Spot kSpots[] = {VkGraph::Spot::Node, VkGraph::Spot::Arc, VkGraph::Spot::Background};

}  // namespace

CanvasMenus::CanvasMenus(VkGraph& graph, GraphGestures& gestures, const VkMenu& bar, OpenDialog openDialog)
    : graph_(graph), gestures_(gestures), bar_(bar), openDialog_(std::move(openDialog)) {
  const VkMenuDesc only[] = {
      {kAction, "These Alone", forward<&CanvasMenus::showOnly<0>>},
      {kAction, "With 1 Step Around", forward<&CanvasMenus::showOnly<1>>},
      {kAction, "With 2 Steps Around", forward<&CanvasMenus::showOnly<2>>},
      {kAction, "With 3 Steps Around", forward<&CanvasMenus::showOnly<3>>},
      kEnd,
  };
  const VkMenuDesc node[] = {
      {kAction, kValuesLabel, forward<&CanvasMenus::values>},
      kSeparator,
      {kAction, kCollapseLabel, forward<&CanvasMenus::collapse>},
      {kAction, kExpandLabel, forward<&CanvasMenus::expand>},
      kSeparator,
      {kAction, kParentLabel, forward<&CanvasMenus::goToParent>},
      {kAction, kChildLabel, forward<&CanvasMenus::goToChild>},
      kSeparator,
      {kAction, kParentsLabel, forward<&CanvasMenus::select<VkGraph::Kin::Parents>>},
      {kAction, kChildrenLabel, forward<&CanvasMenus::select<VkGraph::Kin::Children>>},
      {kAction, kAboveLabel, forward<&CanvasMenus::select<VkGraph::Kin::AllAbove>>},
      {kAction, kBelowLabel, forward<&CanvasMenus::select<VkGraph::Kin::AllBelow>>},
      kSeparator,
      {VkMenuItemType::SUBMENU, kShowOnlyLabel, nullptr, only},
      fromBar(kAction, "Show All"),
      kSeparator,
      fromBar(kAction, "Link Selected"),
      kEnd,
  };
  const VkMenuDesc arc[] = {
      {kAction, kParentLabel, forward<&CanvasMenus::goToParentEnd>},
      {kAction, kChildLabel, forward<&CanvasMenus::goToChildEnd>},
      kSeparator,
      {kAction, kDeleteLinksLabel, forward<&CanvasMenus::deleteLinks>},
      kEnd,
  };
  const VkMenuDesc background[] = {
      {kAction, "Fit", forward<&CanvasMenus::fit>},
      {kAction, "Fit Selection", forward<&CanvasMenus::fitSelected>},
      {kAction, "Zoom In", forward<&CanvasMenus::zoomIn>},
      {kAction, "Zoom Out", forward<&CanvasMenus::zoomOut>},
      {kAction, "Zoom to 100 %", forward<&CanvasMenus::zoomTo100>},
      {kAction, "Top of the Graph", forward<&CanvasMenus::showTop>},
      kSeparator,
      fromBar(kAction, "Select All"),
      fromBar(kAction, "Arrange Again"),
      fromBar(kAction, "Expand All"),
      fromBar(kAction, "Show All"),
      kSeparator,
      fromBar(kToggle, "Edit Mode"),
      fromBar(kToggle, "Overview"),
      fromBar(kToggle, "Record Names"),
      fromBar(kToggle, "Highlight Neighbours"),
      kSeparator,
      {kAction, "Keys and Gestures", forward<&CanvasMenus::showKeys>},
      {kAction, "About", forward<&CanvasMenus::about>},
      kEnd,
  };
  graph_.popupMenu(VkGraph::Spot::Node).add(node, this);
  graph_.popupMenu(VkGraph::Spot::Arc).add(arc, this);
  graph_.popupMenu(VkGraph::Spot::Background).add(background, this);
  graph_.addCallback(VkGraph::menuCallback, this, &CanvasMenus::menuAsked);
  graph_.addCallback(VkGraph::keyCallback, this, &CanvasMenus::keyPressed);
}

VkMenuDesc CanvasMenus::fromBar(VkMenuItemType type, const char* label) const {
  return {type, label, forward<&VkMenuItem::choose>, nullptr, bar_.findNamedItem(label)};
}

void CanvasMenus::menuAsked(VkGraph*, void*, void*) { showWhatIsPossible(); }

void CanvasMenus::showWhatIsPossible() {
  const Widget graph = graph_.graphWidget();
  VkNode* const current = graph_.current();
  const bool any = graph_.numNodes() > 0;
  const bool selected = !SgGraphGetSelectedNodes(graph).empty();
  const VkPopupMenu& node = graph_.popupMenu(VkGraph::Spot::Node);
  node.findNamedItem(kValuesLabel)->setActive(current);
  node.findNamedItem(kCollapseLabel)->setActive(current && graph_.canCollapse(current));
  node.findNamedItem(kExpandLabel)->setActive(current && graph_.isCollapsed(current));
  node.findNamedItem(kParentLabel)->setActive(current && current->nParents() > 0);
  node.findNamedItem(kChildLabel)->setActive(current && current->nChildren() > 0);
  for (const char* const label : {kParentsLabel, kChildrenLabel, kAboveLabel, kBelowLabel, kShowOnlyLabel})
    node.findNamedItem(label)->setActive(selected);
  const std::size_t arcs = SgGraphGetSelectedArcs(graph).size();
  VkMenuItem* const remove = graph_.popupMenu(VkGraph::Spot::Arc).findNamedItem(kDeleteLinksLabel);
  remove->setActive(arcs > 0 && gestures_.editing());
  remove->showText(arcs > 1 ? ("Delete " + std::to_string(arcs) + " Links").c_str() : "Delete Link");
  const VkPopupMenu& background = graph_.popupMenu(VkGraph::Spot::Background);
  for (const char* const label : {"Fit", "Top of the Graph"}) background.findNamedItem(label)->setActive(any);
  background.findNamedItem("Fit Selection")->setActive(selected || arcs > 0);
  for (const VkGraph::Spot spot : kSpots)
    for (const char* const label : kFromBar)
      if (auto* const item = graph_.popupMenu(spot).findNamedItem(label)) {
        const auto* const original = bar_.findNamedItem(label);
        item->setActive(original->isActive());
        if (auto* const toggle = dynamic_cast<VkMenuToggle*>(item))
          toggle->setVisualState(dynamic_cast<const VkMenuToggle&>(*original).isSet());
      }
}

void CanvasMenus::keyPressed(VkGraph*, void*, void* data) {
  const std::string key = viewkit::keyText(*static_cast<const XKeyEvent*>(data));
  if (key.empty()) return;
  bool asked = false;
  for (const GestureGroup& group : gesture_groups())
    for (const Gesture& gesture : group.gestures) {
      if (!gesture.item || group.anywhere) continue;
      const auto keys = viewkit::splitKeys(gesture.how);
      if (std::ranges::find(keys, key) == keys.end()) continue;
      if (!std::exchange(asked, true)) showWhatIsPossible();
      VkMenuItem* item = bar_.findNamedItem(gesture.item);
      for (const VkGraph::Spot spot : kSpots)
        if (!item) item = graph_.popupMenu(spot).findNamedItem(gesture.item);
      if (!item->isActive()) continue;
      item->choose();
      return;
    }
}

void CanvasMenus::values() {
  if (const VkNode* const node = graph_.current()) openDialog_(node->name());
}

void CanvasMenus::goToEnd(bool parent) {
  Widget from = nullptr, to = nullptr;
  if (SgGraphGetArcNodes(graph_.graphWidget(), graph_.menuAsked().arc, &from, &to))
    graph_.reveal(VkNode::of(parent ? from : to));
}

void CanvasMenus::showKeys() {
  auto* const dialog = theApplication->shared<VkTextDialog>("keysDialog");
  dialog->setTitle("Keys and Gestures");
  dialog->post(keys_and_gestures().c_str());
}

void CanvasMenus::about() { getTheInformationDialog()->post(theApplication->versionString()); }
