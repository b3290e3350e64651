/// @file A node's picture at the size that the zoom asks for.
#pragma once

#include <X11/Xlib.h>

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

/// A copy of the source, scaled without smoothing to `width` x `height` pixels and at most 2048 each way.
/// Empty when the source can't be read.
viewkit::PixmapId scaledPixmap(Display* display, const PixmapSource& source, unsigned width, unsigned height);

}  // namespace sggraph
