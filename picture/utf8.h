/// @file
/// Text as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace picture {

/// The text with a question mark for each byte that is no UTF-8, and for zero bytes and control characters.
std::string validUtf8(std::string_view text);

/// The longest beginning of at most `size` bytes that cuts no character in two.
std::string_view beginning(std::string_view text, std::size_t size);

}  // namespace picture
