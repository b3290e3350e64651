/// @file
/// The language of edit scripts: one line taken apart into a command, or refused.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// What a script line asks for.
enum class Verb { nothing, add, remove, move, name };

struct ScriptLine {
  Verb verb = Verb::nothing;
  /// add, remove: parent, child. move: old parent, old child, new parent, new child. name: node, text.
  std::vector<std::string> operands;
};

/// Takes a line apart. White space separates words; a line that is empty or begins with "#" asks for nothing,
/// and so does what follows a word that begins with "#". Only the text of `name` is the rest of the line as
/// it stands, blanks and "#" included.
/// @returns nothing when the line is malformed: an unknown command, or too few or too many words.
std::optional<ScriptLine> parse_script_line(const std::string& line);
