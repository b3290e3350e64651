/// @file
/// `quilscene edit`: a script of edits by the rules of the editor's window.
#include <array>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <string>

#include "cli/commandline.h"
#include "cli/newelement.h"
#include "cli/scenefile.h"
#include "cli/script.h"
#include "cli/setvalues.h"
#include "editor/model/linkreasons.h"
#include "editor/model/recordnames.h"
#include "editor/model/tracedlinks.h"
#include "qilib/filehandle.h"
#include "storage/fileidentity.h"

namespace {

/// Runs one edit on the scene; 0 when it was refused, else 1 or, for `new`, the new count. Throws
/// ValueError.
std::int64_t run(Qis& scene, const ScriptLine& line) {
  const auto& operands = line.operands;
  switch (line.verb) {
    case Verb::add:
      return quilAddLink(scene, operands[0], operands[1]);
    case Verb::remove:
      return quilDeleteLink(scene, operands[0], operands[1]);
    case Verb::move:
      return quilModifyLink(scene, operands[0], operands[1], operands[2], operands[3]);
    case Verb::name:
      return name_node(scene, operands[0], operands[1]);
    case Verb::set:
      return set_values(scene, operands);
    case Verb::create:
      return new_element(scene, operands);
    case Verb::nothing:
      break;
  }
  return 0;
}

/// Why a link edit was just refused; empty for other edits, which have told it themselves.
std::string why_refused(const Qis& scene, const ScriptLine& line) {
  const auto& operands = line.operands;
  switch (line.verb) {
    case Verb::add:
      return why_not_linked(scene, operands[0], operands[1]);
    case Verb::remove:
      return why_not_deleted(operands[0], operands[1]);
    case Verb::move:
      return why_not_moved(scene, operands[0], operands[1], operands[2], operands[3]);
    default:
      return {};
  }
}

/// How a script went, and whether all of it was run: an incomplete one is not saved.
struct ScriptRun {
  Outcome outcome;
  bool complete;
};

/// Runs a whole script. A refused edit fails it, but the rest still runs. A malformed line ends it, and so
/// does a value that can't be set.
ScriptRun run_script(Qis& scene, std::istream& script, const char* script_name) {
  Outcome outcome = Outcome::well;
  std::string text;
  for (std::size_t number = 1; std::getline(script, text); ++number) {
    const auto line = parse_script_line(text);
    if (!line) {
      std::fprintf(stderr, "quilscene: %s:%zu: malformed line, nothing is written\n", script_name, number);
      return {Outcome::wrong_use, false};
    }
    if (line->verb == Verb::nothing) continue;
    try {
      const std::int64_t result = run(scene, *line);
      std::printf("-> %" PRId64 "\n", result);
      if (result != 0) continue;
      outcome = Outcome::failed;
      if (const std::string reason = why_refused(scene, *line); !reason.empty())
        std::fprintf(stderr, "quilscene: %s:%zu: %s\n", script_name, number, reason.c_str());
    } catch (const ValueError& error) {
      std::fprintf(stderr, "quilscene: %s:%zu: %s, nothing is written\n", script_name, number, error.what());
      return {Outcome::failed, false};
    }
  }
  return {outcome, true};
}

ScriptRun cant_read(const char* script_name, Outcome outcome) {
  std::fprintf(stderr, "quilscene: can't read %s: %s, nothing is written\n", script_name,
               std::strerror(errno));
  return {outcome, false};
}

struct Request {
  std::string file, output, script;
  int mode = 2;
};

void declare(CLI::App& line, Request& request) {
  take_file(line, request.file);
  take_output(line, request.output, "The file to write; may be the one that is read")->required();
  take_mode(line, request.mode);
  line.add_option("--script", request.script, "The file to read edits from (default: standard input)")
      ->type_name("SCRIPT");
  line.footer(kScriptHelp);
}

/// A script that can't be read to its end might lack any of its edits: none is made.
ScriptRun run_script_of(Qis& scene, const Request& request) {
  const bool from_file = !request.script.empty();
  const char* const name = from_file ? request.script.c_str() : "standard input";
  qi::File opened;
  if (from_file) opened.reset(std::fopen(name, "r"));
  std::FILE* const file = from_file ? opened.get() : stdin;
  if (!file) return cant_read(name, Outcome::failed);
  std::string text;
  std::array<char, 4096> piece;
  for (std::size_t n = 0; (n = std::fread(piece.data(), 1, piece.size(), file)) != 0;)
    text.append(piece.data(), n);
  if (std::ferror(file)) return cant_read(name, Outcome::wrong_use);
  std::istringstream script{text};
  return run_script(scene, script, name);
}

bool is_same_file(const std::string& one, const std::string& other) {
  std::error_code none;
  return std::filesystem::equivalent(one, other, none);
}

Outcome run(const Request& request) {
  Qis scene;
  const bool overwrites = is_same_file(request.file, request.output);
  const storage::SeenFile seen(request.file);
  if (!open_scene(request.file, scene)) return Outcome::failed;
  const ScriptRun script = run_script_of(scene, request);
  if (!script.complete) return script.outcome;
  if (overwrites && seen.changed()) {
    std::fprintf(stderr, "quilscene: %s changed on disk since it was opened, nothing is written\n",
                 request.file.c_str());
    return Outcome::failed;
  }
  return save_scene(scene, request.output, request.mode) ? script.outcome : Outcome::failed;
}

}  // namespace

Work edit(CLI::App& line) { return work(line, declare, run); }
