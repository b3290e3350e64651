/// @file
/// Standard error turned aside and back.
#include "cli/capturederrors.h"

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>

CapturedErrors::CapturedErrors() : file_(fdopen(memfd_create("messages", MFD_CLOEXEC), "w+")) {
  if (file_) standard_error_ = dup(STDERR_FILENO);
  if (standard_error_ < 0) throw std::runtime_error("no file descriptor left");
  dup2(fileno(file_.get()), STDERR_FILENO);
}

CapturedErrors::~CapturedErrors() {
  std::fflush(stderr);
  dup2(standard_error_, STDERR_FILENO);
  close(standard_error_);
}

std::vector<std::string> CapturedErrors::lines() {
  std::fflush(stderr);
  std::rewind(file_.get());
  std::vector<std::string> found;
  std::string line;
  for (int c = std::getc(file_.get()); c != EOF; c = std::getc(file_.get())) {
    if (c != '\n') {
      line += static_cast<char>(c);
    } else {
      found.push_back(std::move(line));
      line.clear();
    }
  }
  if (!line.empty()) found.push_back(std::move(line));
  return found;
}
