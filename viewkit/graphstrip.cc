/// @file
/// Zoom buttons and search field.
#include "viewkit/graphstrip.h"

#include <Xm/Label.h>
#include <Xm/PushB.h>
#include <Xm/RowColumn.h>
#include <Xm/TextF.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "viewkit/forward.h"
#include "viewkit/textentry.h"
#include "viewkit/vkgraph.h"
#include "viewkit/xraii.h"

using viewkit::Forward;

namespace {

/// The zooms that the buttons step through.
constexpr std::array kSteps{0.1, 0.15, 0.25, 0.35, 0.5, 0.7, 1.0, 1.4, 2.0, 2.8, 4.0};
constexpr double kSame = 0.005;
constexpr char kFindKeys[] =
    "Shift<Key>Return: GraphStripFind(previous)\n"
    "Shift<Key>KP_Enter: GraphStripFind(previous)\n"
    "Ctrl<Key>Return: GraphStripFind(all)\n"
    "Ctrl<Key>KP_Enter: GraphStripFind(all)\n"
    "<Key>osfUp: GraphStripFind(previous)\n"
    "<Key>osfDown: GraphStripFind(next)\n"
    "<Key>osfCancel: GraphStripFind(leave)";
constexpr double kFarStep = 1.5;  // below the first of them

}  // namespace

GraphStrip::GraphStrip(const char* name, Widget parent, VkGraph& graph) : VkComponent(name), graph_(graph) {
  const Widget row = XtVaCreateWidget(name, xmRowColumnWidgetClass, parent, XmNorientation, XmHORIZONTAL,
                                      XmNpacking, XmPACK_TIGHT, nullptr);
  setBaseWidget(row);
  const auto button = [&](const char* buttonName, XtCallbackProc pressed) {
    const Widget made = XtVaCreateManagedWidget(buttonName, xmPushButtonWidgetClass, row, nullptr);
    XtAddCallback(made, XmNactivateCallback, pressed, this);
    XtAddCallback(made, XmNactivateCallback, &GraphStrip::pressedCallback, this);
  };
  button("zoomOut", &Forward<&GraphStrip::zoomOut>::call);
  zoomLevel_ = XtVaCreateManagedWidget("zoomLevel", xmLabelWidgetClass, row, XmNrecomputeSize, False,
                                       XmNlabelString, viewkit::xmString("400 %").get(), nullptr);
  button("zoomIn", &Forward<&GraphStrip::zoomIn>::call);
  button("zoom100", &Forward<&GraphStrip::zoom100>::call);
  button("zoomFit", &Forward<&GraphStrip::zoomFit>::call);
  labelWidget_ = XtVaCreateManagedWidget("findLabel", xmLabelWidgetClass, row, nullptr);
  findLabel_ = viewkit::textResource(labelWidget_, XmNlabelString);
  find_ = XtVaCreateManagedWidget("find", xmTextFieldWidgetClass, row, nullptr);
  viewkit::keepControlsOut(find_);
  XtAddCallback(find_, XmNvalueChangedCallback, &Forward<&GraphStrip::findChanged>::call, this);
  XtAddCallback(find_, XmNactivateCallback, &Forward<&GraphStrip::returnPressed>::call, this);
  static XtActionsRec actions[] = {{const_cast<char*>("GraphStripFind"), &GraphStrip::keyAction}};
  XtAppAddActions(XtWidgetToApplicationContext(row), actions, XtNumber(actions));
  XtVaSetValues(find_, XmNuserData, this, nullptr);
  XtOverrideTranslations(find_, XtParseTranslationTable(kFindKeys));
  count_ = XtVaCreateWidget("findCount", xmLabelWidgetClass, row, nullptr);
  notFound_ = XtVaCreateWidget("notFound", xmLabelWidgetClass, row, nullptr);
  showAll_ = XtVaCreateWidget("showAll", xmPushButtonWidgetClass, row, nullptr);
  XtAddCallback(showAll_, XmNactivateCallback, &Forward<&GraphStrip::showAll>::call, this);
  XtAddCallback(showAll_, XmNactivateCallback, &GraphStrip::pressedCallback, this);
  XtAddCallback(graph.graphWidget(), SgNviewChangedCallback, &Forward<&GraphStrip::viewChanged>::call, this);
  viewChanged();
}

