/// @file
/// quilscene: scene files from the command line, without a display.
#include <fcntl.h>
#include <getopt.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string_view>

#include "cli/commands.h"
#include "picture/export.h"
#include "storage/signals.h"

namespace {

/// What stands on the command line beside the options.
enum class Operands { file, files, file_and_nodes, file_and_picture, file_if_any, copy_if_any };

/// A command: what follows its name, the letters of the options that it takes, and its function.
struct Command {
  std::string_view name;
  const char* usage;
  std::string_view options;
  const char* what;
  Outcome (*run)(const Arguments&);
  Operands operands = Operands::file;
};

// Letters without a short form on the command line: m (--mode), s (--script), d (--dot), r (--remove), t
// (--strict), p (--page).
constexpr Command kCommands[] = {
    {"info", "FILE", "", "version, header, lists with their record counts and bytes, names", info},
    {"check", "FILE...", "", "one line for everything that is wrong or odd in each file", check,
     Operands::files},
    {"graph", "[--dot] FILE", "d", "nodes and arcs in their order, or as a Graphviz graph", graph},
    {"show", "FILE NODE...", "", "the items of the nodes' dialogs and their values", show,
     Operands::file_and_nodes},
    {"render", "FILE OUT [--page A4|A3|...]", "p",
     "the graph's picture: OUT ends in .svg, .pdf, .png, .ps, .eps", render, Operands::file_and_picture},
    {"resave", "FILE -o OUT [--mode 1|2] [--strict]", "omt", "open and save", resave},
    {"edit", "FILE -o OUT [--mode 1|2] [--script S]", "oms", "run a script of edits, then save", edit},
    {"options", "[FILE]", "", "the converters' options and what they add to command lines", options,
     Operands::file_if_any},
    {"recover", "[N -o FILE | --remove N]", "or", "the copies of unsaved work; take one out, forget one",
     recover, Operands::copy_if_any},
};

constexpr char kScriptHelp[] =
    "\nA script has a command a line (standard input by default; # begins a comment):\n"
    "  add PARENT CHILD\n"
    "  delete PARENT CHILD\n"
    "  move OLD_PARENT OLD_CHILD NEW_PARENT NEW_CHILD\n"
    "  name NODE TEXT\n"
    "  set NODE ITEM=VALUE ...      items as show names them; \"VALUE\" may hold blanks\n"
    "  new chainroot | joint | effector | weight N\n"
    "  new envelope FULL WEIGHTED MORPH TRIANGLES SHAPE\n"
    "  new cluster CLUSTERS TRIANGLES SHAPE\n"
    "\nExit status: 0 all well, 1 a file or an edit failed, 2 wrong use.\n";

void print_help() {
  std::printf("Usage: quilscene COMMAND ...\n\n");
  for (const Command& command : kCommands)
    std::printf("  %-7s %-38s %s\n", command.name.data(), command.usage, command.what);
  std::printf("  --help, --version\n%s", kScriptHelp);
}

Outcome misuse(const char* problem, std::string_view culprit = {}) {
  std::fprintf(stderr, "quilscene: %s%.*s\n", problem, static_cast<int>(culprit.size()), culprit.data());
  std::fprintf(stderr, "Try: quilscene --help\n");
  return Outcome::wrong_use;
}

/// Reads the number of a copy, if there is one, and runs the command.
Outcome run_on_copy(const Command& command, Arguments& arguments) {
  if (arguments.files.empty())
    return arguments.remove || !arguments.output.empty() ? misuse("which copy?") : command.run(arguments);
  if (arguments.files.size() > 1) return misuse("one copy too many: ", arguments.files[1]);
  const std::string& number = arguments.files.front();
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), arguments.copy);
  if (error != std::errc{} || *end != '\0' || arguments.copy <= 0)
    return misuse("a copy has a number, not ", number);
  if (arguments.remove && !arguments.output.empty()) return misuse("-o and --remove exclude each other");
  if (!arguments.remove && arguments.output.empty()) return misuse("-o FILE is missing");
  return command.run(arguments);
}

/// Checks what the picture is to be, and runs the command.
Outcome run_on_picture(const Command& command, Arguments& arguments) {
  if (arguments.files.size() < 2) return misuse("an OUT is missing");
  if (arguments.files.size() > 2) return misuse("one OUT too many: ", arguments.files[2]);
  arguments.output = arguments.files[1];
  arguments.files.resize(1);
  const auto format = picture::formatOf(arguments.output);
  if (!format)
    return misuse(("the name of a picture ends in " + std::string(picture::kFormatNames) + ": ").c_str(),
                  arguments.output);
  if (arguments.paper && !hasSheets(*format))
    return misuse("only PDF and PostScript have pages: ", arguments.output);
  return command.run(arguments);
}

