/// @file
/// The link rules where one differs from the others, their trace lines, and the functions by parent kind.
#include <gmock/gmock.h>

#include <set>
#include <utility>

#include "editor/model/forwards.h"
#include "editor/model/modifygraph.h"
#include "editor/model/nodenames.h"
#include "tests/editor/model/linkedits.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Tests of single rules, on a built scene.
class OddRules : public testing::Test {
 protected:
  OddRules() { qis = built_scene(); }
  int add(const char* parent, const char* child) {
    return run_edit(printed_, [&] { return quilAddLink(parent, child); });
  }
  int remove(const char* parent, const char* child) {
    return run_edit(printed_, [&] { return quilDeleteLink(parent, child); });
  }
  int move(const char* old_parent, const char* old_child, const char* new_parent, const char* new_child) {
    return run_edit(printed_, [&] { return quilModifyLink(old_parent, old_child, new_parent, new_child); });
  }
  std::string printed_;
};

TEST_F(OddRules, AddingTracesBothNodes) {
  add("scene_0", "obj_3");
  EXPECT_EQ(printed_,
            "parent = scene_0, child = obj_3\n"
            " parent = 0x00010000, 0\n"
            " child  = 0x00020100, 3\n");
  add("lod_2", "newNode");
  EXPECT_EQ(printed_,
            "parent = lod_2, child = newNode\n"
            " parent = 0000000000, 2\n"
            " child  = 0000000000, 0\n");
}

TEST_F(OddRules, MovingTracesAllFourNodes) {
  move("obj_1", "mat_2", "lod_3", "ChainRoot_5");
  EXPECT_EQ(printed_,
            "old parent = obj_1, old child = mat_2\n"
            "new parent = lod_3, new child = ChainRoot_5\n"
            "old parent = 0x00020100, 1\n"
            "old child  = 0x000a0100, 2\n"
            "new parent = 0000000000, 3\n"
            "new child  = 0x00240100, 5\n");
}

TEST_F(OddRules, DeletingTracesNothing) {
  add("obj_1", "mat_2");
  remove("obj_1", "mat_2");
  EXPECT_EQ(printed_, "");
}

TEST_F(OddRules, ASelfLinkIsAcceptedOnce) {
  EXPECT_EQ(add("obj_2", "obj_2"), 1);
  EXPECT_EQ(add("obj_2", "obj_2"), 0) << "obj 2 is now its own child";
  EXPECT_THAT(qis->obj_list.records[2].children, ElementsAre(2));
}

TEST_F(OddRules, AMaterialIsNotReplacedByAdding) {
  ASSERT_EQ(add("obj_1", "mat_4"), 1);
  EXPECT_EQ(add("obj_1", "mat_0"), 0);
  EXPECT_EQ(qis->obj_list.records[1].fixed.mat, 4u);
}

TEST_F(OddRules, ATextureThatAMaterialHoldsAnswers1AndGrowsTheMaterial) {
  ASSERT_EQ(add("mat_0", "tex_5"), 1);
  const auto before = size_words(*qis);
  EXPECT_EQ(add("mat_0", "tex_5"), 1);
  EXPECT_THAT(qis->mat_list.records[0].texs, ElementsAre(5));
  EXPECT_EQ(size_changes(before, size_words(*qis)), record_growth("MatList", "mat 0", 4));
}

TEST_F(OddRules, APartWhoseSlotHoldsAllOnesIsNotUnset) {
  qis->part_list.records[0].fixed.mat = kUnset;
  EXPECT_EQ(add("part_0", "mat_1"), 0);
  EXPECT_EQ(qis->part_list.records[0].fixed.mat, kUnset);
}

TEST_F(OddRules, ALevelOfDetailNodeAndACameraAreRefused) {
  EXPECT_EQ(add("lod_0", "obj_1"), 0);
  EXPECT_EQ(add("scene_0", "cam_0"), 0);
}

