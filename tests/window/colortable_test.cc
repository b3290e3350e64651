/// @file
/// The colour table on a screen of 256 cells, alone and beside another editor.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

// X headers come after the test framework: their macros would change it.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <array>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "editor/colortable.h"
#include "tests/support/editor.h"
#include "tests/support/places.h"

namespace {

using support::Editor;
using support::XServer;

struct CloseDisplay {
  void operator()(Display* display) const { XCloseDisplay(display); }
};
using Connection = std::unique_ptr<Display, CloseDisplay>;

Connection connect(const XServer& server) { return Connection(XOpenDisplay(server.display().c_str())); }

using Cells = std::vector<std::array<unsigned short, 3>>;

/// All 256 cells of the default colormap.
Cells cells(Display* display) {
  Cells all;
  for (unsigned long pixel = 0; pixel < 256; ++pixel) {
    XColor color{};
    color.pixel = pixel;
    XQueryColor(display, DefaultColormap(display, 0), &color);
    all.push_back({color.red, color.green, color.blue});
  }
  return all;
}

/// The colour index nearest to a cell: 3 bits red, 3 bits green, 2 bits blue.
int index_of(const std::array<unsigned short, 3>& cell) {
  return ((cell[0] + 4681) / 9362) << 5 | ((cell[1] + 4681) / 9362) << 2 | (cell[2] + 10922) / 21845;
}

using Table = std::array<unsigned char, 256>;

Table table_on(Display* display) {
  Table table{};
  make256table(display, table.data());
  return table;
}

/// A window that says it was started with these words.
Window window_of_command(Display* display, std::vector<std::string> words) {
  const Window window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 10, 10, 0, 0, 0);
  std::vector<char*> pointers;
  for (auto& word : words) pointers.push_back(word.data());
  XSetCommand(display, window, pointers.data(), static_cast<int>(pointers.size()));
  XSync(display, False);
  return window;
}

TEST(ColorTable, AloneEveryColourIsMatchedOrAllocatedAsLongAsThereAreCells) {
  const XServer server(8);
  const Connection display = connect(server);
  std::set<int> matched_before;
  for (const auto& cell : cells(display.get())) matched_before.insert(index_of(cell));

  const Table table = table_on(display.get());
  const Cells after = cells(display.get());
  std::set<int> matched;
  for (int index = 0; index < 256; ++index) {
    const auto pixel = table[static_cast<std::size_t>(index)];
    if (index_of(after[pixel]) == index) matched.insert(index);
  }
  EXPECT_GT(matched.size(), matched_before.size());
  for (const int index : matched_before) EXPECT_TRUE(matched.contains(index)) << index;
  if (matched.size() < 256) {
    // Some colours had to take a neighbour's: then no cell may be left for them.
    XColor color{};
    color.red = 0x1234;
    color.green = 0x4321;
    color.blue = 0x7777;
    EXPECT_EQ(XAllocColor(display.get(), DefaultColormap(display.get(), 0), &color), 0);
  }
}

TEST(ColorTable, TheLowestPixelOfAColourWins) {
  const XServer server(8);
  const Connection display = connect(server);
  const Table table = table_on(display.get());
  const Cells all = cells(display.get());
  for (int index = 0; index < 256; ++index) {
    const auto pixel = table[static_cast<std::size_t>(index)];
    if (index_of(all[pixel]) != index) continue;
    for (std::size_t lower = 0; lower < pixel; ++lower) EXPECT_NE(index_of(all[lower]), index) << lower;
  }
}

TEST(ColorTable, BesideAnotherEditorNothingIsAllocatedAndItsCellsAreShared) {
  const XServer server(8);
  const Connection first = connect(server);
  const Table table = table_on(first.get());
  window_of_command(first.get(), {"quileditor"});

  const Connection second = connect(server);
  const Cells before = cells(second.get());
  ASSERT_EQ(findQuileditor(second.get()), 1);
  EXPECT_EQ(table_on(second.get()), table);
  EXPECT_EQ(cells(second.get()), before);
}

TEST(ColorTable, BesideAnotherEditorFreeCellsStayFree) {
  const XServer server(8);
  const Connection display = connect(server);
  window_of_command(display.get(), {"quileditor"});
  const Cells before = cells(display.get());
  table_on(display.get());
  EXPECT_EQ(cells(display.get()), before);
}

