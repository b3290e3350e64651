/// @file
/// Where the items of a preference dialog stand.
#pragma once

#include <X11/Intrinsic.h>

#include "viewkit/vkprefgroup.h"

namespace viewkit {

struct PrefSize {
  int width, height;  // pixels
};

/// Pixels that are kept free around the items.
inline constexpr int kPrefMargin = 12;
/// Pixels between two rows, and between a label and its field.
inline constexpr int kPrefRowGap = 5, kPrefLabelGap = 8;

/// The size that a widget would like to have; zero for none.
PrefSize naturalSize(Widget widget);

/// Places and manages the widgets of all items in `top`, whose base widget is to take the size that is
/// returned. Labels of groups stand in a column at the left, the labels and the fields of rows in two columns
/// beside it; the rows of groups that look alike share the columns of what follows. Labels without text and
/// groups without items take no room.
PrefSize placeItems(const VkPrefGroup& top);

}  // namespace viewkit
