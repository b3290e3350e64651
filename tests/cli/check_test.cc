/// @file
/// What `quilscene check` finds in spoilt scenes, and how it tells it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "qilib/checksizes.h"
#include "qilib/lists.h"
#include "qilib/names.h"
#include "qilib/opensave.h"
#include "qilib/writer.h"
#include "tests/cli/quilscene_run.h"
#include "tests/support/case_name.h"

namespace {

using nlohmann::json;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Check : public Quilscene {
 protected:
  /// A sample scene after a change to its records, saved as "scene.quil".
  template <class Change>
  void spoil(const std::string& sample, Change change) const {
    Qis scene;
    ASSERT_EQ(qiOpenQb(scene_path(sample), scene), 1);
    change(scene);
    qi::correct_sizes(scene, qi::kFromStructures, [](const qi::Message&) {});
    ASSERT_EQ(qiSaveAsQb2(scene, scratch_ / "scene.quil"), 1);
  }
  /// What the check of a file gives as JSON.
  json object_of(const std::string& file, const std::string& options = "") const {
    return json::parse(run("check --json " + options + " " + file).out);
  }
  /// The codes and paths of what it finds.
  std::set<std::string> findings(const std::string& file) const {
    std::set<std::string> found;
    const json result = object_of(file);
    for (const json& message : result["messages"])
      found.insert(message["code"].get<std::string>() + " " + message.value("path", ""));
    return found;
  }
};

// What it must find.

struct Spoilt {
  const char* name;
  const char* sample;
  void (*change)(Qis& scene);
  const char* finding;  ///< code and path
  int status;
};

void set_name(Qis& scene, Word number, std::string text) { qiSetName(scene, number, text); }
template <class R>
void grow(qi::CompactArray<R>& array, Word& count, std::size_t size) {
  array.resize(size);
  count = static_cast<Word>(size);
}

class FindsIn : public Check, public testing::WithParamInterface<Spoilt> {};

TEST_P(FindsIn, ASpoiltScene) {
  const Spoilt& row = GetParam();
  EXPECT_THAT(findings(scene_path(row.sample)), Not(Contains(row.finding)));
  spoil(row.sample, row.change);
  EXPECT_THAT(findings("scene.quil"), Contains(row.finding));
  EXPECT_EQ(run("check scene.quil").status, row.status);
}

const Spoilt kSpoilt[] = {
    {"MaterialOfFiveTextures", "robot",
     [](Qis& scene) {
       auto& mat = scene.mat_list.records[0];
       grow(mat.texs, mat.fixed.tex_count, 5);
       for (Word i = 0; i < 5; ++i) mat.texs[i] = i;
     },
     "TOO_MANY_REFERENCES mat_0.texs", 1},
    {"ObjectOfFortyChildren", "robot",
     [](Qis& scene) {
       auto& obj = scene.obj_list.records[16];
       grow(obj.children, obj.fixed.child_count, 40);
     },
     "TOO_MANY_REFERENCES obj_16.children", 1},
    {"RepeatedChild", "robot",
     [](Qis& scene) {
       auto& obj = scene.obj_list.records[2];
       grow(obj.children, obj.fixed.child_count, obj.children.size() + 1);
       obj.children.back() = obj.children[0];
     },
     "REFERENCE_REPEATED obj_2.children[3]", 0},
    {"TextureLargerThanItsTexels", "robot",
     [](Qis& scene) { scene.tex_list.records[0].table.untiled.height = 33; },
     "TEXTURE_LARGER_THAN_TEXELS tex_0.image", 1},
    {"TileLargerThanItsTexels", "robot",
     [](Qis& scene) { scene.tex_list.records[6].table.heights[1] = 4000; },
     "TEXTURE_LARGER_THAN_TEXELS tex_6.images[1]", 1},
    {"ColourIndexedTextureLargerThanItsImage", "skeleton",
     [](Qis& scene) { scene.tex_list.records[1].table.untiled.width = 40; },
     "TEXTURE_LARGER_THAN_TEXELS tex_1.image", 1},
    {"TypeThatDoesNotExist", "robot", [](Qis& scene) { scene.tex_list.records[0].fixed.tex_type = 0x406; },
     "TEXTURE_TYPE_UNKNOWN tex_0.tex_type", 1},
    {"DepthThatDoesNotExist", "robot", [](Qis& scene) { scene.tex_list.records[0].fixed.tex_type = 0x605; },
     "TEXTURE_DEPTH_UNKNOWN tex_0.tex_type", 1},
    {"DepthThatTheFormDoesNotHave", "robot",
     [](Qis& scene) { scene.tex_list.records[0].fixed.tex_type = 0x400; },
     "TEXTURE_DEPTH_UNKNOWN tex_0.tex_type", 1},
    {"PaletteTooShort", "skeleton",
     [](Qis& scene) {
       auto& palette = scene.ext.color_palette_list.records[1];
       palette.fixed.entry_count = 20;
       palette.colors.resize(10);
     },
     "PALETTE_TOO_SHORT tex_1.image", 1},
    {"NotANumber", "robot", [](Qis& scene) { scene.cam_list.records[0].fixed.fovy = std::nanf(""); },
     "NUMBER_NOT_FINITE cam_0.fovy", 0},
    {"InfiniteNumber", "robot",
     [](Qis& scene) {
       scene.mat_list.records[1].fixed.prim_color.green = std::numeric_limits<float>::infinity();
     },
     "NUMBER_NOT_FINITE mat_1.prim_color[1]", 0},
    {"DistancesThatFall", "robot",
     [](Qis& scene) {
       auto& distances = scene.obj_list.records[13].lod_distances;
       distances[1] = distances[0] - 1;
     },
     "DISTANCE_FALLS obj_13.lod_distances[1]", 0},
    {"MissingExternalName", "skeleton",
     [](Qis& scene) {
       auto& effector = scene.ext.effector_list.records[0];
       effector.fixed.external_count = 1;
       effector.externals = {{77, 1}};
     },
     "EXTERNAL_NAME_MISSING effector_0.externals", 0},
    {"WrongRecordIndex", "robot", [](Qis& scene) { scene.part_list.records[0].fixed.index = 9; },
     "RECORD_INDEX_WRONG part_0.index", 0},
    {"WrongNameIndex", "robot", [](Qis& scene) { scene.name_list.records[3].fixed.index = 9; },
     "NAME_INDEX_WRONG name_3.index", 0},
    {"NameOutsideItsList", "robot", [](Qis& scene) { scene.obj_list.records[1].fixed.name = 4711; },
     "REFERENCE_OUT_OF_RANGE obj_1.name", 1},
    {"EqualNames", "robot",
     [](Qis& scene) { scene.obj_list.records[3].fixed.name = scene.obj_list.records[2].fixed.name; },
     "NAME_EQUAL obj_3.name", 0},
    {"EmptyName", "robot", [](Qis& scene) { set_name(scene, 2, ""); }, "NAME_EMPTY name_2", 0},
    {"ControlCharacterInAName", "robot", [](Qis& scene) { set_name(scene, 2, "a\x1b[2J"); },
     "NAME_CONTROL_CHARACTER name_2", 0},
    {"LoopOfJoints", "skeleton",
     [](Qis& scene) {
       auto& joints = scene.ext.joint_list.records;
       joints[0].fixed.child_joint = 1;
       joints[1].fixed.child_joint = 0;
     },
     "LOOP joint_0", 1},
    {"LoopOfObjects", "robot",
     [](Qis& scene) {
       auto& obj = scene.obj_list.records[5];
       grow(obj.children, obj.fixed.child_count, 1);
       obj.children[0] = 1;
     },
     "LOOP obj_1", 1},
    {"LoopOfAChainRootAndObjects", "skeleton",
     [](Qis& scene) {
       auto& root = scene.ext.chain_root_list.records[1];
       grow(root.objs, root.fixed.obj_count, 1);
       root.objs[0] = 5;
       auto& obj = scene.obj_list.records[5];
       grow(obj.ext->chain_roots, obj.ext->head.chain_root_count, 1);
       obj.ext->chain_roots[0] = 1;
     },
     "CHAIN_ROOT_LOOP ChainRoot_1", 0},
    {"RecordThatIsNotReached", "robot",
     [](Qis& scene) {
       auto& orphan = scene.obj_list.records[17];
       orphan.fixed.mat = 5;
     },
     "UNREACHED mat_5", 0},
    {"ImageWithoutAUser", "robot", [](Qis& scene) { scene.tex_list.records[5].table.untiled.image = 2; },
     "UNUSED teximg_5", 0},
    {"PaletteWithoutAUser", "skeleton", [](Qis& scene) { scene.tex_list.records[2].ext->palettes[0] = 1; },
     "UNUSED palette_2", 0},
    {"TrianglesWithoutAUser", "robot",
     [](Qis& scene) {
       for (auto& shape : scene.shape_list.records) shape.fixed.geometry = 1;
     },
     "UNUSED tri_0", 0},
    {"ImagesOfASceneWithoutTextures", "robot",
     [](Qis& scene) {
       scene.tex_list.records.clear();
       scene.tex_list.sizes.clear();
       scene.tex_list.header.count = 0;
     },
     "UNUSED teximg_0", 1},
};

INSTANTIATE_TEST_SUITE_P(Rows, FindsIn, testing::ValuesIn(kSpoilt), CaseName{});

TEST_F(Check, FindsWeightsWithoutAUser) {
  EXPECT_THAT(findings(scene_path("skeleton")),
              AllOf(Contains("UNUSED weight_0"), Contains("UNUSED weight_1")));
}

TEST_F(Check, TellsWhereARecordBegins) {
  spoil("robot", [](Qis& scene) { scene.part_list.records[1].fixed.index = 9; });
  const std::string bytes = written("scene.quil");
  const json result = object_of("scene.quil");
  for (const json& message : result["messages"]) {
    if (message["code"] != "RECORD_INDEX_WRONG") continue;
    EXPECT_EQ(message["list"], "PartList");
    EXPECT_EQ(message["severity"], "hint");
    const auto offset = message["offset"].get<std::size_t>();
    EXPECT_EQ(word_at(bytes, offset), 0x90100u);
    EXPECT_EQ(word_at(bytes, offset + 4), 9u);
    return;
  }
  FAIL();
}

// Damaged lists.

class Damaged : public Check {
 protected:
  /// robot with the tag of its second material wrong, and an object that refers to no shape.
  Damaged() {
    spoil("robot", [](Qis& scene) { scene.obj_list.records[1].fixed.shape = 99; });
    Qis scene;
    EXPECT_EQ(qiOpenQb(scratch_ / "scene.quil", scene), 1);
    std::size_t offset = scene.header.fixed.header_size;
    qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& /*list*/) {
      const auto in_file = offset;
      offset += qi::list_bytes(scene.header, info);
      if (info.name != "MatList") return;
      const auto& mats = scene.mat_list;
      at_ = in_file + 24 + 4 * mats.records.size() + mats.sizes[0];
    });
    bytes_ = written("scene.quil");
    EXPECT_EQ(word_at(bytes_, at_), 0xa0100u);
    put("damaged.quil", with_word(bytes_, at_, 0xa0700));
  }
  std::size_t at_ = 0;
  std::string bytes_;
};

