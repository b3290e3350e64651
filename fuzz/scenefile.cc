/// @file
/// Scene files in memory.
#include "fuzz/scenefile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "qilib/opensave.h"

MemoryFile::MemoryFile()
    : fd_(memfd_create("scene", MFD_CLOEXEC)), name_("/proc/self/fd/" + std::to_string(fd_)) {
  if (fd_ < 0) std::abort();
}

MemoryFile::~MemoryFile() { close(fd_); }

void MemoryFile::fill(std::string_view bytes) {
  if (ftruncate(fd_, 0) != 0 ||
      pwrite(fd_, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
    std::abort();
}

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "not so: %s\n", what);
  std::abort();
}

std::string written(const Qis& scene, int mode) {
  char* bytes = nullptr;
  std::size_t size = 0;
  std::FILE* stream = open_memstream(&bytes, &size);
  require(qiWriteScene(stream, scene, mode) == 1, "what was opened can be saved");
  std::fclose(stream);
  const std::string result(bytes, size);
  std::free(bytes);
  return result;
}
