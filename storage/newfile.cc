/// @file
/// Files without a name, and temporary ones where there are none.
#include "storage/newfile.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <string_view>

namespace storage {
namespace {

constexpr std::string_view kBegin = ".quil-", kEnd = ".tmp";

/// Short, so that it fits wherever another name does.
std::string temporary_name(int attempt) {
  return std::string(kBegin) + std::to_string(getpid()) + "-" + std::to_string(attempt) + std::string(kEnd);
}

/// Calls `make` with one name after the other while it returns EEXIST. @returns 0, or an errno; if that is
/// EEXIST, no name.
template <class Make>
int with_free_name(std::string& name, Make make) {
  constexpr int kMostAttempts = 1000;
  int error = EEXIST;
  for (int i = 0; i < kMostAttempts && error == EEXIST; ++i) {
    name = temporary_name(i);
    error = make();
  }
  if (error == EEXIST) name.clear();
  return error;
}

/// Makes calls of the system, and nothing else, in a process of its own, so that whoever kills this one
/// doesn't come between them.
/// @returns what they return: 0, or an errno.
template <class Calls>
int in_helper(Calls calls) {
  sigset_t all, before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);  // signals are this process's to handle
  volatile int error = EINTR;
  const pid_t helper = vfork();  // shares the memory, and this process waits
  if (helper == 0) {
    setpgid(0, 0);  // nor whoever kills the group
    error = calls();
    _exit(0);
  }
  if (helper < 0) {
    error = calls();
  } else {
    waitpid(helper, nullptr, 0);
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return error;
}

/// Says that a living process writes this file; the lock ends with the process. Without locks, leftovers
/// stay.
bool lock(int fd) { return flock(fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK; }

}  // namespace

NewFile::NewFile(int folder, mode_t mode)
    : folder_(folder),
      fd_(openat(folder, ".", O_TMPFILE | O_RDWR | O_CLOEXEC, mode)),
      nameless_("/proc/self/fd/" + std::to_string(fd())) {
  if (fd_ && access(nameless_.c_str(), F_OK) == 0) {
    lock(fd());
  } else {
    open_temporary(mode);
  }
}

NewFile::~NewFile() { unlink_temporary(); }

void NewFile::open_temporary(mode_t mode) {
  error_ = with_free_name(temporary_, [&] {
    fd_ = Descriptor(openat(folder_, temporary_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!fd_) return errno;
    // Somebody who clears leftovers away may be faster than the lock.
    struct stat status {};
    return lock(fd()) && fstat(fd(), &status) == 0 && status.st_nlink != 0 ? 0 : EEXIST;
  });
  if (error_ != 0) temporary_.clear();
}

void NewFile::unlink_temporary() {
  if (!temporary_.empty()) unlinkat(folder_, temporary_.c_str(), 0);
  temporary_.clear();
}

int NewFile::link_as(const std::string& name) noexcept {
  return linkat(AT_FDCWD, nameless_.c_str(), folder_, name.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}

int NewFile::rename_to(const std::string& name) noexcept {
  return renameat(folder_, temporary_.c_str(), folder_, name.c_str()) == 0 ? 0 : errno;
}

int NewFile::put(const std::string& name, bool taken) {
  int error = 0;
  if (!temporary_.empty()) {
    error = rename_to(name);
  } else if (error = taken ? EEXIST : link_as(name); error == EEXIST) {
    error = with_free_name(temporary_, [&] {
      return in_helper([&]() noexcept {
        const int failed = link_as(temporary_);
        return failed ? failed : rename_to(name);
      });
    });
  }
  if (error != 0) unlink_temporary();
  temporary_.clear();
  return error;
}

void remove_leftovers(int folder) {
  Descriptor listed(openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!listed) return;
  struct Close {
    void operator()(DIR* directory) const { closedir(directory); }
  };
  const std::unique_ptr<DIR, Close> directory(fdopendir(listed.get()));
  if (!directory) return;
  listed.release();
  while (const dirent* entry = readdir(directory.get())) {
    const std::string_view name = entry->d_name;
    if (!name.starts_with(kBegin) || !name.ends_with(kEnd)) continue;
    const Descriptor file(openat(folder, entry->d_name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (file && fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode) && status.st_nlink == 1 &&
        flock(file.get(), LOCK_EX | LOCK_NB) == 0)
      unlinkat(folder, entry->d_name, 0);
  }
}

}  // namespace storage
