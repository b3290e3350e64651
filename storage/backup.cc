/// @file
/// Copying a file beside itself.
#include "storage/backup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "storage/attributes.h"
#include "storage/descriptor.h"
#include "storage/inplace.h"
#include "storage/newfile.h"

namespace fs = std::filesystem;

namespace storage {
namespace {

int copy_beside(const Descriptor& original, off_t size, const fs::path& backup) {
  const Descriptor folder(open(backup.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder) return errno;
  NewFile copy(folder.get(), 0600);
  if (copy.error() != 0) return copy.error();
  Attributes attributes;
  int error = attributes.read(original.get());
  if (error == 0) error = copy_bytes(original.get(), copy.fd(), 0, size);
  if (error == 0) error = attributes.give(copy.fd());
  if (is_refusal(error)) error = 0;  // it stays this user's alone
  if (error == 0 && fsync(copy.fd()) != 0) error = errno;
  constexpr bool kMayBeTaken = true;
  if (error == 0) error = copy.put(backup.filename(), kMayBeTaken);
  if (error == 0 && fsync(folder.get()) != 0 && !is_refusal(errno)) error = errno;
  return error;
}

}  // namespace

WriteError keep_backup(const std::string& path) {
  std::error_code error;
  const fs::path original = fs::canonical(path, error);
  if (error == std::errc::no_such_file_or_directory) return {};
  if (error) return {error.value(), WriteStep::backup, path};
  struct stat status {};
  const Descriptor file(open(original.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file || fstat(file.get(), &status) != 0) return {errno, WriteStep::backup, original};
  if (!S_ISREG(status.st_mode)) return {};
  return {copy_beside(file, status.st_size, original.string() + "~"), WriteStep::backup, original};
}

}  // namespace storage
