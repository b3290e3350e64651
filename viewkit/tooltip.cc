/// @file
/// Showing and hiding a tooltip.
#include "viewkit/tooltip.h"

#include <X11/Shell.h>
#include <Xm/Label.h>

#include <algorithm>
#include <utility>

#include "viewkit/xraii.h"

namespace viewkit {

Tooltip::Tooltip(Widget parent)
    : shell_(XtVaCreatePopupShell("tooltip", overrideShellWidgetClass, parent, XmNallowShellResize, True,
                                  nullptr)),
      tip_(XtVaCreateManagedWidget("tip", xmLabelWidgetClass, shell_, XmNalignment, XmALIGNMENT_BEGINNING,
                                   XmNtraversalOn, False, nullptr)) {}

Tooltip::~Tooltip() { XtDestroyWidget(shell_); }

void Tooltip::showSoon(std::function<std::string()> text) {
  constexpr std::chrono::milliseconds kRest{600};
  hide();
  text_ = std::move(text);
  timer_.start(kRest);
}

void Tooltip::hide() {
  timer_.stop();
  if (XtIsRealized(shell_)) XtPopdown(shell_);
}

void Tooltip::show() {
  const std::string text = text_();
  if (text.empty()) return;
  XtVaSetValues(tip_, XmNlabelString, xmString(text).get(), nullptr);
  XtRealizeWidget(shell_);
  constexpr int kRight = 12, kBelow = 18;  // pixels from the pointer
  ::Window root = 0, child = 0;
  int x = 0, y = 0, inX = 0, inY = 0;
  unsigned mask = 0;
  Screen* const screen = XtScreen(shell_);
  XQueryPointer(XtDisplay(shell_), RootWindowOfScreen(screen), &root, &child, &x, &y, &inX, &inY, &mask);
  Dimension width = 0, height = 0;
  XtVaGetValues(shell_, XmNwidth, &width, XmNheight, &height, nullptr);
  const int left = std::clamp(x + kRight, 0, std::max(0, WidthOfScreen(screen) - width));
  const int below = y + kBelow, above = std::max(0, y - kBelow - height);
  const int top = below + height > HeightOfScreen(screen) ? above : below;
  XtVaSetValues(shell_, XmNx, left, XmNy, top, nullptr);
  XtPopup(shell_, XtGrabNone);
}

}  // namespace viewkit
