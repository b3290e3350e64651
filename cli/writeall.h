/// @file
/// Writing to a descriptor.
#pragma once

#include <string_view>

/// Writes all of it, at once if the system can. Throws std::runtime_error when it can't be written.
void write_all(int fd, std::string_view bytes);
