/// @file
/// What the user draws in the graph: each gesture goes to the link rules first, and only what they accept
/// changes the picture.
#include <cinttypes>
#include <cstdio>

#include "editor/graphwindow.h"
#include "editor/model/modifygraph.h"
#include "editor/model/nodenames.h"
#include "viewkit/vkmessagedialogs.h"

namespace {

/// The call data of a gesture, with the widget told not to change the picture by itself.
SgGraphCallbackStruct& gesture(XtPointer data) {
  auto& call = *static_cast<SgGraphCallbackStruct*>(data);
  call.doit = False;
  return call;
}

}  // namespace

void GraphWindow::newNode(Widget, XtPointer data) {
  gesture(data);
  std::printf("In newNodeCallback\n");
  graph_->add(graph_->make<VkNode>("newNode", "New Node"));
  graph_->displayAll();
  graph_->doLayout();
}

void GraphWindow::newArc(Widget, XtPointer data) {
  const auto& call = gesture(data);
  std::printf("In newArcCallback\n");
  VkNode* const parent = VkNode::of(call.parent);
  VkNode* const child = VkNode::of(call.child);
  if (quilAddLink(parent, child) != 1) {
    getTheWarningDialog()->postAndWait("Can't add link!");
    return;
  }
  graph_->add(parent, child);
  graph_->displayAll();
  graph_->doLayout();
  graph_->displayWithChildren(parent);
}

void GraphWindow::arcMoved(Widget graph, XtPointer data) {
  const auto& call = gesture(data);
  std::printf("In arcMovedCallback\n");
  VkNode* const old_parent = VkNode::of(call.oldParent);
  VkNode* const old_child = VkNode::of(call.oldChild);
  VkNode* const new_parent = VkNode::of(call.newParent);
  VkNode* const new_child = VkNode::of(call.newChild);
  std::printf("new Parent %s\n", new_parent->label());
  std::printf("new Child %s\n", new_child->label());
  std::printf("old Parent %s\n", old_parent->label());
  std::printf("old Child %s\n", old_child->label());
  if (quilModifyLink(old_parent, old_child, new_parent, new_child) != 1) {
    graph_->displayWithChildren(new_parent);
    graph_->doSubtreeLayout(new_parent);
    getTheWarningDialog()->postAndWait("Can't change link!");
    return;
  }
  graph_->add(new_parent, new_child);
  old_parent->removeChild(old_child);
  old_child->removeParent(old_parent);
  SgGraphRemoveArcBetweenNodes(graph, old_parent->baseWidget(), old_child->baseWidget());
  deleteDupChild(new_parent, new_child);
  graph_->displayWithChildren(new_parent);
  graph_->doSubtreeLayout(new_parent);
}

void GraphWindow::deleteLinkMenu() {
  if (!editsArcs()) return;
  const Widget graph = graph_->graphWidget();
  std::printf("Delete Link.\n");
  const auto arcs = SgGraphGetSelectedArcs(graph);
  if (arcs.empty()) {
    getTheWarningDialog()->postAndWait("No link selected!");
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
  if (quilDeleteLink(from, to) == 1)
    deleteLink(from, to);
  else
    getTheWarningDialog()->postAndWait("Can't delete link!");
}

void GraphWindow::deleteLink(VkNode* parent, VkNode* child) {
  parent->removeChild(child);
  child->removeParent(parent);
  SgGraphRemoveArcBetweenNodes(graph_->graphWidget(), parent->baseWidget(), child->baseWidget());
}

void GraphWindow::deleteDupChild(VkNode* parent, VkNode* child) {
  const Word child_kind = tagofnd(child->name());
  if (!isOnly1child(tagofnd(parent->name()), child_kind)) return;
  const long child_number = indexofnd(child->name());
  for (int i = 0; i < parent->nChildren(); ++i) {
    VkNode* const other = parent->child(i);
    if (tagofnd(other->name()) != child_kind || indexofnd(other->name()) == child_number) continue;
    deleteLink(parent, other);
    return;
  }
}

int GraphWindow::quilAddLink(const VkNode* parent, const VkNode* child) {
  return ::quilAddLink(parent->name(), child->name());
}

int GraphWindow::quilDeleteLink(const VkNode* parent, const VkNode* child) {
  return ::quilDeleteLink(parent->name(), child->name());
}

int GraphWindow::quilModifyLink(const VkNode* old_parent, const VkNode* old_child, const VkNode* new_parent,
                                const VkNode* new_child) {
  return ::quilModifyLink(old_parent->name(), old_child->name(), new_parent->name(), new_child->name());
}
