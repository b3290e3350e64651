/// @file
/// The pictures in message dialogs.
#pragma once

#include <X11/Intrinsic.h>

#include "viewkit/xraii.h"

namespace viewkit {

enum class Symbol { QUESTION, WARNING, INFORMATION };

/// Draws a symbol on the background of `widget`, smoothed where the screen has the colours for it.
PixmapId drawSymbol(Widget widget, Symbol symbol);

}  // namespace viewkit
