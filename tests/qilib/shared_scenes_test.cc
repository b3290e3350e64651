/// @file
/// The scenes of tests/data open without a word and hold what their lists say.
#include "tests/support/shared_scenes.h"

#include <gmock/gmock.h>

#include "qilib/lists.h"
#include "qilib/names.h"
#include "qilib/opensave.h"
#include "qilib/sizes.h"
#include "tests/support/files.h"
#include "tests/support/told.h"

namespace {

class SharedScenes : public testing::TestWithParam<const char*> {
 protected:
  const SharedScene expected = shared_scene(GetParam());
};

TEST_P(SharedScenes, OpenWithNothingSaid) {
  Qis scene;
  Told told;
  EXPECT_EQ(qi::open_scene(expected.path, scene, told.sink()), 1);
  EXPECT_EQ(told.words(), "");
  EXPECT_EQ(scene.filename, expected.path);
  EXPECT_EQ(qiQUILver(scene.header), expected.version);
  EXPECT_EQ(scene.header.fixed.file_size, expected.bytes);
}

TEST_P(SharedScenes, HoldTheRecordsOfEachKind) {
  Qis scene;
  ASSERT_EQ(qiOpenQb(expected.path, scene), 1);
  std::map<std::string, std::size_t> counts;
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    const std::string kind(info.name.substr(0, info.name.size() - std::string("List").size()));
    if (kind != "Scene" && qi::record_count(list) != 0) counts[kind] = qi::record_count(list);
  });
  EXPECT_EQ(counts, expected.counts);
}

TEST_P(SharedScenes, HoldTheNames) {
  Qis scene;
  ASSERT_EQ(qiOpenQb(expected.path, scene), 1);
  std::vector<std::string> names;
  for (const qi::Name& name : scene.name_list.records) names.push_back(qiGetName(name));
  EXPECT_EQ(names, expected.names);
}

TEST_P(SharedScenes, ComeBackByteForByteInBothModes) {
  const ScratchDirectory scratch;
  for (const auto save : {qiSaveAsQb, qiSaveAsQb2}) {
    Qis scene;
    ASSERT_EQ(qiOpenQb(expected.path, scene), 1);
    ASSERT_EQ(save(scene, scratch / "saved.quil"), 1);
    EXPECT_EQ(scene.filename, scratch / "saved.quil");
    EXPECT_TRUE(read_file(scratch / "saved.quil") == read_file(expected.path));
  }
}

INSTANTIATE_TEST_SUITE_P(Files, SharedScenes, testing::ValuesIn(kSharedScenes),
                         [](const auto& row) { return std::string(row.param); });

}  // namespace
