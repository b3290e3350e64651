/// @file
/// Texture nodes that show their pictures, pixel by pixel.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

// X headers come after the test framework: their macros would change it.
#include "editor/newquilnode.h"

#include <X11/Xutil.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "qilib/opensave.h"
#include "samples/scenebuilder.h"
#include "tests/support/case_name.h"
#include "tests/window/editorfixture.h"

namespace {

using support::Box;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;

constexpr Word kRed = 0xFF0000FF, kGreen = 0x00FF00FF, kBlue = 0x0000FFFF, kBlack = 0x000000FF;

using Pixels = std::vector<unsigned long>;

Pixels pixels_of(Display* display, Drawable drawable, const Box& box) {
  const viewkit::ImagePtr image(XGetImage(display, drawable, box.x, box.y, static_cast<unsigned>(box.width),
                                          static_cast<unsigned>(box.height), AllPlanes, ZPixmap));
  Pixels pixels;
  for (int y = 0; image && y < box.height; ++y)
    for (int x = 0; x < box.width; ++x) pixels.push_back(XGetPixel(image.get(), x, y));
  return pixels;
}

/// The textures of tex_scene, by node.
constexpr const char* kCorners = "tex_0";   // RGBA, red and green over blue and black
constexpr const char* kNibbles = "tex_1";   // 4-bit indices
constexpr const char* kBytes = "tex_2";     // 8-bit indices
constexpr const char* kNoImage = "tex_3";   // an image that isn't there
constexpr const char* kNoColour = "tex_4";  // an index beyond the palette
constexpr const char* kTooLarge = "tex_5";  // a size that its texels don't fill

constexpr const char* kTrace =
    "Here is in build();tex_0\n"
    "Here is in build();tex_1\n"
    "Here is in build();tex_2\n"
    "Here is in build();tex_3\n"
    "Here is in build();tex_4\n"
    "Here is in build();tex_5\n";

Qis tex_scene() {
  using namespace samples;
  SceneBuilder b(qi::kVersion2);
  const Picture corners{2, 2, {kBlue, kBlack, kRed, kGreen}};
  const Picture small{2, 1, {kRed, kBlue}};
  const Words first = {b.texture("corners", corners), b.indexed_texture("nibbles", small, 4),
                       b.indexed_texture("bytes", {2, 2, {kBlack, kBlue, kGreen, kRed}}, 8)};
  const Words second = {b.texture("no_image", corners), b.indexed_texture("no_colour", small, 4),
                        b.texture("too_large", corners)};
  const Word one = b.add_obj("one", {.mat = b.material("good", {1, 1, 1, 1}, first)});
  const Word other = b.add_obj("other", {.mat = b.material("bad", {1, 1, 1, 1}, second)});
  Qis scene = b.finish("textures", {one, other});
  auto& textures = scene.tex_list.records;
  // Entry 0 is red, entry 1 the blue of 0x78.
  scene.ext.color_palette_list.records[0].colors[0] = 0xF800001F;
  scene.ext.ciimg_list.records[0].pixels = {0x01000000};
  textures[3].table.untiled.image = 99;
  scene.ext.ciimg_list.records[2].pixels = {0x0F000000};
  textures[5].table.untiled.height = 3;
  return scene;
}

class Textures : public EditorTest {
 protected:
  explicit Textures(int depth = 24, std::vector<std::string> arguments = {})
      : EditorTest(depth, {.executable = {}, .arguments = std::move(arguments)}),
        display_(XOpenDisplay(server_.display().c_str())) {}

  std::string file(Qis scene = tex_scene()) const {
    EXPECT_EQ(qiSaveAsQb2(scene, path("textures.quil")), 1);
    return path("textures.quil");
  }
  void toggle() { editor_.chooseMenu({"View", "Display Texture Image"}); }
  void openWithPictures() {
    toggle();
    editor_.open(file());
  }

