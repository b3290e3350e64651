/// @file
/// The smallest edits: what each changes, what it refuses, which sizes follow.
#include "qilib/edit.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>

#include "qilib/forwards.h"
#include "tests/support/builtscene.h"
#include "tests/support/case_name.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

constexpr Word kParent = 1;

/// An edit of one index array; scene edits don't look at the parent.
using ArrayEdit = int (*)(Qis&, Word parent, Word child);

struct ArrayCase {
  const char* name;
  ArrayEdit add;
  ArrayEdit remove;  ///< null: the library has none
  Words& (*entries)(Qis&);
  Word& (*count)(Qis&);
  const char* list;
  const char* record;
  bool in_structure = false;
  bool repeats = false;
};

const ArrayCase kArrayCases[] = {
    {"Scene_Obj", [](Qis& s, Word, Word c) { return qiAddScene_Obj(s, c); }, nullptr,
     [](Qis& s) -> Words& { return s.scene.objs; }, [](Qis& s) -> Word& { return s.scene.fixed.obj_count; },
     "SceneList", "scene 0"},
    {"Scene_ChainRoot", [](Qis& s, Word, Word c) { return qiAddScene_ChainRoot(s, c); },
     [](Qis& s, Word, Word c) { return qiDeleteScene_ChainRoot(s, c); },
     [](Qis& s) -> Words& { return s.scene.ext->chain_roots; },
     [](Qis& s) -> Word& { return s.scene.ext->head.chain_root_count; }, "SceneList", "scene 0", true},
    {"Obj_Obj", qiAddObj_Obj, nullptr, [](Qis& s) -> Words& { return s.obj_list.records[kParent].children; },
     [](Qis& s) -> Word& { return s.obj_list.records[kParent].fixed.child_count; }, "ObjList", "obj 1", false,
     true},
    {"Mat_Tex", qiAddMat_Tex, nullptr, [](Qis& s) -> Words& { return s.mat_list.records[kParent].texs; },
     [](Qis& s) -> Word& { return s.mat_list.records[kParent].fixed.tex_count; }, "MatList", "mat 1", false,
     true},
    {"Obj_ChainRoot", qiAddObj_ChainRoot, qiDeleteObj_ChainRoot,
     [](Qis& s) -> Words& { return s.obj_list.records[kParent].ext->chain_roots; },
     [](Qis& s) -> Word& { return s.obj_list.records[kParent].ext->head.chain_root_count; }, "ObjList",
     "obj 1", true},
    {"ChainRoot_Obj", qiAddChainRoot_Obj, qiDeleteChainRoot_Obj,
     [](Qis& s) -> Words& { return s.ext.chain_root_list.records[kParent].objs; },
     [](Qis& s) -> Word& { return s.ext.chain_root_list.records[kParent].fixed.obj_count; }, "ChainRootList",
     "ChainRoot 1"},
    {"Joint_Obj", qiAddJoint_Obj, qiDeleteJoint_Obj,
     [](Qis& s) -> Words& { return s.ext.joint_list.records[kParent].objs; },
     [](Qis& s) -> Word& { return s.ext.joint_list.records[kParent].fixed.obj_count; }, "JointList",
     "joint 1"},
    {"Effector_Obj", qiAddEffector_Obj, qiDeleteEffector_Obj,
     [](Qis& s) -> Words& { return s.ext.effector_list.records[kParent].objs; },
     [](Qis& s) -> Word& { return s.ext.effector_list.records[kParent].fixed.obj_count; }, "EffectorList",
     "effector 1"},
};

class ArrayPrimitive : public testing::TestWithParam<ArrayCase> {
 protected:
  int add(Word child, Word parent = kParent) { return GetParam().add(*scene_, parent, child); }
  int remove(Word child, Word parent = kParent) { return GetParam().remove(*scene_, parent, child); }
  Words& entries() { return GetParam().entries(*scene_); }
  Word count() { return GetParam().count(*scene_); }
  auto changes() { return size_changes(before_, size_words(*scene_)); }
  auto growth(std::int32_t bytes) {
    return record_growth(GetParam().list, GetParam().record, bytes, GetParam().in_structure);
  }
  bool parent_is_scene() { return std::string(GetParam().list) == "SceneList"; }

