/// @file
/// Sizes that are not what a save writes are found, corrected and reported; then the file opens again.
#include "qilib/checksizes.h"

#include <gmock/gmock.h>

#include "qilib/forwards.h"
#include "qilib/lists.h"
#include "qilib/listwalk.h"
#include "qilib/opensave.h"
#include "tests/qilib/kinds.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/shared_scenes.h"
#include "tests/support/told.h"
#include "tests/support/written.h"

namespace {

class CheckSizes : public testing::Test {
 protected:
  void open(const std::string& bytes) {
    write_file(scratch_ / "scene.quil", bytes);
    Told told;
    EXPECT_EQ(qi::open_scene(scratch_ / "scene.quil", scene_, told.sink()), 1);
    EXPECT_EQ(told.words(), "");
  }
  void open_robot() { ASSERT_EQ(qiOpenQb(shared_scene("robot").path, scene_), 1); }
  void open_skeleton() { ASSERT_EQ(qiOpenQb(shared_scene("skeleton").path, scene_), 1); }
  int check(int mode) {
    told_ = {};
    const int corrected = qi::correct_sizes(scene_, mode, told_.sink());
    EXPECT_EQ(told_.messages.size(), static_cast<std::size_t>(corrected));
    return corrected;
  }
  /// Saves in that mode and opens what was saved; nothing may be said, and no size is left to correct.
  void reopen(int mode) {
    open(written(scene_, mode));
    EXPECT_EQ(check(mode), 0);
  }

