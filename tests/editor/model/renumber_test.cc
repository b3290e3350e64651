/// @file
/// Records that go and come: what refers to what stays as it was, on scenes with random copies and
/// references.
#include "qilib/renumber.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "editor/model/nodenames.h"
#include "editor/model/recordnames.h"
#include "editor/model/scenegraph.h"
#include "editor/model/textureimage.h"
#include "qilib/change.h"
#include "qilib/checksizes.h"
#include "qilib/edit.h"
#include "qilib/opensave.h"
#include "qilib/references.h"
#include "tests/support/files.h"
#include "tests/support/shared_scenes.h"
#include "tests/support/told.h"
#include "tests/support/written.h"

namespace {

using qi::RecordId;
using testing::IsEmpty;

constexpr Word kRenumbered[] = {qi::kMatTag,     qi::kTexTag,  qi::Teximg::kTag,
                                qi::CiImg::kTag, qi::kAnimTag, qi::ColorPalette::kTag};

/// Makes copies of records, and has references lead to any of them.
class Mixer {
 public:
  explicit Mixer(unsigned seed) : random_(seed) {}

  void mix(Qis& scene) {
    for (int i = 0; i < 25; ++i) {
      const Word kind = kRenumbered[below(std::size(kRenumbered))];
      if (const std::size_t count = qi::record_count(scene, kind); count != 0 && below(3) != 0) {
        EXPECT_TRUE(qi::copy_record(scene, {kind, static_cast<Word>(below(count))}));
        ++copies;
      }
      redirect(scene);
    }
  }
  int copies = 0;

 private:
  std::size_t below(std::size_t n) { return random_() % n; }
  Word any(const Qis& scene, Word tag) { return static_cast<Word>(below(qi::record_count(scene, tag))); }

  void redirect(Qis& scene) {
    const qi::Reference& row = qi::references()[below(qi::references().size())];
    const bool there = qi::record_count(scene, row.parent) != 0 && qi::record_count(scene, row.child) != 0;
    if (qi::is_renumberable(row.child) && there) {
      const Word parent = any(scene, row.parent);
      if (const auto place = row.place(scene, parent); place.slot)
        *place.slot = any(scene, row.child);
      else if (place.entries && !place.entries->empty())
        (*place.entries)[below(place.entries->size())] = any(scene, row.child);
    }
    if (scene.tex_list.records.empty()) return;
    qi::Tex& tex = scene.tex_list.records[any(scene, qi::kTexTag)];
    const bool indexed = tex.ext && tex.ext->head.color_palette == 1;
    const Word images = indexed ? qi::CiImg::kTag : qi::Teximg::kTag;
    Word& image = tex.fixed.tiled == 0 ? tex.table.untiled.image : tex.table.images[0];
    if (qi::record_count(scene, images) != 0) image = any(scene, images);
    if (indexed) tex.ext->palettes[0] = any(scene, qi::ColorPalette::kTag);
    for (qi::Env& env : scene.env_list.records) env.fixed.bg_color_image = any(scene, qi::kTexTag);
  }

  std::mt19937 random_;
};

/// What scene_0 leads to, with the nodes of each kind numbered as they come. Objects, shapes and the like
/// keep their own numbers. Of textures, the images are part of it.
class Reached {
 public:
  /// @param as  another record that counts for a record
  explicit Reached(Qis& scene, const std::map<std::string, std::string>& as = {}) {
    const SceneGraph graph = scene_graph(scene);
    std::map<std::string, std::vector<std::string>> children;
    const auto known = [&](const std::string& name) { return as.contains(name) ? as.at(name) : name; };
    for (const auto& arc : graph.arcs)
      if (!as.contains(graph.nodes[arc.parent].name))
        children[graph.nodes[arc.parent].name].push_back(known(graph.nodes[arc.child].name));
    std::vector<std::string> left{"scene_0"};
    std::set<std::string> seen{"scene_0"};
    for (std::size_t i = 0; i < left.size(); ++i) {
      text += number(left[i]) + " " + record_name(scene, left[i]) + image(scene, left[i]) + ":";
      for (const std::string& child : children[left[i]]) {
        text += " " + number(child);
        if (seen.insert(child).second) left.push_back(child);
      }
      text += "\n";
    }
    for (const qi::Env& env : scene.env_list.records) {
      const std::string background = node_name(qi::kTexTag, env.fixed.bg_color_image);
      text += "background" + image(scene, known(background)) + record_name(scene, known(background)) + "\n";
    }
  }

  std::string text;

