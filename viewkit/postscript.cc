/// @file
/// Writes the drawing operators and the comments around them.
#include "viewkit/postscript.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>

namespace viewkit {

namespace {

constexpr double kPageWidth = 595, kPageHeight = 842, kPageMargin = 36;  // points
constexpr double kThinnest = 0.1;                                        // points

/// Appends numbers, a blank after each, with a decimal point in every locale.
void append(std::string& out, std::initializer_list<double> numbers, int decimals = 1) {
  for (const double number : numbers) {
    std::array<char, 64> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::fixed, decimals);
    out.append(digits.data(), end.ptr);
    out += ' ';
  }
}

/// A PostScript string of UTF-8 text: what Latin-1 doesn't have becomes a question mark.
std::string literal(std::string_view text) {
  std::string out = "(";
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned code = static_cast<unsigned char>(text[i]);
    if (code >= 0x80) {
      const bool latin = (code == 0xc2 || code == 0xc3) && i + 1 < text.size();
      code = latin ? ((code & 3u) << 6 | (static_cast<unsigned char>(text[i + 1]) & 0x3fu)) : '?';
      while (i + 1 < text.size() && (static_cast<unsigned char>(text[i + 1]) & 0xc0) == 0x80) ++i;
    }
    if (code == '(' || code == ')' || code == '\\') {
      out += '\\';
      out += static_cast<char>(code);
    } else if (code >= 0x20 && code < 0x7f) {
      out += static_cast<char>(code);
    } else {
      out += '\\';
      for (const int shift : {6, 3, 0}) out += static_cast<char>('0' + (code >> shift & 7));
    }
  }
  return out + ")";
}

/// Text for a comment line, which ends at 255 characters at the latest.
std::string comment(std::string_view text) {
  std::string out;
  for (const char c : text.substr(0, 200)) out += c >= 0x20 && c < 0x7f ? c : '?';
  return out;
}

constexpr std::string_view kProlog =
    "%%BeginProlog\n"
    "/Helvetica findfont dup length dict begin\n"
    "{1 index /FID ne {def} {pop pop} ifelse} forall\n"
    "/Encoding ISOLatin1Encoding def currentdict end\n"
    "/GraphFont exch definefont pop\n"
    "% x y width height red green blue box\n"
    "/box { setrgbcolor 4 copy rectfill 0.4 setgray rectstroke } bind def\n"
    "% text x y width label: around x, narrowed to the width\n"
    "/label { /room exch def moveto 0 setgray\n"
    "  dup stringwidth pop dup room gt {room exch div} {pop 1} ifelse\n"
    "  gsave currentpoint translate 1 scale\n"
    "  dup stringwidth pop 2 div neg -4 moveto show grestore } bind def\n"
    "% x y angle head\n"
    "/head { gsave 3 1 roll translate rotate\n"
    "  0 0 moveto -9 3.5 lineto -9 -3.5 lineto closepath fill grestore } bind def\n"
    "%%EndProlog\n";

}  // namespace

void PostScriptPage::include(const SgRectangle& area) {
  bounds_ = empty_ ? area : picture::united(bounds_, area);
  empty_ = false;
}

void PostScriptPage::addNode(const SgRectangle& box, std::string_view label, const PrintColor& color) {
  include(box);
  // The page's y grows upwards: every y is written negative.
  append(nodes_, {box.x, -box.bottom(), box.width, box.height});
  append(nodes_, {color.red, color.green, color.blue}, 3);
  nodes_ += "box\n" + literal(label) + ' ';
  append(nodes_, {box.middle().x, -box.middle().y, std::max(box.width - 6, 1.0)});
  nodes_ += "label\n";
}

void PostScriptPage::addArc(std::span<const SgPoint> path) {
  if (path.size() < 2) return;
  include(picture::boundsOf(path));
  for (std::size_t i = 0; i < path.size(); ++i) {
    append(arcs_, {path[i].x, -path[i].y});
    arcs_ += i == 0 ? "moveto\n" : "lineto\n";
  }
  const SgPoint tip = path.back(), before = path[path.size() - 2];
  arcs_ += "stroke ";
  append(arcs_, {tip.x, -tip.y, std::atan2(before.y - tip.y, tip.x - before.x) * 180 / std::acos(-1.0)});
  arcs_ += "head\n";
}

std::string PostScriptPage::document(std::string_view title) const {
  const SgRectangle area = empty_ ? SgRectangle{0, 0, 1, 1} : bounds_.grownBy(2);
  const bool lying = area.width > area.height;
  const double wide = (lying ? kPageHeight : kPageWidth) - 2 * kPageMargin;
  const double high = (lying ? kPageWidth : kPageHeight) - 2 * kPageMargin;
  const double scale = std::min({1.0, wide / std::max(area.width, 1.0), high / std::max(area.height, 1.0)});
  const double width = area.width * scale, height = area.height * scale;  // as seen when read
  // On the upright sheet a lying page is turned left: its bottom edge is the sheet's right one.
  const double left = lying ? kPageWidth - kPageMargin - height : kPageMargin;
  const double bottom = lying ? kPageMargin : kPageHeight - kPageMargin - height;
  const double right = left + (lying ? height : width), top = bottom + (lying ? width : height);

  std::string out = "%!PS-Adobe-3.0\n%%Title: " + comment(title) + "\n%%BoundingBox: ";
  append(out, {std::floor(left), std::floor(bottom), std::ceil(right), std::ceil(top)}, 0);
  out += "\n%%Pages: 1\n%%Orientation: ";
  out += lying ? "Landscape" : "Portrait";
  out += "\n%%DocumentNeededResources: font Helvetica\n%%LanguageLevel: 2\n%%EndComments\n";
  out += kProlog;
  out += "%%Page: 1 1\nsave\n";
  append(out, {lying ? right : left, lying ? bottom : top}, 2);
  out += "translate ";
  // Now at the drawing's upper left (upright) or lower left (lying) corner.
  if (lying) out += "90 rotate ";
  append(out, {scale, scale}, 6);
  out += "scale ";
  append(out, {-area.x, lying ? area.bottom() : area.y}, 2);
  out += "translate\n/GraphFont findfont 11 scalefont setfont\n";
  append(out, {std::max(1.0, kThinnest / scale)}, 3);
  out += "setlinewidth\n0.35 setgray\n" + arcs_ + nodes_;
  out += "restore\nshowpage\n%%Trailer\n%%EOF\n";
  return out;
}

bool PostScriptPage::write(const char* path, std::string_view title) const {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  const std::string text = document(title);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  file.close();
  return !file.fail();
}

}  // namespace viewkit
