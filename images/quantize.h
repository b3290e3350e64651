/// @file
/// Pictures of few colours.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "images/png.h"

namespace images {

/// Colours, and which one each texel of a picture has.
struct FewColors {
  std::vector<Rgba> colors;
  std::vector<std::uint8_t> indices;
};

/// The colours that serve a picture best. The same picture gets the same ones each time.
/// @param most  how many, 2 to 256
/// @param bits  that matter of each red, green and blue, 4 to 8
/// Throws std::runtime_error when it can't be done.
FewColors few_colors(std::span<const Rgba> texels, std::uint32_t width, std::uint32_t height,
                     std::size_t most, int bits);

}  // namespace images
