/// @file
/// The widgets of the simple items.
#include "viewkit/vkprefitem.h"

#include <X11/Xutil.h>
#include <X11/keysym.h>
#include <Xm/CascadeBG.h>
#include <Xm/Label.h>
#include <Xm/PushBG.h>
#include <Xm/RowColumn.h>
#include <Xm/SeparatoG.h>
#include <Xm/TextF.h>
#include <Xm/ToggleB.h>
#include <Xm/XmP.h>

#include <algorithm>
#include <cstdlib>

#include "viewkit/forward.h"
#include "viewkit/textdrawing.h"
#include "viewkit/textentry.h"
#include "viewkit/xraii.h"

using items::Item;
using items::ItemKind;
using items::Look;
using viewkit::Forward;

namespace {

Widget createEntry(Widget menu, const std::string& label) {
  return XtVaCreateWidget("entry", xmPushButtonGadgetClass, menu, XmNlabelString,
                          viewkit::xmString(label).get(), nullptr);
}

constexpr std::size_t kUndoSteps = 1000;
constexpr std::size_t kMostShown = 1000;  // characters of a text that is shown as a whole
constexpr std::size_t kBeginning = 24;    // and that are shown of a longer one
constexpr int kWidened = 12;              // columns: the widest that a text field becomes for its text

}  // namespace

const char* const VkPrefItem::shownCallback = "shownCallback";
const char* const VkPrefItem::refusedCallback = "refusedCallback";

VkPrefItem::VkPrefItem(items::Item& item) : VkComponent(item.name()), item_(item) { item_.watch(this); }

VkPrefItem::VkPrefItem(std::unique_ptr<items::Item> item) : VkPrefItem(*item) { own_ = std::move(item); }

VkPrefItem::~VkPrefItem() {
  item_.watch(nullptr);
  if (label_) XtDestroyWidget(label_);
}

void VkPrefItem::shown() {
  showValue();
  callCallbacks(shownCallback, nullptr);
}

void VkPrefItem::refused(Item& item) {
  showValue();
  callCallbacks(refusedCallback, &item);
}

void VkPrefItem::restyled() {
  if (!baseWidget()) return;
  XtSetSensitive(baseWidget(), activated());
  if (label_) XtSetSensitive(label_, activated());
  // Without one, the label keeps the text that the resources gave it.
  if (const auto& label = item_.label())
    XtVaSetValues(label_ ? label_ : baseWidget(), XmNlabelString, viewkit::xmString(*label).get(), nullptr);
}

void VkPrefItem::widgetDestroyed() { label_ = tail_ = nullptr; }

void VkPrefItem::releaseWidgets() {
  for (const Widget widget : {label_, baseWidget()}) {
    if (!widget) continue;
    if (widget == baseWidget()) setBaseWidget(nullptr);
    viewkit::releaseTextDrawing(widget);
    XtDestroyWidget(widget);
  }
  widgetDestroyed();
}

void VkPrefItem::createLabel(Widget parent) {
  label_ = XtVaCreateWidget((std::string(name()) + "Label").c_str(), xmLabelWidgetClass, parent, XmNalignment,
                            XmALIGNMENT_BEGINNING, nullptr);
}

void VkPrefItem::showIn(Widget base) {
  setBaseWidget(base);
  restyled();
  showValue();
}

VkPrefText::VkPrefText(const char* name, int columns)
    : VkPrefValue(std::make_unique<Item>(ItemKind::text, name, Look{.columns = columns})) {}

void VkPrefText::createWidgets(Widget parent) {
  createLabel(parent);
  showIn(XtVaCreateWidget(baseName().c_str(), xmTextFieldWidgetClass, parent, XmNcolumns, columns(),
                          XmNcursorPositionVisible, False, XmNnavigationType, XmEXCLUSIVE_TAB_GROUP,
                          nullptr));
  XtAddCallback(baseWidget(), XmNvalueChangedCallback, &Forward<&VkPrefText::typed>::call, this);
  viewkit::keepControlsOut(baseWidget());
  XtAddCallback(baseWidget(), XmNmodifyVerifyCallback, &Forward<&VkPrefText::changes>::call, this);
  XtAddEventHandler(baseWidget(), KeyPressMask, False, &keyHandler, this);
  XtAddCallback(baseWidget(), XmNfocusCallback, &Forward<&VkPrefText::showCursor>::call, this);
  XtAddCallback(baseWidget(), XmNlosingFocusCallback, &Forward<&VkPrefText::hideCursor>::call, this);
}

