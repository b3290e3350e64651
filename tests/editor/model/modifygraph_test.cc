/// @file
/// The link rules: adding, deleting and moving links of every allowed pair of kinds, and refusing the others.
#include "editor/model/modifygraph.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "editor/model/scenegraph.h"
#include "tests/support/builtscene.h"
#include "tests/support/case_name.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Runs an edit and returns its answer; what it printed goes to `printed`.
template <class Edit>
int run(std::string& printed, Edit edit) {
  testing::internal::CaptureStdout();
  const int answer = edit();
  printed = testing::internal::GetCapturedStdout();
  return answer;
}

/// The arcs of the current scene, as text, sorted; and every size word: what no refused edit may change.
struct Snapshot {
  std::multiset<std::string> arcs;
  SizeWords sizes;
  friend bool operator==(const Snapshot&, const Snapshot&) = default;
};
Snapshot snapshot() {
  Snapshot now{{}, size_words(*qis)};
  const SceneGraph graph = scene_graph(*qis);
  for (const auto& [parent, child] : graph.arcs)
    now.arcs.insert(graph.nodes[parent].name + " " + graph.nodes[child].name);
  return now;
}

/// Where the parent of a row keeps its reference: a slot, or an index array and its count.
struct Held {
  Word* slot = nullptr;
  Words* array = nullptr;
  Word* count = nullptr;
};

enum class Absent { drops_last, refused_with_a_line, accepted_with_a_line, unsets };
enum class Repeat { refused, accepted };

struct LinkCase {
  const char* name;
  const char* parent;        ///< node of the parent
  const char* child;         ///< prefix of the child's nodes
  const char* other_parent;  ///< another parent that may hold the same child
  Held (*held)();
  Absent absent = Absent::unsets;
  Repeat repeat = Repeat::refused;
  const char* list = "";
  const char* record = "";
  bool in_structure = false;
  Word unset = kUnset;
};

qi::Obj& obj() { return qis->obj_list.records[1]; }
qi::ChainRoot& chain_root() { return qis->ext.chain_root_list.records[1]; }
qi::Joint& joint() { return qis->ext.joint_list.records[1]; }
qi::Effector& effector() { return qis->ext.effector_list.records[1]; }