TEST_F(Damaged, ListIsPassedOver) {
  const Ran ran = run("check damaged.quil");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.out, AllOf(HasSubstr("damaged.quil: message: irregular tag ! 0x000a0700 != 0x000a0100\n"),
                             HasSubstr("damaged.quil: message: MatList: record 1, byte " +
                                       std::to_string(at_) + ": tag 0x000a0700, expected 0x000a0100\n"),
                             HasSubstr("damaged.quil: message: can't be opened\n"),
                             HasSubstr("damaged.quil: reference: obj_1: shape 99 is outside its list of ")));
  EXPECT_THAT(ran.out, Not(HasSubstr(": mat "))) << "nobody knows how many there were";
  EXPECT_EQ(object_of("damaged.quil")["reading"], "damaged");
}

TEST_F(Damaged, ListAfterAnotherOneIsToldToo) {
  const std::size_t name = bytes_.rfind(std::string("\0\x11\x01\0", 4));
  put("damaged.quil", with_word(with_word(bytes_, at_, 0xa0700), name, 0x110700));
  EXPECT_THAT(run("check damaged.quil").out,
              AllOf(HasSubstr("MatList: record 1"), HasSubstr("NameList: record")));
}

TEST_F(Check, GoesOnToTheExtensionListsOfVersion2) {
  Qis scene;
  ASSERT_EQ(qiOpenQb(scene_path("skeleton"), scene), 1);
  std::string bytes = read_file(scene_path("skeleton"));
  const std::size_t obj = bytes.find(std::string("\0\x02\x01\0", 4)),
                    joint = bytes.rfind(std::string("\0\x25\x01\0", 4));
  put("damaged.quil", with_word(with_word(bytes, obj, 0x20700), joint, 0x250700));
  const Ran ran = run("check damaged.quil");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.out, AllOf(HasSubstr("ObjList: record 0, byte "), HasSubstr("JointList: record ")));
}

