/// @file
/// What the library's writer makes of a scene, without a file.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "qilib/opensave.h"

/// The bytes that a save of the scene in that mode writes.
inline std::string written(const Qis& scene, int mode) {
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* stream = open_memstream(&bytes, &size);
  EXPECT_EQ(qiWriteScene(stream, scene, mode), 1);
  std::fclose(stream);
  const std::string result(bytes, size);
  std::free(bytes);
  return result;
}
