/// @file
/// What the probe knows of the widgets of the program it sits in.
#pragma once

#include <X11/Intrinsic.h>

#include <span>
#include <string>
#include <vector>

#include "tests/support/probe_words.h"

namespace probe {

/// The widgets and gadgets that a widget holds; none where it can hold none.
std::span<const Widget> children(Widget parent);

/// Every widget and gadget of the application, parents before children, as answer lines. Window-less objects
/// of our own (a graph's nodes) are left out, and with a name all that have another one.
std::vector<Words> describeWidgets(XtAppContext app, const std::string& name);

/// The widget that an ID of a former answer stands for, or null when it is gone.
Widget findWidget(XtAppContext app, const std::string& id);

/// A resource of a widget as a number, or as text when it is a string. Throws std::invalid_argument when the
/// widget has no such resource.
std::string resourceValue(Widget widget, const std::string& name);

}  // namespace probe
