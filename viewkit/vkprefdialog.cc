/// @file
/// The frame around the items of a preference dialog: scrolling, buttons, keys, answers.
#include "viewkit/vkprefdialog.h"

#include <Xm/Form.h>
#include <Xm/PushB.h>
#include <Xm/RowColumn.h>
#include <Xm/Separator.h>

#include <algorithm>
#include <string>
#include <utility>

#include "viewkit/forward.h"
#include "viewkit/preflayout.h"
#include "viewkit/scrolling.h"
#include "viewkit/textdrawing.h"
#include "viewkit/vkapp.h"

using viewkit::Forward;
using viewkit::naturalSize;

const char* const VkPrefDialog::prefCallback = "prefCallback";

namespace {

// Pixels.
constexpr int kButtonGap = 8;
constexpr int kFrameWidth = 20;  // what the window manager's frame may take of the screen
constexpr int kFrameHeight = 60;

}  // namespace

VkPrefDialog::VkPrefDialog(const char* name, std::unique_ptr<VkPrefGroup> top)
    : VkDialogManager(name), top_(std::move(top)) {}

VkPrefDialog::~VkPrefDialog() = default;

void VkPrefDialog::setItem(std::unique_ptr<VkPrefGroup> top) { top_ = std::move(top); }

Widget VkPrefDialog::createDialog(Widget parent) {
  std::string widgetName = name();
  // The window's fonts are used again: fonts that are made from the resources stay in memory to the end of
  // the program.
  XmRenderTable label = nullptr, button = nullptr, text = nullptr;
  XtVaGetValues(parent, XmNlabelRenderTable, &label, XmNbuttonRenderTable, &button, XmNtextRenderTable, &text,
                nullptr);
  Arg fonts[] = {{const_cast<char*>(XmNlabelRenderTable), reinterpret_cast<XtArgVal>(label)},
                 {const_cast<char*>(XmNbuttonRenderTable), reinterpret_cast<XtArgVal>(button)},
                 {const_cast<char*>(XmNtextRenderTable), reinterpret_cast<XtArgVal>(text)}};
  const Widget form = XmCreateFormDialog(parent, widgetName.data(), fonts, XtNumber(fonts));
  XtVaSetValues(form, XmNautoUnmanage, False, XmNshadowThickness, 0, nullptr);
  scrolled_ = viewkit::createScrolledArea(form, "items");
  XtVaSetValues(scrolled_, XmNtopAttachment, XmATTACH_FORM, XmNleftAttachment, XmATTACH_FORM,
                XmNrightAttachment, XmATTACH_FORM, nullptr);
  if (top_) {
    top_->createWidgets(scrolled_);
    XtManageChild(top_->baseWidget());
  }
  XtManageChild(scrolled_);
  createButtons(form);
  XtAddCallback(form, XmNmapCallback, &Forward<&VkPrefDialog::focusFirstItem>::call, this);
  return form;
}

void VkPrefDialog::createButtons(Widget form) {
  buttons_ = XtVaCreateWidget("buttons", xmRowColumnWidgetClass, form, XmNorientation, XmHORIZONTAL,
                              XmNpacking, XmPACK_COLUMN, XmNspacing, kButtonGap, XmNmarginWidth, kButtonGap,
                              XmNmarginHeight, kButtonGap, XmNentryAlignment, XmALIGNMENT_CENTER,
                              XmNrightAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_FORM, nullptr);
  const auto create = [this](const char* label, XtCallbackProc pressed, XtPointer self) {
    const Widget button = XtVaCreateManagedWidget(label, xmPushButtonWidgetClass, buttons_, XmNnavigationType,
                                                  XmEXCLUSIVE_TAB_GROUP, nullptr);
    XtAddCallback(button, XmNactivateCallback, pressed, self);
    return button;
  };
  VkDialogManager* const manager = this;
  const Widget ok = create("OK", &okCallback, manager);
  create("Apply", &Forward<&VkPrefDialog::apply>::call, this);
  const Widget cancel = create("Cancel", &cancelCallback, manager);
  XtManageChild(buttons_);
  XtVaSetValues(form, XmNdefaultButton, ok, XmNcancelButton, cancel, nullptr);
  separator_ = XtVaCreateManagedWidget("buttonSeparator", xmSeparatorWidgetClass, form, XmNleftAttachment,
                                       XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, XmNbottomAttachment,
                                       XmATTACH_WIDGET, XmNbottomWidget, buttons_, nullptr);
  XtVaSetValues(scrolled_, XmNbottomAttachment, XmATTACH_WIDGET, XmNbottomWidget, separator_, nullptr);
}

void VkPrefDialog::addBelowItems(Widget widget) {
  below_ = widget;
  XtVaSetValues(widget, XmNleftAttachment, XmATTACH_FORM, XmNleftOffset, viewkit::kPrefMargin,
                XmNrightAttachment, XmATTACH_FORM, XmNbottomAttachment, XmATTACH_WIDGET, XmNbottomWidget,
                separator_, nullptr);
  XtVaSetValues(scrolled_, XmNbottomWidget, widget, nullptr);
}

void VkPrefDialog::prepare(const char* message) {
  if (message) setTitle(message);
  if (top_) fitItems();
}

void VkPrefDialog::fitItems() {
  auto [width, height] = viewkit::placeItems(*top_);
  width = std::max(width, naturalSize(buttons_).width);
  XtVaSetValues(top_->baseWidget(), XmNwidth, width, XmNheight, height, nullptr);
  const int heightBelow =
      naturalSize(below_).height + naturalSize(separator_).height + naturalSize(buttons_).height;
  const Screen* const screen = XtScreen(baseWidget());
  viewkit::fitScrolledArea(scrolled_, width, height, WidthOfScreen(screen) - kFrameWidth,
                           HeightOfScreen(screen) - kFrameHeight - heightBelow);
}

void VkPrefDialog::focusFirstItem() {
  if (const Widget first = top_ ? top_->focusWidget() : nullptr)
    XmProcessTraversal(first, XmTRAVERSE_CURRENT);
}

void VkPrefDialog::tell(VkDialogReason reason) { callCallbacks(prefCallback, &reason); }

void VkPrefDialog::apply() {
  applyRefused_ = false;
  tell(VkDialogReason::APPLY);
  if (top_ && !applyRefused_) top_->applied();
}

void VkPrefDialog::ok() {
  apply();
  tell(VkDialogReason::OK);
  close(VkDialogReason::OK);
}

void VkPrefDialog::cancel() {
  tell(VkDialogReason::CANCEL);
  if (top_) top_->revert();
  close(VkDialogReason::CANCEL);
}

void VkPrefDialog::close(VkDialogReason reason) {
  answer(reason);
  if (!baseWidget()) return;
  viewkit::releaseTextDrawing(XtParent(baseWidget()));
  XtDestroyWidget(baseWidget());
}

void VkPrefDialog::widgetDestroyed() {
  scrolled_ = buttons_ = separator_ = below_ = nullptr;
  VkDialogManager::widgetDestroyed();
}
