/// @file
/// What one graph widget holds: its picture, its view of it, and the gesture under way.
#pragma once

#include <X11/IntrinsicP.h>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "picture/drawing.h"
#include "picture/export.h"
#include "picture/viewport.h"
#include "viewkit/sggraph/GraphP.h"
#include "viewkit/sggraph/glide.h"
#include "viewkit/sggraph/painter.h"
#include "viewkit/sggraph/pixels.h"
#include "viewkit/sggraph/textfont.h"
#include "viewkit/xraii.h"

namespace sggraph {

struct FreeRenderTable {
  void operator()(XmRenderTable table) const noexcept { XmRenderTableFree(table); }
};
struct DestroyWidget {
  void operator()(Widget widget) const noexcept { XtDestroyWidget(widget); }
};
using RenderTable = std::unique_ptr<std::remove_pointer_t<XmRenderTable>, FreeRenderTable>;

/// A drag or click from button press to release. Nodes and arcs are held by stable id: they may go meanwhile.
struct Gesture {
  enum class Kind { Idle, Pan, PanMap, MoveNodes, DrawArc, MoveArcEnd, Fold, Refused };
  struct MovedNode {
    StableId node;
    SgPoint corner;
  };

  Kind kind = Kind::Idle;
  unsigned button = 0;
  SgPoint pressed, pressedPlane, pointer;  // window, plane, window
  SgPoint grabbed;                         // PanMap: from the middle of the view to the press, on the plane
  SgPoint viewAtPress;                     // the plane's place at the window's corner
  bool dragging = false;                   // moved too far for a click
  bool doubleClick = false;
  bool adds = false;           // Shift was held
  StableId node = 0, arc = 0;  // under the pointer at the press
  bool childEnd = false;       // MoveArcEnd: which end
  bool missedHandle = false;   // pressed beside the handle of an arc
  bool leftNode = false;       // DrawArc: was outside `node`, so that coming back makes a loop
  bool eitherWay = false;      // DrawArc: `node` may as well be the child
  bool cameIn = false;         // was in the part of the window that doesn't scroll
  StableId target = 0;         // the node that would be taken now
  std::unordered_map<StableId, bool> allowed;  // DrawArc, MoveArcEnd: of the nodes that were asked for
  std::vector<MovedNode> before;               // MoveNodes: where they were
  std::vector<SgStraightenedArc> straightened;
};

/// The press before, to recognise a double-click.
struct LastClick {
  Time time = 0;
  SgPoint place;
  StableId node = 0;
  bool valid = false;
};

struct FoldedNode {
  NodeId node, into;  // into kNone: it is hidden
};

/// The nodes and arcs of a graph widget, and the view of them: what can be set aside for other ones.
struct GraphContents {
  GraphContents() = default;
  /// The nodes' widgets go with it.
  ~GraphContents();
  GraphContents(GraphContents&&) = default;
  GraphContents& operator=(GraphContents&&) = default;

  Drawing drawing_;
  Viewport viewport_;
  std::unique_ptr<std::remove_pointer_t<Widget>, DestroyWidget> shelf_;
  std::vector<NodeLook> looks_;         // by NodeId
  std::vector<PixmapSource> pictures_;  // by NodeId: above labels
  std::vector<Widget> widgets_;         // by NodeId
  std::vector<std::string> names_;      // by NodeId
  std::vector<viewkit::XmStr> labels_;  // by NodeId: what the nodes' labelString points at
  std::unordered_map<ArcId, std::string> arcLabels_;
  StableId current_ = 0;  // the node that the keyboard works on
};

class GraphView : private GraphContents {
 public:
  explicit GraphView(SgGraphWidget widget);
  ~GraphView();

  /// The picture on the plane. The functions below change it, and see to it that the change is painted.
  const Drawing& drawing() const { return drawing_; }
  /// Bounds of all managed nodes. Linear after a change.
  const SgRectangle& extents();
  /// The viewport over the picture as it is now.
  const Viewport& viewport();
  /// Changes the viewport by `change(viewport)`.
  template <class Change>
  void changeViewport(Change&& change) {
    bringUpToDate();
    change(viewport_);
    viewChanged();
  }

  /// Scrolls as little as needed to show the node where the map doesn't lie over it; to the middle where that
  /// is not enough.
  void reveal(NodeId node);
  /// Zooms around the node that was selected last, if it is in sight, and keeps it there; else around the
  /// middle.
  void zoom(double zoom);

