/// @file
/// Textures as pictures: decoding, refusals, quantisation.
#include "editor/model/texturepicture.h"

#include <gmock/gmock.h>

#include <array>
#include <climits>
#include <functional>
#include <initializer_list>
#include <numeric>
#include <string>

#include "tests/support/case_name.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using Texel = TexturePicture::Texel;

constexpr Texel kRed{0xFF, 0, 0}, kGreen{0, 0xFF, 0}, kBlue{0, 0, 0xFF}, kGrey{0x10, 0x20, 0x30};

qi::CompactArray<std::byte> bytes(std::initializer_list<int> values) {
  qi::CompactArray<std::byte> result;
  for (const int value : values) result.push_back(static_cast<std::byte>(value));
  return result;
}

/// One texture of 2 x 2 texels: red, green in the first row, blue, grey in the second.
Qis rgba_scene() {
  Qis scene;
  scene.header.fixed.version = qi::kVersion1;
  qi::Tex& tex = scene.tex_list.records.emplace_back();
  tex.table.untiled.width = tex.table.untiled.height = 2;
  scene.teximg_list.records.emplace_back().texels =
      bytes({0xFF, 0, 0, 1, /**/ 0, 0xFF, 0, 2, /**/ 0, 0, 0xFF, 3, /**/ 0x10, 0x20, 0x30, 4});
  return scene;
}

/// One colour-indexed texture of `width` x 1 texels.
Qis indexed_scene(Word bits, Word width, Words pixels, Words colors) {
  Qis scene;
  scene.header.fixed.version = qi::kVersion2;
  qi::Tex& tex = scene.tex_list.records.emplace_back();
  tex.table.untiled.width = width;
  tex.table.untiled.height = 1;
  qi::TexExt& ext = tex.ext.emplace();
  ext.head.color_palette = 1;
  ext.palettes = {0};
  qi::CiImg& image = scene.ext.ciimg_list.records.emplace_back();
  image.fixed.width = width;
  image.fixed.height = 1;
  image.fixed.index_bits = bits;
  image.pixels = std::move(pixels);
  scene.ext.color_palette_list.records.emplace_back().colors = std::move(colors);
  return scene;
}

/// Three texels of four bits: entries 0, 1 and 2.
Qis small_indexed_scene() { return indexed_scene(4, 3, {0x01200000}, {0xF800001F, 0x07C0FFFF}); }

TEST(TexturePictures, AnRgbaTextureTakesTheFirstThreeBytesOfEachTexel) {
  const auto picture = texture_picture(rgba_scene(), 0);
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 2u);
  EXPECT_EQ(picture->height, 2u);
  EXPECT_THAT(picture->texels, ElementsAre(kRed, kGreen, kBlue, kGrey));
}

TEST(TexturePictures, TexelsBeyondTheSizeDoNotCount) {
  Qis scene = rgba_scene();
  scene.tex_list.records[0].table.untiled.height = 1;
  EXPECT_THAT(texture_picture(scene, 0)->texels, ElementsAre(kRed, kGreen));
}

TEST(TexturePictures, TheImageIsTheOneThatTheTextureNames) {
  Qis scene = rgba_scene();
  scene.teximg_list.records.insert(scene.teximg_list.records.begin(), qi::Teximg{});
  scene.tex_list.records[0].table.untiled.image = 1;
  EXPECT_THAT(texture_picture(scene, 0)->texels, ElementsAre(kRed, kGreen, kBlue, kGrey));
}

TEST(TexturePictures, ATiledTextureShowsItsFirstTile) {
  Qis scene = rgba_scene();
  qi::Tex& tex = scene.tex_list.records[0];
  tex.fixed.tiled = 1;
  tex.table.untiled = {};
  tex.table.tiled.tile_count = 2;
  tex.table.widths = {4, 9};
  tex.table.heights = {1, 9};
  tex.table.words4 = tex.table.words5 = tex.table.words7 = {8, 8};
  tex.table.images = {0, 9};
  const auto picture = texture_picture(scene, 0);
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 4u);
  EXPECT_EQ(picture->height, 1u);
  EXPECT_THAT(picture->texels, ElementsAre(kRed, kGreen, kBlue, kGrey));
}

TEST(TexturePictures, FourBitIndicesTakeTheUpperHalfOfAPaletteWordFirst) {
  const auto picture = texture_picture(indexed_scene(4, 2, {0x01000000}, {0xF800001F}), 0);
  ASSERT_TRUE(picture);
  EXPECT_THAT(picture->texels, ElementsAre(Texel{0xF8, 0, 0}, Texel{0, 0, 0x78}));
}

