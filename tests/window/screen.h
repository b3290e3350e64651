/// @file
/// The screen as somebody who looks at it sees it, whatever the program is busy with.
#pragma once

#include <string>
#include <vector>

#include "tests/support/program.h"

/// Pixels of the screen.
struct Picture {
  int width = 0;
  std::vector<unsigned long> pixels;

  /// Only what lies in the box, or only what doesn't; the rest black.
  Picture within(const support::Box& box) const;
  Picture without(const support::Box& box) const;
  bool operator==(const Picture&) const = default;
};

/// The whole screen.
Picture pictureOf(const std::string& display);

/// The colour of a pixel value, eight bits for each component: 0xRRGGBB.
unsigned shownColor(const std::string& display, unsigned long pixel);

/// Whether a window that shows nothing keeps the input from the one with this title.
bool inputIsKeptFrom(const std::string& display, const std::string& title);
