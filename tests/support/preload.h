/// @file
/// Libraries that are loaded before a program under test.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/places.h"

/// What LD_PRELOAD must be. The path of the build may hold blanks, which the variable can't carry: the
/// libraries get links in `directory`. @param libraries  below the build: "tests/support/probe.so"
inline std::string preload_variable(const std::filesystem::path& directory,
                                    const std::vector<std::string_view>& libraries) {
  std::string list;
  for (const std::string_view name : libraries) {
    const std::filesystem::path library = support::preloaded_library(name);
    const auto link = directory / library.filename();
    if (!is_symlink(link)) create_symlink(library, link);
    list += (list.empty() ? "" : ":") + link.string();
  }
  return list;
}
