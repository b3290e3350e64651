/// @file
/// The lines that the probe and the tests exchange: words separated by tabs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace probe {

using Words = std::vector<std::string>;

/// The words as one line without its newline; tab, newline and backslash within a word become \t, \n and \\.
inline std::string joined(const Words& words) {
  std::string line;
  for (const std::string& word : words) {
    if (&word != &words.front()) line += '\t';
    for (const char c : word) {
      switch (c) {
        case '\t':
          line += "\\t";
          break;
        case '\n':
          line += "\\n";
          break;
        case '\\':
          line += "\\\\";
          break;
        default:
          line += c;
      }
    }
  }
  return line;
}

/// The words of a line made by joined().
inline Words split(std::string_view line) {
  Words words(1);
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '\t') {
      words.emplace_back();
    } else if (line[i] == '\\' && i + 1 < line.size()) {
      const char c = line[++i];
      words.back() += c == 't' ? '\t' : c == 'n' ? '\n' : c;
    } else {
      words.back() += line[i];
    }
  }
  return words;
}

}  // namespace probe
