/// @file
/// Every list is visited once, in file order, with the right name, tag and size word.
#include "qilib/lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(Lists, StandInFileOrder) {
  Qis scene;
  std::vector<std::string> names;
  qi::for_each_list(scene, [&](const qi::ListInfo& info, auto&) { names.emplace_back(info.name); });
  EXPECT_THAT(names, testing::ElementsAre("SceneList", "EnvList", "CamList", "LightList", "ObjList",
                                          "ShapeList", "VtxList", "TriList", "ColorList", "VectorList",
                                          "StList", "PartList", "MatList", "TexList", "TeximgList",
                                          "AnimList", "CollList", "SwitchList", "NameList", "CiImgList",
                                          "ColorPaletteList", "EnvelopeList", "ClusterList", "WeightList",
                                          "ChainRootList", "JointList", "EffectorList", "ExternalNameList"));
}

TEST(Lists, TagsAreThoseOfTheirRecords) {
  Qis scene;
  qi::for_each_list(scene, [](const qi::ListInfo& info, auto& list) {
    SCOPED_TRACE(info.name);
    if constexpr (requires { list.records; }) {
      const Word record = std::decay_t<decltype(list.records[0])>::kTag;
      EXPECT_EQ(qi::list_of(record), info.name == "ExternalNameList" ? 0x110000u : info.tag);
    }
  });
}

TEST(Lists, SizesOfAllListsCoverEveryWordOnce) {
  Qis scene;
  Word next = 0;
  qi::for_each_list(scene,
                    [&](const qi::ListInfo& info, auto&) { qi::list_bytes(scene.header, info) = ++next; });
  EXPECT_EQ(scene.header.fixed.list_num[6], 7u) << "VtxList";
  EXPECT_EQ(scene.header.fixed.list_num[10], 8u) << "the TriList's size stands after the StList's";
  EXPECT_EQ(scene.header.fixed.list_num[18], 19u) << "NameList";
  EXPECT_EQ(scene.header.ext_sizes[0], 20u) << "CiImgList";
  EXPECT_EQ(scene.header.ext_sizes[8], 28u) << "ExternalNameList";
}

TEST(Lists, RecordsOfBothKindsAreCountedAndVisited) {
  Qis scene;
  scene.color_list.records1.resize(2);
  scene.color_list.records2.resize(3);
  scene.obj_list.records.resize(4);
  std::size_t visited = 0;
  qi::for_each_record(scene.color_list, [&](std::size_t, auto&) { ++visited; });
  EXPECT_EQ(visited, 5u);
  EXPECT_EQ(qi::record_count(scene.color_list), 5u);
  EXPECT_EQ(qi::record_count(scene.obj_list), 4u);
  EXPECT_EQ(qi::record_count(scene.scene), 1u);
}

}  // namespace
