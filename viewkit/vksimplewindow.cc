/// @file
/// The shell, main window and status line of a top-level window.
#include "viewkit/vksimplewindow.h"

#include <X11/IntrinsicP.h>

#include <X11/CoreP.h>
#include <Xm/Label.h>
#include <Xm/MainW.h>

#include <algorithm>

#include "viewkit/forward.h"
#include "viewkit/vkapp.h"

VkSimpleWindow::VkSimpleWindow(const char* name) : VkComponent(name) {
  const Widget shell = XtVaAppCreateShell(name, theApplication->applicationClass(),
                                          applicationShellWidgetClass, theApplication->display(), nullptr);
  if (!theApplication->mainWindow()) {
    // Only one window of a client tells how it was started.
    auto words = theApplication->commandLine();
    XtVaSetValues(shell, XmNargc, static_cast<int>(words.size()), XmNargv, words.data(), nullptr);
    if (const char* geometry = theApplication->geometry())
      XtVaSetValues(shell, XmNgeometry, geometry, nullptr);
  }
  setBaseWidget(shell);
  theApplication->addShell(shell, &wmDeleteCallback, this);
  theApplication->addWindow(this);

  XtAddEventHandler(shell, FocusChangeMask, False, &focusHandler, this);
  mainWindow_ = XtVaCreateManagedWidget("mainWindow", xmMainWindowWidgetClass, shell, nullptr);
  statusLine_ =
      XtVaCreateManagedWidget("status", xmLabelWidgetClass, mainWindow_, XmNalignment, XmALIGNMENT_BEGINNING,
                              XmNrecomputeSize, False, XmNlabelString, viewkit::xmString(" ").get(), nullptr);
  XtVaSetValues(mainWindow_, XmNmessageWindow, statusLine_, nullptr);
  XtAddEventHandler(statusLine_, StructureNotifyMask, False, &statusResizedHandler, this);
}

VkSimpleWindow::~VkSimpleWindow() {
  if (theApplication) theApplication->removeWindow(this);
}

void VkSimpleWindow::addView(VkComponent* view) { addView(view->baseWidget()); }

void VkSimpleWindow::addView(Widget view) {
  XtVaSetValues(mainWindow_, XmNworkWindow, view, nullptr);
  XtManageChild(view);
}

void VkSimpleWindow::show() {
  if (!baseWidget()) return;
  XtRealizeWidget(baseWidget());
  fitStatusLine();
  XtMapWidget(baseWidget());
}

void VkSimpleWindow::hide() {
  if (baseWidget() && XtIsRealized(baseWidget())) XtUnmapWidget(baseWidget());
}

std::optional<VkSimpleWindow::Place> VkSimpleWindow::place() const {
  if (!baseWidget() || !XtIsRealized(baseWidget())) return std::nullopt;
  Display* const display = XtDisplay(baseWidget());
  ::Window frame = XtWindow(baseWidget()), root = 0, above = frame;
  while (above != root) {
    frame = above;
    ::Window* children = nullptr;
    unsigned count = 0;
    if (!XQueryTree(display, frame, &root, &above, &children, &count)) return std::nullopt;
    const viewkit::XMem<::Window> owner(children);
  }
  int x = 0, y = 0;
  unsigned width = 0, height = 0, border = 0, depth = 0;
  if (!XGetGeometry(display, frame, &root, &x, &y, &width, &height, &border, &depth)) return std::nullopt;
  const CorePart& window = baseWidget()->core;
  return Place{x, y, window.width, window.height};
}

void VkSimpleWindow::setPlace(Place place) {
  if (!baseWidget() || theApplication->geometry()) return;
  constexpr int kLeast = 200;  // pixels of the window, and of it on the screen
  const Screen* const screen = XtScreen(baseWidget());
  const int across = WidthOfScreen(screen), down = HeightOfScreen(screen);
  place.width = std::clamp(place.width, kLeast, std::max(kLeast, across));
  place.height = std::clamp(place.height, kLeast, std::max(kLeast, down));
  place.x = std::clamp(place.x, 0, std::max(0, across - kLeast));
  place.y = std::clamp(place.y, 0, std::max(0, down - kLeast));
  geometry_ = std::to_string(place.width) + "x" + std::to_string(place.height) + "+" +
              std::to_string(place.x) + "+" + std::to_string(place.y);
  XtVaSetValues(baseWidget(), XmNgeometry, geometry_.data(), nullptr);
}

void VkSimpleWindow::setTitle(const char* title) {
  if (baseWidget()) XtVaSetValues(baseWidget(), XmNtitle, title, nullptr);
}

void VkSimpleWindow::setIconName(const char* text) {
  if (baseWidget()) XtVaSetValues(baseWidget(), XmNiconName, text, nullptr);
}

void VkSimpleWindow::setStatus(const char* text) {
  status_ = text;
  showOnStatusLine(status_);
}

void VkSimpleWindow::showOnStatusLine(const std::string& text) {
  onStatusLine_ = text;
  fitStatusLine();
}

void VkSimpleWindow::fitStatusLine() {
  if (!statusLine_) return;
  XmRenderTable fonts = nullptr;
  Dimension width = 0, margin = 0, highlight = 0;
  XtVaGetValues(statusLine_, XmNrenderTable, &fonts, XmNwidth, &width, XmNmarginWidth, &margin,
                XmNhighlightThickness, &highlight, nullptr);
  const int room = width - 2 * (margin + highlight);
  std::string text = onStatusLine_;
  const auto fits = [&] { return XmStringWidth(fonts, viewkit::xmString(text).get()) <= room; };
  for (auto end = text.rfind(kStatusSeparator); end != std::string::npos && !fits();
       end = text.rfind(kStatusSeparator))
    text.resize(end);
  // A blank keeps the line's height when there is nothing to say.
  if (text.empty()) text = " ";
  if (viewkit::textResource(statusLine_, XmNlabelString) != text)
    XtVaSetValues(statusLine_, XmNlabelString, viewkit::xmString(text).get(), nullptr);
}

void VkSimpleWindow::statusResizedHandler(Widget, XtPointer self, XEvent* event, Boolean*) {
  if (event->type == ConfigureNotify) static_cast<VkSimpleWindow*>(self)->fitStatusLine();
}

void VkSimpleWindow::focusHandler(Widget, XtPointer self, XEvent* event, Boolean*) {
  if (event->type == FocusIn && event->xfocus.mode == NotifyNormal)
    static_cast<VkSimpleWindow*>(self)->handleFocus();
}

void VkSimpleWindow::handleWmDeleteMessage() { theApplication->quitYourself(); }

void VkSimpleWindow::widgetDestroyed() {
  mainWindow_ = statusLine_ = nullptr;
  theApplication->removeWindow(this);
}

void VkSimpleWindow::wmDeleteCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkSimpleWindow::handleWmDeleteMessage>::call(widget, self, data);
}
