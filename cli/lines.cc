/// @file
/// Writing whole lines.
#include "cli/lines.h"

#include <limits.h>
#include <unistd.h>

#include <cerrno>

#include "cli/writeall.h"

void write_all(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(fd, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno == EPIPE) {
      throw BrokenPipe();
    } else if (errno != EINTR) {
      throw std::runtime_error("can't write to standard output");
    }
  }
}

void Lines::add(std::string_view text) {
  // What goes to a pipe in one piece is not torn apart up to this length.
  if (kept_.size() + text.size() + 1 > PIPE_BUF) flush();
  kept_ += text;
  kept_ += '\n';
  if (kept_.size() > PIPE_BUF) flush();
}

void Lines::add_all(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    add(text.substr(0, end));
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
}

void Lines::flush() {
  write_all(STDOUT_FILENO, kept_);
  kept_.clear();
}
