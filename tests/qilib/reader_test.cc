/// @file
/// The steps of reading one by one: tags, arrays, blocks, pairs, fixed parts, absent and unknown lists.
#include "qilib/reader.h"

#include <gmock/gmock.h>

#include "qilib/files.h"
#include "qilib/forwards.h"
#include "tests/qilib/kinds.h"
#include "tests/support/case_name.h"
#include "tests/support/told.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

/// The bytes as an open file that stands at its beginning.
qi::File file_of(const Bytes& bytes) {
  qi::File file(std::tmpfile());
  EXPECT_EQ(std::fwrite(bytes.str().data(), 1, bytes.size(), file.get()), bytes.size());
  std::rewind(file.get());
  return file;
}

TEST(Tag, IsComparedAndBothArePrinted) {
  CaptureStderr();
  EXPECT_EQ(qiCheckTag(0x20100, 0x20100), 1);
  EXPECT_EQ(qiCheckTag(0x20100, 0x30100), 0);
  EXPECT_EQ(qiCheckTag(0, 0xFFFFFFFF), 0);
  EXPECT_EQ(GetCapturedStderr(),
            "irregular tag ! 0x00020100 != 0x00030100\n"
            "irregular tag ! 0000000000 != 0xffffffff\n");
}

class Steps : public testing::Test {
 protected:
  const Words words_{1, 2, 3, 4, 5, 6};
  qi::ListCursor cursor_{words_};
};

TEST_F(Steps, AnArrayIsCopiedAndTheCursorMovesAfterIt) {
  Words array{9};
  EXPECT_EQ(qiReadArray(cursor_, array, 2), 1);
  EXPECT_THAT(array, ElementsAre(1, 2));
  EXPECT_EQ(qiSetupArray(cursor_, array, 0), 1);
  EXPECT_THAT(array, IsEmpty());
  EXPECT_EQ(qiSetupArray(cursor_, array, 4), 1);
  EXPECT_THAT(array, ElementsAre(3, 4, 5, 6));
  EXPECT_EQ(cursor_.left(), 0u);
}

TEST_F(Steps, AnArrayLongerThanWhatIsLeftIsRefusedAndSoIsEverythingAfterIt) {
  Words array{9};
  EXPECT_EQ(qiReadArray(cursor_, array, 7), 0);
  EXPECT_THAT(array, IsEmpty());
  EXPECT_EQ(qiReadArray(cursor_, array, 1), 0);
  EXPECT_EQ(cursor_.left(), 6u);
}

TEST_F(Steps, BlocksAreSizedInBytes) {
  Words block1, block2;
  EXPECT_EQ(qiReadExtBlk1(cursor_, block1, 8, block2, 4), 1);
  EXPECT_THAT(block1, ElementsAre(1, 2));
  EXPECT_THAT(block2, ElementsAre(3));
  EXPECT_EQ(qiSetupExtBlk1(cursor_, block1, 0, block2, 12), 1);
  EXPECT_THAT(block1, IsEmpty());
  EXPECT_THAT(block2, ElementsAre(4, 5, 6));
}

TEST_F(Steps, TheSecondBlockIsReadOnlyIfTheFirstCouldBeHad) {
  Words block1, block2{7};
  EXPECT_EQ(qiReadExtBlk1(cursor_, block1, 28, block2, 4), 0);
  EXPECT_THAT(block2, ElementsAre(7));
}

TEST_F(Steps, PairsAreFirstHalvesThenSecondHalves) {
  std::vector<QisExternal> pairs;
  EXPECT_EQ(qiSetupExternal(cursor_, pairs, 3), 1);
  EXPECT_THAT(pairs, ElementsAre(QisExternal{1, 4}, QisExternal{2, 5}, QisExternal{3, 6}));
  EXPECT_EQ(qiSetupExternal(cursor_, pairs, 0), 1);
  EXPECT_THAT(pairs, IsEmpty());
  EXPECT_EQ(qiSetupExternal(cursor_, pairs, 1), 0);
}

TEST(References, ToNothingHoldMinusOneTwice) {
  QisExternal reference{3, 4};
  qiSetNoExternal(reference);
  EXPECT_EQ(reference, (QisExternal{0xFFFFFFFF, 0xFFFFFFFF}));
}

