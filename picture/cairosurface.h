/// @file
/// Draws a picture with cairo: into files, onto paper.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "picture/surface.h"

namespace picture {

struct DestroyCairo {
  void operator()(cairo_t* context) const noexcept { cairo_destroy(context); }
  void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
  void operator()(cairo_font_options_t* options) const noexcept { cairo_font_options_destroy(options); }
};
using CairoPtr = std::unique_ptr<cairo_t, DestroyCairo>;
using CairoSurfacePtr = std::unique_ptr<cairo_surface_t, DestroyCairo>;

struct Font {
  std::string family = "DejaVu Sans";
  double size = 12;  ///< at 100 %, in window units
};

/// A node's picture, row by row. Empty when there is none.
struct Image {
  unsigned width = 0, height = 0;
  std::vector<std::uint32_t> pixels;  ///< 0xrrggbb, or 0 and 1 with `twoColors`
  bool twoColors = false;
};
using Images = std::function<Image(NodeId)>;

class CairoSurface final : public Surface {
 public:
  /// @param context  gets the frame's upper left corner at its origin, a window unit to a unit. Outlives
  /// this.
  CairoSurface(cairo_t* context, const Font& font, Images images = {});

  void begin(const Frame& frame, Color background) override;
  bool anyColor() const override { return true; }
  void fillBoxes(std::span<const SgRectangle> boxes, Color color) override;
  void fillInside(const SgRectangle& box, Color color) override;
  void outlineBox(const SgRectangle& box, Color color, int width) override;
  void drawLines(std::span<const Line> lines, Color color, unsigned width) override;
  void fillTriangles(std::span<const Triangle> triangles, Color color) override;
  void drawHandle(SgPoint middle, Color inside, Color edge) override;
  void setTextZoom(double zoom) override;
  double textWidth(std::string_view text) override;
  double textHeight() override;
  void drawText(SgPoint middle, std::string_view text, Color color) override;
  void drawPicture(NodeId node, const SgRectangle& box, Color foreground, Color background) override;

 private:
  void setColor(Color color);
  void addBox(const SgRectangle& box);

  cairo_t* context_;
  Font font_;
  Images images_;
  Frame frame_;
  double thinnest_ = 1;  // window units
};

/// The size of text at 100 %, without a surface to draw on.
class TextMeasure {
 public:
  explicit TextMeasure(const Font& font);
  double width(std::string_view text) { return surface_.textWidth(text); }
  double height() { return surface_.textHeight(); }

 private:
  CairoSurfacePtr image_;
  CairoPtr context_;
  CairoSurface surface_;
};

}  // namespace picture
