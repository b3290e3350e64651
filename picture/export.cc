/// @file
/// Pages, and what cairo makes of them.
#include "picture/export.h"

#include <cairo-pdf.h>
#include <cairo-ps.h>
#include <cairo-svg.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <utility>

#include "picture/utf8.h"
#include "storage/replacefile.h"

namespace picture {

namespace {

constexpr double kPageMargin = 24;        // plane units around the drawing
constexpr double kPointsPerUnit = 0.75;   // as on a screen of 96 dots per inch
constexpr double kLargestPage = 14400;    // points; readers of PDF show no larger ones
constexpr double kLargestDrawing = 1e6;   // units of an SVG; cairo computes with 24 bits before the point
constexpr double kMostPngPixels = 100e6;  // 400 MB while it is made
constexpr double kLongestPngSide = 32767;
constexpr double kSheetNumberSize = 8;  // points

struct Ending {
  std::string_view ending;
  FileFormat format;
};
constexpr Ending kEndings[] = {{".svg", FileFormat::svg},
                               {".pdf", FileFormat::pdf},
                               {".png", FileFormat::png},
                               {".ps", FileFormat::ps},
                               {".eps", FileFormat::eps}};

cairo_status_t write(void* file, const unsigned char* bytes, unsigned count) noexcept {
  return std::fwrite(bytes, 1, count, static_cast<std::FILE*>(file)) == count ? CAIRO_STATUS_SUCCESS
                                                                              : CAIRO_STATUS_WRITE_ERROR;
}

/// Text for a comment of PostScript, which ends at 255 characters at the latest.
std::string comment(const char* keyword, std::string_view text) {
  std::string line = keyword;
  for (const char c : text.substr(0, 200)) line += c >= 0x20 && c < 0x7f ? c : '?';
  return line;
}

class Export {
 public:
  Export(std::FILE* file, FileFormat format, const ExportedPicture& picture)
      : file_(file), format_(format), picture_(picture) {}

  /// @returns what went wrong; empty for nothing, or when the file knows.
  std::string run(const Paper* paper) {
    if (format_ == FileFormat::png) return writePng();
    if (format_ == FileFormat::ps && !paper) {
      makeSheets(fitOnto(picture_.part, *kA4));
      drawSheet(sheets_.part(picture_.part, 0, 0));
    } else if (paper) {
      printOn(*paper);
    } else {
      drawOwnPage();
    }
    context_.reset();
    if (!surface_) return {};
    cairo_surface_finish(surface_.get());
    return problem(cairo_surface_status(surface_.get()));
  }

 private:
  static std::string problem(cairo_status_t status) {
    const bool fine = status == CAIRO_STATUS_SUCCESS || status == CAIRO_STATUS_WRITE_ERROR;
    return fine ? std::string() : cairo_status_to_string(status);
  }

  void paintPart(const Frame& part, bool partialArcs) {
    CairoSurface surface(context_.get(), picture_.font, picture_.images);
    paint(surface, picture_.content, part, {.partialArcs = partialArcs});
  }