TEST_F(OddRules, AChainRootWithAnAnimationTakesNoOther) {
  ASSERT_EQ(add("ChainRoot_0", "anim_3"), 1);
  EXPECT_EQ(add("ChainRoot_0", "anim_3"), 0);
  EXPECT_EQ(add("ChainRoot_0", "anim_4"), 0);
  EXPECT_EQ(qis->ext.chain_root_list.records[0].fixed.anim, 3u);
}

TEST_F(OddRules, DeletingAnObjThatTheSceneDoesNotHaveDropsItsLast) {
  for (const char* child : {"obj_2", "obj_3", "obj_2"}) add("scene_0", child);
  qis->scene.objs = {2, 3, 2};
  qis->scene.fixed.obj_count = 3;
  const auto before = size_words(*qis);
  EXPECT_EQ(remove("scene_0", "obj_4"), 1);
  EXPECT_THAT(qis->scene.objs, ElementsAre(2, 3)) << "the last, not the first that equals it";
  EXPECT_EQ(qis->scene.fixed.obj_count, 2u);
  EXPECT_EQ(size_changes(before, size_words(*qis)), record_growth("SceneList", "scene 0", -4));
}

TEST_F(OddRules, AMaterialMovesUnderTheSameObj) {
  ASSERT_EQ(add("obj_1", "mat_2"), 1);
  EXPECT_EQ(move("obj_1", "mat_2", "obj_1", "mat_5"), 1);
  EXPECT_EQ(qis->obj_list.records[1].fixed.mat, 5u);
  EXPECT_EQ(move("obj_1", "mat_5", "obj_1", "mat_5"), 0) << "onto its own node";
}

TEST_F(OddRules, AMaterialThatMovesToAnotherObjReplacesTheOneThere) {
  ASSERT_EQ(add("obj_1", "mat_2"), 1);
  ASSERT_EQ(add("obj_3", "mat_5"), 1);
  EXPECT_EQ(move("obj_1", "mat_2", "obj_3", "mat_2"), 1);
  EXPECT_EQ(qis->obj_list.records[3].fixed.mat, 2u);
  EXPECT_EQ(qis->obj_list.records[1].fixed.mat, kUnset);
}

TEST_F(OddRules, AnObjDoesNotMoveOntoACamera) {
  ASSERT_EQ(add("scene_0", "obj_1"), 1);
  EXPECT_EQ(move("scene_0", "obj_1", "scene_0", "cam_1"), 0);
  EXPECT_THAT(qis->scene.objs, ElementsAre(1));
}

TEST_F(OddRules, AnObjMovesFromAJointToTheScene) {
  ASSERT_EQ(add("joint_2", "obj_3"), 1);
  EXPECT_EQ(move("joint_2", "obj_3", "scene_0", "obj_3"), 1);
  EXPECT_THAT(qis->scene.objs, ElementsAre(3));
  EXPECT_THAT(qis->ext.joint_list.records[2].objs, IsEmpty());
  EXPECT_EQ(qis->ext.joint_list.records[2].fixed.obj_count, 0u);
}

TEST_F(OddRules, AnObjMovesBetweenAllKindsThatHoldObjs) {
  const char* parents[] = {"scene_0", "obj_1", "ChainRoot_1", "joint_1", "effector_1"};
  for (const char* from : parents) {
    for (const char* to : parents) {
      if (from == to) continue;
      SCOPED_TRACE(std::string(from) + " to " + to);
      qis = built_scene();
      ASSERT_EQ(add(from, "obj_4"), 1);
      EXPECT_EQ(move(from, "obj_4", to, "obj_4"), 1);
      EXPECT_THAT(arcs(), ElementsAre(std::string(to) + " obj_4"));
    }
  }
}

TEST_F(OddRules, AnAnimationAMaterialAndAJointMoveBetweenAllTheirParents) {
  const std::vector<std::vector<const char*>> rows = {
      {"anim_4", "obj_1", "ChainRoot_1", "joint_1", "effector_1"},
      {"mat_4", "obj_1", "shape_1", "part_1"},
      {"joint_4", "ChainRoot_1", "joint_1"},
      {"ChainRoot_4", "obj_1", "scene_0"}};
  for (const auto& row : rows) {
    const char* child = row[0];
    for (std::size_t from = 1; from < row.size(); ++from) {
      for (std::size_t to = 1; to < row.size(); ++to) {
        if (from == to) continue;
        SCOPED_TRACE(std::string(child) + " from " + row[from] + " to " + row[to]);
        qis = built_scene();
        ASSERT_EQ(add(row[from], child), 1);
        EXPECT_EQ(move(row[from], child, row[to], child), 1);
        EXPECT_THAT(arcs(), ElementsAre(std::string(row[to]) + " " + child));
      }
    }
  }
}