  /// @name Nodes
  /// @{
  Widget makeNode(const char* name, ArgList args, Cardinal count);
  const char* nameOf(NodeId node) const { return names_[node].c_str(); }
  void nodeMade(SgNodeObject node);
  void nodeGone(SgNodeObject node);
  /// Takes over label, picture and tint from the node's resources.
  void nodeLooksChanged(SgNodeObject node);
  Widget widgetOf(NodeId node) const { return node == kNone ? nullptr : widgets_[node]; }
  void setTitle(NodeId node, const std::string& title);
  /// Some nodes were managed or unmanaged.
  void managedChanged();
  /// Puts a node's upper left corner there, which straightens its arcs.
  void moveNode(NodeId node, SgPoint corner);
  /// These are folded, and no others.
  void fold(std::span<const FoldedNode> folded);
  /// Its handle to fold or unfold it, in window coordinates, while it has one.
  std::optional<SgRectangle> foldHandleOf(NodeId node);
  /// Leaves the graph empty. A drag is given up.
  SgKeptGraph setAside();
  /// What is there goes. The graph must not have been destroyed since.
  void takeBack(SgKeptGraph kept);
  Pixel tint(const char* name);
  /// @}

  /// @name Arcs
  /// @{
  ArcId addArc(NodeId from, NodeId to, const std::string& label);
  void removeArc(ArcId arc);
  void setBends(ArcId arc, std::span<const SgPoint> bends);
  void setArcStyle(ArcId arc, ArcStyle style);
  /// A place in the window where a press picks the arc.
  SgPoint pickPoint(ArcId arc);
  NodeId nodeAt(SgPoint window);
  /// @}

  /// @name Selection
  /// @{
  /// Selects one more.
  void selectNode(NodeId node);
  void selectArc(ArcId arc);
  void deselectAll();
  /// Makes a node the one that the keyboard works on.
  void makeCurrent(NodeId node);
  /// @}

  /// @name See SgGraphBeginMove.
  /// @{
  void beginMove();
  void endMove();
  /// @}

  /// Writes the picture to a file. @returns what went wrong; empty for nothing.
  std::string exportTo(const std::string& path, FileFormat format, bool viewOnly, const std::string& title);

  /// Paints what is due. Callbacks are called at the end: the view may be gone afterwards.
  void update();

  /// @name What Xt asks for
  /// @{
  void resized();
  void exposed(const XEvent& event);
  void resourcesChanged(bool fonts, bool ports);
  void press(const XButtonEvent& event);
  void release(const XButtonEvent& event);
  void motion(const XMotionEvent& event);
  void pointerLeft();
  void key(XKeyEvent& event);
  void focus(bool in);
  /// @}

  /// See SgGraphCurrentNode and SgGraphWalk.
  NodeId currentNode() const;
  void walk(SgWalk direction);

  /// @name See SgGraphBeginArc.
  /// @{
  bool beginArc(NodeId node);
  void continueArc(const XEvent& event);
  /// @}

 private:
  struct Hit {
    NodeId node = kNone;
    ArcId arc = kNone;
    bool handle = false, childEnd = false;  // of the arc
    bool foldHandle = false;                // of the node
    bool nearHandle = false;                // of a selected arc, though it may be missed
  };
  struct ViewState {
    double zoom = 0;
    SgRectangle visible, extents;
    friend bool operator==(const ViewState&, const ViewState&) = default;
  };

  static Boolean updateWhenIdle(XtPointer self) noexcept;
  static void scrollBarMoved(Widget scrollBar, XtPointer self, XtPointer data) noexcept;
  Widget widget() const { return reinterpret_cast<Widget>(widget_); }
  Display* display() const { return XtDisplay(widget()); }
  bool editable() const { return widget_->graph.editableArcs; }
  void makeShelf();
  /// Takes what there is out of the view, which has no shelf then.
  GraphContents takeContents();
  void measure(NodeId node);
  /// Takes over what the node's label says.
  void setLabel(NodeId node);
  /// Takes over which nodes are managed, and what the view can scroll to.
  void bringUpToDate();
  /// What is seen has changed: paints when the program is idle.
  void changed();
  /// What `reveal` does with the viewport.
  void bringIntoView(NodeId node);
  /// The same picture is seen in another way.
  void viewChanged();
  /// Only what lies over the picture has changed.
  void overlayChanged();
  /// See SgNcontentsCallback.
  void contentsChanged();
  ArcId arcAt(SgPoint window);
  void scrolled(Widget scrollBar, int value);
  void placeScrollBars();
  void setScrollBars();
  void schedule();
  void unschedule();
  static void nextFrame(XtPointer self, XtIntervalId* id) noexcept;
  /// All are where they are.
  void endGlide();
  /// The picture with its colours.
  Content content();
  OverlayInks overlayInks();
  Overlay overlay();
  /// Takes over the texts that the resources name.
  void keepTexts();
  /// The map, if it is to be seen now.
  std::optional<Map> map() const;
  Hit hit(SgPoint window);
  double arcReach() { return widget_->graph.arcWidth / 2.0 / viewport_.zoom(); }
  void setHover(SgPoint window);
  void hoverOver(StableId node, StableId arc);
  /// What is pointed at stays marked while it is pressed, but there is no more to say of it.
  void tellHover(StableId node, StableId arc);
  void setCursor(unsigned shape);

