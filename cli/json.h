/// @file
/// Results as JSON (docs/quilscene.schema.json): an object, and a line, for each file.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "cli/commands.h"
#include "cli/lines.h"
#include "cli/printable.h"

/// With its members in the order in which they were made.
using Json = nlohmann::ordered_json;

/// The beginning of what a command tells of a file.
inline Json json_result(const char* command, const std::string& file) {
  return {{"command", command}, {"file", escaped(file)}};
}

/// What a command tells of a file that it can't open.
inline Json json_failure(const char* command, const std::string& file, const std::string& error) {
  Json result = json_result(command, file);
  result["error"] = escaped(error);
  return result;
}

/// @returns how it went: failed when the result is a failure.
inline Outcome print_json(const Json& result) {
  Lines lines;
  lines.add(result.dump());
  lines.flush();
  return result.contains("error") ? Outcome::failed : Outcome::well;
}
