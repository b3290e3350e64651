/// @file
/// Scrolled areas made of the toolkit's scrolled window, which follows neither the wheel nor the focus.
#include "viewkit/scrolling.h"

#include <Xm/ScrollBar.h>
#include <Xm/ScrolledW.h>

#include <algorithm>

namespace viewkit {
namespace {

constexpr int kWheelStep = 60;  // pixels
constexpr int kWheelRows = 3;
constexpr int kFocusMargin = 20;  // pixels that are shown around what has the focus

XtEventDispatchProc nextPressDispatcher, nextReleaseDispatcher;

bool isScrolledArea(Widget widget) {
  if (!XmIsScrolledWindow(widget)) return false;
  unsigned char policy = XmAPPLICATION_DEFINED;
  XtVaGetValues(widget, XmNscrollingPolicy, &policy, nullptr);
  return policy == XmAUTOMATIC;
}

/// The nearest scrolled area around the widget that an event went to, or null.
Widget areaAround(const XButtonEvent& event) {
  Widget widget = XtWindowToWidget(event.display, event.window);
  while (widget && !isScrolledArea(widget)) widget = XtIsShell(widget) ? nullptr : XtParent(widget);
  return widget;
}

// A wheel that tilts has two more buttons.
constexpr unsigned kTiltLeft = 6, kTiltRight = 7;

bool isWheel(const XButtonEvent& event) { return event.button >= Button4 && event.button <= kTiltRight; }

bool isBack(const XButtonEvent& press) { return press.button == Button4 || press.button == kTiltLeft; }

/// The bar of rows that the wheel was turned over, if they scroll further that way; otherwise null.
Widget barOfRows(Widget area, const XButtonEvent& press) {
  if (press.button >= kTiltLeft || (press.state & ShiftMask)) return nullptr;
  for (Widget widget = XtWindowToWidget(press.display, press.window); widget != area;
       widget = XtParent(widget)) {
    const Widget bar = XtNameToWidget(widget, kRowsBar);
    if (!bar) continue;
    int value = 0, slider = 0, maximum = 0;
    XtVaGetValues(bar, XmNvalue, &value, XmNsliderSize, &slider, XmNmaximum, &maximum, nullptr);
    if (isBack(press) ? value > 0 : value + slider < maximum) return bar;
  }
  return nullptr;
}

/// The bar that a turn of the wheel moves; null when the area shows all there is in that direction.
Widget barFor(Widget area, const XButtonEvent& press) {
  Widget vertical = nullptr, horizontal = nullptr;
  XtVaGetValues(area, XmNverticalScrollBar, &vertical, XmNhorizontalScrollBar, &horizontal, nullptr);
  const bool sideways = press.button >= kTiltLeft || (press.state & ShiftMask) || !XtIsManaged(vertical);
  const Widget bar = sideways ? horizontal : vertical;
  return XtIsManaged(bar) ? bar : nullptr;
}

void scroll(Widget bar, int distance) {
  int value = 0, slider = 0, step = 0, page = 0, maximum = 0;
  XmScrollBarGetValues(bar, &value, &slider, &step, &page);
  XtVaGetValues(bar, XmNmaximum, &maximum, nullptr);
  XmScrollBarSetValues(bar, std::clamp(value + distance, 0, maximum - slider), slider, step, page, True);
}

Boolean dispatchPress(XEvent* event) {
  const XButtonEvent& press = event->xbutton;
  const Widget area = isWheel(press) ? areaAround(press) : nullptr;
  if (!area) return nextPressDispatcher(event);
  const int direction = isBack(press) ? -1 : 1;
  if (const Widget rows = barOfRows(area, press))
    scroll(rows, direction * kWheelRows);
  else if (const Widget bar = barFor(area, press))
    scroll(bar, direction * kWheelStep);
  // A press on an option menu freezes the pointer until the menu handles it, and this press never gets there.
  XAllowEvents(press.display, AsyncPointer, CurrentTime);
  return True;
}

Boolean dispatchRelease(XEvent* event) {
  const XButtonEvent& release = event->xbutton;
  return (isWheel(release) && areaAround(release)) || nextReleaseDispatcher(event);
}

void installWheel(Display* display) {
  if (nextPressDispatcher) return;
  nextPressDispatcher = XtSetEventDispatcher(display, ButtonPress, &dispatchPress);
  nextReleaseDispatcher = XtSetEventDispatcher(display, ButtonRelease, &dispatchRelease);
}

void showFocus(Widget area, XtPointer, XtPointer data) {
  const auto& event = *static_cast<const XmTraverseObscuredCallbackStruct*>(data);
  XmScrollVisible(area, event.traversal_destination, kFocusMargin, kFocusMargin);
}

}  // namespace

Widget createScrolledArea(Widget parent, const char* name) {
  installWheel(XtDisplay(parent));
  const Widget area =
      XtVaCreateWidget(name, xmScrolledWindowWidgetClass, parent, XmNscrollingPolicy, XmAUTOMATIC,
                       XmNscrollBarDisplayPolicy, XmAS_NEEDED, XmNshadowThickness, 0, XmNspacing, 0, nullptr);
  for (const char* bar : {XmNverticalScrollBar, XmNhorizontalScrollBar}) {
    Widget widget = nullptr;
    XtVaGetValues(area, bar, &widget, nullptr);
    XtVaSetValues(widget, XmNtraversalOn, False, nullptr);  // Tab is for what the area holds
  }
  XtAddCallback(area, XmNtraverseObscuredCallback, &showFocus, nullptr);
  return area;
}

void fitScrolledArea(Widget area, int width, int height, int maxWidth, int maxHeight) {
  Widget bar = nullptr;
  Dimension thickness = 0;
  XtVaGetValues(area, XmNverticalScrollBar, &bar, nullptr);
  XtVaGetValues(bar, XmNwidth, &thickness, nullptr);
  // A bar takes room from the view, so each makes the other direction need more.
  if (height > maxHeight) width += thickness;
  if (width > maxWidth) height += thickness;
  XtVaSetValues(area, XmNwidth, std::min(width, maxWidth), XmNheight, std::min(height, maxHeight), nullptr);
}

}  // namespace viewkit