  std::unique_ptr<Qis> scene_ = built_scene();
  SizeWords before_ = size_words(*scene_);
};
template <class Wanted>
auto rows_where(Wanted wanted) {
  std::vector<ArrayCase> rows;
  std::copy_if(std::begin(kArrayCases), std::end(kArrayCases), std::back_inserter(rows), wanted);
  return testing::ValuesIn(rows);
}
INSTANTIATE_TEST_SUITE_P(Rows, ArrayPrimitive, testing::ValuesIn(kArrayCases), CaseName());

class ArrayDelete : public ArrayPrimitive {
};  // the rows that the library deletes from: the link rules see to the others
INSTANTIATE_TEST_SUITE_P(Rows, ArrayDelete,
                         rows_where([](const ArrayCase& row) { return row.remove != nullptr; }), CaseName());

class ArrayInStructure : public ArrayPrimitive {};
INSTANTIATE_TEST_SUITE_P(Rows, ArrayInStructure,
                         rows_where([](const ArrayCase& row) { return row.in_structure; }), CaseName());

TEST_P(ArrayPrimitive, TheFirstEntryMakesAnArrayOfOne) {
  EXPECT_EQ(add(4), 1);
  EXPECT_THAT(entries(), ElementsAre(4));
  EXPECT_EQ(count(), 1u);
  EXPECT_EQ(changes(), growth(4));
}

TEST_P(ArrayPrimitive, LaterEntriesGoLast) {
  EXPECT_EQ(add(4), 1);
  EXPECT_EQ(add(0), 1);
  EXPECT_EQ(add(2), 1);
  EXPECT_THAT(entries(), ElementsAre(4, 0, 2));
  EXPECT_EQ(count(), 3u);
  EXPECT_EQ(changes(), growth(12));
}

TEST_P(ArrayPrimitive, AnEntryThatIsThereIsNotAddedAgain) {
  add(4);
  EXPECT_EQ(add(4), GetParam().repeats ? 1 : 0);
  EXPECT_THAT(entries(), ElementsAre(4));
  EXPECT_EQ(count(), 1u);
  EXPECT_EQ(changes(), growth(GetParam().repeats ? 8 : 4));
}

TEST_P(ArrayPrimitive, AChildOutsideItsListIsRefused) {
  EXPECT_EQ(add(kOutside), 0);
  EXPECT_EQ(add(kUnset), 0);
  EXPECT_THAT(entries(), IsEmpty());
  EXPECT_THAT(changes(), IsEmpty());
}

TEST_P(ArrayPrimitive, AParentThatDoesNotExistIsRefused) {
  if (parent_is_scene()) {
    scene_->header.fixed.list_num[0] = 0;
    before_ = size_words(*scene_);
    EXPECT_EQ(add(4), 0) << "there is no scene record in the file";
  } else {
    EXPECT_EQ(add(4, kOutside), 0);
    EXPECT_EQ(add(4, kUnset), 0);
  }
  EXPECT_THAT(changes(), IsEmpty());
}

TEST_P(ArrayPrimitive, AnArrayThatDisagreesWithItsCountIsLeftAlone) {
  GetParam().count(*scene_) = 1000;
  EXPECT_EQ(add(4), 0);
  EXPECT_THAT(entries(), IsEmpty());
  EXPECT_THAT(changes(), IsEmpty());
}

TEST_P(ArrayDelete, DeletingTakesTheFirstEqualEntry) {
  entries() = {4, 2, 4};
  GetParam().count(*scene_) = 3;
  EXPECT_EQ(remove(4), 1);
  EXPECT_THAT(entries(), ElementsAre(2, 4));
  EXPECT_EQ(count(), 2u);
  EXPECT_EQ(changes(), growth(-4));
}

