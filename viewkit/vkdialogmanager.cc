/// @file Posting dialogs and waiting for their answers.
#include "viewkit/vkdialogmanager.h"

#include <Xm/BulletinB.h>

#include <algorithm>
#include <optional>

#include "viewkit/forward.h"
#include "viewkit/vkapp.h"
#include "viewkit/vksimplewindow.h"
#include "viewkit/xraii.h"

/// One wait for an answer; outlives the dialog if need be.
struct VkDialogManager::Waiting {
  std::optional<VkDialogReason> reason;
};

VkDialogManager::VkDialogManager(const char* name) : VkComponent(name) {}

VkDialogManager::~VkDialogManager() { endWaiting(VkDialogReason::CANCEL); }

void VkDialogManager::popUp(unsigned char style, const char* message) {
  unpost();
  if (!baseWidget()) {
    const auto* window = theApplication->mainWindow();
    if (!window) return;
    setBaseWidget(createDialog(window->baseWidget()));
    theApplication->addShell(XtParent(baseWidget()), &cancelCallback, this);
    showTitle();
  }
  prepare(message);
  XtVaSetValues(baseWidget(), XmNdialogStyle, style, nullptr);
  XtManageChild(baseWidget());
}

void VkDialogManager::post(const char* message) { popUp(XmDIALOG_MODELESS, message); }

VkDialogReason VkDialogManager::postAndWait(const char* message) {
  popUp(XmDIALOG_FULL_APPLICATION_MODAL, message);
  if (!isPosted()) return VkDialogReason::CANCEL;
  const auto waiting = std::make_shared<Waiting>();
  waiting_ = waiting;
  while (!waiting->reason && !theApplication->quitting())
    XtAppProcessEvent(theApplication->appContext(), XtIMAll);
  if (!waiting->reason) unpost();
  theApplication->paintEverything();
  return *waiting->reason;
}

void VkDialogManager::unpost() {
  if (isPosted()) XtUnmanageChild(baseWidget());
  endWaiting(VkDialogReason::CANCEL);
}

bool VkDialogManager::isPosted() const { return baseWidget() && XtIsManaged(baseWidget()); }

void VkDialogManager::moveBy(int dx, int dy) {
  if (!isPosted()) return;
  const Widget shell = XtParent(baseWidget());
  Position x = 0, y = 0;
  Dimension width = 0, height = 0;
  XtVaGetValues(shell, XmNx, &x, XmNy, &y, XmNwidth, &width, XmNheight, &height, nullptr);
  const auto moved = [](int from, int by, int size, int screen) {
    return std::clamp(from + by, 0, std::max(0, screen - size));
  };
  const Screen* const screen = XtScreen(shell);
  XtVaSetValues(shell, XmNx, moved(x, dx, width, WidthOfScreen(screen)), XmNy,
                moved(y, dy, height, HeightOfScreen(screen)), nullptr);
}

void VkDialogManager::answer(VkDialogReason reason) {
  if (isPosted() && (waiting_ || reason != VkDialogReason::APPLY)) XtUnmanageChild(baseWidget());
  endWaiting(reason);
}

void VkDialogManager::endWaiting(VkDialogReason reason) {
  if (!waiting_) return;
  waiting_->reason = reason;
  waiting_ = nullptr;
}

void VkDialogManager::setTitle(const char* title) {
  title_ = title;
  showTitle();
}

void VkDialogManager::showTitle() {
  if (baseWidget() && !title_.empty())
    XtVaSetValues(baseWidget(), XmNdialogTitle, viewkit::xmString(title_).get(), nullptr);
}

void VkDialogManager::widgetDestroyed() { endWaiting(VkDialogReason::CANCEL); }

void VkDialogManager::okCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkDialogManager::ok>::call(widget, self, data);
}

void VkDialogManager::cancelCallback(Widget widget, XtPointer self, XtPointer data) {
  viewkit::Forward<&VkDialogManager::cancel>::call(widget, self, data);
}