TEST(TexturePictures, FourBitIndicesComeFromTheMostSignificantEndEightToAWord) {
  Words colors;  // entry k has k times 8 of red
  for (Word k = 0; k < 16; k += 2) colors.push_back(k << 11 << 16 | (k + 1) << 11);
  const auto picture = texture_picture(indexed_scene(4, 10, {0xFEDCBA98, 0x12000000}, colors), 0);
  ASSERT_TRUE(picture);
  std::vector<int> entries;
  for (const Texel& texel : picture->texels) entries.push_back(texel.red / 8);
  EXPECT_THAT(entries, ElementsAre(15, 14, 13, 12, 11, 10, 9, 8, 1, 2));
}

TEST(TexturePictures, EightBitIndicesComeFromTheMostSignificantEndFourToAWord) {
  Words colors(128);
  colors[0x00 / 2] = 0x0000F800;  // entry 1
  colors[0x10 / 2] = 0x07C00000;  // entry 0x10
  colors[0xFE / 2] = 0x0000003E;  // entry 0xFF
  const auto picture = texture_picture(indexed_scene(8, 5, {0x0110FF00, 0x10000000}, colors), 0);
  ASSERT_TRUE(picture);
  EXPECT_THAT(picture->texels, ElementsAre(Texel{0xF8, 0, 0}, Texel{0, 0xF8, 0}, Texel{0, 0, 0xF8},
                                           Texel{0, 0, 0}, Texel{0, 0xF8, 0}));
}

TEST(TexturePictures, IndicesOfAnyOtherWidthAreReadAsFourBits) {
  EXPECT_EQ(texture_picture(indexed_scene(16, 2, {0x01000000}, {0xF800001F}), 0)->texels,
            texture_picture(indexed_scene(4, 2, {0x01000000}, {0xF800001F}), 0)->texels);
}

TEST(TexturePictures, TheAlphaBitOfAPaletteColourIsIgnored) {
  EXPECT_EQ(texture_picture(indexed_scene(4, 1, {0}, {0xFFFF0000}), 0)->texels,
            texture_picture(indexed_scene(4, 1, {0}, {0xFFFE0000}), 0)->texels);
}

TEST(TexturePictures, ColourIndexedIsAVersion2TextureWhoseFlagIsExactlyOne) {
  for (const auto& [version, flag] : {std::pair<Word, Word>{qi::kVersion1, 1},
                                      {qi::kVersion2, 0},
                                      {qi::kVersion2, 2},
                                      {qi::kVersion2, 0x80000001}}) {
    SCOPED_TRACE(std::to_string(version) + " " + std::to_string(flag));
    Qis scene = small_indexed_scene();
    scene.header.fixed.version = version;
    scene.tex_list.records[0].ext->head.color_palette = flag;
    EXPECT_FALSE(texture_picture(scene, 0));
    scene.teximg_list = rgba_scene().teximg_list;
    EXPECT_THAT(texture_picture(scene, 0)->texels, ElementsAre(kRed, kGreen, kBlue));
  }
}

TEST(TexturePictures, AVersion2TextureWithoutItsStructureIsRgba) {
  Qis scene = rgba_scene();
  scene.header.fixed.version = qi::kVersion2;
  EXPECT_THAT(texture_picture(scene, 0)->texels, ElementsAre(kRed, kGreen, kBlue, kGrey));
}

TEST(TexturePictures, ThePaletteIsTheOneOfTheFirstTile) {
  Qis scene = small_indexed_scene();
  auto& palettes = scene.ext.color_palette_list.records;
  palettes.insert(palettes.begin(), qi::ColorPalette{});
  scene.tex_list.records[0].ext->palettes = {1, 0};
  EXPECT_THAT(texture_picture(scene, 0)->texels,
              ElementsAre(Texel{0xF8, 0, 0}, Texel{0, 0, 0x78}, Texel{0, 0xF8, 0}));
}

TEST(TexturePictures, TheLargestTextureHasAPicture) {
  Qis scene = rgba_scene();
  scene.teximg_list.records[0].texels.resize(std::size_t{4} * kLargestTextureSide);
  scene.tex_list.records[0].table.untiled.width = kLargestTextureSide;
  scene.tex_list.records[0].table.untiled.height = 1;
  EXPECT_EQ(texture_picture(scene, 0)->texels.size(), kLargestTextureSide);
}

struct Refusal {
  const char* name;
  std::function<Qis()> scene;       ///< of a texture that has a picture
  std::function<void(Qis&)> spoil;  ///< what takes the picture away
};

