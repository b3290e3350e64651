/// @file
/// The functions of Graph.h: from widgets to nodes and arcs.

#include "viewkit/sggraph/Graph.h"

#include <utility>

#include "viewkit/sggraph/GraphP.h"
#include "viewkit/sggraph/graphview.h"

using picture::ArcId;
using picture::kNone;
using picture::NodeId;
using picture::Viewport;
using sggraph::GraphView;

namespace {

/// The node's id in the view's graph; kNone when it isn't one of its nodes.
NodeId idIn(const GraphView* view, Widget node) {
  return view && sggraph::viewOfNode(node) == view ? reinterpret_cast<SgNodeObject>(node)->node.id : kNone;
}

struct NodeInView {
  GraphView* view;
  NodeId id;
  explicit operator bool() const { return id != kNone; }
};

NodeInView find(Widget node) {
  GraphView* view = sggraph::viewOfNode(node);
  return {view, idIn(view, node)};
}

struct ArcInView {
  GraphView* view;
  ArcId id;
  explicit operator bool() const { return id != kNone; }
};

ArcInView find(Widget graph, SgArc arc) {
  GraphView* view = sggraph::viewOf(graph);
  return {view, view ? view->drawing().arcOf(arc) : kNone};
}

}  // namespace

Widget SgCreateGraph(Widget parent, const char* name, ArgList args, Cardinal count) {
  return XtCreateWidget(name, sgGraphWidgetClass, parent, args, count);
}

Widget SgGraphCreateNode(Widget graph, const char* name, ArgList args, Cardinal count) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->makeNode(name, args, count) : nullptr;
}

const char* SgNodeName(Widget node) {
  const NodeInView found = find(node);
  return found ? found.view->nameOf(found.id) : "";
}

XtPointer SgNodeUserData(Widget node) {
  return sggraph::viewOfNode(node) ? reinterpret_cast<SgNodeObject>(node)->node.userData : nullptr;
}

void SgGraphSetNodeTitle(Widget node, const std::string& title) {
  if (sggraph::GraphView* view = sggraph::viewOfNode(node))
    view->setTitle(reinterpret_cast<SgNodeObject>(node)->node.id, title);
}

Widget SgNodeGraph(Widget node) { return sggraph::viewOfNode(node) ? XtParent(XtParent(node)) : nullptr; }

void SgGraphRemoveNode(Widget node) {
  if (GraphView* view = sggraph::viewOfNode(node)) {
    view->nodeGone(reinterpret_cast<SgNodeObject>(node));
    XtDestroyWidget(node);
  }
}

void SgGraphClear(Widget graph) { SgGraphSetAside(graph); }

void sggraph::DeleteContents::operator()(GraphContents* contents) const noexcept {
  std::default_delete<GraphContents>()(contents);
}

SgKeptGraph SgGraphSetAside(Widget graph) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->setAside() : nullptr;
}

void SgGraphTakeBack(Widget graph, SgKeptGraph kept) {
  if (GraphView* view = sggraph::viewOf(graph); view && kept) view->takeBack(std::move(kept));
}

// Arcs

SgArc SgGraphAddArc(Widget graph, Widget from, Widget to, const char* label) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId parent = idIn(view, from), child = idIn(view, to);
  if (parent == kNone || child == kNone) return 0;
  return view->drawing().stableArcId(view->addArc(parent, child, label ? label : ""));
}

bool SgGraphGetArcNodes(Widget graph, SgArc arc, Widget* from, Widget* to) {
  const ArcInView found = find(graph, arc);
  if (!found) return false;
  *from = found.view->widgetOf(found.view->drawing().from(found.id));
  *to = found.view->widgetOf(found.view->drawing().to(found.id));
  return true;
}

SgArc SgGraphFindArc(Widget graph, Widget from, Widget to) {
  const GraphView* view = sggraph::viewOf(graph);
  const NodeId parent = idIn(view, from), child = idIn(view, to);
  if (parent == kNone || child == kNone) return 0;
  return view->drawing().stableArcId(view->drawing().findArc(parent, child));
}

bool SgGraphRemoveArcBetweenNodes(Widget graph, Widget from, Widget to) {
  const ArcInView arc = find(graph, SgGraphFindArc(graph, from, to));
  if (arc) arc.view->removeArc(arc.id);
  return static_cast<bool>(arc);
}

