/// @file
/// Size bookkeeping: which words a change reaches, and which it leaves alone.
#include "qilib/sizes.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>

#include "qilib/forwards.h"
#include "tests/support/case_name.h"

namespace {

/// A version-2 scene with one record in each list whose sizes can change.
Qis scene_with_one_of_each() {
  Qis scene;
  scene.header.fixed.version = qi::kVersion2;
  scene.header.fixed.file_size = 10000;
  scene.header.fixed.ext_block1_size = 40;
  scene.header.block1.assign(10, 0);
  scene.header.block1[9] = 0xABCD;
  const auto one = [](auto& list) {
    list.header.size = 100;
    list.header.count = 1;
    list.sizes.assign(1, 50);
    list.records.resize(1);
    list.records[0].fixed.size = 50;
  };
  one(scene.obj_list);
  one(scene.mat_list);
  one(scene.name_list);
  one(scene.ext.envelope_list);
  one(scene.ext.cluster_list);
  one(scene.ext.weight_list);
  one(scene.ext.chain_root_list);
  one(scene.ext.joint_list);
  one(scene.ext.effector_list);
  return scene;
}

/// Every size word of the scene above, by name, so that a change shows as the words that differ.
std::vector<std::pair<std::string, Word>> sizes(const Qis& scene) {
  std::vector<std::pair<std::string, Word>> all{{"file_size", scene.header.fixed.file_size},
                                                {"header_size", scene.header.fixed.header_size},
                                                {"scene", scene.scene.fixed.size}};
  for (std::size_t i = 0; i < qi::kCoreLists; ++i)
    all.emplace_back("list_num " + std::to_string(i), scene.header.fixed.list_num[i]);
  for (std::size_t i = 0; i < qi::kExtLists; ++i) {
    all.emplace_back("ext_sizes " + std::to_string(i), scene.header.ext_sizes[i]);
    all.emplace_back("block1 " + std::to_string(i), scene.header.block1[i]);
  }
  const auto list = [&](const std::string& name, const auto& l) {
    all.emplace_back(name + " record", l.records[0].fixed.size);
    all.emplace_back(name + " table", l.sizes[0]);
    all.emplace_back(name + " list", l.header.size);
  };
  list("obj", scene.obj_list);
  list("mat", scene.mat_list);
  list("name", scene.name_list);
  list("envelope", scene.ext.envelope_list);
  list("cluster", scene.ext.cluster_list);
  list("weight", scene.ext.weight_list);
  list("chain_root", scene.ext.chain_root_list);
  list("joint", scene.ext.joint_list);
  list("effector", scene.ext.effector_list);
  return all;
}

/// Names of the words that changed by `delta`; a word that changed by anything else is named with a "!".
std::vector<std::string> changed(Word record_number, std::int32_t delta, Word tag) {
  Qis scene = scene_with_one_of_each();
  const auto before = sizes(scene);
  qiAdjustListSizeData(scene, record_number, delta, tag);
  const auto after = sizes(scene);
  std::vector<std::string> names;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (after[i].second == before[i].second) continue;
    const bool exact = after[i].second == before[i].second + static_cast<Word>(delta);
    names.push_back((exact ? "" : "!") + before[i].first);
  }
  return names;
}

struct AdjustCase {
  const char* name;
  Word tag;
  std::vector<std::string> words;  ///< beside the file's size
};

class AdjustListSize : public testing::TestWithParam<AdjustCase> {};

TEST_P(AdjustListSize, ReachesTheWordsThatContainTheRecord) {
  std::vector<std::string> words = GetParam().words;
  words.push_back("file_size");
  EXPECT_THAT(changed(0, 4, GetParam().tag), testing::UnorderedElementsAreArray(words));
  EXPECT_THAT(changed(0, -4, GetParam().tag), testing::UnorderedElementsAreArray(words));
}

INSTANTIATE_TEST_SUITE_P(
    Tags, AdjustListSize,
    testing::Values(
        AdjustCase{"Scene", 0x00010000, {"scene", "list_num 0"}},
        AdjustCase{"Obj", 0x00020100, {"obj record", "obj table", "obj list", "list_num 4"}},
        AdjustCase{"ObjList", 0x00020000, {"obj list", "list_num 4"}},
        AdjustCase{"Mat", 0x000a0100, {"mat record", "mat table", "mat list", "list_num 12"}},
        AdjustCase{"MatList", 0x000a0000, {"mat list", "list_num 12"}},
        AdjustCase{"Name", 0x00110100, {"name record", "name table", "name list", "list_num 18"}},
        AdjustCase{"NameList", 0x00110000, {"name list", "list_num 18"}},
        AdjustCase{"Envelope",
                   0x00220100,
                   {"envelope record", "envelope table", "envelope list", "ext_sizes 2", "block1 2"}},
        AdjustCase{"EnvelopeList", 0x00220000, {"envelope list", "ext_sizes 2", "block1 2"}},
        AdjustCase{"Cluster",
                   0x00280100,
                   {"cluster record", "cluster table", "cluster list", "ext_sizes 3", "block1 3"}},
        AdjustCase{"ClusterList", 0x00280000, {"cluster list", "ext_sizes 3", "block1 3"}},
        AdjustCase{"Weight",
                   0x00230100,
                   {"weight record", "weight table", "weight list", "ext_sizes 4", "block1 4"}},
        AdjustCase{"WeightList", 0x00230000, {"weight list", "ext_sizes 4", "block1 4"}},
        AdjustCase{"ChainRoot",
                   0x00240100,
                   {"chain_root record", "chain_root table", "chain_root list", "ext_sizes 5", "block1 5"}},
        AdjustCase{"ChainRootList", 0x00240000, {"chain_root list", "ext_sizes 5", "block1 5"}},
        AdjustCase{
            "Joint", 0x00250100, {"joint record", "joint table", "joint list", "ext_sizes 6", "block1 6"}},
        AdjustCase{"JointList", 0x00250000, {"joint list", "ext_sizes 6", "block1 6"}},
        AdjustCase{"Effector",
                   0x00260100,
                   {"effector record", "effector table", "effector list", "ext_sizes 7", "block1 7"}},
        AdjustCase{"EffectorList", 0x00260000, {"effector list", "ext_sizes 7", "block1 7"}},
        AdjustCase{"TexHasNoBookkeeping", 0x000b0100, {}},
        AdjustCase{"ExternalNameHasNoBookkeeping", 0x00270100, {}},
        AdjustCase{"SceneRecordTagIsNoTag", 0x00010100, {}}, AdjustCase{"ZeroIsNoTag", 0, {}}),
    CaseName{});

