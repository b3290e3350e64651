/// @file
/// The graph widget: nodes and arcs on a plane of their own, seen through a viewport with two scroll bars.
///
/// The plane is measured in plane units, one of which is a pixel at 100 %; x grows to the right, y down.
/// Window coordinates are pixels from the widget's upper left corner. Nodes are light window-less children
/// (sgNodeObjectClass) which the graph draws; arcs are no widgets, only numbers (SgArc). A graph of 100,000
/// nodes is normal: everything costs what is visible or touched, not what exists, unless it says otherwise.
///
/// Gestures. Click selects a node or an arc (Shift adds; the background clears); a click on the stub of an
/// arc also shows the node at its other end; a click on the handle at the left edge of a node that has
/// something below it, and the keys - and + while a node is selected, fold and unfold it. The right button
/// and the Menu key ask for a menu. Dragging a node moves it and the selected ones on the plane, dragging the
/// background or with the middle button pans, the wheel scrolls (Shift: sideways, Ctrl: zooms around the
/// pointer), double-click or Return is the default action, arrow keys follow arcs, Page Up and Page Down
/// scroll (Shift: sideways), Escape gives up a drag or clears the selection. What is
/// dragged to the edge of the window scrolls it. With `editableArcs`, Ctrl + drag from node to node draws an
/// arc and the handles at the ends of selected arcs can be dragged to other nodes; with `okToAdd`, a
/// double-click on the background makes a node.
#pragma once

#include <X11/Intrinsic.h>
#include <Xm/Xm.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "picture/arcpath.h"
#include "picture/geometry.h"
#include "picture/viewport.h"  // SgMinZoom, SgMaxZoom

namespace picture {
enum class FileFormat : int;
}

/// Resources of the graph besides those of XmManager, with type and default. Colours default to what suits
/// the screen's depth.
#define SgNeditableArcs "editableArcs"    // Boolean False: arcs can be drawn and their ends moved
#define SgNokToAdd "okToAdd"              // Boolean False: double-click on the background makes a node
#define SgNarcWidth "arcWidth"            // Dimension 20: pixels across of the strip that picks an arc
#define SgNshowOverview "showOverview"    // Boolean False: a map in a corner while not all is in view
#define SgNglide "glide"                  // Boolean True: nodes glide to new places, see SgGraphBeginMove
#define SgNneighbourhood "neighbourhood"  // Boolean False: what has no arc to a selected node is pale
#define SgNarcDirection "arcDirection"    // int 1: SgARC_ANY or SgARC_DOWN
#define SgNemptyText "emptyText"          // String null, copied: lines in the middle while there are no nodes
#define SgNarcColor "arcColor"            // Pixel
#define SgNfarArcColor "farArcColor"      // Pixel: arcs where zoomed out so far that they'd hide the nodes
#define SgNnodeColor "nodeColor"          // Pixel: boxes of nodes that set no tint
#define SgNnodeBorderColor "nodeBorderColor"  // Pixel
#define SgNselectionColor "selectionColor"    // Pixel: selected nodes and arcs, the rubber line
#define SgNhoverColor "hoverColor"            // Pixel: what the pointer is over
#define SgNhandleColor "handleColor"          // Pixel: inside of the handles of selected arcs
#define SgNtargetColor "targetColor"          // Pixel: nodes that a dragged arc end may go to
#define SgNrefusedColor "refusedColor"        // Pixel: the node that a dragged arc end may not go to
/// Resource of nodes; no "background", which applications set for all widgets at once.
#define SgNtint "tint"
/// Callback lists; each gets an SgGraphCallbackStruct.
#define SgNnewNodeCallback "newNodeCallback"
#define SgNnewArcCallback "newArcCallback"
#define SgNarcMovedCallback "arcMovedCallback"
#define SgNdefaultActionCallback "defaultActionCallback"
/// The widget made a change by itself, because `doit` was left True; same data as the request.
#define SgNchangedCallback "changedCallback"
/// The user has moved nodes, which the widget does by itself.
#define SgNnodesMovedCallback "nodesMovedCallback"
/// Whether an arc that is being drawn or moved may end at a node: asked of the nodes in view, with `doit`
/// True to be cleared where not. Those light up, the others are dimmed. The callbacks may change nothing.
#define SgNmayLinkCallback "mayLinkCallback"
/// An arc that is being drawn or moved has come to a node that it could end at, or has left it (then nothing
/// but the reason is said).
#define SgNtargetCallback "targetCallback"
/// What the pointer is over has changed: `node` or `arc`, or none of them any more.
#define SgNhoverCallback "hoverCallback"
/// Other nodes or arcs are there, or others are selected. Comes at most once per repaint.
#define SgNcontentsCallback "contentsCallback"
/// The user has turned the map on or off by its key.
#define SgNoverviewCallback "overviewCallback"
/// The user wants a node folded or unfolded, which the application does.
#define SgNfoldCallback "foldCallback"
/// A key was pressed that the graph has no meaning for.
#define SgNkeyCallback "keyCallback"
/// The user wants a menu for a node, an arc or the background.
#define SgNmenuCallback "menuCallback"
/// Zoom, offset, size of the view or of the drawing changed. Comes at most once per repaint.
#define SgNviewChangedCallback "viewChangedCallback"

