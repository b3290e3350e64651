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

#include "viewkit/forward.h"
#include "viewkit/textentry.h"
#include "viewkit/vkgraph.h"
#include "viewkit/xraii.h"

using viewkit::Forward;

namespace {

/// The zooms that the buttons step through.
constexpr std::array kSteps{0.1, 0.15, 0.25, 0.35, 0.5, 0.7, 1.0, 1.4, 2.0, 2.8, 4.0};
constexpr double kSame = 0.005;
constexpr double kFarStep = 1.5;  // below the first of them

}  // namespace

GraphStrip::GraphStrip(const char* name, Widget parent, VkGraph& graph) : VkComponent(name), graph_(graph) {
  const Widget row = XtVaCreateWidget(name, xmRowColumnWidgetClass, parent, XmNorientation, XmHORIZONTAL,
                                      XmNpacking, XmPACK_TIGHT, nullptr);
  setBaseWidget(row);
  const auto button = [&](const char* buttonName, XtCallbackProc pressed) {
    const Widget made = XtVaCreateManagedWidget(buttonName, xmPushButtonWidgetClass, row, nullptr);
    XtAddCallback(made, XmNactivateCallback, pressed, this);
  };
  button("zoomOut", &Forward<&GraphStrip::zoomOut>::call);
  zoomLevel_ = XtVaCreateManagedWidget("zoomLevel", xmLabelWidgetClass, row, XmNrecomputeSize, False,
                                       XmNlabelString, viewkit::xmString("400 %").get(), nullptr);
  button("zoomIn", &Forward<&GraphStrip::zoomIn>::call);
  button("zoom100", &Forward<&GraphStrip::zoom100>::call);
  button("zoomFit", &Forward<&GraphStrip::zoomFit>::call);
  XtVaCreateManagedWidget("findLabel", xmLabelWidgetClass, row, nullptr);
  find_ = XtVaCreateManagedWidget("find", xmTextFieldWidgetClass, row, nullptr);
  viewkit::keepControlsOut(find_);
  XtAddCallback(find_, XmNvalueChangedCallback, &Forward<&GraphStrip::findChanged>::call, this);
  XtAddCallback(find_, XmNactivateCallback, &Forward<&GraphStrip::findNext>::call, this);
  notFound_ = XtVaCreateWidget("notFound", xmLabelWidgetClass, row, nullptr);
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

void GraphStrip::viewChanged() {
  const double percent = SgGraphZoom(graph_.graphWidget()) * 100;
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%.*f %%", percent < 0.95 ? 2 : 0, percent);
  if (text.data() == viewkit::textResource(zoomLevel_, XmNlabelString)) return;
  XtVaSetValues(zoomLevel_, XmNlabelString, viewkit::xmString(text.data()).get(), nullptr);
}

void GraphStrip::findChanged() { goTo(false); }

void GraphStrip::findNext() { goTo(true); }

void GraphStrip::goTo(bool next) {
  const viewkit::XtText text(XmTextFieldGetString(find_));
  VkNode* found = nullptr;
  if (*text != '\0') {
    const std::vector<Widget> selected = SgGraphGetSelectedNodes(graph_.graphWidget());
    found = graph_.findPart(text.get(), next && !selected.empty() ? VkNode::of(selected.back()) : nullptr);
  }
  if (*text == '\0' || found)
    XtUnmanageChild(notFound_);
  else
    XtManageChild(notFound_);
  graph_.reveal(found);
}