// How it is told.

TEST_F(Check, SeveritiesDecideTheExitStatus) {
  spoil("robot", [](Qis& scene) { scene.cam_list.records[0].fixed.fovy = std::nanf(""); });
  EXPECT_EQ(run("check scene.quil").status, 0);
  EXPECT_EQ(run("check --fail-on warning scene.quil").status, 1);
  EXPECT_EQ(run("check --severity NUMBER_NOT_FINITE=error scene.quil").status, 1);
  EXPECT_EQ(run("check --fail-on warning --ignore NUMBER_NOT_FINITE scene.quil").status, 0);
  EXPECT_EQ(run("check --fail-on information scene.quil").status, 1);
  EXPECT_EQ(run("check --fail-on information --ignore UNUSED --ignore NUMBER_NOT_FINITE scene.quil").status,
            0);
  EXPECT_THAT(run("check --ignore UNUSED scene.quil").out, Not(HasSubstr("nothing refers to it")));
  EXPECT_EQ(object_of("scene.quil", "--severity UNUSED=hint")["counts"]["hint"],
            object_of("scene.quil")["counts"]["information"]);
}

TEST_F(Check, MaxCountsWhatItLeavesOut) {
  const std::string robot = scene_path("robot");
  EXPECT_EQ(run("check --max 1 " + robot).out,
            robot + ": note: env_1 (night): nothing refers to it\n" + robot +
                ": and 5 more\n1 file: 0 errors, 0 warnings, 6 notes, 0 hints\n");
  const json result = object_of(robot, "--max 0");
  EXPECT_THAT(result["messages"], IsEmpty());
  EXPECT_EQ(result["omitted"], 6);
}

