/// @file
/// How applications look and which keys their menus answer to: the fallback X resources.
#pragma once

#include <X11/Xlib.h>

#include <string>
#include <vector>

namespace viewkit {

/// Whether text on the display's default visual can be smoothed: TrueColor of depth 15 or more.
bool hasSmoothText(Display* display);

/// The resource lines for a display with or without smoothed text. Anything the user sets, in X resources or
/// an application defaults file, wins over them.
std::vector<std::string> fallbackResources(bool smoothText);

}  // namespace viewkit
