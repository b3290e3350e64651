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
  std::string words() const {
    std::string all;
    for (const qi::Message& message : messages) all += text_of(message) + "\n";
    return all;
  }
};

/// The sink of those who don't care.
inline void ignore_message(const qi::Message& /*message*/) {}