 private:
  std::string number(const std::string& node) {
    const Word tag = tagofnd(node);
    if (!qi::is_renumberable(tag)) return node;
    return std::to_string(tag) + "#" +
           std::to_string(numbers_[tag].try_emplace(node, numbers_[tag].size()).first->second);
  }
  static std::string image(const Qis& scene, const std::string& node) {
    if (tagofnd(node) != qi::kTexTag) return {};
    std::string all;
    for (std::size_t tile = 0; tile < texture_images(scene, static_cast<Word>(indexofnd(node))); ++tile) {
      TextureImage image;
      const std::string problem = take_texture_image(scene, static_cast<Word>(indexofnd(node)), tile, image);
      std::size_t hash = problem.empty() ? image.texels.size() : 1;
      for (const Rgba& texel : image.texels)
        for (const std::uint8_t value : texel) hash = hash * 31 + value;
      all += " " + std::to_string(hash);
    }
    return all;
  }

  std::map<Word, std::map<std::string, std::size_t>> numbers_;
};

class Renumbering : public testing::TestWithParam<const char*> {
 protected:
  /// A sample scene with copies and references that the seed makes up.
  static Qis mixed(unsigned seed, int* copies = nullptr) {
    Qis scene;
    EXPECT_EQ(qiOpenQb(shared_scene(GetParam()).path, scene), 1);
    Mixer mixer(seed);
    mixer.mix(scene);
    if (copies) *copies = mixer.copies;
    return scene;
  }
  /// The sizes agree with the contents, and the file opens with the same ones.
  static void expect_sound(Qis& scene) {
    Told told;
    EXPECT_EQ(qi::correct_sizes(scene, 2, told.sink()), 0) << told.words();
    const ScratchDirectory scratch;
    ASSERT_EQ(qiSaveAsQb2(scene, scratch / "saved.quil"), 1);
    Qis again;
    ASSERT_EQ(qiOpenQb(scratch / "saved.quil", again), 1);
    EXPECT_TRUE(written(again, 2) == written(scene, 2));
    for (const Word kind : kRenumbered)
      EXPECT_EQ(qi::record_count(again, kind), qi::record_count(scene, kind)) << kind;
  }
};
INSTANTIATE_TEST_SUITE_P(Scenes, Renumbering, testing::Values("robot", "skeleton", "tiny_v2"),
                         [](const auto& name) { return std::string(name.param); });

constexpr unsigned kSeeds = 25;

TEST_P(Renumbering, WhatIsUnusedGoesAndTheRestStaysConnected) {
  std::size_t gone = 0;
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    Qis scene = mixed(seed);
    expect_sound(scene);
    const std::string before = Reached(scene).text;
    const auto unused = qi::unused_records(scene);
    gone += unused.size();
    qi::remove_records(scene, unused);
    EXPECT_EQ(Reached(scene).text, before);
    EXPECT_THAT(qi::unused_records(scene), IsEmpty());
    expect_sound(scene);
    if (HasFailure()) return;
  }
  EXPECT_GT(gone, kSeeds);
}

TEST_P(Renumbering, WhatIsEqualBecomesOne) {
  std::size_t joined_in_all = 0;
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    Qis scene = mixed(seed);
    const Qis original = scene;
    const auto joined = qi::join_equal_records(scene, true);
    std::map<std::string, std::string> as;
    for (const auto& [record, kept] : joined) as[to_string(record)] = to_string(kept);
    Qis copy = original;
    const std::string before = Reached(copy, as).text;
    EXPECT_EQ(Reached(scene).text, before);
    std::vector<RecordId> records;
    for (const auto& equal : joined) records.push_back(equal.record);
    for (const RecordId& record : records) EXPECT_FALSE(qi::referrer_of(scene, record)) << to_string(record);
    joined_in_all += joined.size();
    qi::remove_records(scene, records);
    EXPECT_EQ(Reached(scene).text, before);
    EXPECT_THAT(qi::join_equal_records(scene, true), IsEmpty());
    expect_sound(scene);
    if (HasFailure()) return;
  }
  EXPECT_GT(joined_in_all, kSeeds);
}

TEST_P(Renumbering, CanBeTakenBackAndMadeAgain) {
  for (unsigned seed = 0; seed < kSeeds; ++seed) {
    SCOPED_TRACE(seed);
    Qis scene = mixed(seed);
    const std::string before = written(scene, 2);
    qi::Recording recording(scene);
    std::vector<RecordId> records;
    for (const auto& equal : qi::join_equal_records(scene, true)) records.push_back(equal.record);
    qi::remove_records(scene, records);
    qi::remove_records(scene, qi::unused_records(scene));
    if (seed % 2 == 0 && qi::record_count(scene, qi::kMatTag) != 0) qi::copy_record(scene, {qi::kMatTag, 0});
    const qi::Change change = recording.finish();
    const std::string after = written(scene, 2);
    change.undo(scene);
    EXPECT_TRUE(written(scene, 2) == before);
    change.redo(scene);
    EXPECT_TRUE(written(scene, 2) == after);
    if (HasFailure()) return;
  }
}