  void makeSurface(double width, double height) {
    switch (format_) {
      case FileFormat::svg:
        surface_.reset(cairo_svg_surface_create_for_stream(&write, file_, width, height));
        cairo_svg_surface_set_document_unit(surface_.get(), CAIRO_SVG_UNIT_PX);
        break;
      case FileFormat::pdf:
        surface_.reset(cairo_pdf_surface_create_for_stream(&write, file_, width, height));
        cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_TITLE,
                                       validUtf8(picture_.title).c_str());
        break;
      case FileFormat::ps:
      case FileFormat::eps:
        surface_.reset(cairo_ps_surface_create_for_stream(&write, file_, width, height));
        cairo_ps_surface_set_eps(surface_.get(), format_ == FileFormat::eps);
        cairo_ps_surface_dsc_comment(surface_.get(), comment("%%Title: ", picture_.title).c_str());
        break;
      case FileFormat::png:
        surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width),
                                                  static_cast<int>(height)));
        break;
    }
    context_.reset(cairo_create(surface_.get()));
  }

  /// A page as large as what is exported.
  void drawOwnPage() {
    const double longest = std::max(picture_.part.width, picture_.part.height);
    const bool drawing = format_ == FileFormat::svg;
    const double scale =
        drawing ? std::min(1.0, kLargestDrawing / longest) : std::min(kPointsPerUnit, kLargestPage / longest);
    makeSurface(picture_.part.width * scale, picture_.part.height * scale);
    cairo_scale(context_.get(), scale, scale);
    paintPart(picture_.part, picture_.partialArcs);
  }

  std::string writePng() {
    const double width = std::ceil(picture_.part.width), height = std::ceil(picture_.part.height);
    if (std::max(width, height) > kLongestPngSide || width * height > kMostPngPixels) {
      char text[200];
      std::snprintf(
          text, sizeof text,
          "the picture has %.0f x %.0f pixels: a PNG takes %.0f each way and %.0f million in all, an SVG "
          "or a PDF takes any",
          width, height, kLongestPngSide, kMostPngPixels / 1e6);
      return text;
    }
    makeSurface(width, height);
    paintPart(picture_.part, picture_.partialArcs);
    context_.reset();
    return problem(cairo_surface_write_to_png_stream(surface_.get(), &write, file_));
  }

  // Sheets of paper

  void makeSheets(const Sheets& sheets) {
    sheets_ = sheets;
    // Printers want PostScript upright: a page that lies is turned on its sheet.
    const bool turned = format_ == FileFormat::ps && sheets.lying;
    if (turned)
      makeSurface(sheets.height, sheets.width);
    else
      makeSurface(sheets.width, sheets.height);
    if (format_ != FileFormat::ps) return;
    cairo_ps_surface_dsc_comment(surface_.get(),
                                 turned ? "%%Orientation: Landscape" : "%%Orientation: Portrait");
  }

  /// Draws a part of the picture at the upper left of the next sheet.
  /// @param after  draws over it in its window units.
  template <class After>
  void drawSheet(const Frame& part, After&& after) {
    cairo_t* const context = context_.get();
    cairo_save(context);
    if (format_ == FileFormat::ps && sheets_.lying) {
      cairo_translate(context, 0, sheets_.width);
      cairo_rotate(context, -std::acos(0.0));
    }
    cairo_translate(context, Sheets::kMargin, Sheets::kMargin);
    cairo_save(context);
    cairo_scale(context, sheets_.scale, sheets_.scale);
    paintPart(part, false);
    cairo_restore(context);
    after();
    cairo_restore(context);
    cairo_show_page(context);
  }
  void drawSheet(const Frame& part) {
    drawSheet(part, [] {});
  }

  void printOn(const Paper& paper) {
    const Sheets parts = spread(picture_.part, paper, kPointsPerUnit);
    if (parts.columns * parts.rows == 1) {
      makeSheets(parts);
      drawSheet(parts.part(picture_.part, 0, 0));
      return;
    }
    std::vector<std::pair<unsigned, unsigned>> used;
    for (unsigned row = 0; row < parts.rows; ++row)
      for (unsigned column = 0; column < parts.columns; ++column)
        if (showsSomething(parts.part(picture_.part, column, row))) used.emplace_back(column, row);
    const Sheets overview = fitOnto(picture_.part, paper);
    makeSheets(overview);
    drawSheet(overview.part(picture_.part, 0, 0), [&] {
      for (const auto& [column, row] : used) outlinePart(parts, overview.scale, column, row);
    });
    sheets_ = parts;
    for (const auto& [column, row] : used)
      drawSheet(parts.part(picture_.part, column, row), [&] {
        drawNumber(column, row, 0, sheets_.height - 2 * Sheets::kMargin + kSheetNumberSize + 2,
                   kSheetNumberSize);
      });
  }

  bool showsSomething(const Frame& part) const {
    bool something = false;
    const Drawing& drawing = picture_.content.drawing;
    drawing.visitNodes(part.visible(), [&](NodeId) { something = true; });
    if (something) return true;
    drawing.visitArcs(part.visible(), [&](ArcId arc) {
      if (something) return;
      drawing.visitPieces(arc, {}, [&](std::span<const SgPoint> piece, bool) {
        for (std::size_t i = 1; i < piece.size(); ++i) {
          SgPoint a = piece[i - 1], b = piece[i];
          something = something || clipLine(a, b, part.visible());
        }
      });
    });
    return something;
  }

  /// Where on the overview a sheet is found.
  void outlinePart(const Sheets& parts, double scale, unsigned column, unsigned row) {
    const Frame part = parts.part(picture_.part, column, row);
    const SgPoint corner = picture_.part.toWindow(part.corner);
    cairo_t* const context = context_.get();
    cairo_set_source_rgb(context, 0.8, 0.3, 0.1);
    cairo_set_line_width(context, 0.25);
    cairo_rectangle(context, corner.x * scale, corner.y * scale, part.width * scale, part.height * scale);
    cairo_stroke(context);
    const double size = std::min(kSheetNumberSize, std::min(part.width / 4, part.height) * scale);
    drawNumber(column, row, corner.x * scale + 0.5, corner.y * scale + size, size);
  }

  /// "row.column" from 1, as the overview and the sheets have it.
  void drawNumber(unsigned column, unsigned row, double x, double y, double size) {
    const std::string text = std::to_string(row + 1) + "." + std::to_string(column + 1);
    cairo_t* const context = context_.get();
    cairo_select_font_face(context, picture_.font.family.c_str(), CAIRO_FONT_SLANT_NORMAL,
                           CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context, size);
    cairo_set_source_rgb(context, 0.8, 0.3, 0.1);
    cairo_move_to(context, x, y);
    cairo_show_text(context, text.c_str());
    cairo_new_path(context);
  }

  std::FILE* file_;
  FileFormat format_;
  const ExportedPicture& picture_;
  CairoSurfacePtr surface_;
  CairoPtr context_;
  Sheets sheets_{};
};

}  // namespace

std::optional<FileFormat> formatOf(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  if (dot == std::string_view::npos) return std::nullopt;
  std::string ending(path.substr(dot));
  for (char& c : ending) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  const auto* const known = std::ranges::find(kEndings, ending, &Ending::ending);
  return known == std::end(kEndings) ? std::nullopt : std::optional(known->format);
}

bool hasSheets(FileFormat format) { return format == FileFormat::pdf || format == FileFormat::ps; }

Frame wholeFrame(const Drawing& drawing) {
  SgRectangle all = drawing.extents();
  drawing.visitAllArcs([&](ArcId arc) {
    if (drawing.arcShown(arc)) all = united(all, boundsOf(drawing.path(arc)));
  });
  all = all.grownBy(kPageMargin);
  return {.zoom = 1, .corner = {all.x, all.y}, .width = all.width, .height = all.height};
}

std::string exportPicture(const std::string& path, FileFormat format, const ExportedPicture& picture,
                          const Paper* paper) {
  ReplacingFile file(path);
  if (file.stream()) {
    const std::string problem = Export(file.stream(), format, picture).run(paper);
    if (!problem.empty()) return path + ": " + problem;
    if (file.commit()) return {};
  }
  return file.error().text();
}

}  // namespace picture
