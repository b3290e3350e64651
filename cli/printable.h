/// @file
/// Texts from scene files, made fit for a line on a terminal.
#pragma once

#include <string>
#include <string_view>

/// The text with control characters as "\xNN", so that a name can't break a line or steer a terminal. Those
/// of 0x80 to 0x9f are control characters unless they are part of a character in UTF-8.
std::string printable(std::string_view text);

/// The text as UTF-8 that tells its bytes: a byte that is no part of a character in UTF-8 is "\xNN", and a
/// backslash is doubled.
std::string escaped(std::string_view text);
