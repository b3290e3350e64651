/// @file
/// Every record kind: in and out again in both modes, cut short at every byte, with every word spoilt.
#include "tests/qilib/kinds.h"

#include <gmock/gmock.h>

#include <set>

#include "qilib/checksizes.h"
#include "qilib/files.h"
#include "qilib/lists.h"
#include "qilib/opensave.h"
#include "qilib/reader.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/told.h"
#include "tests/support/written.h"

namespace {

/// The bytes as an open file that stands at its beginning.
qi::File file_of(const std::string& bytes) {
  qi::File file(std::tmpfile());
  EXPECT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), file.get()), bytes.size());
  std::rewind(file.get());
  return file;
}

class Kinds : public testing::TestWithParam<KindCase> {
 protected:
  /// Reads the case's list, and its structures if it has some, from the first bytes of a file.
  int read(std::FILE* file, std::uint32_t size) {
    std::rewind(file);
    scene_ = Qis{};
    told_ = {};
    return qi::read_list(file, size, scene_, GetParam().list, told_.sink()) &&
           (!GetParam().structure || setup_structures());
  }
  int setup_structures() {
    int result = 0;
    qi::for_each_list(scene_, [&]<class L>(const qi::ListInfo& info, L& list) {
      if (info.name != GetParam().list) return;
      if constexpr (requires { list.ext; }) result = qi::SetupExt<L>{info.name}(list, told_.sink());
      if constexpr (requires { list.records[0].ext; })
        result = qi::SetupExt<typename L::Record>{info.name}(list, told_.sink());
    });
    return result;
  }

  const ScratchDirectory scratch_;
  Qis scene_;
  Told told_;
};

TEST_P(Kinds, ComeBackByteForByteInBothModes) {
  const std::string bytes = kinds::file_with(GetParam()).bytes().str();
  write_file(scratch_ / "in.quil", bytes);
  for (const int mode : {1, 2}) {
    Qis scene;
    EXPECT_EQ(qi::open_scene(scratch_ / "in.quil", scene, told_.sink()), 1);
    EXPECT_EQ(qi::correct_sizes(scene, mode, told_.sink()), 0);
    EXPECT_TRUE(written(scene, mode) == bytes);
    EXPECT_EQ(told_.words(), "");
  }
}

TEST_P(Kinds, AreRefusedWhenCutAtAnyByte) {
  const qi::File file = file_of(GetParam().bytes.str());
  for (std::uint32_t size = 1; size < GetParam().bytes.size(); ++size) {
    SCOPED_TRACE(size);
    EXPECT_EQ(read(file.get(), size), 0);
    EXPECT_THAT(told_.words(), testing::MatchesRegex("[A-Za-z]*List: [^\n]*\n"));
  }
  EXPECT_EQ(read(file.get(), GetParam().bytes.size()), 1);
}

TEST_P(Kinds, AreRefusedWhenTheFileEndsBeforeThem) {
  const qi::File file = file_of(GetParam().bytes.str());
  EXPECT_EQ(read(file.get(), GetParam().bytes.size() + 4), 0);
  EXPECT_THAT(told_.words(), testing::StartsWith(GetParam().list + ": list of "));
}

TEST_P(Kinds, KeepWordsAfterTheirLastPiece) {
  KindCase longer = GetParam();
  longer.bytes.fill(2, 0x7A110000);
  const std::string bytes = kinds::file_with(longer).bytes().str();
  write_file(scratch_ / "in.quil", bytes);
  ASSERT_EQ(qiOpenQb(scratch_ / "in.quil", scene_), 1);
  EXPECT_TRUE(written(scene_, 2) == bytes);
}

TEST_P(Kinds, AreRefusedWithACountThatDoesNotFit) {
  for (const std::size_t offset : GetParam().bytes.counts())
    for (const Word count : {0xFFFFFFFFu, 0xFFFFFFFCu, 0x80000000u, 0x7FFFFFFCu, 0x40000000u, 0x10000000u}) {
      SCOPED_TRACE(testing::Message() << count << " at " << offset);
      const qi::File file = file_of(Bytes(GetParam().bytes).put(offset, count).str());
      EXPECT_EQ(read(file.get(), GetParam().bytes.size()), 0);
      EXPECT_THAT(told_.words(), testing::MatchesRegex("[A-Za-z]*List: [^\n]*\n"));
    }
}

TEST_P(Kinds, AreHarmlessWithAnyWordSpoilt) {
  FileBytes whole = kinds::file_with(GetParam());
  Bytes& list = GetParam().ext ? whole.ext[GetParam().entry] : whole.core[GetParam().entry];
  const Bytes good = list;
  for (std::size_t offset = 0; offset < good.size(); offset += 4) {
    const Word word = good.word_at(offset);
    std::set<Word> values{0u, 1u, 3u, word - 4, word - 1, word + 1, word + 4, ~word, 0x7FFFFFFFu};
    values.erase(word);
    for (const Word spoilt : values) {
      SCOPED_TRACE(testing::Message() << spoilt << " at " << offset);
      list = Bytes(good).put(offset, spoilt);
      write_file(scratch_ / "in.quil", whole.bytes().str());
      if (!qi::open_scene(scratch_ / "in.quil", scene_, ignore_message)) continue;
      qi::correct_sizes(scene_, 2, ignore_message);
      const std::string saved = written(scene_, 2);
      write_file(scratch_ / "out.quil", saved);
      Qis again;
      EXPECT_EQ(qi::open_scene(scratch_ / "out.quil", again, ignore_message), 1);
      EXPECT_TRUE(written(again, 2) == saved);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Each, Kinds, testing::ValuesIn(kinds::all()), CaseName{});

}  // namespace
