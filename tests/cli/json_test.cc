/// @file
/// What programs read: JSON by its schema, and results that nothing else mixes with.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "qilib/opensave.h"
#include "tests/cli/quilscene_run.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;

class Output : public Quilscene {
 protected:
  /// What Python's jsonschema has to say against the lines of a file.
  std::string complaints(const std::string& lines) const {
    put("validate.py",
        "import json, sys, jsonschema\n"
        "schema = json.load(open(sys.argv[1]))\n"
        "jsonschema.Draft202012Validator.check_schema(schema)\n"
        "validator = jsonschema.Draft202012Validator(schema)\n"
        "count = 0\n"
        "for line in open(sys.argv[2], encoding='utf-8'):\n"
        "    count += 1\n"
        "    for error in validator.iter_errors(json.loads(line)):\n"
        "        print(line[:300], error.message[:300], list(error.absolute_path))\n"
        "print(count)\n");
    const std::string line = "cd " + scratch_.path().string() + " && python3 validate.py " +
                             support::project_file("docs/quilscene.schema.json").string() + " " + lines +
                             " >complaints 2>&1";
    EXPECT_EQ(std::system(line.c_str()), 0);
    return written("complaints");
  }
  std::string samples() const {
    std::string files;
    for (const char* scene : kSharedScenes) files += " " + scene_path(scene);
    return files;
  }
};

TEST_F(Output, AgreesWithTheSchema) {
  put("bad.quil", "bad");
  put("options", "output_dir = out\xff\n");
  const std::string many = samples() + " bad.quil missing.quil";
  run("check --json" + many + " >check");
  run("info --json" + many + " >info");
  run("graph --json" + many + " >graph");
  run("show --json " + scene_path("robot") + " mat_0 obj_1 cam_0 mat_99 >show");
  run("show --json " + scene_path("skeleton") + " joint_0 tex_0 lod_0 >>show");
  run("show --json missing.quil mat_0 >>show");
  run("show --all --json" + many + " >show_all");
  run("diff --json " + scene_path("robot") + " " + scene_path("skeleton") + " >diff");
  run("diff --json " + scene_path("skeleton") + " " + scene_path("robot") + " >>diff");
  run("diff --json " + scene_path("robot") + " " + scene_path("robot") + " >>diff");
  run("diff --json bad.quil missing.quil >>diff");
  run("options --json options >options_1");
  run("options --json missing >>options_1");
  EXPECT_EQ(complaints("check"), "8\n");
  EXPECT_EQ(complaints("info"), "8\n");
  EXPECT_EQ(complaints("graph"), "8\n");
  EXPECT_EQ(complaints("show"), "3\n");
  EXPECT_EQ(complaints("show_all"), "8\n");
  EXPECT_EQ(complaints("diff"), "4\n");
  EXPECT_EQ(complaints("options_1"), "2\n");
}

TEST_F(Output, AgreesWithTheSchemaForAnyDamage) {
  // Every word of the file set to something wrong, a scene each.
  for (const char* name : {"tiny_v2", "skeleton"}) {
    const std::string whole = read_file(scene_path(name));
    std::string files;
    const std::size_t step = whole.size() / 150 / 4 * 4 + 4;
    for (std::size_t offset = 0; offset + 4 <= whole.size(); offset += step) {
      const std::string file = name + std::to_string(offset) + ".quil";
      put(file, with_word(whole, offset, 0x7fc00000));
      files += file + "\n";
    }
    put("files", files);
    run("check --json @files >check");
    run("info --json @files >info");
    run("graph --json @files >graph");
    const std::string lines = std::to_string(std::count(files.begin(), files.end(), '\n')) + "\n";
    EXPECT_EQ(complaints("check"), lines);
    EXPECT_EQ(complaints("info"), lines);
    EXPECT_EQ(complaints("graph"), lines);
  }
}

TEST_F(Output, TheSchemaRefusesWhatIsNone) {
  put("lines", R"({"command":"check","file":"a"})"
               "\n");
  EXPECT_THAT(complaints("lines"), HasSubstr("not valid under any of the given schemas"));
}

