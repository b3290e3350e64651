/// @file
/// PNG files, as rows of colours with alpha.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <vector>

namespace images {

/// Red, green, blue, alpha; of 8 bits each.
using Rgba = std::array<std::uint8_t, 4>;

struct Picture {
  std::uint32_t width = 0, height = 0;
  std::vector<Rgba> texels;  ///< row by row, the top row first
};

/// Reads a file of any sort of PNG. No memory is taken for a picture that is larger than `most` texels on a
/// side.
/// @returns why there is none, in words; empty: it was read.
std::string read_png(const std::string& file, std::uint32_t most, Picture& picture);

/// Writes a picture of width x height colours. @returns why it failed, in words; empty: it was written.
std::string write_png(std::FILE* stream, std::uint32_t width, std::uint32_t height,
                      std::span<const Rgba> texels);
/// The same, in the place of a file when it is complete.
std::string save_png(const std::string& file, std::uint32_t width, std::uint32_t height,
                     std::span<const Rgba> texels);

}  // namespace images
