/// @file
/// Pictures of few colours, by libimagequant.
#include "images/quantize.h"

#include <libimagequant.h>

#include <memory>
#include <new>
#include <stdexcept>

namespace images {
namespace {

struct Destroy {
  void operator()(liq_attr* attributes) const { liq_attr_destroy(attributes); }
  void operator()(liq_image* image) const { liq_image_destroy(image); }
  void operator()(liq_result* result) const { liq_result_destroy(result); }
};

void must(liq_error error) {
  if (error != LIQ_OK) throw std::runtime_error("the picture can't be given fewer colours");
}

}  // namespace

FewColors few_colors(std::span<const Rgba> texels, std::uint32_t width, std::uint32_t height,
                     std::size_t most, int bits) {
  const std::unique_ptr<liq_attr, Destroy> attributes(liq_attr_create());
  if (!attributes) throw std::bad_alloc();
  must(liq_set_max_colors(attributes.get(), static_cast<int>(most)));
  must(liq_set_min_posterization(attributes.get(), 8 - bits));
  const std::unique_ptr<liq_image, Destroy> image(liq_image_create_rgba(
      attributes.get(), texels.data(), static_cast<int>(width), static_cast<int>(height), 0));
  if (!image) throw std::bad_alloc();
  liq_result* made = nullptr;
  must(liq_image_quantize(image.get(), attributes.get(), &made));
  const std::unique_ptr<liq_result, Destroy> result(made);
  FewColors few;
  few.indices.resize(texels.size());
  must(liq_set_dithering_level(result.get(), 0));
  must(liq_write_remapped_image(result.get(), image.get(), few.indices.data(), few.indices.size()));
  const liq_palette* const palette = liq_get_palette(result.get());
  for (unsigned i = 0; i < palette->count; ++i) {
    const liq_color& color = palette->entries[i];
    few.colors.push_back({color.r, color.g, color.b, color.a});
  }
  return few;
}

}  // namespace images
