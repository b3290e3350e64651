/// @file
/// Names of the current scene's records.
#include "editor/model/forwards.h"

#include <gmock/gmock.h>

#include "editor/model/currentscene.h"
#include "qilib/names.h"
#include "tests/support/builtscene.h"

namespace {

class RecordNames : public testing::Test {
 protected:
  RecordNames() { qis = built_scene(); }
};

TEST_F(RecordNames, ANewNameIsAddedForARecordWithoutOne) {
  EXPECT_EQ(set_node_name("left arm", kUnset), 0u);
  EXPECT_EQ(set_node_name("right arm", kUnset), 1u);
  EXPECT_EQ(get_name_string(0), "left_arm");
  EXPECT_EQ(get_name_string(1), "right_arm");
}

TEST_F(RecordNames, ANameKeepsItsIndexWhenItsTextChanges) {
  set_node_name("arm", kUnset);
  EXPECT_EQ(set_node_name("leg", 0), 0u);
  EXPECT_EQ(get_name_string(0), "leg");
  EXPECT_EQ(qis->name_list.records.size(), 1u);
}

TEST_F(RecordNames, AnIndexOutsideTheListHasNoTextAndTakesNone) {
  EXPECT_EQ(get_name_string(0), "");
  EXPECT_EQ(get_name_string(kUnset), "");
  EXPECT_EQ(set_node_name("leg", 5), 5u);
  EXPECT_TRUE(qis->name_list.records.empty());
}

TEST_F(RecordNames, OnlyTheNameListCanGrow) {
  const auto before = size_words(*qis);
  for (const Word kind : {0x20100u, 0x250100u, 0x110000u, 0u}) EXPECT_EQ(addQuilNode(kind), 0u);
  EXPECT_EQ(size_words(*qis), before);
  EXPECT_EQ(addQuilNode(0x110100), 0u);
  EXPECT_EQ(addQuilNode(0x110100), 1u);
  EXPECT_EQ(qis->name_list.records.size(), 2u);
}

TEST_F(RecordNames, EveryKindOfNodeCanBeNamed) {
  Word expected = 0;
  for (const char* node : {"scene_0", "obj_1", "shape_2", "part_3", "mat_4", "tex_5", "anim_0", "cam_1",
                           "light_2", "env_3", "ChainRoot_4", "joint_5", "effector_0"}) {
    EXPECT_EQ(name_node(*qis, node, node), 1) << node;
    EXPECT_EQ(get_name_string(expected++), node);
  }
  EXPECT_EQ(qis->scene.fixed.name, 0u);
  EXPECT_EQ(qis->obj_list.records[1].fixed.name, 1u);
  EXPECT_EQ(qis->light_list.records[2].fixed.name, 8u);
  EXPECT_EQ(qis->ext.effector_list.records[0].fixed.name, 12u);
  EXPECT_EQ(name_node(*qis, "obj_1", "again"), 1);
  EXPECT_EQ(qis->obj_list.records[1].fixed.name, 1u) << "a record with a name keeps its index";
  EXPECT_EQ(get_name_string(1), "again");
}

TEST_F(RecordNames, WhatIsNoRecordIsRefused) {
  qis->obj_list.records[2].fixed.name = 77;
  const auto before = size_words(*qis);
  testing::internal::CaptureStderr();
  for (const char* node : {"obj_6", "scene_1", "lod_0", "newNode", "", "obj_-1", "obj_x", "obj_2"})
    EXPECT_EQ(name_node(*qis, node, "text"), 0) << node;
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "obj_2: can't be renamed: its name index is 77, and the scene has 0 names\n");
  EXPECT_EQ(size_words(*qis), before);
  EXPECT_EQ(qis->obj_list.records[2].fixed.name, 77u) << "a name that isn't there can't be changed";
}

}  // namespace
