/// @file
/// What opening, answering and applying a dialog prints.
#include <ostream>
#include <sstream>
#include <vector>

#include "tests/dialogs/values/values_fixture.h"
#include "tests/support/case_name.h"

namespace {

using values::PrefAction;

/// The two lines that a write-back prints of each item: `"2 title, 0 sep1"` names sizes and items.
std::string walk(const std::string& items) {
  std::string lines;
  std::istringstream words(items);
  for (std::string size, name; words >> size >> name;) {
    if (name.ends_with(",")) name.pop_back();
    lines += "prefg->size() = " + size + "\nitem->name() = " + name + "\n";
  }
  return lines;
}

struct Trace {
  const char* name;
  const char* node;
  const char* path;
  const char* typed;
  const char* opened;
  std::string applied;
};
void PrintTo(const Trace& t, std::ostream* out) { *out << t.node << " " << t.path; }

class DialogTrace : public ValuesTest, public testing::WithParamInterface<Trace> {};

TEST_P(DialogTrace, IsPrintedLineByLine) {
  const Trace& t = GetParam();
  Opened dialog = open(t.node);
  EXPECT_EQ(dialog.traces, t.opened);
  edit(dialog, t.path, t.typed);
  EXPECT_EQ(apply(dialog), t.applied);
}

const Trace kTraces[] = {
    {"Scene", "scene_0", "video.pal", "1", "",
     "This is sceneDialog, index = 0.\nCall sceneChanged.\nScene is changed.\n" +
         walk("2 title, 0 sep1, 3 video") + " ntsc .\nvalue = 0\n pal .\nvalue = 1\n mpal .\nvalue = 0\n" +
         walk("0 sep2, 0 gamma, 0 dither, 0 divot") + "cfg = 15\n"},
    {"Shape", "shape_1", "culling.front", "1", "",
     "This is shapeDialog, index = 1.\nCall shapeChanged.\nShape is changed.\n" +
         walk("2 title, 0 sep1, 3 alias") + "value = 1\nvalue = 0\nvalue = 0\n" +
         walk("0 sep2, 0 z_buffer, 0 sep3, 2 culling, 0 sep4, 0 vtxalpha, 0 sep5, 0 kind") + "type = 135\n"},
    {"Tex", "tex_1", "quil2.pers", "0", "",
     "This is texDialog, index = 1.\nCall texChanged.\nTex is changed.\n" +
         walk("13 prefList, 2 title, 0 sep1, 6 form") +
         "value = 0\nvalue = 0\nvalue = 0\nvalue = 0\nvalue = 0\nvalue = 1\n" + walk("0 sep2, 4 depth") +
         "value = 0\nvalue = 0\nvalue = 0\nvalue = 1\n" + walk("0 sep3, 3 tex_wrap_s") +
         "value = 1\nvalue = 0\n" +
         walk("0 sep4, 3 tex_wrap_t, 0 sep5, 2 quil2, 0 mipmaplevel, 0 usepalette") +
         "tex_type = 405\nwrap_s = 1\nwrap_t = 200\n"},
    {"Obj", "obj_1", "group.groupid", "0x20", "render\nrenderfog\n",
     "This is objDialog, index = 1.\nCall objChanged.\nThis node is obj_1 (member func)\nObj is changed.\n" +
         walk("2 title, 0 sep1, 2 type_g, 0 sep2, 2 group") + "\t32\n" +
         walk("0 sep3, 2 pri, 0 sep4, 2 render") + "\tobj_render_pri = 4700000\n" +
         walk("0 sep5, 0 obj_render_label, 2 renderfog") + "\tobj_render_pri = d00000\n" +
         walk("0 sep5, 1 have_bd")},
    {"ObjWithoutGroupPrintsNoNumber", "obj_1", "group.group_none", "1", "render\nrenderfog\n",
     "This is objDialog, index = 1.\nCall objChanged.\nThis node is obj_1 (member func)\nObj is changed.\n" +
         walk("2 title, 0 sep1, 2 type_g, 0 sep2, 2 group, 0 sep3, 2 pri, 0 sep4, 2 render") +
         "\tobj_render_pri = 4700000\n" + walk("0 sep5, 0 obj_render_label, 2 renderfog") +
         "\tobj_render_pri = d00000\n" + walk("0 sep5, 1 have_bd")},
    {"Mat", "mat_1", "title.nodeName", "new name", "",
     "This is matDialog, index = 1.\nCall matChanged.\nMat is changed.\n" + walk("2 title") +
         "mat name = new name\n" +
         walk("0 sep, 3 shade_type, 0 sep, 5 ambient, 5 emission, 5 diffuse, 0 sep, 2 mat_type, 1 cc_g, 0 "
              "sep, "
              "2 mat_type_fog, 1 cc_g_fog, 0 sep, 5 prim_color, 0 sep, 5 prim_color_fog, 0 sep, 4 u_flags0, "
              "4 u_flags1")},
    {"Cam", "cam_1", "type.ortho", "1", "node_index = 1\n",
     "This is camDialog, index = 1.\nCam is changed.\n" +
         walk("2 title, 0 sep1, 2 type, 0 sep2, 6 clip, 0 sep, 3 values, 0 sep, 3 objects")},
    {"Env", "env_1", "fog.usefog", "0", "node_index = 1\n",
     "This is envDialog, index = 1.\nEnv is changed.\n" +
         walk("2 title, 0 sep1, 4 fog, 0 sep2, 2 fill_color, 0 sep, 2 fill_depth, 0 sep, 2 bg_sprite_img, 0 "
              "sep, "
              "2 bg_depth_img")},
    {"Light", "light_1", "ambi.ambi_r", "1", "node_index = 1\n",
     "This is lightDialog, index = 1.\nLight is changed.\n" +
         walk("2 title, 0 sep1, 3 ambi, 0 sep2, 0 dir_light_num, 0 light_type")},
    {"Part", "part_1", "title.nodeName", "wheel", "node_index = 1\n",
     "This is partDialog, index = 1.\nPart is changed.\n" + walk("2 title") + "part name = wheel\n"},
    {"Anim", "anim_1", "title.nodeName", "walk", "",
     "This is animDialog, index = 1.\nAnim is changed.\n" + walk("2 title") + "anim name = walk\n" +
         walk("0 sep1, 0 anim_type, 0 frame_rate, 0 sep2, 2 anim_loop, 0 sep3, 1 quil2")},
    {"Lod", "lod_1", "lod_set.lod_dist_group.lod_dist1", "2.50", "",
     "This is lodDialog, index = 1.\nLOD is changed.\n" + walk("1 header, 0 sep1, 2 lod_set") +
         "dist = 10\n\tstrtod:10\ndist = 2.50\n\tstrtod:2.5\ndist = 3000\n\tstrtod:3000\n"},
    {"ChainRoot", "ChainRoot_1", "title.nodeName", "spine", "node_index = 1\n",
     "This is chrootDialog, index = 1.\nChainroot is changed.\n" + walk("2 title") +
         "chainroot name = spine\n"},
    {"JointName", "joint_1", "title.nodeName", "knee", "node_index = 1\n",
     "This is jointDialog, index = 1.\nJoint is changed.\n" + walk("2 title") + "joint name = knee\n"},
    {"JointTypeSaysEffector", "joint_1", "title.type", "0x3", "node_index = 1\n",
     "This is jointDialog, index = 1.\nJoint is changed.\n" + walk("2 title") + "effector type = 0x3\n"},
    {"EffectorType", "effector_1", "title.type", "4", "node_index = 1\n",
     "This is effectorDialog, index = 1.\nEffector is changed.\n" + walk("2 title") + "effector type = 4\n"},
    {"EffectorName", "effector_1", "title.nodeName", "toe", "node_index = 1\n",
     "This is effectorDialog, index = 1.\nEffector is changed.\n" + walk("2 title") +
         "effector name = toe\n"},
};
INSTANTIATE_TEST_SUITE_P(Values, DialogTrace, testing::ValuesIn(kTraces), CaseName());

/// A rename prints its line in every dialog that has a name.
struct NameTrace {
  const char* name;
  const char* node;
  const char* line;
};
void PrintTo(const NameTrace& t, std::ostream* out) { *out << t.node; }

class RenameTrace : public ValuesTest, public testing::WithParamInterface<NameTrace> {};

TEST_P(RenameTrace, NamesTheKind) {
  const std::string printed = change(GetParam().node, "title.nodeName", "x");
  EXPECT_NE(printed.find("\n" + std::string(GetParam().line) + " name = x\n"), printed.npos) << printed;
}

const NameTrace kNameTraces[] = {
    {"Scene", "scene_0", "scene"}, {"Obj", "obj_1", "obj"}, {"Shape", "shape_1", "shape"},
    {"Tex", "tex_1", "tex"},       {"Cam", "cam_1", "cam"}, {"Env", "env_1", "env"},
    {"Light", "light_1", "light"},
};
INSTANTIATE_TEST_SUITE_P(Values, RenameTrace, testing::ValuesIn(kNameTraces), CaseName());

TEST_F(ValuesTest, ApplyWithNothingChangedOnlySaysWhereItWent) {
  const SceneWords before = scene_words();
  Opened obj = open("obj_1");
  EXPECT_EQ(apply(obj),
            "This is objDialog, index = 1.\nCall objChanged.\nThis node is obj_1 (member func)\n");
  Opened cam = open("cam_0");
  EXPECT_EQ(apply(cam), "This is camDialog, index = 0.\n");
  EXPECT_EQ(scene_words(), before);
}

/// Only the words that are written are traced.
TEST_F(ValuesTest, AnUnchangedGroupAndPriorityPrintNoNumber) {
  qis->obj_list.records[1].fixed.priority = 8;
  const std::string start =
      "This is objDialog, index = 1.\nCall objChanged.\nThis node is obj_1 (member func)\n"
      "Obj is changed.\n" +
      walk("2 title, 0 sep1, 2 type_g, 0 sep2, 2 group");
  const std::string middle = walk("0 sep3, 2 pri");
  const std::string end = walk("0 sep4, 2 render") + "\tobj_render_pri = 4700000\n" +
                          walk("0 sep5, 0 obj_render_label, 2 renderfog") + "\tobj_render_pri = d00000\n" +
                          walk("0 sep5, 1 have_bd");
  EXPECT_EQ(change("obj_1", "type_g.type", "NULL"), start + middle + end);
  EXPECT_EQ(change("obj_1", "group.groupid", "0x20"), start + "\t32\n" + middle + end);
  EXPECT_EQ(change("obj_1", "pri.priority", "0x9"), start + middle + "\t9\n" + end);
}

TEST_F(ValuesTest, NamedRecordsTraceTheirOwnNumberNotThatOfTheirName) {
  qis->cam_list.records[1].fixed.name = 0;
  EXPECT_EQ(open("cam_1").traces, "node_index = 1\n");
  EXPECT_EQ(open("cam_0").traces, "node_index = 0\n");
}

TEST_F(ValuesTest, RecordsWithoutNameTraceNoNumber) {
  qis->cam_list.records[1].fixed.name = kUnset;
  const Opened cam = open("cam_1");
  EXPECT_EQ(cam.traces, "");
  EXPECT_EQ(shown(cam, "title.nodeName"), "");
}

struct Answer {
  const char* name;
  const char* dialog;
  int reason;
  PrefAction action;
  const char* printed;
};
void PrintTo(const Answer& a, std::ostream* out) { *out << a.dialog << " " << a.reason; }

class PrefAnswer : public testing::TestWithParam<Answer> {};

TEST_P(PrefAnswer, IsTracedAndDecided) {
  testing::internal::CaptureStdout();
  const PrefAction action = values::handlePrefs(GetParam().dialog, GetParam().reason);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), GetParam().printed);
  EXPECT_EQ(action, GetParam().action);
}

