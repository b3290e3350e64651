/// @file
/// `quilscene edit`: a script of edits by the rules of the editor's window.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>

#include "cli/commandline.h"
#include "cli/copyrecord.h"
#include "cli/files.h"
#include "cli/jobs.h"
#include "cli/newelement.h"
#include "cli/printable.h"
#include "cli/putimage.h"
#include "cli/scenefile.h"
#include "cli/script.h"
#include "cli/setvalues.h"
#include "editor/model/linkreasons.h"
#include "editor/model/recordnames.h"
#include "editor/model/tracedlinks.h"
#include "qilib/filehandle.h"
#include "qilib/sizes.h"
#include "storage/descriptor.h"

namespace {

/// Why an edit was just refused; the scene is as it was.
std::string why_refused(const Qis& scene, const ScriptLine& line) {
  const auto& operands = line.operands;
  switch (line.verb) {
    case Verb::add:
      return why_not_linked(scene, operands[0], operands[1]);
    case Verb::remove:
      return why_not_deleted(operands[0], operands[1]);
    case Verb::move:
      return why_not_moved(scene, operands[0], operands[1], operands[2], operands[3]);
    case Verb::name:
      return operands[0] + " can't be named";
    case Verb::create:
      return qiQUILver(scene.header) == qi::kVersion2
                 ? "there is no such shape, or the element takes more than 16 MiB"
                 : "scenes of version 1 have no such elements";
    case Verb::copy:
      return why_not_copied(scene, operands[0]);
    case Verb::discard:
      return why_not_deleted(scene, operands[0]);
    default:
      return {};
  }
}

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
    case Verb::image:
      return put_image(scene, operands[0], operands[1]);
    case Verb::copy:
      return copy_node(scene, operands[0]);
    case Verb::discard:
      return delete_node(scene, operands[0]);
    case Verb::nothing:
      break;
  }
  return 0;
}

struct EditRequest {
  FileSet files;
  Target target;
  std::string script;
  bool atomic = false, quiet = false;
};

void declare(CLI::App& line, EditRequest& request) {
  take_files(line, request.files);
  take_target(line, request.target);
  line.add_option("--script", request.script, "The file to read edits from (default: -, standard input)")
      ->type_name("SCRIPT");
  line.add_flag("--atomic", request.atomic, "Write nothing when an edit is refused");
  line.add_flag("--quiet", request.quiet, "Print refusals alone");
  line.footer(kScriptHelp);
}

/// The script, read when it is wanted: after the scene, unless there are many.
class Script {
 public:
  explicit Script(const std::string& file)
      : file_(file.empty() || file == kStandardStream ? "" : file),
        name_(file_.empty() ? "standard input" : file_) {}

  const std::string& name() const { return name_; }
  const std::string& text() const { return text_; }
  /// A script that can't be read to its end might lack any of its edits: none is made. @returns how reading
  /// it went, after a message if not well.
  Outcome read() {
    if (read_) return Outcome::well;
    qi::File opened;
    if (!file_.empty()) opened.reset(std::fopen(file_.c_str(), "r"));
    std::FILE* const stream = file_.empty() ? stdin : opened.get();
    if (!stream) return cant_read(Outcome::failed);
    std::array<char, 4096> piece;
    for (std::size_t n = 0; (n = std::fread(piece.data(), 1, piece.size(), stream)) != 0;)
      text_.append(piece.data(), n);
    if (std::ferror(stream)) return cant_read(Outcome::wrong_use);
    read_ = true;
    return Outcome::well;
  }

 private:
  Outcome cant_read(Outcome outcome) const {
    std::fprintf(stderr, "quilscene: can't read %s: %s, nothing is written\n", printable(name_).c_str(),
                 std::strerror(errno));
    return outcome;
  }

  std::string file_, name_, text_;
  bool read_ = false;
};

/// Runs a whole script. A refused edit fails it, but the rest still runs. A malformed line ends it, and so
/// does a value that can't be set.
Changed run_script(Qis& scene, const Script& script, bool atomic) {
  Outcome outcome = Outcome::well;
  std::istringstream lines{script.text()};
  std::size_t number = 0;
  const auto complain = [&](const std::string& text) {
    std::fprintf(stderr, "quilscene: %s:%zu: %s\n", printable(script.name()).c_str(), number, text.c_str());
  };
  for (std::string text; std::getline(lines, text);) {
    ++number;
    const auto line = parse_script_line(text);
    if (!line) {
      complain("malformed line, nothing is written");
      return {Outcome::wrong_use, false};
    }
    if (line->verb == Verb::nothing) continue;
    try {
      const std::int64_t result = run(scene, *line);
      std::printf("-> %" PRId64 "\n", result);
      if (result != 0) continue;
      outcome = Outcome::failed;
      const std::string reason = why_refused(scene, *line);
      complain(reason.empty() ? "refused" : printable(reason));
    } catch (const ValueError& error) {
      complain(error.what() + std::string(", nothing is written"));
      return {Outcome::failed, false};
    }
  }
  const bool save = !atomic || outcome == Outcome::well;
  if (!save) std::fprintf(stderr, "quilscene: an edit was refused, nothing is written\n");
  return {outcome, save};
}

/// Sends what is printed nowhere.
void print_nothing() {
  std::fflush(stdout);
  const storage::Descriptor nowhere{open("/dev/null", O_WRONLY | O_CLOEXEC)};
  if (nowhere) dup2(nowhere.get(), STDOUT_FILENO);
}

Outcome run(const EditRequest& request) {
  const auto files = files_of(request.files);
  require_target(request.target, files);
  Script script{request.script};
  if (script.name() == "standard input" && std::ranges::find(files, kStandardStream) != files.end())
    throw WrongUse("standard input can't be both FILE and SCRIPT");
  if (request.quiet) print_nothing();
  if (files.size() > 1)
    if (const Outcome outcome = script.read(); outcome != Outcome::well) return outcome;
  return for_each_file(
      files, request.files.jobs,
      [&](const std::string& file) -> Done {
        return {rewrite(file, request.target,
                        [&](Qis& scene) -> Changed {
                          const Outcome outcome = script.read();
                          if (outcome != Outcome::well) return {outcome, false};
                          return run_script(scene, script, request.atomic);
                        }),
                {}};
      },
      {}, Headings::yes);
}

}  // namespace

Work edit(CLI::App& line) { return work<EditRequest>(line, declare, run); }
