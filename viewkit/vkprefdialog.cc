/// @file
/// The frame around the items of a preference dialog: scrolling, buttons, keys, answers.
#include "viewkit/vkprefdialog.h"

#include <Xm/Form.h>
#include <Xm/Label.h>
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
#include "viewkit/xraii.h"

using viewkit::Forward;
using viewkit::naturalSize;

const char* const VkPrefDialog::prefCallback = "prefCallback";

namespace {

// Pixels.
constexpr int kButtonGap = 8;
constexpr int kFrameWidth = 20;  // what the window manager's frame may take of the screen
constexpr int kFrameHeight = 60;

const char* const kLimit = "limit";  // the notice that tells how long a text may be

/// The path to an item from the top of its tree.
std::string pathTo(const items::Item& item) {
  const items::Item* const holder = item.holder();
  if (!holder) return {};
  return holder->holder() ? pathTo(*holder) + "." + item.name() : item.name();
}

}  // namespace

VkPrefDialog::VkPrefDialog(const char* name, std::unique_ptr<VkPrefGroup> top) : VkDialogManager(name) {
  setItem(std::move(top));
}

VkPrefDialog::~VkPrefDialog() = default;

void VkPrefDialog::setItem(std::unique_ptr<VkPrefGroup> top) {
  top_ = std::move(top);
  if (!top_) return;
  top_->addCallback(VkPrefItem::refusedCallback, this, &VkPrefDialog::itemRefused);
  top_->addCallback(VkPrefItem::shownCallback, this, &VkPrefDialog::itemShown);
}

void VkPrefDialog::itemRefused(VkPrefItem*, void*, void* data) {
  const auto& item = *static_cast<const items::Item*>(data);
  const VkPrefItem* const shown = top_->find(pathTo(item));
  const Widget label = shown ? shown->labelWidget() : nullptr;
  setNotice(kLimit, VkNotice{(label ? viewkit::textResource(label, XmNlabelString) : item.name()) +
                             ": at most " + std::to_string(item.look().capacity) + " characters"});
}

void VkPrefDialog::itemShown(VkPrefItem*, void*, void*) {
  if (shownNotices_.contains(kLimit)) setNotice(kLimit, std::nullopt);
}

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
  notices_ = XtVaCreateWidget("notices", xmRowColumnWidgetClass, form, XmNorientation, XmVERTICAL,
                              XmNleftAttachment, XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
  for (auto& [name, shown] : shownNotices_) createNoticeRow(name, shown);
  createButtons(form);
  if (!shownNotices_.empty()) XtManageChild(notices_);
  stackAboveButtons();
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
  create("Apply", &Forward<&VkPrefDialog::applyPressed>::call, this);
  const Widget cancel = create("Cancel", &cancelCallback, manager);
  XtManageChild(buttons_);
  XtVaSetValues(form, XmNdefaultButton, ok, XmNcancelButton, cancel, nullptr);
  separator_ = XtVaCreateManagedWidget("buttonSeparator", xmSeparatorWidgetClass, form, XmNleftAttachment,
                                       XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, XmNbottomAttachment,
                                       XmATTACH_WIDGET, XmNbottomWidget, buttons_, nullptr);
}

void VkPrefDialog::addBelowItems(Widget widget) {
  below_ = widget;
  XtVaSetValues(widget, XmNleftAttachment, XmATTACH_FORM, XmNleftOffset, viewkit::kPrefMargin,
                XmNrightAttachment, XmATTACH_FORM, nullptr);
  stackAboveButtons();
}

void VkPrefDialog::stackAboveButtons() {
  Widget under = separator_;
  for (const Widget widget : {shownNotices_.empty() ? nullptr : notices_, below_, scrolled_}) {
    if (!widget) continue;
    XtVaSetValues(widget, XmNbottomAttachment, XmATTACH_WIDGET, XmNbottomWidget, under, nullptr);
    under = widget;
  }
}

void VkPrefDialog::setNotice(const std::string& name, std::optional<VkNotice> notice) {
  const bool isUp = notices_ && XtIsRealized(notices_);
  // The form would leave it to chance which of the widgets in it gets more room: it is told all heights.
  if (isUp) XtVaSetValues(baseWidget(), XmNresizePolicy, XmRESIZE_NONE, nullptr);
  const int heightBefore = noticesSize().height;
  if (const auto shown = shownNotices_.find(name); shown != shownNotices_.end()) {
    if (const Widget row = shown->second.row) {
      // The focus must not be in it any more: the dialog remembers the button that has it.
      XtUnmanageChild(row);
      viewkit::releaseTextDrawing(row);
      XtDestroyWidget(row);
    }
    shownNotices_.erase(shown);
  }
  if (notice) shownNotices_[name].notice = *std::move(notice);
  if (!notices_) return;
  if (notice) createNoticeRow(name, shownNotices_[name]);
  if (isUp) makeRoom(noticesSize().height - heightBefore);
  // A form goes by the heights that its widgets once had, and by those of managed ones only.
  XtVaSetValues(notices_, XmNtopAttachment, XmATTACH_OPPOSITE_WIDGET, XmNtopWidget, separator_, XmNtopOffset,
                -noticesSize().height, nullptr);
  if (!shownNotices_.empty()) XtManageChild(notices_);
  stackAboveButtons();
  if (shownNotices_.empty()) XtUnmanageChild(notices_);
}

