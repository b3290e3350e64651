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
    std::string_view rest = word;
    for (std::size_t end; (end = rest.find_first_of("\t\n\\")) != rest.npos; rest.remove_prefix(end + 1)) {
      line += rest.substr(0, end);
      line += rest[end] == '\t' ? "\\t" : rest[end] == '\n' ? "\\n" : "\\\\";
    }
    line += rest;
  }
  return line;
}

/// The words of a line made by joined().
inline Words split(std::string_view line) {
  Words words;
  for (bool more = true; more;) {
    const std::size_t end = line.find('\t');
    more = end != line.npos;
    std::string_view rest = line.substr(0, end);
    line.remove_prefix(more ? end + 1 : line.size());
    std::string& word = words.emplace_back();
    for (std::size_t slash; (slash = rest.find('\\')) < rest.size() - 1; rest.remove_prefix(slash + 2)) {
      word += rest.substr(0, slash);
      const char c = rest[slash + 1];
      word += c == 't' ? '\t' : c == 'n' ? '\n' : c;
    }
    word += rest;
  }
  return words;
}

}  // namespace probe
