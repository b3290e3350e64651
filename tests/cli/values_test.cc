/// @file
/// Runs the built quilscene's `show`, and `set` lines of edit scripts.
#include <gmock/gmock.h>

#include <map>
#include <ostream>

#include "tests/cli/quilscene_run.h"
#include "tests/support/case_name.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// What `show` prints: the value of each "NODE PATH".
using Shown = std::map<std::string, std::string>;

class Values : public Quilscene {
 protected:
  /// Shows all nodes of the graph of a scene file.
  Shown show_all(const std::string& file, const SharedScene& facts) const {
    std::string nodes;
    for (const std::string& node : facts.nodes) nodes += " " + node;
    const Ran ran = run("show " + file + nodes);
    EXPECT_EQ(ran.status, 0);
    EXPECT_THAT(ran.err, IsEmpty());
    Shown shown;
    std::istringstream lines{ran.out};
    for (std::string line; std::getline(lines, line);) {
      const auto equals = line.find(" = ");
      if (equals == line.npos) {
        ADD_FAILURE() << line;
      } else {
        shown[line.substr(0, equals)] = line.substr(equals + 3);
      }
    }
    return shown;
  }
};

struct ShowRow {
  const char* name;
  const char* scene;
  const char* node;
  std::string out;  ///< without the node's name
};
void PrintTo(const ShowRow& row, std::ostream* out) { *out << row.node; }

class ShowOf : public Values, public testing::WithParamInterface<ShowRow> {};

TEST_P(ShowOf, IsEveryItemInOrder) {
  const Ran ran = run("show " + scene_path(GetParam().scene) + " " + GetParam().node);
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.err, IsEmpty());
  std::string out;
  for (const std::string& line : lines_with(ran.out, GetParam().node)) out += line + "\n";
  EXPECT_EQ(out, GetParam().out);
}

