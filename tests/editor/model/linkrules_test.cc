/// @file
/// The link rules row by row: adding, deleting and moving links of every allowed pair of kinds, and no other.
#include "editor/model/modifygraph.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "editor/model/nodenames.h"
#include "tests/editor/model/linkedits.h"
#include "tests/support/case_name.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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
    return run_edit(printed_, [&] { return quilAddLink(GetParam().parent, child(number)); });
  }
  int remove(Word number) {
    return run_edit(printed_, [&] { return quilDeleteLink(GetParam().parent, child(number)); });
  }
  int move_child(Word from, Word to) {
    return run_edit(printed_, [&] {
      return quilModifyLink(GetParam().parent, child(from), GetParam().parent, child(to));
    });
  }
  int move_parent(const std::string& from, const std::string& to, Word number) {
    return run_edit(printed_, [&] { return quilModifyLink(from, child(number), to, child(number)); });
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
  EXPECT_EQ(run_edit(printed_, [&] { return quilAddLink(GetParam().parent, child(0) + "x"); }), 0);
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, OfAParentThatDoesNotExistAreRefused) {
  const std::string name = GetParam().parent;
  const std::string parent = name.substr(0, name.find('_')) + "_6";
  const Snapshot before = snapshot();
  EXPECT_EQ(run_edit(printed_, [&] { return quilAddLink(parent, child(4)); }), 0);
  EXPECT_EQ(run_edit(printed_, [&] { return quilDeleteLink(parent, child(4)); }), 0);
  EXPECT_EQ(run_edit(printed_, [&] { return quilModifyLink(parent, child(4), parent, child(5)); }), 0);
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
  const int refused = GetParam().absent == Absent::refused_with_a_line ? 0 : 1;
  EXPECT_EQ(remove(3), refused) << "an empty array answers as one that holds other children";
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
    EXPECT_EQ(run_edit(printed_,
                       [&] {
                         return quilDeleteLink(GetParam().parent,
                                               child(0).substr(0, child(0).size() - 1) + "-1");
                       }),
              0)
        << "that is what an unset slot holds";
    return;
  }
  const std::string nothing = GetParam().child + std::string("-1");
  add(4);
  const Snapshot before = snapshot();
  EXPECT_EQ(run_edit(printed_, [&] { return quilDeleteLink(GetParam().parent, nothing); }), 0);
  EXPECT_EQ(snapshot(), before);
  const Held place = GetParam().held();
  if (place.slot) {
    *place.slot = kUnset;
  } else {
    place.array->push_back(kUnset);
    ++*place.count;
  }
  EXPECT_EQ(run_edit(printed_, [&] { return quilDeleteLink(GetParam().parent, nothing); }), 1);
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
  ASSERT_EQ(run_edit(printed_, [&] { return quilAddLink(GetParam().other_parent, child(4)); }), 1);
  const auto other = std::string(GetParam().other_parent) + " " + child(4);
  ASSERT_TRUE(arcs().contains(other));
  EXPECT_EQ(move_parent(GetParam().other_parent, GetParam().parent, 4), 1);
  EXPECT_THAT(held(), ElementsAre(4));
  EXPECT_FALSE(arcs().contains(other));
}

TEST_P(Links, ADanglingChildCanNotChangeItsParent) {
  const Snapshot before = snapshot();
  EXPECT_EQ(move_parent(GetParam().other_parent, GetParam().parent, 6), 0);
  EXPECT_EQ(snapshot(), before);
}

TEST_P(Links, AMoveOntoAnotherParentReplacesASlot) {
  if (!single()) {
    add(4);
    ASSERT_EQ(run_edit(printed_, [&] { return quilAddLink(GetParam().other_parent, child(5)); }), 1);
    EXPECT_EQ(move_parent(GetParam().other_parent, GetParam().parent, 5), 1);
    EXPECT_THAT(held(), ElementsAre(4, 5)) << "an array just grows";
    return;
  }
  add(4);
  ASSERT_EQ(run_edit(printed_, [&] { return quilAddLink(GetParam().other_parent, child(5)); }), 1);
  EXPECT_EQ(move_parent(GetParam().other_parent, GetParam().parent, 5), 1);
  EXPECT_THAT(held(), ElementsAre(5));
}

TEST_P(Links, NeitherEndOrBothEndsMovedIsRefused) {
  add(4);
  const Snapshot before = snapshot();
  EXPECT_EQ(move_child(4, 4), 0);
  EXPECT_EQ(run_edit(printed_,
                     [&] {
                       return quilModifyLink(GetParam().parent, child(4), GetParam().other_parent, child(5));
                     }),
            0);
  EXPECT_EQ(run_edit(printed_,
                     [&] { return quilModifyLink(GetParam().parent, child(4), GetParam().parent, "cam_5"); }),
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
  for (const NodeKind& parent : kNodeKinds) {
    for (const NodeKind& child : kNodeKinds) {
      if (has_rule(parent.tag, child.tag)) continue;
      ++refused;
      const std::string from = node_name(parent, 0), other = node_name(parent, 1);
      const std::string to = node_name(child, 0), new_to = node_name(child, 1);
      SCOPED_TRACE(from + " " + to);
      std::string printed;
      EXPECT_EQ(run_edit(printed, [&] { return quilAddLink(from, to); }), 0);
      EXPECT_EQ(run_edit(printed, [&] { return quilDeleteLink(from, to); }), 0);
      EXPECT_EQ(run_edit(printed, [&] { return quilModifyLink(other, to, from, to); }), 0);
      EXPECT_EQ(run_edit(printed, [&] { return quilModifyLink(from, to, from, new_to); }), 0);
      EXPECT_EQ(isOnly1child(parent.tag, child.tag), 0);
    }
  }
  EXPECT_EQ(refused, 14 * 14 - 19);
  EXPECT_EQ(snapshot(), before);
}

TEST(OtherPairs, NodesOfNoKindAreRefusedAtEitherEnd) {
  qis = built_scene();
  const Snapshot before = snapshot();
  std::string printed;
  for (const char* node :
       {"lod_0", "newNode", "", "ChainRootXY_0", "obj_x", "obj_99999999999999999999", "obj_007"}) {
    SCOPED_TRACE(node);
    EXPECT_EQ(run_edit(printed, [&] { return quilAddLink(node, "obj_1"); }), 0);
    EXPECT_EQ(run_edit(printed, [&] { return quilAddLink("obj_1", node); }), 0);
    EXPECT_EQ(run_edit(printed, [&] { return quilAddLink("scene_0", node); }), 0);
    EXPECT_EQ(run_edit(printed, [&] { return quilDeleteLink(node, "obj_1"); }), 0);
    EXPECT_EQ(run_edit(printed, [&] { return quilDeleteLink("obj_1", node); }), 0);
    EXPECT_EQ(run_edit(printed, [&] { return quilModifyLink("obj_1", "obj_2", node, "obj_2"); }), 0);
    EXPECT_EQ(run_edit(printed, [&] { return quilModifyLink(node, "obj_2", "obj_1", "obj_2"); }), 0);
    EXPECT_EQ(run_edit(printed, [&] { return quilModifyLink("obj_1", node, "obj_1", "obj_2"); }), 0);
    EXPECT_EQ(run_edit(printed, [&] { return quilModifyLink("obj_1", "obj_2", "obj_1", node); }), 0);
  }
  EXPECT_EQ(snapshot(), before);
}

}  // namespace
