/// @file
/// The language of edit scripts.
#include "cli/script.h"

#include <algorithm>
#include <string_view>

#include "cli/newelement.h"

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

struct ScriptCommand {
  std::string_view word;
  Verb verb;
  std::size_t operands;  ///< the least, for `set` and `new`
};
constexpr ScriptCommand kCommands[] = {
    {"add", Verb::add, 2}, {"delete", Verb::remove, 2}, {"move", Verb::move, 4},   {"name", Verb::name, 2},
    {"set", Verb::set, 3}, {"new", Verb::create, 1},    {"image", Verb::image, 2}, {"copy", Verb::copy, 1}};

/// Takes the first word off `rest`; empty at the end of the line.
std::string_view next_word(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
  const std::string_view word = rest.substr(0, rest.find_first_of(kBlanks));
  rest.remove_prefix(word.size());
  return word;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool ends_line(std::string_view word) { return word.empty() || word.front() == '#'; }

/// Takes a value in quotation marks off `rest`, which begins with the first one.
std::optional<std::string> quoted_value(std::string_view& rest) {
  std::string value;
  for (std::size_t i = 1; i < rest.size(); ++i) {
    if (rest[i] == '"') {
      rest.remove_prefix(i + 1);
      if (!rest.empty() && kBlanks.find(rest.front()) == kBlanks.npos) return std::nullopt;
      return value;
    }
    if (rest[i] == '\\' && i + 1 < rest.size()) ++i;
    value += rest[i];
  }
  return std::nullopt;
}

/// Takes ITEM=VALUE words off `rest` and appends items and values; false when one of them is neither.
bool take_assignments(std::string_view rest, std::vector<std::string>& operands) {
  while (true) {
    std::string_view ahead = rest;
    const std::string_view word = next_word(ahead);
    if (ends_line(word)) return true;
    const std::size_t equals = word.find('=');
    if (equals == 0 || equals == word.npos) return false;
    operands.emplace_back(word.substr(0, equals));
    if (!word.substr(equals + 1).starts_with('"')) {
      operands.emplace_back(word.substr(equals + 1));
      rest = ahead;
      continue;
    }
    rest.remove_prefix(rest.find('=') + 1);
    const auto value = quoted_value(rest);
    if (!value) return false;
    operands.push_back(*value);
  }
}

}  // namespace

std::optional<ScriptLine> parse_script_line(const std::string& line) {
  std::string_view rest = line;
  const std::string_view first = next_word(rest);
  if (ends_line(first)) return ScriptLine{};
  const ScriptCommand* const command = std::ranges::find(kCommands, first, &ScriptCommand::word);
  if (command == std::end(kCommands)) return std::nullopt;
  ScriptLine parsed{.verb = command->verb, .operands = {}};
  if (parsed.verb == Verb::name || parsed.verb == Verb::image) {
    const std::string_view node = next_word(rest);
    const std::string_view text = trimmed(rest);
    if (ends_line(node) || text.empty()) return std::nullopt;
    parsed.operands = {std::string{node}, std::string{text}};
    return parsed;
  }
  if (parsed.verb == Verb::set) {
    const std::string_view node = next_word(rest);
    if (ends_line(node)) return std::nullopt;
    parsed.operands = {std::string{node}};
    if (!take_assignments(rest, parsed.operands) || parsed.operands.size() < command->operands)
      return std::nullopt;
    return parsed;
  }
  for (std::string_view word = next_word(rest); !ends_line(word); word = next_word(rest))
    parsed.operands.emplace_back(word);
  if (parsed.verb == Verb::remove && parsed.operands.size() == 1) parsed.verb = Verb::discard;
  const bool complete = parsed.verb == Verb::create    ? is_new_element(parsed.operands)
                        : parsed.verb == Verb::discard ? true
                                                       : parsed.operands.size() == command->operands;
  if (!complete) return std::nullopt;
  return parsed;
}
