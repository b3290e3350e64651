/// @file
/// Images of textures: out as PNG files, and others in their place.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include "qilib/opensave.h"
#include "tests/cli/quilscene_run.h"
#include "tests/support/case_name.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class Texture : public Quilscene {
 protected:
  /// Runs a program of ImageMagick in the scratch directory.
  void magick(const std::string& arguments) const {
    ASSERT_EQ(run("--version >/dev/null", "; " + arguments).status, 0) << arguments;
  }
  /// Red, green, blue and alpha of a PNG's texels, the top row first.
  std::string rgba(const std::string& png) const {
    magick("convert " + png + " -depth 8 rgba:texels");
    return written("texels");
  }
  Ran put_image(const std::string& scene, const std::string& node, const std::string& png) const {
    return edit(scene, "image " + node + " " + png + "\n");
  }
};

TEST_F(Texture, OfRgbaHasEveryByteWithTheTopRowFirst) {
  Qis scene;
  ASSERT_EQ(qiOpenQb(scene_path("robot"), scene), 1);
  ASSERT_EQ(run("texture " + scene_path("robot") + " tex_1 -o tex.png").status, 0);
  const std::string shown = rgba("tex.png");
  const auto& texels = scene.teximg_list.records[1].texels;
  constexpr std::size_t kRow = 32 * 4, kRows = 16;
  ASSERT_EQ(shown.size(), kRow * kRows);
  for (std::size_t i = 0; i < shown.size(); ++i)
    ASSERT_EQ(static_cast<unsigned char>(shown[i]),
              std::to_integer<unsigned char>(texels[(kRows - 1 - i / kRow) * kRow + i % kRow]))
        << i;
}

TEST_F(Texture, OfAPaletteHasItsColours) {
  // The first index is the lowest row's leftmost one. It is the only one whose palette entry is changed.
  Qis scene;
  ASSERT_EQ(qiOpenQb(scene_path("skeleton"), scene), 1);
  auto& pixels = scene.ext.ciimg_list.records[0].pixels;
  for (Word& word : pixels) word = 0;
  pixels[0] = 0x10000000;
  scene.ext.color_palette_list.records[0].colors[0] = 0xF800'07C1;  // red, clear; green, solid
  ASSERT_EQ(qiSaveAsQb2(scene, scratch_ / "scene.quil"), 1);
  ASSERT_EQ(run("texture scene.quil tex_0 -o tex.png").status, 0);
  const std::string shown = rgba("tex.png");
  EXPECT_EQ(shown.substr(0, 4), std::string("\xF8\0\0\0", 4));
  EXPECT_EQ(shown.substr(15 * 16 * 4, 4), std::string("\0\xF8\0\xFF", 4));
}

TEST_F(Texture, EachTileAndAllOfThem) {
  const std::string robot = scene_path("robot");
  EXPECT_EQ(run("texture " + robot + " --all pictures").status, 0);
  for (const char* name :
       {"tex_0", "tex_1", "tex_2", "tex_3", "tex_4", "tex_5", "tex_6", "tex_6_1", "tex_6_2"})
    EXPECT_TRUE(exists(std::string("pictures/") + name + ".png")) << name;
  EXPECT_EQ(run("texture " + robot + " tex_6 --tile 2 -o -", ">tile.png").status, 0);
  EXPECT_EQ(written("tile.png"), written("pictures/tex_6_2.png"));
  const Ran others = run("texture " + scene_path("skeleton") + " --all pictures2");
  EXPECT_EQ(others.status, 1);
  EXPECT_EQ(others.err, "quilscene: tex_2: its palette lacks a colour of the image\n");
  EXPECT_TRUE(exists("pictures2/tex_4_1.png")) << "the others are written";
}

struct Unknown {
  const char* name;
  const char* sample;
  void (*spoil)(Qis& scene);
  const char* says;
};
class TextureRefused : public Texture, public testing::WithParamInterface<Unknown> {};

TEST_P(TextureRefused, WithAReasonBothWays) {
  ASSERT_EQ(run("texture " + scene_path(GetParam().sample) + " tex_0 -o before.png").status, 0);
  Qis scene;
  ASSERT_EQ(qiOpenQb(scene_path(GetParam().sample), scene), 1);
  GetParam().spoil(scene);
  ASSERT_EQ(qiSaveAsQb2(scene, scratch_ / "scene.quil"), 1);
  const Ran out = run("texture scene.quil tex_0 -o tex.png");
  EXPECT_EQ(out.status, 1);
  EXPECT_THAT(out.err, HasSubstr(GetParam().says));
  EXPECT_FALSE(exists("tex.png"));
  put("script", "image tex_0 before.png\n");
  const Ran in = run("edit scene.quil -o out.quil --script script");
  EXPECT_EQ(in.status, 1);
  EXPECT_THAT(in.err, HasSubstr(GetParam().says));
  EXPECT_FALSE(exists("out.quil"));
}

