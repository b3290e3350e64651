/// @file
/// New version-2 elements: their words in the file, the sizes that follow, what is refused.
#include "qilib/builders.h"

#include <gmock/gmock.h>

#include <functional>
#include <limits>

#include "qilib/checksizes.h"
#include "qilib/opensave.h"
#include "tests/support/builtscene.h"
#include "tests/support/bytes.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/shared_scenes.h"
#include "tests/support/told.h"
#include "tests/support/written.h"

namespace {

using testing::Each;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Word kNone = 0xFFFFFFFF;
constexpr std::int64_t kFarTooMany = std::numeric_limits<std::int64_t>::max();

using Build = std::function<Word(Qis&)>;

// What new elements look like in the file, word by word.

Bytes full_weighted_part(Word i) {
  return Bytes{}.u32s({0x220110, i, 64, kNone, 0x20000, i, kNone, kNone, i, i, i, i, i, i, 0, 0});
}
Bytes weighted_part(Word i) { return Bytes{}.u32s({0x220120, i, 36, kNone, 0, i, 0, 0, 0}); }
Bytes morph_part(Word i) {
  Bytes part;
  part.u32s({0x220130, i, 244, kNone, 0x20000, 0, kNone, kNone, 0x20000, 1, kNone, kNone, i, 9, 0, 0});
  for (int column = 0; column < 5; ++column) part.u32s({0, 1, 2, 3, 4, 5, 6, 7, 8});
  return part;
}
Bytes envelope_tri(Word t) {
  return Bytes{}
      .u32s({0x220180, t, 116, 0x220110, 0, 0, 0, kNone})
      .u32s({0x220110, 0, 0, 0, 0, 0, kNone})
      .u32s({0x220110, 0, 1, 1, 1, 1, kNone})
      .u32s({0x220110, 0, 2, 2, 2, 2, kNone});
}
Bytes cluster(Word i) {
  return Bytes{}.u32s({0x280110, i, 56, kNone, 0x20000, i, kNone, kNone, i, i, i, i, i, i});
}
Bytes cluster_tri(Word t) {
  return Bytes{}
      .u32s({0x280180, t, 100, 0x280110, 0, 0, 0})
      .u32s({0x280110, 0, 0, 0, 0, 0})
      .u32s({0x280110, 0, 1, 1, 1, 1})
      .u32s({0x280110, 0, 2, 2, 2, 2});
}
Bytes envelope_of_two() {
  Bytes envelope;
  envelope.u32s({0x220100, 0, 44 + 2 * (64 + 36 + 244 + 116), kNone, 0, 2, 2, 2, 2, 0, 0});
  envelope.add(full_weighted_part(0)).add(full_weighted_part(1));
  envelope.add(weighted_part(0)).add(weighted_part(1));
  envelope.add(morph_part(0)).add(morph_part(1));
  return envelope.add(envelope_tri(0)).add(envelope_tri(1));
}
Bytes cluster_shape_of_two() {
  Bytes shape;
  shape.u32s({0x280100, 0, 36 + 2 * (56 + 100), kNone, 0, 2, 2, 0, 0});
  return shape.add(cluster(0)).add(cluster(1)).add(cluster_tri(0)).add(cluster_tri(1));
}

struct ListCase {
  const char* name;
  Build build;
  Bytes record;       ///< the first one of a scene
  std::size_t entry;  ///< of its list in the extension list size table
  Word list_tag;
};

const ListCase kListCases[] = {
    {"ChainRoot", qiAddChainRoot, Bytes{}.u32s({0x240100, 0, 44, kNone, 0, 0, 0, kNone, 0, 0, 0}), 5,
     0x240000},
    {"Joint", qiAddJoint,
     Bytes{}.u32s({0x250100, 0, 64, kNone, 0}).f32(1).f32(0).f32(0).f32(1).u32s({0, 0, 0, 0, kNone, 0, 0}), 6,
     0x250000},
    {"Effector", qiAddEffector, Bytes{}.u32s({0x260100, 0, 40, kNone, 0, 0, 0, kNone, 0, 0}), 7, 0x260000},
    {"NoWeights", [](Qis& s) { return qiAddWeightGroup(s, 0); },
     Bytes{}.u32s({0x230100, 0, 28, kNone, 0, 0, 0}), 4, 0x230000},
    {"ThreeWeights", [](Qis& s) { return qiAddWeightGroup(s, 3); },
     Bytes{}.u32s({0x230100, 0, 40, kNone, 3, 0, 0}).f32(100).f32(100).f32(100), 4, 0x230000},
    {"EmptyEnvelope", [](Qis& s) { return qiAddEnvelope(s, 0, 0, 0, 0, 0); },
     Bytes{}.u32s({0x220100, 0, 44, kNone, 0, 0, 0, 0, 0, 0, 0}), 2, 0x220000},
    {"EnvelopeOfTwo", [](Qis& s) { return qiAddEnvelope(s, 2, 2, 2, 2, 0); }, envelope_of_two(), 2, 0x220000},
    {"EmptyClusterShape", [](Qis& s) { return qiAddClusterShape(s, 0, 0, 0); },
     Bytes{}.u32s({0x280100, 0, 36, kNone, 0, 0, 0, 0, 0}), 3, 0x280000},
    {"ClusterShapeOfTwo", [](Qis& s) { return qiAddClusterShape(s, 2, 2, 0); }, cluster_shape_of_two(), 3,
     0x280000},
};

/// Adds to a scene file that has none of the extension lists.
class FirstOfItsList : public testing::TestWithParam<ListCase> {
 protected:
  FirstOfItsList() { EXPECT_EQ(qiOpenQb(shared_scene("tiny_v2").path, scene_), 1); }
  const std::string before_ = read_file(shared_scene("tiny_v2").path);
  Qis scene_;
};
INSTANTIATE_TEST_SUITE_P(Rows, FirstOfItsList, testing::ValuesIn(kListCases), CaseName());

TEST_P(FirstOfItsList, StandsAfterTheFileWithListHeaderAndSizeTable) {
  EXPECT_EQ(GetParam().build(scene_), 1u);
  const Bytes& record = GetParam().record;
  Bytes list;
  list.u32s({GetParam().list_tag, 0, 24 + 4 + record.size(), 1, 0, 0}).u32(record.size()).add(record);
  const std::string after = written(scene_, 2);
  EXPECT_TRUE(after.substr(before_.size()) == list.str());

  const auto word_of = [](const std::string& file, std::size_t offset) { return file.substr(offset, 4); };
  const std::size_t table_entry = 100 + 4 * GetParam().entry;
  EXPECT_EQ(word_of(after, table_entry), Bytes{}.u32(list.size()).str());
  EXPECT_EQ(word_of(after, 4), Bytes{}.u32(static_cast<Word>(before_.size()) + list.size()).str());
}

TEST_P(FirstOfItsList, OpensAgainWithNothingSaidInBothModes) {
  GetParam().build(scene_);
  GetParam().build(scene_);
  const ScratchDirectory scratch;
  for (const int mode : {1, 2}) {
    Told told;
    EXPECT_EQ(qi::correct_sizes(scene_, mode, told.sink()), 0) << mode;
    const std::string bytes = written(scene_, mode);
    write_file(scratch / "scene.quil", bytes);
    Qis opened;
    EXPECT_EQ(qi::open_scene(scratch / "scene.quil", opened, told.sink()), 1) << mode;
    EXPECT_EQ(told.words(), "");
    EXPECT_TRUE(written(opened, mode) == bytes) << mode;
  }
}

struct GrowthCase {
  const char* name;
  Build build;
  const char* list;
  const char* record;  ///< the new one, number 6
  std::int32_t bytes;
};
class NextOfItsList : public testing::TestWithParam<GrowthCase> {};
INSTANTIATE_TEST_SUITE_P(
    Rows, NextOfItsList,
    testing::Values(GrowthCase{"ChainRoot", qiAddChainRoot, "ChainRootList", "ChainRoot 6", 44},
                    GrowthCase{"Joint", qiAddJoint, "JointList", "joint 6", 64},
                    GrowthCase{"Effector", qiAddEffector, "EffectorList", "effector 6", 40},
                    GrowthCase{"Envelope", [](Qis& s) { return qiAddEnvelope(s, 1, 2, 1, 3, 5); },
                               "EnvelopeList", "envelope 6", 44 + 64 + 2 * 36 + 244 + 3 * 116},
                    GrowthCase{"ClusterShape", [](Qis& s) { return qiAddClusterShape(s, 3, 1, 5); },
                               "ClusterList", "cluster 6", 36 + 3 * 56 + 100}),
    CaseName());

TEST_P(NextOfItsList, GrowsEverySizeThatCountsItAndNoOther) {
  const auto scene = built_scene();
  const auto before = size_words(*scene);
  EXPECT_EQ(GetParam().build(*scene), 7u);
  const std::int32_t bytes = GetParam().bytes;
  auto growth = record_growth(GetParam().list, GetParam().record, bytes);
  for (auto& [name, change] : growth)
    if (!name.starts_with(GetParam().record)) change += 4;  // its size table entry
  EXPECT_EQ(size_changes(before, size_words(*scene)), growth);
}

struct PartCase {
  const char* name;
  Word (*add)(Qis&, Word owner);
  const char* list;
  const char* owner;
  std::int32_t bytes;
  Word& (*count)(Qis&);
};
const PartCase kPartCases[] = {
    {"FullWeighted", qiAddFullWeightedPart, "EnvelopeList", "envelope 2", 64,
     [](Qis& s) -> Word& { return s.ext.envelope_list.records[2].fixed.full_weighted_count; }},
    {"Weighted", qiAddWeightedPart, "EnvelopeList", "envelope 2", 36,
     [](Qis& s) -> Word& { return s.ext.envelope_list.records[2].fixed.weighted_count; }},
    {"Morph", qiAddMorphPart, "EnvelopeList", "envelope 2", 244,
     [](Qis& s) -> Word& { return s.ext.envelope_list.records[2].fixed.morph_count; }},
    {"EnvelopeTri", qiAddEnvelopeTri, "EnvelopeList", "envelope 2", 116,
     [](Qis& s) -> Word& { return s.ext.envelope_list.records[2].fixed.tri_count; }},
    {"Cluster", qiAddCluster, "ClusterList", "cluster 2", 56,
     [](Qis& s) -> Word& { return s.ext.cluster_list.records[2].fixed.cluster_count; }},
    {"ClusterTri", qiAddClusterTri, "ClusterList", "cluster 2", 100,
     [](Qis& s) -> Word& { return s.ext.cluster_list.records[2].fixed.tri_count; }},
};
class NewPart : public testing::TestWithParam<PartCase> {
 protected:
  std::unique_ptr<Qis> scene_ = built_scene();
  const SizeWords before_ = size_words(*scene_);
};
INSTANTIATE_TEST_SUITE_P(Rows, NewPart, testing::ValuesIn(kPartCases), CaseName());

TEST_P(NewPart, IsCountedAndGrowsItsOwner) {
  EXPECT_EQ(GetParam().add(*scene_, 2), 1u);
  EXPECT_EQ(GetParam().add(*scene_, 2), 2u);
  EXPECT_EQ(GetParam().count(*scene_), 2u);
  EXPECT_EQ(size_changes(before_, size_words(*scene_)),
            record_growth(GetParam().list, GetParam().owner, 2 * GetParam().bytes));
}

TEST_P(NewPart, IsRefusedWithoutOwnerTableOrVersion) {
  EXPECT_EQ(GetParam().add(*scene_, kOutside), 0u);
  EXPECT_EQ(GetParam().add(*scene_, kNone), 0u);
  scene_->header.fixed.version = qi::kVersion1;
  EXPECT_EQ(GetParam().add(*scene_, 2), 0u);
  scene_->header.fixed.version = qi::kVersion2;
  scene_->header.block1.clear();
  EXPECT_EQ(GetParam().add(*scene_, 2), 0u);
  EXPECT_EQ(GetParam().count(*scene_), 0u);
  EXPECT_EQ(scene_->header.fixed.file_size, before_.at("file"));
}

TEST(Builders, AnEnvelopeOfOnePartAndTwoTrianglesDeformsShape3) {
  const auto scene = built_scene();
  EXPECT_EQ(qiAddEnvelope(*scene, 1, 0, 0, 2, 3), 7u);
  EXPECT_EQ(scene->ext.envelope_list.records[6].fixed.size, 44u + 64u + 2u * 116u);
  EXPECT_EQ(scene->shape_list.records[3].fixed.geometry, 6u);
  EXPECT_EQ(scene->shape_list.records[3].ext->head.deformer_tag, 0x220100u);
}

TEST(Builders, AClusterShapeDeformsItsShape) {
  const auto scene = built_scene();
  EXPECT_EQ(qiAddClusterShape(*scene, 1, 1, 2), 7u);
  EXPECT_EQ(scene->shape_list.records[2].fixed.geometry, 6u);
  EXPECT_EQ(scene->shape_list.records[2].ext->head.deformer_tag, 0x280100u);
}

TEST(Builders, TwoNewJointsAreBothParentsOfJoint0) {
  Qis scene;
  ASSERT_EQ(qiOpenQb(shared_scene("tiny_v2").path, scene), 1);
  EXPECT_EQ(qiAddJoint(scene), 1u);
  EXPECT_EQ(qiAddJoint(scene), 2u);
  const auto& joints = scene.ext.joint_list.records;
  EXPECT_EQ(joints[0].fixed.index, 0u);
  EXPECT_EQ(joints[1].fixed.index, 1u);
  EXPECT_EQ(joints[0].fixed.child_joint, 0u) << "joint 0 refers to itself";
  EXPECT_EQ(joints[1].fixed.child_joint, 0u);
}

TEST(Builders, AGroupOfNoWeightsHas28Bytes) {
  const auto scene = built_scene();
  const auto before = size_words(*scene);
  EXPECT_EQ(qiAddWeightGroup(*scene, 0), 1u);
  const auto& group = scene->ext.weight_list.records[0];
  EXPECT_EQ(group.fixed.size, 28u);
  EXPECT_THAT(group.weights, IsEmpty());
  EXPECT_EQ(size_changes(before, size_words(*scene)).at("file"), 24 + 4 + 28);
}

TEST(Builders, CountsOf0OrLessAddNone) {
  const auto scene = built_scene();
  EXPECT_EQ(qiAddWeightGroup(*scene, -1), 1u);
  EXPECT_EQ(qiAddEnvelope(*scene, -1, -2, 0, std::numeric_limits<std::int64_t>::min(), 0), 7u);
  EXPECT_EQ(qiAddClusterShape(*scene, -1, 0, 1), 7u);
  EXPECT_EQ(scene->ext.weight_list.records[0].fixed.size, 28u);
  EXPECT_EQ(scene->ext.envelope_list.records[6].fixed.size, 44u);
  EXPECT_EQ(scene->ext.cluster_list.records[6].fixed.size, 36u);
}

TEST(Builders, AllTogetherOnASkeletonOpenAgainWithNothingSaid) {
  Qis scene;
  ASSERT_EQ(qiOpenQb(shared_scene("skeleton").path, scene), 1);
  const auto counts = shared_scene("skeleton").counts;
  EXPECT_EQ(qiAddEnvelope(scene, 3, 1, 2, 4, 0), counts.at("Envelope") + 1);
  EXPECT_EQ(qiAddMorphPart(scene, 0), 2u);
  EXPECT_EQ(qiAddClusterShape(scene, 2, 3, 1), counts.at("Cluster") + 1);
  EXPECT_EQ(qiAddWeightGroup(scene, 100), counts.at("Weight") + 1);
  EXPECT_EQ(qiAddChainRoot(scene), counts.at("ChainRoot") + 1);
  EXPECT_EQ(qiAddJoint(scene), counts.at("Joint") + 1);
  EXPECT_EQ(qiAddEffector(scene), counts.at("Effector") + 1);

  const ScratchDirectory scratch;
  Told told;
  EXPECT_EQ(qi::correct_sizes(scene, 2, told.sink()), 0);
  EXPECT_EQ(qiSaveAsQb2(scene, scratch / "scene.quil"), 1);
  Qis opened;
  EXPECT_EQ(qi::open_scene(scratch / "scene.quil", opened, told.sink()), 1);
  EXPECT_EQ(told.words(), "");
  EXPECT_EQ(opened.shape_list.records[0].fixed.geometry, counts.at("Envelope"));
  EXPECT_THAT(opened.ext.weight_list.records.back().weights, testing::AllOf(SizeIs(100), Each(100.0f)));
}

// Refusals.

const std::pair<const char*, Build> kEveryBuilder[] = {
    {"ChainRoot", qiAddChainRoot},
    {"Joint", qiAddJoint},
    {"Effector", qiAddEffector},
    {"WeightGroup", [](Qis& s) { return qiAddWeightGroup(s, 2); }},
    {"Envelope", [](Qis& s) { return qiAddEnvelope(s, 1, 1, 1, 1, 0); }},
    {"ClusterShape", [](Qis& s) { return qiAddClusterShape(s, 1, 1, 0); }}};

void expect_all_refused(Qis& scene) {
  const auto before = size_words(scene);
  const std::string bytes = written(scene, 2);
  for (const auto& [name, build] : kEveryBuilder) EXPECT_EQ(build(scene), 0u) << name;
  EXPECT_THAT(size_changes(before, size_words(scene)), IsEmpty());
  EXPECT_TRUE(written(scene, 2) == bytes);
}

TEST(Builders, RefuseAVersion1Scene) { expect_all_refused(*built_version1_scene()); }

TEST(Builders, RefuseANewScene) {
  Qis scene;
  expect_all_refused(scene);
}

TEST(Builders, RefuseAVersion2SceneWithoutASizeTable) {
  const auto scene = built_version1_scene();
  scene->header.fixed.version = qi::kVersion2;
  expect_all_refused(*scene);
}

TEST(Builders, RefuseWhatTheFilesSizeCanNotCount) {
  const auto scene = built_scene();
  scene->header.fixed.file_size = 0xFFFFFFFF - 40;
  expect_all_refused(*scene);
}

TEST(Builders, RefuseAShapeThatIsNotThereOrHasNoStructure) {
  const auto scene = built_scene();
  scene->shape_list.records[1].ext.reset();
  const auto before = size_words(*scene);
  for (const Word shape : {kOutside, kNone, Word{1}}) {
    EXPECT_EQ(qiAddEnvelope(*scene, 1, 1, 1, 1, shape), 0u) << shape;
    EXPECT_EQ(qiAddClusterShape(*scene, 1, 1, shape), 0u) << shape;
  }
  EXPECT_EQ(scene->ext.envelope_list.records.size(), 6u);
  EXPECT_EQ(size_words(*scene), before);
}

TEST(Builders, RefuseMoreThanAnElementMayTake) {
  const auto scene = built_scene();
  const auto before = size_words(*scene);
  for (const std::int64_t many : {kFarTooMany, std::int64_t{4'000'000'000}, std::int64_t{0x1'0000'0000},
                                  std::int64_t{0x4000'0000}, std::int64_t{5'000'000}}) {
    EXPECT_EQ(qiAddWeightGroup(*scene, many), 0u) << many;
    EXPECT_EQ(qiAddEnvelope(*scene, many, 0, 0, 0, 0), 0u) << many;
    EXPECT_EQ(qiAddEnvelope(*scene, 0, many, 0, 0, 0), 0u) << many;
    EXPECT_EQ(qiAddEnvelope(*scene, 0, 0, many, 0, 0), 0u) << many;
    EXPECT_EQ(qiAddEnvelope(*scene, 0, 0, 0, many, 0), 0u) << many;
    EXPECT_EQ(qiAddEnvelope(*scene, many, many, many, many, 0), 0u) << many;
    EXPECT_EQ(qiAddClusterShape(*scene, many, 0, 0), 0u) << many;
    EXPECT_EQ(qiAddClusterShape(*scene, 0, many, 0), 0u) << many;
  }
  EXPECT_EQ(size_words(*scene), before);
  EXPECT_EQ(scene->shape_list.records[0].fixed.geometry, 0u);
}

TEST(Builders, TakeFourMillionWeights) {
  const auto scene = built_scene();
  EXPECT_EQ(qiAddWeightGroup(*scene, 4'000'000), 1u);
  EXPECT_EQ(scene->ext.weight_list.records[0].fixed.size, 28u + 16'000'000u);
}

}  // namespace
