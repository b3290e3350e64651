/// @file
/// Keeps what a graph widget shows as pixmaps.
#pragma once

#include <X11/Xlib.h>
#include <Xm/Xm.h>

#include <optional>
#include <string_view>
#include <vector>

#include "picture/paint.h"
#include "viewkit/sggraph/xsurface.h"
#include "viewkit/xraii.h"

namespace sggraph {

/// The colours of what lies over and beside the picture.
struct OverlayInks {
  picture::Color text, border, selection, hover, handle, target, refused, background, focus, corner;
};

/// The map of the whole graph, in a corner of the window.
struct Map {
  picture::Frame frame;  // of all of the graph
  SgRectangle box;       // where it is in the window
};

/// What comes and goes over the picture while the pointer and the keyboard are used.
struct Overlay {
  picture::NodeId hoverNode = picture::kNone;
  picture::ArcId hoverArc = picture::kNone;
  picture::NodeId currentNode = picture::kNone;  // dashed; given only while the graph has the keyboard
  picture::NodeId foldable = picture::kNone;     // it can be folded
  picture::NodeId target = picture::kNone;       // lit
  bool targetRefused = false;
  std::vector<picture::NodeId> allowed, dimmed;  // targets that an arc may have, and those that it may not
  bool rubberLine = false;
  SgPoint rubberParent, rubberChild;  // its ends, window coordinates
  std::string_view lines;             // of text in the middle
  std::optional<Map> map;
  bool focus = false;
  std::string_view mode;  // a word for what can be done now, which an edge around everything shows, too
};

/// Keeps two pixmaps as large as the viewport: the picture, and the picture with the overlay.
class Painter {
 public:
  /// @param window  realized; the others as XSurface takes them.
  Painter(Display* display, Window window, XmRenderTable fonts, Pixels& pixels,
          const std::vector<PixmapSource>& pictures);

  XSurface& surface() { return surface_; }

  /// Paints the picture.
  void paint(const picture::Content& content, const picture::Frame& frame, const picture::Manner& manner);
  /// Paints the map, which the overlay then shows.
  void paintMap(const picture::Content& content, const picture::Frame& frame);
  /// Adds the overlay to the picture painted last.
  void paintOverlay(const picture::Drawing& drawing, const picture::Frame& frame, const Overlay& overlay,
                    const OverlayInks& inks);
  /// Copies a part of the result to the window; nothing before the first paintOverlay.
  void show(int x, int y, unsigned width, unsigned height);

 private:
  void fit(const picture::Frame& frame);
  void showLines(std::string_view lines, const picture::Frame& frame, const picture::Color& color);
  void showMode(std::string_view mode, const picture::Frame& frame, const OverlayInks& inks);
  void showMap(const Map& map, const picture::Frame& frame, const OverlayInks& inks);

  Display* display_;
  Window window_;
  XSurface surface_;
  viewkit::PixmapId picture_, front_, map_;
  unsigned width_ = 0, height_ = 0;
  picture::Color corner_;
  bool frontPainted_ = false;
};

}  // namespace sggraph
