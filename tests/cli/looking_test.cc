/// @file
/// Looking at all of a scene: `show --all`, patterns of nodes, `dump` and `tree`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "qilib/checksizes.h"
#include "qilib/checksum.h"
#include "qilib/opensave.h"
#include "qilib/references.h"
#include "tests/cli/quilscene_run.h"
#include "tests/support/builtscene.h"

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream all{text};
  for (std::string line; std::getline(all, line);) lines.push_back(line);
  return lines;
}

/// What is printed of each of several files, after its name.
std::map<std::string, std::string> by_file(const std::string& text) {
  std::map<std::string, std::string> texts;
  std::string* current = nullptr;
  for (const std::string& line : lines_of(text)) {
    if (line.starts_with("==> ")) {
      current = &texts[line];
    } else if (current) {
      *current += line + "\n";
    }
  }
  return texts;
}

class Looking : public Quilscene {
 protected:
  /// A scene as "scene.quil", whose objects each have the next one as their child.
  void put_chain(Word objs) const {
    auto scene = built_version1_scene(objs);
    scene->scene.objs = {0};
    scene->scene.fixed.obj_count = 1;
    for (Word i = 0; i + 1 < objs; ++i) {
      scene->obj_list.records[i].children = {i + 1};
      scene->obj_list.records[i].fixed.child_count = 1;
    }
    qi::correct_sizes(*scene, 2, [](const qi::Message&) {});
    ASSERT_EQ(qiSaveAsQb2(*scene, scratch_ / "scene.quil"), 1);
  }
};

// show

TEST_F(Looking, APatternNamesEveryRecordThatFits) {
  const std::string robot = scene_path("robot");
  std::string all;
  for (int i = 0; i < 6; ++i) all += " mat_" + std::to_string(i);
  EXPECT_EQ(run("show " + robot + " 'mat_*'").out, run("show " + robot + all).out);
  EXPECT_EQ(run("show " + robot + " 'cam_[1]' 'ob?_17'").out, run("show " + robot + " cam_1 obj_17").out)
      << "also those that the graph doesn't have";
  const Ran none = run("show " + robot + " 'mad_*'");
  EXPECT_EQ(none.status, 1);
  EXPECT_THAT(none.err, HasSubstr("no such node: mad_*"));
}

TEST_F(Looking, AllShowsEveryNodeRecordAndArc) {
  for (const char* name : kSharedScenes) {
    const SharedScene facts = shared_scene(name);
    const Ran ran = run("show --all " + facts.path);
    EXPECT_EQ(ran.status, 0);
    EXPECT_THAT(ran.err, IsEmpty());
    const std::string text = "\n" + ran.out;
    for (const std::string& node : facts.nodes) {
      const Ran one = run("show " + facts.path + " " + node);
      EXPECT_THAT(text, HasSubstr("\n" + one.out)) << node;
    }
    for (const auto& [parent, child] : facts.arcs) {
      if (child.starts_with("lod_")) continue;
      EXPECT_THAT(text, HasSubstr("\narc " + parent + " " + child + "\n"));
    }
    for (std::size_t i = 0; i < facts.names.size(); ++i)
      EXPECT_THAT(text, HasSubstr("\nname_" + std::to_string(i) + " text = "));
    std::size_t records = 0, counted = 1;  // the scene record
    for (const std::string& line : lines_of(ran.out)) records += line.find(" record = ") != line.npos;
    for (const auto& [kind, count] : facts.counts) counted += count;
    EXPECT_EQ(records, counted) << name;
  }
}

TEST_F(Looking, AllChangesWithEveryWord) {
  const std::string whole = read_file(scene_path("tiny_v1")),
                    shown = run("show --all " + scene_path("tiny_v1")).out;
  for (std::size_t offset = 0; offset + 4 <= whole.size(); offset += 4)
    put("other" + std::to_string(offset) + ".quil", with_word(whole, offset, word_at(whole, offset) ^ 1));
  std::size_t opened = 0;
  for (const auto& [file, text] : by_file(run("show --all other*.quil").out)) {
    if (text.empty()) continue;
    ++opened;
    EXPECT_NE(text, shown) << file;
  }
  EXPECT_GT(opened, whole.size() / 4 / 2);
}

