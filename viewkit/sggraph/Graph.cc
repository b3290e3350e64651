/// @file
/// The class of the graph widget.
#include "viewkit/sggraph/Graph.h"

#include <X11/StringDefs.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <type_traits>

#include "picture/colors.h"
#include "viewkit/sggraph/GraphP.h"
#include "viewkit/sggraph/graphview.h"

namespace sggraph {
namespace {

// Xt copies instance records bytewise.
static_assert(std::is_trivially_copyable_v<SgGraphRec> && std::is_trivially_copyable_v<SgNodeRec>);

SgGraphWidget graphOf(Widget widget) { return reinterpret_cast<SgGraphWidget>(widget); }

/// Default colours: the first for screens of many colours, the second one that low-depth colour maps hold
/// anyway.
struct DefaultColor {
  std::size_t offset;
  const char* rich;
  const char* plain;
};
constexpr DefaultColor kDefaultColors[] = {
    {XtOffsetOf(SgGraphRec, graph.arcColor), picture::kArcColor, "#6a6a6a"},
    {XtOffsetOf(SgGraphRec, graph.farArcColor), picture::kFarArcColor, "#bfbfbf"},
    {XtOffsetOf(SgGraphRec, graph.nodeColor), picture::kNodeColor, "#eaeaea"},
    {XtOffsetOf(SgGraphRec, graph.nodeBorderColor), picture::kNodeBorderColor, "#6a6a6a"},
    {XtOffsetOf(SgGraphRec, graph.selectionColor), picture::kSelectionColor, "#0055ff"},
    {XtOffsetOf(SgGraphRec, graph.hoverColor), "#63a6ef", "#55aaff"},
    {XtOffsetOf(SgGraphRec, graph.handleColor), picture::kHandleColor, "#ffffff"},
    {XtOffsetOf(SgGraphRec, graph.targetColor), "#29a642", "#00aa00"},
    {XtOffsetOf(SgGraphRec, graph.refusedColor), "#d6392b", "#aa0000"},
};

void defaultColor(Widget widget, int offset, XrmValue* value) {
  static Pixel pixel;
  const auto* color =
      std::ranges::find(kDefaultColors, static_cast<std::size_t>(offset), &DefaultColor::offset);
  pixel = BlackPixelOfScreen(XtScreen(widget));
  XColor nearest{}, exact{};
  const bool rich = widget->core.depth >= 15;
  if (color != std::end(kDefaultColors) &&
      XAllocNamedColor(XtDisplay(widget), widget->core.colormap, rich ? color->rich : color->plain, &nearest,
                       &exact) != 0)
    pixel = nearest.pixel;
  value->addr = reinterpret_cast<XPointer>(&pixel);
}

template <class Member>
XtResource row(const char* resource, const char* resourceClass, const char* type, Member SgGraphPart::*,
               std::size_t offset, const char* defaultType, XtPointer defaultValue) {
  return {name(resource),    name(resourceClass), name(type), sizeof(Member), static_cast<Cardinal>(offset),
          name(defaultType), defaultValue};
}

template <class Member>
XtResource row(const char* resource, const char* resourceClass, const char* type, Member SgGraphPart::*member,
               std::size_t offset, long value) {
  return row(resource, resourceClass, type, member, offset, XmRImmediate, reinterpret_cast<XtPointer>(value));
}

XtResource colorRow(const char* resource, Pixel SgGraphPart::*member, std::size_t offset) {
  return row(resource, "Color", XmRPixel, member, offset, XtRCallProc,
             reinterpret_cast<XtPointer>(&defaultColor));
}

XtResource callbackRow(const char* resource, XtCallbackList SgGraphPart::*member, std::size_t offset) {
  return row(resource, XmCCallback, XmRCallback, member, offset, 0);
}

#define SG_MEMBER(member) &SgGraphPart::member, XtOffsetOf(SgGraphRec, graph.member)

XtResource kResources[] = {
    row(SgNeditableArcs, "EditableArcs", XmRBoolean, SG_MEMBER(editableArcs), False),
    row(SgNokToAdd, "OkToAdd", XmRBoolean, SG_MEMBER(okToAdd), False),
    row(SgNshowOverview, "ShowOverview", XmRBoolean, SG_MEMBER(showOverview), False),
    row(SgNneighbourhood, "Neighbourhood", XmRBoolean, SG_MEMBER(neighbourhood), False),
    row(SgNglide, "Glide", XmRBoolean, SG_MEMBER(glide), True),
    row(SgNarcWidth, "ArcWidth", XmRDimension, SG_MEMBER(arcWidth), 20),
    row(SgNarcDirection, "ArcDirection", XmRInt, SG_MEMBER(arcDirection), SgARC_DOWN),
    row(SgNemptyText, "EmptyText", XmRString, SG_MEMBER(emptyText), 0),
    row(XmNrenderTable, XmCRenderTable, XmRRenderTable, SG_MEMBER(renderTable), 0),
    colorRow(SgNarcColor, SG_MEMBER(arcColor)),
    colorRow(SgNfarArcColor, SG_MEMBER(farArcColor)),
    colorRow(SgNnodeColor, SG_MEMBER(nodeColor)),
    colorRow(SgNnodeBorderColor, SG_MEMBER(nodeBorderColor)),
    colorRow(SgNselectionColor, SG_MEMBER(selectionColor)),
    colorRow(SgNhoverColor, SG_MEMBER(hoverColor)),
    colorRow(SgNhandleColor, SG_MEMBER(handleColor)),
    colorRow(SgNtargetColor, SG_MEMBER(targetColor)),
    colorRow(SgNrefusedColor, SG_MEMBER(refusedColor)),
    callbackRow(SgNnewNodeCallback, SG_MEMBER(newNodeCallback)),
    callbackRow(SgNnewArcCallback, SG_MEMBER(newArcCallback)),
    callbackRow(SgNarcMovedCallback, SG_MEMBER(arcMovedCallback)),
    callbackRow(SgNdefaultActionCallback, SG_MEMBER(defaultActionCallback)),
    callbackRow(SgNchangedCallback, SG_MEMBER(changedCallback)),
    callbackRow(SgNnodesMovedCallback, SG_MEMBER(nodesMovedCallback)),
    callbackRow(SgNoverviewCallback, SG_MEMBER(overviewCallback)),
    callbackRow(SgNmayLinkCallback, SG_MEMBER(mayLinkCallback)),
    callbackRow(SgNtargetCallback, SG_MEMBER(targetCallback)),
    callbackRow(SgNfoldCallback, SG_MEMBER(foldCallback)),
    callbackRow(SgNmenuCallback, SG_MEMBER(menuCallback)),
    callbackRow(SgNhoverCallback, SG_MEMBER(hoverCallback)),
    callbackRow(SgNkeyCallback, SG_MEMBER(keyCallback)),
    callbackRow(SgNcontentsCallback, SG_MEMBER(contentsCallback)),
    callbackRow(SgNviewChangedCallback, SG_MEMBER(viewChangedCallback)),
};

#undef SG_MEMBER

void initialize(Widget, Widget widget, ArgList, Cardinal*) noexcept {
  SgGraphRec* graph = graphOf(widget);
  constexpr Dimension kWidth = 640, kHeight = 480;
  if (graph->core.width == 0) graph->core.width = kWidth;
  if (graph->core.height == 0) graph->core.height = kHeight;
  graph->graph.view = nullptr;
  graph->graph.view = std::make_unique<GraphView>(graph).release();
}

void destroy(Widget widget) noexcept {
  const std::unique_ptr<GraphView> view(graphOf(widget)->graph.view);
  graphOf(widget)->graph.view = nullptr;
}

void resize(Widget widget) noexcept {
  if (GraphView* view = graphOf(widget)->graph.view) view->resized();
}

void expose(Widget widget, XEvent* event, Region) noexcept {
  if (GraphView* view = viewOf(widget)) view->exposed(*event);
}

Boolean setValues(Widget oldWidget, Widget, Widget widget, ArgList, Cardinal*) noexcept {
  const SgGraphPart &before = graphOf(oldWidget)->graph, &now = graphOf(widget)->graph;
  if (GraphView* view = viewOf(widget))
    view->resourcesChanged(before.renderTable != now.renderTable, before.arcDirection != now.arcDirection);
  return False;
}

/// The scroll bars never move by themselves, and the shelf isn't seen.
XtGeometryResult refuseGeometry(Widget, XtWidgetGeometry*, XtWidgetGeometry*) noexcept {
  return XtGeometryNo;
}

void managedChanged(Widget widget) noexcept { XmeNavigChangeManaged(widget); }

/// Calls a member of the view with the event, if it is of the kind that the member takes.
template <auto Member, auto EventPart, int Type>
void action(Widget widget, XEvent* event, String*, Cardinal*) noexcept {
  GraphView* view = XtIsSubclass(widget, sgGraphWidgetClass) ? viewOf(widget) : nullptr;
  if (view && event->type == Type) (view->*Member)(event->*EventPart);
}

void leaveAction(Widget widget, XEvent*, String*, Cardinal*) noexcept {
  if (GraphView* view = viewOf(widget)) view->pointerLeft();
}

void focusAction(Widget widget, XEvent* event, String*, Cardinal*) noexcept {
  if (GraphView* view = viewOf(widget)) view->focus(event->type == FocusIn);
}

XtActionsRec kActions[] = {
    {name("SgGraphPress"), &action<&GraphView::press, &XEvent::xbutton, ButtonPress>},
    {name("SgGraphRelease"), &action<&GraphView::release, &XEvent::xbutton, ButtonRelease>},
    {name("SgGraphMotion"), &action<&GraphView::motion, &XEvent::xmotion, MotionNotify>},
    {name("SgGraphKey"), &action<&GraphView::key, &XEvent::xkey, KeyPress>},
    {name("SgGraphLeave"), &leaveAction},
    {name("SgGraphFocus"), &focusAction},
};

// No modifiers are named, so that CapsLock and NumLock make no difference.
constexpr char kTranslations[] =
    "<BtnDown>: SgGraphPress()\n"
    "<BtnUp>: SgGraphRelease()\n"
    "<Motion>: SgGraphMotion()\n"
    "<Key>: SgGraphKey()\n"
    "<Enter>: ManagerEnter()\n"
    "<Leave>: ManagerLeave() SgGraphLeave()\n"
    "<FocusIn>: ManagerFocusIn() SgGraphFocus()\n"
    "<FocusOut>: ManagerFocusOut() SgGraphFocus()";

SgGraphClassRec graphClass() {
  SgGraphClassRec made{};
  made.core_class =
      coreClass(reinterpret_cast<WidgetClass>(&xmDrawingAreaClassRec), "SgGraph", sizeof(SgGraphRec));
  made.core_class.initialize = &initialize;
  made.core_class.destroy = &destroy;
  made.core_class.resize = &resize;
  made.core_class.expose = &expose;
  made.core_class.compress_exposure = XtExposeCompressMultiple;
  made.core_class.set_values = &setValues;
  made.core_class.actions = kActions;
  made.core_class.num_actions = XtNumber(kActions);
  made.core_class.resources = kResources;
  made.core_class.num_resources = XtNumber(kResources);
  made.core_class.tm_table = name(kTranslations);
  made.composite_class.geometry_manager = &refuseGeometry;
  made.composite_class.change_managed = &managedChanged;
  made.composite_class.insert_child = XtInheritInsertChild;
  made.composite_class.delete_child = XtInheritDeleteChild;
  made.constraint_class.constraint_size = sizeof(XmManagerConstraintRec);
  // No translations of the manager: the inherited ones would take the cursor keys to move between gadgets.
  made.manager_class.parent_process = XmInheritParentProcess;
  return made;
}

}  // namespace

GraphView* viewOf(Widget graph) {
  if (!graph || graph->core.being_destroyed || !XtIsSubclass(graph, sgGraphWidgetClass)) return nullptr;
  return graphOf(graph)->graph.view;
}

GraphView* viewOfNode(Widget node) {
  if (!node || node->core.being_destroyed || !XtIsSubclass(node, sgNodeObjectClass)) return nullptr;
  if (reinterpret_cast<SgNodeObject>(node)->node.id == kNone) return nullptr;
  return viewOf(XtParent(XtParent(node)));
}

}  // namespace sggraph

SgGraphClassRec sgGraphClassRec = sggraph::graphClass();

WidgetClass sgGraphWidgetClass = reinterpret_cast<WidgetClass>(&sgGraphClassRec);