TEST_F(Output, InfoAsJsonHasEveryByteOfNames) {
  std::string file = read_file(scene_path("tiny_v1"));
  const std::size_t name = file.find("tiny");
  file.replace(name, 4, "\xff \\\n");
  put("odd.quil", file);
  EXPECT_EQ(json::parse(run("info --json odd.quil").out)["names"][0], "\\xff \\\\\n");
}

TEST_F(Output, GraphAsJsonIsTheGraph) {
  const json graph = json::parse(run("graph --json " + scene_path("robot")).out);
  std::string lines;
  for (const json& node : graph["nodes"]) lines += "node " + node["name"].get<std::string>() + "\n";
  for (const json& arc : graph["arcs"])
    lines += "arc " + arc["parent"].get<std::string>() + " " + arc["child"].get<std::string>() + "\n";
  EXPECT_EQ(lines, run("graph " + scene_path("robot")).out);
}

TEST_F(Output, ShowAsJsonHasTheItems) {
  const json shown = json::parse(run("show --json " + scene_path("robot") + " mat_0").out);
  std::string lines;
  const json& node = shown["nodes"][0];
  const std::string text = run("show " + scene_path("robot") + " mat_0").out;
  for (const auto& [item, value] : node["items"].items())
    EXPECT_THAT(text, HasSubstr("mat_0 " + item + " = " + value.get<std::string>() + "\n"));
  EXPECT_EQ(node["items"].size(), static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')));
}

// Standard input and output.

TEST_F(Output, StandardInputIsAFileNamedMinus) {
  const std::string robot = scene_path("robot");
  EXPECT_EQ(run("graph -", "<" + robot).out, run("graph " + robot).out);
  EXPECT_EQ(run("show - mat_0", "<" + robot).out, run("show " + robot + " mat_0").out);
  EXPECT_EQ(run("info -", "<" + scene_path("skeleton")).out, run("info " + scene_path("skeleton")).out);
  EXPECT_THAT(run("check -", "<" + robot).out, HasSubstr("-: note: obj_17 (orphan): nothing refers to it\n"));
  EXPECT_EQ(run("check -", "</dev/null").status, 1);
  EXPECT_EQ(run("check -", "<&-").status, 3);
  EXPECT_EQ(run("check - -", "<" + robot).status, 2);
}

TEST_F(Output, AVersion2SceneGoesThroughAPipe) {
  const std::string program = support::built_program("cli/quilscene").string();
  const Ran ran = run("resave - -o -", "| " + program + " resave - -o - >out.quil",
                      "cat " + scene_path("skeleton") + " | ");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out + ran.err, "");
  EXPECT_TRUE(written("out.quil") == read_file(scene_path("skeleton")));
}

TEST_F(Output, TracesDoNotMixWithAScene) {
  put("script", "delete obj_0 mat_0\nadd obj_0 mat_0\n");
  const Ran ran = run("edit " + scene_path("tiny_v1") + " -o - --script script", ">out.quil");
  EXPECT_EQ(ran.status, 0);
  EXPECT_THAT(ran.err, HasSubstr("-> 1\nparent = obj_0, child = mat_0\n"));
  EXPECT_TRUE(written("out.quil") == read_file(scene_path("tiny_v1")));
  const Ran both = run("edit - -o - --script -", "<script");
  EXPECT_EQ(both.status, 2);
}

TEST_F(Output, APictureGoesToStandardOutput) {
  const std::string robot = scene_path("robot");
  ASSERT_EQ(run("render " + robot + " out.svg").status, 0);
  const Ran ran = run("render - - --format svg", "<" + robot);
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_THAT(ran.out, testing::StartsWith("<?xml"));
  EXPECT_EQ(std::count(ran.out.begin(), ran.out.end(), '\n'),
            [svg = written("out.svg")] { return std::count(svg.begin(), svg.end(), '\n'); }());
  EXPECT_EQ(run("render " + robot + " -").status, 2) << "which format?";
}

TEST_F(Output, ASceneThatCannotBeWrittenToStandardOutputFails) {
  const Ran ran = run("resave " + scene_path("robot") + " -o -", ">/dev/full");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err, HasSubstr("can't write -"));
}

}  // namespace
