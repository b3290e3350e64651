/// @file
/// The graph of a scene: its nodes and arcs, and their order.
#include "editor/model/scenegraph.h"

#include <gmock/gmock.h>

#include "qilib/opensave.h"
#include "tests/support/builtscene.h"
#include "tests/support/shared_scenes.h"

namespace {

using testing::ElementsAre;
using testing::Pair;

std::vector<std::string> names(const SceneGraph& graph) {
  std::vector<std::string> names;
  for (const auto& node : graph.nodes) names.push_back(node.name);
  return names;
}

using NamedArcs = std::vector<std::pair<std::string, std::string>>;
NamedArcs arcs(const SceneGraph& graph) {
  NamedArcs arcs;
  for (const auto& [parent, child] : graph.arcs)
    arcs.emplace_back(graph.nodes.at(parent).name, graph.nodes.at(child).name);
  return arcs;
}

class SharedSceneGraph : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Scenes, SharedSceneGraph, testing::ValuesIn(kSharedScenes),
                         [](const auto& scene) { return std::string(scene.param); });

TEST_P(SharedSceneGraph, HasTheNodesAndArcsInTheirOrder) {
  const SharedScene expected = shared_scene(GetParam());
  Qis scene;
  ASSERT_EQ(qiOpenQb(expected.path, scene), 1);
  const SceneGraph graph = scene_graph(scene);
  EXPECT_EQ(names(graph), expected.nodes);
  EXPECT_EQ(arcs(graph), expected.arcs);
}

TEST(SceneGraphs, ASharedMaterialIsOneNodeWithTwoParents) {
  const auto scene = built_version1_scene(1);
  scene->scene.objs = {0};
  scene->obj_list.records[0].fixed.shape = 0;
  scene->obj_list.records[0].fixed.mat = 0;
  scene->shape_list.records[0].fixed.mat = 0;
  const SceneGraph graph = scene_graph(*scene);
  EXPECT_THAT(names(graph), ElementsAre("scene_0", "obj_0", "shape_0", "mat_0"));
  EXPECT_THAT(arcs(graph), ElementsAre(Pair("scene_0", "obj_0"), Pair("obj_0", "shape_0"),
                                       Pair("obj_0", "mat_0"), Pair("shape_0", "mat_0")));
}

TEST(SceneGraphs, AnEmptySceneIsItsNodeAlone) {
  EXPECT_THAT(names(scene_graph(Qis{})), ElementsAre("scene_0"));
  EXPECT_TRUE(scene_graph(Qis{}).arcs.empty());
  EXPECT_THAT(names(scene_graph(*built_scene())), ElementsAre("scene_0")) << "records that no arc touches";
}

/// One of every reference, each to records of its own, so that the whole order shows.
std::unique_ptr<Qis> scene_with_every_reference() {
  auto scene = built_scene(3);
  scene->scene.objs = {1, 0};
  scene->scene.envs = {0};
  scene->scene.cams = {2, 1};
  scene->scene.lights = {0};
  scene->scene.ext->chain_roots = {0};
  auto& obj = scene->obj_list.records[1];
  obj.fixed.shape = 1;
  obj.fixed.mat = 2;
  obj.fixed.anim = 0;
  obj.fixed.lod_count = 1;
  obj.children = {2};
  obj.ext->chain_roots = {1};
  scene->shape_list.records[1].fixed.mat = 0;
  scene->shape_list.records[1].parts = {2};
  scene->part_list.records[2].fixed.mat = 1;
  scene->mat_list.records[2].texs = {0, 2};
  auto& root = scene->ext.chain_root_list.records[0];
  root.objs = {0};
  root.fixed.anim = 1;
  root.fixed.joint = 0;
  auto& joint = scene->ext.joint_list.records[0];
  joint.objs = {0};
  joint.fixed.anim = 2;
  joint.fixed.child_joint = 1;
  joint.fixed.effector = 2;
  auto& effector = scene->ext.effector_list.records[2];
  effector.objs = {2};
  effector.fixed.anim = 1;
  return scene;
}