/// Reads the arguments after the command's name and runs it.
Outcome run_command(const Command& command, int count, char** words) {
  static constexpr option kOptions[] = {{"output", required_argument, nullptr, 'o'},
                                        {"mode", required_argument, nullptr, 'm'},
                                        {"script", required_argument, nullptr, 's'},
                                        {"dot", no_argument, nullptr, 'd'},
                                        {"remove", no_argument, nullptr, 'r'},
                                        {"strict", no_argument, nullptr, 't'},
                                        {"page", required_argument, nullptr, 'p'},
                                        {"help", no_argument, nullptr, 'h'},
                                        {}};
  Arguments arguments;
  opterr = 0;
  for (int letter = 0; (letter = getopt_long(count, words, ":o:h", kOptions, nullptr)) != -1;) {
    const std::string_view word = words[optind - 1];
    if (letter == 'h') {
      print_help();
      return Outcome::well;
    }
    if (letter == ':') return misuse("a value is missing behind ", word);
    if (command.options.find(static_cast<char>(letter)) == std::string_view::npos)
      return misuse("this command has no option ", word);
    if (letter == 'o') arguments.output = optarg;
    if (letter == 's') arguments.script = optarg;
    if (letter == 'd') arguments.dot = true;
    if (letter == 'r') arguments.remove = true;
    if (letter == 't') arguments.strict = true;
    if (letter == 'p' && !(arguments.paper = picture::paperOf(optarg)))
      return misuse("no such page: ", optarg);
    if (letter == 'm') {
      const std::string_view mode = optarg;
      if (mode != "1" && mode != "2") return misuse("the mode is 1 or 2, not ", mode);
      arguments.mode = mode == "1" ? 1 : 2;
    }
  }
  arguments.files.assign(words + optind, words + count);
  if (command.operands == Operands::copy_if_any) return run_on_copy(command, arguments);
  if (command.operands == Operands::file_and_picture && !arguments.files.empty())
    return run_on_picture(command, arguments);
  const bool needs_output = command.options.find('o') != std::string_view::npos;
  if (arguments.files.empty() && command.operands != Operands::file_if_any)
    return misuse("a FILE is missing");
  if (command.operands == Operands::file_and_nodes) {
    arguments.nodes.assign(arguments.files.begin() + 1, arguments.files.end());
    arguments.files.resize(1);
    if (arguments.nodes.empty()) return misuse("a NODE is missing");
  }
  if (arguments.files.size() > 1 && command.operands != Operands::files)
    return misuse("one FILE too many: ", arguments.files[1]);
  if (needs_output && arguments.output.empty()) return misuse("-o OUT is missing");
  return command.run(arguments);
}

Outcome run(int count, char** words) {
  if (count < 2) return misuse("which command?");
  const std::string_view first = words[1];
  if (first == "--help" || first == "-h") {
    print_help();
    return Outcome::well;
  }
  if (first == "--version") {
    std::printf("quilscene %s\n", QUIL_VERSION);
    return Outcome::well;
  }
  const Command* const command = std::ranges::find(kCommands, first, &Command::name);
  if (command == std::end(kCommands)) return misuse("no such command: ", first);
  return run_command(*command, count - 1, words + 1);
}

/// Opens something that fails like a closed file in place of standard descriptors that the caller has closed.
/// Else a scene file could get such a number, and what is printed would be written into it.
void occupy_standard_descriptors() {
  for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (fcntl(fd, F_GETFD) == -1) {
      // Opening takes the lowest free number, which is this one.
      const int taken = open("/dev/null", fd == STDIN_FILENO ? O_WRONLY : O_RDONLY);
      if (taken != fd) _exit(static_cast<int>(Outcome::failed));
    }
}

}  // namespace

int main(int count, char** words) {
  occupy_standard_descriptors();
  std::signal(SIGPIPE, SIG_IGN);  // a reader that went away is a failed write, and a save still completes
  storage::survive_file_size_limit();
  Outcome outcome = Outcome::failed;
  try {
    outcome = run(count, words);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quilscene: %s\n", error.what());
  }
  if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
    std::fprintf(stderr, "quilscene: can't write to standard output\n");
    if (outcome == Outcome::well) outcome = Outcome::failed;
  }
  return static_cast<int>(outcome);
}
