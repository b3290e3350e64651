/// @file
/// Write beside, flush, rename over.
#include "storage/replacefile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace fs = std::filesystem;

namespace {

/// The path behind a chain of symbolic links, whether or not it exists.
fs::path behind_links(fs::path path) {
  constexpr int kMostLinks = 40;  // as the kernel: a loop of links ends here and fails to open
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
    const fs::path next = fs::read_symlink(path, error);
    if (error) break;
    path = path.parent_path() / next;
  }
  return path;
}

/// A new file in the directory, or -1. Its name is short, so that it fits wherever the target's does.
int open_beside(const fs::path& directory, fs::path& path) {
  for (int i = 0; i < 1000; ++i) {
    path = directory / (".quil-" + std::to_string(getpid()) + "-" + std::to_string(i) + ".tmp");
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd >= 0 || errno != EEXIST) return fd;
  }
  return -1;
}

/// Opens a device or a pipe; a pipe that nobody reads is refused instead of waited for.
std::FILE* open_special(const fs::path& path) {
  const int fd = open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return nullptr;
  fcntl(fd, F_SETFL, O_WRONLY);  // from here on a full pipe is waited for
  std::FILE* file = fdopen(fd, "wb");
  if (!file) close(fd);
  return file;
}

/// Whether the file could be written in place: a read-only file is not to be replaced either.
bool is_writable(const fs::path& path) {
  const int fd = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (fd < 0) return false;
  close(fd);
  return true;
}

}  // namespace

ReplacingFile::ReplacingFile(const std::string& target) {
  struct stat held {};
  // By its own name: what lies behind /dev/stdout has none that could be followed to.
  if (stat(target.c_str(), &held) == 0 && !S_ISREG(held.st_mode)) {
    file_.reset(open_special(target));
    return;
  }
  target_ = behind_links(target);
  std::error_code ignored;
  if (fs::is_symlink(target_, ignored)) return;  // a loop of links
  const bool exists = stat(target_.c_str(), &held) == 0;
  if (!exists && (errno != ENOENT || !target_.has_filename())) return;  // there can be no such file
  if (exists && !is_writable(target_)) return;
  const int fd = open_beside(target_.parent_path(), temporary_);
  if (fd < 0) {
    temporary_.clear();
    return;
  }
  // Only the mode matters to a save: an owner that can't be kept is the new writer.
  if (exists) static_cast<void>(fchmod(fd, held.st_mode & 07777) == 0);
  file_.reset(fdopen(fd, "wb"));
  if (!file_) close(fd);
}

ReplacingFile::~ReplacingFile() {
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

bool ReplacingFile::commit() {
  if (!file_) return false;
  const bool direct = temporary_.empty();
  bool complete = std::fflush(file_.get()) == 0 && !std::ferror(file_.get());
  if (!direct) complete = complete && fsync(fileno(file_.get())) == 0;
  complete = std::fclose(file_.release()) == 0 && complete;
  if (direct || !complete) return complete;
  if (std::rename(temporary_.c_str(), target_.c_str()) != 0) return false;
  temporary_.clear();
  return true;
}
