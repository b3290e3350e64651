/// @file
/// Posting dialogs and waiting for their answers.
#include "viewkit/vkdialogmanager.h"

#include <Xm/BulletinB.h>

#include <optional>

#include "viewkit/forward.h"
#include "viewkit/vkapp.h"
#include "viewkit/vksimplewindow.h"
#include "viewkit/xraii.h"

namespace {

constexpr int kBeside = 24;  // pixels between the corners of dialogs that are placed beside each other

}  // namespace

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
  ++awaited_;
  while (!waiting->reason && !theApplication->quitting())
    XtAppProcessEvent(theApplication->appContext(), XtIMAll);
  --awaited_;
  if (!waiting->reason) unpost();
  theApplication->paintEverything();
  return *waiting->reason;
}

void VkDialogManager::unpost() {
  if (isPosted()) XtUnmanageChild(baseWidget());
  endWaiting(VkDialogReason::CANCEL);
}

bool VkDialogManager::isPosted() const { return baseWidget() && XtIsManaged(baseWidget()); }

void VkDialogManager::placeBeside(const VkDialogManager& other) {
  if (!isPosted() || !other.isPosted()) return;
  const Widget shell = XtParent(baseWidget());
  Position x = 0, y = 0;
  Dimension width = 0, height = 0;
  XtVaGetValues(XtParent(other.baseWidget()), XmNx, &x, XmNy, &y, nullptr);
  XtVaGetValues(shell, XmNwidth, &width, XmNheight, &height, nullptr);
  const int left = x + kBeside, top = y + kBeside;
  const Screen* const screen = XtScreen(shell);
  if (left + width > WidthOfScreen(screen) || top + height > HeightOfScreen(screen)) return;
  XtVaSetValues(shell, XmNx, left, XmNy, top, nullptr);
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
