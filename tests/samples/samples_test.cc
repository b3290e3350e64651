/// @file
/// The sample scenes are in order and show what they are there to show.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "editor/model/scenegraph.h"
#include "qilib/checksizes.h"
#include "qilib/opensave.h"
#include "qilib/sizes.h"
#include "samples/pictures.h"
#include "samples/scenes.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/told.h"

namespace {

using samples::Picture;

struct Sample {
  std::string name;
  Qis (*make)();
  Word version;
};

class Samples : public testing::TestWithParam<Sample> {
 protected:
  const ScratchDirectory directory;
  const std::string file = directory / "scene.quil";
};

TEST_P(Samples, HaveTheSizesThatEitherModeWrites) {
  for (const int mode : {1, 2}) {
    Qis scene = GetParam().make();
    Told told;
    EXPECT_EQ(qi::correct_sizes(scene, mode, told.sink()), 0) << "mode " << mode;
    EXPECT_EQ(told.words(), "");
  }
}

TEST_P(Samples, OpenWithNothingSaidAndComeBackByteForByte) {
  Qis scene = GetParam().make();
  ASSERT_EQ(qiSaveAsQb2(scene, file), 1);
  Qis opened;
  Told told;
  EXPECT_EQ(qi::open_scene(file, opened, told.sink()), 1);
  EXPECT_EQ(told.words(), "");
  EXPECT_EQ(qiQUILver(opened.header), GetParam().version);
  ASSERT_EQ(qiSaveAsQb2(opened, directory / "again.quil"), 1);
  EXPECT_EQ(read_file(file), read_file(directory / "again.quil"));
}

TEST_P(Samples, LoseNothingOnTheWayToTheFile) {
  Qis scene = GetParam().make();
  ASSERT_EQ(qiSaveAsQb2(scene, file), 1);
  Qis opened;
  ASSERT_EQ(qiOpenQb(file, opened), 1);
  const auto names = [](const Qis& of) {
    std::vector<std::string> result;
    for (const SceneGraph::Node& node : scene_graph(of).nodes) result.push_back(node.name);
    return result;
  };
  EXPECT_EQ(names(opened), names(scene));
}

INSTANTIATE_TEST_SUITE_P(
    All, Samples,
    testing::Values(Sample{"table", samples::table, qi::kVersion1},
                    Sample{"harbour", samples::harbour, qi::kVersion1},
                    Sample{"dog", samples::dog, qi::kVersion2}, Sample{"arm", samples::arm, qi::kVersion2},
                    Sample{"city", [] { return samples::city(1000, 3 << 20); }, qi::kVersion1}),
    CaseName());

bool has_arc(const SceneGraph& graph, const std::string& parent, const std::string& child) {
  return std::any_of(graph.arcs.begin(), graph.arcs.end(), [&](const SceneGraph::Arc& arc) {
    return graph.nodes[arc.parent].name.starts_with(parent) && graph.nodes[arc.child].name.starts_with(child);
  });
}

TEST(Harbour, ShowsEveryKindOfLinkOfVersion1) {
  const SceneGraph graph = scene_graph(samples::harbour());
  for (const auto& [parent, child] : std::vector<std::pair<std::string, std::string>>{{"scene_", "obj_"},
                                                                                      {"scene_", "env_"},
                                                                                      {"scene_", "cam_"},
                                                                                      {"scene_", "light_"},
                                                                                      {"obj_", "shape_"},
                                                                                      {"obj_", "mat_"},
                                                                                      {"obj_", "anim_"},
                                                                                      {"obj_", "obj_"},
                                                                                      {"obj_", "lod_"},
                                                                                      {"shape_", "mat_"},
                                                                                      {"shape_", "part_"},
                                                                                      {"part_", "mat_"},
                                                                                      {"mat_", "tex_"}}) {
    EXPECT_TRUE(has_arc(graph, parent, child)) << parent << " " << child;
  }
}

TEST(Dog, ShowsEveryKindOfLinkOfASkeleton) {
  const SceneGraph graph = scene_graph(samples::dog());
  for (const auto& [parent, child] :
       std::vector<std::pair<std::string, std::string>>{{"scene_", "ChainRoot_"},
                                                        {"obj_", "ChainRoot_"},
                                                        {"ChainRoot_", "obj_"},
                                                        {"ChainRoot_", "anim_"},
                                                        {"ChainRoot_", "joint_"},
                                                        {"joint_", "obj_"},
                                                        {"joint_", "joint_"},
                                                        {"joint_", "effector_"},
                                                        {"effector_", "obj_"}}) {
    EXPECT_TRUE(has_arc(graph, parent, child)) << parent << " " << child;
  }
}

TEST(Dog, HasAColourIndexedTextureOfEitherDepthAndSkinOnItsBones) {
  const Qis dog = samples::dog();
  const auto& textures = dog.tex_list.records;
  ASSERT_GE(textures.size(), 2u);
  for (const std::size_t i : {0u, 1u}) {
    const qi::TexExt& ext = textures[i].ext.value();
    EXPECT_EQ(ext.head.color_palette, 1u);
    const qi::CiImg& image = dog.ext.ciimg_list.records.at(textures[i].table.untiled.image);
    EXPECT_EQ(image.fixed.index_bits, i == 0 ? 8u : 4u);
    EXPECT_LT(ext.palettes.at(0), dog.ext.color_palette_list.records.size());
  }
  const auto& shapes = dog.shape_list.records;
  EXPECT_TRUE(std::any_of(shapes.begin(), shapes.end(),
                          [](const qi::Shape& s) { return s.ext->head.deformer_tag == qi::kEnvelopeTag; }));
  EXPECT_EQ(dog.ext.envelope_list.records.at(0).weighted.size(), 5u);
}

TEST(City, IsAsLargeAsAskedAndAsTangledAsScenesAre) {
  const Qis city = samples::city(5000, 5 << 20);
  EXPECT_EQ(city.obj_list.records.size(), 5000u);
  EXPECT_EQ(city.teximg_list.records.size(), 5u);
  EXPECT_GT(city.header.fixed.file_size, 5u << 20);
  const SceneGraph graph = scene_graph(city);
  const double arcs_per_node =
      static_cast<double>(graph.arcs.size()) / static_cast<double>(graph.nodes.size());
  EXPECT_NEAR(arcs_per_node, 1.3, 0.1);
}

TEST(City, OfNothingIsStillAScene) {
  Qis city = samples::city(0, 0);
  EXPECT_EQ(qiCheckSizes(city, 2), 0);
  EXPECT_FALSE(city.obj_list.records.empty());
}

TEST(Pictures, LoseNothingAsIndexedOnesWhenTheColoursSuffice) {
  const Picture stripes = samples::stripes({1, 0, 0, 1}, {0, 0, 1, 1}, 4);
  const samples::IndexedPicture indexed = samples::indexed(stripes, 4);
  ASSERT_EQ(indexed.palette.size(), 2u);
  ASSERT_EQ(indexed.indices.size(), stripes.texels.size());
  for (std::size_t i = 0; i < stripes.texels.size(); ++i) {
    const Word color = indexed.palette.at(indexed.indices[i]);
    EXPECT_EQ(color, stripes.texels[i] == 0xff0000ff ? 0xf801u : 0x003fu) << i;
  }
}

TEST(Pictures, TakeTheNearestColourWhenThereAreTooMany) {
  const Picture many = samples::picture(64, 64, [](float u, float v) { return QisRGBA{u, v, u * v, 1}; });
  const samples::IndexedPicture indexed = samples::indexed(many, 4);
  EXPECT_EQ(indexed.palette.size(), 16u);
  EXPECT_LT(*std::max_element(indexed.indices.begin(), indexed.indices.end()), 16u);
}

}  // namespace
