/// @file
/// Writing a file in place.
#include "storage/inplace.h"

#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <thread>
#include <vector>

namespace storage {
namespace {

/// Keeps others off who would write the file in place, until it is closed; not on every file system.
/// @returns 0, or an errno when somebody else has it for too long
int keep_others_off(int file) {
  using namespace std::chrono_literals;
  const auto patience = std::chrono::steady_clock::now() + 10s;
  while (flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    if (std::chrono::steady_clock::now() > patience) return EBUSY;
    std::this_thread::sleep_for(10ms);
  }
  return 0;
}

}  // namespace

int copy_bytes(int from, int to, off_t begin, off_t end) {
  std::vector<char> room(std::size_t{1} << 18);
  while (begin < end) {
    const auto most = std::min(room.size(), static_cast<std::size_t>(end - begin));
    const ssize_t got = pread(from, room.data(), most, begin);
    if (got == 0) return EIO;  // somebody cut it
    const ssize_t put = got < 0 ? got : pwrite(to, room.data(), static_cast<std::size_t>(got), begin);
    if (put < 0 && errno != EINTR) return errno;
    begin += std::max<ssize_t>(put, 0);
  }
  return 0;
}

int rewrite(int from, int to, bool& damaged) {
  struct stat fresh {
  }, old{};
  if (const int error = keep_others_off(to)) return error;
  if (fstat(from, &fresh) != 0 || fstat(to, &old) != 0) return errno;
  rlimit limit{};
  if (getrlimit(RLIMIT_FSIZE, &limit) == 0 && static_cast<rlim_t>(fresh.st_size) > limit.rlim_cur)
    return EFBIG;
  // What makes the file longer comes first: there may be no room for it.
  if (fresh.st_size > old.st_size) {
    int error = copy_bytes(from, to, old.st_size, fresh.st_size);
    if (error == 0 && fsync(to) != 0) error = errno;
    if (error != 0) {
      damaged = ftruncate(to, old.st_size) != 0;
      return error;
    }
  }
  damaged = true;
  if (const int error = copy_bytes(from, to, 0, std::min(old.st_size, fresh.st_size))) return error;
  if (ftruncate(to, fresh.st_size) != 0 || fsync(to) != 0) return errno;
  damaged = false;
  return 0;
}

}  // namespace storage