TEST_F(Check, QuietTellsByItsExitStatusAlone) {
  put("bad.quil", "bad");
  const Ran ran = run("check --quiet " + scene_path("robot") + " bad.quil");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.out + ran.err, "");
}

TEST_F(Check, AFileThatIsNotThereIsStatus3) {
  EXPECT_EQ(run("check missing.quil").status, 3);
  EXPECT_EQ(run("check .").status, 3);
  put("bad.quil", "bad");
  EXPECT_EQ(run("check bad.quil").status, 1);
  EXPECT_EQ(run("check bad.quil missing.quil").status, 3);
  EXPECT_EQ(object_of("missing.quil")["reading"], "unreadable");
}

TEST_F(Check, WrongUseIsStatus2) {
  for (const char* options : {"--fail-on fatal", "--ignore NOTHING", "--severity UNUSED",
                              "--severity UNUSED=bad", "--max -1", "--max many", "--jobs x"})
    EXPECT_EQ(run(std::string("check ") + options + " a").status, 2) << options;
}

TEST_F(Check, HelpNamesTheCodes) {
  EXPECT_THAT(run("help check").out,
              AllOf(HasSubstr("  UNREACHED information\n"), HasSubstr("  TAG_WRONG error\n")));
}

TEST_F(Check, FileNamesCannotSteerATerminal) {
  const std::string name = "a\n\x1b[2J\xc2\x9b\xff\\.quil";
  put(name, "bad");
  const Ran ran = run("check 'a\n\x1b[2J\xc2\x9b\xff\\.quil'");
  EXPECT_THAT(ran.out, HasSubstr("a\\x0a\\x1b[2J\\xc2\\x9b\xff\\.quil: message: can't be opened\n"));
  // In JSON every byte comes back.
  const json result = json::parse(run("check --json 'a\n\x1b[2J\xc2\x9b\xff\\.quil'").out);
  EXPECT_EQ(result["file"], "a\n\x1b[2J\xc2\x9b\\xff\\\\.quil");
}

TEST_F(Check, LinesOfTwoProcessesStayWhole) {
  spoil("robot", [](Qis& scene) {
    for (auto& part : scene.part_list.records) part.fixed.index = 4711;
    for (auto& obj : scene.obj_list.records) obj.fixed.index = 4711;
  });
  std::string files;
  for (int i = 0; i < 100; ++i) files += " scene.quil";
  const std::string program = support::built_program("cli/quilscene").string();
  run("check --jobs 1" + files + " >>all &", program + " check --jobs 1" + files + " >>all; wait");
  std::istringstream lines{written("all")};
  std::size_t summaries = 0;
  for (std::string line; std::getline(lines, line);) {
    const bool summary = line.starts_with("100 files: ");
    summaries += summary ? 1 : 0;
    EXPECT_TRUE(summary || (line.starts_with("scene.quil: ") && line.rfind("scene.quil: ") == 0 &&
                            (line.ends_with(" is 4711") || line.ends_with("nothing refers to it"))))
        << line;
  }
  EXPECT_EQ(summaries, 2u);
}

}  // namespace