const Answer kAnswers[] = {
    {"Cancel", "matDialog", 0, PrefAction::nothing, "Canceled.\n"},
    {"Ok", "matDialog", 1, PrefAction::nothing, "OK.\n"},
    {"Apply", "matDialog", 2, PrefAction::applyChanges, "APPLY.\n"},
    {"ApplyOfTheGfxOptions", "quil2gfxDialog", 2, PrefAction::applyOptions, "APPLY.\nCall applyOptions.\n"},
    {"ApplyOfTheZexOptions", "my_quil2zexDialog_1", 2, PrefAction::applyOptions2,
     "APPLY.\nCall applyOptions.\n"},
    {"AnyOtherReason", "matDialog", 3, PrefAction::nothing, ""},
    {"ANegativeReason", "matDialog", -1, PrefAction::nothing, ""},
};
INSTANTIATE_TEST_SUITE_P(Values, PrefAnswer, testing::ValuesIn(kAnswers), CaseName());

TEST_F(ValuesTest, DialogNamesAreFoundInsideLongerOnes) {
  Opened cam = open("cam_1");
  edit(cam, "type.ortho", "1");
  testing::internal::CaptureStdout();
  EXPECT_EQ(values::applyChanges(*qis, "the_camDialog_2", *cam.top, 1), 1);
  EXPECT_TRUE(
      testing::internal::GetCapturedStdout().starts_with("This is the_camDialog_2, index = 1.\nCam is"));
  EXPECT_EQ(qis->cam_list.records[1].fixed.type, 1u);
}