const ShowRow kShown[] = {
    {"Scene", "robot", "scene_0",
     "title.dialogName = \ntitle.nodeName = robot_workshop\nvideo.ntsc = 1\nvideo.pal = 0\nvideo.mpal = 0\n"
     "gamma = 1\ndither = 1\ndivot = 0\n"},
    {"Lod", "robot", "lod_13",
     "header.nlod = 3\nlod_set.lod_dist_group.lod_dist0 = 20\nlod_set.lod_dist_group.lod_dist1 = 80\n"
     "lod_set.lod_dist_group.lod_dist2 = 500\nlod_set.lod_link_group.lod_link0 = 1\n"
     "lod_set.lod_link_group.lod_link1 = 12\nlod_set.lod_link_group.lod_link2 = 2\n"},
    {"Env", "robot", "env_0",
     "title.dialogName = \ntitle.nodeName = day\nfog.usefog = 1\nfog.fog_color = 8090a0ff\nfog.fog_near = "
     "900\n"
     "fog.fog_far = 1000\nfill_color.do_fill_color = 1\nfill_color.fill_color_rgb = 202040ff\n"
     "fill_depth.do_fill_depth = 0\nfill_depth.fill_depth_rgb = \nbg_sprite_img.bg_color_tex = 1\n"
     "bg_sprite_img.bg_color_index = 5\nbg_depth_img.bg_depth_tex = 0\nbg_depth_img.bg_depth_index = \n"},
    {"Light", "robot", "light_0",
     "title.dialogName = \ntitle.nodeName = sun\nambi.ambi_r = 0.1\nambi.ambi_g = 0.1\nambi.ambi_b = 0.15\n"
     "dir_light_num = number of dir/pos lights = 2\nlight_type = light type = Directional\n"},
    {"Part", "robot", "part_0", "title.dialogName = \ntitle.nodeName = bolt_ring\n"},
    {"Anim", "robot", "anim_0",
     "title.dialogName = \ntitle.nodeName = a_still\nanim_type = animation type = STATIC\n"
     "frame_rate = frame rate = 0\nanim_loop.inf = 1\nanim_loop.loop_num = \n"},
    {"ObjVersion2", "skeleton", "obj_1",
     "title.dialogName = \ntitle.nodeName = body\ntype_g.state_active = 1\ntype_g.type = 3D\n"
     "group.group_none = 1\ngroup.groupid = \npri.pri_none = 1\npri.priority = \n"
     "render.render_pri.render_pri_sw = QUIL ->\nrender.render_pri.render_pri_opt = XLU_DECAL\n"
     "render.render_pri_g.render_type0 = OPA_SURF\nrender.render_pri_g.render_type1 = OPA_SURF\n"
     "render.render_pri_g.render_cycle_type = 1 cycle\nobj_render_label = for Fog\n"
     "renderfog.render_pri.render_pri_sw = QUIL ->\nrenderfog.render_pri.render_pri_opt = OPA_SURF\n"
     "renderfog.render_pri_g.render_type0 = void\nrenderfog.render_pri_g.render_type1 = OPA_DECAL\n"
     "renderfog.render_pri_g.render_cycle_type = 2 cycle\nhave_bd.bd_yes = 0\n"},
    {"Shape", "skeleton", "shape_1",
     "title.dialogName = \ntitle.nodeName = cluster_face\nalias.aa = 1\nalias.ra = 0\nalias.no_alias = 0\n"
     "z_buffer = 1\nculling.front = 0\nculling.back = 1\nvtxalpha = 0\nkind = link to ClusterShape[0]\n"},
    {"Tex", "skeleton", "tex_1",
     "title.dialogName = \ntitle.nodeName = scales_8bit\nform.form_i = 0\nform.form_ia = 0\nform.form_ci = "
     "1\n"
     "form.form_yuv = 0\nform.form_rgb = 0\nform.form_rgba = 0\ndepth.depth_4 = 0\ndepth.depth_8 = 1\n"
     "depth.depth_16 = 0\ndepth.depth_32 = 0\ntex_wrap_s.wrap_s = 1\ntex_wrap_s.clamp_s = 0\n"
     "tex_wrap_s.mirror_s = 0\ntex_wrap_t.wrap_t = 1\ntex_wrap_t.clamp_t = 0\ntex_wrap_t.mirror_t = 0\n"
     "quil2.texfilter = POINT\nquil2.pers = 0\nmipmaplevel = mipmap level = 0\nusepalette = Use Color "
     "Palette\n"},
    {"ChainRoot", "skeleton", "ChainRoot_0", "title.dialogName = \ntitle.nodeName = arm_chain\n"},
    {"Joint", "skeleton", "joint_0", "title.nodeName = wrist\ntitle.type = 0x1\n"},
    {"Effector", "skeleton", "effector_0", "title.nodeName = hand_effector\ntitle.type = 0x1f\n"},
};
INSTANTIATE_TEST_SUITE_P(Kinds, ShowOf, testing::ValuesIn(kShown), CaseName());

TEST_F(Values, NestedGroupsAreJoinedWithDots) {
  const Ran ran = run("show " + scene_path("skeleton") + " mat_0");
  EXPECT_THAT(ran.out, HasSubstr("\nmat_0 cc_g.cc_quil.quil_color_type0.vtx = "));
  EXPECT_THAT(ran.out, HasSubstr("\nmat_0 cc_g_fog.cc_kavo.kavo_color_type0.cc_c = prim\n"));
}

class EveryNode : public Values, public testing::WithParamInterface<const char*> {};

/// Whatever is shown can be set again, and that changes nothing.
TEST_P(EveryNode, TakesBackWhatItShows) {
  const SharedScene facts = shared_scene(GetParam());
  std::string script;
  std::size_t labels = 0;
  for (const auto& [item, value] : show_all(facts.path, facts)) {
    const std::string path = item.substr(item.find(' ') + 1), name = path.substr(path.rfind('.') + 1);
    const bool label = name == "dialogName" || value == name || value.find(" = ") != value.npos ||
                       value.starts_with("link to ") || name == "usepalette" || name == "no_use" ||
                       name == "obj_render_label";
    if (label) {
      ++labels;
    } else {
      script += "set " + item.substr(0, item.find(' ')) + " " + path + "=\"" + value + "\"\n";
    }
  }
  EXPECT_GT(labels, 0u);
  const Ran ran = edit(GetParam(), script);
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_TRUE(written("out.quil") == read_file(facts.path));
}
INSTANTIATE_TEST_SUITE_P(Data, EveryNode, testing::ValuesIn(kSharedScenes),
                         [](const auto& row) { return std::string{row.param}; });

