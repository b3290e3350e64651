/// @file
/// Opening files.
#include "qilib/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qi {

std::uint64_t bytes_left(std::FILE* file) {
  struct stat status {};
  const off_t here = ftello(file);
  if (here < 0 || fstat(fileno(file), &status) != 0 || status.st_size <= here) return 0;
  return static_cast<std::uint64_t>(status.st_size - here);
}

}  // namespace qi

qi::File qiQbReadOpen(const std::string& filename) {
  // Without O_NONBLOCK a pipe that nobody writes to would hold the program for good.
  const int fd = open(filename.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat status {};
  qi::File file;
  if (fd >= 0 && fstat(fd, &status) == 0 && S_ISREG(status.st_mode)) file.reset(fdopen(fd, "rb"));
  if (!file) {
    if (fd >= 0) close(fd);
    std::fprintf(stderr, "Input File Open Error\n");
  }
  return file;
}

std::unique_ptr<ReplacingFile> qiQbWriteOpen(const std::string& filename) {
  auto file = std::make_unique<ReplacingFile>(filename);
  if (!file->stream()) {
    std::fprintf(stderr, "Output File Open Error\n");
    file.reset();
  }
  return file;
}
