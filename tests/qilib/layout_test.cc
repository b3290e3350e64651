/// @file
/// Which word of the file ends up in which member, where reading and writing alike could not tell.
#include <gmock/gmock.h>

#include <array>
#include <bit>
#include <numeric>

#include "qilib/names.h"
#include "qilib/opensave.h"
#include "tests/qilib/kinds.h"
#include "tests/support/files.h"
#include "tests/support/written.h"

namespace {

using testing::ElementsAre;

/// Opens the file around one list of kinds.h.
Qis scene_with(const std::string& name) {
  for (const KindCase& kind : kinds::all()) {
    if (kind.name != name) continue;
    const ScratchDirectory scratch;
    write_file(scratch / "scene.quil", kinds::file_with(kind).bytes().str());
    Qis scene;
    EXPECT_EQ(qiOpenQb(scratch / "scene.quil", scene), 1);
    return scene;
  }
  ADD_FAILURE() << name;
  return {};
}

/// Fixed words of which each holds its own number.
template <class Fixed>
Fixed numbered() {
  std::array<Word, sizeof(Fixed) / sizeof(Word)> words;
  std::iota(words.begin(), words.end(), Word{0});
  return std::bit_cast<Fixed>(words);
}
Word bits(float number) { return std::bit_cast<Word>(number); }

TEST(FixedWords, OfScenesAndEnvironmentsStandInTheirPlaces) {
  const auto scene = numbered<qi::Scene::Fixed>();
  EXPECT_THAT((std::array{scene.fixed_size, scene.size, scene.video, scene.name}), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT((std::array{scene.obj_count, scene.env_count, scene.cam_count, scene.light_count}),
              ElementsAre(5, 6, 7, 8));
  const auto env = numbered<qi::Env::Fixed>();
  EXPECT_THAT((std::array{env.name, env.use_fog, env.fog_color, env.fog_near, env.fog_far, env.fill_color,
                          env.fill_depth, env.bg_color_image, env.bg_depth_image}),
              ElementsAre(3, 4, 5, 6, 7, 8, 9, 10, 11));
}

TEST(FixedWords, OfCamerasAndLightsStandInTheirPlaces) {
  const auto cam = numbered<qi::Cam::Fixed>();
  EXPECT_THAT((std::array{cam.name, cam.type, bits(cam.near), bits(cam.bottom), bits(cam.fovy),
                          bits(cam.aspect), bits(cam.scale), cam.lookat, cam.eye, cam.up}),
              ElementsAre(3, 4, 5, 10, 11, 12, 13, 14, 15, 16));
  const auto light = numbered<qi::Light::Fixed>();
  EXPECT_THAT((std::array{light.name, light.type, bits(light.ambient_red), bits(light.ambient_green),
                          bits(light.ambient_blue), light.sub_count}),
              ElementsAre(4, 5, 6, 7, 8, 9));
}

TEST(FixedWords, OfObjectsShapesAndPartsStandInTheirPlaces) {
  const auto obj = numbered<qi::Obj::Fixed>();
  EXPECT_THAT((std::array{obj.name, obj.state, obj.type, obj.group, obj.priority, obj.render.cycle_type,
                          obj.render.pri, obj.render.type0, obj.render.type1, obj.billboard_link,
                          obj.lod_count, obj.child_count, obj.shape, obj.mat, obj.anim}),
              ElementsAre(3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 16, 17, 18));
  const auto shape = numbered<qi::Shape::Fixed>();
  EXPECT_THAT((std::array{shape.name, shape.flags, shape.geometry, shape.mat, shape.part_count}),
              ElementsAre(3, 4, 5, 6, 7));
  const auto part = numbered<qi::Part::Fixed>();
  EXPECT_THAT((std::array{part.name, part.mat, part.index_count}), ElementsAre(3, 4, 6));
}

TEST(FixedWords, OfMaterialsTexturesAndAnimationsStandInTheirPlaces) {
  const auto mat = numbered<qi::Mat::Fixed>();
  EXPECT_THAT(
      (std::array{mat.name, mat.mat_type, mat.shade_type, mat.combiner.color_type0, mat.combiner.color_type1,
                  mat.combiner.alpha_type0, mat.combiner.alpha_type1, bits(mat.prim_color.red),
                  bits(mat.prim_color.alpha), mat.usr_flags[0], mat.usr_flags[7], mat.tex_count}),
      ElementsAre(3, 4, 5, 6, 7, 8, 9, 10, 13, 14, 21, 23));
  const auto tex = numbered<qi::Tex::Fixed>();
  EXPECT_THAT((std::array{tex.name, tex.tex_type, tex.wrap_s, tex.wrap_t, tex.tiled}),
              ElementsAre(4, 5, 6, 7, 8));
  const auto anim = numbered<qi::Anim::Fixed>();
  EXPECT_THAT((std::array{anim.name, anim.type, anim.frame_rate, anim.key_count, anim.anim_loop}),
              ElementsAre(4, 5, 6, 7, 8));
}

TEST(FixedWords, OfTheSkeletonStandInTheirPlaces) {
  const auto root = numbered<qi::ChainRoot::Fixed>();
  EXPECT_THAT((std::array{root.obj_count, root.external_count, root.anim, root.joint}),
              ElementsAre(5, 6, 7, 8));
  const auto joint = numbered<qi::Joint::Fixed>();
  EXPECT_THAT(
      (std::array{joint.type, bits(joint.length), bits(joint.axis[0]), bits(joint.axis[2]), joint.obj_count,
                  joint.external_count, joint.child_joint, joint.effector, joint.anim}),
      ElementsAre(4, 5, 6, 8, 9, 10, 11, 12, 13));
  const auto effector = numbered<qi::Effector::Fixed>();
  EXPECT_THAT((std::array{effector.type, effector.obj_count, effector.external_count, effector.anim}),
              ElementsAre(4, 5, 6, 7));
}

TEST(Layout, TheScenesArraysAreObjsEnvsCamsLights) {
  const qi::Scene scene = scene_with("Scene").scene;
  EXPECT_EQ(scene.objs, (Words{7, 8}));
  EXPECT_EQ(scene.envs, Words{1});
  EXPECT_TRUE(scene.cams.empty());
  EXPECT_EQ(scene.lights, (Words{40, 41, 42, 43}));
  EXPECT_EQ(scene.block1.size(), 2u);
  EXPECT_EQ(scene.block2, Words{0xB2000000});
}

TEST(Layout, WordsBeyondTheKnownFixedPartAreKept) {
  EXPECT_EQ(scene_with("LongScene").scene.fixed_rest, (Words{0xE0, 0xE1}));
  EXPECT_EQ(scene_with("LongTri").tri_list.records[0].fixed_rest, (Words{0xE0, 0xE1}));
  EXPECT_EQ(scene_with("LongTex").tex_list.records[0].fixed_rest, Words{0xE0});
  EXPECT_EQ(scene_with("LongAnim").anim_list.records[0].fixed_rest, (Words{0xE0, 0xE1, 0xE2}));
  EXPECT_EQ(scene_with("Coll").coll_list.records[0].subs[1].fixed_rest, Words{0xE0});
}

TEST(Layout, ListBlocksAndSizeTable) {
  const qi::List<qi::Obj> list = scene_with("Obj").obj_list;
  EXPECT_EQ(list.header.word1, 0x77u);
  EXPECT_EQ(list.sizes, (Words{128, 128}));
  EXPECT_EQ(list.block1, (Words{0x11000000, 0x11000001, 0x11000002}));
  EXPECT_EQ(list.block2, (Words{0x22000000, 0x22000001}));
}

TEST(Layout, AnObjHasDistancesObjsAndChildren) {
  const qi::Obj obj = scene_with("Obj").obj_list.records[1];
  EXPECT_THAT(obj.lod_distances, ElementsAre(10.0F, 20.5F));
  EXPECT_EQ(obj.lod_objs, (Words{1, 2}));
  EXPECT_EQ(obj.children, (Words{3, 4, 5}));
}

TEST(Layout, DirectionalLightsTake36BytesInA44ByteSlot) {
  const qi::Light light = scene_with("DirectionalLight").light_list.records[0];
  ASSERT_EQ(light.subs.size(), 2u);
  EXPECT_EQ(sizeof light.subs[0], 44u);
  EXPECT_EQ(light.subs[1].words[0], 9u);
  EXPECT_EQ(light.subs[1].words[8], 17u);
  EXPECT_EQ(light.subs[1].words[9], 0u);
}

TEST(Layout, PositionalLightsTake44Bytes) {
  const qi::Light light = scene_with("PositionalLight").light_list.records[0];
  ASSERT_EQ(light.subs.size(), 2u);
  EXPECT_EQ(light.subs[1].words[0], 11u);
  EXPECT_EQ(light.subs[1].words[10], 21u);
}

TEST(Layout, TriangleGroupsFollowTheirFlagBits) {
  const Qis scene = scene_with("Tri");
  const auto group = [&](int number) { return scene.tri_list.records[0].group(number); };
  using testing::ElementsAre;
  EXPECT_THAT(group(0).entries, testing::SizeIs(6)) << "flag bit 0 and count base 5: six words, no count";
  EXPECT_EQ(group(0).entries[5], 0x1005u);
  EXPECT_TRUE(group(0).table.empty());
  EXPECT_THAT(group(1).table, ElementsAre(0x2000, 0x2001));
  EXPECT_THAT(group(1).entries, ElementsAre(0x2100, 0x2101));
  EXPECT_THAT(group(2).entries, ElementsAre(0x3000));
  EXPECT_THAT(group(3).entries, testing::SizeIs(6)) << "the lower bit of the two wins";
  EXPECT_TRUE(group(4).entries.empty());
  EXPECT_THAT(group(5).entries, ElementsAre(0x6100, 0x6101, 0x6102));
}

TEST(Layout, TheTiledTablesArraysStandInOrder) {
  const qi::TexTable table = scene_with("TiledTex").tex_list.records[0].table;
  EXPECT_EQ(table.tiled.tile_count, 2u);
  EXPECT_EQ(table.tiled.extra_count, 3u);
  EXPECT_EQ(table.widths, (Words{0x8000, 0x8001}));
  EXPECT_EQ(table.heights, (Words{0x8002, 0x8003}));
  EXPECT_EQ(table.words4, (Words{0x8004, 0x8005}));
  EXPECT_EQ(table.words5, (Words{0x8006, 0x8007}));
  EXPECT_EQ(table.images, (Words{0x8008, 0x8009}));
  EXPECT_EQ(table.words7, (Words{0x800A, 0x800B}));
  EXPECT_EQ(table.extra0, (Words{0x9000, 0x9001, 0x9002}));
  EXPECT_EQ(table.extra1, (Words{0x9003, 0x9004, 0x9005}));
}

TEST(Layout, TexelsStayInFileOrder) {
  const auto texels = scene_with("Teximg").teximg_list.records[1].texels;
  std::string text;
  for (const std::byte texel : texels) text += static_cast<char>(texel);
  EXPECT_EQ(text, "texels in file order");
}

TEST(Layout, AnAnimationOfAnotherFormHasNoKeysWhateverItsCount) {
  for (const char* kind : {"AnimForm1WithoutKeys", "AnimForm5WithoutKeys"}) {
    const qi::Anim anim = scene_with(kind).anim_list.records[0];
    EXPECT_EQ(anim.fixed.key_count, 3u);
    EXPECT_TRUE(anim.keys.empty());
    EXPECT_EQ(anim.block1.size(), 2u);
  }
}

TEST(Layout, AnimationKeysAreAsLongAsTheirFormSays) {
  const qi::Anim anim = scene_with("AnimForm4").anim_list.records[0];
  ASSERT_EQ(anim.keys.size(), 3u * 5);
  EXPECT_EQ(anim.key(1)[0], 0x4E0005u);
  EXPECT_EQ(anim.key(1)[4], 0x4E0009u);
  EXPECT_EQ(anim.key(1).size(), 5u);
}

TEST(Layout, AnEmptyNameHasNoText) {
  const auto names = scene_with("Name").name_list.records;
  EXPECT_EQ(names[0].text, (Words{0x61206C6F, 0x6E67206E, 0x616D6500}));
  EXPECT_EQ(qiGetName(names[0]), "a_long_name");
  EXPECT_EQ(qiGetName(names[1]), "");
}

TEST(Layout, ExternalReferencesAreFirstHalvesThenSecondHalves) {
  const qi::ChainRoot root = scene_with("ChainRoot").ext.chain_root_list.records[0];
  EXPECT_THAT(root.externals, ElementsAre(QisExternal{1, 101}, QisExternal{2, 102}));
}

TEST(Layout, WeightedPartsHoldPairsWeightsAndColumns) {
  const qi::WeightedPart part = scene_with("Envelope").ext.envelope_list.records[0].weighted[0];
  EXPECT_THAT(part.nodes, ElementsAre(QisNodeIndex{0xA000, 0xA002}, QisNodeIndex{0xA001, 0xA003}));
  EXPECT_THAT(part.externals, ElementsAre(QisExternal{0xA100, 0xA101}));
  EXPECT_EQ(part.weights.size(), 3u);
  ASSERT_EQ(part.polys.size(), 3u);
  EXPECT_EQ(part.polys[1], (QisPoly{{0xA301, 0xA304, 0xA307, 0xA30A, 0xA30D}}));
}

TEST(Layout, AnEnvelopeWithoutPartsIsItsFixedPartAndItsBlocks) {
  const qi::Envelope envelope = scene_with("Envelope").ext.envelope_list.records[1];
  EXPECT_EQ(envelope.fixed.size, 44u + 12);
  EXPECT_TRUE(envelope.full_weighted.empty() && envelope.weighted.empty() && envelope.morphs.empty() &&
              envelope.tris.empty());
}

TEST(Layout, AnOddPaletteEntryHasNoWord) {
  const auto palettes = scene_with("ColorPalette").ext.color_palette_list.records;
  EXPECT_EQ(palettes[0].fixed.entry_count, 16u);
  EXPECT_EQ(palettes[0].colors.size(), 8u);
  EXPECT_EQ(palettes[1].fixed.entry_count, 15u);
  EXPECT_EQ(palettes[1].colors.size(), 7u);
}

TEST(Layout, APixelIndexArrayOf5By3At4BitsTakes2Words) {
  EXPECT_EQ(scene_with("CiImg").ext.ciimg_list.records[0].pixels, (Words{0x9A0000, 0x9A0001}));
}

TEST(Layout, TheScenesStructureHasChainRootsAndFourArraysOfReferences) {
  const qi::SceneExt ext = scene_with("SceneStructure").scene.ext.value();
  EXPECT_EQ(ext.chain_roots, (Words{5, 6}));
  EXPECT_THAT(ext.externals[0], ElementsAre(QisExternal{1, 101}));
  EXPECT_TRUE(ext.externals[1].empty());
  EXPECT_THAT(ext.externals[2], ElementsAre(QisExternal{2, 102}, QisExternal{3, 103}));
  EXPECT_TRUE(ext.externals[3].empty());
  EXPECT_EQ(ext.tail, Words{0x7A11});
}

TEST(Layout, AnObjsStructureHasChainRootsIndicesAndReferences) {
  const qi::ObjExt ext = scene_with("ObjStructure").obj_list.records[1].ext.value();
  EXPECT_EQ(ext.chain_roots, (Words{3, 4}));
  EXPECT_EQ(ext.indices, Words{5});
  EXPECT_THAT(ext.externals0, ElementsAre(QisExternal{1, 101}));
  EXPECT_THAT(ext.externals1, ElementsAre(QisExternal{2, 102}, QisExternal{3, 103}));
}

TEST(Layout, AShapesStructureBeginsWithTheDeformerTag) {
  const qi::ShapeExt ext = scene_with("ShapeStructure").shape_list.records[0].ext.value();
  EXPECT_EQ(ext.head.deformer_tag, 0x5A00u);
  EXPECT_EQ(ext.tail, Words{0x7A11});
}

TEST(Layout, AMaterialsStructureHasReferencesAndTwoArraysOfEntries) {
  const qi::MatExt ext = scene_with("MatStructure").mat_list.records[0].ext.value();
  EXPECT_THAT(ext.externals, ElementsAre(QisExternal{1, 101}, QisExternal{2, 102}));
  ASSERT_EQ(ext.entries0.size(), 1u);
  EXPECT_EQ(ext.entries0[0][5], 0x3B05u);
  ASSERT_EQ(ext.entries1.size(), 2u);
  EXPECT_EQ(ext.entries1[1][0], 0x3C06u);
}

TEST(Layout, ATexturesStructureHasAPaletteAndAWordPerTile) {
  const qi::TexExt untiled = scene_with("UntiledTexStructure").tex_list.records[0].ext.value();
  EXPECT_EQ(untiled.palettes, Words{50});
  EXPECT_EQ(untiled.words1, Words{60});
  const qi::TexExt tiled = scene_with("TiledTexStructure").tex_list.records[0].ext.value();
  EXPECT_EQ(tiled.palettes, (Words{50, 51}));
  EXPECT_EQ(tiled.words1, (Words{60, 61}));
  EXPECT_THAT(tiled.externals0, ElementsAre(QisExternal{1, 101}));
  EXPECT_THAT(tiled.externals1, ElementsAre(QisExternal{2, 102}));
}

TEST(Layout, AnImagesStructureIsACountAndItsWords) {
  EXPECT_EQ(scene_with("TeximgStructure").teximg_list.records[0].ext.value().words, (Words{11, 12}));
}

TEST(Layout, AnAnimationsScaleArraysAreOneRun) {
  const qi::AnimExt ext = scene_with("AnimStructure").anim_list.records[0].ext.value();
  EXPECT_EQ(ext.head.flags, 0xF1A6u);
  EXPECT_EQ(ext.head.orientation.node, (QisNodeIndex{0x7A00, 0x7A01}));
  EXPECT_EQ(ext.head.classic_scale.external, (QisExternal{0x7A1A, 0x7A1B}));
  EXPECT_EQ(ext.entries.size(), 1u);
  EXPECT_THAT(ext.rotations, ElementsAre(testing::SizeIs(1), testing::SizeIs(0), testing::SizeIs(2)));
  EXPECT_EQ(ext.entries5.size(), 1u);
  EXPECT_EQ(ext.entries6.size(), 2u);
  ASSERT_EQ(ext.scales.size(), 3u);
  EXPECT_EQ(ext.scales[0][0], 0x600u);
  EXPECT_EQ(ext.scales[1][0], 0x700u);
}

TEST(Layout, AVersion1BlockIsNoStructure) {
  EXPECT_FALSE(scene_with("Scene").scene.ext);
  EXPECT_FALSE(scene_with("Obj").obj_list.records[0].ext);
}

}  // namespace
