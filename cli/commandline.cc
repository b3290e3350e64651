/// @file
/// What the commands' lines have in common, and their help.
#include "cli/commandline.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <cctype>
#include <cstdio>

const char kScriptHelp[] =
    "\nA script has a command a line (standard input by default; # begins a comment):\n"
    "  add PARENT CHILD\n"
    "  delete PARENT CHILD\n"
    "  move OLD_PARENT OLD_CHILD NEW_PARENT NEW_CHILD\n"
    "  name NODE TEXT\n"
    "  set NODE ITEM=VALUE ...      items as show names them; \"VALUE\" may hold blanks\n"
    "  copy NODE                    of a material, texture, image, palette or animation\n"
    "  delete NODE                  of the same kinds, when nothing refers to it\n"
    "  image TEXTURE PICTURE        the texels of a PNG of the same size\n"
    "  new chainroot | joint | effector | weight N\n"
    "  new envelope FULL WEIGHTED MORPH TRIANGLES SHAPE\n"
    "  new cluster CLUSTERS TRIANGLES SHAPE\n";

namespace {

/// Help that begins with operands and options that have to be there.
class HelpFormat : public CLI::Formatter {
  std::string make_usage(const CLI::App* line, std::string name) const override {
    std::string usage = "Usage: " + name;
    for (const CLI::Option* operand : line->get_options())
      if (operand->get_positional()) usage += " " + make_option_usage(operand);
    for (const CLI::Option* option : line->get_options())
      if (option->nonpositional() && option->get_required())
        usage += " " + option->get_name() + " " + option->get_type_name();
    return usage + " [OPTIONS]\n";
  }
  std::string make_option_opts(const CLI::Option* option) const override {
    return option->get_type_name().empty() ? "" : " " + option->get_type_name();
  }
};

}  // namespace

std::unique_ptr<CLI::App> command_line(const Command& command) {
  std::string what = command.what;
  what.front() = static_cast<char>(std::toupper(what.front()));
  auto line = std::make_unique<CLI::App>(what + ".", "quilscene " + std::string{command.name});
  line->formatter(std::make_shared<HelpFormat>());
  line->option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  line->option_defaults()->disable_flag_override();
  line->set_help_flag("-h,--help", "Print this help");
  line->get_formatter()->label("Positionals", "Operands");
  return line;
}

const Command& command_named(const std::string& name) {
  const auto found = std::ranges::find(commands(), name, &Command::name);
  if (found == commands().end()) throw WrongUse("no such command: " + name);
  return *found;
}

void print_help() {
  std::printf("Usage: quilscene COMMAND ...\n\n");
  for (const Command& command : commands()) std::printf("  %-10s  %s\n", command.name.data(), command.what);
  std::printf("  --help, --version\n\nquilscene help COMMAND tells what the command takes.\n%s", kScriptHelp);
  std::printf("\nExit status: 0 all well, 1 a file or an edit failed, 2 wrong use.\n");
}

void print_help(const Command& command) {
  const auto line = command_line(command);
  command.declare(*line);
  std::fputs(line->help().c_str(), stdout);
}

void take_file(CLI::App& line, std::string& file) {
  line.add_option("FILE", file, "The scene")->required()->type_name("");
}

CLI::Option* take_output(CLI::App& line, std::string& output, const std::string& what) {
  const auto named = [](const std::string& name) { return name.empty() ? "it has no name" : ""; };
  return line.add_option("-o,--output", output, what)->check(named)->type_name("OUT");
}

void take_json(CLI::App& line, bool& json) {
  line.add_flag("--json", json, "An object in JSON, on a line, for each file");
}

std::string no_whole_number(const std::string& word) {
  return word.empty() || word.find_first_not_of("0123456789") != word.npos ? word + " is no whole number"
                                                                           : "";
}

void take_mode(CLI::App& line, int& mode) {
  line.add_option_function<std::string>(
          "--mode",
          [&mode](const std::string& word) {
            if (word != "1" && word != "2") throw WrongUse("the mode is 1 or 2, not " + word);
            mode = word == "1" ? 1 : 2;
          },
          "The writer's: 2 writes edits of version-2 structures, 1 what was read (default: 2)")
      ->type_name("1|2");
}
