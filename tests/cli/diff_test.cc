/// @file
/// What differs between scenes, as `quilscene diff` and git tell it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "qilib/forwards.h"
#include "qilib/opensave.h"
#include "tests/cli/quilscene_run.h"
#include "tests/support/case_name.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Diff : public Quilscene {
 protected:
  /// A sample scene after a change to its records, saved as "changed.quil" with its sizes as they are.
  void change(const std::string& sample, void (*spoil)(Qis& scene)) const {
    Qis scene;
    ASSERT_EQ(qiOpenQb(scene_path(sample), scene), 1);
    spoil(scene);
    ASSERT_EQ(qiSaveAsQb2(scene, scratch_ / "changed.quil"), 1);
  }
  /// What is printed about it and the sample, without the lines that name the files.
  std::string differences(const std::string& sample) const {
    const std::string file = scene_path(sample);
    const Ran ran = run("diff " + file + " changed.quil");
    EXPECT_EQ(ran.status, 1) << ran.out;
    EXPECT_THAT(ran.err, IsEmpty());
    const std::string head = "--- " + file + "\n+++ changed.quil\n";
    EXPECT_TRUE(ran.out.starts_with(head)) << ran.out;
    return ran.out.substr(std::min(head.size(), ran.out.size()));
  }
};

TEST_F(Diff, OfAScenesCopyIsEmpty) {
  for (const char* sample : kSharedScenes) {
    EXPECT_EQ(run("resave " + scene_path(sample) + " -o copy.quil").status, 0);
    const Ran ran = run("diff " + scene_path(sample) + " copy.quil");
    EXPECT_EQ(ran.status, 0) << sample;
    EXPECT_EQ(ran.out + ran.err, "");
  }
}

struct ChangeRow {
  const char* name;
  const char* sample;
  void (*change)(Qis& scene);
  const char* lines;
};

class DiffOf : public Diff, public testing::WithParamInterface<ChangeRow> {};

TEST_P(DiffOf, TellsWhatWasChanged) {
  change(GetParam().sample, GetParam().change);
  EXPECT_EQ(differences(GetParam().sample), GetParam().lines);
}

const ChangeRow kChanges[] = {
    {"AnItem", "robot", [](Qis& scene) { scene.mat_list.records[0].fixed.prim_color.red = 0.25F; },
     "- mat_0 prim_color.red = 0.8\n+ mat_0 prim_color.red = 0.25\n! mat_0 fixed: word 10 of 26\n"},
    {"AWordThatNoItemShows", "robot", [](Qis& scene) { scene.mat_list.records[2].fixed.word22 = 7; },
     "! mat_2 fixed: word 22 of 26\n"},
    {"ASlot", "robot", [](Qis& scene) { scene.obj_list.records[0].fixed.mat = 1; },
     "- arc obj_0 mat_3\n+ arc obj_0 mat_1\n"},
    {"AnArrayThatGrew", "robot", [](Qis& scene) { qiAddScene_Obj(scene, 3); },
     "+ arc scene_0 obj_3\n! scene_0 fixed: word 2 of 11\n"},
    {"TheOrderOfAnArray", "robot", [](Qis& scene) { std::swap(scene.scene.objs[0], scene.scene.objs[1]); },
     "! scene_0 array2: 6 words, 2 differ\n"},
    {"Texels", "robot", [](Qis& scene) { scene.teximg_list.records[0].texels[3] = std::byte{0x55}; },
     "! teximg_0 texels: 4096 bytes, 1 differ\n"},
    {"Vertices", "robot",
     [](Qis& scene) {
       scene.vtx_list.records[1].vertices[0][2] ^= 1;
       scene.vtx_list.records[1].vertices[1][0] ^= 1;
     },
     "! vtx_1 array1: 24 words, 2 differ\n"},
    {"AVersion2Structure", "skeleton", [](Qis& scene) { scene.cam_list.records[0].ext->head.words[4] += 1; },
     "! cam_0 structure.fixed: word 4 of 6\n"},
    {"APartOfAnEnvelope", "skeleton",
     [](Qis& scene) { scene.ext.envelope_list.records[0].weighted[0].weights[1] = 0.125F; },
     "! envelope_0 parts2[0].array3: 3 words, 1 differ\n"},
    {"ThePointsOfAPalette", "skeleton",
     [](Qis& scene) { scene.ext.color_palette_list.records[0].colors[1] = 0; },
     "! palette_0 array1: 8 words, 1 differ\n"},
    {"AListsOwnWord", "robot", [](Qis& scene) { scene.obj_list.header.word1 += 1; },
     "! ObjList header: word 1 of 6\n"},
    {"WhatNothingReads", "robot", [](Qis& scene) { scene.obj_list.sizes[2] += 4; },
     "! ObjList sizes: 18 words, 1 differ\n"},
    {"TheHeader", "robot", [](Qis& scene) { scene.header.fixed.version |= 0x10000; },
     "! header fixed: word 0 of 25\n"},
};
INSTANTIATE_TEST_SUITE_P(Scenes, DiffOf, testing::ValuesIn(kChanges), CaseName{});

TEST_F(Diff, TellsRecordsThatOnlyOneHas) {
  EXPECT_EQ(edit("skeleton", "new effector\nnew weight 3\nadd effector_2 obj_1\n").status, 0);
  const std::string file = scene_path("skeleton");
  EXPECT_THAT(run("diff " + file + " out.quil").out,
              HasSubstr("+ effector_2 record = 11 words\n+ arc effector_2 obj_1\n"));
  EXPECT_THAT(run("diff out.quil " + file).out,
              HasSubstr("- effector_2 record = 11 words\n- arc effector_2 obj_1\n"));
}

