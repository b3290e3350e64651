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
GraphView* viewBehind(Widget node) {
  return reinterpret_cast<SgGraphWidget>(XtParent(XtParent(node)))->graph.view;
}

// Nodes

void defaultTint(Widget node, int, XrmValue* value) {
  value->addr =
      reinterpret_cast<XPointer>(&reinterpret_cast<SgGraphWidget>(XtParent(XtParent(node)))->graph.nodeColor);
}

void initializeNode(Widget, Widget widget, ArgList, Cardinal*) noexcept {
  nodeOf(widget)->node.id = kNone;
  viewBehind(widget)->nodeMade(nodeOf(widget));
}

void destroyNode(Widget widget) noexcept {
  if (GraphView* view = viewBehind(widget)) view->nodeGone(nodeOf(widget));
}

Boolean setNodeValues(Widget, Widget, Widget widget, ArgList, Cardinal*) noexcept {
  if (GraphView* view = viewOfNode(widget)) view->nodeLooksChanged(nodeOf(widget));
  return False;
}

/// Callers own compound strings that they ask for.
void getNodeValues(Widget widget, ArgList args, Cardinal* count) noexcept {
  for (Cardinal i = 0; i < *count; ++i)
    if (std::string_view(args[i].name) == XmNlabelString && nodeOf(widget)->node.labelString)
      *reinterpret_cast<XmString*>(args[i].value) = XmStringCopy(nodeOf(widget)->node.labelString);
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

/// Xt's own procedure searches the list and moves everything behind the child down.
void deleteFromShelf(Widget node) noexcept {
  CompositePart& shelf = shelfOf(XtParent(node))->composite;
  const Cardinal place = nodeOf(node)->node.place;
  const Widget last = shelf.children[--shelf.num_children];
  shelf.children[place] = last;
  nodeOf(last)->node.place = place;
}

CompositeClassExtensionRec kShelfExtension = {
    .next_extension = nullptr,
    .record_type = NULLQUARK,
    .version = XtCompositeExtensionVersion,
    .record_size = sizeof(CompositeClassExtensionRec),
    .accepts_objects = True,
    .allows_change_managed_set = False,
};

}  // namespace
}  // namespace sggraph

SgNodeClassRec sgNodeClassRec = {.rect_class = {
                                     .superclass = reinterpret_cast<WidgetClass>(&rectObjClassRec),
                                     .class_name = sggraph::name("SgNode"),
                                     .widget_size = sizeof(SgNodeRec),
                                     .class_initialize = nullptr,
                                     .class_part_initialize = nullptr,
                                     .class_inited = False,
                                     .initialize = &sggraph::initializeNode,
                                     .initialize_hook = nullptr,
                                     .rect1 = nullptr,
                                     .rect2 = nullptr,
                                     .rect3 = 0,
                                     .resources = sggraph::kNodeResources,
                                     .num_resources = XtNumber(sggraph::kNodeResources),
                                     .xrm_class = NULLQUARK,
                                     .rect4 = False,
                                     .rect5 = 0,
                                     .rect6 = False,
                                     .rect7 = False,
                                     .destroy = &sggraph::destroyNode,
                                     .resize = nullptr,
                                     .expose = nullptr,
                                     .set_values = &sggraph::setNodeValues,
                                     .set_values_hook = nullptr,
                                     .set_values_almost = XtInheritSetValuesAlmost,
                                     .get_values_hook = &sggraph::getNodeValues,
                                     .rect9 = nullptr,
                                     .version = XtVersion,
                                     .callback_private = nullptr,
                                     .rect10 = nullptr,
                                     .query_geometry = nullptr,
                                     .rect11 = nullptr,
                                     .extension = nullptr,
                                 }};

SgShelfClassRec sgShelfClassRec = {
    .core_class =
        {
            .superclass = reinterpret_cast<WidgetClass>(&compositeClassRec),
            .class_name = sggraph::name("SgShelf"),
            .widget_size = sizeof(SgShelfRec),
            .class_initialize = nullptr,
            .class_part_initialize = nullptr,
            .class_inited = False,
            .initialize = nullptr,
            .initialize_hook = nullptr,
            .realize = XtInheritRealize,
            .actions = nullptr,
            .num_actions = 0,
            .resources = nullptr,
            .num_resources = 0,
            .xrm_class = NULLQUARK,
            .compress_motion = True,
            .compress_exposure = XtExposeCompressMaximal,
            .compress_enterleave = True,
            .visible_interest = False,
            .destroy = nullptr,
            .resize = nullptr,
            .expose = nullptr,
            .set_values = nullptr,
            .set_values_hook = nullptr,
            .set_values_almost = XtInheritSetValuesAlmost,
            .get_values_hook = nullptr,
            .accept_focus = nullptr,
            .version = XtVersion,
            .callback_private = nullptr,
            .tm_table = nullptr,
            .query_geometry = XtInheritQueryGeometry,
            .display_accelerator = nullptr,
            .extension = nullptr,
        },
    .composite_class =
        {
            .geometry_manager = &sggraph::allowGeometry,
            .change_managed = &sggraph::shelfManagedChanged,
            .insert_child = &sggraph::insertIntoShelf,
            .delete_child = &sggraph::deleteFromShelf,
            .extension = &sggraph::kShelfExtension,
        },
};

WidgetClass sgNodeObjectClass = reinterpret_cast<WidgetClass>(&sgNodeClassRec);
WidgetClass sgShelfWidgetClass = reinterpret_cast<WidgetClass>(&sgShelfClassRec);
