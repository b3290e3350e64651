/// @file
/// Checking and cutting UTF-8.
#include "picture/utf8.h"

#include <algorithm>

namespace picture {

namespace {

bool continues(char byte) { return (static_cast<unsigned char>(byte) & 0xc0) == 0x80; }

/// Bytes of the character at the beginning of the text; 0: it is none.
std::size_t characterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) -> unsigned { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  if (first < 0x80) return first < 0x20 || first == 0x7f ? 0 : 1;
  const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
  if (first < 0xc2 || first > 0xf4 || text.size() < length) return 0;
  if (!std::ranges::all_of(text.substr(1, length - 1), continues)) return 0;
  // Longer than need be, half of a surrogate pair, beyond the last character.
  const unsigned second = byte(1);
  const bool odd = (first == 0xe0 && second < 0xa0) || (first == 0xed && second > 0x9f) ||
                   (first == 0xf0 && second < 0x90) || (first == 0xf4 && second > 0x8f);
  return odd ? 0 : length;
}

}  // namespace

std::string validUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    valid += length == 0 ? "?" : text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return valid;
}

std::string_view beginning(std::string_view text, std::size_t size) {
  size = std::min(size, text.size());
  while (size > 0 && size < text.size() && continues(text[size])) --size;
  return text.substr(0, size);
}

}  // namespace picture
