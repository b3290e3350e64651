/// @file
/// Draws the visible part of a Drawing into pixmaps.
#pragma once

#include <X11/Xlib.h>
#include <Xm/Xm.h>

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "viewkit/sggraph/drawing.h"
#include "viewkit/sggraph/picture.h"
#include "viewkit/sggraph/textfont.h"
#include "viewkit/sggraph/viewport.h"
#include "viewkit/xraii.h"

namespace sggraph {

/// What a node shows.
struct NodeLook {
  std::string label;
  Pixel tint = 0;
  PixmapSource picture;  // instead of the label
};

/// The graph's colours.
struct Inks {
  Pixel background, text, arc, farArc, border, selection, hover, handle, target, focus, corner;
};

/// What comes and goes over the picture while the pointer and the keyboard are used.
struct Overlay {
  NodeId hoverNode = kNone;
  ArcId hoverArc = kNone;
  NodeId currentNode = kNone;  // dashed; given only while the graph has the keyboard
  NodeId target = kNone;       // lit
  bool rubberLine = false;
  SgPoint rubberParent, rubberChild;  // its ends, window coordinates
  bool focus = false;
};

/// Text is drawn from this zoom up, below it nothing could be read.
inline constexpr double kTextZoom = 0.6;
/// Plane units between a node's picture and the edge of its box.
inline constexpr double kPicturePadding = 4;
/// Pixels that a handle of a selected arc extends to each side of its middle.
inline constexpr int kHandleSize = 4;

/// Keeps two pixmaps as large as the viewport: the picture, and the picture with the overlay.
class Painter {
 public:
  /// @param window  realized; gives depth, visual and colours.
  Painter(Display* display, Window window, XmRenderTable fonts);

  void setInks(const Inks& inks);
  void setFonts(XmRenderTable fonts);
  /// Drop scaled pictures, of all nodes or of one that shows another picture from now on.
  void dropPictures() { pictures_.clear(); }
  void dropPicture(NodeId node) { pictures_.erase(node); }

  /// Paints the picture.
  void paint(const Drawing& drawing, const std::vector<NodeLook>& looks,
             const std::unordered_map<ArcId, std::string>& arcLabels, const Viewport& view, bool handles);
  /// Adds the overlay to the picture painted last.
  void paintOverlay(const Drawing& drawing, const Viewport& view, const Overlay& overlay);
  /// Copies a part of the result to the window; nothing before the first paintOverlay.
  void show(int x, int y, unsigned width, unsigned height);

 private:
  struct ArcBatch {
    std::vector<XSegment> lines;
    std::vector<XPoint> heads;  // three per head
  };

  void fit(const Viewport& view);
  void addArc(ArcBatch& batch, const Drawing& drawing, ArcId arc, const Viewport& view,
              double headLength) const;
  void drawArcs(Drawable target, const ArcBatch& batch, Pixel pixel, unsigned width);
  void drawNodes(const Drawing& drawing, const std::vector<NodeLook>& looks, const Viewport& view);
  /// @param box  uncut, in window coordinates; likewise for the next.
  void drawContents(NodeId node, const NodeLook& look, const SgRectangle& box, const Viewport& view);
  void drawPicture(NodeId node, const NodeLook& look, const SgRectangle& box, const Viewport& view);
  void outline(Drawable target, const SgRectangle& box, Pixel pixel, int width);
  void drawHandles(const Drawing& drawing, const Viewport& view);
  /// The ink for text on a tint.
  Pixel textOn(Pixel tint);
  /// The tint of a node that is too small for an outline: darker, where that costs no colour cell.
  Pixel farTint(Pixel tint);
  const viewkit::PixmapId* pictureOf(NodeId node, const PixmapSource& source, const ScaledPart& part);

  Display* display_;
  Window window_;
  Visual* visual_;
  Colormap colormap_;
  unsigned depth_;
  Screen* screen_;
  viewkit::Gc gc_;
  viewkit::PixmapId picture_, front_;
  unsigned width_ = 0, height_ = 0;
  bool frontPainted_ = false;
  std::unique_ptr<TextFont> font_;
  Inks inks_{};
  std::map<Pixel, Pixel> textOn_, farTints_;
  struct Scaled {
    ScaledPart part;
    viewkit::PixmapId pixmap;
  };
  std::unordered_map<NodeId, Scaled> pictures_;  // of nodes that were in view at the present zoom
  double picturesZoom_ = 0;
};

/// Where the end handles of an arc are, in window coordinates.
struct HandlePlaces {
  SgPoint parent, child;
};
HandlePlaces handlePlaces(std::span<const SgPoint> path, const Viewport& view);

}  // namespace sggraph