std::string VkPrefText::shownText() const {
  const std::string& text = getValue();
  const std::size_t length = std::mbstowcs(nullptr, text.c_str(), 0);
  // Bytes that mean nothing in the user's language can't be shown, and are kept all the same. (Given them, a
  // text field whose changes are looked at frees its memory twice.)
  if (length == static_cast<std::size_t>(-1)) return {};
  if (length <= kMostShown) return text;
  std::size_t bytes = 0;
  for (std::size_t i = 0; i < kBeginning; ++i)
    bytes += static_cast<std::size_t>(std::max(std::mblen(text.c_str() + bytes, text.size() - bytes), 1));
  return text.substr(0, bytes) + "... (" + std::to_string(length) + " characters)";
}

void VkPrefText::showValue() {
  if (!baseWidget()) return;
  std::string text = shownText();
  // What is being typed stands there already.
  if (text == viewkit::XtText(XmTextFieldGetString(baseWidget())).get()) return;
  showing_ = true;
  XmTextFieldSetString(baseWidget(), text.data());
  showing_ = false;
  XmTextFieldSetEditable(baseWidget(), text.size() == getValue().size() || text.empty());
}

int VkPrefText::wantedColumns() const {
  return std::max(columns(), std::min(static_cast<int>(getValue().size()) + 1, kWidened));
}

void VkPrefText::widen(int columns) {
  if (baseWidget()) XtVaSetValues(baseWidget(), XmNcolumns, columns, nullptr);
}

void VkPrefText::typed() {
  if (showing_) return;
  const XmTextPosition cursor = cursor_;
  std::string text = viewkit::XtText(XmTextFieldGetString(baseWidget())).get();
  if (!model().has_room_for(text)) {
    model().refuse();  // the field shows again what it did
    XmTextFieldSetInsertionPosition(baseWidget(), cursor);
    return;
  }
  before_.push_back({getValue(), cursor});
  edit(std::move(text));
  if (before_.size() > kUndoSteps) before_.pop_front();
}

void VkPrefText::changes(XmTextVerifyCallbackStruct& change) { cursor_ = change.currInsert; }

void VkPrefText::undoTyping() {
  if (before_.empty()) return;
  const Before before = std::move(before_.back());
  before_.pop_back();
  edit(before.text);
  XmTextFieldSetInsertionPosition(baseWidget(), before.cursor);
}

void VkPrefText::keyHandler(Widget, XtPointer self, XEvent* event, Boolean*) {
  XKeyEvent& key = event->xkey;
  const unsigned modifiers = key.state & (ControlMask | ShiftMask | Mod1Mask);
  if (modifiers == ControlMask && XLookupKeysym(&key, 0) == XK_z)
    static_cast<VkPrefText*>(self)->undoTyping();
}

void VkPrefText::showCursor() { XtVaSetValues(baseWidget(), XmNcursorPositionVisible, True, nullptr); }

void VkPrefText::hideCursor() { XtVaSetValues(baseWidget(), XmNcursorPositionVisible, False, nullptr); }

VkPrefToggle::VkPrefToggle(const char* name, bool forceLabelFormat)
    : VkPrefValue(
          std::make_unique<Item>(ItemKind::toggle, name, Look{.force_label_format = forceLabelFormat})) {}

void VkPrefToggle::createWidgets(Widget parent) {
  const bool labelInFront = model().look().force_label_format;
  if (labelInFront) createLabel(parent);
  showIn(XtVaCreateWidget(baseName().c_str(), xmToggleButtonWidgetClass, parent, XmNindicatorType,
                          model().in_radio() ? XmONE_OF_MANY_ROUND : XmN_OF_MANY, XmNnavigationType,
                          XmEXCLUSIVE_TAB_GROUP, nullptr));
  // The indicator takes its height from the text, even if that is blank.
  if (labelInFront) XtVaSetValues(baseWidget(), XmNlabelString, viewkit::xmString(" ").get(), nullptr);
  XtAddCallback(baseWidget(), XmNvalueChangedCallback, &Forward<&VkPrefToggle::clicked>::call, this);
}

