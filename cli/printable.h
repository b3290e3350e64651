/// @file
/// Texts from scene files, made fit for a line on a terminal.
#pragma once

#include <string>
#include <string_view>

/// The text with control characters as "\xNN", so that a name can't break a line or steer a terminal.
std::string printable(std::string_view text);
