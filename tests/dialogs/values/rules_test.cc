/// @file
/// The rules by which single dialogs show and store: each one that a user could stumble over.
#include "dialogs/values/optionvalues.h"
#include "tests/dialogs/values/dialog_rule.h"

namespace {

using values::Item;

TEST_P(DialogRule, Holds) { check(); }

const Rule kSceneEnvCamLightRules[] = {
    {"SceneMpalGammaDivotIs16",
     "scene_0",
     {{3, 0}},
     {{"video.ntsc", "1"}},
     {{"video.mpal", "1"}, {"gamma", "1"}, {"divot", "1"}},
     {{3, 0x16}}},
    {"ScenePalIsTestedBeforeMpal",
     "scene_0",
     {{3, 0x3}},
     {{"video.pal", "1"}, {"video.mpal", "0"}},
     {{"gamma", "1"}},
     {{3, 0x5}}},
    {"SceneLosesItsOtherBits", "scene_0", {{3, 0xFFFFFF00}}, {}, {{"dither", "1"}}, {{3, 0x8}}},
    {"EnvFogBeyond1000Is1000",
     "env_1",
     {},
     {},
     {{"fog.fog_near", "5000"}, {"fog.fog_far", "1001"}},
     {{6, 1000}, {7, 1000}}},
    {"EnvNegativeFogIs1000", "env_1", {}, {}, {{"fog.fog_near", "-1"}}, {{6, 1000}}},
    {"EnvWithoutFogKeepsItsValues",
     "env_1",
     {},
     {},
     {{"fog.usefog", "0"}, {"fog.fog_color", "1"}, {"fog.fog_near", "1"}, {"fog.fog_far", "1"}},
     {{4, 0}}},
    {"EnvFillColorOffIsUnset", "env_1", {}, {}, {{"fill_color.do_fill_color", "0"}}, {{8, kUnset}}},
    {"EnvFillDepthOnTakesTheText",
     "env_1",
     {},
     {{"fill_depth.fill_depth_rgb", ""}},
     {{"fill_depth.do_fill_depth", "1"}, {"fill_depth.fill_depth_rgb", "0xfffc"}},
     {{9, 0xfffc}}},
    {"EnvJunkIsZero",
     "env_1",
     {},
     {},
     {{"fog.fog_color", "red"},
      {"fog.fog_near", ""},
      {"fill_color.fill_color_rgb", "#fff"},
      {"bg_sprite_img.bg_color_index", "first"}},
     {{5, 0}, {6, 0}, {8, 0}, {10, 0}}},
    {"EnvOddUseFogShowsOnAndStores1",
     "env_1",
     {{4, 7}},
     {{"fog.usefog", "1"}},
     {{"fog.fog_far", "1"}},
     {{4, 1}, {7, 1}}},
    {"CamOddTypeIsOrtho",
     "cam_1",
     {{4, 9}},
     {{"type.persp", "0"}, {"type.ortho", "1"}},
     {{"clip.far", "1"}},
     {{4, 1}, {6, f(1)}}},
    {"CamNearAloneRewritesAllClippingValues",
     "cam_1",
     {{6, f(1234567)}, {10, f(0.1234567f)}},
     {{"clip.far", "1.23457e+06"}, {"clip.bottom", "0.123457"}},
     {{"clip.near", "0.25"}},
     {{5, f(0.25f)}, {6, f(1234570)}, {10, f(0.123457f)}}},
    {"CamOtherGroupsKeepWhatTheirTextsLose",
     "cam_1",
     {{6, f(1234567)}, {11, f(0.1234567f)}},
     {},
     {{"objects.eye", "5"}},
     {{15, 5}}},
    {"CamJunkIsZero",
     "cam_1",
     {},
     {},
     {{"clip.near", "near"}, {"values.fovy", ""}, {"objects.up", "obj_3"}},
     {{5, 0}, {11, 0}, {16, 0}}},
    {"CamNumbersEndWhereTheirDigitsEnd",
     "cam_1",
     {},
     {},
     {{"clip.near", " 12.5mm"}, {"objects.up", "7th"}},
     {{5, f(12.5f)}, {16, 7}}},
    {"CamNumbersOfMoreThan32BitsAreCut",
     "cam_1",
     {},
     {},
     {{"objects.lookat", "4294967296"}, {"objects.eye", "99999999999999999999"}, {"objects.up", "-2"}},
     {{14, kUnset}, {15, kUnset}, {16, 0xFFFFFFFE}}},
    {"LightMayBeBrighterThanOne", "light_1", {}, {}, {{"ambi.ambi_g", "2.5"}}, {{7, f(2.5f)}}},
    {"LightShowsTypeAndCount",
     "light_1",
     {{5, 4}, {9, 12}},
     {{"light_type", "light type = Positional"}, {"dir_light_num", "number of dir/pos lights = 12"}},
     {{"ambi.ambi_r", "junk"}},
     {{6, 0}}},
    {"LightOfType0IsDirectional", "light_1", {{5, 0}}, {{"light_type", "light type = Directional"}}, {}, {}},
};

constexpr char kSw[] = "render.render_pri.render_pri_sw", kOpt[] = "render.render_pri.render_pri_opt",
               kType0[] = "render.render_pri_g.render_type0", kType1[] = "render.render_pri_g.render_type1",
               kCycle[] = "render.render_pri_g.render_cycle_type",
               kFogType0[] = "renderfog.render_pri_g.render_type0";

const Rule kObjLodRules[] = {
    {"ObjXluSurfWithKavogbi",
     "obj_1",
     {{9, 0x00D00000}},
     {{kSw, "QUIL ->"}, {kOpt, "OPA_SURF"}},
     {{kSw, "KAVOGBI"}, {kOpt, "XLU_SURF"}},
     {{9, 0x04500000}}},
    {"ObjShowsXluSurfWithKavogbi",
     "obj_1",
     {{9, 0x04500000}},
     {{kSw, "KAVOGBI"}, {kOpt, "XLU_SURF"}},
     {},
     {}},
    {"ObjClassesBetweenTwoAreTheUpperOne",
     "obj_1",
     {{9, 0x00C12345}},
     {{kOpt, "OPA_SURF"}},
     {{"have_bd.bd_yes", "1"}},
     {{9, 0x00D00000}, {12, 1}}},
    {"ObjClassAboveTheMenuIsKept",
     "obj_1",
     {{9, 0x00F00000}},
     {{kOpt, "-1"}},
     {{"have_bd.bd_yes", "1"}},
     {{12, 1}}},
    {"ObjClassBelowTheMenu",
     "obj_1",
     {{9, 0}},
     {{kOpt, "XLU_DECAL"}},
     {{"have_bd.bd_yes", "1"}},
     {{9, 0x00100000}, {12, 1}}},
    {"ObjAnySwitchBitsAreKavogbi",
     "obj_1",
     {{9, 0x80D00000}},
     {{kSw, "KAVOGBI"}},
     {{"have_bd.bd_yes", "1"}},
     {{9, 0x04D00000}, {12, 1}}},
    {"ObjTexEdgeIsWrittenBack",
     "obj_1",
     {{10, 0x106}},
     {{kType0, "TEX_EDGE"}},
     {{kCycle, "1 cycle"}},
     {{8, 0}}},
    {"ObjModesBeyondTheMenuAreKept",
     "obj_1",
     {{10, 0x1FE}, {11, 0x212}},
     {{kType0, "254"}, {kType1, "18"}},
     {{kCycle, "1 cycle"}},
     {{8, 0}}},
    {"ObjModesGetTheirCycleBits",
     "obj_1",
     {{10, 0x6}, {11, 0x10003}},
     {{kType0, "TEX_EDGE"}},
     {{kCycle, "1 cycle"}},
     {{8, 0}, {10, 0x106}, {11, 0x203}}},
    {"ObjTwoCyclesIsExactlyOne",
     "obj_1",
     {{8, 2}},
     {{kCycle, "1 cycle"}},
     {{"have_bd.bd_yes", "1"}},
     {{8, 0}, {12, 1}}},
    {"ObjVoidFogModeIsNotWritten",
     "obj_1",
     {{kExt + 2, 0x106}},
     {{kFogType0, "void"}},
     {{"have_bd.bd_yes", "1"}},
     {{12, 1}}},
    {"ObjPickingAVoidFogModeIsNotWritten",
     "obj_1",
     {{kExt + 2, 0x112}},
     {{kFogType0, "FOG_SHADE_A"}},
     {{kFogType0, "void"}},
     {},
     {{kFogType0, "void"}}},
    {"ObjWritesTheRestWithoutAChangeTest",
     "obj_1",
     {{4, 0xFF01}, {8, 7}, {12, 9}, {kExt + 3, 0x8}},
     {{"type_g.state_active", "1"}, {"have_bd.bd_yes", "1"}},
     {{"type_g.type", "NULL"}},
     {{4, 1}, {5, 0}, {8, 0}, {12, 1}, {kExt + 3, 0x208}}},
    {"ObjUnchangedGroupKeepsItsWord",
     "obj_1",
     {{6, 0xFFFFFFFF}, {7, 8}},
     {{"group.groupid", "0xffffffff"}, {"pri.priority", "0x8"}, {"pri.pri_none", "0"}},
     {{"type_g.type", "NULL"}},
     {{5, 0}}},
    {"ObjLowByteOfStateCounts",
     "obj_1",
     {{4, 0x100}},
     {{"type_g.state_active", "0"}},
     {{"type_g.type", "NULL"}},
     {{4, 0}, {5, 0}}},
    {"ObjTypeBeyondTheMenuIsKept",
     "obj_1",
     {{5, 0xFFFFFFF0}},
     {{"type_g.type", "-16"}},
     {{"have_bd.bd_yes", "1"}},
     {{12, 1}}},
    {"ObjPriorityIsHexadecimal",
     "obj_1",
     {{7, 0}},
     {{"pri.pri_none", "1"}, {"pri.priority", ""}},
     {{"pri.pri_none", "0"}, {"pri.priority", "10"}},
     {{7, 0x10}}},
    {"ObjJunkGroupIsZero", "obj_1", {}, {}, {{"group.groupid", "group"}}, {{6, 0}}},
};

const Rule kShapePartRules[] = {
    {"ShapeAntiAliasingIsTestedBeforeReduced",
     "shape_1",
     {{4, 0x3}},
     {{"alias.aa", "1"}, {"alias.ra", "0"}},
     {{"z_buffer", "1"}},
     {{4, 0x5}}},
    {"ShapeLosesItsOtherBits",
     "shape_1",
     {{4, 0xFFFFFE08}},
     {{"alias.no_alias", "1"}},
     {{"vtxalpha", "1"}},
     {{4, 0x100}}},
    {"ShapeBothCullingsAre30",
     "shape_1",
     {{4, 0}},
     {},
     {{"culling.front", "1"}, {"culling.back", "1"}},
     {{4, 0x30}}},
    {"ShapeLinksToAnEnvelope", "shape_1", {{kExt, 0x220100}}, {{"kind", "link to Envelope[9]"}}, {}, {}},
    {"ShapeLinksToAClusterShape",
     "shape_1",
     {{kExt, 0x280100}},
     {{"kind", "link to ClusterShape[9]"}},
     {},
     {}},
    {"ShapeLinksToATriGroup", "shape_1", {{kExt, 0x080100}}, {{"kind", "link to TriGroup[9]"}}, {}, {}},
    {"ShapeLinksToNothing", "shape_1", {{5, kUnset}}, {{"kind", "link to TriGroup[-1]"}}, {}, {}},
};

const Rule kTexRules[] = {
    {"TexCIOf16BitBecomes8BitInTheRecordAlone",
     "tex_1",
     {},
     {},
     {{"form.form_ci", "1"}, {"depth.depth_16", "1"}},
     {{5, 0x102}},
     {{"depth.depth_16", "1"}, {"depth.depth_8", "0"}}},
    {"TexIOf32BitBecomes8Bit", "tex_1", {}, {}, {{"form.form_i", "1"}}, {{5, 0x100}}},
    {"TexIOf4BitStays", "tex_1", {}, {}, {{"form.form_i", "1"}, {"depth.depth_4", "1"}}, {{5, 0}}},
    {"TexRgbaOf4BitBecomes16Bit", "tex_1", {}, {}, {{"depth.depth_4", "1"}}, {{5, 0x205}}},
    {"TexRgbOf8BitBecomes16Bit",
     "tex_1",
     {},
     {},
     {{"form.form_rgb", "1"}, {"depth.depth_8", "1"}},
     {{5, 0x204}}},
    {"TexRgbOf32BitStays", "tex_1", {}, {}, {{"form.form_rgb", "1"}}, {{5, 0x404}}},
    {"TexYuvOf4BitBecomes16Bit",
     "tex_1",
     {},
     {},
     {{"form.form_yuv", "1"}, {"depth.depth_4", "1"}},
     {{5, 0x203}}},
    {"TexYuvOf8BitBecomes16Bit",
     "tex_1",
     {},
     {},
     {{"form.form_yuv", "1"}, {"depth.depth_8", "1"}},
     {{5, 0x203}}},
    {"TexYuvOf32BitBecomes16Bit", "tex_1", {}, {}, {{"form.form_yuv", "1"}}, {{5, 0x203}}},
    {"TexIaOf32BitBecomes16Bit", "tex_1", {}, {}, {{"form.form_ia", "1"}}, {{5, 0x201}}},
    {"TexIaOf4BitStays", "tex_1", {}, {}, {{"form.form_ia", "1"}, {"depth.depth_4", "1"}}, {{5, 0x1}}},
    {"TexClampInSMirrorInT",
     "tex_1",
     {{6, 0}, {7, 0}},
     {{"tex_wrap_s.wrap_s", "1"}, {"tex_wrap_t.wrap_t", "1"}},
     {{"tex_wrap_s.clamp_s", "1"}, {"tex_wrap_t.mirror_t", "1"}},
     {{6, 0x1}, {7, 0x200}}},
    {"TexForm6ShowsNoneAndBecomesI",
     "tex_1",
     {{5, 0x106}},
     {{"form.form_i", "0"},
      {"form.form_ci", "0"},
      {"form.form_rgb", "0"},
      {"form.form_rgba", "0"},
      {"depth.depth_8", "1"}},
     {{"quil2.pers", "0"}},
     {{5, 0x100}, {kExt + 1, 0}}},
    {"TexLosesItsOtherBits",
     "tex_1",
     {{5, 0xFFFFF8F5}, {6, 0xFFFFFFFD}, {7, 0xFFFFFEFF}},
     {{"depth.depth_4", "1"}, {"tex_wrap_s.clamp_s", "1"}, {"tex_wrap_t.mirror_t", "1"}},
     {{"quil2.pers", "0"}},
     {{5, 0x205}, {6, 0x1}, {7, 0x200}, {kExt + 1, 0}}},
    {"TexLowerDepthAndClampAreTestedFirst",
     "tex_1",
     {{5, 0x701}, {6, 0x3}, {7, 0x300}},
     {{"depth.depth_8", "1"}, {"tex_wrap_s.clamp_s", "1"}, {"tex_wrap_t.clamp_t", "1"}},
     {},
     {}},
    {"TexShowsLevelAndPalette",
     "tex_1",
     {{kExt + 2, 6}, {kExt + 3, 1}},
     {{"mipmaplevel", "mipmap level = 6"}, {"usepalette", "Use Color Palette"}},
     {},
     {}},
    {"TexShowsNoPalette", "tex_1", {{kExt + 3, 0}}, {{"usepalette", "No Use Color Palette"}}, {}, {}},
    {"TexFilterBeyondTheMenuIsKept",
     "tex_1",
     {{kExt, 9}},
     {{"quil2.texfilter", "9"}},
     {{"quil2.pers", "0"}},
     {{kExt + 1, 0}}},
};

const Rule kAnimRules[] = {
    {"AnimEndlessStaysEndless",
     "anim_1",
     {{8, 0}},
     {{"anim_loop.inf", "1"}, {"anim_loop.loop_num", ""}},
     {{"title.nodeName", "beta"}, {"anim_loop.loop_num", "5"}},
     {}},
    {"AnimNotEndlessWithoutANumberIsEndless", "anim_1", {{8, 0}}, {}, {{"anim_loop.inf", "0"}}, {}},
    {"AnimLoopsInAnyBase", "anim_1", {}, {}, {{"anim_loop.loop_num", "010"}}, {{8, 8}}},
    {"AnimType1ShowsNoWord", "anim_1", {{5, 1}}, {{"anim_type", "animation type = "}}, {}, {}},
    {"AnimType0", "anim_1", {{5, 0}}, {{"anim_type", "animation type = STATIC"}}, {}, {}},
    {"AnimType2", "anim_1", {{5, 2}}, {{"anim_type", "animation type = FULL FRAME"}}, {}, {}},
    {"AnimType3", "anim_1", {{5, 3}}, {{"anim_type", "animation type = KEY FRAME"}}, {}, {}},
    {"AnimType4", "anim_1", {{5, 4}}, {{"anim_type", "animation type = BILLBOARD OBJECT"}}, {}, {}},
    {"AnimFrameRate", "anim_1", {{6, 25}}, {{"frame_rate", "frame rate = 25"}}, {}, {}},
    {"AnimShowsConstraintTargets",
     "anim_1",
     {{kExt, 0x2F10},
      {kExt + 9, 0x250000},
      {kExt + 10, 3},
      {kExt + 13, 0x20000},
      {kExt + 14, 4},
      {kExt + 17, 0x240000},
      {kExt + 18, 5},
      {kExt + 21, 0x260000},
      {kExt + 22, 6},
      {kExt + 29, 0x20000},
      {kExt + 30, 7}},
     {{"quil2.orient_c.orient_c_on", "1"},
      {"quil2.orient_c.orient_c_node", "joint_3"},
      {"quil2.dir_c.dir_c_on", "1"},
      {"quil2.dir_c.dir_c_node", "obj_4"},
      {"quil2.upv_c.upv_c_on", "1"},
      {"quil2.upv_c.upv_c_node", "ChainRoot_5"},
      {"quil2.pref_axis_c.pref_axis_c_node", "effector_6"},
      {"quil2.pos_c.pos_c_on", "0"},
      {"quil2.pos_c.pos_c_node", ""},
      {"quil2.scale_c_g.scale_c.scale_c_uniq", "1"},
      {"quil2.scale_c_g.scale_c_node", "obj_7"}},
     {},
     {}},
    {"AnimShowsThePositionAndClassicScaleTargets",
     "anim_1",
     {{kExt, 0x5000}, {kExt + 25, 0x250000}, {kExt + 26, 8}, {kExt + 33, 0x20000}, {kExt + 34, 9}},
     {{"quil2.pos_c.pos_c_node", "joint_8"},
      {"quil2.scale_c_g.scale_c.scale_c_uniq", "0"},
      {"quil2.scale_c_g.scale_c.scale_c_classic", "1"},
      {"quil2.scale_c_g.scale_c_node", "obj_9"}},
     {},
     {}},
    {"AnimUniqueScaleTargetCountsBeforeTheClassicOne",
     "anim_1",
     {{kExt, 0x6000}, {kExt + 29, 0x20000}, {kExt + 30, 1}, {kExt + 33, 0x20000}, {kExt + 34, 2}},
     {{"quil2.scale_c_g.scale_c.scale_c_classic", "0"}, {"quil2.scale_c_g.scale_c_node", "obj_1"}},
     {},
     {}},
    {"AnimShowsItsChannels",
     "anim_1",
     {{kExt, 0x6A}},
     {{"quil2.rotate.rotate_x", "1"},
      {"quil2.rotate.rotate_y", "0"},
      {"quil2.rotate.rotate_z", "1"},
      {"quil2.translation", "1"},
      {"quil2.scale.unique", "1"},
      {"quil2.scale.classic", "0"}},
     {},
     {}},
    {"AnimOfRotateXAndTranslationShowsNothingElseOn",
     "anim_1",
     {{kExt, 0x22}},
     {{"quil2.rotate.rotate_x", "1"},
      {"quil2.rotate.rotate_y", "0"},
      {"quil2.rotate.rotate_z", "0"},
      {"quil2.translation", "1"},
      {"quil2.orient_c.orient_c_on", "0"},
      {"quil2.orient_c.orient_c_node", ""},
      {"quil2.scale_c_g.scale_c.scale_c_uniq", "0"},
      {"quil2.scale_c_g.scale_c.scale_c_classic", "0"},
      {"quil2.scale_c_g.scale_c_node", ""},
      {"quil2.pos_c.pos_c_on", "(no such item)"}},
     {},
     {}},
    {"AnimChannelsAreOnlyShown",
     "anim_1",
     {{kExt, 0x26}},
     {},
     {{"quil2.rotate.rotate_x", "0"},
      {"quil2.translation", "0"},
      {"quil2.scale_c_g.scale_c.scale_c_uniq", "1"},
      {"quil2.scale_c_g.scale_c_node", "obj_1"}},
     {}},
    {"AnimWithoutChannelsSaysSo", "anim_1", {{kExt, 0}}, {{"quil2.no_use", "No use QUIL2"}}, {}, {}},
};

const Rule kSkeletonRules[] = {
    {"JointTypeWithPrefix", "joint_1", {}, {}, {{"title.type", "0x2f"}}, {{4, 0x2f}}},
    {"JointTypeWithoutPrefix", "joint_1", {{4, 0}}, {{"title.type", "0"}}, {{"title.type", "1f"}}, {{4, 31}}},
    {"JointTypeWithoutDigitsIsZero", "joint_1", {}, {}, {{"title.type", "hinge"}}, {{4, 0}}},
    {"EffectorTypeWithoutDigitsIsZero", "effector_1", {}, {}, {{"title.type", ""}}, {{4, 0}}},
};

INSTANTIATE_TEST_SUITE_P(SceneEnvCamLight, DialogRule, testing::ValuesIn(kSceneEnvCamLightRules), CaseName());
INSTANTIATE_TEST_SUITE_P(ObjLod, DialogRule, testing::ValuesIn(kObjLodRules), CaseName());
INSTANTIATE_TEST_SUITE_P(ShapePart, DialogRule, testing::ValuesIn(kShapePartRules), CaseName());
INSTANTIATE_TEST_SUITE_P(Tex, DialogRule, testing::ValuesIn(kTexRules), CaseName());
INSTANTIATE_TEST_SUITE_P(Anim, DialogRule, testing::ValuesIn(kAnimRules), CaseName());
INSTANTIATE_TEST_SUITE_P(Skeleton, DialogRule, testing::ValuesIn(kSkeletonRules), CaseName());

TEST_F(ValuesTest, RenderModesAreActivatedByThePriorityWord) {
  qis->obj_list.records[1].fixed.render.pri = 0x00D00000;
  Opened obj = open("obj_1");
  EXPECT_FALSE(obj.top->find(kType0)->activated());
  EXPECT_FALSE(obj.top->find(kType1)->activated());
  EXPECT_TRUE(obj.top->find(kCycle)->activated());
  edit(obj, kSw, "KAVOGBI");
  EXPECT_FALSE(obj.top->find(kType0)->activated()) << "not before it is applied";
  apply(obj);
  EXPECT_TRUE(obj.top->find(kType0)->activated());
  EXPECT_TRUE(obj.top->find(kType1)->activated());
  EXPECT_TRUE(open("obj_1").top->find(kType0)->activated());
  edit(obj, kSw, "QUIL ->");
  apply(obj);
  EXPECT_FALSE(obj.top->find(kType1)->activated());
}

TEST_F(ValuesTest, LevelsAreLabelledMinMiddleMax) {
  const Opened three = open("lod_1");
  const Item& distances = *three.top->find("lod_set.lod_dist_group");
  EXPECT_EQ(distances.item(0).label(), "distance (min)< ");
  EXPECT_EQ(distances.item(1).label(), "distance      < ");
  EXPECT_EQ(distances.item(2).label(), "distance (max)< ");
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_EQ(three.top->find("lod_set.lod_link_group")->item(i).label(), "then display obj_");
  EXPECT_EQ(three.top->find("header.nlod")->label(), "number of LOD Level of obj_1");

  auto& obj = qis->obj_list.records[0];
  obj.fixed.lod_count = 1;
  obj.lod_distances = {5};
  obj.lod_objs = {1};
  const Opened one = open("lod_0");
  EXPECT_EQ(one.top->find("lod_set.lod_dist_group")->item(0).label(), "distance (min)< ");
  EXPECT_EQ(one.top->find("header.nlod")->label(), "number of LOD Level of obj_0");
}

TEST_F(ValuesTest, LevelsWithJunkAreZero) {
  Opened lod = open("lod_1");
  edit(lod, "lod_set.lod_dist_group.lod_dist1", "far");
  edit(lod, "lod_set.lod_link_group.lod_link1", "obj_2");
  edit(lod, "header.nlod", "1");
  apply(lod);
  const auto& obj = qis->obj_list.records[1];
  EXPECT_EQ(obj.fixed.lod_count, 3u);
  EXPECT_EQ(obj.lod_distances, (qi::CompactArray<float>{10, 0, 3000}));
  EXPECT_EQ(obj.lod_objs, (Words{4, 0, 6}));
}

/// A half-read record may count more levels than it holds.
TEST_F(ValuesTest, LevelsThatAreNotThereAreNotShown) {
  qis->obj_list.records[1].fixed.lod_count = 0xFFFFFFFF;
  qis->obj_list.records[1].lod_objs.resize(2);
  EXPECT_EQ(open("lod_1").top->find("lod_set.lod_dist_group")->size(), 2u);
}

TEST_F(ValuesTest, AVersion2RecordWithoutStructureShowsTheVersion1Items) {
  for (const char* node : {"mat_1", "obj_1", "tex_1", "anim_1", "shape_1"}) {
    make_scene(qi::kVersion1);
    const auto size = open(node).top->size();
    qis->header.fixed.version = qi::kVersion2;
    EXPECT_EQ(open(node).top->size(), size) << node;
  }
  EXPECT_EQ(shown("shape_1", "kind"), "link to TriGroup[9]");
}

/// The paths of the items that one can't use, and those in them.
std::string greyed(const values::Item& group, const std::string& path = "") {
  std::string all;
  for (std::size_t i = 0; i < group.size(); ++i) {
    const values::Item& item = group.item(i);
    all += item.activated() ? greyed(item, path + item.name() + ".") : path + item.name() + " ";
  }
  return all;
}

TEST_F(ValuesTest, ItemsThatAreNeverWrittenLookIt) {
  EXPECT_EQ(greyed(*open("anim_1").top), "quil2 ");
  EXPECT_EQ(greyed(*open("lod_1").top), "header ");
  EXPECT_EQ(greyed(*values::quil2gfx_dialog().items()), "options.dirName ");
  EXPECT_EQ(greyed(*values::quil2zex_dialog().items()), "options.dirName ");
  for (const char* node : {"scene_0", "env_1", "cam_1", "light_1", "shape_1", "part_1", "mat_1", "tex_1",
                           "ChainRoot_1", "joint_1", "effector_1"})
    EXPECT_EQ(greyed(*open(node).top), "") << node;
}

TEST_F(ValuesTest, AVersion1FileNeverShowsOrWritesTheExtension) {
  qis->header.fixed.version = qi::kVersion1;
  for (const char* node : {"mat_1", "obj_1", "tex_1", "anim_1"}) {
    Opened dialog = open(node);
    for (const char* path : {"ambient", "mat_type_fog", "cc_g_fog", "prim_color_fog", "renderfog", "quil2",
                             "mipmaplevel", "usepalette", "obj_render_label"})
      EXPECT_EQ(dialog.top->find(path), nullptr) << node << " " << path;
  }
  qis->shape_list.records[1].ext->head.deformer_tag = qi::kEnvelopeTag;
  EXPECT_EQ(shown("shape_1", "kind"), "link to TriGroup[9]");
  SceneWords expected = scene_words();
  change("mat_1", "prim_color.red", "1");
  expected["mat_1"][10] = f(1);
  EXPECT_EQ(scene_words(), expected);
}

}  // namespace
