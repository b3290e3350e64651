/// @file
/// Which items each dialog has, in which order and groups, and its label lines.
#include <fstream>
#include <ostream>
#include <vector>

#include "tests/dialogs/values/values_fixture.h"
#include "tests/support/case_name.h"
#include "tests/support/places.h"

namespace {

using values::Item;
using values::ItemKind;

/// An item in short: list{}, group() or radio<> with "-" when horizontal and "!" without a label,
/// [toggle] or [label=toggle], text_columns, option:entries, "label", and a separator by its name alone.
std::string outline(const Item& item) {
  std::string inside;
  for (std::size_t i = 0; i < item.size(); ++i) inside += (i ? " " : "") + outline(item.item(i));
  const std::string look = std::string(item.look().horizontal ? "-" : "") + (item.look().no_label ? "!" : "");
  switch (item.kind()) {
    case ItemKind::list:
      return item.name() + "{" + inside + "}";
    case ItemKind::group:
      return item.name() + look + "(" + inside + ")";
    case ItemKind::radio:
      return item.name() + look + "<" + inside + ">";
    case ItemKind::toggle:
      return (item.look().force_label_format ? "[=" : "[") + item.name() + "]";
    case ItemKind::text:
      return item.name() + "_" + std::to_string(item.look().columns);
    case ItemKind::option:
      return item.name() + ":" + std::to_string(item.look().entries.size());
    case ItemKind::label:
      return '"' + item.name() + '"';
    case ItemKind::separator:
      return item.name();
  }
  return "?";
}

struct Outline {
  const char* name;
  Word version;
  const char* node;
  std::string items;
};
void PrintTo(const Outline& o, std::ostream* out) { *out << o.node; }

class DialogOutline : public ValuesTest, public testing::WithParamInterface<Outline> {};

TEST_P(DialogOutline, HasItsItemsInOrder) {
  make_scene(GetParam().version);
  EXPECT_EQ(outline(*open(GetParam().node).top), "prefList{" + GetParam().items + "}");
}

const std::string kTitle = "title-(\"dialogName\" nodeName_32)";
const std::string kModes =
    "{render_pri-(render_pri_sw:2 render_pri_opt:7) "
    "render_pri_g!(render_type0:20 render_type1:17 render_cycle_type:2)}";
const std::string kObjStart =
    kTitle +
    " sep1 type_g-!([=state_active] type:3) sep2 group-([=group_none] groupid_10) sep3 "
    "pri-([=pri_none] priority_10) sep4 render" +
    kModes;
const std::string kTexStart =
    kTitle +
    " sep1 form-<[form_i] [form_ia] [form_ci] [form_yuv] [form_rgb] [form_rgba]> sep2 "
    "depth-<[depth_4] [depth_8] [depth_16] [depth_32]> sep3 tex_wrap_s-<[wrap_s] [clamp_s] [mirror_s]> sep4 "
    "tex_wrap_t-<[wrap_t] [clamp_t] [mirror_t]>";
const std::string kAnimStart =
    kTitle + " sep1 \"anim_type\" \"frame_rate\" sep2 anim_loop-([=inf] loop_num_4)";

std::string color(const std::string& name) {
  return name + "-(\"" + name + "\" red_10 green_10 blue_10 alpha_10)";
}
std::string panels(const std::string& style, const std::string& inside) {
  std::string all;
  for (const char* word : {"color_type0", "color_type1", "alpha_type0", "alpha_type1"})
    all += (all.empty() ? "" : " ") + style + "_" + word + "-(" + inside + ")";
  return "cc_" + style + "(" + all + ")";
}
const std::string kQuil = panels("quil",
                                 "[vtx] [tri] [prim] [tex0] [tex1] [vtx_alpha] [tri_alpha] [prim_alpha] "
                                 "[tex0_alpha] [tex1_alpha]");
const std::string kKavo = panels("kavo", "cc_a:22 cc_b:22 cc_c:22 cc_d:22");
const std::string kMatStart = kTitle + " sep shade_type-(light:3 shading:2 use:3) sep ";
const std::string kMatStyle = "mat_type-<[quil] [kavo]> cc_g!(" + kQuil + ") ";
const std::string kMatEnd =
    "u_flags0-!(usr_flag0_10 usr_flag1_10 usr_flag2_10 usr_flag3_10) "
    "u_flags1-!(usr_flag4_10 usr_flag5_10 usr_flag6_10 usr_flag7_10)";

const Outline kOutlines[] = {
    {"Scene", 0x200, "scene_0",
     "title-(\"dialogName\" nodeName_20) sep1 video-<[ntsc] [pal] [mpal]> sep2 [gamma] [dither] [divot]"},
    {"Env", 0x200, "env_1",
     kTitle + " sep1 fog([=usefog] fog_color_5 fog_near_5 fog_far_5) sep2 "
              "fill_color-([=do_fill_color] fill_color_rgb_10) sep fill_depth-([=do_fill_depth] "
              "fill_depth_rgb_10) "
              "sep bg_sprite_img-([=bg_color_tex] bg_color_index_5) sep "
              "bg_depth_img-([=bg_depth_tex] bg_depth_index_5)"},
    {"Cam", 0x200, "cam_1",
     kTitle + " sep1 type-<[persp] [ortho]> sep2 clip(near_5 far_5 right_5 left_5 top_5 bottom_5) sep "
              "values(fovy_5 aspect_5 scale_5) sep objects(lookat_5 eye_5 up_5)"},
    {"Light", 0x200, "light_1",
     kTitle + " sep1 ambi(ambi_r_20 ambi_g_20 ambi_b_20) sep2 \"dir_light_num\" \"light_type\""},
    {"ObjVersion1", 0x100, "obj_1", kObjStart + " sep5 have_bd-([bd_yes])"},
    {"ObjVersion2", 0x200, "obj_1",
     kObjStart + " sep5 \"obj_render_label\" renderfog" + kModes + " sep5 have_bd-([bd_yes])"},
    {"Lod", 0x100, "lod_1",
     "header-(nlod_5) sep1 lod_set-(lod_dist_group(lod_dist0_10 lod_dist1_10 lod_dist2_10) "
     "lod_link_group(lod_link0_4 lod_link1_4 lod_link2_4))"},
    {"LodWithoutLevels", 0x100, "lod_0", "header-(nlod_5) sep1 lod_set-(lod_dist_group() lod_link_group())"},
    {"Shape", 0x200, "shape_1",
     "title-(\"dialogName\" nodeName_30) sep1 alias-<[aa] [ra] [no_alias]> sep2 [z_buffer] sep3 "
     "culling-([front] [back]) sep4 [vtxalpha] sep5 \"kind\""},
    {"Part", 0x200, "part_1", kTitle},
    {"MatVersion1ShowsNoExtension", 0x100, "mat_1",
     kMatStart + kMatStyle + "sep " + color("prim_color") + " sep " + kMatEnd},
    {"MatVersion2", 0x200, "mat_1",
     kMatStart + color("ambient") + " " + color("emission") + " " + color("diffuse") + " sep " + kMatStyle +
         "sep mat_type_fog-<[quil_fog] [kavo_fog]> cc_g_fog!(" + kKavo + ") sep " + color("prim_color") +
         " sep " + color("prim_color_fog") + " sep " + kMatEnd},
    {"TexVersion1ShowsNoQuil2", 0x100, "tex_1", kTexStart},
    {"TexVersion2", 0x200, "tex_1",
     kTexStart + " sep5 quil2(texfilter:3 [=pers]) \"mipmaplevel\" \"usepalette\""},
    {"AnimVersion1ShowsNoQuil2", 0x100, "anim_1", kAnimStart},
    {"AnimVersion2WithoutFlags", 0x200, "anim_1", kAnimStart + " sep3 quil2(\"no_use\")"},
    {"ChainRoot", 0x200, "ChainRoot_1", kTitle},
    {"Joint", 0x200, "joint_1", "title(nodeName_32 type_5)"},
    {"Effector", 0x200, "effector_1", "title(nodeName_32 type_5)"},
};
INSTANTIATE_TEST_SUITE_P(Values, DialogOutline, testing::ValuesIn(kOutlines), CaseName());

TEST_F(ValuesTest, EachCombinerOfAMaterialHasThePanelsOfItsOwnStyle) {
  auto& mat = qis->mat_list.records[1];
  constexpr Word kQuilStyle = 0, kKavoStyle = 0x01010101;
  for (const Word style : {kQuilStyle, kKavoStyle}) {
    for (const Word fog_style : {kQuilStyle, kKavoStyle}) {
      mat.fixed.mat_type = style;
      mat.ext->head.mat_type_fog = fog_style;
      const Opened dialog = open("mat_1");
      EXPECT_EQ(outline(*dialog.top->find("cc_g")), "cc_g!(" + (style ? kKavo : kQuil) + ")");
      EXPECT_EQ(outline(*dialog.top->find("cc_g_fog")), "cc_g_fog!(" + (fog_style ? kKavo : kQuil) + ")");
    }
  }
}

struct Channels {
  const char* name;
  Word flags;
  std::string quil2;
};
void PrintTo(const Channels& c, std::ostream* out) { *out << std::hex << c.flags; }

class AnimChannels : public ValuesTest, public testing::WithParamInterface<Channels> {};

TEST_P(AnimChannels, OffersConstraintsForWhatTheAnimationLeavesFree) {
  qis->anim_list.records[1].ext->head.flags = GetParam().flags;
  EXPECT_EQ(outline(*open("anim_1").top->find("quil2")), "quil2(" + GetParam().quil2 + ")");
}

const std::string kOrient = "orient_c-([=orient_c_on] orient_c_node_5)";
const std::string kDir = "dir_c-([=dir_c_on] dir_c_node_5)";
const std::string kUpv = "upv_c-([=upv_c_on] upv_c_node_5)";
const std::string kPref = "pref_axis_c-([=pref_axis_c_on] pref_axis_c_node_5)";
const std::string kPos = "pos_c-([=pos_c_on] pos_c_node_5)";
const std::string kScale = "scale_c_g-(scale_c-<[scale_c_uniq] [scale_c_classic]> scale_c_node_5)";
const std::string kRotate = "rotate-([=rotate_x] [=rotate_y] [=rotate_z])";

const Channels kChannels[] = {
    {"None", 0, "\"no_use\""},
    {"RotateAxis", 0x1, "[=rotate_axis] " + kPos + " " + kScale},
    {"RotateAxisHidesTheOtherRotations", 0x1f, "[=rotate_axis] " + kPos + " " + kScale},
    {"RotateX", 0x2, kRotate + " " + kOrient + " " + kPos + " " + kScale},
    {"RotateY", 0x4, kRotate + " " + kUpv + " " + kPos + " " + kScale},
    {"RotateZ", 0x8, kRotate + " " + kDir + " " + kPref + " " + kPos + " " + kScale},
    {"RotationsHideOrientation", 0x1e, kRotate + " " + kPos + " " + kScale},
    {"OrientationXY", 0x10,
     "[=orientation_xy] " + kOrient + " " + kDir + " " + kUpv + " " + kPref + " " + kPos + " " + kScale},
    {"RotateXAndTranslation", 0x22, kRotate + " [=translation] " + kOrient + " " + kScale},
    {"UniqueScale", 0x40,
     "scale-<[unique] [classic]> " + kOrient + " " + kDir + " " + kUpv + " " + kPref + " " + kPos},
    {"ClassicScale", 0x80,
     "scale-<[unique] [classic]> " + kOrient + " " + kDir + " " + kUpv + " " + kPref + " " + kPos},
    {"AllChannels", 0xff, "[=rotate_axis] [=translation] scale-<[unique] [classic]>"},
    {"OnlyAConstraint", 0x100, kOrient + " " + kDir + " " + kUpv + " " + kPref + " " + kPos + " " + kScale},
    {"AnUnknownFlag", 0x80000000,
     kOrient + " " + kDir + " " + kUpv + " " + kPref + " " + kPos + " " + kScale},
};
INSTANTIATE_TEST_SUITE_P(Values, AnimChannels, testing::ValuesIn(kChannels), CaseName());

/// A dialog has no group that is always empty: whatever the flags, something stands under "quil2".
TEST_F(ValuesTest, AnimChannelsAreNeverEmpty) {
  for (Word flags = 0; flags < 0x200; ++flags) {
    qis->anim_list.records[1].ext->head.flags = flags;
    EXPECT_GT(open("anim_1").top->find("quil2")->size(), 0u) << std::hex << flags;
  }
}

std::vector<std::string> pinned_lines(const std::string& dialog) {
  std::ifstream file(support::data_file("dialog_labels.txt"));
  std::vector<std::string> lines;
  bool inside = false;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("[")) {
      inside = line == "[" + dialog + "]";
    } else if (inside) {
      for (auto tab = line.find("\\t"); tab != line.npos; tab = line.find("\\t", tab))
        line.replace(tab, 2, "\t");
      lines.push_back(line);
    }
  }
  return lines;
}