/// Values of SgNarcDirection: where arcs leave and reach their nodes.
enum {
  SgARC_ANY = 0,  ///< wherever the straight line between the nodes crosses their edges
  SgARC_DOWN = 1  ///< below the parent, above the child, as long as the child is the lower one
};

/// How an arc is drawn. Arcs that are longer than the window are drawn as SgARC_STUBS are, and none is while
/// it, or a node at its end, is selected or pointed at.
using SgArcStyle = picture::ArcStyle;
/// From node to node.
inline constexpr SgArcStyle SgARC_WHOLE = SgArcStyle::Whole;
/// A short piece at each end, pointing to the other end.
inline constexpr SgArcStyle SgARC_STUBS = SgArcStyle::Stubs;
/// From node to node at right angles, without a head; leaves and reaches its nodes level with the bends next
/// to them. Whole however long it is.
inline constexpr SgArcStyle SgARC_SQUARE = SgArcStyle::Square;

/// Reasons in SgGraphCallbackStruct.
enum {
  SgCR_NEW_NODE = 51,
  SgCR_NEW_ARC = 52,
  SgCR_ARC_MOVED = 53,
  SgCR_DEFAULT_ACTION = 54,
  SgCR_VIEW_CHANGED = 55,
  SgCR_NODES_MOVED = 56,
  SgCR_OVERVIEW = 57,
  SgCR_MAY_LINK = 58,
  SgCR_TARGET = 59,
  SgCR_FOLD = 60,
  SgCR_MENU = 61,
  SgCR_HOVER = 62,
  SgCR_KEY = 63,
  SgCR_CONTENTS = 64
};

/// An arc of one graph: 0 is none. The number of a removed arc never comes back.
using SgArc = std::uint64_t;

/// A node that was moved, and its upper left corner before.
struct SgMovedNode {
  Widget node;
  SgPoint from;
};
/// An arc that was straightened since a node at its end moved, and its bends before.
struct SgStraightenedArc {
  SgArc arc;
  std::vector<SgPoint> bends;
};

/// Call data of all callbacks; what a reason doesn't mention is null or 0.
struct SgGraphCallbackStruct {
  int reason;
  XEvent* event;  ///< null when no event led here
  /// True at first. If it still is after the callbacks, the widget makes the change of SgCR_NEW_NODE,
  /// SgCR_NEW_ARC or SgCR_ARC_MOVED by itself. Callbacks may destroy nodes, arcs and the graph.
  Boolean doit;
  Boolean fold;  ///< SgCR_FOLD: whether to fold it
  /// SgCR_NEW_ARC, SgCR_MAY_LINK, SgCR_TARGET: which end is the parent was left open, see SgGraphBeginArc
  Boolean eitherWay;
  Widget node;  ///< SgCR_DEFAULT_ACTION, SgCR_HOVER, SgCR_FOLD, SgCR_MENU; changedCallback of SgCR_NEW_NODE
  /// SgCR_NEW_ARC; SgCR_MAY_LINK and SgCR_TARGET of an arc that is drawn
  Widget parent, child;
  /// SgCR_ARC_MOVED, SgCR_MAY_LINK and SgCR_TARGET of an arc that is moved: ends before and after
  Widget oldParent, oldChild, newParent, newChild;
  SgArc arc;         ///< SgCR_ARC_MOVED, SgCR_HOVER, SgCR_MENU; changedCallback of SgCR_NEW_ARC
  SgPoint position;  ///< of the pointer on the plane
  std::span<const SgMovedNode> movedNodes;              ///< SgCR_NODES_MOVED
  std::span<const SgStraightenedArc> straightenedArcs;  ///< SgCR_NODES_MOVED
};

extern WidgetClass sgGraphWidgetClass;

/// Nodes: made with SgGraphCreateNode. Resources: XmNuserData (XtPointer), XmNlabelString (XmString, copied;
/// the node's name by default), XmNlabelPixmap (the picture shown above the label, of the screen's
/// depth or 1, not freed; XmUNSPECIFIED_PIXMAP for none), SgNtint (Pixel of the box, the graph's nodeColor by
/// default). A node is as large as what it shows. Unmanaged nodes and their arcs are invisible.
extern WidgetClass sgNodeObjectClass;

Widget SgCreateGraph(Widget parent, const char* name, ArgList args, Cardinal count);