TEST_P(ArrayDelete, DeletingWhatIsNotThereSaysSo) {
  add(2);
  before_ = size_words(*scene_);
  CaptureStdout();
  EXPECT_EQ(remove(7), 0);
  EXPECT_EQ(GetCapturedStdout(), "Error: no link to index 7.\n");
  EXPECT_THAT(entries(), ElementsAre(2));
  EXPECT_THAT(changes(), IsEmpty());
}

TEST_P(ArrayDelete, DeletingFromAnEmptyArrayIsRefused) {
  EXPECT_EQ(remove(0), 0);
  EXPECT_EQ(count(), 0u);
  EXPECT_THAT(changes(), IsEmpty());
}

TEST_P(ArrayDelete, ADanglingEntryCanBeDeleted) {
  entries() = {4, 99};
  GetParam().count(*scene_) = 2;
  EXPECT_EQ(remove(99), 1);
  EXPECT_THAT(entries(), ElementsAre(4));
  EXPECT_EQ(changes(), growth(-4));
}

TEST_P(ArrayInStructure, IsRefusedWithoutTheStructure) {
  scene_->scene.ext.reset();
  for (auto& obj : scene_->obj_list.records) obj.ext.reset();
  EXPECT_EQ(add(4), 0);
  EXPECT_EQ(remove(4), 0);
  EXPECT_THAT(changes(), IsEmpty());
}

TEST(Primitives, AVersion1SceneRefusesEverySkeletonEdit) {
  const auto scene = built_version1_scene();
  const auto before = size_words(*scene);
  EXPECT_EQ(qiAddScene_ChainRoot(*scene, 0), 0);
  EXPECT_EQ(qiAddObj_ChainRoot(*scene, 0, 0), 0);
  EXPECT_EQ(qiAddChainRoot_Obj(*scene, 0, 0), 0);
  EXPECT_EQ(qiAddJoint_Effector(*scene, 0, 0), 0);
  EXPECT_EQ(qiDeleteScene_ChainRoot(*scene, 0), 0);
  EXPECT_EQ(qiDeleteJoint_Anim(*scene, 0), 0);
  EXPECT_EQ(qiAddShape_Envelope(*scene, 0, 0), 0);
  EXPECT_THAT(size_changes(before, size_words(*scene)), IsEmpty());
}

TEST(ObjChildren, The33rdIsRefusedAndTheOthersStay) {
  const auto scene = built_scene(40);
  for (Word child = 1; child <= 32; ++child) ASSERT_EQ(qiAddObj_Obj(*scene, 0, child), 1);
  const Words children = scene->obj_list.records[0].children;
  const auto before = size_words(*scene);
  EXPECT_EQ(qiAddObj_Obj(*scene, 0, 33), 0);
  EXPECT_EQ(qiAddObj_Obj(*scene, 0, 5), 0) << "the limit comes before the repeated child";
  EXPECT_EQ(scene->obj_list.records[0].children, children);
  EXPECT_EQ(children.size(), 32u);
  EXPECT_THAT(size_changes(before, size_words(*scene)), IsEmpty());
}

TEST(ObjChildren, TheLimitIsACountOfExactly32) {
  const auto scene = built_scene(40);
  auto& obj = scene->obj_list.records[0];
  for (Word child = 1; child <= 33; ++child) obj.children.push_back(child);
  obj.fixed.child_count = 33;
  EXPECT_EQ(qiAddObj_Obj(*scene, 0, 34), 1) << "a file may hold more, and then takes more";
}

TEST(ObjChildren, ALoopOfTwoIsRefused) {
  const auto scene = built_scene();
  ASSERT_EQ(qiAddObj_Obj(*scene, 1, 0), 1);
  const auto before = size_words(*scene);
  EXPECT_EQ(qiAddObj_Obj(*scene, 0, 1), 0);
  EXPECT_THAT(scene->obj_list.records[0].children, IsEmpty());
  EXPECT_THAT(size_changes(before, size_words(*scene)), IsEmpty());
}

TEST(ObjChildren, ALongerLoopIsNotDetected) {
  const auto scene = built_scene();
  ASSERT_EQ(qiAddObj_Obj(*scene, 1, 0), 1);
  ASSERT_EQ(qiAddObj_Obj(*scene, 2, 1), 1);
  EXPECT_EQ(qiAddObj_Obj(*scene, 0, 2), 1);
}

