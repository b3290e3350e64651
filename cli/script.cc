/// @file
/// The language of edit scripts.
#include "cli/script.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

struct Command {
  std::string_view word;
  Verb verb;
  std::size_t operands;
};
constexpr Command kCommands[] = {
    {"add", Verb::add, 2}, {"delete", Verb::remove, 2}, {"move", Verb::move, 4}, {"name", Verb::name, 2}};

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

}  // namespace

std::optional<ScriptLine> parse_script_line(const std::string& line) {
  std::string_view rest = line;
  const std::string_view first = next_word(rest);
  if (ends_line(first)) return ScriptLine{};
  const Command* const command = std::ranges::find(kCommands, first, &Command::word);
  if (command == std::end(kCommands)) return std::nullopt;
  ScriptLine parsed{.verb = command->verb, .operands = {}};
  if (parsed.verb == Verb::name) {
    const std::string_view node = next_word(rest);
    const std::string_view text = trimmed(rest);
    if (ends_line(node) || text.empty()) return std::nullopt;
    parsed.operands = {std::string{node}, std::string{text}};
    return parsed;
  }
  for (std::string_view word = next_word(rest); !ends_line(word); word = next_word(rest))
    parsed.operands.emplace_back(word);
  if (parsed.operands.size() != command->operands) return std::nullopt;
  return parsed;
}
