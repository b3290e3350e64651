/// @file
/// The commands of quilscene: a row of a table each. What follows a command's name on the command line, its
/// function declares; adding one takes a file with that function, and its row.
#pragma once

#include <functional>
#include <span>
#include <string_view>

namespace CLI {
class App;
}

/// What the program exits with.
enum class Outcome {
  well = 0,
  failed = 1,     ///< a file could not be read, checked or written, an edit was refused, or scenes differ
  wrong_use = 2,  ///< arguments or a script line that make no sense
  unreadable = 3  ///< `check`, `diff`: a file is not there, or could not be read
};

/// Carries out a command by what was read from the command line. Writes the results to standard output, and
/// throws WrongUse (commandline.h) when they make no sense together.
using Work = std::function<Outcome()>;

struct Command {
  std::string_view name;
  const char* what;
  /// Declares operands and options.
  Work (*declare)(CLI::App& line);
};

/// All of them, in the order of the help.
std::span<const Command> commands();

Work info(CLI::App& line);
Work check(CLI::App& line);
Work graph(CLI::App& line);
Work show(CLI::App& line);
Work tree(CLI::App& line);
Work dump(CLI::App& line);
Work diff(CLI::App& line);
Work render(CLI::App& line);
Work texture(CLI::App& line);
Work prune(CLI::App& line);
Work dedup(CLI::App& line);
Work resave(CLI::App& line);
Work edit(CLI::App& line);
Work options(CLI::App& line);
Work recover(CLI::App& line);
Work completion(CLI::App& line);
Work help(CLI::App& line);
