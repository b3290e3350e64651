/// @file
/// Texts from scene files, made fit for a line on a terminal.
#include "cli/printable.h"

#include <algorithm>
#include <cstdio>

namespace {

std::string code_of(char c) {
  char escape[5];
  std::snprintf(escape, sizeof escape, "\\x%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
  return escape;
}

/// How many bytes the character at the beginning takes in UTF-8; 0: there is none.
std::size_t utf8_length(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  if (first < 0x80) return 1;
  const std::size_t length = first >= 0xC2 && first < 0xE0   ? 2
                             : first >= 0xE0 && first < 0xF0 ? 3
                             : first >= 0xF0 && first < 0xF5 ? 4
                                                             : 0;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xC0) != 0x80) return 0;
  const bool too_long = (first == 0xE0 && byte(1) < 0xA0) || (first == 0xF0 && byte(1) < 0x90);
  const bool no_character = (first == 0xED && byte(1) >= 0xA0) || (first == 0xF4 && byte(1) >= 0x90);
  return too_long || no_character ? 0 : length;
}

/// Puts together what each character, or byte that is none, becomes.
template <class Shown>
std::string by_characters(std::string_view text, Shown shown) {
  std::string result;
  while (!text.empty()) {
    const std::size_t length = utf8_length(text);
    const std::string_view piece = text.substr(0, std::max<std::size_t>(length, 1));
    shown(result, piece, length != 0);
    text.remove_prefix(piece.size());
  }
  return result;
}

}  // namespace

std::string printable(std::string_view text) {
  return by_characters(text, [](std::string& result, std::string_view piece, bool /*is_character*/) {
    const auto code = static_cast<unsigned char>(piece.front());
    const auto second = static_cast<unsigned char>(piece.back());
    const bool one = piece.size() == 1 && (code < 0x20 || code == 0x7f || (code >= 0x80 && code < 0xA0));
    const bool two = code == 0xC2 && piece.size() == 2 && second < 0xA0;
    if (!one && !two) {
      result += piece;
      return;
    }
    for (const char c : piece) result += code_of(c);
  });
}

std::string escaped(std::string_view text) {
  return by_characters(text, [](std::string& result, std::string_view piece, bool is_character) {
    if (!is_character) {
      result += code_of(piece.front());
    } else {
      result += piece == "\\" ? "\\\\" : piece;
    }
  });
}
