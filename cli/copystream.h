/// @file
/// Copying one stream to another.
#pragma once

#include <cstdio>

/// Copies all that is left to be read. @returns false when it could not be read to its end; whether it was
/// written, the other stream knows.
inline bool copy_stream(std::FILE* from, std::FILE* to) {
  char bytes[1 << 16];
  for (std::size_t count = 1; count != 0;) {
    count = std::fread(bytes, 1, sizeof bytes, from);
    std::fwrite(bytes, 1, count, to);
  }
  return std::ferror(from) == 0;
}
