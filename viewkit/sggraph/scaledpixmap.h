/// @file
/// A node's picture at the size that the zoom asks for.
#pragma once

#include <X11/Xlib.h>

#include "picture/cairosurface.h"
#include "viewkit/sggraph/pixels.h"
#include "viewkit/xraii.h"

namespace sggraph {

/// Someone else's pixmap, with its extent.
struct PixmapSource {
  Pixmap id = None;
  unsigned width = 0, height = 0;  // pixels
  unsigned depth = 0;              // 1 or the screen's

  explicit operator bool() const { return id != None; }
};

/// Asks the server for the extent. An empty source when `id` is none, XmUNSPECIFIED_PIXMAP or no pixmap any
/// more.
PixmapSource pixmapSource(Display* display, Pixmap id);

/// A source made `width` x `height` pixels large, and a part of that.
struct ScaledPart {
  unsigned width = 0, height = 0;
  int x = 0, y = 0;
  unsigned partWidth = 0, partHeight = 0;

  friend bool operator==(const ScaledPart&, const ScaledPart&) = default;
};

/// The part of the scaled source, which is not smoothed. Empty when the source can't be read.
/// @param part  at least a pixel each way, within the scaled source.
viewkit::PixmapId scaledPixmap(Display* display, const PixmapSource& source, const ScaledPart& part);

/// All of the source, for other surfaces than X's. Empty when it can't be read.
picture::Image imageOf(Display* display, const PixmapSource& source, const Visual& visual, Pixels& pixels);

}  // namespace sggraph
