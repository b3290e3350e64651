/// @file
/// The property dialogs in the built editor: opened from nodes, filled in by pointer and keyboard, applied,
/// and what that makes of the file.
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "tests/support/case_name.h"
#include "tests/support/wait.h"
#include "tests/window/dialogfixture.h"

namespace {

using support::WidgetInfo;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

struct Entry {
  const char* item;
  const char* value;
};
struct Case {
  const char* name;
  const char* scene;
  const char* node;
  const char* dialog;
  std::vector<Entry> entries;

  /// The command of an edit script that does the same.
  std::string command() const {
    std::string line = std::string("set ") + node;
    for (const auto& [item, value] : entries) line += std::string(" ") + item + "=\"" + value + "\"";
    return line;
  }
};
void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

const Case kCases[] = {
    {"Scene",
     "robot",
     "scene_0",
     "sceneDialog",
     {{"title.nodeName", "workshop"}, {"video.mpal", "1"}, {"dither", "0"}, {"divot", "1"}}},
    {"Shape",
     "robot",
     "shape_0",
     "shapeDialog",
     {{"title.nodeName", "torso"}, {"alias.ra", "1"}, {"culling.front", "1"}, {"z_buffer", "0"}}},
    {"Shape2", "skeleton", "shape_1", "shapeDialog", {{"alias.no_alias", "1"}, {"vtxalpha", "1"}}},
    {"Tex",
     "robot",
     "tex_0",
     "texDialog",
     {{"title.nodeName", "metal"},
      {"form.form_ci", "1"},
      {"depth.depth_16", "1"},
      {"tex_wrap_s.clamp_s", "1"},
      {"tex_wrap_t.mirror_t", "1"}}},
    {"Tex2", "skeleton", "tex_0", "texDialog", {{"quil2.texfilter", "AVERAGE"}, {"quil2.pers", "0"}}},
    {"Obj",
     "robot",
     "obj_0",
     "objDialog",
     {{"title.nodeName", "ground"},
      {"type_g.state_active", "0"},
      {"type_g.type", "BILLBOARD"},
      {"group.group_none", "0"},
      {"group.groupid", "1f"},
      {"render.render_pri.render_pri_sw", "KAVOGBI"},
      {"render.render_pri.render_pri_opt", "XLU_SURF"},
      {"have_bd.bd_yes", "1"}}},
    {"Obj2",
     "skeleton",
     "obj_0",
     "objDialog",
     {{"pri.pri_none", "0"},
      {"pri.priority", "0x20"},
      {"renderfog.render_pri_g.render_cycle_type", "2 cycle"}}},
    {"Mat",
     "robot",
     "mat_0",
     "matDialog",
     {{"title.nodeName", "iron"},
      {"shade_type.light", "GLOBAL"},
      {"cc_g.cc_quil.quil_color_type0.vtx", "1"},
      {"cc_g.cc_quil.quil_alpha_type1.tex1_alpha", "1"},
      {"prim_color.red", "1.5"},
      {"prim_color.blue", "-0.25"},
      {"u_flags0.usr_flag0", "0x10"},
      {"u_flags1.usr_flag7", "ff"}}},
    {"Mat2",
     "skeleton",
     "mat_0",
     "matDialog",
     {{"ambient.green", "0.75"},
      {"cc_g_fog.cc_kavo.kavo_color_type1.cc_b", "K4"},
      {"prim_color_fog.alpha", "1"}}},
    {"MatStyle", "robot", "mat_0", "matDialog", {{"mat_type.kavo", "1"}}},
    {"Cam",
     "robot",
     "cam_0",
     "camDialog",
     {{"title.nodeName", "camera"},
      {"type.ortho", "1"},
      {"clip.near", "0.125"},
      {"values.scale", "2.5"},
      {"objects.up", "3"}}},
    {"Env",
     "robot",
     "env_0",
     "envDialog",
     {{"title.nodeName", "noon"},
      {"fog.fog_color", "ff8000ff"},
      {"fog.fog_near", "5000"},
      {"fill_color.do_fill_color", "0"},
      {"fill_depth.do_fill_depth", "1"},
      {"fill_depth.fill_depth_rgb", "fffc"},
      {"bg_depth_img.bg_depth_tex", "1"},
      {"bg_depth_img.bg_depth_index", "2"}}},
    {"Light", "robot", "light_0", "lightDialog", {{"title.nodeName", "moon"}, {"ambi.ambi_r", "2.5"}}},
    {"Part", "robot", "part_0", "partDialog", {{"title.nodeName", "ring"}}},
    {"Anim",
     "robot",
     "anim_0",
     "animDialog",
     {{"title.nodeName", "still"}, {"anim_loop.inf", "0"}, {"anim_loop.loop_num", "0x10"}}},
    {"Anim2", "skeleton", "anim_1", "animDialog", {{"title.nodeName", "tempo"}, {"anim_loop.inf", "0"}}},
    {"Lod",
     "robot",
     "lod_13",
     "lodDialog",
     {{"lod_set.lod_dist_group.lod_dist1", "90.5"}, {"lod_set.lod_link_group.lod_link2", "3"}}},
    {"Lod2", "skeleton", "lod_5", "lodDialog", {{"lod_set.lod_link_group.lod_link0", "2"}}},
    {"Chainroot", "skeleton", "ChainRoot_0", "chrootDialog", {{"title.nodeName", "arm"}}},
    {"Joint", "skeleton", "joint_0", "jointDialog", {{"title.nodeName", "hand"}, {"title.type", "1f"}}},
    {"Effector",
     "skeleton",
     "effector_0",
     "effectorDialog",
     {{"title.nodeName", "grip"}, {"title.type", "0x2a"}}},
};

class EveryDialog : public Dialogs, public testing::WithParamInterface<Case> {
 protected:
  void expectToShowTheRecord() {
    std::istringstream lines(quilscene({"show", file_, GetParam().node}));
    for (std::string line; std::getline(lines, line);) {
      const auto equals = line.find(" = ");
      const std::string item = line.substr(line.find(' ') + 1, equals - line.find(' ') - 1);
      EXPECT_EQ(shown(item), line.substr(equals + 3)) << line;
    }
  }
};

TEST_P(EveryDialog, ShowsItsRecordAndWritesItBack) {
  const Case& c = GetParam();
  edit(data(c.scene));
  openDialog(c.node, c.dialog);
  EXPECT_THAT(newOutput(),
              StartsWith("In defaultActionCallback\n" + editor_.graph().node(c.node).label + "\n"));
  expectToShowTheRecord();

  for (const auto& [item, value] : c.entries) enter(item, value);
  EXPECT_EQ(newOutput(), "");
  press("Apply");
  EXPECT_EQ(newOutput(), trace(c.command()));
  press("Apply");  // nothing has changed since
  EXPECT_THAT(newOutput(), testing::Not(HasSubstr("is changed.")));
  press("OK");
  EXPECT_FALSE(isOpen());
  EXPECT_THAT(newOutput(), EndsWith("OK.\n"));
  EXPECT_TRUE(sameBytes(saved(), edited(file_, c.command() + "\n").bytes));
}

TEST_P(EveryDialog, ChangesNothingOutsideEditModeNorWhenItIsCancelled) {
  const Case& c = GetParam();
  file_ = data(c.scene);
  editor_.open(file_);
  openDialog(c.node, c.dialog);
  newOutput();
  for (const auto& [item, value] : c.entries) enter(item, value);
  press("Apply");
  press("Cancel");
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(newOutput(), "APPLY.\nCanceled.\n");
  editor_.toggleEditMode();
  openDialog(c.node, c.dialog);
  expectToShowTheRecord();
  press("OK");
  EXPECT_THAT(newOutput(), testing::Not(HasSubstr("is changed.")));
  EXPECT_TRUE(sameBytes(saved(), edited(file_, "").bytes));
}

INSTANTIATE_TEST_SUITE_P(All, EveryDialog, testing::ValuesIn(kCases), CaseName());

bool isWithin(const support::Box& inner, const support::Box& outer) {
  return inner.x >= outer.x && inner.y >= outer.y && inner.x + inner.width <= outer.x + outer.width &&
         inner.y + inner.height <= outer.y + outer.height;
}

/// On a screen that many dialogs are larger than.
class SmallScreen : public Dialogs {
 protected:
  SmallScreen() : Dialogs(kScreen.width, kScreen.height) {}

