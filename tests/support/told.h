/// @file
/// What the library tells a sink, kept for a test.
#pragma once

#include <string>
#include <vector>

#include "qilib/messages.h"

struct Told {
  std::vector<qi::Message> messages;

  qi::MessageSink sink() {
    return [this](const qi::Message& message) { messages.push_back(message); };
  }
  /// All of them in words, a line or two each, as they are printed.
  std::string words() const { return lines(qi::text_of); }
  /// The further lines, which say why or where.
  std::string reasons() const { return lines(qi::reason_of); }

 private:
  std::string lines(std::string (*text)(const qi::Message&)) const {
    std::string all;
    for (const qi::Message& message : messages)
      if (const std::string line = text(message); !line.empty()) all += line + "\n";
    return all;
  }
};

/// The sink of those who don't care.
inline void ignore_message(const qi::Message& /*message*/) {}