TEST(PolygonEntries, TakeFiveWords) {
  QisPoly poly;
  qiSetPoly(poly, 1, 2, 3, 4, 5);
  EXPECT_EQ(poly, (QisPoly{{1, 2, 3, 4, 5}}));
}

struct LengthCase {
  const char* name;
  const char* list;
  Bytes bytes;
  std::size_t length_at;  ///< where a fixed part states its length, which is right in `bytes`
  Word length;            ///< too short, or too long where it must be just so
  std::string said;
};

class FixedPart : public testing::TestWithParam<LengthCase> {};

TEST_P(FixedPart, OfAWrongLengthFailsTheList) {
  const LengthCase& c = GetParam();
  const qi::File file = file_of(Bytes(c.bytes).put(c.length_at, c.length));
  Qis scene;
  Told told;
  EXPECT_EQ(qi::read_list(file.get(), c.bytes.size(), scene, c.list, told.sink()), 0);
  EXPECT_EQ(told.words(), c.said);
}

// In a list of two the first record stands at 32; the sub-records of a collision 40 bytes into it.
INSTANTIATE_TEST_SUITE_P(
    Each, FixedPart,
    testing::Values(LengthCase{"Scene", "SceneList", kinds::scene(), 4, 40,
                               "SceneList: fixed part of 40 bytes, expected 44\n"},
                    LengthCase{"Tri", "TriList", kinds::list_of_two(0x00080000, kinds::tri), 32 + 8, 28,
                               "TriList: record 0: fixed part of 28 bytes, expected 32\n"},
                    LengthCase{"Tex", "TexList", kinds::list_of_two(0x000b0000, kinds::untiled_tex), 32 + 8,
                               0, "TexList: record 0: fixed part of 0 bytes, expected 52\n"},
                    LengthCase{"Anim", "AnimList", kinds::list_of_two(0x000c0000, kinds::anim<0, 52>), 32 + 8,
                               44, "AnimList: record 0: fixed part of 44 bytes, expected 48\n"},
                    LengthCase{"CollisionSubRecord", "CollList", kinds::list_of_two(0x000d0000, kinds::coll),
                               32 + 40 + 8, 12, "CollList: record 0: fixed part of 12 bytes, expected 16\n"},
                    LengthCase{"ShortTeximg", "TeximgList", kinds::list_of_two(0x00120000, kinds::teximg),
                               32 + 8, 20, "TeximgList: record 0: fixed part of 20 bytes, expected 24\n"},
                    LengthCase{"LongTeximg", "TeximgList", kinds::list_of_two(0x00120000, kinds::teximg),
                               32 + 8, 28, "TeximgList: record 0: fixed part of 28 bytes, expected 24\n"},
                    LengthCase{"ShortName", "NameList",
                               kinds::list_of_two(0x00110000, kinds::name<0x00110100>), 32 + 8, 12,
                               "NameList: record 0: fixed part of 12 bytes, expected 16\n"},
                    LengthCase{"LongName", "NameList",
                               kinds::list_of_two(0x00110000, kinds::name<0x00110100>), 32 + 8, 20,
                               "NameList: record 0: fixed part of 20 bytes, expected 16\n"},
                    LengthCase{"NoWholeWords", "TriList", kinds::list_of_two(0x00080000, kinds::tri), 32 + 8,
                               34, "TriList: record 0: fixed part of 2 bytes is no whole number of words\n"}),
    CaseName{});

TEST(ReadList, AnAbsentCoreListStaysAsItWas) {
  const qi::File file = file_of(Bytes{}.fill(2));
  Qis scene;
  scene.env_list.records.resize(2);
  EXPECT_EQ(qiReadList(file.get(), 0, scene, "EnvList"), 1);
  EXPECT_EQ(scene.env_list.records.size(), 2u);
  EXPECT_EQ(std::ftell(file.get()), 0);
}

TEST(ReadList, AListThatNobodyKnowsIsRefused) {
  const qi::File file = file_of(Bytes{}.fill(2));
  Qis scene;
  EXPECT_EQ(qiReadList(file.get(), 8, scene, "ObjectList"), 0);
  EXPECT_EQ(qiReadList(file.get(), 0, scene, ""), 0);
}

}  // namespace