const Unknown kUnknown[] = {
    {"IntensityOf8Bits", "robot", [](Qis& scene) { scene.tex_list.records[0].fixed.tex_type = 0x100; },
     "tex_0: how the texels of its form and depth stand is not known"},
    {"RgbaOf16Bits", "robot", [](Qis& scene) { scene.tex_list.records[0].fixed.tex_type = 0x205; },
     "is not known"},
    {"ColourIndexedWithoutAPalette", "skeleton",
     [](Qis& scene) { scene.tex_list.records[0].ext->head.color_palette = 0; }, "is not known"},
    {"NoSuchPalette", "skeleton", [](Qis& scene) { scene.tex_list.records[0].ext->palettes[0] = 9; },
     "tex_0: it has no palette"},
    {"NoSuchImage", "robot", [](Qis& scene) { scene.tex_list.records[0].table.untiled.image = kUnset; },
     "tex_0: it has no image"},
    {"LargerThanItsTexels", "robot", [](Qis& scene) { scene.tex_list.records[0].table.untiled.width = 64; },
     "teximg_0 holds fewer texels"},
    {"NoSize", "robot", [](Qis& scene) { scene.tex_list.records[0].table.untiled.width = 0; }, "has no size"},
    {"Huge", "robot", [](Qis& scene) { scene.tex_list.records[0].table.untiled.height = 0x10000000; },
     "larger than 4096"},
};
INSTANTIATE_TEST_SUITE_P(Textures, TextureRefused, testing::ValuesIn(kUnknown), CaseName{});

TEST_F(Texture, NeedsATextureThatIsThere) {
  const std::string robot = scene_path("robot");
  for (const char* node : {"tex_99", "mat_0", "nothing"})
    EXPECT_EQ(run("texture " + robot + " " + node + " -o tex.png").status, 1) << node;
  EXPECT_EQ(run("texture " + robot + " tex_6 --tile 3 -o tex.png").status, 1);
  EXPECT_EQ(run("texture " + robot + " tex_0").status, 2);
  EXPECT_EQ(run("texture " + robot + " -o tex.png").status, 2);
  EXPECT_EQ(run("texture " + robot + " tex_0 --all pictures").status, 2);
  EXPECT_EQ(run("texture " + robot + " tex_0 -o nowhere/tex.png").status, 1);
}

// The other way.

TEST_F(Texture, ComesBackAsItWas) {
  for (const char* sample : {"robot", "skeleton"}) {
    const Ran out = run("texture " + scene_path(sample) + " --all pictures");
    std::string script;
    for (const std::string& node : shared_scene(sample).nodes)
      if (node.starts_with("tex_") && out.err.find(node) == std::string::npos)
        script += "image " + node + " pictures/" + node + ".png\n";
    const Ran ran = edit(sample, script);
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr(": 0 of "));
    EXPECT_EQ(std::count(ran.out.begin(), ran.out.end(), '\n'),
              2 * std::count(script.begin(), script.end(), '\n'));
    EXPECT_EQ(run("diff " + scene_path(sample) + " out.quil").out, "");
  }
}

TEST_F(Texture, OfRgbaTakesEveryPicture) {
  magick("convert -size 32x32 plasma:red-blue -alpha set -channel A -evaluate uniform-noise 60% PNG32:p.png");
  EXPECT_THAT(put_image("robot", "tex_0", "p.png").out, HasSubstr("tex_0: 0 of 1024 texels differ"));
  ASSERT_EQ(run("texture out.quil tex_0 -o q.png").status, 0);
  EXPECT_TRUE(rgba("q.png") == rgba("p.png"));
  const std::string differences = run("diff " + scene_path("robot") + " out.quil").out;
  EXPECT_THAT(differences, HasSubstr("\n! teximg_0 texels: 4096 bytes, "));
  EXPECT_EQ(std::count(differences.begin(), differences.end(), '\n'), 3) << differences;
  EXPECT_EQ(run("check --quiet out.quil").status, 0);
}

TEST_F(Texture, OfAPaletteTakesFewColoursAsTheyAre) {
  magick(
      "convert -size 16x16 xc:'#f80000' -fill '#00f8f8' -draw 'point 3,4' -fill '#0808f8' -draw 'point 0,0' "
      "p.png");
  EXPECT_THAT(put_image("skeleton", "tex_0", "p.png").out, HasSubstr("tex_0: 0 of 256 texels differ"));
  ASSERT_EQ(run("texture out.quil tex_0 -o q.png").status, 0);
  EXPECT_TRUE(rgba("q.png") == rgba("p.png"));
  EXPECT_EQ(run("check --quiet out.quil").status, 0);
}

