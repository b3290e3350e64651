/// @file
/// `quilscene completion`: scripts for shells, made from what the commands declare.
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commandline.h"

namespace {

/// What a shell is to know of an option or operand.
struct Completion {
  std::vector<std::string> names;  ///< "-o", "--output"; empty: an operand
  std::string what;
  bool takes_value = false, repeats = false;
  std::vector<std::string> choices;  ///< of the value; empty: a file name
};

struct CommandCompletion {
  std::string name, what;
  std::vector<Completion> options;
};

/// The words between the separators of "A4|A3"; none when there is but one.
std::vector<std::string> choices_in(const std::string& type) {
  std::vector<std::string> choices;
  std::istringstream words{type};
  for (std::string word; std::getline(words, word, '|');) choices.push_back(word);
  if (choices.size() < 2) choices.clear();
  return choices;
}

std::vector<CommandCompletion> all_completions() {
  std::vector<CommandCompletion> all;
  for (const Command& command : commands()) {
    const auto line = command_line(command);
    command.declare(*line);
    CommandCompletion described{std::string{command.name}, command.what, {}};
    for (const CLI::Option* option : line->get_options()) {
      Completion completion{{},
                            option->get_description(),
                            option->get_items_expected_max() > 0,
                            option->get_items_expected_max() > 1,
                            {}};
      for (const std::string& name : option->get_snames()) completion.names.push_back("-" + name);
      for (const std::string& name : option->get_lnames()) completion.names.push_back("--" + name);
      completion.choices = choices_in(option->get_type_name());
      if (option->get_name() == "COMMAND")
        for (const Command& other : commands()) completion.choices.emplace_back(other.name);
      described.options.push_back(completion);
    }
    all.push_back(described);
  }
  return all;
}

std::string joined(const std::vector<std::string>& words, const char* between) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : between) + word;
  return text;
}

/// The text in single quotes. @param quote  what stands for such a quote in it
std::string quoted(const std::string& text, const char* quote = "'\\''") {
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? quote : std::string(1, c);
  return result + "'";
}

void print_bash(const std::vector<CommandCompletion>& all) {
  std::vector<std::string> names{"--help", "--version"};
  for (const auto& command : all) names.push_back(command.name);
  std::printf(
      "# Completes quilscene's command lines in bash.\n"
      "_quilscene() {\n"
      "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} words= choices=\n"
      "  COMPREPLY=()\n"
      "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
      "    mapfile -t COMPREPLY < <(compgen -W '%s' -- \"$word\")\n"
      "    return\n"
      "  fi\n"
      "  case ${COMP_WORDS[1]} in\n",
      joined(names, " ").c_str());
  for (const auto& command : all) {
    std::vector<std::string> options;
    std::printf("    %s)\n      case $before in\n", command.name.c_str());
    std::string operand_choices;
    for (const Completion& option : command.options) {
      options.insert(options.end(), option.names.begin(), option.names.end());
      if (!option.choices.empty() && option.names.empty()) operand_choices = joined(option.choices, " ");
      if (!option.choices.empty() && !option.names.empty())
        std::printf("        %s) choices='%s' ;;\n", joined(option.names, "|").c_str(),
                    joined(option.choices, " ").c_str());
    }
    std::printf("        *) choices='%s' ;;\n      esac\n      words='%s' ;;\n", operand_choices.c_str(),
                joined(options, " ").c_str());
  }
  std::printf(
      "  esac\n"
      "  if [[ $word == -* ]]; then\n"
      "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n"
      "  elif [ -n \"$choices\" ]; then\n"
      "    mapfile -t COMPREPLY < <(compgen -W \"$choices\" -- \"$word\")\n"
      "  else\n"
      "    compopt -o filenames 2>/dev/null\n"
      "    mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
      "  fi\n"
      "}\n"
      "complete -F _quilscene quilscene\n");
}

void print_zsh(const std::vector<CommandCompletion>& all) {
  // In a description, a bracket would end it, and in an option a colon would.
  const auto plain = [](std::string text) {
    for (char& c : text)
      if (c == '[' || c == ']' || c == ':') c = ' ';
    return text;
  };
  std::puts(
      "#compdef quilscene\n# Completes quilscene's command lines in zsh.\nlocal -a commands\ncommands=(");
  for (const auto& command : all)
    std::printf("  %s\n", quoted(command.name + ":" + plain(command.what)).c_str());
  std::puts(
      ")\nif (( CURRENT == 2 )); then\n  _describe command commands\n  return\nfi\n"
      "local command=$words[2]\n(( CURRENT-- ))\nshift words\ncase $command in");
  for (const auto& command : all) {
    std::printf("  %s)\n    _arguments", command.name.c_str());
    int operands = 0;
    for (const Completion& option : command.options) {
      const std::string value = option.choices.empty() ? "_files" : "(" + joined(option.choices, " ") + ")";
      if (option.names.empty()) {
        const std::string place = option.repeats ? "*" : std::to_string(++operands);
        std::printf(" \\\n      %s", quoted(place + ":" + plain(option.what) + ":" + value).c_str());
        continue;
      }
      for (const std::string& name : option.names)
        std::printf(" \\\n      %s",
                    quoted(name + "[" + plain(option.what) + "]" +
                           (option.takes_value ? ":" + plain(option.what) + ":" + value : ""))
                        .c_str());
    }
    std::printf(" ;;\n");
  }
  std::puts("esac");
}

void print_fish(const std::vector<CommandCompletion>& all) {
  std::puts("# Completes quilscene's command lines in fish.");
  for (const auto& command : all)
    std::printf("complete -c quilscene -n __fish_use_subcommand -f -a %s -d %s\n", command.name.c_str(),
                quoted(command.what, "\\'").c_str());
  for (const auto& command : all)
    for (const Completion& option : command.options) {
      std::string line = "complete -c quilscene -n '__fish_seen_subcommand_from " + command.name + "'";
      for (const std::string& name : option.names)
        line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
      if (option.names.empty() && option.choices.empty()) continue;  // a file name, as fish does by itself
      if (option.takes_value && !option.names.empty()) line += " -r";
      if (!option.choices.empty()) line += " -f -a " + quoted(joined(option.choices, " "), "\\'");
      std::printf("%s -d %s\n", line.c_str(), quoted(option.what, "\\'").c_str());
    }
}

struct Shell {
  const char* name;
  void (*print)(const std::vector<CommandCompletion>& all);
};
constexpr Shell kShells[] = {{"bash", print_bash}, {"zsh", print_zsh}, {"fish", print_fish}};

struct CompletionRequest {
  std::string shell;
};

void declare(CLI::App& line, CompletionRequest& request) {
  line.add_option("SHELL", request.shell, "The shell")->required()->type_name("bash|zsh|fish");
}

Outcome run(const CompletionRequest& request) {
  for (const Shell& shell : kShells)
    if (request.shell == shell.name) {
      shell.print(all_completions());
      return Outcome::well;
    }
  throw WrongUse("no such shell: " + request.shell);
}

}  // namespace

Work completion(CLI::App& line) { return work<CompletionRequest>(line, declare, run); }