TEST(ObjChildren, ASelfLinkIsTakenOnce) {
  const auto scene = built_scene();
  EXPECT_EQ(qiAddObj_Obj(*scene, 2, 2), 1);
  EXPECT_EQ(qiAddObj_Obj(*scene, 2, 2), 0) << "it is now a child of its child";
  EXPECT_THAT(scene->obj_list.records[2].children, ElementsAre(2));
}

TEST(MatTextures, TheFourthIsRefused) {
  const auto scene = built_scene();
  for (Word tex : {0u, 1u, 2u}) ASSERT_EQ(qiAddMat_Tex(*scene, 0, tex), 1);
  const auto before = size_words(*scene);
  EXPECT_EQ(qiAddMat_Tex(*scene, 0, 3), 0);
  EXPECT_EQ(qiAddMat_Tex(*scene, 0, 1), 0);
  EXPECT_THAT(scene->mat_list.records[0].texs, ElementsAre(0, 1, 2));
  EXPECT_THAT(size_changes(before, size_words(*scene)), IsEmpty());
}

TEST(MatTextures, ATextureThatIsThereRaisesTheSizeAndNotTheCount) {
  const auto scene = built_scene();
  ASSERT_EQ(qiAddMat_Tex(*scene, 1, 5), 1);
  const auto before = size_words(*scene);
  EXPECT_EQ(qiAddMat_Tex(*scene, 1, 5), 1);
  EXPECT_EQ(scene->mat_list.records[1].fixed.tex_count, 1u);
  EXPECT_EQ(size_changes(before, size_words(*scene)), record_growth("MatList", "mat 1", 4));
}

struct SlotCase {
  const char* name;
  int (*add)(Qis&, Word parent, Word child);
  int (*remove)(Qis&, Word parent);
  Word& (*slot)(Qis&);
};

const SlotCase kSlotCases[] = {
    {"ChainRoot_Anim", qiAddChainRoot_Anim, qiDeleteChainRoot_Anim,
     [](Qis& s) -> Word& { return s.ext.chain_root_list.records[kParent].fixed.anim; }},
    {"ChainRoot_Joint", qiAddChainRoot_Joint, qiDeleteChainRoot_Joint,
     [](Qis& s) -> Word& { return s.ext.chain_root_list.records[kParent].fixed.joint; }},
    {"Joint_Anim", qiAddJoint_Anim, qiDeleteJoint_Anim,
     [](Qis& s) -> Word& { return s.ext.joint_list.records[kParent].fixed.anim; }},
    {"Joint_Joint", qiAddJoint_Joint, qiDeleteJoint_Joint,
     [](Qis& s) -> Word& { return s.ext.joint_list.records[kParent].fixed.child_joint; }},
    {"Joint_Effector", qiAddJoint_Effector, qiDeleteJoint_Effector,
     [](Qis& s) -> Word& { return s.ext.joint_list.records[kParent].fixed.effector; }},
    {"Effector_Anim", qiAddEffector_Anim, qiDeleteEffector_Anim,
     [](Qis& s) -> Word& { return s.ext.effector_list.records[kParent].fixed.anim; }},
};

class SlotPrimitive : public testing::TestWithParam<SlotCase> {
 protected:
  Word& slot() { return GetParam().slot(*scene_); }
  std::unique_ptr<Qis> scene_ = built_scene();
  SizeWords before_ = size_words(*scene_);
};
INSTANTIATE_TEST_SUITE_P(Rows, SlotPrimitive, testing::ValuesIn(kSlotCases), CaseName());

TEST_P(SlotPrimitive, StoresReplacesAndRefusesTheSame) {
  EXPECT_EQ(GetParam().add(*scene_, kParent, 3), 1);
  EXPECT_EQ(slot(), 3u);
  EXPECT_EQ(GetParam().add(*scene_, kParent, 3), 0);
  EXPECT_EQ(slot(), 3u);
  EXPECT_EQ(GetParam().add(*scene_, kParent, 5), 1);
  EXPECT_EQ(slot(), 5u);
  EXPECT_EQ(GetParam().remove(*scene_, kParent), 1);
  EXPECT_EQ(slot(), kUnset);
  EXPECT_EQ(GetParam().remove(*scene_, kParent), 1) << "never refused";
  EXPECT_EQ(size_words(*scene_), before_);
}

