/// @file
/// Textures as pictures: a record's image in colours, and those colours as pixels of a screen.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "qilib/qis.h"

/// Larger textures, on either side, have no picture: none of the console's comes near, a damaged size does.
inline constexpr Word kLargestTextureSide = 4096;

/// A texture's image in colours without alpha.
struct TexturePicture {
  struct Texel {
    std::uint8_t red = 0, green = 0, blue = 0;
    friend bool operator==(const Texel&, const Texel&) = default;
  };
  Word width = 0, height = 0;  ///< 1 to kLargestTextureSide
  std::vector<Texel> texels;   ///< width x height, row by row, the lowest row first
};

/// The image of a texture; of the first tile when it has several.
/// The size is what the texture says. A colour-indexed image is a run of indices to it, whatever width and
/// height that image has itself; texels beyond the texture's size don't count.
/// @param number  of the record in the TexList; may lie outside.
/// @returns nothing when the texture, its image or its palette is not there, when the size is none or too
/// large, when the image holds fewer texels than the size needs, or when the palette lacks one of its
/// colours.
std::optional<TexturePicture> texture_picture(const Qis& scene, long number);

/// The picture in colours of a table, top row first.
/// @param table  the value for each colour of 3 bits red, 3 bits green and 2 bits blue, red in the high bits.
std::vector<std::uint8_t> table_colors(const TexturePicture& picture,
                                       std::span<const std::uint8_t, 256> table);

/// Where the three colours stand in a pixel: runs of at most 16 bits.
struct ColorMasks {
  std::uint32_t red = 0, green = 0, blue = 0;
};

/// The picture in its own colours, top row first: as near as the masks' widths allow.
std::vector<std::uint32_t> own_colors(const TexturePicture& picture, const ColorMasks& masks);
