/// @file
/// The 256-entry colour table that texture pictures are drawn with, and the search for another editor that
/// has already allocated these colours on this display.
#pragma once

#include <X11/Xlib.h>

/// Fills `table` with the X pixel value to draw each 8-bit colour with (3 bits red, 3 bits green, 2 bits
/// blue, red in the high bits). Colours that the default colormap of screen 0 lacks are allocated, unless
/// another editor runs on the display and has done so already. A colour that can't be had takes the pixel
/// value of a neighbouring colour.
void make256table(Display* display, unsigned char table[256]);

/// @returns a neighbour of colour `index` whose `used` entry is exactly 1 (one step in blue, green or red,
/// tried in that order, lower first), or 0 (black) when it has none.
int scanRGB8space(int index, const int used[256]);

/// @returns 1 when a window of the display belongs to another running editor, else 0.
int findQuileditor(Display* display);

/// @returns 1 when the window's WM_COMMAND begins with exactly "quileditor", else 0. An editor that was
/// started through a path is therefore not found.
int print_client_properties(Display* display, Window window);
