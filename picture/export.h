/// @file
/// A picture as a file: SVG, PDF, PNG, PostScript.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "picture/cairosurface.h"
#include "picture/paint.h"
#include "picture/paper.h"

namespace picture {

enum class FileFormat : int { svg, pdf, png, ps, eps };

/// The names of the formats, as names of files end, for messages.
inline constexpr std::string_view kFormatNames = ".svg, .pdf, .png, .ps or .eps";

/// The format that the ending of a file's name asks for, in capitals or not.
std::optional<FileFormat> formatOf(std::string_view path);
/// Whether it has sheets of paper: PDF and PostScript.
bool hasSheets(FileFormat format);

/// What is exported.
struct ExportedPicture {
  const Content& content;
  Frame part;        ///< what of it
  bool partialArcs;  ///< see Manner
  Font font;
  Images images;  ///< of the nodes that show one
  std::string title;
};

/// All of the drawing at 100 % with a margin around.
Frame wholeFrame(const Drawing& drawing);

/// Writes a file, in full or not at all. The page is as large as the picture, or `paper`: then a picture that
/// has no room on one sheet is split, and a sheet that shows all of it comes first. PostScript without a
/// paper is one A4 sheet.
/// @param paper  only for formats that have sheets; null for none.
/// @returns what went wrong, a line without its end; empty when nothing did.
std::string exportPicture(const std::string& path, FileFormat format, const ExportedPicture& picture,
                          const Paper* paper = nullptr);

}  // namespace picture
