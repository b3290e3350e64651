/// @file
/// What the probe knows of a graph widget in the program it sits in.
#pragma once

#include <X11/Intrinsic.h>

#include "tests/support/probe_words.h"

namespace probe {

/// The nodes, arcs and view of a graph, as answer lines; all places are pixels on the screen:
///
///     view ZOOM X Y WIDTH HEIGHT
///     node NAME LABEL X Y WIDTH HEIGHT FLAGS        FLAGS: "m" managed, "t" selected, "f" folded, "h" not
///     seen arc PARENT CHILD X Y PX PY CX CY FLAGS        a point where it can be clicked, and its handles
///
/// Throws std::invalid_argument when the program has no graph widgets or this widget is none.
std::vector<Words> describeGraph(Widget graph);

}  // namespace probe