TEST_F(OddRules, ALightOfTheSceneCanChangeButNotComeOrGo) {
  qis->scene.lights = {2, 3};
  qis->scene.fixed.light_count = 2;
  EXPECT_EQ(add("scene_0", "light_4"), 0);
  EXPECT_EQ(remove("scene_0", "light_2"), 0);
  EXPECT_EQ(move("scene_0", "light_3", "scene_0", "light_4"), 1);
  EXPECT_THAT(qis->scene.lights, ElementsAre(2, 4));
  EXPECT_EQ(move("scene_0", "light_2", "scene_0", "light_4"), 0) << "it has that one";
}

TEST_F(OddRules, AChildThatMovedStaysMovedWhenItsOldParentRefuses) {
  EXPECT_EQ(move("joint_1", "obj_3", "scene_0", "obj_3"), 1) << "the joint never held it";
  EXPECT_THAT(printed_, HasSubstr("Error: no link to index 3.\n"));
  EXPECT_THAT(qis->scene.objs, ElementsAre(3));
}

TEST_F(OddRules, AnOldParentOfAnUnexpectedKindIsNamedAndKept) {
  EXPECT_EQ(move("cam_1", "obj_3", "scene_0", "obj_3"), 1);
  EXPECT_THAT(printed_, HasSubstr("unexpected link, e0100\n"));
  EXPECT_EQ(move("cam_1", "mat_3", "obj_1", "mat_3"), 1);
  EXPECT_THAT(printed_, testing::Not(HasSubstr("unexpected"))) << "materials go without a word";
}

TEST_F(OddRules, SomeMovesTakeTheirOldParentForAnObjAJointOrAMaterial) {
  qis->obj_list.records[2].fixed.shape = 4;
  EXPECT_EQ(move("cam_2", "shape_4", "obj_1", "shape_4"), 1);
  EXPECT_EQ(qis->obj_list.records[2].fixed.shape, kUnset);
  ASSERT_EQ(add("obj_2", "ChainRoot_3"), 1);
  EXPECT_EQ(move("tex_2", "ChainRoot_3", "scene_0", "ChainRoot_3"), 1);
  EXPECT_THAT(qis->obj_list.records[2].ext->chain_roots, IsEmpty());
  qis->ext.joint_list.records[2].fixed.effector = 4;
  EXPECT_EQ(move("cam_2", "effector_4", "joint_1", "effector_4"), 1);
  EXPECT_EQ(qis->ext.joint_list.records[2].fixed.effector, kUnset);
  ASSERT_EQ(add("mat_2", "tex_4"), 1);
  EXPECT_EQ(move("cam_2", "tex_4", "mat_1", "tex_4"), 1);
  EXPECT_THAT(qis->mat_list.records[2].texs, IsEmpty());
}

TEST_F(OddRules, AnAssumedOldParentThatIsTheNewOneKeepsTheChild) {
  EXPECT_EQ(move("cam_1", "tex_4", "mat_1", "tex_4"), 1);
  EXPECT_THAT(qis->mat_list.records[1].texs, ElementsAre(4));
  EXPECT_EQ(move("shape_2", "shape_4", "obj_2", "shape_4"), 1);
  EXPECT_EQ(qis->obj_list.records[2].fixed.shape, 4u);
}