qi::TexTable::Untiled& table_of(Qis& scene) { return scene.tex_list.records[0].table.untiled; }
qi::CiImg& image_of(Qis& scene) { return scene.ext.ciimg_list.records[0]; }

/// Makes the texture a tiled one like itself; then each array can be emptied.
void make_tiled(Qis& scene) {
  qi::Tex& tex = scene.tex_list.records[0];
  tex.fixed.tiled = 1;
  tex.table.widths = tex.table.heights = {2};
  tex.table.images = {0};
}

const Refusal kRefusals[] = {
    {"NoTextures", rgba_scene, [](Qis& s) { s.tex_list.records.clear(); }},
    {"NoImages", rgba_scene, [](Qis& s) { s.teximg_list.records.clear(); }},
    {"ImageBeyondItsList", rgba_scene, [](Qis& s) { table_of(s).image = 1; }},
    {"ImageUnset", rgba_scene, [](Qis& s) { table_of(s).image = kUnset; }},
    {"OneTexelByteShort", rgba_scene, [](Qis& s) { s.teximg_list.records[0].texels.pop_back(); }},
    {"NoTexels", rgba_scene, [](Qis& s) { s.teximg_list.records[0].texels.clear(); }},
    {"WiderThanItsTexels", rgba_scene, [](Qis& s) { table_of(s).width = 3; }},
    {"HigherThanItsTexels", rgba_scene, [](Qis& s) { table_of(s).height = 3; }},
    {"NoWidth", rgba_scene, [](Qis& s) { table_of(s).width = 0; }},
    {"NoHeight", rgba_scene, [](Qis& s) { table_of(s).height = 0; }},
    {"TooWide", rgba_scene,
     [](Qis& s) {
       table_of(s) = {0, 0, kLargestTextureSide + 1, 1, 0, 0, 0};
       s.teximg_list.records[0].texels.resize(100'000);
     }},
    {"TooHigh", rgba_scene,
     [](Qis& s) {
       table_of(s) = {0, 0, 1, kLargestTextureSide + 1, 0, 0, 0};
       s.teximg_list.records[0].texels.resize(100'000);
     }},
    {"SizeWhoseProductWraps", rgba_scene,
     [](Qis& s) { table_of(s).width = table_of(s).height = 0x80000001; }},
    {"NoTileWidths", rgba_scene,
     [](Qis& s) {
       make_tiled(s);
       s.tex_list.records[0].table.widths.clear();
     }},
    {"NoTileHeights", rgba_scene,
     [](Qis& s) {
       make_tiled(s);
       s.tex_list.records[0].table.heights.clear();
     }},
    {"NoTileImages", rgba_scene,
     [](Qis& s) {
       make_tiled(s);
       s.tex_list.records[0].table.images.clear();
     }},
    {"TileImageBeyondItsList", rgba_scene,
     [](Qis& s) {
       make_tiled(s);
       s.tex_list.records[0].table.images = {1};
     }},
    {"NoIndexedImages", small_indexed_scene, [](Qis& s) { s.ext.ciimg_list.records.clear(); }},
    {"IndexedImageBeyondItsList", small_indexed_scene, [](Qis& s) { table_of(s).image = 1; }},
    {"NoPalettes", small_indexed_scene, [](Qis& s) { s.ext.color_palette_list.records.clear(); }},
    {"PaletteBeyondItsList", small_indexed_scene, [](Qis& s) { s.tex_list.records[0].ext->palettes = {1}; }},
    {"PaletteUnset", small_indexed_scene, [](Qis& s) { s.tex_list.records[0].ext->palettes = {kUnset}; }},
    {"NoPaletteReference", small_indexed_scene, [](Qis& s) { s.tex_list.records[0].ext->palettes.clear(); }},
    {"PaletteShorterThanAnIndexNeeds", small_indexed_scene,
     [](Qis& s) { s.ext.color_palette_list.records[0].colors.pop_back(); }},
    {"NoPaletteColours", small_indexed_scene,
     [](Qis& s) { s.ext.color_palette_list.records[0].colors.clear(); }},
    {"NoPixels", small_indexed_scene, [](Qis& s) { image_of(s).pixels.clear(); }},
    {"WiderThanTheIndexedImage", small_indexed_scene, [](Qis& s) { table_of(s).width = 4; }},
    {"IndexedImageThatClaimsMoreThanItHolds", small_indexed_scene,
     [](Qis& s) { table_of(s).width = image_of(s).fixed.width = 9; }},
    {"NoIndexedWidth", small_indexed_scene, [](Qis& s) { image_of(s).fixed.width = 0; }},
    {"TooWideIndexed", small_indexed_scene, [](Qis& s) { image_of(s).fixed.width = 4097; }},
    {"TooHighIndexed", small_indexed_scene, [](Qis& s) { image_of(s).fixed.height = 4097; }},
    {"OneEightBitIndexShort", small_indexed_scene,
     [](Qis& s) {
       table_of(s).width = image_of(s).fixed.width = 5;
       image_of(s).fixed.index_bits = 8;
     }},
};

class TextureRefusals : public testing::TestWithParam<Refusal> {};
INSTANTIATE_TEST_SUITE_P(All, TextureRefusals, testing::ValuesIn(kRefusals), CaseName());

TEST_P(TextureRefusals, HaveNoPicture) {
  Qis scene = GetParam().scene();
  ASSERT_TRUE(texture_picture(scene, 0));
  GetParam().spoil(scene);
  EXPECT_FALSE(texture_picture(scene, 0));
}

TEST(TexturePictures, ARecordNumberOutsideTheListHasNone) {
  const Qis scene = rgba_scene();
  for (const long number : {-1L, 1L, 0xFFFFFFFFL, LONG_MAX, LONG_MIN})
    EXPECT_FALSE(texture_picture(scene, number)) << number;
}

TEST(TexturePictures, ATiledCopyOfATextureLooksTheSame) {
  Qis scene = rgba_scene();
  make_tiled(scene);
  EXPECT_EQ(texture_picture(scene, 0)->texels, texture_picture(rgba_scene(), 0)->texels);
}

constexpr TexturePicture::Texel kWhite{0xFF, 0xFF, 0xFF};

/// Its own number at each place: then the colours are the indices of the table.
std::array<std::uint8_t, 256> identity() {
  std::array<std::uint8_t, 256> table{};
  std::iota(table.begin(), table.end(), std::uint8_t{0});
  return table;
}

TEST(TableColors, TurnThePictureUpsideDown) {
  const TexturePicture picture{3, 2, {kRed, kRed, kGreen, kBlue, kWhite, kWhite}};
  EXPECT_THAT(table_colors(picture, identity()), ElementsAre(0x03, 0xFF, 0xFF, 0xE0, 0xE0, 0x1C));
}

TEST(TableColors, TakeTheHighBitsOfEachColour) {
  const TexturePicture picture{4, 1, {{0x1F, 0x1F, 0x3F}, {0x20, 0, 0}, {0, 0x20, 0}, {0xDF, 0xDF, 0xBF}}};
  EXPECT_THAT(table_colors(picture, identity()), ElementsAre(0, 0x20, 0x04, 6 << 5 | 6 << 2 | 2));
}

TEST(TableColors, AreTheValuesOfTheTable) {
  std::array<std::uint8_t, 256> table{};
  table[0xE0] = 7;
  table[0x1C] = 200;
  EXPECT_THAT(table_colors({1, 2, {kRed, kGreen}}, table), ElementsAre(200, 7));
}

struct Masks {
  const char* name;
  ColorMasks masks;
  std::vector<std::uint32_t> red_green_blue_grey;
};

const Masks kMasks[] = {
    {"EightBitsEach", {0xFF0000, 0xFF00, 0xFF}, {0xFF0000, 0x00FF00, 0x0000FF, 0x102030}},
    {"BlueFirst", {0xFF, 0xFF00, 0xFF0000}, {0x0000FF, 0x00FF00, 0xFF0000, 0x302010}},
    {"TenBitsEach", {0x3FF00000, 0xFFC00, 0x3FF}, {0x3FF00000, 0xFFC00, 0x3FF, 0x040200C0}},
    {"FiveSixFive", {0xF800, 0x07E0, 0x1F}, {0xF800, 0x07E0, 0x1F, 1 << 11 | 7 << 5 | 5}},
    {"NoMasks", {0, 0, 0}, {0, 0, 0, 0}},
};

class OwnColors : public testing::TestWithParam<Masks> {};
INSTANTIATE_TEST_SUITE_P(All, OwnColors, testing::ValuesIn(kMasks), CaseName());

TEST_P(OwnColors, StandUnderTheirMasks) {
  EXPECT_THAT(own_colors({4, 1, {kRed, kGreen, kBlue, kGrey}}, GetParam().masks),
              ElementsAreArray(GetParam().red_green_blue_grey));
}

TEST(OwnColorsOfAPicture, AreUpsideDown) {
  EXPECT_THAT(own_colors({1, 2, {kRed, kGreen}}, {0xFF0000, 0xFF00, 0xFF}), ElementsAre(0x00FF00, 0xFF0000));
}

}  // namespace
