/// @file
/// The shell, main window and status line of a top-level window.
#include "viewkit/vksimplewindow.h"

#include <Xm/Label.h>
#include <Xm/MainW.h>

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

  mainWindow_ = XtVaCreateManagedWidget("mainWindow", xmMainWindowWidgetClass, shell, nullptr);
  statusLine_ =
      XtVaCreateManagedWidget("status", xmLabelWidgetClass, mainWindow_, XmNalignment, XmALIGNMENT_BEGINNING,
                              XmNrecomputeSize, False, XmNlabelString, viewkit::xmString(" ").get(), nullptr);
  XtVaSetValues(mainWindow_, XmNmessageWindow, statusLine_, nullptr);
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
  XtMapWidget(baseWidget());
}

void VkSimpleWindow::hide() {
  if (baseWidget() && XtIsRealized(baseWidget())) XtUnmapWidget(baseWidget());
}

void VkSimpleWindow::setTitle(const char* title) {
  if (baseWidget()) XtVaSetValues(baseWidget(), XmNtitle, title, nullptr);
}

void VkSimpleWindow::setStatus(const char* text) {
  status_ = text;
  showOnStatusLine(status_);
}

void VkSimpleWindow::showOnStatusLine(const std::string& text) {
  // A blank keeps the line's height when there is nothing to say.
  if (statusLine_)
    XtVaSetValues(statusLine_, XmNlabelString, viewkit::xmString(text.empty() ? " " : text).get(), nullptr);
}

void VkSimpleWindow::handleWmDeleteMessage() { theApplication->quitYourself(); }

void VkSimpleWindow::widgetDestroyed() {
  mainWindow_ = statusLine_ = nullptr;
  theApplication->removeWindow(this);
}

void VkSimpleWindow::wmDeleteCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkSimpleWindow::handleWmDeleteMessage>::call(widget, self, data);
}
