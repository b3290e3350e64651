/// @file
/// Fills the colour table from the colormap, then with colours that can be allocated, then with neighbours.
#include "editor/colortable.h"

#include <X11/Xmu/WinUtil.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "viewkit/xraii.h"

namespace {

constexpr int kColors = 256;

constexpr std::array<unsigned short, 8> kRedGreenLevels = {0x0000, 0x2525, 0x4949, 0x6d6d,
                                                           0x9292, 0xb6b6, 0xdbdb, 0xffff};
constexpr std::array<unsigned short, 4> kBlueLevels = {0x0000, 0x5555, 0xaaaa, 0xffff};

/// A colour index taken apart: levels of red and green from 0 to 7, of blue from 0 to 3.
struct Levels {
  int red, green, blue;
};
constexpr Levels levels_of(int index) { return {index >> 5, (index >> 2) & 7, index & 3}; }
constexpr int index_of(Levels s) { return s.red << 5 | s.green << 2 | s.blue; }

int quantise(const XColor& color) {
  return index_of({(color.red + 4681) / 9362, (color.green + 4681) / 9362, (color.blue + 10922) / 21845});
}

XColor color_of(int index) {
  const Levels levels = levels_of(index);
  XColor color{};
  color.red = kRedGreenLevels[static_cast<std::size_t>(levels.red)];
  color.green = kRedGreenLevels[static_cast<std::size_t>(levels.green)];
  color.blue = kBlueLevels[static_cast<std::size_t>(levels.blue)];
  return color;
}

/// Enters every cell of the colormap under the colour of the table that it is nearest to; where several are
/// nearest to one, the cell with the lowest pixel value.
void take_colormap(Display* display, unsigned char table[kColors], int used[kColors]) {
  std::array<XColor, kColors> cells{};
  const Visual* visual = DefaultVisual(display, 0);
  // A small colormap has fewer cells than the table; asking for others would be an X error.
  const bool direct = visual->c_class == TrueColor || visual->c_class == DirectColor;
  const int count = direct ? kColors : std::min(kColors, visual->map_entries);
  for (int p = 0; p < count; ++p) cells[static_cast<std::size_t>(p)].pixel = static_cast<unsigned long>(p);
  XQueryColors(display, DefaultColormap(display, 0), cells.data(), count);
  std::fill_n(used, kColors, 0);
  for (int p = 0; p < count; ++p) {
    const int index = quantise(cells[static_cast<std::size_t>(p)]);
    if (used[index] != 0) continue;
    used[index] = 1;
    table[index] = static_cast<unsigned char>(p);
  }
}

}  // namespace

void make256table(Display* display, unsigned char table[256]) {
  int used[kColors];
  std::fill_n(table, kColors, static_cast<unsigned char>(0));
  take_colormap(display, table, used);
  if (findQuileditor(display) == 0) {
    for (int index = 0; index < kColors; ++index) {
      if (used[index] == 1) continue;
      XColor color = color_of(index);
      if (XAllocColor(display, DefaultColormap(display, 0), &color) != 0)
        table[index] = static_cast<unsigned char>(color.pixel & 0xff);
    }
  }
  take_colormap(display, table, used);
  for (int index = 0; index < kColors; ++index) {
    if (used[index] == 1) continue;
    table[index] = table[scanRGB8space(index, used)];
    used[index] = 1;  // so that it can serve as a neighbour of those after it
  }
}

int scanRGB8space(int index, const int used[256]) {
  const Levels at = levels_of(index);
  const std::array<std::pair<bool, Levels>, 6> neighbours = {{
      {at.blue > 0, {at.red, at.green, at.blue - 1}},
      {at.blue < 3, {at.red, at.green, at.blue + 1}},
      {at.green > 0, {at.red, at.green - 1, at.blue}},
      {at.green < 7, {at.red, at.green + 1, at.blue}},
      {at.red > 0, {at.red - 1, at.green, at.blue}},
      {at.red < 7, {at.red + 1, at.green, at.blue}},
  }};
  for (const auto& [exists, levels] : neighbours)
    if (exists && used[index_of(levels)] == 1) return index_of(levels);
  return 0;
}

int findQuileditor(Display* display) {
  const viewkit::QuietErrors quiet(display);  // windows of other programs may vanish while we look at them
  const Window root = DefaultRootWindow(display);
  print_client_properties(display, root);
  Window root_return, parent_return;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, root, &root_return, &parent_return, &children, &count) == 0) return 0;
  const viewkit::XMem<Window> owner(children);
  int found = 0;
  for (unsigned i = 0; i < count && found == 0; ++i) {
    if (const Window client = XmuClientWindow(display, children[i]); client != None)
      found = print_client_properties(display, client);
  }
  return found;
}

int print_client_properties(Display* display, Window window) {
  char** words = nullptr;
  int count = 0;
  if (XGetCommand(display, window, &words, &count) == 0) return 0;
  const bool is_editor = count > 0 && std::string_view(words[0]) == "quileditor";
  XFreeStringList(words);
  return is_editor ? 1 : 0;
}
