/// @file
/// Instance and class records of the graph widget, its nodes, and the shelf that the nodes are kept on.
#pragma once

// In this order: each needs the one before.
#include <X11/IntrinsicP.h>

#include <X11/CompositeP.h>

#include <X11/RectObjP.h>

#include <Xm/DrawingAP.h>
#include <Xm/XmP.h>

#include "picture/drawing.h"
#include "viewkit/sggraph/Graph.h"

namespace sggraph {
using namespace picture;  // what the widget shows
class GraphView;
}  // namespace sggraph

struct SgGraphClassPart {
  XtPointer extension;
};

struct SgGraphPart {
  Boolean editableArcs;
  Boolean okToAdd;
  Boolean showOverview;
  Boolean glide;
  Boolean neighbourhood;
  Dimension arcWidth;  // pixels
  int arcDirection;    // SgARC_ANY, SgARC_DOWN
  Pixel arcColor, farArcColor, nodeColor, nodeBorderColor, selectionColor, hoverColor, handleColor,
      targetColor, refusedColor;
  String emptyText;           // a copy of ours, owned by the view
  XmRenderTable renderTable;  // a copy of ours, owned by the view
  XtCallbackList newNodeCallback, newArcCallback, arcMovedCallback, defaultActionCallback;
  XtCallbackList changedCallback, nodesMovedCallback, overviewCallback, viewChangedCallback;
  XtCallbackList mayLinkCallback, targetCallback, foldCallback, menuCallback, hoverCallback, keyCallback,
      contentsCallback;

  sggraph::GraphView* view;  // released into here by initialize, taken back by destroy
};

struct SgGraphRec {
  CorePart core;
  CompositePart composite;
  ConstraintPart constraint;
  XmManagerPart manager;
  XmDrawingAreaPart drawing_area;
  SgGraphPart graph;
};

struct SgGraphClassRec {
  CoreClassPart core_class;
  CompositeClassPart composite_class;
  ConstraintClassPart constraint_class;
  XmManagerClassPart manager_class;
  XmDrawingAreaClassPart drawing_area_class;
  SgGraphClassPart graph_class;
};

/// Parent of all nodes: an unmapped window of one pixel. It is there because Xt destroys one composite with
/// all its children in linear time, but many widgets one by one in quadratic time, and so that a node can be
/// taken out without searching the list of children.
struct SgShelfRec {
  CorePart core;
  CompositePart composite;
};

struct SgShelfClassRec {
  CoreClassPart core_class;
  CompositeClassPart composite_class;
};

struct SgNodePart {
  XtPointer userData;
  XmString labelString;  // owned by the view
  Pixmap labelPixmap;    // not ours
  Pixel tint;

  sggraph::NodeId id;
  Cardinal place;  // among the shelf's children
};

struct SgNodeRec {
  ObjectPart object;
  RectObjPart rectangle;
  SgNodePart node;
};

struct SgNodeClassRec {
  RectObjClassPart rect_class;
};

using SgGraphWidget = SgGraphRec*;
using SgShelfWidget = SgShelfRec*;
using SgNodeObject = SgNodeRec*;

extern SgGraphClassRec sgGraphClassRec;
extern SgShelfClassRec sgShelfClassRec;
extern SgNodeClassRec sgNodeClassRec;
extern WidgetClass sgShelfWidgetClass;

namespace sggraph {

/// Xt's tables and calls say `char*` for names that they only read.
inline char* name(const char* text) { return const_cast<char*>(text); }

/// The core part of a widget class: what its superclass has, and nothing of its own yet.
inline CoreClassPart coreClass(WidgetClass superclass, const char* className, Cardinal instanceSize) {
  CoreClassPart made{};
  made.superclass = superclass;
  made.class_name = name(className);
  made.widget_size = instanceSize;
  made.realize = XtInheritRealize;
  made.xrm_class = NULLQUARK;
  made.compress_motion = True;
  made.compress_exposure = XtExposeCompressMaximal;
  made.compress_enterleave = True;
  made.set_values_almost = XtInheritSetValuesAlmost;
  made.version = XtVersion;
  return made;
}

/// The view of a graph widget; null for other widgets and for one that is being destroyed.
GraphView* viewOf(Widget graph);
/// The view that a node is in; null for other widgets and while either is being destroyed.
GraphView* viewOfNode(Widget node);

}  // namespace sggraph