  /// Where in its node a picture of that size stands.
  Box picture(std::string_view node, int width, int height) {
    const Box box = editor_.graph().node(node).box;
    return {box.x + (box.width - width) / 2, box.y + 4, width, height};
  }
  /// Whether the node is as large as its picture with its name below it, not as its name alone.
  bool shows(std::string_view node, int height) {
    const support::GraphState graph = editor_.graph();
    const Box box = graph.node(node).box, named = graph.node(kNoImage).box;
    return box.width == named.width - 12 && box.height == named.height + height - 2;
  }
  /// Waits until the node shows these pixels on the screen, the top row first.
  testing::AssertionResult awaitPixels(std::string_view node, int width, int height, const Pixels& expected) {
    if (!shows(node, height)) return testing::AssertionFailure() << node << " shows no such picture";
    const Box box = picture(node, width, height);
    Pixels found;
    const bool same = support::waitFor([&] {
      found = pixels_of(display_.get(), DefaultRootWindow(display_.get()), box);
      return found == expected;
    });
    if (same) return testing::AssertionSuccess();
    return testing::AssertionFailure() << node << " shows " << testing::PrintToString(found) << ", not "
                                       << testing::PrintToString(expected);
  }
  /// The lowest of the first 256 pixel values whose colour has these steps (0 to 7, 0 to 7, 0 to 3).
  unsigned long cell(int red, int green, int blue) {
    for (unsigned long pixel = 0; pixel < 256; ++pixel) {
      XColor color{};
      color.pixel = pixel;
      XQueryColor(display_.get(), DefaultColormap(display_.get(), 0), &color);
      if ((color.red + 4681) / 9362 == red && (color.green + 4681) / 9362 == green &&
          (color.blue + 10922) / 21845 == blue)
        return pixel;
    }
    ADD_FAILURE() << "no such colour";
    return 0;
  }
  bool noPicture(std::string_view node) {
    const support::GraphState graph = editor_.graph();
    const support::GraphState::Node shown = graph.node(node);
    return shown.label == node && shown.box.width == graph.node(kNoImage).box.width;
  }