TEST(ColorTable, IsMadeOnDeepScreensToo) {
  for (const int depth : {16, 24}) {
    const XServer server(depth);
    const Connection display = connect(server);
    const Table table = table_on(display.get());
    EXPECT_EQ(table[0], 0) << depth;  // black is pixel 0 on every TrueColor screen
  }
}

TEST(ColorTable, ANeighbourIsSoughtInBlueThenGreenThenRedTheLowerFirst) {
  constexpr int kMiddle = 3 << 5 | 3 << 2 | 1;
  const std::vector<int> order = {kMiddle - 1,        kMiddle + 1,        kMiddle - (1 << 2),
                                  kMiddle + (1 << 2), kMiddle - (1 << 5), kMiddle + (1 << 5)};
  for (std::size_t first = 0; first < order.size(); ++first) {
    int used[256] = {};
    for (std::size_t i = first; i < order.size(); ++i) used[order[i]] = 1;
    EXPECT_EQ(scanRGB8space(kMiddle, used), order[first]) << first;
  }
}

TEST(ColorTable, ANeighbourBeyondTheEdgeOrNotExactlyUsedIsNone) {
  int used[256] = {};
  used[255] = 1;
  EXPECT_EQ(scanRGB8space(0, used), 0);
  std::fill(std::begin(used), std::end(used), 2);
  EXPECT_EQ(scanRGB8space(128, used), 0);
}

TEST(ColorTable, AnIndexWithoutAFilledNeighbourTakesBlack) {
  const int used[256] = {};
  EXPECT_EQ(scanRGB8space(255, used), 0);
}

TEST(FindQuileditor, ComparesTheFirstWordOfTheCommandExactly) {
  const XServer server;
  const Connection display = connect(server);
  EXPECT_EQ(findQuileditor(display.get()), 0);
  for (const std::vector<std::string>& command : {std::vector<std::string>{"/usr/bin/quileditor"},
                                                  {"quileditor2"},
                                                  {"Quileditor"},
                                                  {""},
                                                  {"sh", "quileditor"}}) {
    const Window window = window_of_command(display.get(), command);
    EXPECT_EQ(print_client_properties(display.get(), window), 0) << command.front();
    EXPECT_EQ(findQuileditor(display.get()), 0) << command.front();
    XDestroyWindow(display.get(), window);
  }
  const Window window = window_of_command(display.get(), {"quileditor", "-iconic"});
  EXPECT_EQ(print_client_properties(display.get(), window), 1);
  EXPECT_EQ(findQuileditor(display.get()), 1);
}

TEST(FindQuileditor, AWindowThatIsGoneIsNoEditor) {
  const XServer server;
  const Connection display = connect(server);
  window_of_command(display.get(), {"xterm"});
  EXPECT_EQ(print_client_properties(display.get(), DefaultRootWindow(display.get())), 0);
  EXPECT_EQ(findQuileditor(display.get()), 0);
}

/// The built editor on a display of its own, started as `name`.
int found_when_started_as(const std::string& name) {
  const XServer server;
  const support::WindowManager manager(server);
  support::Program::Start start;
  start.name = name;
  Editor editor(server, start);
  const Connection display = connect(server);
  return findQuileditor(display.get());
}

TEST(FindQuileditor, AnEditorStartedByItsPlainNameIsFound) {
  EXPECT_EQ(found_when_started_as("quileditor"), 1);
}

TEST(FindQuileditor, AnEditorStartedThroughAPathIsNot) {
  EXPECT_EQ(found_when_started_as(support::built_program("editor/quileditor")), 0);
}

TEST(ColorTable, ASecondEditorLeavesTheColormapAsTheFirstMadeIt) {
  const XServer server(8);
  const support::WindowManager manager(server);
  const Connection display = connect(server);
  const Cells untouched = cells(display.get());
  support::Program::Start start;
  start.name = "quileditor";
  Editor first(server, start);
  first.settle();
  const Cells filled = cells(display.get());
  EXPECT_NE(filled, untouched);
  Editor second(server, start);
  second.settle();
  EXPECT_EQ(cells(display.get()), filled);
}

}  // namespace
