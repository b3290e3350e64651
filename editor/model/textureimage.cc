/// @file
/// The images of textures in their own colours.
#include "editor/model/textureimage.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <utility>

#include "editor/model/nodenames.h"
#include "editor/model/texels.h"
#include "editor/model/texturepicture.h"
#include "qilib/references.h"

namespace {

constexpr Word kFormAndDepth = 0xF07, kRgb32 = 0x404, kRgba32 = 0x405;

Rgba with_alpha(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha) {
  return {red, green, blue, alpha};
}
Rgba opaque(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t /*alpha*/) {
  return {red, green, blue, 0xFF};
}

std::string image_name(const char* kind, Word number) { return kind + std::to_string(number); }

/// What is known of one of a texture's images. Either `problem` is said, or there is an image of one of the
/// two sorts that holds as many texels as are needed.
struct Found {
  std::string problem = {};
  texels::Tile tile = {};
  std::size_t count = 0;
  bool opaque = false;
  const qi::Teximg* plain = nullptr;
  const qi::CiImg* indexed = nullptr;
  const qi::ColorPalette* palette = nullptr;
};

void find_plain(const Qis& scene, const qi::Tex& tex, Found& found) {
  const Word type = tex.fixed.tex_type & kFormAndDepth;
  if (type != kRgb32 && type != kRgba32) {
    found.problem = "how the texels of its form and depth stand is not known";
    return;
  }
  found.opaque = type == kRgb32;
  found.plain = qi::record_in(scene, &Qis::teximg_list, found.tile.image);
  if (!found.plain) {
    found.problem = "it has no image";
  } else if (found.plain->texels.size() / sizeof(Rgba) < found.count) {
    found.problem = image_name("teximg_", found.tile.image) + " holds fewer texels than its size needs";
  }
}

void find_indexed(const Qis& scene, Found& found) {
  found.indexed = qi::record_in(scene, &qi::ExtLists::ciimg_list, found.tile.image);
  found.palette = qi::record_in(scene, &qi::ExtLists::color_palette_list, found.tile.palette);
  if (!found.indexed) {
    found.problem = "it has no image";
  } else if (!found.palette) {
    found.problem = "it has no palette";
  } else if (std::uint64_t{found.indexed->fixed.width} * found.indexed->fixed.height < found.count ||
             found.indexed->pixels.size() * texels::Indices{*found.indexed}.in_word() < found.count) {
    found.problem = image_name("ciimg_", found.tile.image) + " holds fewer texels than its size needs";
  }
}

Found find(const Qis& scene, Word number, std::size_t tile_number) {
  Found found;
  const qi::Tex* const tex = qi::record_in(scene, &Qis::tex_list, number);
  const auto tile = tex ? texels::tile_of(*tex, tile_number) : std::nullopt;
  if (!tile) {
    found.problem = tex ? "it has no tile " + std::to_string(tile_number) : "there is no such texture";
    return found;
  }
  found.tile = *tile;
  if (tile->width == 0 || tile->height == 0) {
    found.problem = "it has no size";
  } else if (tile->width > kLargestTextureSide || tile->height > kLargestTextureSide) {
    found.problem = "it is larger than " + std::to_string(kLargestTextureSide) + " texels";
  } else {
    found.count = std::size_t{tile->width} * tile->height;
    if (texels::is_color_indexed(scene, *tex)) {
      find_indexed(scene, found);
    } else {
      find_plain(scene, *tex, found);
    }
  }
  return found;
}

std::string about(Word number, const std::string& problem) {
  return problem.empty() ? problem : node_name(kNodeKind<qi::Tex>, number) + ": " + problem;
}

/// Textures keep the lowest row first.
std::vector<Rgba> turned_over(std::span<const Rgba> texels, Word width) {
  std::vector<Rgba> turned;
  turned.reserve(texels.size());
  for (std::size_t end = texels.size(); end != 0; end -= width) {
    const auto row = texels.subspan(end - width, width);
    turned.insert(turned.end(), row.begin(), row.end());
  }
  return turned;
}

/// The nearest colour that a palette can hold.
Word entry_of(const Rgba& color) {
  const auto five = [](std::uint8_t value) { return std::min(Word{31}, (Word{value} + 4) / 8); };
  return five(color[0]) << 11 | five(color[1]) << 6 | five(color[2]) << 1 | Word{color[3] >= 0x80};
}

/// Whether a texture other than this image's shows something by that palette.
std::optional<std::string> other_user(const Qis& scene, const texels::Tile& of) {
  const auto& textures = scene.tex_list.records;
  for (Word i = 0; i < textures.size(); ++i) {
    if (!texels::is_color_indexed(scene, textures[i])) continue;
    for (std::size_t tile = 0; const auto other = texels::tile_of(textures[i], tile); ++tile)
      if (other->palette == of.palette && other->image != of.image) return node_name(kNodeKind<qi::Tex>, i);
  }
  return std::nullopt;
}

void put_plain(Qis& scene, const Found& found, std::span<const Rgba> texels) {
  std::byte* at = qi::record_in(scene, &Qis::teximg_list, found.tile.image)->texels.data();
  for (const Rgba& texel : texels) {
    for (std::size_t i = 0; i < (found.opaque ? 3 : 4); ++i) at[i] = std::byte{texel[i]};
    at += texel.size();
  }
}

/// Entries of a palette, and which one each texel has.
struct Indexed {
  std::vector<Word> entries = {}, indices = {};
  bool new_entries = false;
};

/// With the palette that there is; nothing when it lacks a colour. A texel that has the right colour keeps
/// its index.
std::optional<Indexed> with_palette(const Found& found, const std::vector<Word>& wanted) {
  const texels::Indices indices{*found.indexed};
  const std::size_t colors = std::min(2 * found.palette->colors.size(), indices.colors());
  std::map<Word, Word> index_of;
  for (std::size_t i = 0; i < colors; ++i)
    index_of.emplace(texels::palette_entry(*found.palette, i), static_cast<Word>(i));
  Indexed result;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const Word held = indices.get(found.indexed->pixels, i);
    if (held < colors && texels::palette_entry(*found.palette, held) == wanted[i]) {
      result.indices.push_back(held);
      continue;
    }
    const auto index = index_of.find(wanted[i]);
    if (index == index_of.end()) return std::nullopt;
    result.indices.push_back(index->second);
  }
  return result;
}