TEST_P(SlotPrimitive, RecordsOutsideTheirListsAreRefused) {
  EXPECT_EQ(GetParam().add(*scene_, kParent, kOutside), 0);
  EXPECT_EQ(GetParam().add(*scene_, kOutside, 0), 0);
  EXPECT_EQ(GetParam().remove(*scene_, kOutside), 0);
  EXPECT_EQ(slot(), kUnset);
}

struct DeformerCase {
  const char* name;
  int (*add)(Qis&, Word shape, Word deformer);
  Word tag;
};
class Deformer : public testing::TestWithParam<DeformerCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, Deformer,
                         testing::Values(DeformerCase{"Envelope", qiAddShape_Envelope, 0x220100},
                                         DeformerCase{"ClusterShape", qiAddShape_ClusterShape, 0x280100}),
                         CaseName());

TEST_P(Deformer, IsSetOnceAndReplaced) {
  const auto scene = built_scene();
  const auto before = size_words(*scene);
  auto& shape = scene->shape_list.records[3];
  EXPECT_EQ(GetParam().add(*scene, 3, 2), 1);
  EXPECT_EQ(shape.fixed.geometry, 2u);
  EXPECT_EQ(shape.ext->head.deformer_tag, GetParam().tag);
  EXPECT_EQ(GetParam().add(*scene, 3, 2), 0);
  EXPECT_EQ(GetParam().add(*scene, 3, 4), 1);
  EXPECT_EQ(shape.fixed.geometry, 4u);
  shape.ext->head.deformer_tag = 0x80100;
  EXPECT_EQ(GetParam().add(*scene, 3, 4), 1) << "the same number, but of another kind";
  EXPECT_EQ(size_words(*scene), before);
}

TEST_P(Deformer, IsRefusedWithoutRecordOrStructure) {
  const auto scene = built_scene();
  EXPECT_EQ(GetParam().add(*scene, kOutside, 0), 0);
  EXPECT_EQ(GetParam().add(*scene, 0, kOutside), 0);
  scene->shape_list.records[0].fixed.geometry = 17;
  scene->shape_list.records[0].ext.reset();
  EXPECT_EQ(GetParam().add(*scene, 0, 0), 0);
  EXPECT_EQ(scene->shape_list.records[0].fixed.geometry, 17u);
}

/// A scene whose envelope 1 has two parts of each kind.
class EnvelopeParts : public testing::Test {
 protected:
  EnvelopeParts() {
    auto& envelope = scene_->ext.envelope_list.records[1];
    envelope.full_weighted.resize(2);
    envelope.weighted.resize(2);
    envelope.morphs.resize(2);
  }
  qi::Envelope& envelope() { return scene_->ext.envelope_list.records[1]; }
  std::unique_ptr<Qis> scene_ = built_scene();
};

TEST_F(EnvelopeParts, AFullWeightedPartIsTiedOnceToAnObj) {
  EXPECT_EQ(qiAddFullWeightedPart_Obj(*scene_, 1, 1, 4), 1);
  EXPECT_EQ(envelope().full_weighted[1].fixed.node, (QisNodeIndex{0x20000, 4}));
  EXPECT_EQ(qiAddFullWeightedPart_Obj(*scene_, 1, 1, 5), 0) << "tied, to whichever obj";
  EXPECT_EQ(envelope().full_weighted[1].fixed.node, (QisNodeIndex{0x20000, 4}));
}

TEST_F(EnvelopeParts, AFullWeightedPartAtObj0CountsAsNotTied) {
  EXPECT_EQ(qiAddFullWeightedPart_Obj(*scene_, 1, 0, 0), 1);
  EXPECT_EQ(qiAddFullWeightedPart_Obj(*scene_, 1, 0, 3), 1);
  EXPECT_EQ(envelope().full_weighted[0].fixed.node, (QisNodeIndex{0x20000, 3}));
}

