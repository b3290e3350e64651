/// @file
/// What may enter a text field.
#pragma once

#include <X11/Intrinsic.h>

#include <string>
#include <string_view>

namespace viewkit {

/// The text without the control characters of the user's language. Bytes that mean nothing in it are kept.
std::string withoutControls(std::string_view text);

/// From now on no control characters enter the text field by keys and pastes: a key that the field knows
/// nothing of, such as Ctrl+S, would write one. The field doesn't ring the bell for what it refuses.
void keepControlsOut(Widget field);

}  // namespace viewkit
