/// @file
/// Makes the rows that come into sight, and releases those that go.
#include "viewkit/longcolumns.h"

#include <X11/IntrinsicP.h>

#include <X11/Xutil.h>
#include <X11/keysym.h>
#include <Xm/ScrollBar.h>

#include <algorithm>
#include <string>

#include "viewkit/forward.h"
#include "viewkit/preflayout.h"
#include "viewkit/scrolling.h"
#include "viewkit/xraii.h"

namespace viewkit {
namespace {

constexpr int kMostRows = 100;  // that all have widgets
constexpr int kFewestInSight = 5, kMostInSight = 30;
constexpr int kAround = 300;  // pixels of the screen for what else a dialog has

VkPrefText* textIn(const VkPrefGroup& column, int row) { return dynamic_cast<VkPrefText*>(column.item(row)); }

}  // namespace

bool LongColumns::isOne(const VkPrefItem& item) {
  const VkPrefGroup* const group = item.asGroup();
  if (!group || group->horizontal() || group->size() <= kMostRows) return false;
  if (const items::Item* const holder = group->model().holder(); !holder || !holder->look().horizontal)
    return false;
  for (int row = 0; row < group->size(); ++row) {
    const VkPrefText* const text = textIn(*group, row);
    if (!text || !text->model().label() || text->columns() != textIn(*group, 0)->columns()) return false;
  }
  return true;
}

LongColumns::LongColumns(const VkPrefGroup& group) {
  for (int i = 0; i < group.size(); ++i) {
    if (!isOne(*group.item(i))) continue;
    columns_.push_back({.group = group.item(i)->asGroup(), .textColumns = 0, .labelWidth = 0});
    rows_ = std::max(rows_, columns_.back().group->size());
  }
  for (Column& column : columns_) {
    XtVaSetValues(column.group->baseWidget(), XmNuserData, &column, XmNinsertPosition, &position, nullptr);
    for (int row = 0; row < column.group->size(); ++row)
      column.textColumns = std::max(column.textColumns, textIn(*column.group, row)->wantedColumns());
  }
  makeRow(0);
  for (Column& column : columns_) measure(column);

  const int advance = rowHeight_ + kPrefRowGap;
  const int room = HeightOfScreen(XtScreen(group.baseWidget())) - kAround;
  inSight_ = std::clamp(room / advance, kFewestInSight, kMostInSight);
  const auto height = static_cast<Dimension>(inSight_ * advance - kPrefRowGap);
  for (const Column& column : columns_) XtVaSetValues(column.group->baseWidget(), XmNheight, height, nullptr);
  bar_ = XtVaCreateWidget(kRowsBar, xmScrollBarWidgetClass, group.baseWidget(), XmNorientation, XmVERTICAL,
                          XmNmaximum, rows_, XmNsliderSize, inSight_, XmNpageIncrement, inSight_ - 1,
                          XmNheight, height, XmNtraversalOn, False, nullptr);
  for (const char* moved : {XmNvalueChangedCallback, XmNdragCallback})
    XtAddCallback(bar_, moved, &Forward<&LongColumns::scrolled>::call, this);
  show(0);
}

LongColumns::~LongColumns() {
  if (releasing_) XtRemoveWorkProc(*releasing_);
}

void LongColumns::measure(Column& column) {
  const VkPrefText& first = *textIn(*column.group, 0);
  const PrefSize field = naturalSize(first.baseWidget());
  rowHeight_ = std::max({rowHeight_, field.height, naturalSize(first.labelWidget()).height});
  std::set<std::string> labels;
  for (int row = 0; row < column.group->size(); ++row)
    labels.insert(*textIn(*column.group, row)->model().label());
  const auto showLabel = [&](const std::string& text) {
    XtVaSetValues(first.labelWidget(), XmNlabelString, xmString(text).get(), nullptr);
  };
  for (const std::string& label : labels) {
    showLabel(label);
    column.labelWidth = std::max(column.labelWidth, naturalSize(first.labelWidget()).width);
  }
  showLabel(*first.model().label());
  XtVaSetValues(column.group->baseWidget(), XmNwidth, column.labelWidth + kPrefLabelGap + field.width,
                nullptr);
}

void LongColumns::makeRow(int row) {
  const auto after = made_.upper_bound(row);
  for (Column& column : columns_) {
    if (row >= column.group->size()) continue;
    const VkPrefItem* const next = after == made_.end() ? nullptr : column.group->item(*after);
    column.next = next ? next->labelWidget() : nullptr;
    VkPrefText& text = *textIn(*column.group, row);
    text.createWidgets(column.group->baseWidget());
    text.widen(column.textColumns);
    XtInsertEventHandler(text.baseWidget(), KeyPressMask, False, &keyHandler, this, XtListHead);
  }
  made_.insert(row);
}

Cardinal LongColumns::position(Widget child) {
  Column* column = nullptr;
  WidgetList siblings = nullptr;
  Cardinal count = 0;
  XtVaGetValues(XtParent(child), XmNuserData, &column, XmNchildren, &siblings, XmNnumChildren, &count,
                nullptr);
  return static_cast<Cardinal>(std::find(siblings, siblings + count, column->next) - siblings);
}

void LongColumns::placeRow(int row) const {
  const int top = isInSight(row) ? (row - first_) * (rowHeight_ + kPrefRowGap) : -2 * rowHeight_;
  for (const Column& column : columns_) {
    if (row >= column.group->size()) continue;
    const VkPrefItem& item = *column.group->item(row);
    const auto put = [&](Widget widget, int x) {
      const PrefSize size = naturalSize(widget);
      XtConfigureWidget(widget, static_cast<Position>(x),
                        static_cast<Position>(top + (rowHeight_ - size.height) / 2),
                        static_cast<Dimension>(size.width), static_cast<Dimension>(size.height), 0);
    };
    put(item.labelWidget(), 0);
    put(item.baseWidget(), column.labelWidth + kPrefLabelGap);
    Widget widgets[] = {item.labelWidget(), item.baseWidget()};
    XtManageChildren(widgets, XtNumber(widgets));
  }
}

void LongColumns::releaseRow(int row) const {
  for (const Column& column : columns_)
    if (VkPrefItem* const item = column.group->item(row)) item->releaseWidgets();
}

std::optional<LongColumns::Place> LongColumns::placeOf(Widget field) const {
  for (std::size_t c = 0; c < columns_.size(); ++c)
    for (const int row : made_)
      if (const VkPrefItem* const item = columns_[c].group->item(row); item && item->baseWidget() == field)
        return Place{c, row};
  return std::nullopt;
}

bool LongColumns::focus(Place place) const {
  return XmProcessTraversal(columns_[place.column].group->item(place.row)->baseWidget(), XmTRAVERSE_CURRENT);
}

void LongColumns::show(int first) {
  const Widget focused = XmGetFocusWidget(bar_);
  const auto focusedPlace = focused ? placeOf(focused) : std::nullopt;
  first_ = first;
  const int end = std::min(first_ + inSight_, rows_);
  for (int row = first_; row < end; ++row)
    if (!made_.contains(row)) makeRow(row);
  for (const int row : made_) placeRow(row);
  if (focusedPlace && !isInSight(focusedPlace->row)) {
    const int last = std::min(end, columns_[focusedPlace->column].group->size()) - 1;
    focus({focusedPlace->column, std::clamp(focusedPlace->row, std::min(first_, last), last)});
  }
  if (!releasing_) releasing_ = XtAppAddWorkProc(XtWidgetToApplicationContext(bar_), &releaseProc, this);
}

Boolean LongColumns::releaseProc(XtPointer self) {
  auto& columns = *static_cast<LongColumns*>(self);
  columns.releasing_.reset();
  std::erase_if(columns.made_, [&](int row) {
    const bool gone = !columns.isInSight(row);
    if (gone) columns.releaseRow(row);
    return gone;
  });
  return True;
}

void LongColumns::scrolled() {
  int value = 0;
  XtVaGetValues(bar_, XmNvalue, &value, nullptr);
  if (value != first_) show(value);
}

void LongColumns::reveal(int row) {
  const int first = std::clamp(first_, row - inSight_ + 1, row);
  if (first != first_) XmScrollBarSetValues(bar_, first, inSight_, 1, inSight_ - 1, True);
}

bool LongColumns::moveFocus(Place from, bool forward) {
  const int length = columns_[from.column].group->size();
  Place to{from.column, from.row + (forward ? 1 : -1)};
  if (to.row < 0 || to.row >= length) {
    if (forward ? from.column + 1 == columns_.size() : from.column == 0) return false;
    to.column += forward ? 1U : static_cast<std::size_t>(-1);
    to.row = forward ? 0 : columns_[to.column].group->size() - 1;
  }
  reveal(to.row);
  return focus(to);
}

void LongColumns::keyHandler(Widget field, XtPointer self, XEvent* event, Boolean* goOn) {
  const KeySym symbol = XLookupKeysym(&event->xkey, 0);
  if (symbol != XK_Tab || (event->xkey.state & (ControlMask | Mod1Mask))) return;
  auto& columns = *static_cast<LongColumns*>(self);
  const auto from = columns.placeOf(field);
  if (!from) return;
  callForToolkit([&] {
    if (columns.moveFocus(*from, !(event->xkey.state & ShiftMask))) *goOn = False;
  });
}

}  // namespace viewkit