const LinkCase kLinks[] = {
    {"SceneObj", "scene_0", "obj_", "obj_2",
     [] {
       return Held{nullptr, &qis->scene.objs, &qis->scene.fixed.obj_count};
     },
     Absent::drops_last, Repeat::refused, "SceneList", "scene 0"},
    {"SceneChainRoot", "scene_0", "ChainRoot_", "obj_2",
     [] {
       return Held{nullptr, &qis->scene.ext->chain_roots, &qis->scene.ext->head.chain_root_count};
     },
     Absent::accepted_with_a_line, Repeat::refused, "SceneList", "scene 0", true},
    {"ObjObj", "obj_1", "obj_", "obj_2",
     [] {
       return Held{nullptr, &obj().children, &obj().fixed.child_count};
     },
     Absent::drops_last, Repeat::accepted, "ObjList", "obj 1"},
    {"ObjShape", "obj_1", "shape_", "obj_2", [] { return Held{&obj().fixed.shape}; }},
    {"ObjMat", "obj_1", "mat_", "shape_2", [] { return Held{&obj().fixed.mat}; }},
    {"ObjAnim", "obj_1", "anim_", "effector_2", [] { return Held{&obj().fixed.anim}; }},
    {"ObjChainRoot", "obj_1", "ChainRoot_", "scene_0",
     [] {
       return Held{nullptr, &obj().ext->chain_roots, &obj().ext->head.chain_root_count};
     },
     Absent::accepted_with_a_line, Repeat::refused, "ObjList", "obj 1", true},
    {"ShapeMat", "shape_1", "mat_", "part_2", [] { return Held{&qis->shape_list.records[1].fixed.mat}; }},
    {"PartMat", "part_1", "mat_", "obj_2", [] { return Held{&qis->part_list.records[1].fixed.mat}; },
     Absent::unsets, Repeat::refused, "", "", false, 0x80000000},
    {"MatTex", "mat_1", "tex_", "mat_2",
     [] {
       auto& mat = qis->mat_list.records[1];
       return Held{nullptr, &mat.texs, &mat.fixed.tex_count};
     },
     Absent::drops_last, Repeat::accepted, "MatList", "mat 1"},
    {"ChainRootObj", "ChainRoot_1", "obj_", "scene_0",
     [] {
       return Held{nullptr, &chain_root().objs, &chain_root().fixed.obj_count};
     },
     Absent::refused_with_a_line, Repeat::refused, "ChainRootList", "ChainRoot 1"},
    {"ChainRootAnim", "ChainRoot_1", "anim_", "obj_2", [] { return Held{&chain_root().fixed.anim}; }},
    {"ChainRootJoint", "ChainRoot_1", "joint_", "joint_2", [] { return Held{&chain_root().fixed.joint}; }},
    {"JointObj", "joint_1", "obj_", "ChainRoot_2",
     [] {
       return Held{nullptr, &joint().objs, &joint().fixed.obj_count};
     },
     Absent::refused_with_a_line, Repeat::refused, "JointList", "joint 1"},
    {"JointAnim", "joint_1", "anim_", "ChainRoot_2", [] { return Held{&joint().fixed.anim}; }},
    {"JointJoint", "joint_1", "joint_", "ChainRoot_2", [] { return Held{&joint().fixed.child_joint}; }},
    {"JointEffector", "joint_1", "effector_", "joint_2", [] { return Held{&joint().fixed.effector}; }},
    {"EffectorObj", "effector_1", "obj_", "joint_2",
     [] {
       return Held{nullptr, &effector().objs, &effector().fixed.obj_count};
     },
     Absent::refused_with_a_line, Repeat::refused, "EffectorList", "effector 1"},
    {"EffectorAnim", "effector_1", "anim_", "joint_2", [] { return Held{&effector().fixed.anim}; }},
};

class Links : public testing::TestWithParam<LinkCase> {
 protected:
  Links() { qis = built_scene(); }

  std::string child(Word number) { return GetParam().child + std::to_string(number); }
  int add(Word number) {
    return run(printed_, [&] { return quilAddLink(GetParam().parent, child(number)); });
  }
  int remove(Word number) {
    return run(printed_, [&] { return quilDeleteLink(GetParam().parent, child(number)); });
  }
  int move_child(Word from, Word to) {
    return run(printed_,
               [&] { return quilModifyLink(GetParam().parent, child(from), GetParam().parent, child(to)); });
  }
  int move_parent(const std::string& from, const std::string& to, Word number) {
    return run(printed_, [&] { return quilModifyLink(from, child(number), to, child(number)); });
  }
  bool single() { return GetParam().held().slot != nullptr; }
  /// What the parent refers to.
  Words held() {
    const Held held = GetParam().held();
    if (held.slot) return *held.slot == GetParam().unset ? Words{} : Words{*held.slot};
    EXPECT_EQ(held.array->size(), *held.count);
    return *held.array;
  }
  auto growth(std::int32_t bytes) {
    return single() ? std::map<std::string, std::int32_t>{}
                    : record_growth(GetParam().list, GetParam().record, bytes, GetParam().in_structure);
  }

  std::string printed_;
};
INSTANTIATE_TEST_SUITE_P(Rows, Links, testing::ValuesIn(kLinks), CaseName());

TEST_P(Links, AreAddedAndGrowTheirRecord) {
  const auto before = size_words(*qis);
  EXPECT_EQ(add(4), 1);
  EXPECT_THAT(held(), ElementsAre(4));
  EXPECT_EQ(size_changes(before, size_words(*qis)), growth(4));
}

