/// @file
/// Pictures for textures.
#include "cli/putimage.h"

#include <cstdio>
#include <utility>

#include "cli/printable.h"
#include "cli/setvalues.h"
#include "editor/model/nodenames.h"
#include "editor/model/textureimage.h"
#include "editor/model/texturepicture.h"
#include "images/png.h"
#include "images/quantize.h"

namespace {

Palette quantized(std::span<const Rgba> texels, Word width, Word height, std::size_t most) {
  auto [colors, indices] = images::few_colors(texels, width, height, most, 5);
  return {std::move(colors), std::move(indices)};
}

}  // namespace

int put_image(Qis& scene, const std::string& node, const std::string& file) {
  const auto named = find_node_id(node);
  if (!named || named->kind != qi::kTexTag) throw ValueError("no such texture: " + printable(node));
  images::Picture picture;
  std::string problem = images::read_png(file, kLargestTextureSide, picture);
  const TextureImage wanted{picture.width, picture.height, std::move(picture.texels)};
  if (problem.empty()) problem = put_texture_image(scene, named->number, 0, wanted, quantized);
  if (!problem.empty()) throw ValueError(printable(problem));
  TextureImage held;
  take_texture_image(scene, named->number, 0, held);
  const ImageDifference difference = difference_of(wanted, held);
  std::printf("%s: %zu of %zu texels differ from the picture, by at most %d of 255\n", node.c_str(),
              difference.texels, wanted.texels.size(), difference.most);
  return 1;
}