TEST_F(ValuesTest, AnUnknownDialogChangesNothing) {
  Opened cam = open("cam_1");
  edit(cam, "type.ortho", "1");
  const SceneWords before = scene_words();
  testing::internal::CaptureStdout();
  EXPECT_EQ(values::applyChanges(*qis, "someDialog", *cam.top, 1), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "This is someDialog, index = 1.\n");
  EXPECT_EQ(scene_words(), before);
}

TEST(Dispatch, TestsDialogNamesInTheirOrder) {
  std::vector<std::string> names;
  for (const values::Dialog* dialog : values::dialogs()) names.emplace_back(dialog->name());
  EXPECT_EQ(names,
            (std::vector<std::string>{"sceneDialog", "shapeDialog", "texDialog", "objDialog", "matDialog",
                                      "camDialog", "envDialog", "lightDialog", "partDialog", "animDialog",
                                      "lodDialog", "chrootDialog", "jointDialog", "effectorDialog"}));
}

TEST(Dispatch, FindsTheDialogOfANode) {
  const auto name_of = [](const char* node) {
    const auto on = values::dialog_of_node(node);
    return on ? on->dialog->name() + std::string(" ") + std::to_string(on->number) : "none";
  };
  EXPECT_EQ(name_of("scene_0"), "sceneDialog 0");
  EXPECT_EQ(name_of("ChainRoot_12"), "chrootDialog 12");
  EXPECT_EQ(name_of("lod_3"), "lodDialog 3");
  EXPECT_EQ(name_of("obj_-1"), "objDialog 4294967295");
  for (const char* none :
       {"", "mat", "mat_", "mat_x", "mat_01", "lod_x", "lod_", "name_0", "newNode", "Mat_0"})
    EXPECT_EQ(name_of(none), "none") << none;
}

