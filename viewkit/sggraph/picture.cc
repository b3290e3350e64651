/// @file Scaling of pixmaps on the client's side.
#include "viewkit/sggraph/picture.h"

#include <Xm/Xm.h>

#include <algorithm>
#include <cstdlib>

namespace sggraph {

namespace {

/// While it lives, errors of requests are noted instead of reported.
class QuietErrors {
 public:
  explicit QuietErrors(Display* display) : display_(display) {
    XSync(display_, False);
    failed_ = false;
    before_ = XSetErrorHandler([](Display*, XErrorEvent*) {
      failed_ = true;
      return 0;
    });
  }
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;
  ~QuietErrors() {
    XSync(display_, False);
    XSetErrorHandler(before_);
  }
  static bool failed() { return failed_; }

 private:
  Display* display_;
  XErrorHandler before_;
  static inline bool failed_ = false;
};

}  // namespace

PixmapSource pixmapSource(Display* display, Pixmap id) {
  if (id == None || id == XmUNSPECIFIED_PIXMAP) return {};
  const QuietErrors quiet(display);
  Window root = None;
  int x = 0, y = 0;
  unsigned border = 0;
  PixmapSource source{id};
  const bool known =
      XGetGeometry(display, id, &root, &x, &y, &source.width, &source.height, &border, &source.depth) != 0;
  return known && !QuietErrors::failed() ? source : PixmapSource{};
}

viewkit::PixmapId scaledPixmap(Display* display, const PixmapSource& source, unsigned width,
                               unsigned height) {
  width = std::clamp(width, 1u, 2048u);
  height = std::clamp(height, 1u, 2048u);
  const QuietErrors quiet(display);
  const viewkit::ImagePtr image(
      XGetImage(display, source.id, 0, 0, source.width, source.height, AllPlanes, ZPixmap));
  if (!image) return {};
  const viewkit::ImagePtr scaled(XCreateImage(display, nullptr, source.depth, ZPixmap, 0, nullptr, width,
                                              height, BitmapPad(display), 0));
  if (!scaled) return {};
  // The image frees its data with free().
  scaled->data = static_cast<char*>(
      std::calloc(static_cast<std::size_t>(scaled->bytes_per_line), static_cast<std::size_t>(height)));
  if (!scaled->data) return {};
  for (unsigned y = 0; y < height; ++y) {
    const int fromY = static_cast<int>(y * source.height / height);
    for (unsigned x = 0; x < width; ++x)
      XPutPixel(scaled.get(), static_cast<int>(x), static_cast<int>(y),
                XGetPixel(image.get(), static_cast<int>(x * source.width / width), fromY));
  }
  viewkit::PixmapId made(display, XCreatePixmap(display, source.id, width, height, source.depth));
  const viewkit::Gc gc(display, XCreateGC(display, made.get(), 0, nullptr));
  XPutImage(display, made.get(), gc.get(), scaled.get(), 0, 0, 0, 0, width, height);
  return made;
}

}  // namespace sggraph
