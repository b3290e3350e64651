/// @file
/// quilscene: scene files from the command line, without a display.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "cli/commandline.h"
#include "cli/lines.h"
#include "storage/signals.h"

namespace {

std::string named(const CLI::Option& option) {
  if (!option.nonpositional()) return option.get_name(true);
  return option.get_name(false, false) + " " + option.get_type_name();
}

/// What a command line lacks, or has too much of.
std::string what_is_missing(const CLI::App& line) {
  const auto missing = line.get_options(
      [](const CLI::Option* option) { return option->get_required() && option->count() == 0; });
  if (missing.empty()) return "something is missing";
  const std::string name = named(*missing.front());
  if (name.front() == '-') return name + " is missing";
  return (std::string("AEIOU").find(name.front()) == std::string::npos ? "a " : "an ") + name + " is missing";
}
std::string what_is_too_much(const CLI::App& line) {
  const std::string extra = line.remaining().front();
  if (extra.starts_with('-')) return "this command has no option " + extra;
  const auto operands = line.get_options([](const CLI::Option* option) { return !option->nonpositional(); });
  return "one " + (operands.empty() ? "word" : named(*operands.back())) + " too many: " + extra;
}

Outcome misuse(const std::string& problem, const std::string& help = "--help") {
  std::fprintf(stderr, "quilscene: %s\nTry: quilscene %s\n", problem.c_str(), help.c_str());
  return Outcome::wrong_use;
}

/// Reads the words after the command's name and carries it out.
Outcome run_command(const Command& command, std::vector<std::string> words) {
  const auto line = command_line(command);
  const std::string help = "help " + std::string{command.name};
  try {
    const Work work = command.declare(*line);
    std::ranges::reverse(words);  // as the parser wants them
    line->parse(std::move(words));
    return work();
  } catch (const CLI::CallForHelp&) {
    print_help(command);
    return Outcome::well;
  } catch (const CLI::RequiredError&) {
    return misuse(what_is_missing(*line), help);
  } catch (const CLI::ExtrasError&) {
    return misuse(what_is_too_much(*line), help);
  } catch (const CLI::ParseError& error) {
    return misuse(error.what(), help);
  } catch (const WrongUse& error) {
    return misuse(error.what(), help);
  }
}

Outcome run(const std::vector<std::string>& words) {
  if (words.empty()) return misuse("which command?");
  const std::string& first = words.front();
  if (first == "--help" || first == "-h") {
    print_help();
    return Outcome::well;
  }
  if (first == "--version") {
    std::printf("quilscene %s\n", QUIL_VERSION);
    return Outcome::well;
  }
  try {
    return run_command(command_named(first), {words.begin() + 1, words.end()});
  } catch (const WrongUse& error) {
    return misuse(error.what());
  }
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
    outcome = run({words + 1, words + std::max(count, 1)});
  } catch (const BrokenPipe&) {
    return static_cast<int>(Outcome::failed);  // as when `head` has seen enough: nobody wants to be told
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quilscene: %s\n", error.what());
  }
  if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
    std::fprintf(stderr, "quilscene: can't write to standard output\n");
    if (outcome == Outcome::well) outcome = Outcome::failed;
  }
  return static_cast<int>(outcome);
}
