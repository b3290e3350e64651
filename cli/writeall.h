/// @file
/// Writing to a descriptor.
#pragma once

#include <string_view>

/// Writes all of it, at once if the system can. Throws std::runtime_error when it can't be written,
/// BrokenPipe (lines.h) where nobody reads.
void write_all(int fd, std::string_view bytes);
