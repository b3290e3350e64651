/// @file
/// From a gesture to the link rules, and from their answer to the picture.
#include "editor/gestures.h"

#include <cinttypes>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "editor/editstep.h"
#include "editor/model/currentscene.h"
#include "editor/model/linkreasons.h"
#include "editor/model/modifygraph.h"
#include "editor/model/nodenames.h"
#include "editor/model/tracedlinks.h"
#include "viewkit/vksimplewindow.h"

namespace {

std::string from_to(const VkNode* from, const VkNode* to) {
  return std::string(from->name()) + " to " + to->name();
}

/// Whether more arcs are drawn between two nodes than the parent's record holds references, as after a child
/// was linked a second time: then one of the arcs stands for nothing.
bool is_surplus(const VkNode* parent, const VkNode* child) {
  const auto from = find_node_id(parent->name()), to = find_node_id(child->name());
  if (!from || !to || !can_be_linked(from->kind, to->kind)) return false;
  std::size_t drawn = 0;
  for (int i = 0; i < parent->nChildren(); ++i) drawn += parent->child(i) == child ? 1 : 0;
  return drawn > references_held(*qis, *from, *to);
}

/// The arc that two nodes are to be linked by: where only the kind of the second can refer to that of the
/// first, from the second one to the first.
GraphChange::Ends either_way(VkNode* one, VkNode* other) {
  const Word kind = tagofnd(one->name()), other_kind = tagofnd(other->name());
  const bool back = !can_be_linked(kind, other_kind) && can_be_linked(other_kind, kind);
  return back ? GraphChange::Ends{other, one} : GraphChange::Ends{one, other};
}

/// Parent and child of an arc that is being drawn.
GraphChange::Ends drawn_ends(const SgGraphCallbackStruct& call) {
  VkNode *const parent = VkNode::of(call.parent), *const child = VkNode::of(call.child);
  return call.eitherWay ? either_way(parent, child) : GraphChange::Ends{parent, child};
}

/// Why the arc of a callback can't be as it says; empty: it can.
std::string why_not(const SgGraphCallbackStruct& call) {
  if (call.parent && call.child) {
    const auto [parent, child] = drawn_ends(call);
    return why_not_linked(*qis, parent->name(), child->name());
  }
  if (!call.newParent || !call.newChild) return {};
  const VkNode *const old_parent = VkNode::of(call.oldParent), *const old_child = VkNode::of(call.oldChild);
  const std::string parent = VkNode::of(call.newParent)->name(), child = VkNode::of(call.newChild)->name();
  if (is_surplus(old_parent, old_child) && tagofnd(child) == tagofnd(old_child->name()))
    return why_not_linked(*qis, parent, child);
  return why_not_moved(*qis, old_parent->name(), old_child->name(), parent, child);
}

/// Says on standard error why one of several links is refused, and notes it for the status line.
void addReason(std::string& reasons, const std::string& reason) {
  std::fprintf(stderr, "%s\n", reason.c_str());
  reasons += (reasons.empty() ? "" : VkSimpleWindow::kStatusSeparator) + reason;
}

}  // namespace

void GraphGestures::mayLink(SgGraphCallbackStruct& call) {
  if (!why_not(call).empty()) call.doit = False;
}

std::string GraphGestures::whatWouldBe(const SgGraphCallbackStruct& call) {
  if (std::string reason = why_not(call); !reason.empty()) return reason;
  if (call.parent && call.child) {
    const auto [parent, child] = drawn_ends(call);
    return "link " + from_to(parent, child);
  }
  if (call.newParent && call.newChild)
    return "move link: " + from_to(VkNode::of(call.newParent), VkNode::of(call.newChild));
  return {};
}

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
  EditStep step(graph_, history_);
  graph_.want(step.picture().addNode(std::make_unique<VkNode>("newNode", "New Node")), call.position);
  graph_.displayAll();
  graph_.doLayout();
  step.done("new node");
}

void GraphGestures::refuse(EditStep& step, const char* text, const std::string& reason) {
  step.refused();
  std::fprintf(stderr, "%s\n", reason.c_str());
  prompts_.tell(reason);
  prompts_.warn(text);
}

