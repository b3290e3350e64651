/// @file
/// Names: their texts, new ones, renaming, and lists that come into being with their first record.
#include "qilib/names.h"

#include <gmock/gmock.h>

#include "qilib/appendrecord.h"
#include "tests/support/builtscene.h"
#include "tests/support/case_name.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

qi::Name name_of(Words text, Word bytes) {
  qi::Name name;
  name.fixed = {0x110100, 0, 16, 16 + bytes};
  name.text = std::move(text);
  return name;
}

struct TextCase {
  const char* name;
  Words words;
  Word bytes;
  std::string text;
};
class NameText : public testing::TestWithParam<TextCase> {};
INSTANTIATE_TEST_SUITE_P(
    Rows, NameText,
    testing::Values(TextCase{"Empty", {}, 0, ""}, TextCase{"Padded", {0x61620000}, 4, "ab"},
                    TextCase{"NoTerminator", {0x61626364}, 4, "abcd"},
                    TextCase{"BlanksBecomeUnderscores", {0x20612062, 0x20000000}, 8, "_a_b_"},
                    TextCase{"EndsAtItsLength", {0x61626364}, 3, "abc"},
                    TextCase{"LengthBeyondTheWords", {0x61626364}, 4000, "abcd"},
                    TextCase{"HighBytes", {0xC3A40000}, 4, "\xC3\xA4"}),
    CaseName());

TEST_P(NameText, IsUnpacked) {
  const qi::Name name = name_of(GetParam().words, GetParam().bytes);
  EXPECT_EQ(qiGetNamelen(name), GetParam().bytes);
  EXPECT_EQ(qiGetName(name), GetParam().text);
}

TEST(Names, BlanksBecomeUnderscoresInPlace) {
  std::string text = " a b ";
  qiSp2_(text);
  EXPECT_EQ(text, "_a_b_");
}

TEST(Names, TheFirstOneBringsTheList) {
  const auto scene = built_scene();
  const auto before = size_words(*scene);
  EXPECT_EQ(qiAddName(*scene), 1u);
  const auto& list = scene->name_list;
  EXPECT_EQ(list.header.tag, 0x110000u);
  EXPECT_EQ(list.header.count, 1u);
  EXPECT_EQ(list.header.size, 24u + 4u + 20u);
  EXPECT_THAT(list.sizes, ElementsAre(20));
  EXPECT_EQ(scene->header.fixed.list_num[18], 48u);
  EXPECT_EQ(size_changes(before, size_words(*scene))["file"], 48);
  const auto& name = list.records[0];
  EXPECT_EQ(name.fixed.tag, 0x110100u);
  EXPECT_EQ(name.fixed.index, 0u);
  EXPECT_EQ(name.fixed.fixed_size, 16u);
  EXPECT_EQ(name.fixed.size, 20u);
  EXPECT_THAT(name.text, ElementsAre(0x20202000u));
}

TEST(Names, ALaterOneGrowsTheListByRecordAndTableEntry) {
  const auto scene = built_scene();
  qiAddName(*scene);
  const auto before = size_words(*scene);
  EXPECT_EQ(qiAddName(*scene), 2u);
  EXPECT_EQ(scene->name_list.records[1].fixed.index, 1u);
  const std::map<std::string, std::int32_t> growth{
      {"file", 24}, {"NameList", 24}, {"NameList entry", 24}, {"name 1 table", 20}, {"name 1", 20}};
  EXPECT_EQ(size_changes(before, size_words(*scene)), growth);
}

TEST(Names, AListThatIsThereKeepsItsHeader) {
  const auto scene = built_scene();
  scene->name_list.header = {0x110000, 77, 24, 0, 0, 0};
  scene->header.fixed.list_num[18] = 24;
  EXPECT_EQ(qiAddName(*scene), 1u);
  EXPECT_EQ(scene->name_list.header.word1, 77u);
  EXPECT_EQ(scene->name_list.header.size, 48u);
}

TEST(SetName, StoresATextOfWholeWordsWithoutTerminator) {
  const auto scene = built_scene();
  qiAddName(*scene);
  const auto before = size_words(*scene);
  std::string text = "my model";
  EXPECT_EQ(qiSetName(*scene, 0, text), 1);
  EXPECT_EQ(text, "my_model") << "the caller's text changes, too";
  const auto& name = scene->name_list.records[0];
  EXPECT_THAT(name.text, ElementsAre(0x6D795F6Du, 0x6F64656Cu));
  EXPECT_EQ(qiGetNamelen(name), 8u);
  EXPECT_EQ(qiGetName(name), "my_model");
  const std::map<std::string, std::int32_t> growth{
      {"file", 4}, {"NameList", 4}, {"NameList entry", 4}, {"name 0 table", 4}, {"name 0", 4}};
  EXPECT_EQ(size_changes(before, size_words(*scene)), growth);
}

