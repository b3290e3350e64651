/// @file
/// Child processes that never outlive the test that made them.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/wait.h"

namespace support {

/// A file descriptor that is closed at the end.
class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  ~Descriptor();
  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(Descriptor&& other) noexcept;

  int get() const { return fd_; }

 private:
  int fd_;
};

/// One running program in a process group of its own. It is ended with this object, and the kernel ends it
/// when the test dies.
class Process {
 public:
  struct Start {
    std::vector<std::string>
        command;                      ///< the program (searched in PATH when it has no "/") and its arguments
    std::string name;                 ///< what the program is told it was started as; empty: as in `command`
    std::filesystem::path directory;  ///< working directory; empty: the caller's
    std::map<std::string, std::string> environment;  ///< set on top of the caller's; an empty value unsets
    std::filesystem::path output, errors;  ///< where its standard output and error go; empty: nowhere
    int kept_fd = -1;                      ///< a descriptor that the program inherits under its number
    int end_signal = SIGKILL;              ///< what ends it
  };

  /// Starts the program. Throws std::runtime_error when it can't be run.
  explicit Process(const Start& start);
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  pid_t id() const { return pid_; }
  bool running();

  /// Waits until the program ends by itself. @returns its exit code, 128 + N when signal N ended it, nothing
  /// when it still runs after `limit`.
  std::optional<int> waitForExit(std::chrono::milliseconds limit = kPatience);

  /// Sends a signal to the program alone.
  void signal(int number);

  /// Ends the program and what it started, and waits until it is gone. Done already: nothing happens.
  void end();

 private:
  pid_t pid_ = -1;
  int end_signal_;
  std::optional<int> status_;
};

}  // namespace support
