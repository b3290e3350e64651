/// @file
/// Changes: what a recording finds, how little it keeps, and that it leads back and forth.
#include "qilib/change.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "qilib/builders.h"
#include "qilib/edit.h"
#include "qilib/names.h"
#include "qilib/references.h"
#include "tests/support/builtscene.h"
#include "tests/support/written.h"

namespace {

using namespace qi;

class Changes : public testing::Test {
 protected:
  Change recorded(const std::function<void()>& edit) {
    Recording recording(*scene_);
    edit();
    return recording.finish();
  }
  std::string bytes() const { return written(*scene_, 2); }

  /// Makes an edit, takes it back and makes it again. @returns the change.
  Change expect_both_ways(const std::function<void()>& edit) {
    const std::string before = bytes();
    Change change = recorded(edit);
    const std::string after = bytes();
    EXPECT_FALSE(before == after);
    EXPECT_FALSE(change.empty());
    for (int i = 0; i < 2; ++i) {
      change.undo(*scene_);
      EXPECT_TRUE(bytes() == before);
      change.redo(*scene_);
      EXPECT_TRUE(bytes() == after);
    }
    return change;
  }

  std::unique_ptr<Qis> scene_ = built_scene();
};

const Reference& scene_objs() { return *find_reference(kSceneTag, kObjTag); }

TEST_F(Changes, ARefusedEditIsNone) {
  add_reference(*scene_, scene_objs(), 0, 1);
  EXPECT_TRUE(recorded([&] { add_reference(*scene_, scene_objs(), 0, 1); }).empty());
  EXPECT_TRUE(recorded([] {}).empty());
}

TEST_F(Changes, HoldWhatDiffersHoweverMuchThereIs) {
  constexpr Word kMany = 100000;
  auto& scene = scene_->scene;
  for (Word i = 0; i < kMany; ++i) scene.objs.push_back(i + 100);
  scene.fixed.obj_count = kMany;
  const Change added = expect_both_ways([&] { add_reference(*scene_, scene_objs(), 0, 1); });
  EXPECT_LT(added.bytes(), 1500U);
  const Change deleted =
      expect_both_ways([&] { delete_reference(*scene_, scene_objs(), 0, kMany / 2, qi::print_message); });
  EXPECT_LT(deleted.bytes(), 1500U);
}

TEST_F(Changes, LeaveTheTexelsOut) {
  Teximg& image = scene_->teximg_list.records.emplace_back();
  image.texels.resize(std::size_t{1} << 20);
  scene_->teximg_list.sizes.push_back(0);
  const Change change =
      recorded([&] { record_in(*scene_, &Qis::teximg_list, 0)->texels[1000] = std::byte{7}; });
  EXPECT_LT(change.bytes(), 500U);
  change.undo(*scene_);
  EXPECT_EQ(image.texels[1000], std::byte{0});
  change.redo(*scene_);
  EXPECT_EQ(image.texels[1000], std::byte{7});
}

TEST_F(Changes, BringNewRecordsAndTheirListsAndTakeThemAway) {
  expect_both_ways([&] { qiAddName(*scene_); });
  expect_both_ways([&] { qiAddJoint(*scene_); });
  expect_both_ways([&] { qiAddWeightGroup(*scene_, 1000); });
  expect_both_ways([&] { qiAddEnvelope(*scene_, 2, 2, 2, 2, 0); });
  expect_both_ways([&] { qiAddClusterShape(*scene_, 2, 2, 1); });
}

TEST_F(Changes, OfALongerAndAShorterName) {
  qiAddName(*scene_);
  for (const char* text : {"a_much_longer_name", "n", "", "four"})
    expect_both_ways([&] {
      std::string name = text;
      qiSetName(*scene_, 0, name);
    });
}

TEST_F(Changes, OfPartsThatComeAndGo) {
  qiAddEnvelope(*scene_, 0, 0, 0, 0, 0);
  const Word envelope = static_cast<Word>(scene_->ext.envelope_list.records.size()) - 1;
  const auto record = [&] { return record_in(*scene_, &ExtLists::envelope_list, envelope); };
  expect_both_ways([&] { qiAddWeightedPart(*scene_, envelope); });
  expect_both_ways([&] { qiAddWeightedPart_Obj(*scene_, envelope, 0, 1, 50.0F); });
  expect_both_ways([&] {
    record()->weighted.clear();
    record()->fixed.weighted_count = 0;
  });
  expect_both_ways([&] {
    qiAddFullWeightedPart(*scene_, envelope);
    qiAddMorphPart(*scene_, envelope);
  });
}

TEST_F(Changes, OfAStructureThatComesAndGoes) {
  const auto record = [&] { return record_in(*scene_, &Qis::mat_list, 2); };
  record()->ext->head.mat_type_fog = 9;
  expect_both_ways([&] {
    record()->ext.reset();
    record()->fixed.block1_size = 0;
  });
}

TEST_F(Changes, OfACopyAreNotRecorded) {
  const auto record = [](Qis& scene) { return record_in(scene, &Qis::mat_list, 0); };
  const Change change = recorded([&] {
    Qis copy = *scene_;
    record(copy)->fixed.mat_type = 77;
    qiAddName(copy);
  });
  EXPECT_TRUE(change.empty());
}

TEST_F(Changes, AreNotAppliedToASceneThatTheyDoNotFit) {
  const Change change = recorded([&] {
    for (Word obj = 0; obj < 4; ++obj) add_reference(*scene_, scene_objs(), 0, obj);
    qiAddJoint(*scene_);
  });
  auto other = built_scene(1);
  change.undo(*other);
  EXPECT_TRUE(other->scene.objs.empty());
}

TEST_F(Changes, AFingerprintTellsTheContentsOfARecord) {
  const auto print = [&](Word number) { return fingerprint(*scene_, kMatTag, number); };
  const auto first = print(0), other = print(1);
  EXPECT_NE(first, other) << "they have different numbers";
  const Change change = recorded([&] { add_reference(*scene_, *find_reference(kMatTag, kTexTag), 0, 3); });
  EXPECT_NE(print(0), first);
  EXPECT_EQ(print(1), other);
  change.undo(*scene_);
  EXPECT_EQ(print(0), first);
}

}  // namespace