/// One `set` line on a scene, and all that is then shown differently.
struct SetRow {
  const char* name;
  const char* scene;
  const char* line;
  Shown changed;
};
void PrintTo(const SetRow& row, std::ostream* out) { *out << row.line; }

class SetOn : public Values, public testing::WithParamInterface<SetRow> {};

TEST_P(SetOn, ChangesTheSavedFileJustThere) {
  const SetRow& row = GetParam();
  const SharedScene facts = shared_scene(row.scene);
  Shown expected = show_all(facts.path, facts);
  const Ran ran = edit(row.scene, row.line);
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.err, IsEmpty());
  EXPECT_THAT(ran.out, testing::EndsWith("\n-> 1\n"));
  for (const auto& [item, value] : row.changed) {
    EXPECT_TRUE(expected.contains(item)) << item;
    expected[item] = value;
  }
  EXPECT_EQ(show_all("out.quil", facts), expected);
  const Ran checked = run("check out.quil");
  EXPECT_EQ(checked.status, 0) << checked.out;
}

const SetRow kSet[] = {
    {"Scene",
     "robot",
     "set scene_0 video.mpal=1 dither=0",
     {{"scene_0 video.ntsc", "0"}, {"scene_0 video.mpal", "1"}, {"scene_0 dither", "0"}}},
    {"Env",
     "robot",
     "set env_0 fog.fog_near=5000 fill_depth.do_fill_depth=1 fill_depth.fill_depth_rgb=fffc",
     {{"env_0 fog.fog_near", "1000"},
      {"env_0 fill_depth.do_fill_depth", "1"},
      {"env_0 fill_depth.fill_depth_rgb", "fffc"}}},
    {"Cam",
     "robot",
     "set cam_0 clip.near=0.25 type.ortho=1",
     {{"cam_0 clip.near", "0.25"}, {"cam_0 type.persp", "0"}, {"cam_0 type.ortho", "1"}}},
    {"CamTurnedOffFirst",
     "robot",
     "set cam_0 type.persp=0 type.ortho=1",
     {{"cam_0 type.persp", "0"}, {"cam_0 type.ortho", "1"}}},
    {"CamTurnedOffLast",
     "robot",
     "set cam_0 type.ortho=1 type.persp=0",
     {{"cam_0 type.persp", "0"}, {"cam_0 type.ortho", "1"}}},
    {"Light", "robot", "set light_0 ambi.ambi_r=2.5", {{"light_0 ambi.ambi_r", "2.5"}}},
    {"Obj",
     "robot",
     "set obj_0 type_g.type=BILLBOARD group.group_none=0 group.groupid=1f",
     {{"obj_0 type_g.type", "BILLBOARD"}, {"obj_0 group.group_none", "0"}, {"obj_0 group.groupid", "0x1f"}}},
    {"ObjByIndex",
     "robot",
     "set obj_0 render.render_pri_g.render_cycle_type=1",
     {{"obj_0 render.render_pri_g.render_cycle_type", "2 cycle"}}},
    {"ObjInMarks",
     "skeleton",
     "set obj_1 renderfog.render_pri_g.render_cycle_type=\"1 cycle\"",
     {{"obj_1 renderfog.render_pri_g.render_cycle_type", "1 cycle"}}},
    {"Lod",
     "robot",
     "set lod_13 lod_set.lod_dist_group.lod_dist1=99.5 lod_set.lod_link_group.lod_link2=3",
     {{"lod_13 lod_set.lod_dist_group.lod_dist1", "99.5"}, {"lod_13 lod_set.lod_link_group.lod_link2", "3"}}},
    {"Shape",
     "robot",
     "set shape_0 culling.front=1 alias.no_alias=1",
     {{"shape_0 culling.front", "1"}, {"shape_0 alias.aa", "0"}, {"shape_0 alias.no_alias", "1"}}},
    {"Part", "robot", "set part_0 title.nodeName=\"a new name\"", {{"part_0 title.nodeName", "a_new_name"}}},
    {"PartWithMarksInItsName",
     "robot",
     "set part_0 title.nodeName=\"the \\\"b\\\\olt\\\"\"  # renamed",
     {{"part_0 title.nodeName", "the_\"b\\olt\""}}},
    {"PartWithBareMarks",
     "robot",
     "set part_0 title.nodeName=#1=\"2\"",
     {{"part_0 title.nodeName", "#1=\"2\""}}},
    {"PartWithoutName", "robot", "set part_0 title.nodeName=", {{"part_0 title.nodeName", ""}}},
    {"Mat",
     "robot",
     "set mat_0 prim_color.red=1.5 shade_type.light=GLOBAL u_flags1.usr_flag7=ff",
     {{"mat_0 prim_color.red", "1"},
      {"mat_0 shade_type.light", "GLOBAL"},
      {"mat_0 u_flags1.usr_flag7", "0xff"}}},
    {"MatOfVersion2",
     "skeleton",
     "set mat_0 diffuse.green=0.5 cc_g_fog.cc_kavo.kavo_color_type1.cc_b=1",
     {{"mat_0 diffuse.green", "0.5"}, {"mat_0 cc_g_fog.cc_kavo.kavo_color_type1.cc_b", "1"}}},
    {"Tex",
     "skeleton",
     "set tex_1 depth.depth_16=1 quil2.texfilter=AVERAGE",
     {{"tex_1 quil2.texfilter", "AVERAGE"}}},
    {"Anim",
     "robot",
     "set anim_0 anim_loop.inf=0 anim_loop.loop_num=0x10",
     {{"anim_0 anim_loop.inf", "0"}, {"anim_0 anim_loop.loop_num", "16"}}},
    {"AnimChannelsAreOnlyShown", "skeleton", "set anim_1 quil2.dir_c.dir_c_on=1", {}},
    {"ChainRoot",
     "skeleton",
     "set ChainRoot_0 title.nodeName=spine",
     {{"ChainRoot_0 title.nodeName", "spine"}}},
    {"Joint", "skeleton", "set joint_0 title.type=1f", {{"joint_0 title.type", "0x1f"}}},
    {"Effector",
     "skeleton",
     "set effector_0 title.type=0 title.nodeName=tip",
     {{"effector_0 title.type", "0"}, {"effector_0 title.nodeName", "tip"}}},
    {"NothingChanged", "robot", "set cam_0 clip.near=1", {}},
};
INSTANTIATE_TEST_SUITE_P(Kinds, SetOn, testing::ValuesIn(kSet), CaseName());