/// Makes an unmanaged node at the origin. XtParent of it isn't the graph: use SgNodeGraph. Many nodes are
/// best managed by one XtManageChildren. Destroy it with SgGraphRemoveNode or XtDestroyWidget, all with
/// SgGraphClear.
/// @param name  the node's, which is copied; the widgets of all nodes are called "node".
Widget SgGraphCreateNode(Widget graph, const char* name, ArgList args = nullptr, Cardinal count = 0);
/// The node's name, valid as long as no node is made or removed; "" for other widgets.
const char* SgNodeName(Widget node);
/// What XmNuserData was set to; null for other widgets. Much faster than XtGetValues.
XtPointer SgNodeUserData(Widget node);
/// A second line of text, under the label; as a rule the first characters of it. Empty: none.
void SgGraphSetNodeTitle(Widget node, const std::string& title);
/// The graph that a node lives in.
Widget SgNodeGraph(Widget node);
/// Takes the node and its arcs out of the picture at once and destroys the widget, which inside of callbacks
/// Xt does only after them.
void SgGraphRemoveNode(Widget node);
/// Destroys all nodes and arcs at once, and gives up a drag. The view goes back to 100 % at the origin.
void SgGraphClear(Widget graph);

namespace sggraph {
struct GraphContents;
struct DeleteContents {
  void operator()(GraphContents* contents) const noexcept;
};
}  // namespace sggraph
/// A graph that was set aside; its nodes are destroyed with it. Until they are taken back, none of its nodes
/// and arcs may be used.
using SgKeptGraph = std::unique_ptr<sggraph::GraphContents, sggraph::DeleteContents>;
/// Takes all nodes, arcs and the view away, as SgGraphClear does, and keeps them. Null for other widgets.
SgKeptGraph SgGraphSetAside(Widget graph);
/// Destroys what is there now, and brings back what was set aside. The graph must not have been destroyed
/// since.
void SgGraphTakeBack(Widget graph, SgKeptGraph kept);

/// @name Arcs. Functions that take nodes refuse (0, false) widgets that aren't nodes of this graph or are
/// being destroyed. Duplicates and self-links are legal.
/// @{
/// @param label  a text at the middle of the arc; null or "" for none.
/// @returns the new arc.
SgArc SgGraphAddArc(Widget graph, Widget from, Widget to, const char* label = nullptr);
bool SgGraphGetArcNodes(Widget graph, SgArc arc, Widget* from, Widget* to);
/// An arc from `from` to `to`: a selected one if there is, else the one added last. 0 for none.
SgArc SgGraphFindArc(Widget graph, Widget from, Widget to);
/// Removes one arc from `from` to `to`: a selected one if there is, else the one added last.
/// @returns whether there was any.
bool SgGraphRemoveArcBetweenNodes(Widget graph, Widget from, Widget to);
/// Lets an arc run over inner points, from its parent on; none: straight. Moving either node drops them.
void SgGraphSetArcBends(Widget graph, SgArc arc, std::span<const SgPoint> bends);
/// SgARC_WHOLE until set.
void SgGraphSetArcStyle(Widget graph, SgArc arc, SgArcStyle style);
SgArcStyle SgGraphArcStyle(Widget graph, SgArc arc);
/// The inner points that it was given, as far as no node at its end has moved since.
std::vector<SgPoint> SgGraphArcBends(Widget graph, SgArc arc);
/// The points an arc is drawn through, on the plane, from the edge of one node to that of the other; none
/// while it is not shown.
std::vector<SgPoint> SgGraphArcPath(Widget graph, SgArc arc);
/// All arcs from `from` to `to`, in the order of SgGraphArcs.
std::vector<SgArc> SgGraphArcsBetween(Widget graph, Widget from, Widget to);
/// All arcs, oldest first as far as none was removed. Linear.
std::vector<SgArc> SgGraphArcs(Widget graph);
/// @}

/// @name A drag that begins in another widget, such as a list of nodes
/// @{
/// Begins to draw an arc between `node` and the one that the drag will end at.
/// @returns false when arcs can't be drawn now.
bool SgGraphBeginArc(Widget graph, Widget node);
/// Takes what followed in the other widget: motion and release of the first button, Escape.
void SgGraphContinueArc(Widget graph, const XEvent& event);
/// @}