TEST(SceneGraphs, ArcsStandInTheirFixedOrder) {
  const SceneGraph graph = scene_graph(*scene_with_every_reference());
  EXPECT_THAT(
      arcs(graph),
      ElementsAre(Pair("scene_0", "obj_1"), Pair("scene_0", "obj_0"), Pair("scene_0", "env_0"),
                  Pair("scene_0", "cam_2"), Pair("scene_0", "cam_1"), Pair("scene_0", "light_0"),
                  Pair("obj_1", "shape_1"), Pair("obj_1", "mat_2"), Pair("obj_1", "anim_0"),
                  Pair("obj_1", "obj_2"), Pair("shape_1", "mat_0"), Pair("shape_1", "part_2"),
                  Pair("part_2", "mat_1"), Pair("mat_2", "tex_0"), Pair("mat_2", "tex_2"),
                  Pair("obj_1", "lod_1"), Pair("scene_0", "ChainRoot_0"), Pair("obj_1", "ChainRoot_1"),
                  Pair("ChainRoot_0", "obj_0"), Pair("ChainRoot_0", "anim_1"), Pair("ChainRoot_0", "joint_0"),
                  Pair("joint_0", "obj_0"), Pair("joint_0", "anim_2"), Pair("joint_0", "joint_1"),
                  Pair("joint_0", "effector_2"), Pair("effector_2", "obj_2"), Pair("effector_2", "anim_1")));
}

TEST(SceneGraphs, AVersion1SceneShowsNoSkeletonEvenIfItHasOne) {
  const auto scene = scene_with_every_reference();
  scene->header.fixed.version = 0x00070100;  // only the low half is the version
  const SceneGraph graph = scene_graph(*scene);
  EXPECT_EQ(arcs(graph).back(), std::make_pair(std::string("obj_1"), std::string("lod_1")));
  for (const std::string& name : names(graph))
    EXPECT_TRUE(name.find("ChainRoot") && name.find("joint") && name.find("effector")) << name;
}

TEST(SceneGraphs, ALevelOfDetailNodeIsLabelledLod) {
  const auto scene = built_scene();
  scene->obj_list.records[4].fixed.lod_count = 2;
  const SceneGraph graph = scene_graph(*scene);
  EXPECT_THAT(names(graph), ElementsAre("scene_0", "obj_4", "lod_4"));
  EXPECT_STREQ(graph.nodes[1].label(), "obj_4");
  EXPECT_STREQ(graph.nodes[2].label(), "LOD");
  EXPECT_THAT(arcs(graph), ElementsAre(Pair("obj_4", "lod_4")));
}

TEST(SceneGraphs, ASelfLinkIsOneNode) {
  const auto scene = built_scene();
  scene->obj_list.records[3].children = {3};
  scene->ext.joint_list.records[0].fixed.child_joint = 0;
  const SceneGraph graph = scene_graph(*scene);
  EXPECT_THAT(names(graph), ElementsAre("scene_0", "obj_3", "joint_0"));
  EXPECT_THAT(arcs(graph), ElementsAre(Pair("obj_3", "obj_3"), Pair("joint_0", "joint_0")));
}

TEST(SceneGraphs, ALoopEnds) {
  const auto scene = built_scene();
  scene->obj_list.records[0].children = {1};
  scene->obj_list.records[1].children = {2};
  scene->obj_list.records[2].children = {0, 0};
  EXPECT_THAT(arcs(scene_graph(*scene)), ElementsAre(Pair("obj_0", "obj_1"), Pair("obj_1", "obj_2"),
                                                     Pair("obj_2", "obj_0"), Pair("obj_2", "obj_0")));
}

TEST(SceneGraphs, AReferenceOutsideItsListMakesANode) {
  const auto scene = built_scene();
  scene->scene.objs = {99, kUnset};
  scene->part_list.records[0].fixed.mat = kUnset;
  const SceneGraph graph = scene_graph(*scene);
  EXPECT_THAT(names(graph), ElementsAre("scene_0", "obj_99", "obj_-1", "part_0", "mat_-1"))
      << "a part's slot is unset at 0x80000000 alone";
}

TEST(SceneGraphs, ParentsOfTheSkeletonAreMadeWhereNoEarlierArcTouchesThem) {
  const auto scene = built_scene();
  scene->obj_list.records[5].ext->chain_roots = {2};
  EXPECT_THAT(names(scene_graph(*scene)), ElementsAre("scene_0", "obj_5", "ChainRoot_2"));
}

TEST(SceneGraphs, MissingStructuresHaveNoArcs) {
  const auto scene = scene_with_every_reference();
  scene->scene.ext.reset();
  for (auto& obj : scene->obj_list.records) obj.ext.reset();
  EXPECT_EQ(arcs(scene_graph(*scene)).size(), 25u) << "all but the two to chain roots";
}

}  // namespace
