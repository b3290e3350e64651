/// @file
/// What is drawn in a file with a picture.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "picture/geometry.h"

namespace support {

/// The filled rectangles of an SVG, in the order in which they are drawn; the page's ground is none.
struct FilledBox {
  SgRectangle box;
  unsigned color = 0;  ///< 0xrrggbb
};
std::vector<FilledBox> filledBoxes(const std::string& svg);

/// The words of a PDF with their places, in points from the upper left, page by page.
struct PlacedWord {
  std::string text;
  SgRectangle box;
  int page = 0;  ///< from 0
};
std::vector<PlacedWord> placedWords(const std::filesystem::path& pdf);

/// All words of a PostScript file, sorted.
std::vector<std::string> wordsOfPostScript(const std::filesystem::path& file);

}  // namespace support
