/// @file
/// Colours as pixels of the screen, and back.
#pragma once

#include <X11/Intrinsic.h>

#include <map>

#include "picture/surface.h"

namespace sggraph {

/// Remembers what it was asked, since the server has to be asked.
class Pixels {
 public:
  Pixels(Display* display, Screen* screen, Colormap colormap);

  picture::Color colorOf(Pixel pixel);
  /// The pixel that the colour came from, if it came from one; else one like it, black when there is none.
  Pixel pixelOf(const picture::Color& color);

 private:
  Display* display_;
  Screen* screen_;
  Colormap colormap_;
  std::map<Pixel, picture::Color> colors_;
  std::map<picture::Color, Pixel> pixels_;
};

}  // namespace sggraph
