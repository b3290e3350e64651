/// @file
/// The one place that runs shell command lines.
#include "tools/shell.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// Standard input is empty while this lives.
class EmptyInput {
 public:
  EmptyInput() : kept_(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
    const int empty = open("/dev/null", O_RDONLY);
    if (empty <= STDIN_FILENO) return;
    dup2(empty, STDIN_FILENO);
    close(empty);
  }
  ~EmptyInput() {
    if (kept_ < 0) {
      close(STDIN_FILENO);
      return;
    }
    dup2(kept_, STDIN_FILENO);
    close(kept_);
  }
  EmptyInput(const EmptyInput&) = delete;
  EmptyInput& operator=(const EmptyInput&) = delete;

 private:
  const int kept_;  ///< the input as it was; -1: it was closed
};

}  // namespace

int run_shell(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);  // the line stands before what the commands print
  const EmptyInput empty;
  return std::system(line.c_str());
}
