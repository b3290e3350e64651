/// @file
/// Re-wiring what isn't in sight together, and seeing that one may.
#include "editor/model/recordnames.h"
#include "qilib/forwards.h"
#include "qilib/opensave.h"
#include "tests/support/builtscene.h"
#include "tests/window/editorfixture.h"

namespace {

using support::Point;
using support::WidgetInfo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class Rewiring : public EditorTest {
 protected:
  bool isActive(const char* label) {
    return editor_.find([&](const WidgetInfo& w) { return w.label == label; })->sensitive;
  }
};

TEST_F(Rewiring, EditModeCanBeSeen) {
  editor_.open(table());
  const support::Box canvas = editor_.graphWidget().box;
  const Point edge{canvas.x + 3, canvas.y + canvas.height / 2};
  const unsigned plain = colorAt(edge);
  EXPECT_FALSE(isActive("Delete Link"));
  editor_.toggleEditMode();
  EXPECT_EQ(colorAt(edge), 0x29a642u);
  EXPECT_TRUE(isActive("Delete Link"));
  editor_.toggleEditMode();
  EXPECT_EQ(colorAt(edge), plain);
}

TEST_F(Rewiring, AHandleIsEasyToTakeAndMissingItDoesNotPan) {
  editor_.open(table());
  editor_.toggleEditMode();
  editor_.selectArc("obj_5", "anim_0");
  const auto before = editor_.graph();
  const Point handle = before.arc("obj_5", "anim_0").child_handle;
  const Point beside{handle.x - 16, handle.y}, near{handle.x - 10, handle.y};
  editor_.driver().drag(beside, {beside.x - 200, beside.y + 60});
  EXPECT_EQ(editor_.graph().node("scene_0").box.x, before.node("scene_0").box.x) << "missed";
  editor_.driver().drag(near, before.node("mat_0").box.centre());
  EXPECT_EQ(editor_.message(kWarning), "Can't change link!") << "taken";
  editor_.answer(kWarning, "OK");
}

TEST_F(Rewiring, TheFirstSelectedIsLinkedToTheOthersInOneStep) {
  editor_.open(table());
  EXPECT_FALSE(isActive("Link Selected"));
  editor_.toggleEditMode();
  const auto before = shownArcs();
  const auto graph = editor_.graph();
  editor_.driver().click(graph.node("obj_7").box.centre());
  for (const char* other : {"mat_0", "mat_1", "obj_8"})
    editor_.driver().click(graph.node(other).box.centre(), 1, {"Shift_L"});
  editor_.key("l", {"Control_L"});
  editor_.settle();
  const auto after = editor_.graph();
  EXPECT_TRUE(after.hasArc("obj_7", "mat_0"));
  EXPECT_FALSE(after.hasArc("obj_7", "mat_1"));
  EXPECT_TRUE(after.hasArc("obj_7", "obj_8"));
  EXPECT_THAT(editor_.await("status").label,
              StartsWith("obj_7 has mat_0 already: move that arc's end instead"));
  editor_.key("z", {"Control_L"});
  editor_.settle();
  EXPECT_EQ(shownArcs(), before);
}

TEST_F(Rewiring, ARecordOfALargeCityIsFoundAndLinkedElsewhereAndTakenBack) {
  constexpr Word kObjects = 9'999;
  const auto city = built_version1_scene(kObjects);
  ASSERT_TRUE(qiAddScene_Obj(*city, 0));
  for (Word i = 1; i < kObjects; ++i) ASSERT_TRUE(qiAddObj_Obj(*city, (i - 1) / 4, i));
  ASSERT_EQ(name_node(*city, "obj_777", "lighthouse"), 1);
  ASSERT_EQ(qiSaveAsQb2(*city, path("city.quil")), 1);
  editor_.open(path("city.quil"));
  editor_.toggleEditMode();
  const auto opened = editor_.graph();
  ASSERT_GE(opened.nodes.size(), 10'000u);

  // By its name, and what uses it.
  const std::string name = "lighthouse";
  find(name);
  EXPECT_EQ(editor_.await("findCount").label, "1 of 1");
  const std::string child = "obj_777";
  EXPECT_THAT(selected(), ElementsAre(child));
  const auto shown = editor_.graph();
  const Point at = shown.node(child).box.centre();
  EXPECT_TRUE(at.x > shown.view.x && at.x < shown.view.x + shown.view.width);
  EXPECT_TRUE(at.y > shown.view.y && at.y < shown.view.y + shown.view.height);
  editor_.driver().moveTo(at);
  const std::string tip =
      editor_.await("a tooltip", [](const WidgetInfo& w) { return w.isAt("tooltip/tip") && w.viewable; })
          .label;
  EXPECT_THAT(tip, HasSubstr(name));
  EXPECT_THAT(tip, HasSubstr(" parent"));

  // Linked to another one, which is far away.
  const std::string parent = "obj_5000";
  find(parent);
  EXPECT_THAT(selected(), ElementsAre(parent));
  find(name);
  editor_.driver().key("Return", {"Control_L"});
  EXPECT_EQ(selected().size(), 2u);
  editor_.driver().key("Escape");
  const int before = opened.countArcs(parent, child);
  editor_.key("l", {"Control_L"});
  editor_.settle();
  EXPECT_EQ(editor_.graph().countArcs(parent, child), before + 1);
  editor_.key("z", {"Control_L"});
  editor_.settle();
  EXPECT_EQ(editor_.graph().countArcs(parent, child), before);
}

}  // namespace
