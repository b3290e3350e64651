/// @file
/// Write without a name, flush, put in place.
#include "storage/replacefile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "storage/inplace.h"

namespace fs = std::filesystem;
using storage::Descriptor;

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

/// Opens for writing what is there. A pipe that nobody reads is refused instead of waited for.
Descriptor open_existing(const fs::path& path) {
  return Descriptor(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
}

}  // namespace

ReplacingFile::ReplacingFile(const std::string& target) : path_(target) {
  struct stat held {};
  // By its own name: what lies behind /dev/stdout has none that could be followed to.
  const bool special = stat(target.c_str(), &held) == 0 && !S_ISREG(held.st_mode);
  if (special) {
    open_special();
  } else if (find_target()) {
    open_beside();
  }
}

std::FILE* ReplacingFile::stream() const {
  if (error_) return nullptr;
  return safe_copy_ ? safe_copy_->writer.stream() : stream_ ? stream_->get() : nullptr;
}

WriteError ReplacingFile::error() const {
  if (error_) return error_;
  if (safe_copy_) return safe_copy_->writer.error();
  return {stream_ ? stream_->error() : 0, WriteStep::write, path_.string()};
}

bool ReplacingFile::open_special() {
  special_ = open_existing(path_);
  if (!special_) return fail(WriteStep::open, errno);
  fcntl(special_.get(), F_SETFL, O_WRONLY);  // from here on a full pipe is waited for
  return open_stream(special_.get());
}

/// A read-only file is not to be replaced either.
bool ReplacingFile::find_target() {
  path_ = behind_links(path_);
  held_ = open_existing(path_);
  if (!held_ && (errno != ENOENT || !path_.has_filename())) return fail(WriteStep::open, errno);
  const fs::path folder = path_.has_parent_path() ? path_.parent_path() : ".";
  folder_ = Descriptor(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  return folder_ || fail(WriteStep::open, errno);
}

bool ReplacingFile::open_beside() {
  struct stat held {};
  if (held_ && fstat(held_.get(), &held) != 0) return fail(WriteStep::open, errno);
  if (held_ && held.st_nlink > 1) return open_safe_copy();
  storage::remove_leftovers(folder_.get());
  beside_.emplace(folder_.get(), 0600);
  int error = beside_->error();
  if (held_ && storage::is_refusal(error)) return open_safe_copy();
  if (!held_ && error == 0) {
    const storage::NewFile sample(folder_.get(), 0666);  // what the user and the folder give to a new file
    error = sample.error() ? sample.error() : attributes_.read(sample.fd());
  }
  return error == 0 ? open_stream(beside_->fd()) : fail(WriteStep::create, error);
}

bool ReplacingFile::open_stream(int fd) {
  stream_.emplace(fd);
  return stream_->get() || fail(WriteStep::open, errno);
}

bool ReplacingFile::open_safe_copy() {
  std::error_code no_such_path;
  safe_copy_.emplace(fs::canonical(path_, no_such_path));
  return safe_copy_->writer.stream() || fail(safe_copy_->writer.error());
}

bool ReplacingFile::commit() {
  if (!stream()) return false;
  const bool done = finish();
  stream_.reset();
  beside_.reset();
  safe_copy_.reset();
  return done;
}

bool ReplacingFile::finish() {
  if (safe_copy_) return write_in_place();
  if (const int error = stream_->flush()) return fail(WriteStep::write, error);
  if (special_) return special_.close() || fail(WriteStep::write, errno);
  return replace();
}

bool ReplacingFile::replace() {
  if (const int error = held_ ? attributes_.read(held_.get()) : 0) return fail(WriteStep::keep, error);
  WriteStep step = WriteStep::keep;
  int error = attributes_.give(beside_->fd());
  if (error == 0) {
    if (fsync(beside_->fd()) != 0) return fail(WriteStep::flush, errno);
    step = WriteStep::replace;
    error = beside_->put(path_.filename(), static_cast<bool>(held_));
  }
  if (error == 0) return flush_folder();
  if (!held_ || !storage::is_refusal(error)) return fail(step, error);
  return copy_beside() && write_in_place();
}

bool ReplacingFile::flush_folder() {
  const Descriptor folder(openat(folder_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  // Not every folder can be opened, and not every file system can do this.
  if (!folder ? errno == EACCES : fsync(folder.get()) == 0 || storage::is_refusal(errno)) return true;
  return fail(WriteStep::flush_folder, errno);
}

bool ReplacingFile::copy_beside() {
  if (!open_safe_copy()) return false;
  struct stat status {};
  int error = fstat(beside_->fd(), &status) == 0 ? 0 : errno;
  if (error == 0) error = storage::copy_bytes(beside_->fd(), safe_copy_->writer.fd(), 0, status.st_size);
  return error == 0 || fail(WriteStep::copy, error);
}

bool ReplacingFile::write_in_place() {
  auto& [session, writer] = *safe_copy_;
  if (!writer.commit()) {
    session.remove();
    return fail(writer.error());
  }
  bool damaged = false;
  const Descriptor file = open_existing(path_);  // anew: another one may have the name by now
  const int error = file ? storage::rewrite(writer.fd(), file.get(), damaged) : errno;
  if (!damaged) session.remove();
  return error == 0 || fail({error, WriteStep::rewrite, path_.string(), damaged ? session.number() : 0});
}

bool ReplacingFile::fail(WriteError error) {
  if (!error_) error_ = std::move(error);
  return false;
}