  WidgetInfo widgetAt(const std::string& where) {
    return editor_.await(where, [&](const WidgetInfo& w) { return w.isAt(where); });
  }
  /// What one can use in the dialog, its buttons apart.
  std::vector<WidgetInfo> fields() { return fieldsAndSight().first; }
  /// And the part of the screen where one can see them, at the same moment.
  std::pair<std::vector<WidgetInfo>, support::Box> fieldsAndSight() {
    std::vector<WidgetInfo> found;
    support::Box sight;
    for (const WidgetInfo& w : editor_.widgets()) {
      if (w.isAt(dialog_ + "/items/ClipWindow")) sight = w.box;
      if (w.path.find(dialog_ + "/items/") != w.path.npos && w.viewable && w.sensitive &&
          (w.class_name == "XmTextField" || w.class_name == "XmToggleButton" || w.name() == "OptionButton"))
        found.push_back(w);
    }
    return {found, sight};
  }
  support::Box view() { return widgetAt(dialog_ + "/items/ClipWindow").box; }

  void wheel(int clicks, support::Held held = {}) {
    editor_.driver().wheel(view().centre(), clicks, held);
    editor_.settle();
  }
  /// Turns the wheel a little, again and again, until that moves nothing any more.
  void scrollOn(const support::Held& held, const std::function<void()>& look) {
    std::optional<support::Point> last;
    for (auto box = fields().front().box; !last || last->x != box.x || last->y != box.y;
         box = fields().front().box) {
      last = support::Point{box.x, box.y};
      look();
      wheel(-4, held);
    }
  }
  /// The fields that come into sight as one turns the wheel everywhere.
  std::set<std::string> seenByWheel() {
    constexpr int kFar = 40;
    std::set<std::string> seen;
    const auto see = [&] {
      const auto [all, sight] = fieldsAndSight();
      for (const WidgetInfo& field : all)
        if (isWithin(field.box, sight)) seen.insert(field.id);
    };
    wheel(kFar, {"Shift_L"});
    scrollOn({"Shift_L"}, [&] {
      wheel(kFar);
      scrollOn({}, see);
    });
    return seen;
  }