void VkPrefToggle::showValue() {
  if (baseWidget()) XmToggleButtonSetState(baseWidget(), getValue(), False);
}

void VkPrefToggle::clicked() {
  // The user turns off a toggle of a radio by turning on another.
  if (model().in_radio() && getValue())
    showValue();
  else
    edit(XmToggleButtonGetState(baseWidget()));
}

VkPrefOption::VkPrefOption(const char* name, int numEntries)
    : VkPrefValue(std::make_unique<Item>(
          ItemKind::option, name,
          Look{.entries = std::vector<std::string>(static_cast<std::size_t>(numEntries))})) {}

void VkPrefOption::setLabel(int index, const char* text) {
  if (!hasEntry(index)) return;
  model().look().entries[static_cast<std::size_t>(index)] = text;
  if (!entries_.empty())
    XtVaSetValues(entries_[static_cast<std::size_t>(index)], XmNlabelString, viewkit::xmString(text).get(),
                  nullptr);
}

void VkPrefOption::createWidgets(Widget parent) {
  createLabel(parent);
  std::string menuName = std::string(name()) + "Menu";
  // The menu's shell is given them, too; otherwise it would make some of its own from the resources, which
  // stay in memory to the end of the program.
  const auto fonts = reinterpret_cast<XtArgVal>(XmeGetDefaultRenderTable(parent, XmBUTTON_FONTLIST));
  Arg fontValues[] = {{const_cast<char*>(XmNbuttonRenderTable), fonts},
                      {const_cast<char*>(XmNlabelRenderTable), fonts}};
  const Widget menu = XmCreatePulldownMenu(parent, menuName.data(), fontValues, XtNumber(fontValues));
  for (const std::string& entry : model().look().entries) {
    entries_.push_back(createEntry(menu, entry));
    XtAddCallback(entries_.back(), XmNactivateCallback, &Forward<&VkPrefOption::picked>::call, this);
  }
  XtManageChildren(entries_.data(), static_cast<Cardinal>(entries_.size()));
  beyond_ = createEntry(menu, "");

  std::string optionName = baseName();
  Arg values[] = {{const_cast<char*>(XmNsubMenuId), reinterpret_cast<XtArgVal>(menu)},
                  {const_cast<char*>(XmNmarginWidth), 0},
                  {const_cast<char*>(XmNmarginHeight), 0},
                  {const_cast<char*>(XmNspacing), 0},
                  {const_cast<char*>(XmNnavigationType), XmEXCLUSIVE_TAB_GROUP}};
  showIn(XmCreateOptionMenu(parent, optionName.data(), values, XtNumber(values)));
  XtUnmanageChild(XmOptionLabelGadget(baseWidget()));
}

void VkPrefOption::widgetDestroyed() {
  entries_.clear();
  beyond_ = nullptr;
  VkPrefItem::widgetDestroyed();
}

Widget VkPrefOption::focusWidget() const {
  return baseWidget() ? XmOptionButtonGadget(baseWidget()) : nullptr;
}

void VkPrefOption::showValue() {
  if (!baseWidget()) return;
  Widget shown = beyond_;
  if (hasEntry(getValue()))
    shown = entries_[static_cast<std::size_t>(getValue())];
  else
    XtVaSetValues(beyond_, XmNlabelString, viewkit::xmString(label(getValue())).get(), nullptr);
  XtVaSetValues(baseWidget(), XmNmenuHistory, shown, nullptr);
}

void VkPrefOption::picked(Widget entry, XtPointer) {
  edit(static_cast<int>(std::ranges::find(entries_, entry) - entries_.begin()));
}

VkPrefLabel::VkPrefLabel(const char* name) : VkPrefItem(std::make_unique<Item>(ItemKind::label, name)) {}

void VkPrefLabel::createWidgets(Widget parent) {
  showIn(XtVaCreateWidget(baseName().c_str(), xmLabelWidgetClass, parent, XmNalignment, XmALIGNMENT_BEGINNING,
                          nullptr));
}

VkPrefSeparator::VkPrefSeparator(const char* name)
    : VkPrefItem(std::make_unique<Item>(ItemKind::separator, name)) {}

void VkPrefSeparator::createWidgets(Widget parent) {
  showIn(XtVaCreateWidget(baseName().c_str(), xmSeparatorGadgetClass, parent, nullptr));
}
