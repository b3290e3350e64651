/// @file
/// Every item of every dialog: what it shows of a record, and which words change when it is edited.
#include <ostream>

#include "tests/dialogs/values/values_fixture.h"
#include "tests/support/case_name.h"

namespace {

struct Case {
  const char* name;
  const char* node;
  const char* path;
  const char* shown;
  const char* typed;
  Changes changes;
  const char* reread = nullptr;  ///< what is shown when opened again, if not what was typed
};
void PrintTo(const Case& c, std::ostream* out) { *out << c.node << " " << c.path; }

class ItemOfDialog : public ValuesTest, public testing::WithParamInterface<Case> {};

TEST_P(ItemOfDialog, ShowsItsWordAndStoresNoOther) {
  const Case& c = GetParam();
  Opened dialog = open(c.node);
  EXPECT_EQ(shown(dialog, c.path), c.shown);
  EXPECT_FALSE(dialog.top->changed());
  SceneWords expected = scene_words();

  edit(dialog, c.path, c.typed);
  const bool differs = std::string_view(c.shown) != c.typed;
  EXPECT_EQ(dialog.top->find(c.path)->changed(), differs);
  EXPECT_EQ(dialog.top->changed(), differs);
  EXPECT_EQ(scene_words(), expected) << "stored before it was applied";

  apply(dialog);
  const std::string node(c.node);
  const std::string record = node.starts_with("lod_") ? "obj_" + node.substr(4) : node;
  ASSERT_TRUE(expected.contains(record));
  for (const auto& [word, value] : c.changes) expected[record][word] = value;
  EXPECT_EQ(scene_words(), expected);
  EXPECT_EQ(shown(c.node, c.path), c.reread ? c.reread : c.typed);
}

constexpr Word kOff = 0xFFFFFFFF;

const Case kScene[] = {
    {"SceneNtsc", "scene_0", "video.ntsc", "0", "1", {{3, 0x14}}},
    {"ScenePal", "scene_0", "video.pal", "0", "1", {{3, 0x15}}},
    {"SceneMpal", "scene_0", "video.mpal", "1", "1", {}},
    {"SceneGamma", "scene_0", "gamma", "1", "0", {{3, 0x12}}},
    {"SceneDither", "scene_0", "dither", "0", "1", {{3, 0x1e}}},
    {"SceneDivot", "scene_0", "divot", "1", "0", {{3, 0x06}}},
};
const Case kEnv[] = {
    {"EnvFog", "env_1", "fog.usefog", "1", "0", {{4, 0}}},
    {"EnvFogColor", "env_1", "fog.fog_color", "a0b0c0d0", "ff8000", {{5, 0xff8000}}},
    {"EnvFogNear", "env_1", "fog.fog_near", "100", "0x10", {{6, 16}}, "16"},
    {"EnvFogFar", "env_1", "fog.fog_far", "900", "1000", {{7, 1000}}},
    {"EnvFillColorOff", "env_1", "fill_color.do_fill_color", "1", "0", {{8, kOff}}},
    {"EnvFillColor", "env_1", "fill_color.fill_color_rgb", "102030", "a0B0c0", {{8, 0xa0b0c0}}, "a0b0c0"},
    {"EnvFillDepthOn", "env_1", "fill_depth.do_fill_depth", "0", "1", {{9, 0}}},
    {"EnvFillDepth", "env_1", "fill_depth.fill_depth_rgb", "", "fffc", {}, ""},
    {"EnvColorImageOff", "env_1", "bg_sprite_img.bg_color_tex", "1", "0", {{10, kOff}}},
    {"EnvColorImage", "env_1", "bg_sprite_img.bg_color_index", "7", "12", {{10, 12}}},
    {"EnvDepthImageOn", "env_1", "bg_depth_img.bg_depth_tex", "0", "1", {{11, 0}}},
    {"EnvDepthImage", "env_1", "bg_depth_img.bg_depth_index", "", "12", {}, ""},
};
const Case kCam[] = {
    {"CamPersp", "cam_1", "type.persp", "1", "1", {}},
    {"CamOrtho", "cam_1", "type.ortho", "0", "1", {{4, 1}}},
    {"CamNear", "cam_1", "clip.near", "0.5", "0.125", {{5, f(0.125f)}}},
    {"CamFar", "cam_1", "clip.far", "4000", "1e6", {{6, f(1e6f)}}, "1e+06"},
    {"CamRight", "cam_1", "clip.right", "1", "2.5", {{7, f(2.5f)}}},
    {"CamLeft", "cam_1", "clip.left", "-1", "-2.5", {{8, f(-2.5f)}}},
    {"CamTop", "cam_1", "clip.top", "0.75", "3", {{9, f(3)}}},
    {"CamBottom", "cam_1", "clip.bottom", "-0.75", "-3", {{10, f(-3)}}},
    {"CamFovy", "cam_1", "values.fovy", "33.5", "45", {{11, f(45)}}},
    {"CamAspect", "cam_1", "values.aspect", "1.25", "1.5", {{12, f(1.5f)}}},
    {"CamScale", "cam_1", "values.scale", "2", "0.5", {{13, f(0.5f)}}},
    {"CamLookat", "cam_1", "objects.lookat", "3", "9", {{14, 9}}},
    {"CamEye", "cam_1", "objects.eye", "4", "010", {{15, 8}}, "8"},
    {"CamUp", "cam_1", "objects.up", "-1", "0x1f", {{16, 31}}, "31"},
};
const Case kLight[] = {
    {"LightRed", "light_1", "ambi.ambi_r", "0.25", "2.5", {{6, f(2.5f)}}},
    {"LightGreen", "light_1", "ambi.ambi_g", "0.5", "-1", {{7, f(-1)}}},
    {"LightBlue", "light_1", "ambi.ambi_b", "0.75", "0", {{8, f(0)}}},
};
const Case kObj[] = {
    {"ObjActive", "obj_1", "type_g.state_active", "1", "0", {{4, 0}}},
    {"ObjType", "obj_1", "type_g.type", "BILLBOARD", "3D", {{5, 1}}},
    {"ObjGroupNone", "obj_1", "group.group_none", "0", "1", {{6, 0}}},
    {"ObjGroup", "obj_1", "group.groupid", "0x1f", "0x20", {{6, 0x20}}},
    {"ObjPriorityNone", "obj_1", "pri.pri_none", "1", "0", {}, "1"},
    {"ObjPriority", "obj_1", "pri.priority", "", "12", {}, ""},
    {"ObjSwitch", "obj_1", "render.render_pri.render_pri_sw", "KAVOGBI", "QUIL ->", {{9, 0x00700000}}},
    {"ObjClass", "obj_1", "render.render_pri.render_pri_opt", "TEX_EDGE", "XLU_SURF", {{9, 0x04500000}}},
    {"ObjType0", "obj_1", "render.render_pri_g.render_type0", "TEX_EDGE", "FOG_PRIM_A", {{10, 0x113}}},
    {"ObjType1", "obj_1", "render.render_pri_g.render_type1", "XLU_DECAL", "NOOP", {{11, 0x210}}},
    {"ObjCycle", "obj_1", "render.render_pri_g.render_cycle_type", "2 cycle", "1 cycle", {{8, 0}}},
    {"ObjFogSwitch",
     "obj_1",
     "renderfog.render_pri.render_pri_sw",
     "QUIL ->",
     "KAVOGBI",
     {{kExt + 1, 0x04D00000}}},
    {"ObjFogClass",
     "obj_1",
     "renderfog.render_pri.render_pri_opt",
     "OPA_SURF",
     "XLU_DECAL",
     {{kExt + 1, 0x00100000}}},
    {"ObjFogType0",
     "obj_1",
     "renderfog.render_pri_g.render_type0",
     "FOG_SHADE_A",
     "FOG_PRIM_A",
     {{kExt + 2, 0x113}}},
    {"ObjFogType1", "obj_1", "renderfog.render_pri_g.render_type1", "OPA_SURF", "NOOP", {{kExt + 3, 0x210}}},
    {"ObjFogCycle", "obj_1", "renderfog.render_pri_g.render_cycle_type", "1 cycle", "2 cycle", {{kExt, 1}}},
    {"ObjBillboard", "obj_1", "have_bd.bd_yes", "0", "1", {{12, 1}}},
};
const Case kLod[] = {
    {"LodCountIsOnlyShown", "lod_1", "header.nlod", "3", "2", {}, "3"},
    {"LodDistance0", "lod_1", "lod_set.lod_dist_group.lod_dist0", "10", "12.5", {{kArrays, f(12.5f)}}},
    {"LodDistance2", "lod_1", "lod_set.lod_dist_group.lod_dist2", "3000", "4000", {{kArrays + 2, f(4000)}}},
    {"LodObj0", "lod_1", "lod_set.lod_link_group.lod_link0", "4", "1", {{kArrays + 3, 1}}},
    {"LodObj2", "lod_1", "lod_set.lod_link_group.lod_link2", "6", "0x10", {{kArrays + 5, 16}}, "16"},
};
const Case kShape[] = {
    {"ShapeAa", "shape_1", "alias.aa", "1", "1", {}},
    {"ShapeRa", "shape_1", "alias.ra", "0", "1", {{4, 0x116}}},
    {"ShapeNoAlias", "shape_1", "alias.no_alias", "0", "1", {{4, 0x114}}},
    {"ShapeZBuffer", "shape_1", "z_buffer", "1", "0", {{4, 0x111}}},
    {"ShapeFront", "shape_1", "culling.front", "0", "1", {{4, 0x135}}},
    {"ShapeBack", "shape_1", "culling.back", "1", "0", {{4, 0x105}}},
    {"ShapeVtxAlpha", "shape_1", "vtxalpha", "1", "0", {{4, 0x15}}},
};
const Case kMat[] = {
    {"MatLight", "mat_1", "shade_type.light", "GLOBAL", "OFF", {{5, 0x210}}},
    {"MatShading", "mat_1", "shade_type.shading", "SMOOTH", "FLAT", {{5, 0x202}}},
    {"MatUse", "mat_1", "shade_type.use", "USE REFLECT", "USE HILIGHTf", {{5, 0x112}}},
    {"MatQuil", "mat_1", "mat_type.quil", "1", "1", {}},
    {"MatKavo", "mat_1", "mat_type.kavo", "0", "1", {{4, 0x01010101}, {6, 0}, {7, 0}, {8, 0}, {9, 0}}},
    {"MatColor0Vtx", "mat_1", "cc_g.cc_quil.quil_color_type0.vtx", "1", "0", {{6, 0x00010002}}},
    {"MatColor0Tri", "mat_1", "cc_g.cc_quil.quil_color_type0.tri", "1", "0", {{6, 0x00010001}}},
    {"MatColor0Prim", "mat_1", "cc_g.cc_quil.quil_color_type0.prim", "0", "1", {{6, 0x00010007}}},
    {"MatColor0Tex0", "mat_1", "cc_g.cc_quil.quil_color_type0.tex0", "0", "1", {{6, 0x0001000b}}},
    {"MatColor0Tex1", "mat_1", "cc_g.cc_quil.quil_color_type0.tex1", "0", "1", {{6, 0x00010013}}},
    {"MatColor0VtxAlpha", "mat_1", "cc_g.cc_quil.quil_color_type0.vtx_alpha", "1", "0", {{6, 0x3}}},
    {"MatColor0TriAlpha", "mat_1", "cc_g.cc_quil.quil_color_type0.tri_alpha", "0", "1", {{6, 0x00030003}}},
    {"MatColor0PrimAlpha", "mat_1", "cc_g.cc_quil.quil_color_type0.prim_alpha", "0", "1", {{6, 0x00050003}}},
    {"MatColor0Tex0Alpha", "mat_1", "cc_g.cc_quil.quil_color_type0.tex0_alpha", "0", "1", {{6, 0x00090003}}},
    {"MatColor0Tex1Alpha", "mat_1", "cc_g.cc_quil.quil_color_type0.tex1_alpha", "0", "1", {{6, 0x00110003}}},
    {"MatColor1", "mat_1", "cc_g.cc_quil.quil_color_type1.tex1_alpha", "1", "0", {{7, 0x10}}},
    {"MatAlpha0", "mat_1", "cc_g.cc_quil.quil_alpha_type0.vtx", "0", "1", {{8, 0x1}}},
    {"MatAlpha1", "mat_1", "cc_g.cc_quil.quil_alpha_type1.tri_alpha", "1", "0", {{9, 0x1}}},
    {"MatRed", "mat_1", "prim_color.red", "0.5", "0.75", {{10, f(0.75f)}}},
    {"MatGreen", "mat_1", "prim_color.green", "0.25", "0", {{11, f(0)}}},
    {"MatBlue", "mat_1", "prim_color.blue", "1", "0.5", {{12, f(0.5f)}}},
    {"MatAlpha", "mat_1", "prim_color.alpha", "0", "1", {{13, f(1)}}},
    {"MatFlag0", "mat_1", "u_flags0.usr_flag0", "0", "1f", {{14, 0x1f}}, "0x1f"},
    {"MatFlag1", "mat_1", "u_flags0.usr_flag1", "0x1", "0x10", {{15, 0x10}}},
    {"MatFlag2", "mat_1", "u_flags0.usr_flag2", "0x22", "0xdeadbeef", {{16, 0xdeadbeef}}},
    {"MatFlag3", "mat_1", "u_flags0.usr_flag3", "0x333", "0", {{17, 0}}},
    {"MatFlag4", "mat_1", "u_flags1.usr_flag4", "0x4444", "0x5", {{18, 5}}},
    {"MatFlag5", "mat_1", "u_flags1.usr_flag5", "0x55555", "0x6", {{19, 6}}},
    {"MatFlag6", "mat_1", "u_flags1.usr_flag6", "0x666666", "0x7", {{20, 7}}},
    {"MatFlag7", "mat_1", "u_flags1.usr_flag7", "0x7777777", "0x8", {{21, 8}}},
    {"MatAmbient", "mat_1", "ambient.green", "0.5", "0.25", {{kExt + 1, f(0.25f)}}},
    {"MatEmission", "mat_1", "emission.red", "0", "0.25", {{kExt + 4, f(0.25f)}}},
    {"MatDiffuse", "mat_1", "diffuse.alpha", "0.25", "1", {{kExt + 11, f(1)}}},
    {"MatFogQuil",
     "mat_1",
     "mat_type_fog.quil_fog",
     "0",
     "1",
     {{kExt + 12, 0}, {kExt + 13, 0}, {kExt + 14, 0}, {kExt + 15, 0}, {kExt + 16, 0}}},
    {"MatFogKavo", "mat_1", "mat_type_fog.kavo_fog", "1", "1", {}},
    {"MatFogColor0",
     "mat_1",
     "cc_g_fog.cc_kavo.kavo_color_type0.cc_a",
     "Tex0",
     "None",
     {{kExt + 13, 0x16030405}},
     "22"},
    {"MatFogColor1", "mat_1", "cc_g_fog.cc_kavo.kavo_color_type1.cc_b", "0", "1", {{kExt + 14, 0x0E0E1112}}},
    {"MatFogAlpha0",
     "mat_1",
     "cc_g_fog.cc_kavo.kavo_alpha_type0.cc_c",
     "comb",
     "Noise",
     {{kExt + 15, 0x14151201}}},
    {"MatFogAlpha1", "mat_1", "cc_g_fog.cc_kavo.kavo_alpha_type1.cc_d", "comb", "K5", {{kExt + 16, 0x15}}},
    {"MatFogPrim", "mat_1", "prim_color_fog.blue", "0.375", "1", {{kExt + 19, f(1)}}},
};
const Case kTex[] = {
    {"TexI", "tex_1", "form.form_i", "0", "1", {{5, 0x100}}},
    {"TexIA", "tex_1", "form.form_ia", "0", "1", {{5, 0x201}}},
    {"TexCI", "tex_1", "form.form_ci", "0", "1", {{5, 0x102}}},
    {"TexYUV", "tex_1", "form.form_yuv", "0", "1", {{5, 0x203}}},
    {"TexRGB", "tex_1", "form.form_rgb", "0", "1", {{5, 0x404}}},
    {"TexRGBA", "tex_1", "form.form_rgba", "1", "1", {}},
    {"Tex4Bit", "tex_1", "depth.depth_4", "0", "1", {{5, 0x205}}, "0"},
    {"Tex8Bit", "tex_1", "depth.depth_8", "0", "1", {{5, 0x205}}, "0"},
    {"Tex16Bit", "tex_1", "depth.depth_16", "0", "1", {{5, 0x205}}},
    {"Tex32Bit", "tex_1", "depth.depth_32", "1", "1", {}},
    {"TexWrapS", "tex_1", "tex_wrap_s.wrap_s", "0", "1", {{6, 0}}},
    {"TexClampS", "tex_1", "tex_wrap_s.clamp_s", "1", "1", {}},
    {"TexMirrorS", "tex_1", "tex_wrap_s.mirror_s", "0", "1", {{6, 0x2}}},
    {"TexWrapT", "tex_1", "tex_wrap_t.wrap_t", "0", "1", {{7, 0}}},
    {"TexClampT", "tex_1", "tex_wrap_t.clamp_t", "0", "1", {{7, 0x100}}},
    {"TexMirrorT", "tex_1", "tex_wrap_t.mirror_t", "1", "1", {}},
    {"TexFilter", "tex_1", "quil2.texfilter", "BILERP", "AVERAGE", {{kExt, 2}}},
    {"TexPerspective", "tex_1", "quil2.pers", "1", "0", {{kExt + 1, 0}}},
};
const Case kAnim[] = {
    {"AnimEndless", "anim_1", "anim_loop.inf", "0", "1", {{8, 0}}},
    {"AnimLoops", "anim_1", "anim_loop.loop_num", "12", "0x20", {{8, 32}}, "32"},
};
const Case kSkeleton[] = {
    {"JointType", "joint_1", "title.type", "0x1f", "20", {{4, 0x20}}, "0x20"},
    {"EffectorType", "effector_1", "title.type", "0x2", "0", {{4, 0}}},
};

INSTANTIATE_TEST_SUITE_P(Scene, ItemOfDialog, testing::ValuesIn(kScene), CaseName());
INSTANTIATE_TEST_SUITE_P(Env, ItemOfDialog, testing::ValuesIn(kEnv), CaseName());
INSTANTIATE_TEST_SUITE_P(Cam, ItemOfDialog, testing::ValuesIn(kCam), CaseName());
INSTANTIATE_TEST_SUITE_P(Light, ItemOfDialog, testing::ValuesIn(kLight), CaseName());
INSTANTIATE_TEST_SUITE_P(Obj, ItemOfDialog, testing::ValuesIn(kObj), CaseName());
INSTANTIATE_TEST_SUITE_P(Lod, ItemOfDialog, testing::ValuesIn(kLod), CaseName());
INSTANTIATE_TEST_SUITE_P(Shape, ItemOfDialog, testing::ValuesIn(kShape), CaseName());
INSTANTIATE_TEST_SUITE_P(Mat, ItemOfDialog, testing::ValuesIn(kMat), CaseName());
INSTANTIATE_TEST_SUITE_P(Tex, ItemOfDialog, testing::ValuesIn(kTex), CaseName());
INSTANTIATE_TEST_SUITE_P(Anim, ItemOfDialog, testing::ValuesIn(kAnim), CaseName());
INSTANTIATE_TEST_SUITE_P(Skeleton, ItemOfDialog, testing::ValuesIn(kSkeleton), CaseName());

}  // namespace