GraphStrip::~GraphStrip() {
  if (graph_.graphWidget())
    XtRemoveCallback(graph_.graphWidget(), SgNviewChangedCallback, &Forward<&GraphStrip::viewChanged>::call,
                     this);
}

void GraphStrip::zoomOut() {
  const double zoom = SgGraphZoom(graph_.graphWidget());
  const auto step = std::find_if(kSteps.rbegin(), kSteps.rend(), [&](double s) { return s < zoom - kSame; });
  SgGraphSetZoom(graph_.graphWidget(), step != kSteps.rend() ? *step : zoom / kFarStep);
}

void GraphStrip::zoomIn() {
  const double zoom = SgGraphZoom(graph_.graphWidget());
  if (zoom * kFarStep < kSteps.front()) {
    SgGraphSetZoom(graph_.graphWidget(), zoom * kFarStep);
    return;
  }
  const auto step = std::ranges::find_if(kSteps, [&](double s) { return s > zoom + kSame; });
  if (step != kSteps.end()) SgGraphSetZoom(graph_.graphWidget(), *step);
}

void GraphStrip::zoom100() { SgGraphSetZoom(graph_.graphWidget(), 1); }

void GraphStrip::zoomFit() { SgGraphZoomToFit(graph_.graphWidget()); }

void GraphStrip::showAll() { graph_.showAll(); }

void GraphStrip::pressedCallback(Widget, XtPointer self, XtPointer data) noexcept {
  const XEvent* const event = static_cast<XmPushButtonCallbackStruct*>(data)->event;
  if (event && event->type == ButtonRelease)
    XmProcessTraversal(static_cast<GraphStrip*>(self)->graph_.graphWidget(), XmTRAVERSE_CURRENT);
}

void GraphStrip::showHowMany(std::optional<std::size_t> shown, std::size_t all) {
  if (!shown) {
    XtUnmanageChild(showAll_);
    return;
  }
  const std::string text = "Show All (" + std::to_string(*shown) + " of " + std::to_string(all) + ")";
  if (text != viewkit::textResource(showAll_, XmNlabelString))
    XtVaSetValues(showAll_, XmNlabelString, viewkit::xmString(text).get(), nullptr);
  XtManageChild(showAll_);
}

void GraphStrip::viewChanged() {
  const double percent = SgGraphZoom(graph_.graphWidget()) * 100;
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%.*f %%", percent < 0.95 ? 2 : 0, percent);
  if (text.data() == viewkit::textResource(zoomLevel_, XmNlabelString)) return;
  XtVaSetValues(zoomLevel_, XmNlabelString, viewkit::xmString(text.data()).get(), nullptr);
}

void GraphStrip::findChanged() {
  if (!typing_ && !choice_) remember();
  typing_ = true;
  goTo(0);
}

void GraphStrip::returnPressed() {
  if (choice_)
    choose();
  else
    goTo(1);
}

void GraphStrip::remember() {
  before_.clear();
  for (const Widget node : SgGraphGetSelectedNodes(graph_.graphWidget()))
    before_.emplace_back(SgNodeName(node));
}

void GraphStrip::selectRemembered() {
  SgGraphClearSelection(graph_.graphWidget());
  for (const std::string& name : before_)
    if (const VkNode* const node = graph_.find(name))
      SgGraphSelectNode(graph_.graphWidget(), node->baseWidget());
}

void GraphStrip::toField() {
  typing_ = false;
  XmProcessTraversal(find_, XmTRAVERSE_CURRENT);
  XmTextFieldSetSelection(find_, 0, XmTextFieldGetLastPosition(find_),
                          XtLastTimestampProcessed(XtDisplay(find_)));
}

void GraphStrip::startFind() {
  if (choice_) endChoice();
  toField();
}

void GraphStrip::label(const std::string& text) {
  XtVaSetValues(labelWidget_, XmNlabelString, viewkit::xmString(text).get(), nullptr);
}

void GraphStrip::startChoice(VkNodeChoice choice) {
  if (choice_) endChoice();
  clearFind();
  remember();
  choice_ = std::move(choice);
  label(choice_->label);
  toField();
}

