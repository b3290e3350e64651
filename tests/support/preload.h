/// @file
/// Libraries that are loaded before a program under test.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What LD_PRELOAD must be. The path of the build may hold blanks, which the variable can't carry: the
/// libraries get links in `directory`.
inline std::string preload_variable(const std::filesystem::path& directory,
                                    const std::vector<std::filesystem::path>& libraries) {
  std::string list;
  for (const auto& library : libraries) {
    const auto link = directory / library.filename();
    if (!is_symlink(link)) create_symlink(library, link);
    list += (list.empty() ? "" : ":") + link.string();
  }
  return list;
}
