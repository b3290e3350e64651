/// @file
/// The functions of Graph.h: from widgets to nodes and arcs.

#include "viewkit/sggraph/Graph.h"
#include "viewkit/sggraph/GraphP.h"
#include "viewkit/sggraph/graphview.h"

using sggraph::ArcId;
using sggraph::GraphView;
using sggraph::kNone;
using sggraph::NodeId;

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
  return {view, view ? view->drawing.arcOf(arc) : kNone};
}

}  // namespace

Widget SgCreateGraph(Widget parent, const char* name, ArgList args, Cardinal count) {
  return XtCreateWidget(name, sgGraphWidgetClass, parent, args, count);
}

Widget SgGraphCreateNode(Widget graph, const char* name, ArgList args, Cardinal count) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->makeNode(name, args, count) : nullptr;
}

Widget SgNodeGraph(Widget node) { return sggraph::viewOfNode(node) ? XtParent(XtParent(node)) : nullptr; }

void SgGraphRemoveNode(Widget node) {
  if (GraphView* view = sggraph::viewOfNode(node)) {
    view->nodeGone(reinterpret_cast<SgNodeObject>(node));
    XtDestroyWidget(node);
  }
}

void SgGraphClear(Widget graph) {
  if (GraphView* view = sggraph::viewOf(graph)) view->clear();
}

// Arcs

SgArc SgGraphAddArc(Widget graph, Widget from, Widget to, const char* label) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId parent = idIn(view, from), child = idIn(view, to);
  if (parent == kNone || child == kNone) return 0;
  return view->drawing.stableArcId(view->addArc(parent, child, label ? label : ""));
}

bool SgGraphGetArcNodes(Widget graph, SgArc arc, Widget* from, Widget* to) {
  const ArcInView found = find(graph, arc);
  if (!found) return false;
  *from = found.view->widgetOf(found.view->drawing.from(found.id));
  *to = found.view->widgetOf(found.view->drawing.to(found.id));
  return true;
}

bool SgGraphRemoveArcBetweenNodes(Widget graph, Widget from, Widget to) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId parent = idIn(view, from), child = idIn(view, to);
  if (parent == kNone || child == kNone) return false;
  const ArcId arc = view->drawing.findArc(parent, child);
  if (arc != kNone) view->removeArc(arc);
  return arc != kNone;
}

bool SgGraphRemoveArc(Widget graph, SgArc arc) {
  const ArcInView found = find(graph, arc);
  if (found) found.view->removeArc(found.id);
  return static_cast<bool>(found);
}

std::size_t SgGraphCountArcs(Widget graph, Widget from, Widget to) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId parent = idIn(view, from), child = idIn(view, to);
  return parent == kNone || child == kNone ? 0 : view->drawing.countArcs(parent, child);
}

std::size_t SgGraphArcCount(Widget graph) {
  const GraphView* view = sggraph::viewOf(graph);
  return view ? view->drawing.arcCount() : 0;
}

void SgGraphSetArcBends(Widget graph, SgArc arc, std::span<const SgPoint> bends) {
  const ArcInView found = find(graph, arc);
  if (!found) return;
  found.view->drawing.setBends(found.id, bends);
  found.view->changed();
}

std::vector<SgPoint> SgGraphArcPath(Widget graph, SgArc arc) {
  const ArcInView found = find(graph, arc);
  if (!found) return {};
  const auto path = found.view->drawing.path(found.id);
  return {path.begin(), path.end()};
}

std::vector<SgArc> SgGraphArcs(Widget graph) {
  std::vector<SgArc> arcs;
  const GraphView* view = sggraph::viewOf(graph);
  if (!view) return arcs;
  arcs.reserve(view->drawing.arcCount());
  for (ArcId arc = 0; arc < view->drawing.arcSlots(); ++arc)
    if (view->drawing.hasArc(arc)) arcs.push_back(view->drawing.stableArcId(arc));
  return arcs;
}

// Selection

std::vector<SgArc> SgGraphGetSelectedArcs(Widget graph) {
  std::vector<SgArc> arcs;
  if (const GraphView* view = sggraph::viewOf(graph))
    for (const auto& [order, arc] : view->drawing.selectedArcs())
      arcs.push_back(view->drawing.stableArcId(arc));
  return arcs;
}

std::vector<Widget> SgGraphGetSelectedNodes(Widget graph) {
  std::vector<Widget> nodes;
  if (const GraphView* view = sggraph::viewOf(graph))
    for (const auto& [order, node] : view->drawing.selectedNodes()) nodes.push_back(view->widgetOf(node));
  return nodes;
}