TEST(LabelLines, StandAsTheyAlwaysStood) {
  std::size_t count = 0;
  for (const values::Dialog* dialog : values::dialogs()) {
    SCOPED_TRACE(dialog->name());
    const std::vector<std::string> pinned = pinned_lines(dialog->name());
    EXPECT_FALSE(pinned.empty());
    EXPECT_EQ(std::vector<std::string>(dialog->lines().begin(), dialog->lines().end()), pinned);
    count += pinned.size();
  }
  EXPECT_EQ(count, 243u);
}

/// Lines that match no widget are kept, so that their widgets keep the toolkit's default labels.
TEST(LabelLines, MisspeltOnesMatchNothing) {
  const auto lines_of = [](const char* node) { return values::dialog_of_node(node)->dialog->lines(); };
  EXPECT_STREQ(values::label_line(lines_of("obj_0"), "type_g", "Label"), nullptr);
  EXPECT_STREQ(values::label_line(lines_of("anim_0"), "scale", "Label"), nullptr);
  EXPECT_STREQ(values::label_line(lines_of("anim_0"), "scale_c", "Label"), "");
  EXPECT_STREQ(values::label_line(lines_of("joint_0"), "dialogName", "Base"), nullptr);
  EXPECT_STREQ(values::label_line(lines_of("env_0"), "fog_near", "Label"), " for near (0 - 1000)");
}

}  // namespace
