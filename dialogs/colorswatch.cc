/// @file
/// The patch: a sunken frame around an area with the colour as background.
#include "dialogs/colorswatch.h"

#include <Xm/DrawingA.h>
#include <Xm/Frame.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int kWidth = 36, kHeight = 16;  // pixels

/// A component as X counts intensities.
unsigned short intensity(float component) {
  const float shown = std::isnan(component) ? 0 : std::clamp(component, 0.0F, 1.0F);
  return static_cast<unsigned short>(std::lround(65535 * shown));
}

}  // namespace

ColorSwatch::ColorSwatch(VkPrefItem& item, Read read)
    : VkComponent("swatch"), item_(item.model()), read_(read) {
  setBaseWidget(XtVaCreateWidget(name(), xmFrameWidgetClass, XtParent(item.baseWidget()), XmNshadowType,
                                 XmSHADOW_IN, nullptr));
  patch_ = XtVaCreateManagedWidget("patch", xmDrawingAreaWidgetClass, baseWidget(), XmNwidth, kWidth,
                                   XmNheight, kHeight, nullptr);
  item.setTail(baseWidget());
  item.addCallback(VkPrefItem::shownCallback, this, &ColorSwatch::showColor);
  paint();
}

ColorSwatch::~ColorSwatch() { freeColor(); }

void ColorSwatch::widgetDestroyed() {
  freeColor();
  patch_ = nullptr;
}

void ColorSwatch::freeColor() {
  if (!patch_ || !std::exchange(allocated_, false)) return;
  Colormap colors = 0;
  XtVaGetValues(patch_, XmNcolormap, &colors, nullptr);
  XFreeColors(XtDisplay(patch_), colors, &pixel_, 1, 0);
}

void ColorSwatch::showColor(VkPrefItem*, void*, void*) { paint(); }

void ColorSwatch::paint() {
  if (!patch_) return;
  const QisRGBA color = read_(item_);
  Colormap colors = 0;
  XtVaGetValues(patch_, XmNcolormap, &colors, nullptr);
  XColor wanted{};
  wanted.red = intensity(color.red);
  wanted.green = intensity(color.green);
  wanted.blue = intensity(color.blue);
  if (!XAllocColor(XtDisplay(patch_), colors, &wanted)) return;  // a full colour map: the last colour stays
  XtVaSetValues(patch_, XmNbackground, wanted.pixel, nullptr);
  freeColor();
  pixel_ = wanted.pixel;
  allocated_ = true;
}