  /// Whether one comes to this field next, reading lines from left to right, and columns too.
  static bool isReadAfter(const support::Box& field, const support::Box& before) {
    return field.y >= before.y + before.height || field.x >= before.x + before.width;
  }

  void expectToReachEverything() {
    EXPECT_TRUE(isWithin(widgetAt(dialog_).box, kScreen));
    for (const char* button : {"OK", "Apply", "Cancel"})
      EXPECT_TRUE(isWithin(widgetAt(dialog_ + "/buttons/" + button).box, kScreen)) << button;
    const auto [all, sight] = fieldsAndSight();
    ASSERT_FALSE(all.empty());
    const support::Box* before = nullptr;
    for (const WidgetInfo& field : all) {
      EXPECT_TRUE(!before || isReadAfter(field.box, *before)) << field.path;
      before = &field.box;
      const auto focused =
          editor_.await(field.path, [&](const WidgetInfo& w) { return w.id == field.id && w.focused; });
      EXPECT_TRUE(isWithin(focused.box, sight)) << focused.path;
      editor_.driver().key("Tab");
    }
    EXPECT_TRUE(editor_
                    .await("the focus in OK",
                           [&](const WidgetInfo& w) { return w.isAt(dialog_ + "/buttons/OK") && w.focused; })
                    .viewable);
    const auto seen = seenByWheel();
    for (const WidgetInfo& field : all) EXPECT_TRUE(seen.contains(field.id)) << field.path;
    editor_.driver().key("Escape");
    EXPECT_TRUE(support::waitFor([&] { return !isOpen(); }));
  }