Qis opened(const char* name) {
  Qis scene;
  EXPECT_EQ(qiOpenQb(shared_scene(name).path, scene), 1);
  return scene;
}

TEST(EqualRecords, HaveTheSameNames) {
  Qis scene = opened("robot");
  const Word copy = *qi::copy_record(scene, {qi::kMatTag, 1});
  EXPECT_EQ(copy, 6u);
  EXPECT_THAT(qi::join_equal_records(scene, false), IsEmpty()) << "the copy has none";
  // Another name with the same text is the same name.
  Word text = kUnset;
  text = set_node_name(scene, get_name_string(scene, scene.mat_list.records[1].fixed.name), text);
  scene.mat_list.records[copy].fixed.name = text;
  const auto joined = qi::join_equal_records(scene, false);
  ASSERT_EQ(joined.size(), 1u);
  EXPECT_EQ(to_string(joined[0].record), "mat_6");
  EXPECT_EQ(to_string(joined[0].kept), "mat_1");
}

TEST(EqualRecords, OfTexturesOfOneMaterialStayTwo) {
  Qis scene = opened("robot");
  const Word copy = *qi::copy_record(scene, {qi::kTexTag, 0});
  ASSERT_EQ(scene.mat_list.records[0].texs.size(), 1u);
  ASSERT_EQ(qi::add_reference(scene, *qi::find_reference(qi::kMatTag, qi::kTexTag), 0, copy), 1);
  EXPECT_THAT(qi::join_equal_records(scene, true), IsEmpty());
  EXPECT_EQ(scene.mat_list.records[0].texs[1], copy);
}

TEST(RemovedRecords, TakeTheSizesThatTheFileStatedOtherwiseWithThem) {
  Qis odd = opened("robot");
  odd.anim_list.records[4].fixed.size += 8;  // which nothing reads
  odd.anim_list.records[1].fixed.size += 12;
  const ScratchDirectory scratch;
  ASSERT_EQ(qiSaveAsQb2(odd, scratch / "odd.quil"), 1);
  Qis scene;
  ASSERT_EQ(qiOpenQb(scratch / "odd.quil", scene), 1);
  ASSERT_EQ(scene.carried_sizes.size(), 2u);
  for (const qi::Reference& row : qi::references()) {
    if (row.child != qi::kAnimTag) continue;
    for (Word i = 0; i < qi::record_count(scene, row.parent); ++i)
      if (const auto place = row.place(scene, i); *place.slot == 1) *place.slot = kUnset;
  }
  const RecordId gone{qi::kAnimTag, 1};
  qi::remove_records(scene, {&gone, 1});
  EXPECT_EQ(scene.carried_sizes.size(), 1u);
  Told told;
  EXPECT_EQ(qi::correct_sizes(scene, 2, told.sink()), 0) << told.words();
}

TEST(RemovedRecords, AreGoneFromASaveInMode1Too) {
  Qis made = opened("skeleton");
  made.tex_list.records[0].ext->palettes[0] = 1;
  const ScratchDirectory scratch;
  ASSERT_EQ(qiSaveAsQb2(made, scratch / "made.quil"), 1);
  Qis scene;
  ASSERT_EQ(qiOpenQb(scratch / "made.quil", scene), 1);
  ASSERT_TRUE(written(scene, 1) == written(scene, 2));
  const auto unused = qi::unused_records(scene);
  ASSERT_EQ(unused.size(), 1u);
  EXPECT_EQ(to_string(unused[0]), "palette_0");
  qi::remove_records(scene, unused);
  EXPECT_EQ(scene.tex_list.records[2].ext->palettes[0], 1u);
  EXPECT_TRUE(written(scene, 1) == written(scene, 2));
}

TEST(RecordIds, AreNamedByTheLists) {
  EXPECT_EQ(qi::find_record("teximg_3"), (RecordId{0x120100, 3}));
  EXPECT_EQ(to_string(RecordId{0x210100, 7}), "palette_7");
  for (const char* name : {"teximg", "teximg_", "teximg_x", "teximg_03", "lod_1", "_1", ""})
    EXPECT_FALSE(qi::find_record(name)) << name;
}

TEST(CopiedRecords, AreOfTheseKindsAlone) {
  Qis scene = opened("robot");
  const std::string before = written(scene, 2);
  for (const Word tag : {qi::kObjTag, qi::kShapeTag, qi::kNameTag, qi::kSceneTag, qi::kJointTag}) {
    EXPECT_FALSE(qi::copy_record(scene, {tag, 0}));
    const RecordId record{tag, 0};
    qi::remove_records(scene, {&record, 1});
  }
  EXPECT_FALSE(qi::copy_record(scene, {qi::kMatTag, 6}));
  EXPECT_TRUE(written(scene, 2) == before);
}

}  // namespace