TEST_F(Diff, TellsARenamedNode) {
  EXPECT_EQ(edit("robot", "name obj_1 marvin").status, 0);
  const std::string out = run("diff " + scene_path("robot") + " out.quil").out;
  EXPECT_THAT(out, HasSubstr("- name_33 text = robot\n+ name_33 text = marvin\n"));
  EXPECT_THAT(out, HasSubstr("- obj_1 title.nodeName = robot\n+ obj_1 title.nodeName = marvin\n"));
}

TEST_F(Diff, TellsTheLevelsOfDetailOfAnObject) {
  change("robot", [](Qis& scene) { scene.obj_list.records[13].lod_distances[0] = 3; });
  EXPECT_THAT(differences("robot"), HasSubstr("+ obj_13 lod.lod_set.lod_dist_group.lod_dist0 = 3\n"));
}

TEST_F(Diff, OfTwoScenesNamesEveryRecordOfEither) {
  const std::string a = scene_path("robot"), b = scene_path("skeleton");
  const json result = json::parse(run("diff --json " + a + " " + b).out);
  std::size_t added = 0, removed = 0;
  for (const json& difference : result["differences"]) {
    added += difference["change"] == "added";
    removed += difference["change"] == "removed";
  }
  std::size_t more = 0, fewer = 0;
  const auto counts_a = shared_scene("robot").counts, counts_b = shared_scene("skeleton").counts;
  for (const auto& [kind, count] : counts_b) {
    const auto other = counts_a.find(kind);
    more += count - std::min(count, other == counts_a.end() ? 0 : other->second);
  }
  for (const auto& [kind, count] : counts_a) {
    const auto other = counts_b.find(kind);
    fewer += count - std::min(count, other == counts_b.end() ? 0 : other->second);
  }
  EXPECT_EQ(added, more);
  EXPECT_EQ(removed, fewer);
}

TEST_F(Diff, AsJsonTellsTheSame) {
  change("robot", [](Qis& scene) {
    scene.mat_list.records[0].fixed.prim_color.red = 0.25F;
    scene.obj_list.records[0].fixed.mat = 1;
  });
  const json result = json::parse(run("diff --json " + scene_path("robot") + " changed.quil").out);
  EXPECT_EQ(result["same"], false);
  const json obj = json::parse(R"({"place":"obj_0","change":"changed","links":[
      {"child":"mat_3","change":"removed"},{"child":"mat_1","change":"added"}]})");
  const json mat =
      json::parse(R"({"place":"mat_0","change":"changed","items":{"prim_color.red":["0.8","0.25"]},
      "pieces":[{"piece":"fixed","words":[26,26],"differing":1,"places":[10]}]})");
  EXPECT_EQ(result["differences"], json::array({obj, mat}));
}

TEST_F(Diff, TellsByItsStatusAlone) {
  const std::string robot = scene_path("robot");
  put("bad.quil", "bad");
  EXPECT_EQ(run("diff --quiet " + robot + " " + robot).status, 0);
  const Ran differ = run("diff --quiet " + robot + " " + scene_path("skeleton"));
  EXPECT_EQ(differ.status, 1);
  EXPECT_EQ(differ.out + differ.err, "");
  EXPECT_EQ(run("diff " + robot).status, 2);
  EXPECT_EQ(run("diff - -").status, 2);
  EXPECT_EQ(run("diff " + robot + " missing.quil").status, 3);
  EXPECT_EQ(run("diff bad.quil " + robot).status, 3);
  EXPECT_EQ(run("diff - " + robot, "<" + robot).status, 0);
}

TEST_F(Diff, IsWhatGitShows) {
  const std::string programs = support::built_program("cli/quilscene").parent_path().string();
  put("robot.quil", read_file(scene_path("robot")));
  ASSERT_EQ(edit("robot", "set mat_0 prim_color.red=0.25\ndelete obj_0 mat_3\n").status, 0);
  put("block",
      "set -e\ngit init --quiet\ngit config user.name A\ngit config user.email a@b\n"
      "echo '*.quil diff=quil' > .gitattributes\ngit config diff.quil.textconv 'quilscene show --all'\n"
      "git add robot.quil .gitattributes\ngit commit --quiet -m one\nmv out.quil robot.quil\ngit diff\n"
      "git commit --quiet -a -m two\ngit log -p -1\n");
  const Ran ran = run("--version >/dev/null", "; bash block",
                      "export PATH=" + programs + ":$PATH HOME=" + scratch_.path().string() + "; ");
  EXPECT_EQ(ran.status, 0) << ran.err;
  const std::string change = "-mat_0 prim_color.red = 0.8\n+mat_0 prim_color.red = 0.25\n";
  const std::size_t first = ran.out.find(change);
  ASSERT_NE(first, std::string::npos) << ran.out;
  EXPECT_NE(ran.out.find(change, first + 1), std::string::npos) << "once by diff, once by log";
  EXPECT_THAT(ran.out, HasSubstr("\n-arc obj_0 mat_3\n"));
  EXPECT_THAT(ran.out, Not(HasSubstr("Binary files")));
}

}  // namespace
