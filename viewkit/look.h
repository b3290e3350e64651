/// @file
/// How applications look, as far as the framework decides it: the fallback X resources.
#pragma once

#include <X11/Xlib.h>

#include <string>
#include <vector>

namespace viewkit {

/// Whether text on the display's default visual can be smoothed: TrueColor of depth 15 or more.
bool hasSmoothText(Display* display);

/// Gives X resource lines for a display with or without smoothed text.
using ResourceLines = std::vector<std::string> (*)(bool smoothText);

/// The framework's own lines, and after them, so that they win, those of the application, if it has
/// any. Anything the user sets, in X resources or an application defaults file, wins over all of them.
std::vector<std::string> fallbackResources(bool smoothText, ResourceLines application = nullptr);

}  // namespace viewkit