void SgGraphSelectNode(Widget graph, Widget node) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId id = idIn(view, node);
  if (id == kNone) return;
  view->makeCurrent(id);
  if (view->drawing.nodeSelected(id)) return;
  view->drawing.selectNode(id);
  view->selectionChanged();
}

void SgGraphSelectArc(Widget graph, SgArc arc) {
  const ArcInView found = find(graph, arc);
  if (!found || found.view->drawing.arcSelected(found.id)) return;
  found.view->drawing.selectArc(found.id);
  found.view->selectionChanged();
}

void SgGraphClearSelection(Widget graph) {
  GraphView* view = sggraph::viewOf(graph);
  if (!view || (view->drawing.selectedNodes().empty() && view->drawing.selectedArcs().empty())) return;
  view->drawing.deselectAll();
  view->selectionChanged();
}

// Places

void SgGraphSetNodePosition(Widget node, SgPoint position) {
  const NodeInView found = find(node);
  if (!found) return;
  found.view->drawing.moveNode(found.id, position);
  found.view->changed();
}

SgRectangle SgGraphNodeBounds(Widget node) {
  const NodeInView found = find(node);
  return found ? found.view->drawing.box(found.id) : SgRectangle{};
}

// The view

double SgGraphZoom(Widget graph) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->view().zoom() : 1;
}

void SgGraphSetZoom(Widget graph, double zoom) {
  const SgRectangle viewport = SgGraphViewport(graph);
  SgGraphZoomAround(graph, zoom, viewport.middle());
}

void SgGraphZoomAround(Widget graph, double zoom, SgPoint window) {
  GraphView* view = sggraph::viewOf(graph);
  if (!view) return;
  view->view().zoomAround(zoom, window);
  view->changed();
}

void SgGraphZoomToFit(Widget graph) {
  GraphView* view = sggraph::viewOf(graph);
  if (!view) return;
  view->view().fit();
  view->changed();
}

SgRectangle SgGraphViewport(Widget graph) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? SgRectangle{0, 0, view->view().width(), view->view().height()} : SgRectangle{};
}

SgRectangle SgGraphExtents(Widget graph) {
  GraphView* view = sggraph::viewOf(graph);
  if (!view) return {};
  view->view();
  return view->drawing.extents();
}

void SgGraphScrollTo(Widget graph, SgPoint plane, SgPoint window) {
  GraphView* view = sggraph::viewOf(graph);
  if (!view) return;
  view->view().scrollTo(plane, window);
  view->changed();
}

void SgGraphShowTop(Widget graph, Widget node) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId id = idIn(view, node);
  if (id == kNone) return;
  view->view().showTop(view->drawing.box(id).middle().x);
  view->changed();
}

void SgGraphRevealNode(Widget graph, Widget node) {
  GraphView* view = sggraph::viewOf(graph);
  const NodeId id = idIn(view, node);
  if (id == kNone) return;
  view->view().reveal(view->drawing.box(id));
  view->changed();
}

SgPoint SgGraphToWindow(Widget graph, SgPoint plane) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->view().toWindow(plane) : plane;
}

SgPoint SgGraphToPlane(Widget graph, SgPoint window) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->view().toPlane(window) : window;
}

SgRectangle SgGraphNodeRectangle(Widget node) {
  const NodeInView found = find(node);
  return found ? found.view->view().toWindow(found.view->drawing.box(found.id)) : SgRectangle{};
}

bool SgGraphArcPoint(Widget graph, SgArc arc, SgPoint* middle, SgPoint* parentHandle, SgPoint* childHandle) {
  const ArcInView found = find(graph, arc);
  if (!found) return false;
  *middle = found.view->pickPoint(found.id);
  const auto places = sggraph::handlePlaces(found.view->drawing.path(found.id), found.view->view());
  if (parentHandle) *parentHandle = places.parent;
  if (childHandle) *childHandle = places.child;
  return true;
}

Widget SgGraphNodeAt(Widget graph, SgPoint window) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->widgetOf(view->nodeAt(window)) : nullptr;
}

SgArc SgGraphArcAt(Widget graph, SgPoint window) {
  GraphView* view = sggraph::viewOf(graph);
  if (!view || view->nodeAt(window) != kNone) return 0;
  return view->drawing.stableArcId(view->arcAt(window));
}

void SgGraphUpdate(Widget graph) {
  if (GraphView* view = sggraph::viewOf(graph)) view->update();
}

Pixel SgGraphTint(Widget graph, const char* name) {
  GraphView* view = sggraph::viewOf(graph);
  return view ? view->tint(name) : 0;
}

std::string SgNodeLabel(Widget node) {
  const NodeInView found = find(node);
  return found ? found.view->look(found.id).label : std::string();
}
