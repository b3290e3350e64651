/// @file
/// Reading SVG, and letting others read PDF and PostScript.
#include "tests/support/picturefile.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "tests/support/files.h"
#include "tests/support/process.h"

namespace support {

namespace {

std::string outputOf(std::vector<std::string> command) {
  const ScratchDirectory scratch;
  Process::Start start;
  start.command = std::move(command);
  start.output = scratch / "out";
  if (Process(start).waitForExit() != 0) throw std::runtime_error(start.command.front() + " failed");
  return read_file(start.output);
}

}  // namespace

std::vector<FilledBox> filledBoxes(const std::string& svg) {
  std::vector<FilledBox> boxes;
  std::istringstream lines(svg);
  for (std::string line; std::getline(lines, line);) {
    double red = 0, green = 0, blue = 0, x[4], y[4];
    const char* const fill = "<path style=\" stroke:none;fill-rule:nonzero;fill:rgb(%lf%%,%lf%%,%lf%%)";
    if (std::sscanf(line.c_str(), fill, &red, &green, &blue) != 3) continue;
    const std::size_t path = line.find(" d=\"");
    const char* const corners = " d=\"M %lf %lf L %lf %lf L %lf %lf L %lf %lf Z";
    if (path == std::string::npos || std::sscanf(line.c_str() + path, corners, &x[0], &y[0], &x[1], &y[1],
                                                 &x[2], &y[2], &x[3], &y[3]) != 8)
      continue;
    const auto part = [](double percent) { return static_cast<unsigned>(std::lround(percent * 2.55)); };
    boxes.push_back(
        {{x[0], y[0], x[2] - x[0], y[2] - y[0]}, part(red) << 16 | part(green) << 8 | part(blue)});
  }
  return boxes;
}

std::vector<PlacedWord> placedWords(const std::filesystem::path& pdf) {
  std::vector<PlacedWord> words;
  std::istringstream lines(outputOf({"pdftotext", "-bbox", pdf.string(), "-"}));
  int page = -1;
  for (std::string line; std::getline(lines, line);) {
    double left = 0, top = 0, right = 0, bottom = 0;
    char text[100];
    if (line.find("<page ") != std::string::npos) ++page;
    const char* const word = " <word xMin=\"%lf\" yMin=\"%lf\" xMax=\"%lf\" yMax=\"%lf\">%99[^<]";
    if (std::sscanf(line.c_str(), word, &left, &top, &right, &bottom, text) == 5)
      words.push_back({text, {left, top, right - left, bottom - top}, page});
  }
  return words;
}

std::vector<std::string> wordsOfPostScript(const std::filesystem::path& file) {
  std::istringstream text(outputOf(
      {"gs", "-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=txtwrite", "-sOutputFile=-", file.string()}));
  std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
  std::ranges::sort(words);
  return words;
}

}  // namespace support