TEST_P(Links, ASecondChildIsAddedToAnArrayAndRefusedByASlot) {
  add(4);
  EXPECT_EQ(add(5), single() ? 0 : 1);
  EXPECT_EQ(held(), single() ? Words{4} : (Words{4, 5}));
}

TEST_P(Links, ARepeatedChildIsNeverHeldTwice) {
  add(4);
  const auto before = size_words(*qis);
  const bool accepted = GetParam().repeat == Repeat::accepted;
  EXPECT_EQ(add(4), accepted ? 1 : 0);
  EXPECT_THAT(held(), ElementsAre(4));
  const auto unchanged = std::map<std::string, std::int32_t>{};
  EXPECT_EQ(size_changes(before, size_words(*qis)), accepted ? growth(4) : unchanged);
}

TEST_P(Links, ToAChildThatDoesNotExistAreRefused) {
  const Snapshot before = snapshot();
  EXPECT_EQ(add(6), 0);
  EXPECT_EQ(run(printed_, [&] { return quilAddLink(GetParam().parent, child(0) + "x"); }), 0);
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, OfAParentThatDoesNotExistAreRefused) {
  const std::string name = GetParam().parent;
  const std::string parent = name.substr(0, name.find('_')) + "_6";
  const Snapshot before = snapshot();
  EXPECT_EQ(run(printed_, [&] { return quilAddLink(parent, child(4)); }), 0);
  EXPECT_EQ(run(printed_, [&] { return quilDeleteLink(parent, child(4)); }), 0);
  EXPECT_EQ(run(printed_, [&] { return quilModifyLink(parent, child(4), parent, child(5)); }), 0);
  EXPECT_EQ(move_parent(GetParam().other_parent, parent, 4), 0);
  EXPECT_EQ(move_parent(parent, GetParam().parent, 4), 0) << "the old parent counts, too";
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, AreDeletedAndShrinkTheirRecord) {
  add(4);
  if (!single()) add(5);
  const auto before = size_words(*qis);
  EXPECT_EQ(remove(4), 1);
  EXPECT_EQ(held(), single() ? Words{} : Words{5});
  EXPECT_EQ(size_changes(before, size_words(*qis)), growth(-4));
}

TEST_P(Links, DeletingAChildThatIsNotHeld) {
  add(4);
  if (!single()) add(5);
  const Snapshot before = snapshot();
  const int answer = remove(3);
  switch (GetParam().absent) {
    case Absent::unsets:
      EXPECT_EQ(answer, 1);
      EXPECT_THAT(held(), IsEmpty());
      break;
    case Absent::drops_last:
      EXPECT_EQ(answer, 1);
      EXPECT_THAT(held(), ElementsAre(4));
      EXPECT_EQ(size_changes(before.sizes, size_words(*qis)), growth(-4));
      EXPECT_EQ(printed_, "");
      break;
    case Absent::refused_with_a_line:
    case Absent::accepted_with_a_line:
      EXPECT_EQ(answer, GetParam().absent == Absent::accepted_with_a_line ? 1 : 0);
      EXPECT_EQ(printed_, "Error: no link to index 3.\n");
      EXPECT_EQ(snapshot(), before);
      break;
  }
}

TEST_P(Links, DeletingFromNothing) {
  const Snapshot before = snapshot();
  EXPECT_EQ(remove(3), single() ? 1 : 0) << "a slot is unset whatever it holds, an empty array refuses";
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, ADanglingReferenceCanBeDeleted) {
  const Held place = GetParam().held();
  if (place.slot) {
    *place.slot = 99;
  } else {
    *place.array = {4, 99};
    *place.count = 2;
  }
  EXPECT_EQ(remove(99), 1);
  EXPECT_EQ(held(), single() ? Words{} : Words{4});
}