struct NameLengthCase {
  const char* name;
  std::string text;
  Words words;
};
class SetNameLength : public testing::TestWithParam<NameLengthCase> {};
INSTANTIATE_TEST_SUITE_P(
    Rows, SetNameLength,
    testing::Values(NameLengthCase{"Empty", "", {}}, NameLengthCase{"One", "a", {0x61000000}},
                    NameLengthCase{"Three", "abc", {0x61626300}},
                    NameLengthCase{"Four", "abcd", {0x61626364}},
                    NameLengthCase{"Five", "abcde", {0x61626364, 0x65000000}},
                    NameLengthCase{"EndsAtAZero", std::string("ab\0cd", 5), {0x61620000}},
                    NameLengthCase{"HighBytes", "\xFF\x80", {0xFF800000}}),
    CaseName());

TEST_P(SetNameLength, IsRoundedUpToWords) {
  const auto scene = built_scene();
  qiAddName(*scene);
  std::string first = "a long first text";  // 17 bytes in 5 words: the next one is shorter
  ASSERT_EQ(qiSetName(*scene, 0, first), 1);
  const auto before = size_words(*scene);
  std::string text = GetParam().text;
  EXPECT_EQ(qiSetName(*scene, 0, text), 1);
  const auto& name = scene->name_list.records[0];
  EXPECT_EQ(name.text, GetParam().words);
  EXPECT_EQ(qiGetNamelen(name), 4 * GetParam().words.size());
  const auto shrinkage = 4 * (static_cast<std::int32_t>(GetParam().words.size()) - 5);
  EXPECT_EQ(size_changes(before, size_words(*scene))["file"], shrinkage);
  EXPECT_EQ(size_changes(before, size_words(*scene))["name 0"], shrinkage);
}

TEST(SetName, ANumberOutsideTheListIsRefused) {
  const auto scene = built_scene();
  std::string text = "a b";
  EXPECT_EQ(qiSetName(*scene, 0, text), 0);
  qiAddName(*scene);
  const auto before = size_words(*scene);
  EXPECT_EQ(qiSetName(*scene, 1, text), 0);
  EXPECT_EQ(qiSetName(*scene, kUnset, text), 0);
  EXPECT_EQ(size_words(*scene), before);
}

TEST(GrowingLists, ARecordGetsItsNumberNoNameAndItsSize) {
  qi::List<qi::Joint> list;
  Word number = 0;
  const auto init = [&](qi::Joint& joint) {
    EXPECT_EQ(joint.fixed.index, number++);
    EXPECT_EQ(joint.fixed.name, kUnset);
    return Word{64};
  };
  EXPECT_EQ(qiAddElementToList(list, init), 68u);
  EXPECT_EQ(qiAddElementToList(list, init), 68u);
  EXPECT_EQ(list.header.count, 2u);
  EXPECT_EQ(list.records.size(), 2u);
  EXPECT_THAT(list.sizes, ElementsAre(64, 64));
  EXPECT_EQ(list.header.size, 0u) << "the caller adds the size";
}

TEST(GrowingLists, AnArrayWithoutSizeTableGrowsByTheRecordAlone) {
  std::vector<qi::EnvelopeTri> tris;
  Word count = 0;
  EXPECT_EQ(qiAddElementToList(count, nullptr, tris, [](qi::EnvelopeTri&) { return Word{116}; }), 116u);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(tris[0].index, 0u);
  EXPECT_EQ(tris[0].node.tag, kUnset) << "the fourth word, whatever it means in this kind";
}

TEST(GrowingLists, AnAbsentExtensionListComesWithItsTableEntry) {
  const auto scene = built_scene(0);
  auto& list = scene->ext.joint_list;
  list.header = {};
  scene->header.fixed.file_size -= scene->header.ext_sizes[6];
  scene->header.ext_sizes[6] = scene->header.block1[6] = 0;
  const auto before = size_words(*scene);
  EXPECT_TRUE(qi::bring_list(*scene, list));
  EXPECT_EQ(list.header.tag, 0x250000u);
  const std::map<std::string, std::int32_t> growth{
      {"file", 24}, {"JointList", 24}, {"JointList entry", 24}, {"JointList block1 entry", 24}};
  EXPECT_EQ(size_changes(before, size_words(*scene)), growth);
  EXPECT_TRUE(qi::bring_list(*scene, list)) << "it is there now";
  EXPECT_EQ(size_changes(before, size_words(*scene)), growth);
}

TEST(GrowingLists, ASceneWithoutTableTakesNoExtensionList) {
  const auto scene = built_version1_scene();
  const auto before = size_words(*scene);
  EXPECT_FALSE(qi::bring_list(*scene, scene->ext.chain_root_list));
  EXPECT_EQ(scene->ext.chain_root_list.header.tag, 0u);
  EXPECT_THAT(size_changes(before, size_words(*scene)), IsEmpty());
}

}  // namespace
