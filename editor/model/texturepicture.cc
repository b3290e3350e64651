/// @file
/// Decoding of RGBA and colour-indexed textures, and their quantisation.
#include "editor/model/texturepicture.h"

#include <bit>
#include <cstddef>
#include <utility>

#include "qilib/references.h"
#include "qilib/sizes.h"

namespace {

using Texel = TexturePicture::Texel;
using Texels = std::vector<Texel>;

/// What a texture says about its image.
struct ImageReference {
  Word width = 0, height = 0, image = 0;
};

std::optional<ImageReference> image_reference(const qi::Tex& tex) {
  const qi::TexTable& table = tex.table;
  if (tex.fixed.tiled == 0)
    return ImageReference{table.untiled.width, table.untiled.height, table.untiled.image};
  if (table.widths.empty() || table.heights.empty() || table.images.empty()) return std::nullopt;
  return ImageReference{table.widths.front(), table.heights.front(), table.images.front()};
}

bool is_showable(Word side) { return side >= 1 && side <= kLargestTextureSide; }

/// The first `count` texels of an RGBA image. Nothing when it holds fewer; likewise below.
std::optional<Texels> rgba_texels(const qi::Teximg& image, std::size_t count) {
  constexpr std::size_t kTexelBytes = 4;
  if (image.texels.size() / kTexelBytes < count) return std::nullopt;
  Texels texels(count);
  const std::byte* at = image.texels.data();
  for (Texel& texel : texels) {
    texel = {std::to_integer<std::uint8_t>(at[0]), std::to_integer<std::uint8_t>(at[1]),
             std::to_integer<std::uint8_t>(at[2])};
    at += kTexelBytes;
  }
  return texels;
}

/// A palette colour: 5-5-5-1 bits.
Texel palette_color(Word color) {
  return {static_cast<std::uint8_t>(color >> 8 & 0xF8), static_cast<std::uint8_t>(color >> 3 & 0xF8),
          static_cast<std::uint8_t>((color & 0x3E) << 2)};
}

std::optional<Texels> indexed_texels(const qi::CiImg& image, const qi::ColorPalette& palette,
                                     std::size_t count) {
  const std::size_t bits = image.fixed.index_bits == 8 ? 8 : 4;
  const std::size_t indices_per_word = 32 / bits;
  if (!is_showable(image.fixed.width) || !is_showable(image.fixed.height) ||
      std::size_t{image.fixed.width} * image.fixed.height < count ||
      image.pixels.size() * indices_per_word < count)
    return std::nullopt;
  Texels texels(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t shift = 32 - bits * (i % indices_per_word + 1);
    const Word index = image.pixels[i / indices_per_word] >> shift & ((Word{1} << bits) - 1);
    if (index / 2 >= palette.colors.size()) return std::nullopt;
    const Word pair = palette.colors[index / 2];
    texels[i] = palette_color(index % 2 == 0 ? pair >> 16 : pair & 0xFFFF);
  }
  return texels;
}

bool is_color_indexed(const Qis& scene, const qi::Tex& tex) {
  return qiQUILver(scene.header) >= qi::kVersion2 && tex.ext && tex.ext->head.color_palette == 1;
}

std::optional<Texels> texels_of(const Qis& scene, const qi::Tex& tex, Word image_number, std::size_t count) {
  if (!is_color_indexed(scene, tex)) {
    const qi::Teximg* const image = qi::record_in(scene, &Qis::teximg_list, image_number);
    return image ? rgba_texels(*image, count) : std::nullopt;
  }
  if (tex.ext->palettes.empty()) return std::nullopt;
  const qi::CiImg* const image = qi::record_in(scene, &qi::ExtLists::ciimg_list, image_number);
  const qi::ColorPalette* const palette =
      qi::record_in(scene, &qi::ExtLists::color_palette_list, tex.ext->palettes.front());
  return image && palette ? indexed_texels(*image, *palette, count) : std::nullopt;
}

/// The picture with the top row first, each texel as `value` of it.
template <class Value>
auto from_the_top(const TexturePicture& picture, Value&& value) {
  std::vector<decltype(value(Texel{}))> values;
  values.reserve(picture.texels.size());
  for (std::size_t row = picture.height; row-- > 0;) {
    const std::span texels = std::span(picture.texels).subspan(row * picture.width, picture.width);
    for (const Texel& texel : texels) values.push_back(value(texel));
  }
  return values;
}

/// A colour of 8 bits, scaled to the bits of a mask and moved there.
std::uint32_t under_mask(std::uint8_t color, std::uint32_t mask) {
  if (mask == 0) return 0;
  const int shift = std::countr_zero(mask);
  return color * (mask >> shift) / 0xFF << shift;
}

}  // namespace

std::optional<TexturePicture> texture_picture(const Qis& scene, long number) {
  if (!std::in_range<Word>(number)) return std::nullopt;
  const qi::Tex* const tex = qi::record_in(scene, &Qis::tex_list, static_cast<Word>(number));
  if (!tex) return std::nullopt;
  const auto reference = image_reference(*tex);
  if (!reference || !is_showable(reference->width) || !is_showable(reference->height)) return std::nullopt;
  auto texels = texels_of(scene, *tex, reference->image, std::size_t{reference->width} * reference->height);
  if (!texels) return std::nullopt;
  return TexturePicture{reference->width, reference->height, std::move(*texels)};
}

std::vector<std::uint8_t> table_colors(const TexturePicture& picture,
                                       std::span<const std::uint8_t, 256> table) {
  return from_the_top(picture, [&](const Texel& texel) {
    return table[static_cast<std::size_t>((texel.red & 0xE0) | (texel.green & 0xE0) >> 3 |
                                          (texel.blue & 0xC0) >> 6)];
  });
}

std::vector<std::uint32_t> own_colors(const TexturePicture& picture, const ColorMasks& masks) {
  return from_the_top(picture, [&](const Texel& texel) {
    return under_mask(texel.red, masks.red) | under_mask(texel.green, masks.green) |
           under_mask(texel.blue, masks.blue);
  });
}
