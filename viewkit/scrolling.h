/// @file
/// Areas that scroll when they are smaller than what they hold.
#pragma once

#include <X11/Intrinsic.h>

namespace viewkit {

/// The name of a scroll bar that moves, by rows, what it and its siblings show: the wheel moves it, and the
/// area around only when it is at its end.
inline constexpr char kRowsBar[] = "rowsScrollBar";

/// Makes an area, unmanaged, that shows its one child through a view with scroll bars where they are needed.
/// The wheel scrolls it wherever the pointer is in it, sideways with Shift or where that is the only way, and
/// a widget that gets the focus comes into view.
Widget createScrolledArea(Widget parent, const char* name);

/// Makes the area's view so large that it shows a child of that size without scroll bars, but no larger than
/// the limits. All in pixels.
void fitScrolledArea(Widget area, int width, int height, int maxWidth, int maxHeight);

}  // namespace viewkit