TEST(AdjustListSizeData, LeavesEverythingAloneWhenTheRecordDoesNotExist) {
  for (const Word tag : {0x00020100u, 0x000a0100u, 0x00110100u, 0x00220100u, 0x00280100u, 0x00230100u,
                         0x00240100u, 0x00250100u, 0x00260100u})
    for (const Word number : {1u, 0x7FFFFFFFu, 0xFFFFFFFFu})
      EXPECT_THAT(changed(number, 4, tag), testing::IsEmpty());
}

TEST(AdjustListSizeData, UsesTheRecordNumberWithRecordTagsOnly) {
  EXPECT_THAT(changed(0xFFFFFFFF, 4, 0x00020000),
              testing::UnorderedElementsAre("file_size", "obj list", "list_num 4"));
}

TEST(AdjustListSizeData, LeavesTheOpaqueHeaderBlockOfAVersion1SceneAlone) {
  Qis scene = scene_with_one_of_each();
  scene.header.fixed.version = 0x00070100;
  const Words block = scene.header.block1;
  qiAdjustListSizeData(scene, 0, 4, 0x00240100);
  EXPECT_EQ(scene.header.block1, block);
}

TEST(AdjustListSizeData, ToleratesAHeaderBlockTooShortForTheTable) {
  Qis scene = scene_with_one_of_each();
  scene.header.block1.resize(8);
  const Words block = scene.header.block1;
  qiAdjustListSizeData(scene, 0, 4, 0x00260100);
  EXPECT_EQ(scene.header.block1, block);
}

TEST(Version, IsTheLowHalfOfTheVersionWord) {
  qi::Header header;
  header.fixed.version = 0xABCD0200;
  EXPECT_EQ(qiQUILver(header), 0x0200u);
}

TEST(SizeofQUIL1file, AddsHeaderAndListsWithoutWrapping) {
  qi::Header header;
  header.fixed.header_size = 136;
  header.fixed.list_num.fill(0xFFFFFFFF);
  EXPECT_EQ(qiSizeofQUIL1file(header), 136 + 19 * std::uint64_t{0xFFFFFFFF});
}

TEST(SizeofTeximg, IsWhatTheRecordSizeLeaves) {
  qi::List<qi::Teximg> list;
  list.records.resize(2);
  list.records[0].fixed = {qi::Teximg::kTag, 0, 24, 100, 8, 4};
  list.records[1].fixed = {qi::Teximg::kTag, 1, 24, 20, 0, 0};
  EXPECT_EQ(qiSizeofTeximg(list, 0), 64u);
  EXPECT_EQ(qiSizeofTeximg(list, 1), 0u) << "a size that is less than the fixed part";
  EXPECT_EQ(qiSizeofTeximg(list, 2), 0u) << "no such record";
}

TEST(CiTileNum, IsOneUnlessTheTextureIsTiled) {
  qi::Tex tex;
  tex.table.tiled.tile_count = 6;
  EXPECT_EQ(qiCiTileNum(tex), 1u);
  tex.fixed.tiled = 1;
  EXPECT_EQ(qiCiTileNum(tex), 6u);
}

struct PixelCase {
  const char* name;
  Word width, height, bits;
  std::uint64_t words;
};

class SizeofPixelIndexArray : public testing::TestWithParam<PixelCase> {};

TEST_P(SizeofPixelIndexArray, CountsWholeWords) {
  const PixelCase& c = GetParam();
  qi::CiImg image;
  image.fixed.width = c.width;
  image.fixed.height = c.height;
  image.fixed.index_bits = c.bits;
  EXPECT_EQ(qiSizeofPixelIndexArray(image), c.words);
}

INSTANTIATE_TEST_SUITE_P(Images, SizeofPixelIndexArray,
                         testing::Values(PixelCase{"FiveByThreeAtFourBits", 5, 3, 4, 2},
                                         PixelCase{"Empty", 0, 3, 4, 0}, PixelCase{"NoBits", 5, 3, 0, 0},
                                         PixelCase{"OneWord", 8, 1, 4, 1}, PixelCase{"OneMore", 9, 1, 4, 2},
                                         PixelCase{"AbsurdSizeSaturates", 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF,
                                                   std::numeric_limits<std::uint64_t>::max()}),
                         CaseName{});

}  // namespace
