/// @file
/// A stream of our own making over a descriptor.
#include "storage/outputstream.h"

#include <unistd.h>

#include <cerrno>

namespace storage {

int write_all(int fd, const char* bytes, std::size_t count) {
  while (count != 0) {
    const ssize_t written = ::write(fd, bytes, count);
    if (written < 0 && errno != EINTR) return errno;
    if (written <= 0) continue;
    bytes += written;
    count -= static_cast<std::size_t>(written);
  }
  return 0;
}

OutputStream::OutputStream(int fd)
    : fd_(fd),
      file_(fopencookie(this, "wb", {.read = nullptr, .write = &write, .seek = &seek, .close = nullptr})) {}

OutputStream::~OutputStream() {
  if (error_ == 0) error_ = ECANCELED;
}

int OutputStream::flush() {
  if (std::fflush(file_.get()) != 0 && error_ == 0) error_ = errno;
  return error_;
}

ssize_t OutputStream::write(void* self, const char* bytes, std::size_t count) {
  auto& stream = *static_cast<OutputStream*>(self);
  if (stream.error_ == 0) stream.error_ = write_all(stream.fd_, bytes, count);
  errno = stream.error_;
  return stream.error_ == 0 ? static_cast<ssize_t>(count) : 0;
}

int OutputStream::seek(void* self, off64_t* offset, int whence) {
  const off64_t place = lseek64(static_cast<OutputStream*>(self)->fd_, *offset, whence);
  if (place < 0) return -1;
  *offset = place;
  return 0;
}

}  // namespace storage