TEST_P(Links, AReferenceToNothingCanBeDeletedWhereItIsHeld) {
  if (GetParam().held().slot && GetParam().unset == kUnset) {
    EXPECT_EQ(run(printed_,
                  [&] {
                    return quilDeleteLink(GetParam().parent, child(0).substr(0, child(0).size() - 1) + "-1");
                  }),
              0)
        << "that is what an unset slot holds";
    return;
  }
  const std::string nothing = GetParam().child + std::string("-1");
  add(4);
  const Snapshot before = snapshot();
  EXPECT_EQ(run(printed_, [&] { return quilDeleteLink(GetParam().parent, nothing); }), 0);
  EXPECT_EQ(snapshot(), before);
  const Held place = GetParam().held();
  if (place.slot) {
    *place.slot = kUnset;
  } else {
    place.array->push_back(kUnset);
    ++*place.count;
  }
  EXPECT_EQ(run(printed_, [&] { return quilDeleteLink(GetParam().parent, nothing); }), 1);
  EXPECT_EQ(held(), single() ? Words{} : Words{4});
}

TEST_P(Links, TheirChildCanChange) {
  add(4);
  const auto before = size_words(*qis);
  EXPECT_EQ(move_child(4, 5), 1);
  EXPECT_THAT(held(), ElementsAre(5));
  EXPECT_EQ(size_words(*qis), before);
}

TEST_P(Links, AChildThatIsNotHeldCanNotChange) {
  add(4);
  const Snapshot before = snapshot();
  EXPECT_EQ(move_child(3, 5), 0);
  EXPECT_THAT(printed_, HasSubstr("\nalready changed ??\n"));
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, AChildCanNotChangeIntoOneThatIsHeld) {
  add(4);
  add(5);
  const Snapshot before = snapshot();
  EXPECT_EQ(move_child(4, single() ? 4 : 5), 0);
  if (!single()) {
    EXPECT_THAT(printed_, HasSubstr("\nalready linked ??\n"));
  }
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, AChildCanNotChangeIntoOneThatDoesNotExist) {
  add(4);
  const Snapshot before = snapshot();
  EXPECT_EQ(move_child(4, 6), 0);
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, ADanglingChildCanChangeIntoOneThatExists) {
  const Held place = GetParam().held();
  if (place.slot) {
    *place.slot = 99;
  } else {
    *place.array = {99};
    *place.count = 1;
  }
  EXPECT_EQ(move_child(99, 5), 1);
  EXPECT_THAT(held(), ElementsAre(5));
}

TEST_P(Links, TheirParentCanChange) {
  ASSERT_EQ(run(printed_, [&] { return quilAddLink(GetParam().other_parent, child(4)); }), 1);
  const auto other = std::string(GetParam().other_parent) + " " + child(4);
  ASSERT_TRUE(snapshot().arcs.contains(other));
  EXPECT_EQ(move_parent(GetParam().other_parent, GetParam().parent, 4), 1);
  EXPECT_THAT(held(), ElementsAre(4));
  EXPECT_FALSE(snapshot().arcs.contains(other));
}

TEST_P(Links, ADanglingChildCanNotChangeItsParent) {
  const Snapshot before = snapshot();
  EXPECT_EQ(move_parent(GetParam().other_parent, GetParam().parent, 6), 0);
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, AMoveOntoAnotherParentReplacesASlot) {
  if (!single()) {
    add(4);
    ASSERT_EQ(run(printed_, [&] { return quilAddLink(GetParam().other_parent, child(5)); }), 1);
    EXPECT_EQ(move_parent(GetParam().other_parent, GetParam().parent, 5), 1);
    EXPECT_THAT(held(), ElementsAre(4, 5)) << "an array just grows";
    return;
  }
  add(4);
  ASSERT_EQ(run(printed_, [&] { return quilAddLink(GetParam().other_parent, child(5)); }), 1);
  EXPECT_EQ(move_parent(GetParam().other_parent, GetParam().parent, 5), 1);
  EXPECT_THAT(held(), ElementsAre(5));
}