void SgGraphSetArcBends(Widget graph, SgArc arc, std::span<const SgPoint> bends) {
  const ArcInView found = find(graph, arc);
  if (found) found.view->setBends(found.id, bends);
}

void SgGraphSetArcStyle(Widget graph, SgArc arc, SgArcStyle style) {
  const ArcInView found = find(graph, arc);
  if (found) found.view->setArcStyle(found.id, style);
}

SgArcStyle SgGraphArcStyle(Widget graph, SgArc arc) {
  const ArcInView found = find(graph, arc);
  return found ? found.view->drawing().arcStyle(found.id) : SgARC_WHOLE;
}

std::vector<SgPoint> SgGraphArcBends(Widget graph, SgArc arc) {
  const ArcInView found = find(graph, arc);
  if (!found) return {};
  const auto bends = found.view->drawing().bends(found.id);
  return {bends.begin(), bends.end()};
}

std::vector<SgPoint> SgGraphArcPath(Widget graph, SgArc arc) {
  const ArcInView found = find(graph, arc);
  if (!found) return {};
  const auto path = found.view->drawing().path(found.id);
  return {path.begin(), path.end()};
}

std::vector<SgArc> SgGraphArcsBetween(Widget graph, Widget from, Widget to) {
  std::vector<SgArc> arcs;
  const GraphView* view = sggraph::viewOf(graph);
  const NodeId parent = idIn(view, from), child = idIn(view, to);
  if (parent == kNone || child == kNone) return arcs;
  for (const ArcId arc : view->drawing().arcsBetween(parent, child))
    arcs.push_back(view->drawing().stableArcId(arc));
  return arcs;
}

std::vector<SgArc> SgGraphArcs(Widget graph) {
  std::vector<SgArc> arcs;
  if (const GraphView* view = sggraph::viewOf(graph))
    view->drawing().visitAllArcs([&](ArcId arc) { arcs.push_back(view->drawing().stableArcId(arc)); });
  return arcs;
}

// A drag from elsewhere

bool SgGraphBeginArc(Widget graph, Widget node) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId id = idIn(view, node);
  return id != kNone && view->beginArc(id);
}

void SgGraphContinueArc(Widget graph, const XEvent& event) {
  if (GraphView* view = sggraph::viewOf(graph)) view->continueArc(event);
}

// Selection

Widget SgGraphCurrentNode(Widget graph) {
  const GraphView* view = sggraph::viewOf(graph);
  return view ? view->widgetOf(view->currentNode()) : nullptr;
}

void SgGraphWalk(Widget graph, SgWalk direction) {
  if (GraphView* view = sggraph::viewOf(graph)) view->walk(direction);
}

std::vector<SgArc> SgGraphGetSelectedArcs(Widget graph) {
  std::vector<SgArc> arcs;
  if (const GraphView* view = sggraph::viewOf(graph))
    for (const auto& [order, arc] : view->drawing().selectedArcs())
      arcs.push_back(view->drawing().stableArcId(arc));
  return arcs;
}

std::vector<Widget> SgGraphGetSelectedNodes(Widget graph) {
  std::vector<Widget> nodes;
  if (const GraphView* view = sggraph::viewOf(graph))
    for (const auto& [order, node] : view->drawing().selectedNodes()) nodes.push_back(view->widgetOf(node));
  return nodes;
}

void SgGraphSelectNode(Widget graph, Widget node) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId id = idIn(view, node);
  if (id == kNone) return;
  view->makeCurrent(id);
  view->selectNode(id);
}

void SgGraphSelectArc(Widget graph, SgArc arc) {
  const ArcInView found = find(graph, arc);
  if (found) found.view->selectArc(found.id);
}

void SgGraphClearSelection(Widget graph) {
  if (GraphView* view = sggraph::viewOf(graph)) view->deselectAll();
}

// Places

void SgGraphSetNodePosition(Widget node, SgPoint position) {
  const NodeInView found = find(node);
  if (found) found.view->moveNode(found.id, position);
}

SgRectangle SgGraphNodeBounds(Widget node) {
  const NodeInView found = find(node);
  return found ? found.view->drawing().box(found.id) : SgRectangle{};
}

// Gliding

void SgGraphBeginMove(Widget graph) {
  if (GraphView* view = sggraph::viewOf(graph)) view->beginMove();
}

