/// @file
/// PNG files, by libpng's simple interface, which leaves no jumps to its callers.
#include "images/png.h"

#include <png.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "storage/replacefile.h"

namespace images {
namespace {

struct Freed {
  void operator()(png_image* image) const { png_image_free(image); }
};
struct Closed {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

png_image fresh_image() {
  png_image image;
  std::memset(&image, 0, sizeof image);
  image.version = PNG_IMAGE_VERSION;
  return image;
}

std::string size(std::uint32_t width, std::uint32_t height) {
  return std::to_string(width) + " x " + std::to_string(height);
}

}  // namespace

std::string read_png(const std::string& file, std::uint32_t most, Picture& picture) {
  const std::unique_ptr<std::FILE, Closed> stream(std::fopen(file.c_str(), "rb"));
  if (!stream) return "can't read " + file + ": " + std::strerror(errno);
  png_image image = fresh_image();
  const std::unique_ptr<png_image, Freed> free_at_end(&image);
  const auto problem = [&] { return file + " is no good PNG: " + image.message; };
  if (png_image_begin_read_from_stdio(&image, stream.get()) == 0) return problem();
  if (image.width > most || image.height > most)
    return file + " has " + size(image.width, image.height) + " texels, at most " + size(most, most) +
           " are allowed";
  image.format = PNG_FORMAT_RGBA;
  picture = {image.width, image.height, std::vector<Rgba>(std::size_t{image.width} * image.height)};
  if (png_image_finish_read(&image, nullptr, picture.texels.data(), 0, nullptr) == 0) return problem();
  return {};
}

std::string write_png(std::FILE* stream, std::uint32_t width, std::uint32_t height,
                      std::span<const Rgba> texels) {
  png_image image = fresh_image();
  const std::unique_ptr<png_image, Freed> free_at_end(&image);
  image.width = width;
  image.height = height;
  image.format = PNG_FORMAT_RGBA;
  if (png_image_write_to_stdio(&image, stream, 0, texels.data(), 0, nullptr) == 0) return image.message;
  return {};
}

std::string save_png(const std::string& file, std::uint32_t width, std::uint32_t height,
                     std::span<const Rgba> texels) {
  ReplacingFile target(file);
  std::string problem;
  if (target.stream()) problem = write_png(target.stream(), width, height, texels);
  if (target.stream() && problem.empty() && target.commit()) return {};
  return "can't write " + file + (problem.empty() ? "" : ": " + problem);
}

}  // namespace images
