/// @file
/// `quilscene help`.
#include <string>

#include "cli/commandline.h"

namespace {

struct HelpRequest {
  std::string command;
};

void declare(CLI::App& line, HelpRequest& request) {
  line.add_option("COMMAND", request.command, "The command to explain")->type_name("");
}

Outcome run(const HelpRequest& request) {
  if (request.command.empty()) {
    print_help();
  } else {
    print_help(command_named(request.command));
  }
  return Outcome::well;
}

}  // namespace

Work help(CLI::App& line) { return work<HelpRequest>(line, declare, run); }
