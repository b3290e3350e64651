/// @file
/// Draws a picture into a pixmap.
#pragma once

#include <X11/Xlib.h>
#include <Xm/Xm.h>

#include <memory>
#include <unordered_map>
#include <vector>

#include "picture/surface.h"
#include "viewkit/sggraph/pixels.h"
#include "viewkit/sggraph/scaledpixmap.h"
#include "viewkit/sggraph/textfont.h"
#include "viewkit/xraii.h"

namespace sggraph {

/// Cuts what it is given down to the 16 bits of X's coordinates.
class XSurface final : public picture::Surface {
 public:
  /// @param window  realized; gives depth, visual and colours.
  /// @param pixels,pictures  outlive this; the pictures are by NodeId.
  XSurface(Display* display, Window window, XmRenderTable fonts, Pixels& pixels,
           const std::vector<PixmapSource>& pictures);

  void setFonts(XmRenderTable fonts);
  /// Drop scaled pictures, of all nodes or of one that shows another picture from now on.
  void dropPictures() { scaled_.clear(); }
  void dropPicture(picture::NodeId node) { scaled_.erase(node); }

  /// What is drawn on from now on; None before that goes.
  void setTarget(Drawable target);
  GC gc() const { return gc_.get(); }
  unsigned depth() const { return depth_; }
  void setForeground(const picture::Color& color);
  /// Where what is drawn from now on is cut off.
  void setFrame(const picture::Frame& frame) { frame_ = frame; }
  /// The next lines are dashed, or not.
  void setDashed(bool dashed);
  /// A line of a pixel inside of the box's edge.
  void drawRectangle(const SgRectangle& box, const picture::Color& color);
  /// Dots of a colour over the boxes, through which some of what is there can be seen.
  void veil(std::span<const SgRectangle> boxes, const picture::Color& color);

  void begin(const picture::Frame& frame, picture::Color background) override;
  bool anyColor() const override { return visual_->c_class == TrueColor; }
  void fillBoxes(std::span<const SgRectangle> boxes, picture::Color color) override;
  void fillInside(const SgRectangle& box, picture::Color color) override;
  void outlineBox(const SgRectangle& box, picture::Color color, int width) override;
  void drawLines(std::span<const picture::Line> lines, picture::Color color, unsigned width) override;
  void fillTriangles(std::span<const picture::Triangle> triangles, picture::Color color) override;
  void drawHandle(SgPoint middle, picture::Color inside, picture::Color edge) override;
  void setTextZoom(double zoom) override;
  double textWidth(std::string_view text) override { return font_->zoomedWidth(text); }
  double textHeight() override { return font_->height() * textZoom_; }
  void drawText(SgPoint middle, std::string_view text, picture::Color color) override;
  void drawPicture(picture::NodeId node, const SgRectangle& box, picture::Color foreground,
                   picture::Color background) override;

 private:
  struct Scaled {
    ScaledPart part;
    viewkit::PixmapId pixmap;
  };

  const viewkit::PixmapId* pictureOf(picture::NodeId node, const ScaledPart& part);

  Display* display_;
  Visual* visual_;
  Colormap colormap_;
  unsigned depth_;
  Screen* screen_;
  Pixels& pixels_;
  const std::vector<PixmapSource>& pictures_;
  viewkit::Gc gc_;
  viewkit::PixmapId dots_;  // of the veil; made when it is needed
  Drawable target_ = 0;
  std::unique_ptr<TextFont> font_;
  Drawable textTarget_ = 0;  // what the font draws on
  picture::Frame frame_;
  double textZoom_ = 1;
  std::unordered_map<picture::NodeId, Scaled> scaled_;  // of nodes that were in view at the present zoom
  double scaledZoom_ = 0;
};

}  // namespace sggraph
