/// @file
/// Asking the server for colours.
#include "viewkit/sggraph/pixels.h"

namespace sggraph {

Pixels::Pixels(Display* display, Screen* screen, Colormap colormap)
    : display_(display), screen_(screen), colormap_(colormap) {
  pixels_.emplace(picture::kWhite, WhitePixelOfScreen(screen));
}

picture::Color Pixels::colorOf(Pixel pixel) {
  if (const auto known = colors_.find(pixel); known != colors_.end()) return known->second;
  XColor color{};
  color.pixel = pixel;
  XQueryColor(display_, colormap_, &color);
  const picture::Color made{color.red, color.green, color.blue};
  pixels_.emplace(made, pixel);
  return colors_.emplace(pixel, made).first->second;
}

Pixel Pixels::pixelOf(const picture::Color& color) {
  if (const auto known = pixels_.find(color); known != pixels_.end()) return known->second;
  XColor wanted{.pixel = 0, .red = color.red, .green = color.green, .blue = color.blue, .flags = 0, .pad = 0};
  const bool made = XAllocColor(display_, colormap_, &wanted) != 0;
  return pixels_.emplace(color, made ? wanted.pixel : BlackPixelOfScreen(screen_)).first->second;
}

}  // namespace sggraph
