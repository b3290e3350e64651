/// @file
/// Opening files.
#include "qilib/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace qi {

File open_regular(const std::string& path) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);  // doesn't wait for a pipe's writer
  struct stat status {};
  File file;
  if (fd < 0) return file;
  if (fstat(fd, &status) == 0) {
    if (S_ISREG(status.st_mode))
      file.reset(fdopen(fd, "rb"));
    else
      errno = S_ISDIR(status.st_mode) ? EISDIR : 0;
  }
  if (!file) {
    const int reason = errno;
    close(fd);
    errno = reason;
  }
  return file;
}

File open_to_read(const std::string& path, const MessageSink& sink) {
  File file = open_regular(path);
  if (!file)
    sink({.code = MessageCode::no_input,
          .what = errno == 0 ? "not a regular file" : "",
          .found = static_cast<unsigned>(errno)});
  return file;
}

std::unique_ptr<ReplacingFile> open_to_write(const std::string& path, const MessageSink& sink) {
  auto file = std::make_unique<ReplacingFile>(path);
  if (!file->stream()) {
    sink({.code = MessageCode::no_output, .write_error = file->error()});
    file.reset();
  }
  return file;
}

std::uint64_t position(std::FILE* file) {
  return static_cast<std::uint64_t>(std::max<off_t>(ftello(file), 0));
}

std::uint64_t bytes_left(std::FILE* file) {
  struct stat status {};
  const off_t here = ftello(file);
  if (here < 0 || fstat(fileno(file), &status) != 0 || status.st_size <= here) return 0;
  return static_cast<std::uint64_t>(status.st_size - here);
}

}  // namespace qi

qi::File qiQbReadOpen(const std::string& filename) { return qi::open_to_read(filename, qi::print_message); }

std::unique_ptr<ReplacingFile> qiQbWriteOpen(const std::string& filename) {
  return qi::open_to_write(filename, qi::print_message);
}