void SgGraphEndMove(Widget graph) {
  if (GraphView* view = sggraph::viewOf(graph)) view->endMove();
}

// Folding

void SgGraphFold(Widget graph, std::span<const SgFoldedNode> folded) {
  GraphView* view = sggraph::viewOf(graph);
  if (!view) return;
  std::vector<sggraph::FoldedNode> ids;
  ids.reserve(folded.size());
  for (const auto& [node, into] : folded)
    if (const NodeId id = idIn(view, node), face = idIn(view, into); id != kNone && (!into || face != kNone))
      ids.push_back({id, face});
  view->fold(ids);
}

Widget SgGraphFoldedInto(Widget node) {
  const NodeInView found = find(node);
  if (!found) return nullptr;
  const NodeId face = found.view->drawing().face(found.id);
  return face == found.id ? nullptr : found.view->widgetOf(face);
}

bool SgGraphNodeIsSeen(Widget node) {
  const NodeInView found = find(node);
  return found && XtIsManaged(node) && found.view->drawing().isSeen(found.id);
}

bool SgGraphFoldHandle(Widget node, SgPoint* handle) {
  const NodeInView found = find(node);
  const auto place = found ? found.view->foldHandleOf(found.id) : std::nullopt;
  if (place) *handle = place->middle();
  return place.has_value();
}

// The view

double SgGraphZoom(Widget graph) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->viewport().zoom() : 1;
}

void SgGraphSetZoom(Widget graph, double zoom) {
  if (GraphView* view = sggraph::viewOf(graph)) view->zoom(zoom);
}

void SgGraphZoomToFit(Widget graph) {
  if (GraphView* view = sggraph::viewOf(graph)) view->changeViewport([](Viewport& port) { port.fit(); });
}

void SgGraphZoomToBox(Widget graph, const SgRectangle& plane) {
  if (GraphView* view = sggraph::viewOf(graph))
    view->changeViewport([&](Viewport& port) { port.fit(plane); });
}

SgRectangle SgGraphViewport(Widget graph) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? SgRectangle{0, 0, view->viewport().width(), view->viewport().height()} : SgRectangle{};
}

SgRectangle SgGraphExtents(Widget graph) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->extents() : SgRectangle{};
}

void SgGraphScrollTo(Widget graph, SgPoint plane, SgPoint window) {
  if (GraphView* view = sggraph::viewOf(graph))
    view->changeViewport([=](Viewport& port) { port.scrollTo(plane, window); });
}

void SgGraphShowTop(Widget graph, Widget node) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId id = idIn(view, node);
  if (id == kNone) return;
  view->changeViewport([&](Viewport& port) { port.showTop(view->drawing().box(id).middle().x); });
}

void SgGraphRevealNode(Widget graph, Widget node) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId id = idIn(view, node);
  if (id != kNone) view->reveal(id);
}

SgPoint SgGraphToWindow(Widget graph, SgPoint plane) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->viewport().toWindow(plane) : plane;
}

SgPoint SgGraphToPlane(Widget graph, SgPoint window) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->viewport().toPlane(window) : window;
}

SgRectangle SgGraphNodeRectangle(Widget node) {
  const NodeInView found = find(node);
  return found ? found.view->viewport().toWindow(found.view->drawing().box(found.id)) : SgRectangle{};
}

bool SgGraphArcPoint(Widget graph, SgArc arc, SgPoint* middle, SgPoint* parentHandle, SgPoint* childHandle) {
  const ArcInView found = find(graph, arc);
  if (!found) return false;
  *middle = found.view->pickPoint(found.id);
  const auto places =
      picture::handlePlaces(found.view->drawing().path(found.id), found.view->viewport().frame());
  if (parentHandle) *parentHandle = places.parent;
  if (childHandle) *childHandle = places.child;
  return true;
}

Widget SgGraphNodeAt(Widget graph, SgPoint window) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->widgetOf(view->nodeAt(window)) : nullptr;
}

std::string SgGraphExport(Widget graph, const std::string& path, picture::FileFormat format, bool viewOnly,
                          const std::string& title) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->exportTo(path, format, viewOnly, title) : path + ": there is no picture";
}

void SgGraphUpdate(Widget graph) {
  if (GraphView* view = sggraph::viewOf(graph)) view->update();
}

Pixel SgGraphTint(Widget graph, const char* name) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->tint(name) : 0;
}