TEST_F(Texture, OfAPaletteTakesAPictureOfManyColoursAsNearAsItCan) {
  magick("convert -size 32x32 gradient:'#ff0000-#0000ff' PNG24:p.png");
  const Ran ran = put_image("skeleton", "tex_1", "p.png");
  EXPECT_EQ(ran.status, 0) << ran.err;
  int texels = 0, all = 0, most = 0;
  ASSERT_EQ(std::sscanf(ran.out.c_str(), "tex_1: %d of %d texels differ from the picture, by at most %d",
                        &texels, &all, &most),
            3)
      << ran.out;
  EXPECT_EQ(all, 1024);
  EXPECT_GT(texels, 0);
  EXPECT_LE(most, 8) << "32 colours of five bits have entries";
  ASSERT_EQ(run("texture out.quil tex_1 -o q.png").status, 0);
  const std::string wanted = rgba("p.png"), got = rgba("q.png");
  int farthest = 0;
  for (std::size_t i = 0; i < wanted.size(); ++i)
    farthest = std::max(
        farthest, std::abs(int{static_cast<unsigned char>(wanted[i])} - static_cast<unsigned char>(got[i])));
  EXPECT_EQ(farthest, most) << "it is what is said";
  EXPECT_EQ(put_image("skeleton", "tex_1", "p.png").out, ran.out) << "the same each time";
  EXPECT_EQ(run("check --quiet out.quil").status, 0);
}

TEST_F(Texture, OfAPaletteIsMadeOfFewerColoursByItsPalette) {
  magick("convert -size 16x16 plasma:red-blue PNG24:p.png");
  const Ran ran = put_image("skeleton", "tex_0", "p.png");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_THAT(ran.out, HasSubstr(" of 256 texels differ"));
  ASSERT_EQ(run("texture out.quil tex_0 -o q.png").status, 0);
  EXPECT_THAT(run("--version >/dev/null", "; identify -format %k q.png").out,
              testing::AnyOf("16", "15", "14", "13", "12"));
}

TEST_F(Texture, APaletteThatServesAnotherImageStays) {
  Qis scene;
  ASSERT_EQ(qiOpenQb(scene_path("skeleton"), scene), 1);
  scene.tex_list.records[2].ext->palettes[0] = 0;
  ASSERT_EQ(qiSaveAsQb2(scene, scratch_ / "scene.quil"), 1);
  magick("convert -size 16x16 xc:'#f800f8' p.png");
  put("script", "image tex_0 p.png\n");
  const Ran ran = run("edit scene.quil -o out.quil --script script");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err, HasSubstr("serves tex_2, too"));
  EXPECT_FALSE(exists("out.quil"));
}

TEST_F(Texture, APictureThatDoesNotFitIsRefused) {
  const std::string robot = scene_path("robot");
  ASSERT_EQ(run("texture " + robot + " tex_0 -o good.png").status, 0);
  const std::string good = written("good.png");
  magick("convert -size 31x32 xc:red narrow.png");
  put("empty.png", "");
  put("text.png", "not a picture");
  std::string huge = good;  // its header tells of 2^31 - 1 texels each way
  for (const std::size_t at : {std::size_t{16}, std::size_t{20}}) huge = with_word(huge, at, 0x7FFFFFFF);
  put("huge.png", huge);
  for (const auto& [file, says] : {std::pair{"narrow.png", "it has 32 x 32 texels, and the picture 31 x 32"},
                                   {"missing.png", "can't read missing.png"},
                                   {"empty.png", "empty.png is no good PNG"},
                                   {"text.png", "text.png is no good PNG"},
                                   {"huge.png", "huge.png"}}) {
    const Ran ran = run("edit " + robot + " -o out.quil --script script", "",
                        limit_memory() + "echo image tex_0 " + file + " >script && ");
    EXPECT_EQ(ran.status, 1) << file;
    EXPECT_THAT(ran.err, HasSubstr(says));
    EXPECT_FALSE(exists("out.quil"));
  }
  EXPECT_EQ(put_image("robot", "mat_0", "good.png").status, 1);
  EXPECT_EQ(put_image("robot", "tex_99", "good.png").status, 1);
  EXPECT_EQ(edit("robot", "image tex_0\n").status, 2);
}

TEST_F(Texture, AnyCutOfAPngIsRefused) {
  ASSERT_EQ(run("texture " + scene_path("robot") + " tex_3 -o good.png").status, 0);
  const std::string good = written("good.png");
  const std::size_t end = good.find("IEND") - 4;
  for (std::size_t bytes = 0; bytes < end; bytes += 7) {
    put("cut.png", good.substr(0, bytes));
    const Ran ran = put_image("robot", "tex_3", "cut.png");
    EXPECT_EQ(ran.status, 1) << bytes;
    EXPECT_THAT(ran.err, HasSubstr("cut.png is no good PNG")) << bytes;
  }
}

}  // namespace