TEST_F(Looking, AllTakesManyFiles) {
  put("a.quil", read_file(scene_path("tiny_v1")));
  put("b.quil", read_file(scene_path("tiny_v2")));
  const std::string a = run("show --all a.quil").out, b = run("show --all b.quil").out;
  EXPECT_EQ(run("show --all a.quil b.quil").out, "==> a.quil <==\n" + a + "==> b.quil <==\n" + b);
  EXPECT_EQ(lines_of(run("show --all --json -r .").out).size(), 2u);
  EXPECT_EQ(run("show a.quil").status, 2);
  EXPECT_EQ(run("show -r a.quil mat_0").status, 2);
}

TEST_F(Looking, AllAsJsonTellsTheSame) {
  const std::string robot = scene_path("robot");
  const json all = json::parse(run("show --all --json " + robot).out);
  const std::string text = run("show --all " + robot).out;
  for (const json& record : all["records"])
    EXPECT_THAT(text, HasSubstr(record["name"].get<std::string>() +
                                " record = " + std::to_string(record["bytes"].get<int>()) +
                                " bytes, checksum " + record["checksum"].get<std::string>()));
  EXPECT_EQ(all["records"].size(), lines_of(run("show --all " + robot, "| grep ' record = '").out).size());
}

// dump

TEST_F(Looking, DumpWritesWordsInRows) {
  const std::string robot = scene_path("robot");
  const auto vertices = lines_of(run("dump " + robot + " vtx 0").out);
  ASSERT_EQ(vertices.size(), 9u);
  EXPECT_THAT(vertices[0], StartsWith("vtx_0 fixed = 00040100 00000000 "));
  EXPECT_EQ(vertices[4], "vtx_0 array1[3] = 00000000 40400000 3f800000");
  EXPECT_THAT(run("dump " + robot + " VtxList 0 --as float").out, HasSubstr("vtx_0 array1[3] = 0 3 1\n"));
  EXPECT_THAT(run("dump " + robot + " name 1").out, HasSubstr("name_1 text = t_metal\n"));
  EXPECT_THAT(run("dump " + robot + " mat 0 --as int").out, HasSubstr("mat_0 fixed = 655616 0 "));
  EXPECT_THAT(run("dump " + robot + " teximg 0").out, HasSubstr("\nteximg_0 texels[32] = 51 59 66 ff "));
  EXPECT_THAT(run("dump " + scene_path("skeleton") + " palette 0").out,
              HasSubstr("palette_0 array1[0] = 07e11761 26e13661 "));
}

TEST_F(Looking, DumpHasEveryWordOfEveryRecord) {
  // The words of all lists, and those of headers, size tables and list blocks, are the file.
  for (const char* name : {"robot", "skeleton", "tiny_v1"}) {
    Qis scene;
    ASSERT_EQ(qiOpenQb(scene_path(name), scene), 1);
    qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
      if (qi::record_count(scene, info.tag) == 0) return;
      std::size_t bytes = 0, expected = 0;
      std::set<std::string> records;
      for (const std::string& line :
           lines_of(run("dump " + scene_path(name) + " " + std::string(info.name)).out)) {
        records.insert(line.substr(0, line.find(' ')));
        std::istringstream words{line.substr(line.find(" =") + 2)};
        const bool texels = line.find(" texels[") != line.npos;
        const bool counts = line.find("parts") != line.npos && line.find(']') == line.npos;
        if (counts || line.find(" text = ") != line.npos) continue;
        for (std::string word; words >> word; bytes += texels ? 1 : 4)
          EXPECT_EQ(word.size(), texels ? 2u : 8u);
      }
      qi::for_each_record(list, [&](std::size_t, const auto& record) {
        expected += qi::checksum_of_record(record).bytes();
        if constexpr (requires { record.text; }) expected -= record.text.size() * 4;
        if constexpr (requires { record.subs[0].words; })
          bytes -= record.subs.size() * (record.fixed.type == 0 ? 8 : 0);
      });
      EXPECT_EQ(bytes, expected) << name << " " << info.name;
      EXPECT_EQ(records.size(), qi::record_count(list));
    });
  }
}

