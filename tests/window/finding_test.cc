/// @file
/// Finding records by their names, and seeing them.
#include <algorithm>

#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/window/editorfixture.h"
#include "tests/window/screen.h"

namespace {

using support::WidgetInfo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Finding : public EditorTest {
 protected:
  explicit Finding(support::Program::Start how = {}) : EditorTest(24, std::move(how)) {}

  void openHarbour() {
    Qis scene = samples::harbour();
    ASSERT_EQ(qiSaveAsQb2(scene, path("harbour.quil")), 1);
    editor_.open(path("harbour.quil"));
  }
  std::string count() { return editor_.await("findCount").label; }
};

TEST_F(Finding, KeysGoToTheGraphAfterAClickOnAButtonBelowIt) {
  openHarbour();
  editor_.click("strip/zoomIn");
  EXPECT_TRUE(support::waitFor([&] { return editor_.graphWidget().focused; }));
  EXPECT_GT(editor_.graph().zoom, 1);
  press("0");
  EXPECT_EQ(editor_.graph().zoom, 1);
  // Who goes there by keys stays there.
  press("Tab");
  editor_.await("strip/zoomOut");
  press("space");
  EXPECT_FALSE(editor_.graphWidget().focused);
  EXPECT_LT(editor_.graph().zoom, 1);
}

TEST_F(Finding, ARecordIsFoundByItsName) {
  openHarbour();
  editor_.key("Tab");
  find("sea");
  EXPECT_THAT(count(), StartsWith("1 of "));
  ASSERT_EQ(selected().size(), 1u);
  const std::string first = selected()[0];
  press("Return");
  EXPECT_THAT(count(), StartsWith("2 of "));
  EXPECT_THAT(selected(), testing::Not(ElementsAre(first)));
  press("Return", {"Shift_L"});
  EXPECT_THAT(selected(), ElementsAre(first));
  press("Return", {"Control_L"});
  EXPECT_THAT(count(), HasSubstr("selected"));
  EXPECT_GT(selected().size(), 1u);
  press("Escape");
  EXPECT_EQ(editor_.await("strip/find").text, "");
  EXPECT_TRUE(editor_.graphWidget().focused);
  EXPECT_FALSE(editor_.find([](const WidgetInfo& w) { return w.isAt("findCount") && w.viewable; }));
}

TEST_F(Finding, WhatIsFoundIsNamedInAPictureTooSmallForNames) {
  openHarbour();
  editor_.click("strip/zoomOut");
  while (editor_.graph().zoom >= 0.4) editor_.click("strip/zoomOut");
  const support::Box node = editor_.graph().node("mat_3").box;
  const auto pixel = [&](const Picture& screen, int x, int y) {
    return screen.pixels[static_cast<std::size_t>(y * screen.width + x)];
  };
  const Picture before = pictureOf(server_.display());
  const unsigned long tint = pixel(before, node.centre().x, node.centre().y);
  const auto tintedBesideIt = [&](const Picture& screen) {
    int count = 0;
    for (int y = node.y; y < node.y + node.height; ++y)
      for (int x = node.x - 8; x < node.x - 2; ++x) count += pixel(screen, x, y) == tint;
    return count;
  };
  EXPECT_EQ(tintedBesideIt(before), 0);
  find("mat_3");
  ASSERT_THAT(selected(), ElementsAre("mat_3"));
  ASSERT_EQ(editor_.graph().node("mat_3").box.centre(), node.centre()) << "was in sight";
  editor_.settle();
  EXPECT_GT(tintedBesideIt(pictureOf(server_.display())), 3 * node.height);
}

TEST_F(Finding, WhereHundredsAreSelectedTheirNamesHideNothing) {
  Qis scene = samples::city(830, 0);
  ASSERT_EQ(qiSaveAsQb2(scene, path("city.quil")), 1);
  editor_.open(path("city.quil"));
  editor_.click("strip/zoomFit");
  const unsigned long tint = editor_.graph().node("mat_1").tint;  // of no node at the head of an area
  const auto tinted = [&] {
    editor_.settle();
    return std::ranges::count(pictureOf(server_.display()).pixels, tint);
  };
  EXPECT_EQ(tinted(), 0);
  find("mat_1");
  EXPECT_TRUE(support::waitFor([&] { return tinted() > 100; })) << selected().size() << " selected";
  press("Escape");
  press("a", {"Control_L"});
  EXPECT_TRUE(support::waitFor([&] { return selected().size() > 900; }));
  EXPECT_TRUE(support::waitFor([&] { return tinted() == 0; }));
}

TEST_F(Finding, ZoomingInKeepsWhatWasFoundInSight) {
  openHarbour();
  editor_.click("strip/zoomFit");
  const auto all = editor_.graph();
  const auto left = std::ranges::min(all.nodes, {}, [](const auto& node) { return node.box.x; });
  const auto right = std::ranges::max(all.nodes, {}, [](const auto& node) { return node.box.x; });
  const support::Box canvas = editor_.graphWidget().box;
  const auto inSight = [&](const std::string& name) {
    const support::Box box = editor_.graph().node(name).box;
    return box.x >= canvas.x && box.x + box.width <= canvas.x + canvas.width && box.y >= canvas.y &&
           box.y + box.height <= canvas.y + canvas.height;
  };
  for (const std::string& name : {left.name, right.name}) {
    editor_.click("strip/zoomFit");
    find(name);
    ASSERT_THAT(selected(), ElementsAre(name));
    ASSERT_LT(editor_.graph().zoom, 1);
    editor_.click("strip/zoom100");
    EXPECT_EQ(editor_.graph().zoom, 1);
    EXPECT_TRUE(inSight(name)) << name;
    EXPECT_FALSE(inSight(name == left.name ? right.name : left.name));
    for (int step = 0; step < 3; ++step) editor_.click("strip/zoomIn");
    EXPECT_TRUE(inSight(name)) << name;
  }
}

TEST_F(Finding, KindsAreAFilterAndAnotherSceneClearsTheField) {
  openHarbour();
  find("mat:");
  for (const std::string& name : selected()) EXPECT_THAT(name, StartsWith("mat_"));
  press("Return", {"Control_L"});
  for (const std::string& name : selected()) EXPECT_THAT(name, StartsWith("mat_"));
  EXPECT_GT(selected().size(), 1u);
  find("obj_1");
  EXPECT_THAT(selected(), ElementsAre("obj_1")) << "what was typed before is replaced";
  editor_.open(table());
  EXPECT_EQ(editor_.await("strip/find").text, "");
  EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(Finding, RecordNamesAreASecondLineOfNodes) {
  openHarbour();
  const auto height = [&] { return editor_.graph().node("obj_1").box.height; };
  const int before = height();
  editor_.chooseMenu({"View", "Record Names"});
  EXPECT_GT(height(), before + 8);
  EXPECT_EQ(editor_.graph().node("obj_1").label, "obj_1");
  editor_.chooseMenu({"View", "Record Names"});
  EXPECT_EQ(height(), before);
}

TEST_F(Finding, ANameThatIsChangedIsShownAtOnce) {
  editor_.open(table());
  editor_.chooseMenu({"View", "Record Names"});
  editor_.toggleEditMode();
  const int before = editor_.graph().node("obj_7").box.width;
  editor_.doubleClickNode("obj_7");
  editor_.fillIn("objDialog/nodeNameBase", "a_much_longer_name_now");
  editor_.click("objDialog/buttons/OK");
  editor_.settle();
  EXPECT_GT(editor_.graph().node("obj_7").box.width, before);
}

TEST_F(Finding, ATooltipTellsOfTheNodeAndTheArcUnderThePointer) {
  openHarbour();
  editor_.click("strip/zoomFit");
  editor_.driver().moveTo(editor_.graph().node("obj_1").box.centre());
  const auto tip = [&](std::string_view part) {
    return editor_
        .await("a tooltip",
               [&](const WidgetInfo& w) {
                 return w.isAt("tooltip/tip") && w.viewable && w.label.find(part) != std::string::npos;
               })
        .label;
  };
  const std::string text = tip("obj_1");
  EXPECT_THAT(text, HasSubstr("\nobject, "));
  EXPECT_THAT(text, HasSubstr(" = "));
  const auto arc = editor_.graph().arcs.front();
  editor_.driver().moveTo(arc.middle);
  EXPECT_THAT(tip("from " + arc.parent), HasSubstr("\nto " + arc.child));
  editor_.driver().moveTo({editor_.graphWidget().box.x + 3, editor_.graphWidget().box.y + 3});
  EXPECT_TRUE(support::waitFor(
      [&] { return !editor_.find([](const WidgetInfo& w) { return w.isAt("tooltip") && w.viewable; }); }));
}

class NamesAtOnce : public Finding {
 protected:
  NamesAtOnce() : Finding({.executable = {}, .arguments = {"-xrm", "quileditor.recordNames: True"}}) {}
};

TEST_F(NamesAtOnce, WhereTheUserHasSaidSo) {
  openHarbour();
  EXPECT_TRUE(editor_.find([](const WidgetInfo& w) { return w.label == "Record Names"; })->set);
  const int with = editor_.graph().node("obj_1").box.height;
  editor_.chooseMenu({"View", "Record Names"});
  EXPECT_LT(editor_.graph().node("obj_1").box.height, with);
  EXPECT_EQ(editor_.quit(), 0);
  support::Editor next(server_,
                       start({.executable = {}, .arguments = {"-xrm", "quileditor.recordNames: True"}}));
  EXPECT_FALSE(next.find([](const WidgetInfo& w) { return w.label == "Record Names"; })->set)
      << "the last choice counts";
  EXPECT_EQ(next.quit(), 0);
}

}  // namespace
