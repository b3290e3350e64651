/// @file
/// Numbers as a dialog shows them, and as it reads what was typed.
///
/// What was typed is never refused: a leading number counts, whatever follows it is ignored, and a text
/// without one is 0.
#pragma once

#include <string>

#include "items/item.h"
#include "qilib/words.h"

namespace values {

/// How a word stands in a text: the printf format that shows it, and the base in which it is read.
struct NumberForm {
  const char* format;
  int base;  ///< 0: decimal, 0x... hexadecimal or 0... octal
};
inline constexpr NumberForm kDecimal{"%d", 0};
inline constexpr NumberForm kHex{"%x", 16};
inline constexpr NumberForm kPrefixedHex{"%#x", 16};

std::string shown(Word word, NumberForm form);
/// As "%g": at most six digits.
std::string shown(float number);

/// Names and options end at a line break: a longer text was pasted.
inline std::string first_line(const std::string& text) { return text.substr(0, text.find_first_of("\r\n")); }

/// A minus sign counts back from 2^32; a number that needs more than 32 bits is 0xFFFFFFFF.
Word word_of(const std::string& text, int base);
float float_of(const std::string& text);

/// A colour component: at most 1. Negative numbers are kept, for colours below black.
float text2float1_0(const items::Item& text);

/// Reads items 1 to 4 of a colour's group (item 0 is its label) into the four components.
void colorChanged(const items::Item& group, QisRGBA& color);

}  // namespace values
