/// @file
/// Which file stands under a name, and in which state.
#pragma once

#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace storage {

/// A file as it was when it was looked at: equal ones are the same file with the same contents, as far as the
/// system can tell without reading it.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  std::int64_t size = 0;      ///< bytes
  std::int64_t modified = 0;  ///< when its contents last changed, in nanoseconds
  std::int64_t changed = 0;   ///< when anything of it last changed, its mode and its names included

  bool operator==(const FileIdentity&) const = default;

  /// The same but for its mode, its owner, or how many names it has.
  bool same_contents(const FileIdentity& other) const;
};

/// @returns nothing, with the reason in errno, when there is no such file.
std::optional<FileIdentity> identity_of(const std::string& path);
std::optional<FileIdentity> identity_of(int fd);

/// A file as it was when it was last read or written.
class SeenFile {
 public:
  SeenFile() = default;
  /// @param path  of the file, which need not exist; it is looked at now
  explicit SeenFile(const std::string& path) : path_(path), seen_(identity_of(path)) {}
  /// The same, but what was written after that time counts as not seen.
  SeenFile(const std::string& path, std::chrono::system_clock::time_point time);

  /// Whether a save would overwrite something that nobody has seen: the file has other contents now, or is
  /// another one.
  bool changed() const;

 private:
  std::string path_;
  std::optional<FileIdentity> seen_;
};

}  // namespace storage
