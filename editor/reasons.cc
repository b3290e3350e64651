/// @file
/// Keeping the library's errors.
#include "editor/reasons.h"

#include <cstdio>

namespace {

const std::string kBetween = "  |  ";  // the status line leaves out what comes after it if need be

}  // namespace

qi::MessageSink Reasons::sink() {
  return [this](const qi::Message& message) {
    qi::print_message(message);
    if (qi::severity_of(message.code) == qi::Severity::error) keep(qi::text_of(message));
  };
}

void Reasons::add(const std::string& reason) {
  std::fprintf(stderr, "%s\n", reason.c_str());
  keep(reason);
}

void Reasons::keep(const std::string& text) {
  if (!line_.empty()) line_ += kBetween;
  for (const char c : text) line_ += c == '\n' ? kBetween : std::string(1, c);
}