TEST_F(Values, SetPrintsWhatTheDialogPrints) {
  const Ran ran = edit("robot", "set part_0 title.nodeName=wheel");
  EXPECT_THAT(ran.out, StartsWith("node_index = 0\nAPPLY.\nThis is partDialog, index = 0.\nPart is changed.\n"
                                  "prefg->size() = 2\nitem->name() = title\npart name = wheel\n-> 1\n"));
}

struct BadSet {
  const char* name;
  const char* line;
  const char* complaint;
};
void PrintTo(const BadSet& row, std::ostream* out) { *out << row.line; }

class SetOfWhatIsNot : public Values, public testing::WithParamInterface<BadSet> {};

TEST_P(SetOfWhatIsNot, NamesItAndWritesNothing) {
  const Ran ran = edit("robot", "set part_0 title.nodeName=wheel\n" + std::string(GetParam().line) +
                                    "\nset part_1 title.nodeName=wheel\n");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.err, "quilscene: script:2: " + std::string(GetParam().complaint) + ", nothing is written\n");
  EXPECT_EQ(lines_with(ran.out, "->"), (std::vector<std::string>{"1"}));
  EXPECT_FALSE(exists("out.quil"));
}

const BadSet kBad[] = {
    {"NodeOutsideItsList", "set mat_99 a=1", "no such node: mat_99"},
    {"NodeOfNoKind", "set thing_0 a=1", "no such node: thing_0"},
    {"NodeOfVersion2", "set joint_0 title.type=1", "no such node: joint_0"},
    {"Item", "set mat_0 prim_color.redd=1", "mat_0: no such item: prim_color.redd"},
    {"ItemOfVersion2", "set mat_0 diffuse.red=1", "mat_0: no such item: diffuse.red"},
    {"Group", "set mat_0 prim_color=1", "mat_0: this item can't be changed: prim_color"},
    {"Label", "set anim_0 anim_type=1", "anim_0: this item can't be changed: anim_type"},
    {"Entry", "set mat_0 shade_type.light=LOUD", "mat_0: no such entry of light: LOUD"},
    {"EntryBeyondTheMenu", "set mat_0 shade_type.light=3", "mat_0: no such entry of light: 3"},
    {"ToggleValue", "set scene_0 gamma=yes", "scene_0: gamma is 0 or 1, not: yes"},
    {"RadioTurnedOff", "set scene_0 video.ntsc=0",
     "scene_0: turn on another one of video instead of turning off: ntsc"},
    {"RadioTurnedOffAndOnAgain", "set scene_0 video.pal=1 gamma=0 video.pal=0",
     "scene_0: turn on another one of video instead of turning off: pal"},
    {"SecondItem", "set mat_0 prim_color.red=1 nothing=2", "mat_0: no such item: nothing"},
};
INSTANTIATE_TEST_SUITE_P(Rows, SetOfWhatIsNot, testing::ValuesIn(kBad), CaseName());

