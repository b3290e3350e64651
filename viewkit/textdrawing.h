/// @file
/// What the toolkit keeps of the windows that it draws smoothed text in.
#pragma once

#include <X11/Intrinsic.h>

namespace viewkit {

/// To be called before a tree of widgets is destroyed by a program that makes such trees again and again.
///
/// For every window with smoothed text, the toolkit keeps a record for ever and searches all of them each
/// time it draws; without this, a program becomes slower with every dialog that it has shown. Does nothing
/// with a toolkit that has no such records.
void releaseTextDrawing(Widget top);

}  // namespace viewkit
