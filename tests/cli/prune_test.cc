/// @file
/// Records that go: `prune`, `dedup`, and `copy` and `delete` in edit scripts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/cli/quilscene_run.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Prune = Quilscene;

constexpr const char* kStay = "objects, shapes, geometry and names stay, and keep their numbers\n";

TEST_F(Prune, TakesOutWhatNothingRefersTo) {
  const std::string robot = scene_path("robot");
  const Ran ran = run("prune " + robot + " -o out.quil");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.err, IsEmpty());
  EXPECT_EQ(ran.out,
            "mat_5: spare_(unused), nothing refers to it\nanim_5: a_unused, nothing refers to it\n"
            "2 records of 212 bytes; " +
                std::string(kStay));
  EXPECT_EQ(written("out.quil").size() + 212, read_file(robot).size());
  EXPECT_EQ(run("graph out.quil").out, run("graph " + robot).out) << "the last ones of their lists";
  EXPECT_EQ(run("check --quiet out.quil").status, 0);
  EXPECT_EQ(run("prune out.quil -o again.quil").out, "0 records of 0 bytes; " + std::string(kStay));
  EXPECT_TRUE(written("again.quil") == written("out.quil"));
}

TEST_F(Prune, GoesOnUntilNothingMoreGoes) {
  // Without its material, a texture and its image have no user either.
  ASSERT_EQ(edit("tiny_v2", "copy mat_0\n").status, 0);
  ASSERT_EQ(edit("robot", "copy tex_3\ncopy mat_0\nadd mat_6 tex_7\n").status, 0);
  EXPECT_THAT(run("prune --dry-run out.quil").out, HasSubstr("tex_7: nothing refers to it\n"));
  EXPECT_THAT(run("prune --dry-run out.quil").out, HasSubstr("mat_6: nothing refers to it\n"));
}

TEST_F(Prune, ADryRunWritesNothing) {
  put("scene.quil", read_file(scene_path("robot")));
  EXPECT_THAT(run("prune -i --dry-run scene.quil").out, HasSubstr("mat_5: "));
  EXPECT_TRUE(written("scene.quil") == read_file(scene_path("robot")));
  EXPECT_EQ(run("prune scene.quil").status, 2) << "where to?";
  EXPECT_EQ(run("prune --dry-run missing.quil").status, 1);
}

TEST_F(Prune, TakesManyFiles) {
  put("a.quil", read_file(scene_path("robot")));
  put("b.quil", read_file(scene_path("skeleton")));
  const Ran ran = run("prune -i a.quil b.quil");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.out, HasSubstr("==> a.quil <==\nmat_5: "));
  EXPECT_THAT(ran.out, HasSubstr("==> b.quil <==\n0 records of 0 bytes"));
  EXPECT_TRUE(written("b.quil") == read_file(scene_path("skeleton")));
}

TEST_F(Prune, DedupJoinsWhatIsEqual) {
  // Two copies of the image that tex_1 shows: one of them is shown, too.
  ASSERT_EQ(
      edit("robot", "copy teximg_1\ncopy teximg_1\ncopy mat_1\nset mat_6 prim_color.red=0.125\n").status, 0);
  const Ran ran = run("dedup out.quil -o joined.quil");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out, "teximg_6: equal to teximg_1\nteximg_7: equal to teximg_1\n2 records of 4152 bytes; " +
                         std::string(kStay));
  EXPECT_EQ(run("check --quiet joined.quil").status, 0);
  EXPECT_THAT(run("diff out.quil joined.quil").out, HasSubstr("- teximg_7 record = 518 words\n"));
}

TEST_F(Prune, DedupGoesByNamesUnlessToldOtherwise) {
  ASSERT_EQ(edit("robot", "copy mat_1\ndelete obj_0 mat_3\nadd obj_0 mat_6\nname mat_6 other\n").status, 0);
  EXPECT_THAT(run("dedup --dry-run out.quil").out, HasSubstr("0 records"));
  EXPECT_THAT(run("dedup --any-name out.quil -o joined.quil").out, HasSubstr("mat_6: equal to mat_1\n"));
  EXPECT_THAT(run("graph joined.quil").out, HasSubstr("arc obj_0 mat_1\n"));
}

// In edit scripts.

TEST_F(Prune, ACopyIsLikeItsRecord) {
  const Ran ran = edit("robot", "copy mat_0\nadd obj_0 mat_6\ndelete obj_0 mat_3\nadd obj_0 mat_6\n");
  EXPECT_THAT(ran.out, testing::StartsWith("mat_6\n-> 1\n"));
  const std::string items = run("show out.quil mat_6").out;
  EXPECT_THAT(items, HasSubstr("mat_6 prim_color.red = 0.8\n"));
  EXPECT_THAT(items, HasSubstr("mat_6 title.nodeName = \n")) << "a name is one record's";
  EXPECT_THAT(run("graph out.quil").out, HasSubstr("arc obj_0 mat_6\n"));
  EXPECT_THAT(run("diff " + scene_path("robot") + " out.quil").out, HasSubstr("+ arc mat_6 tex_0\n"));
  EXPECT_EQ(run("check --quiet out.quil").status, 0);
}

TEST_F(Prune, ADeletedRecordIsGoneAndTheNextOnesMoveUp) {
  EXPECT_EQ(edit("robot", "delete obj_2 mat_0\ndelete obj_3 mat_0\ndelete obj_4 mat_0\n").status, 0);
  const std::string referrer = run("show --all out.quil", "| grep 'arc .* mat_0$'").out;
  std::string script;
  std::istringstream lines{referrer};
  for (std::string arc, parent, child; lines >> arc >> parent >> child;)
    script += "delete " + parent + " " + child + "\n";
  put("script", script + "delete mat_0\n");
  const std::string before = run("show out.quil mat_1").out;
  const Ran ran = run("edit out.quil -o less.quil --script script");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(run("show less.quil mat_0", "| sed s/mat_0/mat_1/").out, before);
  EXPECT_EQ(run("show less.quil mat_5").status, 1);
  EXPECT_EQ(run("check --quiet less.quil").status, 0);
}

TEST_F(Prune, WhatIsUsedOrOfAnotherKindIsRefusedWithTheReason) {
  const Ran ran = edit("robot", "delete mat_0\ndelete obj_17\ncopy obj_0\ncopy mat_99\ndelete nothing\n");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.out, "-> 0\n-> 0\n-> 0\n-> 0\n-> 0\n");
  EXPECT_EQ(
      ran.err,
      "quilscene: script:1: obj_2 refers to mat_0\n"
      "quilscene: script:2: obj_17 is none of the materials, textures, images, palettes and animations\n"
      "quilscene: script:3: obj_0 is none of the materials, textures, images, palettes and animations\n"
      "quilscene: script:4: there is no mat_99\nquilscene: script:5: there is no nothing\n");
  EXPECT_TRUE(written("out.quil") == read_file(scene_path("robot")));
  EXPECT_EQ(edit("robot", "copy\n").status, 2);
  EXPECT_EQ(edit("robot", "copy mat_0 mat_1\n").status, 2);
  EXPECT_EQ(edit("robot", "delete\n").status, 2);
}

}  // namespace
