/// @file
/// A stdio stream that closes itself.
#pragma once

#include <cstdio>
#include <memory>

namespace qi {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
/// For reading: who writes asks `fclose` itself whether all has arrived.
using File = std::unique_ptr<std::FILE, CloseFile>;

}  // namespace qi