  // Gestures
  void beginOnNode(NodeId node, unsigned state);
  void startDrag();
  void drag();
  void finishDrag(XEvent* event);
  void finishClick(XEvent* event);
  void wheel(const XButtonEvent& event);
  /// The node that the stub at a place of the plane points to; kNone for an arc that is drawn as a whole.
  NodeId beyondStub(ArcId arc, SgPoint place) const;
  /// Where the walk from a node leads: itself for the first and last of several children; kNone where no arc
  /// leads so.
  NodeId alongArcs(NodeId node, SgWalk direction) const;
  /// The node to which an arc leads from the children, or from the parents, and which is nearest.
  NodeId nearest(NodeId node, bool child) const;
  /// Whether an arc that is drawn leads from one to the other.
  bool leads(NodeId parent, NodeId child) const;
  void goTo(NodeId node);
  /// The upper left one of those in view.
  NodeId firstInView() const;
  void dragMap();
  /// Scrolls while what is dragged is at the edge of the window.
  void scrollAtEdge();
  static void nextScroll(XtPointer self, XtIntervalId* id) noexcept;
  /// How fast to scroll with the pointer at a place of the window, in pixels a second.
  SgPoint edgeSpeed(SgPoint place) const;
  void stopScrolling();
  void endGesture();
  /// Ends a drag without effect; what it moved goes back.
  void giveUp();
  /// @returns false when the callbacks destroyed the widget: nothing of it may be touched any more.
  bool call(XtCallbackList SgGraphPart::*list, SgGraphCallbackStruct& data);
  bool drawsOrMovesArc() const {
    return gesture_.kind == Gesture::Kind::DrawArc || gesture_.kind == Gesture::Kind::MoveArcEnd;
  }
  /// The data of callbacks about the arc that is being drawn or moved, as if it ended at the node.
  SgGraphCallbackStruct wouldBe(int reason, NodeId target) const;
  /// Whether it may end there.
  bool allows(NodeId target);
  void setTarget(StableId target);
  void defaultAction(NodeId node, XEvent* event);
  void toggleOverview(XEvent* event);
  void foldWanted(NodeId node, bool fold, XEvent* event);
  void scrollPage(double pages, unsigned state);
  void otherKey(XEvent* event);
  void menuByKey(XEvent* event);
  /// Asks for a menu for what is at a place of the window; selects it.
  void menuWanted(const Hit& under, SgPoint window, XEvent* event);
  void nodesMoved(const Gesture& done, XEvent* event);
  void newNode(XEvent* event);
  void newArc(NodeId parent, NodeId child, bool eitherWay, XEvent* event);
  void arcMoved(ArcId arc, NodeId parent, NodeId child, XEvent* event);

  SgGraphWidget widget_;
  Pixels pixels_;
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
  Widget horizontalBar_ = nullptr, verticalBar_ = nullptr;
  ScrollRange horizontalShown_, verticalShown_;
  std::string newName_;  // of the node that is being made
  std::map<std::string, Pixel> tints_;
  RenderTable renderTable_;
  std::unique_ptr<TextFont> measuring_;
  std::unique_ptr<Painter> painter_;
  std::string emptyText_;
  bool managedStale_ = false;
  Frame mapPainted_;  // what the map shows; none before the first
  bool mapStale_ = true;
  bool pictureStale_ = true, overlayStale_ = true, contentsStale_ = false;
  XtWorkProcId work_ = 0;
  Glide glide_;
  int moves_ = 0;                                   // that have begun
  XtIntervalId frame_ = 0;                          // until the next frame of the glide
  XtIntervalId scroll_ = 0;                         // until the window scrolls on under what is dragged
  std::chrono::steady_clock::time_point scrolled_;  // when it last did
  ViewState announced_;

  Gesture gesture_;
  LastClick lastClick_;
  StableId hoverNode_ = 0, hoverArc_ = 0;
  StableId walkedFrom_ = 0;  // the parent from which the walk came down last
  bool focused_ = false;
  viewkit::CursorId cursor_;
};

}  // namespace sggraph