viewkit::PrefSize VkPrefDialog::noticesSize() const {
  return shownNotices_.empty() ? viewkit::PrefSize{0, 0} : naturalSize(notices_);
}

void VkPrefDialog::makeRoom(int difference) {
  Dimension width = 0, height = 0;
  XtVaGetValues(baseWidget(), XmNwidth, &width, XmNheight, &height, nullptr);
  const int limit = std::max<int>(height, HeightOfScreen(XtScreen(baseWidget())) - kFrameHeight);
  XtVaSetValues(baseWidget(), XmNwidth, std::max<int>(width, noticesSize().width), XmNheight,
                std::min(height + difference, limit), nullptr);
}

void VkPrefDialog::createNoticeRow(const std::string& name, ShownNotice& shown) {
  const VkNotice& notice = shown.notice;
  const Widget row = shown.row =
      XtVaCreateWidget((name + "Notice").c_str(), xmFormWidgetClass, notices_, nullptr);
  const Widget text = XtVaCreateManagedWidget(
      "text", xmLabelWidgetClass, row, XmNalignment, XmALIGNMENT_BEGINNING, XmNlabelString,
      viewkit::xmString(notice.text).get(), XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment,
      XmATTACH_FORM, XmNleftAttachment, XmATTACH_FORM, nullptr);
  if (notice.button.empty()) {
    XtVaSetValues(text, XmNrightAttachment, XmATTACH_FORM, nullptr);
  } else {
    const Widget button = XtVaCreateManagedWidget(
        "button", xmPushButtonWidgetClass, row, XmNlabelString, viewkit::xmString(notice.button).get(),
        XmNnavigationType, XmEXCLUSIVE_TAB_GROUP, XmNtopAttachment, XmATTACH_FORM, XmNbottomAttachment,
        XmATTACH_FORM, XmNrightAttachment, XmATTACH_FORM, nullptr);
    XtVaSetValues(text, XmNrightAttachment, XmATTACH_WIDGET, XmNrightWidget, button, XmNrightOffset,
                  kButtonGap, nullptr);
    XtAddCallback(button, XmNactivateCallback, &Forward<&VkPrefDialog::noticePressed>::call, this);
  }
  // Until it is realized, the row doesn't know how high it is; in a dialog that is up, room is made for it
  // now.
  if (XtIsRealized(notices_)) XtRealizeWidget(row);
  XtManageChild(row);
}

void VkPrefDialog::noticePressed(Widget button, XtPointer) {
  const auto found = std::ranges::find_if(
      shownNotices_, [&](const auto& shown) { return shown.second.row == XtParent(button); });
  if (found == shownNotices_.end()) return;
  const auto pressed = found->second.notice.pressed;  // a copy: it may take the notice away
  pressed();
}

void VkPrefDialog::prepare(const char* message) {
  if (message) setTitle(message);
  if (top_) fitItems();
}

void VkPrefDialog::fitItems() {
  auto [width, height] = viewkit::placeItems(*top_);
  const auto notices = noticesSize();
  width = std::max({width, naturalSize(buttons_).width, notices.width});
  XtVaSetValues(top_->baseWidget(), XmNwidth, width, XmNheight, height, nullptr);
  const int heightBelow = notices.height + naturalSize(below_).height + naturalSize(separator_).height +
                          naturalSize(buttons_).height;
  const Screen* const screen = XtScreen(baseWidget());
  viewkit::fitScrolledArea(scrolled_, width, height, WidthOfScreen(screen) - kFrameWidth,
                           HeightOfScreen(screen) - kFrameHeight - heightBelow);
}

void VkPrefDialog::focusFirstItem() {
  if (const Widget first = top_ ? top_->focusWidget() : nullptr)
    XmProcessTraversal(first, XmTRAVERSE_CURRENT);
}

void VkPrefDialog::tell(VkDialogReason reason) { callCallbacks(prefCallback, &reason); }

bool VkPrefDialog::apply() {
  outcome_ = Outcome::applied;
  tell(VkDialogReason::APPLY);
  if (outcome_ != Outcome::applied) return false;
  if (top_) top_->applied();
  return true;
}

void VkPrefDialog::ok() {
  apply();
  if (outcome_ == Outcome::faulty) return;
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
  scrolled_ = buttons_ = separator_ = notices_ = below_ = nullptr;
  for (auto& [name, shown] : shownNotices_) shown.row = nullptr;
  VkDialogManager::widgetDestroyed();
}