TEST_F(EnvelopeParts, AFullWeightedPartMovesBetweenObjAndJoint) {
  EXPECT_EQ(qiAddFullWeightedPart_Obj(*scene_, 1, 0, 3), 1);
  EXPECT_EQ(qiAddFullWeightedPart_Joint(*scene_, 1, 0, 2), 1) << "it is not tied to a joint";
  EXPECT_EQ(envelope().full_weighted[0].fixed.node, (QisNodeIndex{0x250000, 2}));
  EXPECT_EQ(qiAddFullWeightedPart_Joint(*scene_, 1, 0, 4), 0);
}

TEST_F(EnvelopeParts, RecordsAndPartsOutsideAreRefused) {
  EXPECT_EQ(qiAddFullWeightedPart_Obj(*scene_, kOutside, 0, 0), 0);
  EXPECT_EQ(qiAddFullWeightedPart_Obj(*scene_, 1, 2, 0), 0);
  EXPECT_EQ(qiAddFullWeightedPart_Obj(*scene_, 1, 0, kOutside), 0);
  EXPECT_EQ(qiAddFullWeightedPart_Joint(*scene_, 1, 0, kOutside), 0);
  EXPECT_EQ(qiAddWeightedPart_Obj(*scene_, kOutside, 0, 0, 1), 0);
  EXPECT_EQ(qiAddWeightedPart_Obj(*scene_, 1, 2, 0, 1), 0);
  EXPECT_EQ(qiAddWeightedPart_Obj(*scene_, 1, 0, kOutside, 1), 0);
  EXPECT_EQ(qiAddMorphPart_Node(*scene_, kOutside, 0, 0x20000, 0, 0x20000, 0), 0);
  EXPECT_EQ(qiAddMorphPart_Node(*scene_, 1, 2, 0x20000, 0, 0x20000, 0), 0);
  EXPECT_EQ(qiAddMorphPart_Node(*scene_, 1, 0, 0x20000, kOutside, 0x20000, 0), 0);
  EXPECT_EQ(qiAddMorphPart_Node(*scene_, 1, 0, 0x20000, 0, 0x770000, 0), 0);
  EXPECT_EQ(envelope().full_weighted[0].fixed.node, QisNodeIndex{});
  EXPECT_EQ(envelope().morphs[0].fixed.node_a, QisNodeIndex{});
}

TEST_F(EnvelopeParts, AWeightedPartGrowsByNodeWeightAndPolygonEntry) {
  const auto before = size_words(*scene_);
  auto& part = envelope().weighted[1];
  part.fixed.size = 36;
  EXPECT_EQ(qiAddWeightedPart_Obj(*scene_, 1, 1, 4, 0.5f), 1);
  EXPECT_EQ(qiAddWeightedPart_Obj(*scene_, 1, 1, 2, 0.25f), 1);
  EXPECT_EQ(part.fixed.node_count, 2u);
  EXPECT_THAT(part.nodes, ElementsAre(QisNodeIndex{0x20000, 4}, QisNodeIndex{0x20000, 2}));
  EXPECT_THAT(part.weights, ElementsAre(0.5f, 0.25f));
  EXPECT_THAT(part.polys, ElementsAre(QisPoly{}, QisPoly{}));
  EXPECT_EQ(part.fixed.size, 36u + 64u);
  EXPECT_EQ(size_changes(before, size_words(*scene_)), record_growth("EnvelopeList", "envelope 1", 64));
}

TEST_F(EnvelopeParts, AWeightIsTakenOncePerWeightedPart) {
  auto& part = envelope().weighted[0];
  ASSERT_EQ(qiAddWeightedPart_Obj(*scene_, 1, 0, 4, 0.5f), 1);
  const auto before = size_words(*scene_);
  EXPECT_EQ(qiAddWeightedPart_Obj(*scene_, 1, 0, 2, 0.5f), 0) << "whichever obj has it";
  EXPECT_EQ(part.nodes.size(), 1u);
  EXPECT_EQ(size_words(*scene_), before);
  part.nodes[0].index = 0;
  EXPECT_EQ(qiAddWeightedPart_Obj(*scene_, 1, 0, 2, 0.5f), 1) << "an entry at obj 0 counts as not set";
}

