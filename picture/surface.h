/// @file
/// What a picture is drawn on: pixmaps of an X server, or pages.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <span>
#include <string_view>

#include "picture/drawing.h"
#include "picture/frame.h"

namespace picture {

/// Parts of 0 to 0xffff.
struct Color {
  std::uint16_t red = 0, green = 0, blue = 0;
  friend auto operator<=>(const Color&, const Color&) = default;
};
inline constexpr Color kWhite{0xffff, 0xffff, 0xffff};

struct Line {
  SgPoint a, b;
};
using Triangle = std::array<SgPoint, 3>;

/// Window units that a handle extends to each side of its middle.
inline constexpr int kHandleSize = 4;

/// Takes window coordinates of the frame that it was begun with. Boxes may be far larger than the frame;
/// lines come cut to it.
class Surface {
 public:
  virtual ~Surface() = default;

  /// Begins a picture, all of it in the background's colour.
  virtual void begin(const Frame& frame, Color background) = 0;
  /// Whether it has colours for the asking. Otherwise nothing is drawn in a colour of the picture's own
  /// making.
  virtual bool anyColor() const = 0;

  virtual void fillBoxes(std::span<const SgRectangle> boxes, Color color) = 0;
  /// The inside of a box that `outlineBox` draws.
  virtual void fillInside(const SgRectangle& box, Color color) = 0;
  /// A line along the edge, with corners cut so that they look round; `width` pixels, outwards.
  virtual void outlineBox(const SgRectangle& box, Color color, int width) = 0;
  /// @param width  in pixels; 0 is the thinnest.
  virtual void drawLines(std::span<const Line> lines, Color color, unsigned width) = 0;
  virtual void fillTriangles(std::span<const Triangle> triangles, Color color) = 0;
  /// A filled square with an edge, around a point.
  virtual void drawHandle(SgPoint middle, Color inside, Color edge) = 0;

  /// The size of text from now on: 1 is that at 100 %.
  virtual void setTextZoom(double zoom) = 0;
  /// Of a text at the zoom set.
  virtual double textWidth(std::string_view text) = 0;
  virtual double textHeight() = 0;
  /// Draws the text around a point.
  virtual void drawText(SgPoint middle, std::string_view text, Color color) = 0;
  /// Draws a node's picture at the upper left of `box` and as large; one of two colours takes those given.
  virtual void drawPicture(NodeId node, const SgRectangle& box, Color foreground, Color background) = 0;
};

}  // namespace picture
