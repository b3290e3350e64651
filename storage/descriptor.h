/// @file
/// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace storage {

class Descriptor {
 public:
  /// @param fd  from now on this object's; negative: none
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  ~Descriptor() { close(); }
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }

  explicit operator bool() const { return fd_ >= 0; }
  int get() const { return fd_; }
  /// Hands it over to somebody else who closes it.
  int release() { return std::exchange(fd_, -1); }

  /// @returns false when something that was written did not arrive, with the reason in errno.
  bool close() { return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0; }

 private:
  int fd_;
};

}  // namespace storage
