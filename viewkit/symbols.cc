/// @file
/// The pictures in message dialogs, drawn from their geometry.
#include "viewkit/symbols.h"

#include <X11/Xutil.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <map>

#include "viewkit/look.h"

namespace viewkit {
namespace {

constexpr int kSize = 40;    ///< pixels, both ways
constexpr int kSamples = 4;  ///< per pixel and direction

/// A point of the picture: -1 to 1 both ways, y downwards.
struct Point {
  double x, y;
};

struct Rgb {
  double red, green, blue;  ///< 0..1
};

/// What lies at a point.
enum class Layer { BACKGROUND, FILL, GLYPH };

double distance(Point a, Point b) { return std::hypot(a.x - b.x, a.y - b.y); }

double distanceToSegment(Point p, Point a, Point b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
  return distance(p, {a.x + t * dx, a.y + t * dy});
}

bool inQuestionMark(Point p) {
  constexpr Point hook{0, -0.24};
  constexpr double radius = 0.29;
  constexpr double halfStroke = 0.1;
  const bool lowerLeft = p.x < hook.x && p.y > hook.y;
  const bool onHook = !lowerLeft && std::abs(distance(p, hook) - radius) < halfStroke;
  const bool onTip = distance(p, {hook.x - radius, hook.y}) < halfStroke;
  const bool onStem = distanceToSegment(p, {0, hook.y + radius}, {0, 0.2}) < halfStroke;
  return onHook || onTip || onStem || distance(p, {0, 0.54}) < 0.13;
}

bool inExclamationMark(Point p) {
  constexpr double top = -0.34;
  constexpr double bottom = 0.3;
  const double halfStroke = 0.12 - 0.05 * (p.y - top) / (bottom - top);
  return distanceToSegment(p, {0, top}, {0, bottom}) < halfStroke || distance(p, {0, 0.58}) < 0.12;
}

bool inRoundedTriangle(Point p) {
  constexpr std::array<Point, 3> corners{{{0, -0.8}, {0.83, 0.74}, {-0.83, 0.74}}};
  constexpr double roundness = 0.14;
  bool inside = true;
  double nearest = 1;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const Point a = corners[i];
    const Point b = corners[(i + 1) % corners.size()];
    inside = inside && (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x) >= 0;
    nearest = std::min(nearest, distanceToSegment(p, a, b));
  }
  return inside || nearest < roundness;
}

Layer layerAt(Symbol symbol, Point p) {
  if (symbol != Symbol::WARNING) {
    if (distance(p, {0, 0}) > 0.95) return Layer::BACKGROUND;
    const bool inGlyph = symbol == Symbol::QUESTION ? inQuestionMark(p) : inExclamationMark({p.x, -p.y});
    return inGlyph ? Layer::GLYPH : Layer::FILL;
  }
  if (!inRoundedTriangle(p)) return Layer::BACKGROUND;
  return inExclamationMark(p) ? Layer::GLYPH : Layer::FILL;
}

/// How much of a pixel each layer covers, in samples.
std::array<int, 3> coverage(Symbol symbol, int x, int y) {
  std::array<int, 3> count{};
  const auto place = [](int pixel, int sample) {
    return 2 * (pixel + (sample + 0.5) / kSamples) / kSize - 1;
  };
  for (int i = 0; i < kSamples; ++i)
    for (int j = 0; j < kSamples; ++j)
      ++count[static_cast<std::size_t>(layerAt(symbol, {place(x, i), place(y, j)}))];
  return count;
}

/// Finds pixel values. The cells it allocates stay allocated, like those of the toolkit.
class Palette {
 public:
  explicit Palette(Widget widget) : display_(XtDisplay(widget)) {
    XtVaGetValues(widget, XmNcolormap, &colormap_, nullptr);
  }

  Rgb colorOf(Pixel pixel) const {
    XColor color{};
    color.pixel = pixel;
    XQueryColor(display_, colormap_, &color);
    return {color.red / 65535.0, color.green / 65535.0, color.blue / 65535.0};
  }

  Pixel pixelOf(Rgb rgb) {
    const auto level = [](double value) { return static_cast<unsigned short>(std::lround(value * 65535)); };
    XColor color{};
    color.red = level(rgb.red);
    color.green = level(rgb.green);
    color.blue = level(rgb.blue);
    const auto [entry, isNew] = known_.try_emplace({color.red, color.green, color.blue});
    if (isNew) {
      const int screen = DefaultScreen(display_);
      const bool light = rgb.red + rgb.green + rgb.blue > 1.5;
      entry->second = XAllocColor(display_, colormap_, &color) ? color.pixel
                      : light                                  ? WhitePixel(display_, screen)
                                                               : BlackPixel(display_, screen);
    }
    return entry->second;
  }

 private:
  Display* display_;
  Colormap colormap_ = 0;
  std::map<std::array<unsigned short, 3>, Pixel> known_;
};

}  // namespace

PixmapId drawSymbol(Widget widget, Symbol symbol) {
  Display* const display = XtDisplay(widget);
  int depth = 0;
  Pixel background = 0;
  XtVaGetValues(widget, XmNdepth, &depth, XmNbackground, &background, nullptr);
  Palette palette(widget);
  const bool smooth = hasSmoothText(display);
  const std::array<Rgb, 3> colors =
      symbol != Symbol::WARNING
          ? std::array<Rgb, 3>{palette.colorOf(background), Rgb{0, 1 / 3.0, 2 / 3.0}, Rgb{1, 1, 1}}
          : std::array<Rgb, 3>{palette.colorOf(background), Rgb{1, 2 / 3.0, 0}, Rgb{0, 0, 0}};

  PixmapId pixmap(display, XCreatePixmap(display, RootWindowOfScreen(XtScreen(widget)), kSize, kSize,
                                         static_cast<unsigned int>(depth)));
  const Gc gc(display, XCreateGC(display, pixmap.get(), 0, nullptr));
  const ImagePtr image(XGetImage(display, pixmap.get(), 0, 0, kSize, kSize, AllPlanes, ZPixmap));
  if (!image) return {};
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) {
      const auto count = coverage(symbol, x, y);
      const auto most = static_cast<std::size_t>(std::ranges::max_element(count) - count.begin());
      Rgb mixed = colors[most];
      if (smooth) {
        mixed = {};
        for (std::size_t i = 0; i < colors.size(); ++i) {
          const double share = count[i] / double{kSamples * kSamples};
          mixed.red += share * colors[i].red;
          mixed.green += share * colors[i].green;
          mixed.blue += share * colors[i].blue;
        }
      }
      const bool untouched = count[0] == kSamples * kSamples;
      XPutPixel(image.get(), x, y, untouched ? background : palette.pixelOf(mixed));
    }
  XPutImage(display, pixmap.get(), gc.get(), image.get(), 0, 0, 0, 0, kSize, kSize);
  return pixmap;
}

}  // namespace viewkit