TEST_F(OddRules, AMoveOntoAParentThatHoldsTheChild) {
  ASSERT_EQ(add("obj_1", "anim_3"), 1);
  ASSERT_EQ(add("joint_1", "anim_3"), 1);
  EXPECT_EQ(move("obj_1", "anim_3", "joint_1", "anim_3"), 0) << "a joint refuses what it holds";
  EXPECT_EQ(qis->obj_list.records[1].fixed.anim, 3u);
  EXPECT_EQ(move("joint_1", "anim_3", "obj_1", "anim_3"), 1) << "an obj is overwritten with the same";
  EXPECT_EQ(qis->ext.joint_list.records[1].fixed.anim, kUnset);
}

TEST_F(OddRules, AMoveThatTheNewParentRefusesLeavesTheOld) {
  for (const char* tex : {"tex_0", "tex_1", "tex_2"}) ASSERT_EQ(add("mat_1", tex), 1);
  ASSERT_EQ(add("mat_2", "tex_5"), 1);
  const Snapshot before = snapshot();
  EXPECT_EQ(move("mat_2", "tex_5", "mat_1", "tex_5"), 0);
  EXPECT_EQ(snapshot(), before);
}

TEST_F(OddRules, AVersion1SceneHasNoSkeletonToLink) {
  qis = built_version1_scene();
  const Snapshot before = snapshot();
  EXPECT_EQ(add("scene_0", "ChainRoot_0"), 0);
  EXPECT_EQ(remove("scene_0", "ChainRoot_0"), 0);
  EXPECT_EQ(remove("obj_0", "ChainRoot_0"), 0);
  EXPECT_EQ(move("obj_0", "ChainRoot_0", "scene_0", "ChainRoot_0"), 0);
  EXPECT_EQ(add("joint_0", "obj_0"), 0);
  EXPECT_EQ(snapshot(), before);
}

TEST_F(OddRules, AFileWithoutASceneRecordTakesNoObjsAtItsTop) {
  qis->header.fixed.list_num[0] = 0;
  const Snapshot before = snapshot();
  EXPECT_EQ(add("scene_0", "obj_0"), 0);
  EXPECT_EQ(move("obj_1", "obj_0", "scene_0", "obj_0"), 0);
  EXPECT_EQ(snapshot(), before);
}

TEST_F(OddRules, TheSinglePairsAreTheseAndNoOthers) {
  std::set<std::pair<Word, Word>> pairs;
  for (const NodeKind& parent : kNodeKinds)
    for (const NodeKind& child : kNodeKinds)
      if (isOnly1child(parent.tag, child.tag)) pairs.emplace(parent.tag, child.tag);
  const std::set<std::pair<Word, Word>> expected = {
      {0x20100, 0x30100},   {0x20100, 0xa0100},   {0x20100, 0xc0100},   {0x30100, 0xa0100},
      {0x90100, 0xa0100},   {0x240100, 0xc0100},  {0x240100, 0x250100}, {0x250100, 0xc0100},
      {0x250100, 0x250100}, {0x250100, 0x260100}, {0x260100, 0xc0100}};
  EXPECT_EQ(pairs, expected);
}

TEST_F(OddRules, OneLinkChangesInPlace) {
  Words entries = {4, 2, 4};
  EXPECT_EQ(quilModifyOneLink(entries, 4, 5), 1);
  EXPECT_THAT(entries, ElementsAre(5, 2, 4)) << "the first of two";
  EXPECT_EQ(run_edit(printed_, [&] { return quilModifyOneLink(entries, 9, 2); }), 0);
  EXPECT_EQ(printed_, "already changed ??\n");
  EXPECT_EQ(run_edit(printed_, [&] { return quilModifyOneLink(entries, 4, 2); }), 0);
  EXPECT_EQ(printed_, "already linked ??\n");
  EXPECT_EQ(quilModifyOneLink({}, 1, 2), 0);
}

