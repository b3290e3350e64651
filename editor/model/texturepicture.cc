/// @file
/// Decoding of RGBA and colour-indexed textures, and their quantisation.
#include "editor/model/texturepicture.h"

#include <bit>
#include <cstddef>
#include <utility>

#include "editor/model/texels.h"
#include "qilib/references.h"

namespace {

using Texel = TexturePicture::Texel;
using Texels = std::vector<Texel>;

bool is_showable(Word side) { return side >= 1 && side <= kLargestTextureSide; }

Texel without_alpha(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t /*alpha*/) {
  return {red, green, blue};
}

std::optional<Texels> texels_of(const Qis& scene, const qi::Tex& tex, const texels::Tile& tile,
                                std::size_t count) {
  if (!texels::is_color_indexed(scene, tex)) {
    const qi::Teximg* const image = qi::record_in(scene, &Qis::teximg_list, tile.image);
    return image ? texels::of_rgba<Texel>(*image, count, without_alpha) : std::nullopt;
  }
  const qi::CiImg* const image = qi::record_in(scene, &qi::ExtLists::ciimg_list, tile.image);
  const qi::ColorPalette* const palette =
      qi::record_in(scene, &qi::ExtLists::color_palette_list, tile.palette);
  if (!image || !palette || !is_showable(image->fixed.width) || !is_showable(image->fixed.height) ||
      std::size_t{image->fixed.width} * image->fixed.height < count)
    return std::nullopt;
  return texels::of_indexed<Texel>(*image, *palette, count, without_alpha);
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
  const auto tile = texels::tile_of(*tex, 0);
  if (!tile || !is_showable(tile->width) || !is_showable(tile->height)) return std::nullopt;
  auto texels = texels_of(scene, *tex, *tile, std::size_t{tile->width} * tile->height);
  if (!texels) return std::nullopt;
  return TexturePicture{tile->width, tile->height, std::move(*texels)};
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