void GraphGestures::newArc(SgGraphCallbackStruct& call) {
  call.doit = False;
  std::printf("In newArcCallback\n");
  const auto [parent, child] = drawn_ends(call);
  EditStep step(graph_, history_);
  if (quilAddLink(*qis, parent->name(), child->name()) != 1) {
    refuse(step, "Can't add link!", why_not(call));
    return;
  }
  step.picture().addArc(parent, child);
  graph_.displayAll();
  graph_.doLayout();
  graph_.displayWithChildren(parent);
  step.done("link " + from_to(parent, child));
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
  EditStep step(graph_, history_);
  const auto move = is_surplus(old_parent, old_child) ? quilModifySurplusLink : quilModifyLink;
  if (move(*qis, old_parent->name(), old_child->name(), new_parent->name(), new_child->name()) != 1) {
    graph_.displayWithChildren(new_parent);
    graph_.doSubtreeLayout(new_parent);
    refuse(step, "Can't change link!", why_not(call));
    return;
  }
  step.picture().addArc(new_parent, new_child);
  step.picture().removeArc(old_parent, old_child);
  if (VkNode* const other = displaced(new_parent, new_child)) step.picture().removeArc(new_parent, other);
  graph_.displayWithChildren(new_parent);
  graph_.doSubtreeLayout(new_parent);
  step.done("move link " + from_to(old_parent, old_child));
}

void GraphGestures::linkAll(const std::vector<Ends>& links,
                            const std::function<std::string(std::size_t)>& label) {
  EditStep step(graph_, history_);
  std::string reasons;
  std::vector<Ends> linked;
  for (const auto& [parent, child] : links) {
    const std::string reason = why_not_linked(*qis, parent->name(), child->name());
    if (quilAddLink(*qis, parent->name(), child->name()) == 1) {
      step.picture().addArc(parent, child);
      linked.emplace_back(parent, child);
    } else {
      addReason(reasons, reason);
    }
  }
  prompts_.tell(reasons);
  if (linked.empty()) {
    step.refused();
    prompts_.warn("Can't add link!");
    return;
  }
  graph_.displayAll();
  graph_.doLayout();
  for (const auto& [parent, child] : linked) graph_.displayWithChildren(parent);
  step.done(links.size() == 1 ? "link " + from_to(linked[0].first, linked[0].second) : label(linked.size()));
}

void GraphGestures::linkSelected() {
  if (!editing()) return;
  const std::vector<Widget> selected = SgGraphGetSelectedNodes(graph_.graphWidget());
  if (selected.size() < 2) {
    prompts_.tell("Select a node, and with Shift those that it is to be linked to");
    return;
  }
  VkNode* const parent = VkNode::of(selected.front());
  std::vector<Ends> links;
  for (const Widget other : std::span(selected).subspan(1)) links.emplace_back(parent, VkNode::of(other));
  linkAll(links, [&](std::size_t count) {
    return "link " + std::string(parent->name()) + " to " + std::to_string(count) + " nodes";
  });
}

void GraphGestures::linkToFound(const std::function<void(const std::string&)>& say) {
  if (!editing()) return;
  std::vector<std::string> names;  // nodes may go before one is found
  for (const Widget node : SgGraphGetSelectedNodes(graph_.graphWidget()))
    names.emplace_back(SgNodeName(node));
  if (names.empty()) {
    prompts_.tell("Select the nodes that are to be linked to another one");
    return;
  }
  const auto links = [this, names](VkNode* found) {
    std::vector<Ends> ends;
    for (const std::string& name : names)
      if (VkNode* const node = graph_.find(name)) ends.push_back(either_way(node, found));
    return ends;
  };
  const std::string whom = names.size() == 1 ? names[0] : std::to_string(names.size()) + " nodes";
  say("link " + whom + " to what is found: Return links, Escape gives up");
  graph_.choose({.label = "Link to:",
                 .offered =
                     [=](VkNode* found) {
                       const std::vector<Ends> ends = found ? links(found) : std::vector<Ends>();
                       if (ends.empty()) {
                         say("");
                         return;
                       }
                       const auto [parent, child] = ends.front();
                       const std::string reason = why_not_linked(*qis, parent->name(), child->name());
                       say(reason.empty() ? "Return: link " + from_to(parent, child) : reason);
                     },
                 .chosen =
                     [=, this](VkNode* found) {
                       if (!editing()) return;
                       linkAll(links(found), [&](std::size_t count) {
                         return "link " + std::to_string(count) + " nodes to " + found->name();
                       });
                     }});
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
  if (graph_.uncover({from, to})) {
    prompts_.tell(from_to(from, to) + " was folded: Delete again deletes it");
    return;
  }
  EditStep step(graph_, history_);
  if (!deleteLink(step, from, to)) {
    refuse(step, "Can't delete link!", why_not_deleted(from->name(), to->name()));
    return;
  }
  step.done("delete link " + from_to(from, to));
}