void GraphStrip::offer(VkNode* node) {
  offered_ = node ? node->name() : "";
  if (choice_) choice_->offered(node);
}

void GraphStrip::choose() {
  VkNode* const node = graph_.find(offered_);
  if (!node) return;
  const VkNodeChoice done = *choice_;
  endChoice();
  done.chosen(node);
}

void GraphStrip::endChoice() {
  offer(nullptr);
  choice_.reset();
  label(findLabel_);
  clearFind();
  selectRemembered();
  XmProcessTraversal(graph_.graphWidget(), XmTRAVERSE_CURRENT);
}

void GraphStrip::clearFind() {
  if (XmTextFieldGetLastPosition(find_) == 0) return;
  std::string nothing;
  XmTextFieldSetString(find_, nothing.data());
  typing_ = false;
}

std::string GraphStrip::putAside() {
  if (choice_) endChoice();
  const viewkit::XtText text(XmTextFieldGetString(find_));
  clearFind();
  return text.get();
}

void GraphStrip::takeBack(const std::string& text) {
  std::string shown = text;
  XtRemoveCallback(find_, XmNvalueChangedCallback, &Forward<&GraphStrip::findChanged>::call, this);
  XmTextFieldSetString(find_, shown.data());
  XtAddCallback(find_, XmNvalueChangedCallback, &Forward<&GraphStrip::findChanged>::call, this);
}

void GraphStrip::keyAction(Widget field, XEvent*, String* words, Cardinal* count) noexcept {
  XtPointer self = nullptr;
  XtVaGetValues(field, XmNuserData, &self, nullptr);
  auto* const strip = static_cast<GraphStrip*>(self);
  const std::string_view word = *count == 1 ? words[0] : "";
  if (word == "previous") {
    strip->goTo(-1);
  } else if (word == "next") {
    strip->goTo(1);
  } else if (word == "all" && !strip->choice_) {
    strip->selectAll();
  } else if (word == "leave" && strip->choice_) {
    strip->endChoice();
  } else if (word == "leave") {
    strip->clearFind();
    XmProcessTraversal(strip->graph_.graphWidget(), XmTRAVERSE_CURRENT);
  }
}

std::vector<VkNode*> GraphStrip::found() const {
  const viewkit::XtText text(XmTextFieldGetString(find_));
  return *text == '\0' ? std::vector<VkNode*>() : graph_.findAll(text.get());
}

void GraphStrip::goTo(std::ptrdiff_t step) {
  const std::vector<VkNode*> nodes = found();
  const auto count = static_cast<std::ptrdiff_t>(nodes.size());
  if (count == 0) {
    showCount({}, 0);
    offer(nullptr);
    return;
  }
  const std::vector<Widget> selected = SgGraphGetSelectedNodes(graph_.graphWidget());
  const auto at = selected.empty() ? nodes.end() : std::ranges::find(nodes, VkNode::of(selected.back()));
  std::ptrdiff_t place = 0;
  if (at != nodes.end() && step != 0) place = (at - nodes.begin() + step + count) % count;
  showCount(static_cast<std::size_t>(place), nodes.size());
  graph_.reveal(nodes[static_cast<std::size_t>(place)]);
  offer(nodes[static_cast<std::size_t>(place)]);
}

void GraphStrip::selectAll() {
  const std::vector<VkNode*> nodes = found();
  graph_.uncover(nodes);
  selectRemembered();
  for (const VkNode* const node : nodes)
    if (XtIsManaged(node->baseWidget())) SgGraphSelectNode(graph_.graphWidget(), node->baseWidget());
  showCount({}, nodes.size());
}

void GraphStrip::showCount(std::optional<std::size_t> place, std::size_t count) {
  if (count != 0 || XmTextFieldGetLastPosition(find_) == 0)
    XtUnmanageChild(notFound_);
  else
    XtManageChild(notFound_);
  if (count == 0) {
    XtUnmanageChild(count_);
    return;
  }
  const std::string all = std::to_string(count);
  const std::string text = place ? std::to_string(*place + 1) + " of " + all : "all " + all + " selected";
  XtVaSetValues(count_, XmNlabelString, viewkit::xmString(text).get(), nullptr);
  XtManageChild(count_);
}
