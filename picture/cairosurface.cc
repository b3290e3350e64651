/// @file
/// Boxes, lines, texts and images as paths of cairo.
#include "picture/cairosurface.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "picture/utf8.h"

namespace picture {

namespace {

constexpr double kThinnest = 0.1;      // units of the page, below which printers drop lines
constexpr std::size_t kAtOnce = 1000;  // lines or boxes in one path

}  // namespace

CairoSurface::CairoSurface(cairo_t* context, const Font& font, Images images)
    : context_(context), font_(font), images_(std::move(images)) {
  cairo_select_font_face(context, font.family.c_str(), CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(context, font.size);
}

void CairoSurface::setColor(Color color) {
  cairo_set_source_rgb(context_, color.red / 65535.0, color.green / 65535.0, color.blue / 65535.0);
}

void CairoSurface::addBox(const SgRectangle& box) {
  cairo_rectangle(context_, box.x, box.y, box.width, box.height);
}

void CairoSurface::begin(const Frame& frame, Color background) {
  frame_ = frame;
  double across = kThinnest, down = 0;
  cairo_device_to_user_distance(context_, &across, &down);
  thinnest_ = std::max(1.0, std::hypot(across, down));
  addBox(frame.window());
  cairo_clip_preserve(context_);
  setColor(background);
  cairo_fill(context_);
}

void CairoSurface::fillBoxes(std::span<const SgRectangle> boxes, Color color) {
  setColor(color);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    addBox(frame_.near(boxes[i]));
    if (i % kAtOnce == kAtOnce - 1) cairo_fill(context_);
  }
  cairo_fill(context_);
}

void CairoSurface::fillInside(const SgRectangle& box, Color color) {
  setColor(color);
  addBox(frame_.near(box).grownBy(-0.5));
  cairo_fill(context_);
}

void CairoSurface::outlineBox(const SgRectangle& box, Color color, int width) {
  const SgRectangle edge = frame_.near(box).grownBy((width - 2) / 2.0);
  const double round = edge.height < 10 ? 0 : 2;
  constexpr double kRight = std::numbers::pi / 2;
  setColor(color);
  cairo_new_sub_path(context_);
  cairo_arc(context_, edge.right() - round, edge.y + round, round, -kRight, 0);
  cairo_arc(context_, edge.right() - round, edge.bottom() - round, round, 0, kRight);
  cairo_arc(context_, edge.x + round, edge.bottom() - round, round, kRight, 2 * kRight);
  cairo_arc(context_, edge.x + round, edge.y + round, round, 2 * kRight, 3 * kRight);
  cairo_close_path(context_);
  cairo_set_line_width(context_, std::max<double>(width, thinnest_));
  cairo_stroke(context_);
}

void CairoSurface::drawLines(std::span<const Line> lines, Color color, unsigned width) {
  setColor(color);
  cairo_set_line_cap(context_, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_width(context_, std::max<double>(width, thinnest_));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    cairo_move_to(context_, lines[i].a.x, lines[i].a.y);
    cairo_line_to(context_, lines[i].b.x, lines[i].b.y);
    if (i % kAtOnce == kAtOnce - 1) cairo_stroke(context_);
  }
  cairo_stroke(context_);
}

void CairoSurface::fillTriangles(std::span<const Triangle> triangles, Color color) {
  setColor(color);
  for (std::size_t i = 0; i < triangles.size(); ++i) {
    cairo_move_to(context_, triangles[i][0].x, triangles[i][0].y);
    cairo_line_to(context_, triangles[i][1].x, triangles[i][1].y);
    cairo_line_to(context_, triangles[i][2].x, triangles[i][2].y);
    cairo_close_path(context_);
    if (i % kAtOnce == kAtOnce - 1) cairo_fill(context_);
  }
  cairo_fill(context_);
}

void CairoSurface::drawHandle(SgPoint middle, Color inside, Color edge) {
  const SgRectangle box = SgRectangle{middle.x, middle.y, 0, 0}.grownBy(kHandleSize);
  fillInside(box, inside);
  setColor(edge);
  addBox(box);
  cairo_set_line_width(context_, thinnest_);
  cairo_stroke(context_);
}

void CairoSurface::setTextZoom(double zoom) { cairo_set_font_size(context_, font_.size * zoom); }

double CairoSurface::textWidth(std::string_view text) {
  cairo_text_extents_t extents{};
  cairo_text_extents(context_, validUtf8(text).c_str(), &extents);
  return extents.x_advance;
}

double CairoSurface::textHeight() {
  cairo_font_extents_t extents{};
  cairo_font_extents(context_, &extents);
  return extents.ascent + extents.descent;
}

void CairoSurface::drawText(SgPoint middle, std::string_view text, Color color) {
  cairo_font_extents_t extents{};
  cairo_font_extents(context_, &extents);
  setColor(color);
  cairo_move_to(context_, middle.x - textWidth(text) / 2, middle.y + (extents.ascent - extents.descent) / 2);
  cairo_show_text(context_, validUtf8(text).c_str());
  cairo_new_path(context_);
}

void CairoSurface::drawPicture(NodeId node, const SgRectangle& box, Color foreground, Color background) {
  Image image = images_ ? images_(node) : Image{};
  if (image.pixels.empty()) return;
  if (image.twoColors) {
    const auto word = [](Color color) {
      return std::uint32_t{color.red} >> 8 << 16 | std::uint32_t{color.green} >> 8 << 8 | color.blue >> 8;
    };
    for (std::uint32_t& pixel : image.pixels) pixel = word(pixel != 0 ? foreground : background);
  }
  const CairoSurfacePtr pixels(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(image.width),
                                                          static_cast<int>(image.height)));
  unsigned char* const data = cairo_image_surface_get_data(pixels.get());
  if (!data) return;
  cairo_surface_flush(pixels.get());
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(pixels.get()));
  for (std::size_t y = 0; y < image.height; ++y)
    std::copy_n(reinterpret_cast<const unsigned char*>(&image.pixels[y * image.width]), image.width * 4,
                data + y * stride);
  cairo_surface_mark_dirty(pixels.get());
  cairo_save(context_);
  cairo_translate(context_, box.x, box.y);
  cairo_scale(context_, box.width / image.width, box.height / image.height);
  cairo_set_source_surface(context_, pixels.get(), 0, 0);
  cairo_pattern_set_filter(cairo_get_source(context_), CAIRO_FILTER_NEAREST);
  addBox({0, 0, static_cast<double>(image.width), static_cast<double>(image.height)});
  cairo_fill(context_);
  cairo_restore(context_);
}

TextMeasure::TextMeasure(const Font& font)
    : image_(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1)),
      context_(cairo_create(image_.get())),
      surface_(context_.get(), font) {}

}  // namespace picture