TEST_F(ValuesTest, AMissingRecordIsSaidAndNotOpened) {
  const std::pair<const char*, const char*> kMissing[] = {
      {"mat_2", "mat_2: there is no such record\n"},
      {"lod_7", "lod_7: there is no such record\n"},
      {"obj_-1", "obj_-1: there is no such record\n"},
      {"scene_1", "scene_1: there is no such record\n"},
      {"ChainRoot_2", "ChainRoot_2: there is no such record\n"}};
  for (const auto& [node, message] : kMissing) {
    const auto on = values::dialog_of_node(node);
    ASSERT_TRUE(on) << node;
    EXPECT_FALSE(on->dialog->has_record(*qis, on->number));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(on->dialog->open(*qis, on->number));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), message);
  }
}

TEST_F(ValuesTest, ARecordThatWentAwayIsNotWritten) {
  Opened cam = open("cam_1");
  edit(cam, "type.ortho", "1");
  qis = qiNewQis();
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  EXPECT_EQ(values::applyChanges(*qis, "camDialog", *cam.top, 1), 0);
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "cam_1: there is no such record\n");
}

/// A dialog outlives the file it was opened on: what the other file's record has not is left alone.
TEST_F(ValuesTest, ADialogAppliedToAnotherFileWritesOnlyWhatItsRecordHas) {
  Opened mat = open("mat_1"), obj = open("obj_1"), tex = open("tex_1"), lod = open("lod_1");
  make_scene(qi::kVersion1);
  qis->mat_list.records[1].fixed.mat_type = 0x01010101;
  qis->obj_list.records[1].lod_distances.resize(1);
  edit(mat, "prim_color_fog.red", "1");
  edit(mat, "prim_color.red", "1");
  edit(obj, "renderfog.render_pri_g.render_type1", "3");
  edit(tex, "quil2.pers", "0");
  edit(lod, "lod_set.lod_link_group.lod_link2", "9");
  SceneWords expected = scene_words();
  for (Opened* dialog : {&mat, &obj, &tex, &lod}) apply(*dialog);
  expected["mat_1"][10] = f(1);
  EXPECT_EQ(scene_words(), expected) << "only the primitive colour is in both";
}

}  // namespace
