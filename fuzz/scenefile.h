/// @file
/// What the fuzz targets share: scene files in memory.
#pragma once

#include <string>
#include <string_view>

#include "qilib/qis.h"

/// A file in memory that has a name.
class MemoryFile {
 public:
  MemoryFile();
  ~MemoryFile();
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  void fill(std::string_view bytes);
  const std::string& name() const { return name_; }

 private:
  int fd_;
  std::string name_;
};

/// Ends the process, which the fuzzer reports, when something does not hold.
void require(bool holds, const char* what);

/// The file that saving a scene makes.
std::string written(const Qis& scene, int mode);