  const ScratchDirectory scratch_;
  Qis scene_;
  Told told_;
};

TEST_F(CheckSizes, SaysNothingOfAGoodScene) {
  for (const char* name : kSharedScenes) {
    ASSERT_EQ(qiOpenQb(shared_scene(name).path, scene_), 1);
    for (const int mode : {1, 2}) EXPECT_EQ(check(mode), 0) << name;
  }
}

TEST_F(CheckSizes, CorrectsARepeatedTexture) {
  open_robot();
  ASSERT_EQ(scene_.mat_list.records[0].texs, Words{0});
  ASSERT_EQ(qiAddMat_Tex(scene_, 0, 0), 1);
  EXPECT_EQ(check(2), 5);
  EXPECT_THAT(told_.words(), testing::HasSubstr("MatList: record 0: size "));
  EXPECT_THAT(told_.words(), testing::HasSubstr("MatList: record 0: size in the size table "));
  EXPECT_THAT(told_.words(), testing::HasSubstr("MatList: size "));
  EXPECT_THAT(told_.words(), testing::HasSubstr("MatList: size in the directory "));
  EXPECT_THAT(told_.words(), testing::HasSubstr("FileHeader: file_size 46832 corrected to 46828\n"));
  EXPECT_TRUE(written(scene_, 2) == read_file(shared_scene("robot").path));
}

TEST_F(CheckSizes, CorrectsAHeaderBlockThatMode2CutsToTheTable) {
  FileBytes file;
  file.version = 0x0200;
  file.core[0] = kinds::scene2();
  file.block1_tail.u32(0xAB);
  open(file.bytes().str());
  EXPECT_EQ(check(1), 0);
  const Word file_size = scene_.header.fixed.file_size;
  EXPECT_EQ(check(2), 3);
  EXPECT_EQ(told_.words(),
            "FileHeader: ext_block1_size 40 corrected to 36\n"
            "FileHeader: header_size 140 corrected to 136\n"
            "FileHeader: file_size " +
                std::to_string(file_size) + " corrected to " + std::to_string(file_size - 4) + "\n");
  reopen(2);
}

TEST_F(CheckSizes, RoundsNamesUp) {
  FileBytes file;
  file.core[0] = kinds::scene();
  Bytes& list = file.core[18];  // the first name's length is no whole number of words: rounded down
  list.u32s({0x00110000, 0, 24 + 8 + 40, 2, 0, 0, 23, 20});
  list.u32s({0x00110100, 0, 16, 16 + 7}).text("seve").u32s({0x00110100, 1, 16, 20}).text("four");
  open(file.bytes().str());
  EXPECT_EQ(check(2), 5);
  EXPECT_EQ(scene_.name_list.records[0].fixed.size, 24u);
  reopen(2);
  EXPECT_EQ(scene_.name_list.records[0].text, (Words{0x73657665, 0}));
  EXPECT_EQ(scene_.name_list.records[1].text, Words{0x666F7572});
}

/// Every size word of the scene wrong: what is saved after the check is what it was before.
TEST_F(CheckSizes, PutsEverySizeRight) {
  for (const int mode : {1, 2}) {
    open_skeleton();
    const std::string good = written(scene_, mode);
    scene_.header.fixed.file_size += 4;
    scene_.header.fixed.header_size = 0;
    scene_.scene.fixed.size ^= 8;
    scene_.header.fixed.list_num[0] = 1;
    scene_.obj_list.header.size = 0xFFFFFFFF;
    scene_.obj_list.sizes[1] = 3;
    scene_.obj_list.records[2].fixed.size = 0;
    scene_.header.ext_sizes[2] += 4;
    scene_.header.block1[3] += 4;
    scene_.ext.envelope_list.records[0].fixed.size -= 4;
    scene_.ext.envelope_list.records[0].weighted[0].fixed.size = 7;
    scene_.ext.envelope_list.records[0].morphs[0].fixed.size = 7;
    scene_.ext.envelope_list.records[0].full_weighted[0].fixed.size = 7;
    EXPECT_EQ(check(mode), 13);
    EXPECT_THAT(told_.words(),
                testing::HasSubstr("EnvelopeList: record 0: morph part 0: size 7 corrected to "));
    EXPECT_TRUE(written(scene_, mode) == good) << "mode " << mode;
  }
}

/// A size of every sort wrong in a list of each kind.
class CheckSizesOf : public CheckSizes, public testing::WithParamInterface<KindCase> {
 protected:
  void spoil() {
    qi::for_each_list(scene_, [this]<class L>(const qi::ListInfo& info, L& list) {
      if (info.name != GetParam().list) return;
      qi::list_bytes(scene_.header, info) += 12;
      if constexpr (requires { list.header.size; }) list.header.size ^= 0x40;
      if constexpr (requires { list.sizes; })
        for (Word& size : list.sizes) size += 4;
      if constexpr (qi::TwoKinds<L>) {
        list.sizes1.at(0) = 0;
        list.sizes2.at(1) = 0xFFFFFFFF;
      }
      qi::for_each_record(list, []<class R>(std::size_t, R& record) {
        // Of an image and of a name, the record's size says how much data there is.
        constexpr bool kCounts = std::same_as<R, qi::Teximg> || std::same_as<R, qi::Name>;
        if constexpr (!kCounts && requires { record.fixed.size; }) record.fixed.size ^= 8;
      });
    });
    scene_.header.fixed.header_size += 4;
    scene_.header.fixed.file_size = 0;
  }
  /// Sets every size word that nothing reads to something else, each to another.
  void state_otherwise() {
    Word odd = 1;
    const auto state = [&odd](Word& size) { size = odd += 0x10000001; };
    qi::for_each_list(scene_, [&]<class L>(const qi::ListInfo& info, L& list) {
      if (info.name != GetParam().list) return;
      if constexpr (requires { list.header.size; }) state(list.header.size);
      if constexpr (requires { list.sizes; }) std::ranges::for_each(list.sizes, state);
      if constexpr (qi::TwoKinds<L>) {
        std::ranges::for_each(list.sizes1, state);
        std::ranges::for_each(list.sizes2, state);
      }
      qi::for_each_record(list, [&]<class R>(std::size_t, R& record) {
        if constexpr (requires { record.fixed.word2; }) state(record.fixed.word2);
        if constexpr (std::same_as<R, qi::Envelope>) {
          for (auto& part : record.full_weighted) state(part.fixed.size);
          for (auto& part : record.weighted) state(part.fixed.size);
          for (auto& part : record.morphs) state(part.fixed.size);
        }
        constexpr bool kCounts = std::same_as<R, qi::Teximg> || std::same_as<R, qi::Name>;
        if constexpr (!kCounts && requires { record.fixed.size; }) state(record.fixed.size);
      });
    });
  }
};

TEST_P(CheckSizesOf, EachKindPutsThemRightInBothModes) {
  const std::string good = kinds::file_with(GetParam()).bytes().str();
  for (const int mode : {1, 2}) {
    open(good);
    spoil();
    EXPECT_GE(check(mode), 4);
    EXPECT_TRUE(written(scene_, mode) == good) << "mode " << mode;
    EXPECT_EQ(check(mode), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Each, CheckSizesOf, testing::ValuesIn(kinds::all()), CaseName{});

/// A file that states, in every word that nothing reads, something other than what the contents take.
TEST_P(CheckSizesOf, EachKindCarriesWhatTheFileStates) {
  open(kinds::file_with(GetParam()).bytes().str());
  state_otherwise();
  const std::string odd = written(scene_, 1);
  for (const int mode : {1, 2}) {
    open(odd);
    EXPECT_EQ(check(mode), 0);
    EXPECT_TRUE(written(scene_, mode) == odd) << "mode " << mode;
  }
}

TEST_F(CheckSizes, AnEditAddsToWhatIsCarried) {
  open_robot();
  scene_.obj_list.records[2].fixed.size = 7;
  scene_.obj_list.sizes[2] = 0;
  scene_.obj_list.header.size = 0xFFFFFFF0;
  const std::string odd = written(scene_, 1);
  for (const int mode : {1, 2}) {
    open(odd);
    ASSERT_EQ(qiAddObj_Obj(scene_, 2, 17), 1);
    EXPECT_EQ(check(mode), 0);
    EXPECT_EQ(scene_.obj_list.records[2].fixed.size, 11u);
    EXPECT_EQ(scene_.obj_list.sizes[2], 4u);
    EXPECT_EQ(scene_.obj_list.header.size, 0xFFFFFFF4);
    reopen(mode);
    EXPECT_EQ(scene_.obj_list.records[2].fixed.size, 11u);
  }
}

/// What an edit made wrong goes back to the difference that the file had.
TEST_F(CheckSizes, ARepeatedTextureIsTakenOutOfWhatIsCarried) {
  open_robot();
  scene_.mat_list.records[0].fixed.size += 100;
  const std::string odd = written(scene_, 1);
  open(odd);
  ASSERT_EQ(qiAddMat_Tex(scene_, 0, 0), 1);
  EXPECT_EQ(check(2), 5);
  EXPECT_TRUE(written(scene_, 2) == odd);
}

TEST_F(CheckSizes, TellsWhatIsCarriedAsAHint) {
  open_robot();
  const Word bytes = scene_.obj_list.records[2].fixed.size;
  scene_.obj_list.records[2].fixed.size = 7;
  open(written(scene_, 1));
  Told told;
  qi::tell_carried_sizes(scene_, told.sink());
  EXPECT_EQ(told.words(), "ObjList: record 2: size is 7, the contents take " + std::to_string(bytes) + "\n");
  EXPECT_EQ(qi::severity_of(told.messages.at(0).code), qi::Severity::hint);
}

TEST_F(CheckSizes, FollowsAStructureWhoseLengthNobodyAdded) {
  for (const int mode : {2, 1}) {
    open_skeleton();
    qi::Obj& obj = scene_.obj_list.records[0];
    if (mode == 1) obj.fixed.block1_size += 4;  // in mode 1 the structure is written once the length differs
    obj.ext->chain_roots.push_back(1);
    obj.ext->chain_roots.push_back(0);
    obj.ext->head.chain_root_count += 2;
    EXPECT_GT(check(mode), 0);
    reopen(mode);
    EXPECT_GE(scene_.obj_list.records[0].ext->chain_roots.size(), 2u);
  }
}

TEST_F(CheckSizes, KeepsTheTexelsOfAnImageWhoseStructureGrew) {
  open_skeleton();
  qi::Teximg& image = scene_.teximg_list.records[0];
  const auto texels = image.texels;
  image.ext->words.push_back(1);
  image.ext->head.count += 1;
  EXPECT_GT(check(2), 0);
  reopen(2);
  EXPECT_EQ(scene_.teximg_list.records[0].texels, texels);
}

TEST_F(CheckSizes, LeavesAbsentListsAbsent) {
  open(kinds::file_with(kinds::all()[0]).bytes().str());
  scene_.obj_list.header.size = 24;
  EXPECT_EQ(check(2), 0);
  EXPECT_EQ(scene_.header.fixed.list_num[4], 0u);
}

}  // namespace
