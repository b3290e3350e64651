/// @file
/// Runs the built quilscene in a scratch directory.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/places.h"
#include "tests/support/shared_scenes.h"

inline std::string scene_path(const std::string& name) { return shared_scene(name).path; }

/// Before a command: it gets no more than some 200 MB of address space. (The address sanitizer reserves far
/// more than any program may be limited to.)
inline std::string limit_memory() { return support::programs_are_sanitized() ? "" : "ulimit -v 200000 && "; }

struct Ran {
  int status = -1;  ///< -1: ended by a signal
  std::string out, err;
};

class Quilscene : public testing::Test {
 protected:
  /// Runs `before quilscene arguments after` by the shell, in the scratch directory.
  Ran run(const std::string& arguments, const std::string& after = "", const std::string& before = "") const {
    const std::string line = "cd " + scratch_.path().string() + " && { " + before +
                             support::built_program("cli/quilscene").string() + " " + arguments + " " +
                             after + "; } >stdout 2>stderr </dev/null";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_file(scratch_ / "stdout"),
            read_file(scratch_ / "stderr")};
  }

  void put(const std::string& name, const std::string& text) const { write_file(scratch_ / name, text); }
  std::string written(const std::string& name) const { return read_file(scratch_ / name); }
  bool exists(const std::string& name) const { return std::filesystem::exists(scratch_ / name); }

  /// Runs an edit script on a sample scene, saving as "out.quil".
  Ran edit(const std::string& scene, const std::string& script) const {
    put("script", script);
    return run("edit " + scene_path(scene) + " -o out.quil --script script");
  }

  const ScratchDirectory scratch_;
};

/// The lines of `text` that begin with `first` and a blank, without that.
inline std::vector<std::string> lines_with(const std::string& text, const std::string& first) {
  std::vector<std::string> found;
  std::istringstream lines{text};
  for (std::string line; std::getline(lines, line);)
    if (line.starts_with(first + " ")) found.push_back(line.substr(first.size() + 1));
  return found;
}

/// A whole scene file with one word changed.
inline std::string with_word(std::string file, std::size_t offset, std::uint32_t word) {
  for (std::size_t i = 0; i < 4; ++i) file.at(offset + i) = static_cast<char>(word >> (24 - 8 * i));
  return file;
}
inline std::uint32_t word_at(const std::string& file, std::size_t offset) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < 4; ++i) word = word << 8 | static_cast<unsigned char>(file.at(offset + i));
  return word;
}
