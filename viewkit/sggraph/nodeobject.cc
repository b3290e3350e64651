/// @file
/// The classes of the graph's nodes and of the shelf that they are kept on.
#include <X11/StringDefs.h>

#include <string_view>

#include "viewkit/sggraph/GraphP.h"
#include "viewkit/sggraph/graphview.h"

namespace sggraph {
namespace {

SgNodeObject nodeOf(Widget widget) { return reinterpret_cast<SgNodeObject>(widget); }
SgShelfWidget shelfOf(Widget widget) { return reinterpret_cast<SgShelfWidget>(widget); }

/// The view of a node's graph, also while it is being destroyed.
GraphView* viewAbove(Widget node) {
  return reinterpret_cast<SgGraphWidget>(XtParent(XtParent(node)))->graph.view;
}

// Nodes

void defaultTint(Widget node, int, XrmValue* value) {
  value->addr =
      reinterpret_cast<XPointer>(&reinterpret_cast<SgGraphWidget>(XtParent(XtParent(node)))->graph.nodeColor);
}

void initializeNode(Widget, Widget widget, ArgList, Cardinal*) noexcept {
  nodeOf(widget)->node.id = kNone;
  viewAbove(widget)->nodeMade(nodeOf(widget));
}

void destroyNode(Widget widget) noexcept {
  if (GraphView* view = viewAbove(widget)) view->nodeGone(nodeOf(widget));
}

Boolean setNodeValues(Widget, Widget, Widget widget, ArgList, Cardinal*) noexcept {
  if (GraphView* view = viewOfNode(widget)) view->nodeLooksChanged(nodeOf(widget));
  return False;
}

/// Callers own compound strings that they ask for.
void getNodeValues(Widget widget, ArgList args, Cardinal* count) noexcept {
  const XmString label = nodeOf(widget)->node.labelString;
  for (Cardinal i = 0; i < *count; ++i)
    if (std::string_view(args[i].name) == XmNlabelString)
      *reinterpret_cast<XmString*>(args[i].value) =
          label ? XmStringCopy(label) : XmStringCreateLocalized(name(SgNodeName(widget)));
}

XtResource kNodeResources[] = {
    {name(XmNuserData), name(XmCUserData), name(XmRPointer), sizeof(SgNodePart::userData),
     XtOffsetOf(SgNodeRec, node.userData), name(XmRImmediate), nullptr},
    {name(XmNlabelString), name(XmCLabelString), name(XmRXmString), sizeof(SgNodePart::labelString),
     XtOffsetOf(SgNodeRec, node.labelString), name(XmRImmediate), nullptr},
    {name(XmNlabelPixmap), name(XmCLabelPixmap), name(XmRPixmap), sizeof(SgNodePart::labelPixmap),
     XtOffsetOf(SgNodeRec, node.labelPixmap), name(XmRImmediate),
     reinterpret_cast<XtPointer>(XmUNSPECIFIED_PIXMAP)},
    {name(SgNtint), name("Tint"), name(XmRPixel), sizeof(SgNodePart::tint), XtOffsetOf(SgNodeRec, node.tint),
     name(XtRCallProc), reinterpret_cast<XtPointer>(&defaultTint)},
};

// The shelf

XtGeometryResult allowGeometry(Widget, XtWidgetGeometry*, XtWidgetGeometry*) noexcept {
  return XtGeometryYes;
}

void shelfManagedChanged(Widget shelf) noexcept {
  if (GraphView* view = viewOf(XtParent(shelf))) view->managedChanged();
}

void insertIntoShelf(Widget node) noexcept {
  nodeOf(node)->node.place = shelfOf(XtParent(node))->composite.num_children;
  reinterpret_cast<CompositeWidgetClass>(compositeWidgetClass)->composite_class.insert_child(node);
}

/// Xt's own procedure searches the list and moves everything after the child down.
void deleteFromShelf(Widget node) noexcept {
  CompositePart& shelf = shelfOf(XtParent(node))->composite;
  const Cardinal place = nodeOf(node)->node.place;
  const Widget last = shelf.children[--shelf.num_children];
  shelf.children[place] = last;
  nodeOf(last)->node.place = place;
}

SgNodeClassRec nodeClass() {
  SgNodeClassRec made{};
  made.rect_class.superclass = reinterpret_cast<WidgetClass>(&rectObjClassRec);
  made.rect_class.class_name = name("SgNode");
  made.rect_class.widget_size = sizeof(SgNodeRec);
  made.rect_class.initialize = &initializeNode;
  made.rect_class.destroy = &destroyNode;
  made.rect_class.resources = kNodeResources;
  made.rect_class.num_resources = XtNumber(kNodeResources);
  made.rect_class.xrm_class = NULLQUARK;
  made.rect_class.set_values = &setNodeValues;
  made.rect_class.set_values_almost = XtInheritSetValuesAlmost;
  made.rect_class.get_values_hook = &getNodeValues;
  made.rect_class.version = XtVersion;
  return made;
}

SgShelfClassRec shelfClass() {
  static CompositeClassExtensionRec extension{};
  extension.record_type = NULLQUARK;
  extension.version = XtCompositeExtensionVersion;
  extension.record_size = sizeof extension;
  extension.accepts_objects = True;
  SgShelfClassRec made{};
  made.core_class =
      coreClass(reinterpret_cast<WidgetClass>(&compositeClassRec), "SgShelf", sizeof(SgShelfRec));
  made.composite_class.geometry_manager = &allowGeometry;
  made.composite_class.change_managed = &shelfManagedChanged;
  made.composite_class.insert_child = &insertIntoShelf;
  made.composite_class.delete_child = &deleteFromShelf;
  made.composite_class.extension = &extension;
  return made;
}

}  // namespace
}  // namespace sggraph

SgNodeClassRec sgNodeClassRec = sggraph::nodeClass();
SgShelfClassRec sgShelfClassRec = sggraph::shelfClass();
WidgetClass sgNodeObjectClass = reinterpret_cast<WidgetClass>(&sgNodeClassRec);
WidgetClass sgShelfWidgetClass = reinterpret_cast<WidgetClass>(&sgShelfClassRec);
