/// @file
/// Why the library could not do what it was asked for.
#pragma once

#include <string>

#include "qilib/messages.h"

/// Prints what the library has to say, as it always does, and keeps the errors for the status line.
class Reasons {
 public:
  /// Must not outlive this.
  qi::MessageSink sink();
  /// A reason of the editor's own; it is printed too.
  void add(const std::string& reason);

  /// All of them on one line.
  const std::string& line() const { return line_; }

 private:
  void keep(const std::string& text);

  std::string line_;
};
