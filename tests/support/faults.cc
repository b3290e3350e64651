/// @file
/// Stands before the system calls that writing files takes.
#include "tests/support/faults.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>

namespace support {
namespace {

struct Counted {
  Fault fault;
  int calls = 0;
  bool happened = false;
};

std::vector<Counted> read_environment() {
  std::vector<Counted> faults;
  const char* variable = std::getenv("QUIL_FAULTS");
  std::istringstream words(variable ? variable : "");
  for (std::string word; words >> word;) {
    Counted& each = faults.emplace_back();
    std::istringstream parts(word);
    std::string number, what;
    std::getline(parts, each.fault.call, ':');
    std::getline(parts, number, ':');
    std::getline(parts, what);
    each.fault.at = std::atoi(number.c_str());
    each.fault.error = std::atoi(what.c_str());
    each.fault.lasting = what.ends_with('+');
  }
  return faults;
}

/// Calls are made until the very end of the process, so this is never destroyed.
std::vector<Counted>& armed() {
  static auto* const faults = std::make_unique<std::vector<Counted>>(read_environment()).release();
  return *faults;
}

/// The process that has the faults.
pid_t victim = getpid();

void tell() {
  if (const char* path = std::getenv("QUIL_FAULTS_HAPPENED"))
    syscall(SYS_close, syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT, 0600));
}

bool are_armed() {
  static const char* const path = std::getenv("QUIL_FAULTS_ARMED");
  return !path || syscall(SYS_access, path, F_OK) == 0;
}

/// Counts a call. @returns whether it is to fail, with errno set.
bool fails(const char* call, bool counts = true) {
  bool failed = false;
  if (!counts || armed().empty() || !are_armed()) return false;
  for (Counted& each : armed()) {
    const Fault& fault = each.fault;
    if (!fault.call.empty() && fault.call != call) continue;
    ++each.calls;
    if (each.calls != fault.at && !(fault.lasting && each.calls > fault.at)) continue;
    each.happened = true;
    tell();
    if (fault.error == 0) {
      kill(victim, SIGKILL);  // a helper of the process may be at work, which goes on
    } else {
      errno = fault.error;
      failed = true;
    }
  }
  return failed;
}

/// Whether a descriptor is of a file that is written, or of a folder.
bool is_of_interest(int fd) {
  struct stat status {};
  if (fstat(fd, &status) != 0) return false;
  return S_ISDIR(status.st_mode) || (S_ISREG(status.st_mode) && (fcntl(fd, F_GETFL) & O_ACCMODE) != O_RDONLY);
}

bool open_fails(const char* path, int flags) {
  for (const char* system : {"/dev/", "/proc/", "/sys/", "/usr/", "/etc/", "/lib"})
    if (std::strncmp(path, system, std::strlen(system)) == 0) return false;
  if ((flags & O_TMPFILE) == O_TMPFILE) {
    const bool failed = fails("tmpfile");
    return failed || fails("open");
  }
  return fails("open", (flags & O_ACCMODE) != O_RDONLY || (flags & O_DIRECTORY) != 0);
}

/// The call that this library stands before.
template <class Call>
Call* next(const char* name) {
  return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name));  // NOLINT: dlsym has no other type
}

}  // namespace

Faults::Faults(std::vector<Fault> faults) {
  victim = getpid();
  armed().clear();
  for (Fault& fault : faults) armed().push_back({std::move(fault)});
}

Faults::~Faults() { armed().clear(); }

bool Faults::happened() const { return armed().back().happened; }

}  // namespace support

using support::fails;
using support::is_of_interest;
using support::next;

#pragma GCC visibility push(default)
extern "C" {

int open(const char* path, int flags, ...) {
  static const auto real = next<int(const char*, int, ...)>("open");
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return support::open_fails(path, flags) ? -1 : real(path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...) {
  static const auto real = next<int(int, const char*, int, ...)>("openat");
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
  va_end(rest);
  return support::open_fails(path, flags) ? -1 : real(folder, path, flags, mode);
}

ssize_t write(int fd, const void* bytes, size_t count) {
  static const auto real = next<ssize_t(int, const void*, size_t)>("write");
  return fails("write", is_of_interest(fd)) ? -1 : real(fd, bytes, count);
}

ssize_t pwrite(int fd, const void* bytes, size_t count, off_t offset) {
  static const auto real = next<ssize_t(int, const void*, size_t, off_t)>("pwrite");
  return fails("write", is_of_interest(fd)) ? -1 : real(fd, bytes, count, offset);
}

int ftruncate(int fd, off_t size) noexcept {
  static const auto real = next<int(int, off_t)>("ftruncate");
  return fails("truncate") ? -1 : real(fd, size);
}

int fsync(int fd) {
  static const auto real = next<int(int)>("fsync");
  return fails("fsync") ? -1 : real(fd);
}

int close(int fd) {
  static const auto real = next<int(int)>("close");
  const bool failed = fails("close", is_of_interest(fd));
  const int error = errno, result = real(fd);
  if (!failed) return result;
  errno = error;
  return -1;
}

int renameat(int from_folder, const char* from, int to_folder, const char* to) noexcept {
  static const auto real = next<int(int, const char*, int, const char*)>("renameat");
  return fails("rename") ? -1 : real(from_folder, from, to_folder, to);
}

int linkat(int from_folder, const char* from, int to_folder, const char* to, int flags) noexcept {
  static const auto real = next<int(int, const char*, int, const char*, int)>("linkat");
  return fails("link") ? -1 : real(from_folder, from, to_folder, to, flags);
}

int fchmod(int fd, mode_t mode) noexcept {
  static const auto real = next<int(int, mode_t)>("fchmod");
  return fails("chmod") ? -1 : real(fd, mode);
}

int fchown(int fd, uid_t owner, gid_t group) noexcept {
  static const auto real = next<int(int, uid_t, gid_t)>("fchown");
  return fails("chown") ? -1 : real(fd, owner, group);
}

int fsetxattr(int fd, const char* name, const void* value, size_t size, int flags) noexcept {
  static const auto real = next<int(int, const char*, const void*, size_t, int)>("fsetxattr");
  return fails("setxattr") ? -1 : real(fd, name, value, size, flags);
}

}  // extern "C"
#pragma GCC visibility pop
