/// @file
/// The language of edit scripts: one line taken apart into a command, or refused.
#pragma once

#include <optional>
#include <string>
#include <vector>

/// What a script line asks for.
enum class Verb { nothing, add, remove, move, name, set, create, image, copy, discard };

struct ScriptLine {
  Verb verb = Verb::nothing;
  /// add, remove: parent, child. move: old parent, old child, new parent, new child. name: node, text.
  /// set: node, then for each item its path and its value. create: element, then its numbers. image: node,
  /// file. copy, discard: node.
  std::vector<std::string> operands;
};

/// Takes a line apart. White space separates words; a line that is empty or begins with "#" asks for nothing,
/// and so does what follows a word that begins with "#". Only the text of `name` and the file of
/// `image` are the rest of the line as it stands, blanks and "#" included. A value of `set` may stand in
/// quotation marks; in them a backslash takes the character after it as it is.
/// @returns nothing when the line is malformed: an unknown command or element, too few or too many words,
///          or an item without "=" or closing mark.
std::optional<ScriptLine> parse_script_line(const std::string& line);