TEST_F(Values, ANameWhoseIndexIsOutOfRangeIsNotLostButRefused) {
  const std::string robot = read_file(scene_path("robot"));
  const std::size_t part_0 = robot.find(std::string("\0\x09\x01\0", 4));
  ASSERT_NE(part_0, robot.npos);
  put("dangling.quil", with_word(robot, part_0 + 12, 9999));
  put("script", "set part_0 title.nodeName=wheel\nname part_0 wheel\nname part_1 wheel\n");
  const Ran ran = run("edit dangling.quil -o out.quil --script script");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(lines_with(ran.out, "->"), (std::vector<std::string>{"0", "0", "1"}));
  const std::string line = "part_0: can't be renamed: its name index is 9999, and the scene has ";
  EXPECT_THAT(ran.err, testing::MatchesRegex(line + "[0-9]+ names\nquilscene: script:1: refused\n" + line +
                                             "[0-9]+ names\nquilscene: script:2: part_0 can't be named\n"));
  EXPECT_EQ(word_at(written("out.quil"), part_0 + 12), 9999u);
}

TEST_F(Values, ShowSaysWhichNodeIsMissingAndShowsTheOthers) {
  const Ran ran = run("show " + scene_path("robot") + " mat_99 part_0 no 'a\nb'");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.out, "part_0 title.dialogName = \npart_0 title.nodeName = bolt_ring\n");
  EXPECT_EQ(
      ran.err,
      "quilscene: no such node: mat_99\nquilscene: no such node: no\nquilscene: no such node: a\\x0ab\n");
}

TEST_F(Values, ShowOfAnUnreadableFileFails) {
  const Ran ran = run("show missing.quil mat_0");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.out, IsEmpty());
  EXPECT_THAT(ran.err, HasSubstr("missing.quil"));
}

/// The first name of a scene brings its list along.
TEST_F(Values, NamesInAFileWithoutNamesAreSaved) {
  for (const char* scene : {"absent_lists_v1", "absent_lists_v2"}) {
    EXPECT_EQ(edit(scene, "set scene_0 title.nodeName=world\nset obj_1 title.nodeName=\"my model\"\n").status,
              0);
    const Ran ran = run("show out.quil scene_0 obj_1");
    EXPECT_THAT(ran.out, HasSubstr("scene_0 title.nodeName = world\n"));
    EXPECT_THAT(ran.out, HasSubstr("obj_1 title.nodeName = my_model\n"));
    EXPECT_THAT(ran.err, IsEmpty());
  }
}

}  // namespace
