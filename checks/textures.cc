/// @file
/// Textures: their types, and whether images and palettes have what they need.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "checks/parts.h"
#include "qilib/references.h"
#include "qilib/sizes.h"

namespace checks {
namespace {

constexpr qi::ListInfo kTexList = qi::list_info(&Qis::tex_list);

// The word of a texture's type: its form, and the depth of a texel.
constexpr Word kForms = 0x7, kDepths = 0xF00;
constexpr Word k4Bits = 0, k8Bits = 0x100, k16Bits = 0x200, k32Bits = 0x400;

struct Form {
  const char* name;
  std::span<const Word> depths;  ///< that it comes in
};
constexpr Word kIntensityDepths[] = {k4Bits, k8Bits};
constexpr Word kAlphaDepths[] = {k4Bits, k8Bits, k16Bits};
constexpr Word kYuvDepths[] = {k16Bits};
constexpr Word kColorDepths[] = {k16Bits, k32Bits};
constexpr Form kAllForms[] = {{"I", kIntensityDepths}, {"IA", kAlphaDepths},  {"CI", kIntensityDepths},
                              {"YUV", kYuvDepths},     {"RGB", kColorDepths}, {"RGBA", kColorDepths}};

unsigned bits_of(Word depth) { return depth & k8Bits ? 8 : depth & k16Bits ? 16 : depth & k32Bits ? 32 : 4; }

/// One image of a texture.
struct Tile {
  std::string field;  ///< ".image", ".images[3]"
  Word width = 0, height = 0, image = kUnset, palette = kUnset;
  std::uint64_t texels() const { return std::uint64_t{width} * height; }
  std::string size() const { return std::to_string(width) + " x " + std::to_string(height); }
};

class TextureCheck {
 public:
  TextureCheck(const Qis& scene, Report& report) : scene_(scene), report_(report) {}

  void texture(const qi::Tex& tex, std::size_t number) {
    number_ = number;
    type(tex.fixed.tex_type);
    const bool indexed =
        qiQUILver(scene_.header) >= qi::kVersion2 && tex.ext && tex.ext->head.color_palette == 1;
    const auto palette = [&](std::size_t i) {
      return indexed && i < tex.ext->palettes.size() ? tex.ext->palettes[i] : kUnset;
    };
    const auto look_at = [&](const Tile& tile) {
      if (indexed) {
        color_indexed(tile);
      } else {
        plain(tile, bits_of(tex.fixed.tex_type));
      }
    };
    const qi::TexTable& table = tex.table;
    if (tex.fixed.tiled == 0) {
      look_at({".image", table.untiled.width, table.untiled.height, table.untiled.image, palette(0)});
      return;
    }
    const std::size_t tiles = std::min({table.widths.size(), table.heights.size(), table.images.size()});
    for (std::size_t i = 0; i < tiles; ++i)
      look_at({entry("images", i), table.widths[i], table.heights[i], table.images[i], palette(i)});
  }

 private:
  void add(const Code& code, const std::string& field, const std::string& text) {
    report_.add(code, kTexList, number_, field, text);
  }

  void type(Word type) {
    const Word form = type & kForms, depth = type & kDepths;
    if (form >= std::size(kAllForms)) {
      add(kTextureTypeUnknown, ".tex_type", ": there is no form " + std::to_string(form));
      return;
    }
    const Form& known = kAllForms[form];
    if (std::ranges::find(known.depths, depth) != known.depths.end()) return;
    const bool exists = depth == k4Bits || depth == k8Bits || depth == k16Bits || depth == k32Bits;
    add(kTextureDepthUnknown, ".tex_type",
        exists
            ? ": " + std::string{known.name} + " has no texels of " + std::to_string(bits_of(depth)) + " bits"
            : ": the depth bits tell several depths, or none");
  }

  void plain(const Tile& tile, unsigned bits) {
    const auto* const image = qi::record_in(scene_, &Qis::teximg_list, tile.image);
    if (image && image->texels.size() < (tile.texels() * bits + 7) / 8)
      add(kTextureTooLarge, tile.field,
          ": " + tile.size() + " texels of " + std::to_string(bits) + " bits need more than the " +
              std::to_string(image->texels.size()) + " bytes of teximg_" + std::to_string(tile.image));
  }

  void color_indexed(const Tile& tile) {
    const auto* const image = qi::record_in(scene_, &qi::ExtLists::ciimg_list, tile.image);
    if (!image) return;
    const std::uint64_t bits = image->fixed.index_bits == 8 ? 8 : 4, each_word = 32 / bits;
    const std::uint64_t held = std::min(std::uint64_t{image->pixels.size()} * each_word,
                                        std::uint64_t{image->fixed.width} * image->fixed.height);
    if (held < tile.texels())
      add(kTextureTooLarge, tile.field,
          ": " + tile.size() + " texels need more than the " + std::to_string(held) + " of ciimg_" +
              std::to_string(tile.image));
    const auto* const palette = qi::record_in(scene_, &qi::ExtLists::color_palette_list, tile.palette);
    if (!palette) return;
    Word highest = 0;
    for (std::uint64_t i = 0; i < std::min(held, tile.texels()); ++i) {
      const std::uint64_t shift = 32 - bits * (i % each_word + 1);
      highest = std::max(highest, image->pixels[i / each_word] >> shift & ((Word{1} << bits) - 1));
    }
    if (highest < 2 * palette->colors.size()) return;
    // Two colours stand in a word, and no word stands for half of them.
    if (highest < palette->fixed.entry_count)
      add(kPaletteOdd, tile.field,
          ": ciimg_" + std::to_string(tile.image) + " wants colour " + std::to_string(highest) +
              ", the odd one of palette_" + std::to_string(tile.palette) + ", which a file doesn't hold");
    else
      add(kPaletteTooShort, tile.field,
          ": ciimg_" + std::to_string(tile.image) + " wants colour " + std::to_string(highest) +
              ", palette_" + std::to_string(tile.palette) + " has " +
              std::to_string(2 * palette->colors.size()));
  }

  const Qis& scene_;
  Report& report_;
  std::size_t number_ = 0;
};

}  // namespace

void check_textures(const Qis& scene, Report& report) {
  TextureCheck check{scene, report};
  qi::for_each_record(scene.tex_list,
                      [&](std::size_t number, const qi::Tex& tex) { check.texture(tex, number); });
}

}  // namespace checks