TEST_F(OddRules, TheFunctionsByParentKindAreTheSameRules) {
  EXPECT_EQ(quilAddLinkScene(qi::kObjTag, 1), 1);
  EXPECT_EQ(quilAddLinkObj(qi::kShapeTag, 2, 1), 1);
  EXPECT_EQ(quilAddLinkShape(qi::kMatTag, 3, 2), 1);
  EXPECT_EQ(quilAddLinkPart(qi::kMatTag, 3, 1), 1);
  EXPECT_EQ(quilAddLinkChainRoot(qi::kJointTag, 1, 0), 1);
  EXPECT_EQ(quilAddLinkJoint(qi::kEffectorTag, 2, 1), 1);
  EXPECT_EQ(quilAddLinkEffector(qi::kAnimTag, 0, 2), 1);
  EXPECT_EQ(add_mat_tex(3, 4), 1);
  EXPECT_THAT(arcs(),
              ElementsAre("ChainRoot_0 joint_1", "effector_2 anim_0", "joint_1 effector_2", "mat_3 tex_4",
                          "obj_1 shape_2", "part_1 mat_3", "scene_0 obj_1", "shape_2 mat_3"));

  EXPECT_EQ(quilModifyLinkScene(qi::kObjTag, 2, 1, 0), 1);
  EXPECT_EQ(quilModifyLinkObj(qi::kShapeTag, 3, 2, 1), 1);
  EXPECT_EQ(quilModifyLinkShape(qi::kMatTag, 4, 3, 2), 1);
  EXPECT_EQ(quilModifyLinkPart(qi::kMatTag, 4, 3, 1), 1);
  EXPECT_EQ(quilModifyLinkMat(qi::kTexTag, 5, 4, 3), 1);
  EXPECT_EQ(quilModifyLinkChainRoot(qi::kJointTag, 2, 1, 0), 1);
  EXPECT_EQ(quilModifyLinkJoint(qi::kEffectorTag, 3, 2, 1), 1);
  EXPECT_EQ(quilModifyLinkEffector(qi::kAnimTag, 1, 0, 2), 1);
  EXPECT_THAT(arcs(),
              ElementsAre("ChainRoot_0 joint_2", "effector_2 anim_1", "joint_1 effector_3", "mat_3 tex_5",
                          "obj_1 shape_3", "part_1 mat_4", "scene_0 obj_2", "shape_2 mat_4"));

  EXPECT_EQ(quilModifyLinkObjP(qi::kShapeTag, 3, 0, qi::kObjTag, 1), 1);
  EXPECT_EQ(quilModifyLinkShapeP(qi::kMatTag, 4, 0, qi::kPartTag, 1), 1);
  EXPECT_EQ(quilModifyLinkPartP(qi::kMatTag, 4, 0, qi::kShapeTag, 2), 1);
  EXPECT_EQ(quilModifyLinkMatP(qi::kTexTag, 5, 0, qi::kMatTag, 3), 1);
  EXPECT_EQ(quilModifyLinkChainRootP(qi::kJointTag, 2, 1, qi::kChainRootTag, 0), 1);
  EXPECT_EQ(quilModifyLinkJointP(qi::kEffectorTag, 3, 0, qi::kJointTag, 1), 1);
  EXPECT_EQ(quilModifyLinkEffectorP(qi::kAnimTag, 1, 0, qi::kEffectorTag, 2), 1);
  EXPECT_EQ(quilModifyLinkJointP(qi::kObjTag, 2, 0, qi::kSceneTag, 0), 1);
  EXPECT_EQ(quilModifyLinkSceneP(qi::kObjTag, 2, 0, qi::kJointTag, 0), 1);
  EXPECT_THAT(arcs(),
              ElementsAre("ChainRoot_1 joint_2", "effector_0 anim_1", "joint_0 effector_3", "mat_0 tex_5",
                          "obj_0 shape_3", "part_0 mat_4", "scene_0 obj_2", "shape_0 mat_4"));

  EXPECT_EQ(quilDeleteLinkScene("obj_2"), 1);
  EXPECT_EQ(quilDeleteLinkObj(0, "shape_3"), 1);
  EXPECT_EQ(quilDeleteLinkShape(0, "mat_4"), 1);
  EXPECT_EQ(quilDeleteLinkPart(0, "mat_4"), 1);
  EXPECT_EQ(quilDeleteLinkMat(0, "tex_5"), 1);
  EXPECT_EQ(quilDeleteLinkChainRoot(1, "joint_2"), 1);
  EXPECT_EQ(quilDeleteLinkJoint(0, "effector_3"), 1);
  EXPECT_EQ(quilDeleteLinkEffector(0, "anim_1"), 1);
  EXPECT_THAT(arcs(), IsEmpty());
}

