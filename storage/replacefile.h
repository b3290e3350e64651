/// @file
/// A file that takes the place of another only when it is complete, so that a failed save loses nothing.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

/// Writes to a temporary file in the target's directory and renames it over the target on `commit`.
/// The target keeps its permissions; a symbolic link stays and what it points at is replaced. A target that
/// is no regular file (a device, a pipe) can't be replaced and is written directly.
class ReplacingFile {
 public:
  /// Opens for writing. On failure (the target or its directory is not writable) `stream` is null.
  explicit ReplacingFile(const std::string& target);
  /// Gives up what was not committed; the target is as it was.
  ~ReplacingFile();
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  /// Where to write; owned by this object, and null once committed.
  std::FILE* stream() const { return file_.get(); }

  /// Flushes everything to the disk, closes, and puts the file in the target's place.
  /// @returns false, with the target as it was, when this or any write before it failed.
  bool commit();

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::filesystem::path target_;
  std::filesystem::path temporary_;  ///< empty: written directly, or nothing to remove
  std::unique_ptr<std::FILE, Close> file_;
};