bool GraphGestures::deleteLink(EditStep& step, VkNode* from, VkNode* to) {
  if (!is_surplus(from, to) && quilDeleteLink(*qis, from->name(), to->name()) != 1) return false;
  step.picture().removeArc(from, to);
  return true;
}

void GraphGestures::deleteSelectedLinks() {
  if (!editing()) return;
  std::printf("Delete Links.\n");
  std::vector<std::pair<VkNode*, VkNode*>> links;
  bool uncovered = false;
  for (const SgArc arc : SgGraphGetSelectedArcs(graph_.graphWidget())) {
    Widget from = nullptr, to = nullptr;
    SgGraphGetArcNodes(graph_.graphWidget(), arc, &from, &to);
    links.emplace_back(VkNode::of(from), VkNode::of(to));
  }
  for (const auto& [from, to] : links) uncovered = graph_.uncover({from, to}) || uncovered;
  if (uncovered) {
    prompts_.tell("Some were folded: Delete Links again deletes them");
    return;
  }
  EditStep step(graph_, history_);
  std::string reasons;
  std::size_t deleted = 0;
  for (const auto& [from, to] : links) {
    if (deleteLink(step, from, to))
      ++deleted;
    else
      addReason(reasons, why_not_deleted(from->name(), to->name()));
  }
  prompts_.tell(reasons);
  if (deleted == 0) {
    step.refused();
    prompts_.warn(links.empty() ? "No link selected!" : "Can't delete link!");
    return;
  }
  step.done(links.size() == 1 ? "delete link " + from_to(links.front().first, links.front().second)
                              : "delete " + std::to_string(deleted) + " links");
}

void GraphGestures::arrange(VkGraph::Arrangement arrangement) {
  if (graph_.numNodes() == 0 || graph_.arrangement() == arrangement) {
    graph_.setArrangement(arrangement);
    return;
  }
  EditStep step(graph_, history_);
  graph_.setArrangement(arrangement);
  step.done(arrangement == VkGraph::Arrangement::Compact ? "compact picture" : "layered picture");
}

void GraphGestures::arrangeAgain() {
  if (graph_.numNodes() == 0) return;
  EditStep step(graph_, history_);
  graph_.arrangeAgain();
  step.done("arrange again");
}

void GraphGestures::nodesMoved(const VkGraph::Moved& moved) {
  const auto& nodes = moved.after.nodes;
  history_.add({.label = nodes.size() == 1 ? std::string("move ") + nodes.front().node->name()
                                           : "move " + std::to_string(nodes.size()) + " nodes",
                .picture = std::make_unique<GraphChange>(graph_, moved)});
}

VkNode* GraphGestures::displaced(const VkNode* parent, const VkNode* child) {
  const Word child_kind = tagofnd(child->name());
  if (!isOnly1child(tagofnd(parent->name()), child_kind)) return nullptr;
  const long child_number = indexofnd(child->name());
  for (int i = 0; i < parent->nChildren(); ++i) {
    VkNode* const other = parent->child(i);
    if (tagofnd(other->name()) == child_kind && indexofnd(other->name()) != child_number) return other;
  }
  return nullptr;
}