TEST_P(Links, NeitherEndOrBothEndsMovedIsRefused) {
  add(4);
  const Snapshot before = snapshot();
  EXPECT_EQ(move_child(4, 4), 0);
  EXPECT_EQ(
      run(printed_,
          [&] { return quilModifyLink(GetParam().parent, child(4), GetParam().other_parent, child(5)); }),
      0);
  EXPECT_EQ(
      run(printed_, [&] { return quilModifyLink(GetParam().parent, child(4), GetParam().parent, "cam_5"); }),
      0);
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, SinglePairsAreThoseOfSlots) {
  EXPECT_EQ(isOnly1child(tagofnd(GetParam().parent), tagofnd(GetParam().child)), single() ? 1 : 0);
}

bool has_rule(Word parent, Word child) {
  return std::any_of(std::begin(kLinks), std::end(kLinks), [&](const LinkCase& link) {
    return tagofnd(link.parent) == parent && tagofnd(link.child) == child;
  });
}

TEST(OtherPairs, AreRefusedInEveryEdit) {
  qis = built_scene();
  const Snapshot before = snapshot();
  int refused = 0;
  for (const NodeKind& parent : node_kinds()) {
    for (const NodeKind& child : node_kinds()) {
      if (has_rule(parent.tag, child.tag)) continue;
      ++refused;
      const std::string from = node_name(parent.tag, 0), other = node_name(parent.tag, 1);
      const std::string to = node_name(child.tag, 0), new_to = node_name(child.tag, 1);
      SCOPED_TRACE(from + " " + to);
      std::string printed;
      EXPECT_EQ(run(printed, [&] { return quilAddLink(from, to); }), 0);
      EXPECT_EQ(run(printed, [&] { return quilDeleteLink(from, to); }), 0);
      EXPECT_EQ(run(printed, [&] { return quilModifyLink(other, to, from, to); }), 0);
      EXPECT_EQ(run(printed, [&] { return quilModifyLink(from, to, from, new_to); }), 0);
      EXPECT_EQ(isOnly1child(parent.tag, child.tag), 0);
    }
  }
  EXPECT_EQ(refused, 13 * 13 - 19);
  EXPECT_EQ(snapshot(), before);
}

TEST(OtherPairs, NodesOfNoKindAreRefusedAtEitherEnd) {
  qis = built_scene();
  const Snapshot before = snapshot();
  std::string printed;
  for (const char* node :
       {"lod_0", "newNode", "", "ChainRootXY_0", "obj_x", "obj_99999999999999999999", "obj_007"}) {
    SCOPED_TRACE(node);
    EXPECT_EQ(run(printed, [&] { return quilAddLink(node, "obj_1"); }), 0);
    EXPECT_EQ(run(printed, [&] { return quilAddLink("obj_1", node); }), 0);
    EXPECT_EQ(run(printed, [&] { return quilAddLink("scene_0", node); }), 0);
    EXPECT_EQ(run(printed, [&] { return quilDeleteLink(node, "obj_1"); }), 0);
    EXPECT_EQ(run(printed, [&] { return quilDeleteLink("obj_1", node); }), 0);
    EXPECT_EQ(run(printed, [&] { return quilModifyLink("obj_1", "obj_2", node, "obj_2"); }), 0);
    EXPECT_EQ(run(printed, [&] { return quilModifyLink(node, "obj_2", "obj_1", "obj_2"); }), 0);
    EXPECT_EQ(run(printed, [&] { return quilModifyLink("obj_1", node, "obj_1", "obj_2"); }), 0);
    EXPECT_EQ(run(printed, [&] { return quilModifyLink("obj_1", "obj_2", "obj_1", node); }), 0);
  }
  EXPECT_EQ(snapshot(), before);
}

