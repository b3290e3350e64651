/// @file
/// Where a texture's texels stand, and how they are read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "qilib/qis.h"
#include "qilib/sizes.h"

namespace texels {

/// What a texture says about one of its images.
struct Tile {
  Word width = 0, height = 0;
  Word image = kUnset, palette = kUnset;
};

inline std::optional<Tile> tile_of(const qi::Tex& tex, std::size_t number) {
  const qi::TexTable& table = tex.table;
  const Word palette = tex.ext && number < tex.ext->palettes.size() ? tex.ext->palettes[number] : kUnset;
  if (tex.fixed.tiled == 0) {
    if (number != 0) return std::nullopt;
    return Tile{table.untiled.width, table.untiled.height, table.untiled.image, palette};
  }
  if (number >= table.widths.size() || number >= table.heights.size() || number >= table.images.size())
    return std::nullopt;
  return Tile{table.widths[number], table.heights[number], table.images[number], palette};
}

inline bool is_color_indexed(const Qis& scene, const qi::Tex& tex) {
  return qiQUILver(scene.header) >= qi::kVersion2 && tex.ext && tex.ext->head.color_palette == 1;
}

/// The texels of an RGBA image of 32 bits. `make(red, green, blue, alpha)` makes one of them. Nothing when it
/// holds fewer than `count`; likewise below.
template <class Texel, class Make>
std::optional<std::vector<Texel>> of_rgba(const qi::Teximg& image, std::size_t count, Make make) {
  constexpr std::size_t kTexelBytes = 4;
  if (image.texels.size() / kTexelBytes < count) return std::nullopt;
  std::vector<Texel> texels(count);
  const std::byte* at = image.texels.data();
  const auto byte = [&at](std::size_t i) { return std::to_integer<std::uint8_t>(at[i]); };
  for (Texel& texel : texels) {
    texel = make(byte(0), byte(1), byte(2), byte(3));
    at += kTexelBytes;
  }
  return texels;
}

/// How the indices of an image stand in its words, the first one in the most significant bits.
class Indices {
 public:
  explicit Indices(const qi::CiImg& image) : bits_(image.fixed.index_bits == 8 ? 8 : 4) {}

  std::size_t in_word() const { return 32 / bits_; }
  /// How many colours they can tell.
  std::size_t colors() const { return std::size_t{1} << bits_; }
  Word get(std::span<const Word> words, std::size_t i) const {
    return words[i / in_word()] >> shift(i) & mask();
  }
  void set(std::span<Word> words, std::size_t i, Word index) const {
    Word& word = words[i / in_word()];
    word = (word & ~(mask() << shift(i))) | (index & mask()) << shift(i);
  }

 private:
  Word mask() const { return static_cast<Word>(colors() - 1); }
  std::size_t shift(std::size_t i) const { return 32 - bits_ * (i % in_word() + 1); }

  std::size_t bits_;
};

/// Entry `index` of a palette, which must hold it: 5-5-5-1 bits, two to a word.
inline Word palette_entry(const qi::ColorPalette& palette, std::size_t index) {
  const Word pair = palette.colors[index / 2];
  return index % 2 == 0 ? pair >> 16 : pair & 0xFFFF;
}

template <class Make>
auto color_of_entry(Word entry, Make make) {
  return make(static_cast<std::uint8_t>(entry >> 8 & 0xF8), static_cast<std::uint8_t>(entry >> 3 & 0xF8),
              static_cast<std::uint8_t>((entry & 0x3E) << 2), static_cast<std::uint8_t>((entry & 1) * 0xFF));
}

/// Those of a colour-indexed image; nothing also where the palette lacks one of its colours.
template <class Texel, class Make>
std::optional<std::vector<Texel>> of_indexed(const qi::CiImg& image, const qi::ColorPalette& palette,
                                             std::size_t count, Make make) {
  const Indices indices{image};
  if (image.pixels.size() * indices.in_word() < count) return std::nullopt;
  std::vector<Texel> texels(count);
  for (std::size_t i = 0; i < count; ++i) {
    const Word index = indices.get(image.pixels, i);
    if (index / 2 >= palette.colors.size()) return std::nullopt;
    texels[i] = color_of_entry(palette_entry(palette, index), make);
  }
  return texels;
}

}  // namespace texels
