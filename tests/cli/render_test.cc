/// @file
/// `quilscene render`.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>

#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/cli/quilscene_run.h"
#include "tests/support/picturefile.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Render : public Quilscene {
 protected:
  std::vector<std::string> sortedWords(const char* pdf) const {
    std::vector<std::string> texts;
    for (const auto& word : support::placedWords(scratch_ / pdf)) texts.push_back(word.text);
    std::ranges::sort(texts);
    return texts;
  }
};

TEST_F(Render, ShowsTheNodesOfTheGraph) {
  const std::string scene = scene_path("skeleton");
  ASSERT_EQ(run("render " + scene + " out.pdf").status, 0);
  std::vector<std::string> nodes = lines_with(run("graph " + scene).out, "node");
  std::ranges::replace(nodes, "lod_5", "LOD");  // which it shows instead
  std::ranges::sort(nodes);
  EXPECT_EQ(sortedWords("out.pdf"), nodes);
  ASSERT_EQ(run("render " + scene + " out.svg").status, 0);
  EXPECT_EQ(support::filledBoxes(written("out.svg")).size(), nodes.size());
}

TEST_F(Render, ManyNodesAreNoRibbon) {
  Qis city = samples::city(450, 0);
  ASSERT_EQ(qiSaveAsQb2(city, scratch_ / "city.quil"), 1);
  ASSERT_EQ(run("render city.quil out.svg").status, 0);
  const std::string svg = written("out.svg");
  auto nodes = support::filledBoxes(svg);
  const std::size_t blocks = std::erase_if(
      nodes, [](const support::FilledBox& box) { return box.color == 0xeff0f2 || box.color == 0xffffff; });
  EXPECT_EQ(nodes.size(), lines_with(run("graph city.quil").out, "node").size());
  EXPECT_GE(blocks, 2u) << "each depth is drawn at once";
  double width = 0, height = 1;
  ASSERT_EQ(std::sscanf(svg.c_str() + svg.find("viewBox"), "viewBox=\"0 0 %lf %lf", &width, &height), 2);
  EXPECT_LT(width / height, 4);
}

TEST_F(Render, WritesEveryFormatAndSheets) {
  const std::string scene = scene_path("robot");
  for (const auto& [name, begins] : {std::pair{"a.svg", "<?xml"},
                                     {"a.pdf", "%PDF-"},
                                     {"a.png", "\x89PNG"},
                                     {"a.ps", "%!PS-Adobe"},
                                     {"a.eps", "%!PS-Adobe"}}) {
    EXPECT_EQ(run("render " + scene + " " + name).status, 0) << name;
    EXPECT_THAT(written(name), StartsWith(begins));
  }
  ASSERT_EQ(run("render " + scene + " b.pdf --page a5").status, 0);
  EXPECT_GT(support::placedWords(scratch_ / "b.pdf").back().page, 1);
}

TEST_F(Render, APngIsMadeAsSmallAsAsked) {
  const auto larger_side = [&](const std::string& options) {
    EXPECT_EQ(run("render " + scene_path("robot") + " a.png " + options).status, 0);
    const std::string png = written("a.png");
    return std::max(word_at(png, 16), word_at(png, 20));
  };
  EXPECT_EQ(larger_side("--size 128"), 128u);
  EXPECT_EQ(larger_side("--size 1000000"), larger_side(""));
}

TEST_F(Render, ManyScenesInAFolder) {
  std::filesystem::create_directories(scratch_ / "scenes/deep");
  put("scenes/a.quil", read_file(scene_path("robot")));
  put("scenes/deep/b.quil", read_file(scene_path("skeleton")));
  const Ran ran = run("render -r scenes -C pictures --format svg");
  EXPECT_EQ(ran.status, 0) << ran.err;
  ASSERT_EQ(run("render scenes/deep/b.quil b.svg").status, 0);
  EXPECT_EQ(written("pictures/scenes/deep/b.quil.svg"), written("b.svg"));
  EXPECT_TRUE(exists("pictures/scenes/a.quil.svg"));
  EXPECT_EQ(run("render scenes/a.quil -C pictures").status, 2) << "which format?";
  EXPECT_EQ(run("render ../a.quil -C pictures --format svg").status, 2) << "not below the folder";
  EXPECT_EQ(run("render missing.quil scenes/a.quil -C pictures --format png").status, 1);
  EXPECT_TRUE(exists("pictures/scenes/a.quil.png"));
}

TEST_F(Render, NeedsAnOutputOfAKnownFormat) {
  const std::string scene = scene_path("robot");
  for (const auto& [arguments, says] :
       {std::pair{scene, "an OUT is missing"},
        {scene + " a.svg b.svg", "one OUT too many: b.svg"},
        {scene + " out.gif", "the name of a picture ends in .svg, .pdf, .png, .ps or .eps: out.gif"},
        {scene + " a.png --page A4", "only PDF and PostScript have pages"},
        {scene + " a.pdf --page B9", "no such page: B9"},
        {scene + " a.svg --size 128", "only PNG has a size in pixels"},
        {scene + " a.png --size 0", "a picture of no pixels"},
        {scene + " a.png --size big", "big is no whole number"},
        {std::string(), "a FILE is missing"}}) {
    const Ran ran = run("render " + arguments);
    EXPECT_EQ(ran.status, 2) << arguments;
    EXPECT_THAT(ran.err, HasSubstr(says));
  }
  EXPECT_EQ(run("render nowhere.quil a.svg").status, 1);
  const Ran unwritable = run("render " + scene + " nowhere/a.svg");
  EXPECT_EQ(unwritable.status, 1);
  EXPECT_THAT(unwritable.err, HasSubstr("nowhere/a.svg"));
}

}  // namespace