/// With a palette of just those colours; nothing when they are too many.
std::optional<Indexed> with_own_palette(const std::vector<Word>& wanted, std::size_t most) {
  Indexed result{.new_entries = true};
  std::map<Word, Word> index_of;
  for (const Word entry : wanted) {
    const auto [index, fresh] = index_of.try_emplace(entry, static_cast<Word>(index_of.size()));
    if (fresh && index_of.size() > most) return std::nullopt;
    if (fresh) result.entries.push_back(entry);
    result.indices.push_back(index->second);
  }
  return result;
}

Indexed with_best_palette(std::span<const Rgba> texels, const Found& found, std::size_t most,
                          const Quantizer& quantize) {
  const Palette palette = quantize(texels, found.tile.width, found.tile.height, most);
  Indexed result{.new_entries = true};
  for (const Rgba& color : palette.colors) result.entries.push_back(entry_of(color));
  result.indices.assign(palette.indices.begin(), palette.indices.end());
  return result;
}

std::string put_indexed(Qis& scene, const Found& found, std::span<const Rgba> texels,
                        const Quantizer& quantize) {
  std::vector<Word> wanted(texels.size());
  std::ranges::transform(texels, wanted.begin(), entry_of);
  auto result = with_palette(found, wanted);
  if (!result) {
    const std::size_t most =
        std::min(2 * found.palette->colors.size(), texels::Indices{*found.indexed}.colors());
    if (most < 2) return "its palette has no colours";
    if (const auto other = other_user(scene, found.tile))
      return "its palette lacks a colour of the picture, and serves " + *other + ", too";
    result = with_own_palette(wanted, most);
    if (!result) result = with_best_palette(texels, found, most, quantize);
  }
  qi::CiImg& image = *qi::record_in(scene, &qi::ExtLists::ciimg_list, found.tile.image);
  const texels::Indices indices{image};
  for (std::size_t i = 0; i < result->indices.size(); ++i) indices.set(image.pixels, i, result->indices[i]);
  if (!result->new_entries) return {};
  qi::ColorPalette& palette = *qi::record_in(scene, &qi::ExtLists::color_palette_list, found.tile.palette);
  for (std::size_t i = 0; i < result->entries.size(); ++i) {
    Word& pair = palette.colors[i / 2];
    pair = i % 2 == 0 ? (pair & 0xFFFF) | result->entries[i] << 16 : (pair & 0xFFFF0000) | result->entries[i];
  }
  return {};
}

}  // namespace

std::size_t texture_images(const Qis& scene, Word number) {
  const qi::Tex* const tex = qi::record_in(scene, &Qis::tex_list, number);
  if (!tex) return 0;
  std::size_t count = 0;
  while (texels::tile_of(*tex, count)) ++count;
  return count;
}

std::string take_texture_image(const Qis& scene, Word number, std::size_t tile, TextureImage& image) {
  const Found found = find(scene, number, tile);
  if (!found.problem.empty()) return about(number, found.problem);
  const auto texels =
      found.plain ? texels::of_rgba<Rgba>(*found.plain, found.count, found.opaque ? opaque : with_alpha)
                  : texels::of_indexed<Rgba>(*found.indexed, *found.palette, found.count, with_alpha);
  if (!texels) return about(number, "its palette lacks a colour of the image");
  image = {found.tile.width, found.tile.height, turned_over(*texels, found.tile.width)};
  return {};
}

std::string put_texture_image(Qis& scene, Word number, std::size_t tile, const TextureImage& image,
                              const Quantizer& quantize) {
  const Found found = find(scene, number, tile);
  if (!found.problem.empty()) return about(number, found.problem);
  const auto size = [](Word width, Word height) {
    return std::to_string(width) + " x " + std::to_string(height);
  };
  if (image.width != found.tile.width || image.height != found.tile.height ||
      image.texels.size() != found.count)
    return about(number, "it has " + size(found.tile.width, found.tile.height) + " texels, and the picture " +
                             size(image.width, image.height));
  const std::vector<Rgba> texels = turned_over(image.texels, image.width);
  if (found.indexed) return about(number, put_indexed(scene, found, texels, quantize));
  put_plain(scene, found, texels);
  return {};
}

ImageDifference difference_of(const TextureImage& one, const TextureImage& other) {
  ImageDifference difference;
  for (std::size_t i = 0; i < std::min(one.texels.size(), other.texels.size()); ++i) {
    int most = 0;
    for (std::size_t channel = 0; channel < 4; ++channel)
      most = std::max(most, std::abs(int{one.texels[i][channel]} - int{other.texels[i][channel]}));
    difference.texels += most != 0;
    difference.most = std::max(difference.most, most);
  }
  return difference;
}