/// @name Selection. Arcs and nodes come in the order in which they were selected.
/// @{
std::vector<SgArc> SgGraphGetSelectedArcs(Widget graph);
std::vector<Widget> SgGraphGetSelectedNodes(Widget graph);
/// Selects one more; it becomes the current one, which the keyboard works on.
void SgGraphSelectNode(Widget graph, Widget node);
/// Selects one more.
void SgGraphSelectArc(Widget graph, SgArc arc);
void SgGraphClearSelection(Widget graph);
/// The node that the keyboard works on: the one that was clicked, walked to or selected last, while it is
/// selected and seen. Null: none.
Widget SgGraphCurrentNode(Widget graph);
enum SgWalk { SgWALK_UP, SgWALK_DOWN, SgWALK_LEFT, SgWALK_RIGHT };
/// Goes on from the current node and selects where it comes to: up to a parent, down to a child, left and
/// right between the children of a parent; where no arc leads so, to the next node that lies there. Up from a
/// child leads to the parent that it was reached from. From a selected arc, up and down lead to its ends.
void SgGraphWalk(Widget graph, SgWalk direction);
/// @}

/// @name Places of nodes on the plane
/// @{
/// Puts the node's upper left corner there and straightens its arcs. Not finite numbers count as 0, and
/// numbers are held within +-1e9.
void SgGraphSetNodePosition(Widget node, SgPoint position);
SgRectangle SgGraphNodeBounds(Widget node);
/// @}

/// @name What is moved between the two, by the application and with the view, is seen to glide to its new
/// place for an instant. Everything else knows the new places only. A press, a key and the wheel end it, and
/// where too much would have to be painted there is none. Calls may be nested.
/// @{
void SgGraphBeginMove(Widget graph);
void SgGraphEndMove(Widget graph);
/// @}

/// @name Folding: nodes that others stand for are not seen. Their arcs are drawn from and to these instead,
/// as stubs, and these say how many they stand for. Removing a node brings back what is folded into it. Nodes
/// that nothing stands for are hidden, and their arcs are; the nodes at the other ends say how many.
/// @{
struct SgFoldedNode {
  Widget node, into;  ///< into null: it is hidden
};
/// From now on these nodes are folded, and no others.
void SgGraphFold(Widget graph, std::span<const SgFoldedNode> folded);
/// The node that is seen for it; null for itself.
Widget SgGraphFoldedInto(Widget node);
/// Whether it is managed, and neither folded nor hidden.
bool SgGraphNodeIsSeen(Widget node);
/// A place in the window where a press takes the handle that folds and unfolds the node. False for a node
/// that has none now: only those that are pointed at and those that are folded have.
bool SgGraphFoldHandle(Widget node, SgPoint* handle);
/// @}

/// @name The view
/// @{
double SgGraphZoom(Widget graph);
/// Zooms, held within SgMinZoom and SgMaxZoom, around the one of the selected nodes in sight that was
/// selected last, which stays in sight; without one around the middle of the window.
void SgGraphSetZoom(Widget graph, double zoom);
/// Shows everything, never larger than 100 %, in the middle of the view.
void SgGraphZoomToFit(Widget graph);
/// Shows a part of the plane so.
void SgGraphZoomToBox(Widget graph, const SgRectangle& plane);
/// The part of the window that shows the plane, scroll bars excluded.
SgRectangle SgGraphViewport(Widget graph);
/// Bounds of all managed nodes on the plane. Linear when nodes moved since the last call.
SgRectangle SgGraphExtents(Widget graph);
/// Scrolls so that a place on the plane comes to lie at a place in the window.
void SgGraphScrollTo(Widget graph, SgPoint plane, SgPoint window);
/// At 100 %, the upper edge of the drawing with `node` in the middle, as far as that leaves no empty space
/// aside.
void SgGraphShowTop(Widget graph, Widget node);
/// Scrolls as little as possible so that the whole node is in view; one that is far off comes to the middle.
void SgGraphRevealNode(Widget graph, Widget node);
SgPoint SgGraphToWindow(Widget graph, SgPoint plane);
SgPoint SgGraphToPlane(Widget graph, SgPoint window);
/// A node's box in window coordinates, also where it is scrolled out of view.
SgRectangle SgGraphNodeRectangle(Widget node);
/// A place in the window where a press picks the arc at its middle, and those where its end handles are while
/// it is selected. False for no arc.
bool SgGraphArcPoint(Widget graph, SgArc arc, SgPoint* middle, SgPoint* parentHandle = nullptr,
                     SgPoint* childHandle = nullptr);
/// The node that a press there would pick; null for none.
Widget SgGraphNodeAt(Widget graph, SgPoint window);
/// Writes the picture to a file, in full or not at all: of the whole graph at 100 %, or what the window
/// shows.
/// @returns what went wrong, a line without its end; empty when nothing did.
std::string SgGraphExport(Widget graph, const std::string& path, picture::FileFormat format, bool viewOnly,
                          const std::string& title);
/// Paints what is due at once instead of when the program is idle.
void SgGraphUpdate(Widget graph);
/// @}

/// The colour of the resource `<name>Tint` (class `Tint`) of the graph, such as "*graph.warningTint:
/// #d0e8c0", or the graph's nodeColor when nobody set it. Looked up once per name.
Pixel SgGraphTint(Widget graph, const char* name);