TEST_F(Looking, DumpNeedsAListAndARecordThatAreThere) {
  const std::string robot = scene_path("robot");
  EXPECT_EQ(run("dump " + robot).status, 2);
  EXPECT_EQ(run("dump " + robot + " nothing").status, 2);
  EXPECT_EQ(run("dump " + robot + " vtx x").status, 2);
  EXPECT_EQ(run("dump " + robot + " vtx --as octal").status, 2);
  EXPECT_EQ(run("dump " + robot + " vtx 99").status, 1);
  EXPECT_EQ(run("dump " + robot + " joint").status, 0) << "an absent list has no records";
}

// tree

TEST_F(Looking, TreeHasEveryNodeOnceWithWhatIsBelow) {
  for (const char* name : kSharedScenes) {
    const SharedScene facts = shared_scene(name);
    const Ran ran = run("tree " + facts.path);
    EXPECT_EQ(ran.status, 0);
    std::multiset<std::string> drawn, nodes(facts.nodes.begin(), facts.nodes.end());
    std::size_t arcs = 0;
    for (const std::string& line : lines_of(ran.out)) {
      const std::string text = line.substr(line.find_first_not_of(' '));
      const bool again = text.ends_with(" (see above)") || text.ends_with(" (loop)");
      arcs += line.front() == ' ';
      if (!again) drawn.insert(text.substr(0, text.find(' ')));
    }
    EXPECT_EQ(arcs, facts.arcs.size()) << name;
    for (const std::string& node : nodes) EXPECT_GE(drawn.count(node), 1u) << node;
  }
  const std::string robot = run("tree " + scene_path("robot")).out;
  EXPECT_THAT(
      robot,
      StartsWith("scene_0 robot_workshop\n  obj_0 ground_plane\n    shape_6 s_ground\n      mat_3 floor\n"
                 "        tex_2 t_floor_tiles\n    mat_3 floor (see above)\n"));
}

TEST_F(Looking, TreeOfALoopEnds) {
  put_chain(3);
  Qis scene;
  ASSERT_EQ(qiOpenQb(scratch_ / "scene.quil", scene), 1);
  scene.obj_list.records[2].children = {1};
  scene.obj_list.records[2].fixed.child_count = 1;
  scene.obj_list.records[2].fixed.mat = 5;
  qi::correct_sizes(scene, 2, [](const qi::Message&) {});
  ASSERT_EQ(qiSaveAsQb2(scene, scratch_ / "loop.quil"), 1);
  EXPECT_EQ(run("tree loop.quil").out,
            "scene_0\n  obj_0\n    obj_1\n      obj_2\n        mat_5\n        obj_1 (loop)\n");
}

TEST_F(Looking, TreeOfAVeryDeepSceneIsDrawn) {
  constexpr Word kDeep = 20000;
  put_chain(kDeep);
  const Ran ran = run("tree scene.quil", "", "ulimit -s 256 && ");
  EXPECT_EQ(ran.status, 0);
  const auto lines = lines_of(ran.out);
  ASSERT_EQ(lines.size(), kDeep + 1);
  EXPECT_EQ(lines[40], std::string(80, ' ') + "obj_39");
  EXPECT_EQ(lines.back(), std::string(80, ' ') + "[20000] obj_19999");
}

TEST_F(Looking, AReaderThatHasSeenEnoughIsNoError) {
  put_chain(20000);
  const Ran ran = run("tree scene.quil", "| head -n 1");
  EXPECT_EQ(ran.out, "scene_0\n");
  EXPECT_THAT(ran.err, IsEmpty());
}

}  // namespace