  viewkit::DisplayPtr display_;
};

class Textures8 : public Textures {
 protected:
  Textures8() : Textures(8) {}
};

TEST_F(Textures8, ATwoByTwoImageIsShownUpsideDown) {
  openWithPictures();
  EXPECT_TRUE(awaitPixels(kCorners, 2, 2, {cell(7, 0, 0), cell(0, 7, 0), cell(0, 0, 3), cell(0, 0, 0)}));
}

TEST_F(Textures8, ColourIndexedTexturesShowTheirPalettes) {
  openWithPictures();
  EXPECT_TRUE(awaitPixels(kNibbles, 2, 1, {cell(7, 0, 0), cell(0, 0, 1)}));
  EXPECT_TRUE(awaitPixels(kBytes, 2, 2, {cell(0, 7, 0), cell(7, 0, 0), cell(0, 0, 0), cell(0, 0, 3)}));
}

TEST_F(Textures8, ATextureWithoutAPictureKeepsItsLabel) {
  openWithPictures();
  for (const char* node : {kNoImage, kNoColour, kTooLarge}) EXPECT_TRUE(noPicture(node)) << node;
  EXPECT_THAT(editor_.errors(), Not(HasSubstr("X error")));
}

TEST_F(Textures8, WithTextureDisplayOffTextureNodesShowTheirNames) {
  newOutput();
  const std::string scene = file();
  editor_.open(scene);
  for (const char* node : {kCorners, kNibbles, kBytes}) EXPECT_TRUE(noPicture(node)) << node;
  EXPECT_EQ(newOutput(), "File name: " + scene + "\n" + kTrace);
}

TEST_F(Textures8, EachTextureNodeThatIsBuiltIsTraced) {
  toggle();
  newOutput();
  const std::string scene = file();
  editor_.open(scene);
  EXPECT_EQ(newOutput(), "File name: " + scene + "\n" + kTrace);
}

TEST_F(Textures8, TheToggleTakesEffectForNodesBuiltAfterwards) {
  const std::string scene = file();
  editor_.open(scene);
  toggle();
  EXPECT_TRUE(noPicture(kCorners));
  editor_.open(scene);
  EXPECT_TRUE(shows(kCorners, 2));
  toggle();
  EXPECT_TRUE(awaitPixels(kCorners, 2, 2, {cell(7, 0, 0), cell(0, 7, 0), cell(0, 0, 3), cell(0, 0, 0)}));
  editor_.open(scene);
  EXPECT_TRUE(noPicture(kCorners));
}

TEST_F(Textures8, AGraphThatIsRebuiltShowsThem) {
  editor_.open(file());
  toggle();
  editor_.chooseMenu({"View", "Rebuild Graph"});
  EXPECT_TRUE(awaitPixels(kCorners, 2, 2, {cell(7, 0, 0), cell(0, 7, 0), cell(0, 0, 3), cell(0, 0, 0)}));
  editor_.chooseMenu({"View", "Default"});
  editor_.chooseMenu({"View", "Rebuild Graph"});
  EXPECT_TRUE(noPicture(kCorners));
}

TEST_F(Textures8, APictureHasItsNameBelowIt) {
  openWithPictures();
  const Box box = editor_.graph().node(kCorners).box, shown = picture(kCorners, 2, 2);
  const Box below{box.x + 3, shown.y + 4, box.width - 6, box.y + box.height - shown.y - 7};
  const unsigned long text = BlackPixel(display_.get(), 0);
  EXPECT_TRUE(support::waitFor([&] {
    return std::ranges::count(pixels_of(display_.get(), DefaultRootWindow(display_.get()), below), text) > 20;
  }));
}

TEST_F(Textures8, DefaultTakesThePicturesAwayFromNodesBuiltAfterwards) {
  openWithPictures();
  editor_.chooseMenu({"View", "Default"});
  EXPECT_TRUE(shows(kCorners, 2));
  editor_.open(file());
  EXPECT_TRUE(noPicture(kCorners));
  toggle();
  editor_.open(file());
  EXPECT_TRUE(shows(kCorners, 2));
}

TEST_F(Textures8, APictureIsDrawnWhereItIsHoweverLargeItIs) {
  using namespace samples;
  constexpr Word kWidth = 4096, kBand = 16;
  SceneBuilder b(qi::kVersion1);
  Picture bands{kWidth, 1, {}};
  for (Word x = 0; x < kWidth; ++x) bands.texels.push_back(std::array{kRed, kGreen, kBlue}[x / kBand % 3]);
  const Word wide = b.texture("bands", bands);
  const Word obj = b.add_obj("obj", {.mat = b.material("mat", {1, 1, 1, 1}, {wide})});
  toggle();
  editor_.open(file(b.finish("wide", {obj})));
  const support::GraphState graph = editor_.graph();
  const Box box = graph.node("tex_0").box, view = graph.view;
  ASSERT_EQ(box.width, static_cast<int>(kWidth) + 8);
  const int left = std::max(box.x + 4, view.x + 4),
            right = std::min(box.x + box.width, view.x + view.width) - 4;
  ASSERT_GT(right - left, 500);
  const std::array colors = {cell(7, 0, 0), cell(0, 7, 0), cell(0, 0, 3)};
  Pixels expected;
  for (int x = left; x < right; ++x) expected.push_back(colors[static_cast<Word>(x - box.x - 4) / kBand % 3]);
  const Box line{left, box.y + 4, right - left, 1};
  EXPECT_TRUE(support::waitFor(
      [&] { return pixels_of(display_.get(), DefaultRootWindow(display_.get()), line) == expected; }));
}

// On a deep screen the table's value, the lowest of the pixel values up to 255 with the texel's colour,
// stands in the top byte of the pixel. In 5-6-5 bits those are shades of blue and dark green; what they lack
// is black.
constexpr Pixels::value_type kBlueOf16 = 0x1A00, kBlue1Of16 = 0x0600, kBlackOf16 = 0x0000;

class Textures16 : public Textures {
 protected:
  explicit Textures16(std::vector<std::string> arguments = {}) : Textures(16, std::move(arguments)) {}
};

TEST_F(Textures16, TheTableValueStandsInTheTopByteOfThePixel) {
  openWithPictures();
  EXPECT_TRUE(awaitPixels(kCorners, 2, 2, {kBlackOf16, 0xA000, kBlueOf16, kBlackOf16}));
  EXPECT_TRUE(awaitPixels(kNibbles, 2, 1, {kBlackOf16, kBlue1Of16}));
  for (const char* node : {kNoImage, kNoColour, kTooLarge}) EXPECT_TRUE(noPicture(node)) << node;
}

class OwnColours16 : public Textures16 {
 protected:
  OwnColours16() : Textures16({"-xrm", "*trueColorTextures: True"}) {}
};

TEST_F(OwnColours16, AreForDepth24Alone) {
  openWithPictures();
  EXPECT_TRUE(awaitPixels(kNibbles, 2, 1, {kBlackOf16, kBlue1Of16}));
}

class Textures24 : public Textures {};

TEST_F(Textures24, KeepTheirLabelsAndAreTracedAllTheSame) {
  toggle();
  newOutput();
  const std::string scene = file();
  editor_.open(scene);
  EXPECT_EQ(newOutput(), "File name: " + scene + "\n" + kTrace);
  EXPECT_TRUE(noPicture(kCorners));
  EXPECT_THAT(editor_.errors(), Not(HasSubstr("X error")));
}

class Textures24Off : public Textures {
 protected:
  Textures24Off() : Textures(24, {"-xrm", "quileditor.trueColorTextures: False"}) {}
};

TEST_F(Textures24Off, KeepTheirLabels) {
  openWithPictures();
  EXPECT_TRUE(noPicture(kCorners));
}

struct Resource {
  const char* name;
  std::string specifier;
};

class OwnColours24 : public Textures, public testing::WithParamInterface<Resource> {
 protected:
  OwnColours24() : Textures(24, {"-xrm", GetParam().specifier + ": True"}) {}
};
INSTANTIATE_TEST_SUITE_P(By, OwnColours24,
                         testing::Values(Resource{"OfTheApplication", "quileditor.trueColorTextures"},
                                         Resource{"OfItsClass", "quileditor.TrueColorTextures"},
                                         Resource{"OfAll", "*trueColorTextures"}),
                         CaseName());

TEST_P(OwnColours24, AreShownUpsideDownToo) {
  openWithPictures();
  EXPECT_TRUE(awaitPixels(kCorners, 2, 2, {0xFF0000, 0x00FF00, 0x0000FF, 0x000000}));
  EXPECT_TRUE(awaitPixels(kNibbles, 2, 1, {0xF80000, 0x000078}));
  EXPECT_TRUE(awaitPixels(kBytes, 2, 2, {0x00F800, 0xF80000, 0x000000, 0x0000F8}));
  for (const char* node : {kNoImage, kNoColour, kTooLarge}) EXPECT_TRUE(noPicture(node)) << node;
}

struct Depth {
  const char* name;
  unsigned depth;
  std::vector<char> data;  ///< of 3 x 2 pixels
  Pixels pixels;
};

const Depth kDepths[] = {
    {"Eight", 8, {1, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6}},
    {"Sixteen", 16, {1, 0, 2, 0, 3, 0, 4, 0, 5, 0, 0x7A, 0x7B}, {0x100, 0x200, 0x300, 0x400, 0x500, 0x7A7B}},
    {"TwentyFour",
     24,
     {0, 1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 0, 13, 14, 15, 0, 16, 17, 18},
     {0x010203, 0x040506, 0x070809, 0x0A0B0C, 0x0D0E0F, 0x101112}},
    {"ThirtyTwo",
     32,
     {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0, 6, 7, 8, 9},
     {0x01000000, 0x02000000, 0x03000000, 0x04000000, 0x05000000, 0x06070809}},
};

class TexturePixmaps : public testing::TestWithParam<Depth> {
 protected:
  viewkit::PixmapId made(std::span<char> data, unsigned width, unsigned height, unsigned depth) {
    return CreatePixmapFromQUILTexImg(display_.get(), DefaultRootWindow(display_.get()), data, width, height,
                                      1, 0, depth);
  }
  const support::XServer server_;
  const viewkit::DisplayPtr display_{XOpenDisplay(server_.display().c_str())};
};
INSTANTIATE_TEST_SUITE_P(OfDepth, TexturePixmaps, testing::ValuesIn(kDepths), CaseName());

TEST_P(TexturePixmaps, HoldTheData) {
  std::vector<char> data = GetParam().data;
  const viewkit::PixmapId pixmap = made(data, 3, 2, GetParam().depth);
  ASSERT_TRUE(pixmap);
  EXPECT_THAT(pixels_of(display_.get(), pixmap.get(), {0, 0, 3, 2}), ElementsAreArray(GetParam().pixels));
}

TEST_P(TexturePixmaps, AreNotMadeOfTooLittleData) {
  const std::vector<char>& enough = GetParam().data;
  ASSERT_FALSE(enough.empty());
  std::vector<char> one_short{enough.begin(), enough.end() - 1};
  EXPECT_FALSE(made(one_short, 3, 2, GetParam().depth));
  EXPECT_FALSE(made({}, 1, 1, GetParam().depth));
}

using TexturePixmapRefusals = TexturePixmaps;
INSTANTIATE_TEST_SUITE_P(OfDepth, TexturePixmapRefusals,
                         testing::Values(Depth{"None", 0, {}, {}}, Depth{"Seven", 7, {}, {}},
                                         Depth{"Forty", 40, {}, {}}),
                         CaseName());

TEST_P(TexturePixmapRefusals, AreQuiet) {
  std::vector<char> data(100);
  EXPECT_FALSE(made(data, 3, 2, GetParam().depth));
  EXPECT_FALSE(made(data, 0, 2, 8));
  EXPECT_TRUE(made(data, 3, 2, 8)) << "the display still works";
}

}  // namespace