TEST_F(EnvelopeParts, AWeightGoesAfterTheNodesAndBeforeTheExternals) {
  auto& part = envelope().weighted[0];
  part.fixed.node_count = 1;
  part.fixed.external_count = 2;
  part.nodes = {{0x20000, 1}};
  part.externals = {{7, 8}, {9, 10}};
  part.weights = {0.1f, 0.2f, 0.3f};
  part.polys = {QisPoly{{1}}, QisPoly{{2}}, QisPoly{{3}}};
  EXPECT_EQ(qiAddWeightedPart_Obj(*scene_, 1, 0, 5, 0.9f), 1);
  EXPECT_THAT(part.nodes, ElementsAre(QisNodeIndex{0x20000, 1}, QisNodeIndex{0x20000, 5}));
  EXPECT_THAT(part.weights, ElementsAre(0.1f, 0.9f, 0.2f, 0.3f));
  EXPECT_THAT(part.polys, ElementsAre(QisPoly{{1}}, QisPoly{}, QisPoly{{2}}, QisPoly{{3}}));
}

TEST_F(EnvelopeParts, AMorphPartGetsBothItsNodes) {
  const auto before = size_words(*scene_);
  EXPECT_EQ(qiAddMorphPart_Node(*scene_, 1, 1, 0x20000, 3, 0x250000, 2), 1);
  EXPECT_EQ(envelope().morphs[1].fixed.node_a, (QisNodeIndex{0x20000, 3}));
  EXPECT_EQ(envelope().morphs[1].fixed.node_b, (QisNodeIndex{0x250000, 2}));
  EXPECT_EQ(qiAddMorphPart_Node(*scene_, 1, 1, 0x20000, 3, 0x250000, 2), 1) << "also when nothing changes";
  EXPECT_EQ(size_words(*scene_), before);
}

TEST(LinkArrays, AddAndDeleteKeepTheCountInStep) {
  Words array;
  Word count = 0;
  EXPECT_EQ(qiAddLink(9, array, count), 1);
  EXPECT_EQ(qiAddLink(8, array, count), 1);
  EXPECT_EQ(qiAddLink(9, array, count), 0);
  EXPECT_THAT(array, ElementsAre(9, 8));
  EXPECT_EQ(count, 2u);
  EXPECT_EQ(qiDeleteLink(9, array, count), 1);
  EXPECT_THAT(array, ElementsAre(8));
  EXPECT_EQ(count, 1u);
  CaptureStdout();
  EXPECT_EQ(qiDeleteLink(0xFFFFFFFF, array, count), 0);
  EXPECT_EQ(GetCapturedStdout(), "Error: no link to index -1.\n");
  EXPECT_EQ(count, 1u);
}

TEST(NodeIndices, AreSetUnlessTheirIndexIs0) {
  QisNodeIndex node;
  qiSetIndex(node, 0x20000, 0);
  EXPECT_FALSE(qiTestIndex(node, 0x20000, 0)) << "a stored index of 0 counts as not set";
  qiSetIndex(node, 0x20000, 5);
  EXPECT_TRUE(qiTestIndex(node, 0x20000, 5));
  EXPECT_TRUE(qiTestIndex(node, 0x20000, 77)) << "the index is not compared";
  EXPECT_FALSE(qiTestIndex(node, 0x250000, 5));
  EXPECT_EQ(qiTestSetIndex(node, 0x20000, 6), 0);
  EXPECT_EQ(node, (QisNodeIndex{0x20000, 5}));
  EXPECT_EQ(qiTestSetIndex(node, 0x250000, 6), 1);
  EXPECT_EQ(node, (QisNodeIndex{0x250000, 6}));
}

TEST(TestSet, RefusesOnlyTheValueThatIsThere) {
  Word word = kUnset;
  EXPECT_EQ(qiTestSet(word, 3), 1);
  EXPECT_EQ(qiTestSet(word, 3), 0);
  EXPECT_EQ(qiTestSet(word, 4), 1);
  EXPECT_EQ(word, 4u);
}

