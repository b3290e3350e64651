/// @file
/// Lines on standard output that stay whole: two programs may write to one file or pipe.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

/// Whoever reads standard output wants no more.
struct BrokenPipe : std::runtime_error {
  BrokenPipe() : std::runtime_error("nobody reads standard output any more") {}
};

/// Keeps lines until there are as many as can be written at once. Beside it, nothing may be printed.
class Lines {
 public:
  Lines() = default;
  Lines(const Lines&) = delete;
  Lines& operator=(const Lines&) = delete;

  /// A line without its end, or several with line breaks between them.
  void add(std::string_view text);
  /// Text that ends with a line, or does not matter.
  void add_all(std::string_view text);
  /// Writes what is kept. Throws std::runtime_error when it can't be written, BrokenPipe where nobody reads.
  void flush();

 private:
  std::string kept_;
};
