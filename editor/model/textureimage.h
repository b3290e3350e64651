/// @file
/// The images of textures in their own colours, with alpha: taking them out, and putting others in their
/// place.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "qilib/qis.h"

/// Red, green, blue, alpha.
using Rgba = std::array<std::uint8_t, 4>;

struct TextureImage {
  Word width = 0, height = 0;
  std::vector<Rgba> texels;  ///< width x height, row by row, the top row first
};

/// How many images a texture has: one, or one for each of its tiles. 0: there is no such texture.
std::size_t texture_images(const Qis& scene, Word number);

/// One of a texture's images. Those of RGB and RGBA of 32 bits are known, and colour-indexed ones with a
/// palette.
/// @param number  of the record in the TexList; may lie outside
/// @param tile    from 0
/// @param image   what there is, when there is anything
/// @returns why there is none, in words; empty: there is one.
std::string take_texture_image(const Qis& scene, Word number, std::size_t tile, TextureImage& image);

/// Which of at most `most` colours (2 to 256) each texel gets, and the colours.
struct Palette {
  std::vector<Rgba> colors;
  std::vector<std::uint8_t> indices;
};
using Quantizer =
    std::function<Palette(std::span<const Rgba> texels, Word width, Word height, std::size_t most)>;

/// Puts an image of the same size in the place of one that take_texture_image can take. Texels of RGBA become
/// those of the image. Of a colour-indexed one the indices change and, when it lacks a colour, the palette;
/// its entries are of 5 bits and one bit of alpha. It is asked from `quantize` when there are too many
/// colours. No sizes change. Other textures with the same image show it, too.
/// @returns why nothing was changed, in words; empty: it was done.
std::string put_texture_image(Qis& scene, Word number, std::size_t tile, const TextureImage& image,
                              const Quantizer& quantize);

/// How far two images of one size are apart.
struct ImageDifference {
  std::size_t texels = 0;  ///< that differ
  int most = 0;            ///< in any colour or alpha, of 255
};
ImageDifference difference_of(const TextureImage& one, const TextureImage& other);
