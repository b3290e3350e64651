/// @file
/// Scaling of pixmaps on the client's side.
#include "viewkit/sggraph/scaledpixmap.h"

#include <Xm/Xm.h>

#include <bit>
#include <cstdint>
#include <cstdlib>

namespace sggraph {

PixmapSource pixmapSource(Display* display, Pixmap id) {
  if (id == None || id == XmUNSPECIFIED_PIXMAP) return {};
  const viewkit::QuietErrors quiet(display);
  Window root = None;
  int x = 0, y = 0;
  unsigned border = 0;
  PixmapSource source{id};
  const bool known =
      XGetGeometry(display, id, &root, &x, &y, &source.width, &source.height, &border, &source.depth) != 0;
  return known && !quiet.failed() ? source : PixmapSource{};
}

viewkit::PixmapId scaledPixmap(Display* display, const PixmapSource& source, const ScaledPart& part) {
  const auto fromX = [&](unsigned x) {
    return static_cast<int>(std::uint64_t{static_cast<unsigned>(part.x) + x} * source.width / part.width);
  };
  const auto fromY = [&](unsigned y) {
    return static_cast<int>(std::uint64_t{static_cast<unsigned>(part.y) + y} * source.height / part.height);
  };
  const int left = fromX(0), top = fromY(0);
  const viewkit::QuietErrors quiet(display);
  const viewkit::ImagePtr image(
      XGetImage(display, source.id, left, top, static_cast<unsigned>(fromX(part.partWidth - 1) - left + 1),
                static_cast<unsigned>(fromY(part.partHeight - 1) - top + 1), AllPlanes, ZPixmap));
  if (!image) return {};
  const viewkit::ImagePtr scaled(XCreateImage(display, nullptr, source.depth, ZPixmap, 0, nullptr,
                                              part.partWidth, part.partHeight, BitmapPad(display), 0));
  if (!scaled) return {};
  // The image frees its data with free().
  scaled->data = static_cast<char*>(
      std::calloc(static_cast<std::size_t>(scaled->bytes_per_line), std::size_t{part.partHeight}));
  if (!scaled->data) return {};
  for (unsigned y = 0; y < part.partHeight; ++y)
    for (unsigned x = 0; x < part.partWidth; ++x)
      XPutPixel(scaled.get(), static_cast<int>(x), static_cast<int>(y),
                XGetPixel(image.get(), fromX(x) - left, fromY(y) - top));
  viewkit::PixmapId made(display,
                         XCreatePixmap(display, source.id, part.partWidth, part.partHeight, source.depth));
  const viewkit::Gc gc(display, XCreateGC(display, made.get(), 0, nullptr));
  XPutImage(display, made.get(), gc.get(), scaled.get(), 0, 0, 0, 0, part.partWidth, part.partHeight);
  return made;
}

picture::Image imageOf(Display* display, const PixmapSource& source, const Visual& visual, Pixels& pixels) {
  if (!source) return {};
  const viewkit::QuietErrors quiet(display);
  const viewkit::ImagePtr image(
      XGetImage(display, source.id, 0, 0, source.width, source.height, AllPlanes, ZPixmap));
  if (!image) return {};
  picture::Image made{
      .width = source.width, .height = source.height, .pixels = {}, .twoColors = source.depth == 1};
  made.pixels.reserve(std::size_t{source.width} * source.height);
  // The upper eight bits of what a mask selects.
  const auto part = [](unsigned long pixel, unsigned long mask) {
    const int unused = std::countr_zero(mask), bits = std::popcount(mask);
    const unsigned long value = (pixel & mask) >> unused;
    return static_cast<std::uint32_t>(bits >= 8 ? value >> (bits - 8) : value * 255 / ((1ul << bits) - 1));
  };
  for (unsigned y = 0; y < source.height; ++y)
    for (unsigned x = 0; x < source.width; ++x) {
      const unsigned long pixel = XGetPixel(image.get(), static_cast<int>(x), static_cast<int>(y));
      if (made.twoColors) {
        made.pixels.push_back(static_cast<std::uint32_t>(pixel));
      } else if (visual.c_class == TrueColor) {
        made.pixels.push_back(part(pixel, visual.red_mask) << 16 | part(pixel, visual.green_mask) << 8 |
                              part(pixel, visual.blue_mask));
      } else {
        const picture::Color color = pixels.colorOf(pixel);
        made.pixels.push_back(std::uint32_t{color.red} >> 8 << 16 | std::uint32_t{color.green} >> 8 << 8 |
                              color.blue >> 8);
      }
    }
  return made;
}

}  // namespace sggraph
