/// @file
/// Zooming and scrolling over a plane.
#include "picture/viewport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/support/scene_like_graph.h"

namespace {

using picture::ScrollRange;
using picture::Viewport;

constexpr SgRectangle kWide{0, 0, 10000, 5000};

Viewport view(const SgRectangle& extents = kWide) {
  Viewport made;
  made.resize(800, 600);
  made.setExtents(extents);
  return made;
}

void expectNear(SgPoint a, SgPoint b, double slack = 1e-6) {
  EXPECT_NEAR(a.x, b.x, slack);
  EXPECT_NEAR(a.y, b.y, slack);
}

TEST(Viewport, ZoomIsHeldBetween10And400PerCent) {
  Viewport v = view({0, 0, 5000, 3000});
  for (const double zoom : {1e9, 4.01, 4.0}) {
    v.zoomAround(zoom, {400, 300});
    EXPECT_EQ(v.zoom(), 4);
  }
  for (const double zoom : {0.0, -3.0, 0.1}) {
    v.zoomAround(zoom, {400, 300});
    EXPECT_EQ(v.zoom(), 0.1);
  }
  v.zoomAround(std::nan(""), {400, 300});
  EXPECT_EQ(v.zoom(), 1);
}

TEST(Viewport, WhatHasNoRoomAt10PerCentIsShownWholeAtLess) {
  Viewport v = view({0, 0, 3e6, 4000});
  v.fit();
  const double fitting = v.zoom();
  EXPECT_NEAR(fitting, (800 - 48) / 3e6, 1e-9);
  EXPECT_LE(v.visible().x, 0);
  EXPECT_GE(v.visible().right(), 3e6);
  v.zoomAround(1, {400, 300});
  v.zoomAround(0, {400, 300});
  EXPECT_EQ(v.zoom(), fitting);
  // Nor is there anything farther than the plane's end.
  Viewport whole = view({-1e9, -1e9, 2e9, 2e9});
  whole.fit();
  EXPECT_GE(whole.visible().width, 2e9);
}

TEST(Viewport, ZoomLeavesThePlaceUnderThePointer) {
  Viewport v = view();
  v.scrollTo({5000, 2500}, {400, 300});
  const SgPoint pointer{150, 470};
  const SgPoint place = v.toPlane(pointer);
  for (const double zoom : {2.0, 0.7, 3.9, 1.0}) {
    v.zoomAround(zoom, pointer);
    expectNear(v.toPlane(pointer), place);
    expectNear(v.toWindow(place), pointer);
  }
}

TEST(Viewport, KeepsHoldOfTheDrawing) {
  Viewport v = view();
  Random random(3);
  for (int i = 0; i < 1000; ++i) {
    if (random.chance(30)) v.zoomAround(random.below(500) / 100.0, {random.below(800) * 1.0, 300});
    v.scrollBy(random.below(60000) - 30000.0, random.below(60000) - 30000.0);
    const SgRectangle seen = v.visible();
    const bool whole = seen.x <= kWide.x && seen.right() >= kWide.right();
    EXPECT_TRUE(whole || kWide.grownBy(30 / std::min(v.zoom(), 0.1)).contains(seen.middle()));
    EXPECT_TRUE(seen.touches(kWide));
  }
}

TEST(Viewport, FitShowsEverythingButNeverLarger) {
  Viewport v = view();
  v.fit();
  EXPECT_LT(v.zoom(), 0.09 + 0.02);
  Viewport small = view({100, 100, 300, 200});
  small.fit();
  EXPECT_EQ(small.zoom(), 1);
  expectNear(small.toPlane({400, 300}), {250, 200});
  Viewport middling = view({0, 0, 2000, 1000});
  middling.fit();
  const SgRectangle seen = middling.visible();
  EXPECT_TRUE(seen.x <= 0 && seen.y <= 0 && seen.right() >= 2000 && seen.bottom() >= 1000);
}

TEST(Viewport, TheTopIsTheUpperEdgeUnderTheMiddleGiven) {
  Viewport v = view();
  v.scrollTo({5000, 4000}, {0, 0});
  v.showTop(7000);
  EXPECT_EQ(v.zoom(), 1);
  EXPECT_NEAR(v.toWindow(SgPoint{7000, 0}).x, 400, 1e-6);
  const double top = v.toWindow(SgPoint{7000, 0}).y;
  EXPECT_TRUE(top >= 0 && top < 100) << top;
  v.showTop(0);
  const double left = v.toWindow(SgPoint{0, 0}).x;
  EXPECT_TRUE(left > 0 && left < 100) << "no empty half of the window: " << left;
  Viewport tiny = view({0, 0, 60, 20});
  tiny.showTop(0);
  EXPECT_LT(tiny.toWindow(SgPoint{0, 0}).y, 100);
  EXPECT_NEAR(tiny.toWindow(SgPoint{30, 0}).x, 400, 1e-6);
}

TEST(Viewport, RevealScrollsNoMoreThanNeeded) {
  Viewport v = view();
  v.scrollTo({5000, 2500}, {0, 0});
  v.reveal({5200, 2600, 60, 20});
  expectNear(v.toPlane({0, 0}), {5000, 2500});
  v.reveal({5790, 2600, 60, 20});
  EXPECT_NEAR(v.visible().right(), 5850 + 24, 1e-6);
  EXPECT_NEAR(v.visible().y, 2500, 1e-6);
  v.reveal({100, 100, 60, 20});
  expectNear(v.toWindow(SgPoint{130, 110}), {400, 300});
  v.reveal({0, 0, 9000, 4000});
  EXPECT_TRUE(v.visible().touches({0, 0, 9000, 4000}));
}

TEST(Viewport, ScrollBarsCoverWhatCanBeReached) {
  for (const SgRectangle& extents :
       {kWide, SgRectangle{-4e8, -1, 8e8, 2}, SgRectangle{5, 5, 0, 0}, SgRectangle{-300, 900, 50, 50}})
    for (const double zoom : {0.1, 1.0, 4.0}) {
      Viewport v = view(extents);
      v.zoomAround(zoom, {0, 0});
      for (const bool across : {true, false}) {
        const auto range = [&] { return across ? v.horizontal() : v.vertical(); };
        const ScrollRange all = range();
        EXPECT_GE(all.slider, 1);
        EXPECT_GE(all.maximum, all.slider);
        for (const int value : {0, all.maximum - all.slider, (all.maximum - all.slider) / 2}) {
          if (across)
            v.setHorizontal(value);
          else
            v.setVertical(value);
          EXPECT_NEAR(range().value, value, 1);
        }
      }
    }
}

TEST(Viewport, AnEmptyDrawingHasNothingToScroll) {
  for (const double zoom : {0.1, 1.0, 4.0}) {
    Viewport v = view({});
    v.zoomAround(zoom, {100, 50});
    v.scrollBy(-300, 700);
    for (const ScrollRange& range : {v.horizontal(), v.vertical()}) {
      EXPECT_EQ(range.value, 0);
      EXPECT_EQ(range.slider, range.maximum);
    }
  }
}

TEST(Viewport, AnEmptyDrawingAndAWindowOfNothingAreHarmless) {
  Viewport v;
  v.resize(0, -5);
  v.fit();
  v.showTop(0);
  v.reveal({});
  v.scrollBy(1e300, std::nan(""));
  EXPECT_GE(v.width(), 1);
  EXPECT_TRUE(std::isfinite(v.visible().x) && std::isfinite(v.visible().y));
}

}  // namespace