TEST(NewScene, IsZeroedAndEmpty) {
  const auto scene = qiNewQis();
  for (const auto& [name, bytes] : size_words(*scene)) EXPECT_EQ(bytes, 0u) << name;
  EXPECT_EQ(scene->header.fixed.version, 0u);
  EXPECT_EQ(scene->scene.fixed.obj_count, 0u);
  EXPECT_TRUE(scene->filename.empty());
  EXPECT_EQ(qiAddScene_Obj(*scene, 0), 0);
  EXPECT_EQ(qiAddObj_Obj(*scene, 0, 0), 0);
}

TEST(ReservedEdits, ChangeNothingAndAnswer0) {
  const auto scene = built_scene();
  const auto before = size_words(*scene);
  EXPECT_EQ(qiAddMat_Light(*scene, 0, 0), 0);
  EXPECT_EQ(qiAddTex_ColorPalette(*scene, 0, 0), 0);
  EXPECT_EQ(qiAddTex_TLUT(*scene, 0, 0), 0);
  EXPECT_EQ(qiAddFullWeightedPart_ChainRoot(*scene, 0, 0, 0), 0);
  EXPECT_EQ(qiAddFullWeightedPart_Effector(*scene, 0, 0, 0), 0);
  EXPECT_EQ(qiAddWeightedPart_ChainRoot(*scene, 0, 0, 0, 1), 0);
  EXPECT_EQ(qiAddWeightedPart_Joint(*scene, 0, 0, 0, 1), 0);
  EXPECT_EQ(qiAddWeightedPart_Effector(*scene, 0, 0, 0, 1), 0);
  EXPECT_EQ(qiAddMorphPart_Obj(*scene, 0, 0, 0, 0), 0);
  EXPECT_EQ(qiAddMorphPart_Joint(*scene, 0, 0, 0, 0), 0);
  EXPECT_EQ(qiAddCluster_Obj(*scene, 0, 0, 0), 0);
  EXPECT_EQ(qiDeleteShape_Envelope(*scene, 0), 0);
  EXPECT_EQ(qiDeleteShape_ClusterShape(*scene, 0), 0);
  EXPECT_EQ(qiDeleteMat_Light(*scene, 0, 0), 0);
  EXPECT_EQ(qiDeleteTex_ColorPalette(*scene, 0, 0), 0);
  EXPECT_EQ(qiDeleteTex_TLUT(*scene, 0, 0), 0);
  EXPECT_EQ(qiDeleteFullWeightedPart_Obj(*scene, 0, 0, 0), 0);
  EXPECT_EQ(qiDeleteFullWeightedPart_ChainRoot(*scene, 0, 0, 0), 0);
  EXPECT_EQ(qiDeleteFullWeightedPart_Joint(*scene, 0, 0, 0), 0);
  EXPECT_EQ(qiDeleteFullWeightedPart_Effector(*scene, 0, 0, 0), 0);
  EXPECT_EQ(qiDeleteWeightedPart_Obj(*scene, 0, 0, 0, 1), 0);
  EXPECT_EQ(qiDeleteWeightedPart_ChainRoot(*scene, 0, 0, 0, 1), 0);
  EXPECT_EQ(qiDeleteWeightedPart_Joint(*scene, 0, 0, 0, 1), 0);
  EXPECT_EQ(qiDeleteWeightedPart_Effector(*scene, 0, 0, 0, 1), 0);
  EXPECT_EQ(qiDeleteMorphPart_Obj(*scene, 0, 0, 0, 0), 0);
  EXPECT_EQ(qiDeleteMorphPart_Joint(*scene, 0, 0, 0, 0), 0);
  EXPECT_EQ(qiDeleteMorphPart_Node(*scene, 0, 0, 0, 0, 0, 0), 0);
  EXPECT_EQ(qiDeleteCluster_Obj(*scene, 0, 0, 0), 0);
  EXPECT_EQ(size_words(*scene), before);
}

}  // namespace