TEST_F(OddRules, TheRemoversOfTheCurrentSceneTakeOneLinkEach) {
  ASSERT_EQ(add_scene_obj(1), 1);
  ASSERT_EQ(add_obj_child(1, 2), 1);
  ASSERT_EQ(add_mat_tex(1, 2), 1);
  for (const auto& [parent, child] :
       {std::pair{"obj_1", "shape_2"}, std::pair{"obj_1", "mat_2"}, std::pair{"obj_1", "anim_2"},
        std::pair{"shape_1", "mat_2"}, std::pair{"part_1", "mat_2"}})
    ASSERT_EQ(add(parent, child), 1);
  EXPECT_EQ(delete_scene_obj(1), 1);
  EXPECT_EQ(delete_obj_child(1, 2), 1);
  EXPECT_EQ(delete_mat_tex(1, 2), 1);
  EXPECT_EQ(delete_obj_shape(1), 1);
  EXPECT_EQ(delete_obj_mat(1), 1);
  EXPECT_EQ(delete_obj_anim(1), 1);
  EXPECT_EQ(delete_shape_mat(1), 1);
  EXPECT_EQ(delete_part_mat(1), 1);
  EXPECT_THAT(arcs(), IsEmpty());
  EXPECT_EQ(qis->part_list.records[1].fixed.mat, 0x80000000u);
  EXPECT_EQ(size_words(*qis), size_words(*built_scene()));

  EXPECT_EQ(delete_scene_obj(1), 1) << "an empty array is left alone";
  EXPECT_EQ(delete_obj_child(1, 2), 1);
  EXPECT_EQ(delete_mat_tex(1, 2), 1);
  EXPECT_EQ(delete_obj_shape(6), 0);
  EXPECT_EQ(delete_part_mat(6), 0);
  EXPECT_EQ(size_words(*qis), size_words(*built_scene()));
}

TEST_F(OddRules, OldParentRemoversRefuseOtherKindsWithALine) {
  EXPECT_EQ(run_edit(printed_, [] { return quilDelete_obj(qi::kShapeTag, 0, 1); }), 0);
  EXPECT_EQ(printed_, "unexpected link, 30100\n");
  EXPECT_EQ(run_edit(printed_, [] { return quilDelete_anim(qi::kSceneTag, 0); }), 0);
  EXPECT_EQ(printed_, "unexpected link, 10000\n");
  EXPECT_EQ(run_edit(printed_, [] { return quilDelete_ChainRoot(qi::kJointTag, 0, 1); }), 0);
  EXPECT_EQ(printed_, "unexpected link, 250100\n");
  EXPECT_EQ(run_edit(printed_, [] { return quilDelete_joint(qi::kObjTag, 0); }), 0);
  EXPECT_EQ(printed_, "unexpected link, 20100\n");
}

TEST_F(OddRules, OldParentRemoversAnswer1ForTheirKinds) {
  ASSERT_EQ(add("effector_1", "obj_2"), 1);
  ASSERT_EQ(add("effector_1", "anim_2"), 1);
  ASSERT_EQ(add("obj_1", "ChainRoot_2"), 1);
  ASSERT_EQ(add("ChainRoot_1", "joint_2"), 1);
  EXPECT_EQ(quilDelete_obj(qi::kEffectorTag, 1, 2), 1);
  EXPECT_EQ(quilDelete_anim(qi::kEffectorTag, 1), 1);
  EXPECT_EQ(quilDelete_ChainRoot(qi::kObjTag, 1, 2), 1);
  EXPECT_EQ(quilDelete_joint(qi::kChainRootTag, 1), 1);
  EXPECT_THAT(arcs(), IsEmpty());
  EXPECT_EQ(run_edit(printed_, [] { return quilDelete_obj(qi::kEffectorTag, 1, 2); }), 1)
      << "also when it held nothing";
  EXPECT_EQ(quilDelete_obj(qi::kEffectorTag, 6, 2), 0);
}

}  // namespace
