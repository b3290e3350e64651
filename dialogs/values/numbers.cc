/// @file
/// Numbers in and out of texts.
#include "dialogs/values/numbers.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace values {
namespace {

template <class T>
std::string formatted(const char* format, T number) {
  std::array<char, 32> text;  // room for any word or "%g"
  std::snprintf(text.data(), text.size(), format, number);
  return text.data();
}

}  // namespace

std::string shown(Word word, NumberForm form) { return formatted(form.format, word); }

std::string shown(float number) { return formatted("%g", number); }

Word word_of(const std::string& text, int base) {
  const unsigned long long number = std::strtoull(text.c_str(), nullptr, base);
  constexpr unsigned long long kMax = 0xFFFFFFFF;
  return number <= kMax || -number <= kMax ? static_cast<Word>(number) : Word{kMax};
}

float float_of(const std::string& text) { return static_cast<float>(std::strtod(text.c_str(), nullptr)); }

float text2float1_0(const items::Item& text) {
  const float number = float_of(text.text());
  return number > 1.0f ? 1.0f : number;
}

void colorChanged(const items::Item& group, QisRGBA& color) {
  float* const components[] = {&color.red, &color.green, &color.blue, &color.alpha};
  for (std::size_t i = 0; i < std::size(components); ++i)
    *components[i] = i + 1 < group.size() ? text2float1_0(group.item(i + 1)) : 0.0f;
}

}  // namespace values
