/// @file
/// What pointer and keyboard do to a graph.
#include <X11/cursorfont.h>
#include <X11/keysym.h>
#include <Xm/VirtKeys.h>
#include <Xm/Xm.h>

#include <algorithm>
#include <limits>
#include <tuple>

#include "viewkit/sggraph/graphview.h"

namespace sggraph {

namespace {

constexpr double kClickSlack = 4;     // pixels that the pointer may move during a click
constexpr double kHandleReach = 12;   // pixels around a handle in which a press takes it
constexpr double kHandleMissed = 24;  // and in which one that misses it doesn't pan
constexpr double kWheelStep = 60;     // pixels
constexpr double kWheelZoom = 1.15;
constexpr double kEdge = 24;               // pixels from the edge within which a drag scrolls
constexpr double kEdgeSpeed = 20;          // pixels a second for each pixel nearer to the edge
constexpr double kMostBeyond = 16;         // pixels beyond the edge that make it faster still
constexpr unsigned long kScrollTime = 15;  // milliseconds between two steps
constexpr std::chrono::duration<double> kLongestScroll{0.1};  // that a step counts, however late it comes

SgPoint placeOf(const XButtonEvent& event) {
  return {static_cast<double>(event.x), static_cast<double>(event.y)};
}

}  // namespace

GraphView::Hit GraphView::hit(SgPoint window) {
  bringUpToDate();
  Hit found;
  if (editable()) {
    double nearest = kHandleReach;
    for (const auto& [order, arc] : drawing_.selectedArcs()) {
      if (!drawing_.arcShown(arc)) continue;
      const HandlePlaces places = handlePlaces(drawing_.path(arc), viewport_.frame());
      for (const bool child : {true, false}) {
        const double away = distance(window, child ? places.child : places.parent);
        found.nearHandle = found.nearHandle || away < kHandleMissed;
        if (away >= nearest) continue;
        nearest = away;
        found = {.arc = arc, .handle = true, .childEnd = child};
      }
    }
    if (found.handle) return found;
  }
  // Handles of nodes reach out of their boxes.
  drawing_.visitNodes(SgRectangle{viewport_.toPlane(window).x, viewport_.toPlane(window).y, 0, 0}.grownBy(
                          kHandleReach / viewport_.zoom()),
                      [&](NodeId node) {
                        const std::optional<SgRectangle> handle = foldHandleOf(node);
                        if (handle && handle->contains(window)) found = {.node = node, .foldHandle = true};
                      });
  if (found.foldHandle) return found;
  found.node = nodeAt(window);
  if (found.node == kNone) found.arc = arcAt(window);
  return found;
}

void GraphView::setHover(SgPoint window) {
  const std::optional<Map> over = map();
  const bool inside = viewport_.frame().window().contains(window) && !(over && over->box.contains(window));
  const Hit under = inside ? hit(window) : Hit{};
  const StableId node = drawing_.stableNodeId(under.node), arc = drawing_.stableArcId(under.arc);
  hoverOver(node, arc);
}

void GraphView::hoverOver(StableId node, StableId arc) {
  if (node == hoverNode_ && arc == hoverArc_) return;
  hoverNode_ = node;
  hoverArc_ = arc;
  overlayChanged();
  tellHover(node, arc);
}

void GraphView::tellHover(StableId node, StableId arc) {
  SgGraphCallbackStruct data{};
  data.reason = SgCR_HOVER;
  data.node = widgetOf(drawing_.nodeOf(node));
  data.arc = arc;
  call(&SgGraphPart::hoverCallback, data);
}

void GraphView::setCursor(unsigned shape) {
  cursor_ = viewkit::CursorId(display(), XCreateFontCursor(display(), shape));
  XDefineCursor(display(), XtWindow(widget()), cursor_.get());
}

void GraphView::endGesture() {
  const bool hadTarget = gesture_.target != 0;
  if (drawsOrMovesArc()) viewChanged();
  stopScrolling();
  gesture_ = {};
  if (hadTarget) {
    SgGraphCallbackStruct data = wouldBe(SgCR_TARGET, kNone);
    if (!call(&SgGraphPart::targetCallback, data)) return;
  }
  if (cursor_) XUndefineCursor(display(), XtWindow(widget()));
  cursor_ = {};
  overlayChanged();
}

void GraphView::giveUp() {
  if (gesture_.dragging) {
    if (gesture_.kind == Gesture::Kind::Pan || gesture_.kind == Gesture::Kind::PanMap)
      changeViewport([&](Viewport& view) { view.scrollTo(gesture_.viewAtPress, {0, 0}); });
    for (const auto& [stable, corner] : gesture_.before)
      if (const NodeId node = drawing_.nodeOf(stable); node != kNone) moveNode(node, corner);
    for (const auto& [stable, bends] : gesture_.straightened)
      if (const ArcId arc = drawing_.arcOf(stable); arc != kNone) setBends(arc, bends);
  }
  // What follows of the drag, up to the release, does nothing.
  const unsigned button = gesture_.button;
  endGesture();
  gesture_.kind = Gesture::Kind::Refused;
  gesture_.button = button;
}

void GraphView::wheel(const XButtonEvent& event) {
  const SgPoint pointer = placeOf(event);
  const bool back = event.button == Button4 || event.button == 6;
  const bool sideways = event.button > Button5 || (event.state & ShiftMask) != 0;
  const bool zooms = event.button <= Button5 && (event.state & ControlMask) != 0;
  changeViewport([&](Viewport& view) {
    const double step = back ? -kWheelStep : kWheelStep;
    if (zooms)
      view.zoomAround(view.zoom() * (back ? kWheelZoom : 1 / kWheelZoom), pointer);
    else
      view.scrollBy(sideways ? step : 0, sideways ? 0 : step);
  });
  if (gesture_.kind == Gesture::Kind::Idle) {
    setHover(pointer);
  } else if (gesture_.kind == Gesture::Kind::Pan) {
    // The place of the plane that is dragged along is another one now.
    gesture_.pressedPlane = viewport_.toPlane(pointer);
  } else {
    gesture_.pointer = pointer;
    if (gesture_.dragging) drag();
  }
}

void GraphView::press(const XButtonEvent& event) {
  endGlide();
  if (event.button >= Button4) {
    wheel(event);
    return;
  }
  if (event.button == Button3) {
    if (gesture_.kind != Gesture::Kind::Idle) return;
    XEvent whole{};
    whole.xbutton = event;
    tellHover(0, 0);
    menuWanted(hit(placeOf(event)), placeOf(event), &whole);
    return;
  }
  if (gesture_.kind != Gesture::Kind::Idle) {
    // If the button that began the gesture isn't held any more, its release was lost.
    const unsigned held = gesture_.button == Button1 ? Button1Mask : Button2Mask;
    if ((event.state & held) != 0) return;
    giveUp();
  }
  const SgPoint place = placeOf(event);
  bringUpToDate();
  tellHover(0, 0);
  gesture_ = {};
  gesture_.button = event.button;
  gesture_.pressed = gesture_.pointer = place;
  gesture_.pressedPlane = viewport_.toPlane(place);
  gesture_.viewAtPress = viewport_.toPlane({0, 0});
  gesture_.adds = (event.state & ShiftMask) != 0;
  gesture_.kind = Gesture::Kind::Pan;
  if (event.button == Button2) return;
  if (const std::optional<Map> pressed = map(); pressed && pressed->box.contains(place)) {
    // The frame is dragged from where it is taken; pressed elsewhere, it comes there.
    gesture_.kind = Gesture::Kind::PanMap;
    const SgPoint plane = pressed->frame.toPlane({place.x - pressed->box.x, place.y - pressed->box.y});
    const SgPoint middle = viewport_.visible().middle();
    if (viewport_.visible().contains(plane)) gesture_.grabbed = {plane.x - middle.x, plane.y - middle.y};
    dragMap();
    lastClick_ = {};
    return;
  }

  const Hit under = hit(place);
  gesture_.node = drawing_.stableNodeId(under.node);
  gesture_.arc = drawing_.stableArcId(under.arc);
  if (under.foldHandle) {
    gesture_.kind = Gesture::Kind::Fold;
    lastClick_ = {};
    XmProcessTraversal(widget(), XmTRAVERSE_CURRENT);
    return;
  }
  const bool again = lastClick_.valid &&
                     event.time - lastClick_.time <= Time(XtGetMultiClickTime(display())) &&
                     distance(lastClick_.place, place) <= kClickSlack && lastClick_.node == gesture_.node;
  gesture_.doubleClick = again;
  // A third click is a first one again.
  lastClick_ = {event.time, place, gesture_.node, !again};

  gesture_.missedHandle = under.nearHandle && under.node == kNone;
  if (under.handle) {
    gesture_.kind = Gesture::Kind::MoveArcEnd;
    gesture_.childEnd = under.childEnd;
  } else if (under.node != kNone) {
    beginOnNode(under.node, event.state);
  }
  XmProcessTraversal(widget(), XmTRAVERSE_CURRENT);
}

void GraphView::beginOnNode(NodeId node, unsigned state) {
  if ((state & ControlMask) != 0) {
    gesture_.kind = editable() ? Gesture::Kind::DrawArc : Gesture::Kind::Refused;
    return;
  }
  gesture_.kind = Gesture::Kind::MoveNodes;
  makeCurrent(node);
  if (drawing_.nodeSelected(node)) return;
  if (!gesture_.adds) deselectAll();
  selectNode(node);
}

void GraphView::motion(const XMotionEvent& event) {
  const SgPoint place{static_cast<double>(event.x), static_cast<double>(event.y)};
  if (gesture_.kind != Gesture::Kind::Idle) {
    const unsigned held = gesture_.button == Button1 ? Button1Mask : Button2Mask;
    if ((event.state & held) == 0) {
      giveUp();
      endGesture();
    }
  }
  if (gesture_.kind == Gesture::Kind::Idle) {
    setHover(place);
    return;
  }
  gesture_.pointer = place;
  if (!gesture_.dragging && distance(gesture_.pressed, place) > kClickSlack) startDrag();
  if (gesture_.dragging) {
    drag();
    scrollAtEdge();
  }
}

SgPoint GraphView::edgeSpeed(SgPoint place) const {
  if (gesture_.kind != Gesture::Kind::MoveNodes && !drawsOrMovesArc()) return {};
  const auto speed = [](double at, double size) {
    if (size < 4 * kEdge) return 0.0;
    const double before = std::min(kEdge - at, kEdge + kMostBeyond);
    const double after = std::min(at - (size - kEdge), kEdge + kMostBeyond);
    return before > 0 ? -before * kEdgeSpeed : after > 0 ? after * kEdgeSpeed : 0.0;
  };
  return {speed(place.x, viewport_.width()), speed(place.y, viewport_.height())};
}

void GraphView::scrollAtEdge() {
  const auto isInside = [&](SgPoint place) { return edgeSpeed(place) == SgPoint{}; };
  const bool inside = isInside(gesture_.pointer);
  gesture_.cameIn = gesture_.cameIn || inside || (!gesture_.eitherWay && isInside(gesture_.pressed));
  if (inside || !gesture_.cameIn) {
    stopScrolling();
  } else if (scroll_ == 0) {
    scrolled_ = std::chrono::steady_clock::now();
    scroll_ = XtAppAddTimeOut(XtWidgetToApplicationContext(widget()), kScrollTime, &nextScroll, this);
  }
}

void GraphView::stopScrolling() {
  if (scroll_ != 0) XtRemoveTimeOut(scroll_);
  scroll_ = 0;
}

void GraphView::nextScroll(XtPointer self, XtIntervalId*) noexcept {
  auto* const view = static_cast<GraphView*>(self);
  const auto now = std::chrono::steady_clock::now();
  const double seconds =
      std::min<std::chrono::duration<double>>(now - view->scrolled_, kLongestScroll).count();
  view->scrolled_ = now;
  view->scroll_ =
      XtAppAddTimeOut(XtWidgetToApplicationContext(view->widget()), kScrollTime, &nextScroll, view);
  const SgPoint speed = view->edgeSpeed(view->gesture_.pointer);
  view->changeViewport([&](Viewport& port) { port.scrollBy(speed.x * seconds, speed.y * seconds); });
  view->drag();
}

bool GraphView::beginArc(NodeId node) {
  if (!editable() || gesture_.kind != Gesture::Kind::Idle || !drawing_.shown(node)) return false;
  endGlide();
  bringUpToDate();
  tellHover(0, 0);
  gesture_ = {};
  gesture_.kind = Gesture::Kind::DrawArc;
  gesture_.button = Button1;
  gesture_.node = drawing_.stableNodeId(node);
  gesture_.eitherWay = true;
  gesture_.pointer = gesture_.pressed = viewport_.toWindow(drawing_.box(node)).middle();
  startDrag();
  return true;
}

void GraphView::continueArc(const XEvent& event) {
  if (!gesture_.eitherWay) return;
  Position x = 0, y = 0;
  XtTranslateCoords(widget(), 0, 0, &x, &y);
  XEvent here = event;
  if (event.type == MotionNotify) {
    here.xmotion.x = event.xmotion.x_root - x;
    here.xmotion.y = event.xmotion.y_root - y;
    motion(here.xmotion);
  } else if (event.type == ButtonRelease) {
    here.xbutton.x = event.xbutton.x_root - x;
    here.xbutton.y = event.xbutton.y_root - y;
    release(here.xbutton);
  } else if (event.type == KeyPress) {
    giveUp();
    endGesture();
  }
}

void GraphView::startDrag() {
  if (gesture_.missedHandle && gesture_.kind == Gesture::Kind::Pan) gesture_.kind = Gesture::Kind::Refused;
  gesture_.dragging = true;
  lastClick_.valid = false;
  switch (gesture_.kind) {
    case Gesture::Kind::Pan:
    case Gesture::Kind::PanMap:
      setCursor(XC_fleur);
      break;
    case Gesture::Kind::DrawArc:
    case Gesture::Kind::MoveArcEnd:
      viewChanged();  // what is pale says where the arc may end
      setCursor(XC_crosshair);
      break;
    case Gesture::Kind::MoveNodes:
      for (const auto& [order, node] : drawing_.selectedNodes()) {
        const SgRectangle& box = drawing_.box(node);
        gesture_.before.push_back({drawing_.stableNodeId(node), {box.x, box.y}});
        drawing_.visitArcsOf(node, [&](ArcId arc) {
          const auto bends = drawing_.bends(arc);
          if (!bends.empty())
            gesture_.straightened.push_back({drawing_.stableArcId(arc), {bends.begin(), bends.end()}});
        });
      }
      break;
    case Gesture::Kind::Idle:
    case Gesture::Kind::Fold:
    case Gesture::Kind::Refused:
      break;
  }
}

void GraphView::dragMap() {
  const std::optional<Map> shown = map();
  if (!shown) return;
  const SgPoint plane =
      shown->frame.toPlane({gesture_.pointer.x - shown->box.x, gesture_.pointer.y - shown->box.y});
  changeViewport([&](Viewport& view) {
    view.scrollTo({plane.x - gesture_.grabbed.x, plane.y - gesture_.grabbed.y},
                  {view.width() / 2, view.height() / 2});
  });
}

void GraphView::drag() {
  const SgPoint plane = viewport().toPlane(gesture_.pointer);
  // What lies beyond the window's edge is not seen.
  const bool inWindow = viewport_.frame().window().contains(gesture_.pointer);
  switch (gesture_.kind) {
    case Gesture::Kind::Pan:
      changeViewport([&](Viewport& view) { view.scrollTo(gesture_.pressedPlane, gesture_.pointer); });
      break;
    case Gesture::Kind::PanMap:
      dragMap();
      break;
    case Gesture::Kind::MoveNodes:
      for (const auto& [stable, corner] : gesture_.before)
        if (const NodeId node = drawing_.nodeOf(stable); node != kNone)
          moveNode(node, {corner.x + plane.x - gesture_.pressedPlane.x,
                          corner.y + plane.y - gesture_.pressedPlane.y});
      break;
    case Gesture::Kind::DrawArc: {
      const NodeId under = inWindow ? drawing_.nodeAt(plane) : kNone;
      const StableId stable = drawing_.stableNodeId(under);
      if (stable != gesture_.node) gesture_.leftNode = true;
      setTarget(gesture_.leftNode ? stable : 0);
      break;
    }
    case Gesture::Kind::MoveArcEnd: {
      const ArcId arc = drawing_.arcOf(gesture_.arc);
      const NodeId under = inWindow ? drawing_.nodeAt(plane) : kNone;
      const bool same = arc != kNone && under == (gesture_.childEnd ? drawing_.to(arc) : drawing_.from(arc));
      setTarget(same ? 0 : drawing_.stableNodeId(under));
      break;
    }
    case Gesture::Kind::Idle:
    case Gesture::Kind::Fold:
    case Gesture::Kind::Refused:
      break;
  }
}

void GraphView::release(const XButtonEvent& event) {
  if (event.button != gesture_.button || gesture_.kind == Gesture::Kind::Idle) return;
  XEvent whole{};
  whole.xbutton = event;
  if (gesture_.dragging) {
    // Xt may have dropped the last motion before the release.
    gesture_.pointer = placeOf(event);
    drag();
    finishDrag(&whole);
  } else {
    finishClick(&whole);
  }
}

void GraphView::finishDrag(XEvent* event) {
  // The gesture is over before anyone is called: callbacks may post dialogs, clear the graph, start anew.
  const Gesture done = gesture_;
  endGesture();
  if (done.kind == Gesture::Kind::MoveNodes) {
    nodesMoved(done, event);
    return;
  }
  const NodeId target = drawing_.nodeOf(done.target);
  if (target == kNone || !editable()) return;
  if (done.kind == Gesture::Kind::DrawArc) {
    const NodeId parent = drawing_.nodeOf(done.node);
    if (parent != kNone) newArc(parent, target, done.eitherWay, event);
  } else if (done.kind == Gesture::Kind::MoveArcEnd) {
    const ArcId arc = drawing_.arcOf(done.arc);
    if (arc == kNone) return;
    arcMoved(arc, done.childEnd ? drawing_.from(arc) : target, done.childEnd ? target : drawing_.to(arc),
             event);
  }
}

void GraphView::finishClick(XEvent* event) {
  const Gesture done = gesture_;
  endGesture();
  if (done.kind == Gesture::Kind::Refused || done.kind == Gesture::Kind::PanMap || done.button != Button1)
    return;
  const NodeId node = drawing_.nodeOf(done.node);
  const ArcId arc = drawing_.arcOf(done.arc);
  if (node != kNone) {
    if (done.kind == Gesture::Kind::Fold) foldWanted(node, drawing_.countFolded(node) == 0, event);
    if (done.kind != Gesture::Kind::MoveNodes) return;
    if (done.doubleClick) {
      defaultAction(node, event);
    } else if (!done.adds && drawing_.selectedNodes().size() + drawing_.selectedArcs().size() > 1) {
      deselectAll();
      selectNode(node);
    }
  } else if (arc != kNone) {
    if (drawing_.arcSelected(arc) && (done.adds || drawing_.selectedArcs().size() == 1)) return;
    const NodeId otherEnd = beyondStub(arc, viewport_.toPlane(done.pressed));
    if (!done.adds) deselectAll();
    selectArc(arc);
    if (otherEnd != kNone) reveal(otherEnd);
  } else if (done.doubleClick && done.node == 0 && done.arc == 0) {
    if (widget_->graph.okToAdd) newNode(event);
  } else if (!done.adds) {
    deselectAll();
  }
}

NodeId GraphView::beyondStub(ArcId arc, SgPoint place) const {
  const ArcDetail detail = arcDetail(viewport_.frame());
  NodeId beyond = kNone;
  if (!drawing_.inStubs(arc, detail)) return beyond;
  double least = std::numeric_limits<double>::infinity();
  drawing_.visitPieces(arc, detail, [&](std::span<const SgPoint> stub, bool reachesChild) {
    const double away = distanceToPath(place, stub);
    if (away >= least) return;
    least = away;
    beyond = reachesChild ? drawing_.drawnFrom(arc) : drawing_.drawnTo(arc);
  });
  return beyond;
}

void GraphView::pointerLeft() { hoverOver(0, 0); }

void GraphView::focus(bool in) {
  if (focused_ == in) return;
  focused_ = in;
  overlayChanged();
}

void GraphView::key(XKeyEvent& event) {
  endGlide();
  XEvent whole{};
  whole.xkey = event;
  Modifiers used = 0;
  const KeySym keysym = XtGetActionKeysym(&whole, &used);
  switch (keysym) {
    case XK_Up:
    case osfXK_Up:
    case XK_KP_Up:
      walk(SgWALK_UP);
      break;
    case XK_Down:
    case osfXK_Down:
    case XK_KP_Down:
      walk(SgWALK_DOWN);
      break;
    case XK_Left:
    case osfXK_Left:
    case XK_KP_Left:
      walk(SgWALK_LEFT);
      break;
    case XK_Right:
    case osfXK_Right:
    case XK_KP_Right:
      walk(SgWALK_RIGHT);
      break;
    case XK_Tab:
    case XK_ISO_Left_Tab:
      XmProcessTraversal(
          widget(), (event.state & ShiftMask) != 0 ? XmTRAVERSE_PREV_TAB_GROUP : XmTRAVERSE_NEXT_TAB_GROUP);
      break;
    case XK_m:
    case XK_M:
      if ((event.state & (ControlMask | Mod1Mask)) == 0) toggleOverview(&whole);
      break;
    case XK_minus:
    case XK_KP_Subtract:
    case XK_plus:
    case XK_KP_Add:
      if (currentNode() == kNone || (event.state & (ControlMask | Mod1Mask)) != 0)
        otherKey(&whole);
      else if (gesture_.kind == Gesture::Kind::Idle)
        foldWanted(currentNode(), keysym == XK_minus || keysym == XK_KP_Subtract, &whole);
      break;
    case XK_Menu:
    case osfXK_Menu:
      if (gesture_.kind == Gesture::Kind::Idle) menuByKey(&whole);
      break;
    case XK_Escape:
    case osfXK_Cancel:
      if (gesture_.kind != Gesture::Kind::Idle)
        giveUp();
      else
        deselectAll();
      break;
    case XK_Return:
    case osfXK_Activate:
    case XK_KP_Enter: {
      bringUpToDate();
      const NodeId node = drawing_.nodeOf(current_);
      if (gesture_.kind == Gesture::Kind::Idle && node != kNone && drawing_.shown(node))
        defaultAction(node, &whole);
      break;
    }
    case XK_Prior:
    case osfXK_PageUp:
    case XK_KP_Prior:
      scrollPage(-1, event.state);
      break;
    case XK_Next:
    case osfXK_PageDown:
    case XK_KP_Next:
      scrollPage(1, event.state);
      break;
    default:
      otherKey(&whole);
      break;
  }
}

void GraphView::scrollPage(double pages, unsigned state) {
  constexpr double kShare = 0.9;  // of the window: some of what was seen still is
  const bool sideways = (state & ShiftMask) != 0;
  changeViewport([&](Viewport& view) {
    const double part = pages * kShare;
    view.scrollBy(sideways ? part * view.width() : 0, sideways ? 0 : part * view.height());
  });
}

void GraphView::otherKey(XEvent* event) {
  if (gesture_.kind != Gesture::Kind::Idle) return;
  SgGraphCallbackStruct data{};
  data.reason = SgCR_KEY;
  data.event = event;
  call(&SgGraphPart::keyCallback, data);
}

void GraphView::menuByKey(XEvent* event) {
  bringUpToDate();
  const auto& arcs = drawing_.selectedArcs();
  Hit of;
  SgPoint at{viewport_.width() / 2, viewport_.height() / 2};
  if (const NodeId node = currentNode(); node != kNone) {
    of.node = node;
    const SgRectangle box = viewport_.toWindow(drawing_.box(node));
    at = {box.middle().x, box.y + box.height};  // the menu leaves the name to be seen
  } else if (!arcs.empty() && drawing_.arcShown(arcs.rbegin()->second)) {
    of.arc = arcs.rbegin()->second;
    at = pickPoint(of.arc);
  }
  // What it is about may have been scrolled out of sight.
  at = {std::clamp(at.x, 0.0, viewport_.width()), std::clamp(at.y, 0.0, viewport_.height())};
  menuWanted(of, at, event);
}

// Walking

NodeId GraphView::currentNode() const {
  const NodeId node = drawing_.nodeOf(current_);
  return node != kNone && drawing_.shown(node) && drawing_.nodeSelected(node) ? node : kNone;
}

void GraphView::walk(SgWalk direction) {
  if (gesture_.kind != Gesture::Kind::Idle) return;
  bringUpToDate();
  const NodeId node = drawing_.nodeOf(current_);
  const bool vertical = direction == SgWALK_UP || direction == SgWALK_DOWN;
  if (vertical && drawing_.selectedNodes().empty() && !drawing_.selectedArcs().empty()) {
    const ArcId arc = drawing_.selectedArcs().rbegin()->second;
    goTo(direction == SgWALK_UP ? drawing_.drawnFrom(arc) : drawing_.drawnTo(arc));
  } else if (node == kNone || !drawing_.shown(node)) {
    goTo(firstInView());
  } else if (const NodeId along = alongArcs(node, direction); along != kNone) {
    if (direction == SgWALK_DOWN) walkedFrom_ = current_;
    goTo(along);
  } else {
    const int step = direction == SgWALK_UP || direction == SgWALK_LEFT ? -1 : 1;
    goTo(drawing_.neighbour(node, vertical ? 0 : step, vertical ? step : 0));
  }
}

void GraphView::goTo(NodeId node) {
  if (node == kNone || !drawing_.shown(node)) return;
  reveal(node);
  makeCurrent(node);
  deselectAll();
  selectNode(node);
}

NodeId GraphView::firstInView() const {
  NodeId first = kNone;
  double least = std::numeric_limits<double>::infinity();
  drawing_.visitNodes(viewport_.visible(), [&](NodeId node) {
    const SgRectangle& box = drawing_.box(node);
    const double rank = box.y + box.x / 1000;
    if (rank >= least) return;
    least = rank;
    first = node;
  });
  return first;
}

NodeId GraphView::alongArcs(NodeId node, SgWalk direction) const {
  if (direction == SgWALK_DOWN) return nearest(node, true);
  const NodeId from = drawing_.nodeOf(walkedFrom_);
  const NodeId parent = from != kNone && leads(from, node) ? from : nearest(node, false);
  if (direction == SgWALK_UP || parent == kNone) return parent;

  // In a compact picture children stand in rows, in another one beside each other.
  bool rows = false;
  drawing_.visitDrawnArcsOf(parent, [&](ArcId arc) {
    rows = rows || (drawing_.drawnTo(arc) == node && drawing_.arcStyle(arc) != ArcStyle::Whole);
  });
  const auto placeOf = [&](NodeId child) {
    const SgRectangle& box = drawing_.box(child);
    return rows ? std::tuple(box.y, box.x, child) : std::tuple(box.x, box.y, child);
  };
  const bool back = direction == SgWALK_LEFT;
  const auto here = placeOf(node);
  NodeId next = kNone;
  bool alone = true;
  drawing_.visitDrawnArcsOf(parent, [&](ArcId arc) {
    const NodeId child = drawing_.drawnTo(arc);
    if (!drawing_.arcShown(arc) || child == parent) return;
    alone = alone && child == node;
    const auto there = placeOf(child);
    if (back ? there >= here : there <= here) return;
    if (next == kNone || (back ? there > placeOf(next) : there < placeOf(next))) next = child;
  });
  return next == kNone && !alone ? node : next;
}

NodeId GraphView::nearest(NodeId node, bool child) const {
  NodeId found = kNone;
  double least = std::numeric_limits<double>::infinity();
  drawing_.visitDrawnArcsOf(node, [&](ArcId arc) {
    const NodeId other = child ? drawing_.drawnTo(arc) : drawing_.drawnFrom(arc);
    if (!drawing_.arcShown(arc) || other == node) return;
    const double away = distance(drawing_.box(node).middle(), drawing_.box(other).middle());
    if (away >= least) return;
    least = away;
    found = other;
  });
  return found;
}

bool GraphView::leads(NodeId parent, NodeId child) const {
  bool any = false;
  drawing_.visitDrawnArcsOf(child, [&](ArcId arc) {
    any = any ||
          (drawing_.arcShown(arc) && drawing_.drawnFrom(arc) == parent && drawing_.drawnTo(arc) == child);
  });
  return any;
}

// Guidance

SgGraphCallbackStruct GraphView::wouldBe(int reason, NodeId target) const {
  SgGraphCallbackStruct data{};
  data.reason = reason;
  data.doit = True;
  if (target == kNone) return data;
  const ArcId arc = drawing_.arcOf(gesture_.arc);
  data.eitherWay = gesture_.eitherWay;
  if (gesture_.kind == Gesture::Kind::DrawArc) {
    data.parent = widgetOf(drawing_.nodeOf(gesture_.node));
    data.child = widgetOf(target);
  } else if (arc != kNone) {
    data.arc = gesture_.arc;
    data.oldParent = widgetOf(drawing_.from(arc));
    data.oldChild = widgetOf(drawing_.to(arc));
    data.newParent = gesture_.childEnd ? data.oldParent : widgetOf(target);
    data.newChild = gesture_.childEnd ? widgetOf(target) : data.oldChild;
  }
  return data;
}

bool GraphView::allows(NodeId target) {
  const auto [known, fresh] = gesture_.allowed.try_emplace(drawing_.stableNodeId(target), true);
  if (!fresh) return known->second;
  SgGraphCallbackStruct data = wouldBe(SgCR_MAY_LINK, target);
  XtCallCallbackList(widget(), widget_->graph.mayLinkCallback, &data);
  return known->second = data.doit;
}

void GraphView::setTarget(StableId target) {
  overlayChanged();
  if (target == gesture_.target) return;
  gesture_.target = target;
  SgGraphCallbackStruct data = wouldBe(SgCR_TARGET, drawing_.nodeOf(target));
  call(&SgGraphPart::targetCallback, data);
}

// Requests. Each asks the callbacks first and makes the change only if they left it to the widget, and if
// what it is about is still there after them.

void GraphView::defaultAction(NodeId node, XEvent* event) {
  SgGraphCallbackStruct data{};
  data.reason = SgCR_DEFAULT_ACTION;
  data.event = event;
  data.node = widgetOf(node);
  call(&SgGraphPart::defaultActionCallback, data);
}

void GraphView::toggleOverview(XEvent* event) {
  widget_->graph.showOverview = !widget_->graph.showOverview;
  viewChanged();
  SgGraphCallbackStruct data{};
  data.reason = SgCR_OVERVIEW;
  data.event = event;
  call(&SgGraphPart::overviewCallback, data);
}

void GraphView::foldWanted(NodeId node, bool fold, XEvent* event) {
  SgGraphCallbackStruct data{};
  data.reason = SgCR_FOLD;
  data.event = event;
  data.node = widgetOf(node);
  data.fold = fold;
  call(&SgGraphPart::foldCallback, data);
}

void GraphView::menuWanted(const Hit& under, SgPoint window, XEvent* event) {
  if (under.node != kNone && !drawing_.nodeSelected(under.node)) {
    deselectAll();
    selectNode(under.node);
  } else if (under.arc != kNone && !drawing_.arcSelected(under.arc)) {
    deselectAll();
    selectArc(under.arc);
  }
  if (under.node != kNone) makeCurrent(under.node);
  SgGraphCallbackStruct data{};
  data.reason = SgCR_MENU;
  data.event = event;
  data.node = widgetOf(under.node);
  data.arc = drawing_.stableArcId(under.arc);
  data.position = viewport_.toPlane(window);
  call(&SgGraphPart::menuCallback, data);
}

void GraphView::nodesMoved(const Gesture& done, XEvent* event) {
  std::vector<SgMovedNode> moved;
  for (const auto& [stable, corner] : done.before)
    if (const NodeId node = drawing_.nodeOf(stable); node != kNone) {
      const SgRectangle& box = drawing_.box(node);
      if (SgPoint{box.x, box.y} != corner) moved.push_back({widgetOf(node), corner});
    }
  if (moved.empty()) return;
  SgGraphCallbackStruct data{};
  data.reason = SgCR_NODES_MOVED;
  data.event = event;
  data.movedNodes = moved;
  data.straightenedArcs = done.straightened;
  call(&SgGraphPart::nodesMovedCallback, data);
}

void GraphView::newNode(XEvent* event) {
  SgGraphCallbackStruct data{};
  data.reason = SgCR_NEW_NODE;
  data.event = event;
  data.doit = True;
  data.position = viewport_.toPlane(placeOf(event->xbutton));
  if (!call(&SgGraphPart::newNodeCallback, data) || !data.doit) return;
  data.node = makeNode("node", nullptr, 0);
  const NodeId node = reinterpret_cast<SgNodeObject>(data.node)->node.id;
  const SgRectangle& box = drawing_.box(node);
  moveNode(node, {data.position.x - box.width / 2, data.position.y - box.height / 2});
  XtManageChild(data.node);
  call(&SgGraphPart::changedCallback, data);
}

void GraphView::newArc(NodeId parent, NodeId child, bool eitherWay, XEvent* event) {
  const StableId stableParent = drawing_.stableNodeId(parent), stableChild = drawing_.stableNodeId(child);
  SgGraphCallbackStruct data{};
  data.reason = SgCR_NEW_ARC;
  data.event = event;
  data.doit = True;
  data.eitherWay = eitherWay;
  data.parent = widgetOf(parent);
  data.child = widgetOf(child);
  data.position = viewport_.toPlane(placeOf(event->xbutton));
  if (!call(&SgGraphPart::newArcCallback, data) || !data.doit) return;
  if (drawing_.nodeOf(stableParent) == kNone || drawing_.nodeOf(stableChild) == kNone) return;
  data.arc = drawing_.stableArcId(addArc(parent, child, {}));
  call(&SgGraphPart::changedCallback, data);
}

void GraphView::arcMoved(ArcId arc, NodeId parent, NodeId child, XEvent* event) {
  const StableId stableArc = drawing_.stableArcId(arc);
  const StableId stableParent = drawing_.stableNodeId(parent), stableChild = drawing_.stableNodeId(child);
  SgGraphCallbackStruct data{};
  data.reason = SgCR_ARC_MOVED;
  data.event = event;
  data.doit = True;
  data.arc = stableArc;
  data.oldParent = widgetOf(drawing_.from(arc));
  data.oldChild = widgetOf(drawing_.to(arc));
  data.newParent = widgetOf(parent);
  data.newChild = widgetOf(child);
  data.position = viewport_.toPlane(placeOf(event->xbutton));
  if (!call(&SgGraphPart::arcMovedCallback, data) || !data.doit) return;
  if (drawing_.arcOf(stableArc) == kNone || drawing_.nodeOf(stableParent) == kNone ||
      drawing_.nodeOf(stableChild) == kNone)
    return;
  const auto known = arcLabels_.find(arc);
  const std::string label = known == arcLabels_.end() ? std::string() : known->second;
  removeArc(arc);
  const ArcId moved = addArc(parent, child, label);
  selectArc(moved);
  data.arc = drawing_.stableArcId(moved);
  call(&SgGraphPart::changedCallback, data);
}

}  // namespace sggraph
