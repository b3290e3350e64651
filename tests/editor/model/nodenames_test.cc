/// @file
/// Node names: kinds and numbers, written and read back.
#include "editor/model/nodenames.h"

#include <gmock/gmock.h>

#include "tests/support/case_name.h"

namespace {

struct KindCase {
  const char* name;  ///< also the prefix
  Word tag;
};
const KindCase kKinds[] = {
    {"scene", 0x10000},      {"shape", 0x30100},  {"tex", 0xb0100},      {"obj", 0x20100},  {"mat", 0xa0100},
    {"cam", 0xe0100},        {"env", 0x100100},   {"light", 0xf0100},    {"part", 0x90100}, {"anim", 0xc0100},
    {"ChainRoot", 0x240100}, {"joint", 0x250100}, {"effector", 0x260100}};

class NodeKinds : public testing::TestWithParam<KindCase> {};
INSTANTIATE_TEST_SUITE_P(Rows, NodeKinds, testing::ValuesIn(kKinds), CaseName());

TEST_P(NodeKinds, AreReadFromTheName) {
  const std::string name = std::string(GetParam().name) + "_12";
  EXPECT_EQ(tagofnd(name), GetParam().tag);
  EXPECT_EQ(indexofnd(name), 12);
  EXPECT_EQ(node_name(GetParam().tag, 12), name);
  const auto id = find_node_id(name);
  ASSERT_TRUE(id);
  EXPECT_EQ(id->kind, GetParam().tag);
  EXPECT_EQ(id->number, 12u);
}

TEST(NodeKindTable, HasTheSceneFirstAndNoOthersButLevelsOfDetail) {
  std::vector<Word> tags;
  for (const NodeKind& kind : kNodeKinds)
    if (&kind != &kNodeKind<LevelsOfDetail>) tags.push_back(kind.tag);
  std::vector<Word> expected;
  for (const KindCase& kind : kKinds) expected.push_back(kind.tag);
  EXPECT_EQ(tags, expected);
}

struct OddCase {
  const char* name;
  const char* node;
  Word kind;
  long index;
  bool is_node;
};
class OddNodeNames : public testing::TestWithParam<OddCase> {};
INSTANTIATE_TEST_SUITE_P(
    Rows, OddNodeNames,
    testing::Values(
        OddCase{"LevelOfDetail", "lod_3", 0, 3, false}, OddCase{"NoUnderscore", "newNode", 0, 0, false},
        OddCase{"KindWithoutUnderscore", "obj", 0, 0, false}, OddCase{"Empty", "", 0, 0, false},
        OddCase{"UnderscoreAlone", "_", 0, 0, false}, OddCase{"NoPrefix", "_4", 0, 4, false},
        OddCase{"TooLongPrefix", "ChainRoots_1", 0, 1, false},
        OddCase{"PrefixOfAPrefix", "ob_1", 0, 1, false}, OddCase{"OtherCase", "Obj_1", 0, 1, false},
        OddCase{"NoNumber", "obj_", 0x20100, 0, false}, OddCase{"Word", "obj_x", 0x20100, 0, false},
        OddCase{"NumberAndMore", "obj_3x", 0x20100, 3, false},
        OddCase{"LeadingZeros", "obj_007", 0x20100, 7, false},
        OddCase{"LeadingBlank", "obj_ 7", 0x20100, 7, false},
        OddCase{"BeyondAWord", "obj_4294967299", 0x20100, 4294967299, false},
        OddCase{"BeyondALong", "obj_99999999999999999999", 0x20100, 9223372036854775807, false},
        OddCase{"SecondUnderscore", "obj_1_2", 0x20100, 1, false},
        OddCase{"ReferenceToNothing", "obj_-1", 0x20100, -1, true}),
    CaseName());

TEST_P(OddNodeNames, AreNoNodesOrAreRefused) {
  EXPECT_EQ(tagofnd(GetParam().node), GetParam().kind);
  EXPECT_EQ(indexofnd(GetParam().node), GetParam().index);
  EXPECT_EQ(find_node_id(GetParam().node).has_value(), GetParam().is_node);
}

TEST(NodeNames, NumbersAreWrittenSigned) {
  EXPECT_EQ(string_d("lod_", 4), "lod_4");
  EXPECT_EQ(string_d("obj_", 0x7FFFFFFF), "obj_2147483647");
  EXPECT_EQ(string_d("obj_", kUnset), "obj_-1");
  EXPECT_EQ(node_name(0, 1), "");
}

TEST(NodeNames, OfReferencesThatSayTheirList) {
  EXPECT_EQ(nodename({0x20000, 3}), "obj_3");
  EXPECT_EQ(nodename({0x240000, 0}), "ChainRoot_0");
  EXPECT_EQ(nodename({0x250000, 11}), "joint_11");
  EXPECT_EQ(nodename({0x260000, 2}), "effector_2");
  EXPECT_EQ(nodename({0x30000, 2}), "_2");
}

}  // namespace
