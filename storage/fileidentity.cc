/// @file
/// Asking the system which file it is.
#include "storage/fileidentity.h"

namespace storage {
namespace {

std::int64_t nanoseconds(const timespec& time) {
  constexpr std::int64_t kSecond = 1'000'000'000;
  return std::int64_t{time.tv_sec} * kSecond + time.tv_nsec;
}

FileIdentity identity(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
          nanoseconds(status.st_ctim)};
}

}  // namespace

bool FileIdentity::same_contents(const FileIdentity& other) const {
  FileIdentity same = other;
  same.changed = changed;
  return *this == same;
}

std::optional<FileIdentity> identity_of(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return identity(status);
}

std::optional<FileIdentity> identity_of(int fd) {
  struct stat status {};
  if (fstat(fd, &status) != 0) return std::nullopt;
  return identity(status);
}

SeenFile::SeenFile(const std::string& path, std::chrono::system_clock::time_point time) : SeenFile(path) {
  if (seen_ && std::chrono::nanoseconds(seen_->modified) > time.time_since_epoch()) seen_.reset();
}

bool SeenFile::changed() const {
  const auto now = identity_of(path_);
  return now && !(seen_ && now->same_contents(*seen_));
}

}  // namespace storage
