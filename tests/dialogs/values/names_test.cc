/// @file
/// Renaming a record in its dialog.
#include <gmock/gmock.h>

#include <ostream>

#include "editor/model/recordnames.h"
#include "tests/dialogs/values/values_fixture.h"
#include "tests/support/case_name.h"

namespace {

struct Named {
  const char* name;
  const char* node;
  std::size_t word;  ///< where the record keeps its name index
};
void PrintTo(const Named& named, std::ostream* out) { *out << named.node; }

class NameOf : public ValuesTest, public testing::WithParamInterface<Named> {
 protected:
  std::string record_ = GetParam().node;
  Word& name_index() {
    const auto on = values::dialog_of_node(record_);
    return *on->dialog->kind().name_index(*qis, on->number);
  }
};

TEST_P(NameOf, IsShownAndReplaced) {
  EXPECT_EQ(shown(record_, "title.nodeName"), "beta");
  SceneWords expected = scene_words();
  change(record_, "title.nodeName", "gamma ray");
  EXPECT_EQ(qis->name_list.records.size(), 2u);
  EXPECT_EQ(shown(record_, "title.nodeName"), "gamma_ray");
  expected["name_1"] = scene_words()["name_1"];
  EXPECT_EQ(scene_words(), expected);
}

TEST_P(NameOf, IsMadeOnceWhereThereWasNone) {
  name_index() = kUnset;
  SceneWords expected = scene_words();
  EXPECT_EQ(shown(record_, "title.nodeName"), "");

  change(record_, "title.nodeName", "first");
  expected[record_][GetParam().word] = 2;
  expected["name_2"] = scene_words()["name_2"];
  EXPECT_EQ(scene_words(), expected);
  EXPECT_EQ(qiGetName(qis->name_list.records.at(2)), "first");

  change(record_, "title.nodeName", "second");
  EXPECT_EQ(qis->name_list.records.size(), 3u);
  EXPECT_EQ(qiGetName(qis->name_list.records.at(2)), "second");
}

TEST_P(NameOf, IsRefusedWhereTheIndexIsOutOfRange) {
  name_index() = 2;
  const SceneWords expected = scene_words();
  Opened dialog = open(record_);
  edit(dialog, "title.nodeName", "third");
  testing::internal::CaptureStderr();
  EXPECT_THAT(apply(dialog, 0), testing::EndsWith(" is changed.\n"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            record_ + ": can't be renamed: its name index is 2, and the scene has 2 names\n");
  EXPECT_EQ(scene_words(), expected);

  // Without a new name, there is nothing that stands in the way of the rest.
  edit(dialog, "title.nodeName", "");
  apply(dialog);
  EXPECT_EQ(name_index(), 2u);
  EXPECT_EQ(scene_words()["name_1"], expected.at("name_1"));
}

const Named kNamed[] = {
    {"Scene", "scene_0", 4},
    {"Env", "env_1", 3},
    {"Cam", "cam_1", 3},
    {"Light", "light_1", 4},
    {"Obj", "obj_1", 3},
    {"Shape", "shape_1", 3},
    {"Part", "part_1", 3},
    {"Mat", "mat_1", 3},
    {"Tex", "tex_1", 4},
    {"Anim", "anim_1", 4},
    {"ChainRoot", "ChainRoot_1", 3},
    {"Joint", "joint_1", 3},
    {"Effector", "effector_1", 3},
};
INSTANTIATE_TEST_SUITE_P(Values, NameOf, testing::ValuesIn(kNamed), CaseName());

TEST_F(ValuesTest, AnUnchangedNameMakesNone) {
  qis->part_list.records[1].fixed.name = kUnset;
  Opened part = open("part_1");
  EXPECT_EQ(apply(part), "This is partDialog, index = 1.\n");
  EXPECT_EQ(qis->name_list.records.size(), 2u);
  EXPECT_EQ(qis->part_list.records[1].fixed.name, kUnset);
}

TEST_F(ValuesTest, ANewTypeOfAJointLeavesItsName) {
  qis->ext.joint_list.records[1].fixed.name = kUnset;
  change("joint_1", "title.type", "7");
  EXPECT_EQ(qis->ext.joint_list.records[1].fixed.name, kUnset);
  EXPECT_EQ(qis->name_list.records.size(), 2u);
}

TEST_F(ValuesTest, NamesEndAtTheirFirstLineBreak) {
  change("part_1", "title.nodeName", "front\nwheel");
  EXPECT_EQ(shown("part_1", "title.nodeName"), "front");
  change("part_1", "title.nodeName", "back\r\nwheel");
  EXPECT_EQ(shown("part_1", "title.nodeName"), "back");
}

TEST_F(ValuesTest, LongNamesAndControlCharactersAreStoredAsTyped) {
  const std::string typed = "\t\x01\x7f" + std::string(5000, 'x') + "\x1b[31m";
  change("part_1", "title.nodeName", typed);
  EXPECT_EQ(shown("part_1", "title.nodeName"), typed);
}

TEST_F(ValuesTest, AnEmptyNameIsStored) {
  change("part_1", "title.nodeName", "");
  EXPECT_EQ(shown("part_1", "title.nodeName"), "");
  EXPECT_EQ(qis->part_list.records[1].fixed.name, 1u);
}

TEST_F(ValuesTest, ANameIndexOutsideTheListShowsNothingAndIsKept) {
  qis->part_list.records[1].fixed.name = 99;
  EXPECT_EQ(shown("part_1", "title.nodeName"), "");
  Opened part = open("part_1");
  edit(part, "title.nodeName", "wheel");
  apply(part, 0);
  EXPECT_EQ(qis->part_list.records[1].fixed.name, 99u);
  EXPECT_EQ(qis->name_list.records.size(), 2u);
}

}  // namespace