  static constexpr support::Box kScreen{0, 0, 640, 480};
};

class EveryDialogOnASmallScreen : public SmallScreen, public testing::WithParamInterface<Case> {};

TEST_P(EveryDialogOnASmallScreen, EveryItemIsReachedByTabAndByWheel) {
  edit(data(GetParam().scene));
  openDialog(GetParam().node, GetParam().dialog);
  expectToReachEverything();
}

TEST_F(SmallScreen, TheWheelScrollsWhateverItIsTurnedOver) {
  edit(data("skeleton"));
  openDialog("obj_0", "objDialog");
  std::set<std::string> turned_over;
  const support::Box sight = view();
  const auto in_sight = [&](const WidgetInfo& w) {
    return w.path.find(dialog_ + "/items/ClipWindow/") != w.path.npos && w.viewable && isWithin(w.box, sight);
  };
  const auto contents = [&] { return widgetAt(dialog_ + "/items/ClipWindow/prefListBase").box; };
  for (std::optional<int> last; last != contents().y;) {
    last = contents().y;
    while (const auto next = editor_.find(
               [&](const WidgetInfo& w) { return in_sight(w) && !turned_over.contains(w.path); })) {
      turned_over.insert(next->path);
      const int before = contents().y;
      editor_.driver().wheel(next->box.centre(), before < sight.y ? 1 : -1);
      editor_.settle();
      EXPECT_NE(before, contents().y) << next->path;
    }
    wheel(-4);
  }
  EXPECT_THAT(turned_over, testing::Contains(testing::HasSubstr("sep")));
}

/// The dialogs of the converters' options, and how they are opened.
const std::map<std::string, std::vector<std::string>> kConverterMenus{
    {"quil2gfxDialog", {"KAVO tool", "Convert to KAVO DL", "Set Options and Go"}},
    {"quil2zexDialog", {"QUIL2 tool", "Convert to ZEX", "Set Options and Go"}}};

TEST_F(SmallScreen, EveryOptionOfTheConvertersIsReachedByTabAndByWheel) {
  for (const auto& [dialog, menu] : kConverterMenus) {
    SCOPED_TRACE(dialog);
    editor_.chooseMenu(menu);
    awaitDialog(dialog);
    expectToReachEverything();
  }
}

class UsualScreen : public Dialogs {
 protected:
  UsualScreen() : Dialogs(1024, 768) {}
};

TEST_F(UsualScreen, HasRoomForTheOptionsOfTheConverters) {
  constexpr int kFar = 190;  // pixels between a label and its field
  for (const auto& [dialog, menu] : kConverterMenus) {
    SCOPED_TRACE(dialog);
    editor_.chooseMenu(menu);
    awaitDialog(dialog);
    const std::vector<WidgetInfo> widgets = editor_.widgets();
    for (const WidgetInfo& label : widgets) {
      if (!label.viewable || label.path.find(dialog) == std::string::npos) continue;
      EXPECT_LE(label.box.x + label.box.width, 1024) << label.path;
      if (!label.path.ends_with("Label")) continue;
      const std::string field = label.path.substr(0, label.path.size() - 5) + "Base";
      const auto beside = std::ranges::find(widgets, field, &WidgetInfo::path);
      if (beside == widgets.end() || !beside->viewable) continue;
      EXPECT_LT(beside->box.x - label.box.x - label.box.width, kFar) << field;
    }
    press("Cancel");
  }
}

INSTANTIATE_TEST_SUITE_P(All, EveryDialogOnASmallScreen, testing::ValuesIn(kCases), CaseName());

TEST_F(Dialogs, OpenOnReturnToo) {
  editor_.open(data("tiny_v1"));
  newOutput();
  editor_.driver().click(editor_.graph().node("obj_0").box.centre());
  editor_.key("Return");
  editor_.await("objDialog/buttons/OK");
  EXPECT_THAT(newOutput(), StartsWith("In defaultActionCallback\nobj_0\n"));
}

TEST_F(Dialogs, ANodeWithoutARecordHasNone) {
  edit(data("tiny_v1"));
  const support::GraphState graph = editor_.graph();
  editor_.driver().doubleClick({graph.view.x + 5, graph.view.y + graph.view.height - 5});
  editor_.settle();
  newOutput();
  editor_.doubleClickNode("newNode");
  EXPECT_EQ(newOutput(), "In defaultActionCallback\nNew Node\n");
  EXPECT_FALSE(editor_.find([](const WidgetInfo& w) { return w.isAt("buttons/Apply"); }));
}

TEST_F(Dialogs, ApplyOutsideEditModeChangesNothingAndKeepsWhatWasEntered) {
  file_ = data("tiny_v1");
  editor_.open(file_);
  openDialog("mat_0", "matDialog");
  newOutput();
  enter("title.nodeName", "renamed");
  press("Apply");
  press("Apply");
  EXPECT_EQ(newOutput(), "APPLY.\nAPPLY.\n");
  press("OK");
  EXPECT_EQ(newOutput(), "APPLY.\nOK.\n");
  EXPECT_TRUE(sameBytes(saved(), edited(file_, "").bytes));
}

TEST_F(Dialogs, EnteredValuesAreAppliedOnceInEditMode) {
  file_ = data("tiny_v1");
  editor_.open(file_);
  openDialog("mat_0", "matDialog");
  enter("title.nodeName", "renamed");
  press("Apply");
  editor_.toggleEditMode();
  newOutput();
  press("Apply");
  EXPECT_EQ(newOutput(), trace("set mat_0 title.nodeName=renamed"));
}

TEST_F(Dialogs, OkAppliesWhatWasEntered) {
  edit(data("tiny_v1"));
  openDialog("obj_0", "objDialog");
  newOutput();
  enter("title.nodeName", "renamed");
  editor_.driver().key("Return");
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(newOutput(), trace("set obj_0 title.nodeName=renamed") + "OK.\n");
}

TEST_F(Dialogs, CancelForgetsWhatWasEntered) {
  edit(data("tiny_v1"));
  openDialog("obj_0", "objDialog");
  newOutput();
  enter("title.nodeName", "renamed");
  press("Cancel");
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(newOutput(), "Canceled.\n");
  openDialog("obj_0", "objDialog");
  EXPECT_EQ(widget("title.nodeName").text, "lonely_box");
  press("Cancel");
  EXPECT_TRUE(sameBytes(saved(), edited(file_, "").bytes));
}

TEST_F(Dialogs, OfTwoOnOneRecordTheLaterApplyWins) {
  edit(data("tiny_v1"));
  openDialog("obj_0", "objDialog");
  enter("title.nodeName", "first");
  openDialog("obj_0", "objDialog");
  const auto second = editor_.await("the second dialog", [](const WidgetInfo& w) {
    return w.isAt("objDialog/nodeNameBase") && w.viewable && w.text == "lonely_box";
  });
  EXPECT_EQ(widget("title.nodeName").text, "first");
  editor_.driver().click(second.box.centre());
  editor_.driver().type("2");
  editor_.driver().key("Return");
  editor_.settle();
  EXPECT_TRUE(isOpen());
  press("Apply");
  const std::string last = "set obj_0 title.nodeName=first";
  EXPECT_THAT(newOutput(), EndsWith("OK.\n" + trace(last)));
  EXPECT_TRUE(sameBytes(saved(), edited(file_, last + "\n").bytes));
}

TEST_F(Dialogs, OpenBesideThoseThatAreOpen) {
  edit(data("tiny_v1"));
  const auto places = [&] {
    std::vector<support::Point> found;
    for (const WidgetInfo& w : editor_.widgets())
      if (w.viewable && w.isAt("objDialog/nodeNameBase")) found.push_back(w.box.centre());
    return found;
  };
  for (const std::size_t count : {1u, 2u, 3u}) {
    editor_.doubleClickNode("obj_0");
    editor_.await("another dialog", [&](const WidgetInfo&) { return places().size() == count; });
    editor_.settle();
  }
  const auto found = places();
  for (const std::size_t i : {1u, 2u}) {
    EXPECT_GT(found[i].x, found[i - 1].x);
    EXPECT_GT(found[i].y, found[i - 1].y);
  }
}

TEST_F(Dialogs, AreClosedWhenAnotherSceneIsOpened) {
  edit(data("tiny_v1"));
  openDialog("mat_0", "matDialog");
  newOutput();
  editor_.open(data("tiny_v2"));
  EXPECT_FALSE(isOpen());
  EXPECT_THAT(newOutput(), testing::Not(HasSubstr("Canceled.")));
}

}  // namespace
