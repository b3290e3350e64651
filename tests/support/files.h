/// @file
/// Whole files as bytes, and a directory that a test or a measurement may fill.
#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

/// @throws std::runtime_error when the file can't be read.
inline std::string read_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("can't read " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

/// @throws std::runtime_error when the file can't be written.
inline void write_file(const std::filesystem::path& path, const std::string& bytes) {
  std::filesystem::remove(path);  // a file that is cut and filled again waits for the disk
  std::ofstream file(path, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error("can't write " + path.string());
}

/// Whether the file system of a directory has files without a name.
inline bool has_nameless_files(const std::filesystem::path& directory) {
  const int file = open(directory.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
  if (file >= 0) close(file);
  return file >= 0;
}

/// A new empty directory that goes away, with all that is in it, at the end.
class ScratchDirectory {
 public:
  /// @param where  it is made in
  explicit ScratchDirectory(const std::filesystem::path& where = std::filesystem::temp_directory_path()) {
    std::string name = (where / "quil-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::filesystem::filesystem_error("mkdtemp", {});
    path_ = name;
  }
  ~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};
