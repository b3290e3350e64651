/// @file
/// From a gesture to the link rules, and from their answer to the picture.
#include "editor/gestures.h"

#include <cinttypes>
#include <cstdio>
#include <string>

#include "editor/model/currentscene.h"
#include "editor/model/linkreasons.h"
#include "editor/model/modifygraph.h"
#include "editor/model/nodenames.h"
#include "editor/model/tracedlinks.h"

namespace {

std::string from_to(const VkNode* from, const VkNode* to) {
  return std::string(from->name()) + " to " + to->name();
}

}  // namespace

bool GraphGestures::editing() const {
  Boolean editable = False;
  XtVaGetValues(graph_.graphWidget(), SgNeditableArcs, &editable, nullptr);
  return editable;
}

void GraphGestures::setEditing(bool on) {
  const Boolean editable = on ? True : False;
  XtVaSetValues(graph_.graphWidget(), SgNeditableArcs, editable, SgNokToAdd, editable, nullptr);
}

const char* GraphGestures::hint() const {
  return editing()
             ? "Ctrl+drag node to node: new arc  |  drag end of selected arc: move it  |  "
               "double-click background: new node  |  Delete: delete link"
             : "Click: select, Shift adds  |  drag: move a node, pan  |  wheel: scroll, Ctrl+wheel: zoom  |  "
               "double-click, Return: open  |  Ctrl+E: edit mode";
}

void GraphGestures::newNode(SgGraphCallbackStruct& call) {
  call.doit = False;
  std::printf("In newNodeCallback\n");
  graph_.add(graph_.make<VkNode>("newNode", "New Node"));
  history_.add({.label = "new node"});
  graph_.displayAll();
  graph_.doLayout();
}

void GraphGestures::newArc(SgGraphCallbackStruct& call) {
  call.doit = False;
  std::printf("In newArcCallback\n");
  VkNode* const parent = VkNode::of(call.parent);
  VkNode* const child = VkNode::of(call.child);
  if (quilAddLink(*qis, parent->name(), child->name()) != 1) {
    refuse("Can't add link!", why_not_linked(*qis, parent->name(), child->name()));
    return;
  }
  history_.add({.label = "link " + from_to(parent, child), .changes_scene = true});
  graph_.add(parent, child);
  graph_.displayAll();
  graph_.doLayout();
  graph_.displayWithChildren(parent);
}

void GraphGestures::arcMoved(SgGraphCallbackStruct& call) {
  call.doit = False;
  std::printf("In arcMovedCallback\n");
  VkNode* const old_parent = VkNode::of(call.oldParent);
  VkNode* const old_child = VkNode::of(call.oldChild);
  VkNode* const new_parent = VkNode::of(call.newParent);
  VkNode* const new_child = VkNode::of(call.newChild);
  std::printf("new Parent %s\n", new_parent->label());
  std::printf("new Child %s\n", new_child->label());
  std::printf("old Parent %s\n", old_parent->label());
  std::printf("old Child %s\n", old_child->label());
  if (quilModifyLink(*qis, old_parent->name(), old_child->name(), new_parent->name(), new_child->name()) !=
      1) {
    graph_.displayWithChildren(new_parent);
    graph_.doSubtreeLayout(new_parent);
    refuse("Can't change link!",
           why_not_moved(*qis, old_child->name(), new_parent->name(), new_child->name()));
    return;
  }
  history_.add({.label = "move link " + from_to(old_parent, old_child), .changes_scene = true});
  graph_.add(new_parent, new_child);
  graph_.remove(old_parent, old_child);
  removeDisplaced(new_parent, new_child);
  graph_.displayWithChildren(new_parent);
  graph_.doSubtreeLayout(new_parent);
}

void GraphGestures::deleteSelectedLink() {
  if (!editing()) return;
  const Widget graph = graph_.graphWidget();
  std::printf("Delete Link.\n");
  const auto arcs = SgGraphGetSelectedArcs(graph);
  if (arcs.empty()) {
    prompts_.warn("No link selected!");
    return;
  }
  Widget from_widget = nullptr;
  Widget to_widget = nullptr;
  SgGraphGetArcNodes(graph, arcs.front(), &from_widget, &to_widget);
  VkNode* const from = VkNode::of(from_widget);
  VkNode* const to = VkNode::of(to_widget);
  std::printf("arc %" PRIu64 ", from widget %p, to widget %p\n", arcs.front(),
              static_cast<void*>(from_widget), static_cast<void*>(to_widget));
  std::printf("from %s\n", from->name());
  std::printf("to   %s\n", to->name());
  if (quilDeleteLink(*qis, from->name(), to->name()) != 1) {
    refuse("Can't delete link!", std::string(from->name()) + " holds no such reference to " + to->name());
    return;
  }
  history_.add({.label = "delete link " + from_to(from, to), .changes_scene = true});
  graph_.remove(from, to);
}

void GraphGestures::refuse(const char* text, const std::string& reason) {
  std::fprintf(stderr, "%s\n", reason.c_str());
  prompts_.tell(reason);
  prompts_.warn(text);
}

void GraphGestures::removeDisplaced(VkNode* parent, const VkNode* child) {
  const Word child_kind = tagofnd(child->name());
  if (!isOnly1child(tagofnd(parent->name()), child_kind)) return;
  const long child_number = indexofnd(child->name());
  for (int i = 0; i < parent->nChildren(); ++i) {
    VkNode* const other = parent->child(i);
    if (tagofnd(other->name()) != child_kind || indexofnd(other->name()) == child_number) continue;
    graph_.remove(parent, other);
    return;
  }
}