/// Tests of single rules, on a built scene.
class OddRules : public testing::Test {
 protected:
  OddRules() { qis = built_scene(); }
  int add(const char* parent, const char* child) {
    return run(printed_, [&] { return quilAddLink(parent, child); });
  }
  int remove(const char* parent, const char* child) {
    return run(printed_, [&] { return quilDeleteLink(parent, child); });
  }
  int move(const char* old_parent, const char* old_child, const char* new_parent, const char* new_child) {
    return run(printed_, [&] { return quilModifyLink(old_parent, old_child, new_parent, new_child); });
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
      EXPECT_THAT(snapshot().arcs, ElementsAre(std::string(to) + " obj_4"));
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
        EXPECT_THAT(snapshot().arcs, ElementsAre(std::string(row[to]) + " " + child));
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

TEST_F(OddRules, TheSinglePairsStandInTheirOrder) {
  std::vector<std::pair<Word, Word>> pairs;
  for (const NodeKind& parent : node_kinds())
    for (const NodeKind& child : node_kinds())
      if (isOnly1child(parent.tag, child.tag)) pairs.emplace_back(parent.tag, child.tag);
  const std::vector<std::pair<Word, Word>> expected = {
      {0x20100, 0x30100},   {0x20100, 0xa0100},   {0x20100, 0xc0100},   {0x30100, 0xa0100},
      {0x90100, 0xa0100},   {0x240100, 0xc0100},  {0x240100, 0x250100}, {0x250100, 0xc0100},
      {0x250100, 0x250100}, {0x250100, 0x260100}, {0x260100, 0xc0100}};
  EXPECT_EQ(pairs, expected);
}

TEST_F(OddRules, OneLinkChangesInPlace) {
  Words entries = {4, 2, 4};
  EXPECT_EQ(quilModifyOneLink(entries, 4, 5), 1);
  EXPECT_THAT(entries, ElementsAre(5, 2, 4)) << "the first of two";
  EXPECT_EQ(run(printed_, [&] { return quilModifyOneLink(entries, 9, 2); }), 0);
  EXPECT_EQ(printed_, "already changed ??\n");
  EXPECT_EQ(run(printed_, [&] { return quilModifyOneLink(entries, 4, 2); }), 0);
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
  EXPECT_THAT(snapshot().arcs,
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
  EXPECT_THAT(snapshot().arcs,
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
  EXPECT_THAT(snapshot().arcs,
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
  EXPECT_THAT(snapshot().arcs, IsEmpty());
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
  EXPECT_THAT(snapshot().arcs, IsEmpty());
  EXPECT_EQ(qis->part_list.records[1].fixed.mat, 0x80000000u);
  EXPECT_EQ(size_words(*qis), size_words(*built_scene()));

  EXPECT_EQ(delete_scene_obj(1), 0) << "an empty array is left alone";
  EXPECT_EQ(delete_obj_child(1, 2), 0);
  EXPECT_EQ(delete_mat_tex(1, 2), 0);
  EXPECT_EQ(delete_obj_shape(6), 0);
  EXPECT_EQ(delete_part_mat(6), 0);
  EXPECT_EQ(size_words(*qis), size_words(*built_scene()));
}

TEST_F(OddRules, OldParentRemoversRefuseOtherKindsWithALine) {
  EXPECT_EQ(run(printed_, [] { return quilDelete_obj(qi::kShapeTag, 0, 1); }), 0);
  EXPECT_EQ(printed_, "unexpected link, 30100\n");
  EXPECT_EQ(run(printed_, [] { return quilDelete_anim(qi::kSceneTag, 0); }), 0);
  EXPECT_EQ(printed_, "unexpected link, 10000\n");
  EXPECT_EQ(run(printed_, [] { return quilDelete_ChainRoot(qi::kJointTag, 0, 1); }), 0);
  EXPECT_EQ(printed_, "unexpected link, 250100\n");
  EXPECT_EQ(run(printed_, [] { return quilDelete_joint(qi::kObjTag, 0); }), 0);
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
  EXPECT_THAT(snapshot().arcs, IsEmpty());
  EXPECT_EQ(run(printed_, [] { return quilDelete_obj(qi::kEffectorTag, 1, 2); }), 1)
      << "also when it held nothing";
  EXPECT_EQ(quilDelete_obj(qi::kEffectorTag, 6, 2), 0);
}

}  // namespace
