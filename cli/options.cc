/// @file
/// `quilscene options`: the converters' options as they are read.
#include <cstdio>
#include <string>

#include "cli/commandline.h"
#include "cli/files.h"
#include "cli/json.h"
#include "cli/printable.h"
#include "tools/cnvopts.h"
#include "tools/quil2prev.h"

namespace {

struct OptionsRequest {
  std::string file;
  bool json = false;
};

void declare(CLI::App& line, OptionsRequest& request) {
  line.add_option("FILE", request.file, "The options (default: your own, ~/.quilcnvops)")->type_name("");
  take_json(line, request.json);
}

/// Calls `visit(name, text)` for each option, and for what they add to command lines.
template <class Visit>
void for_each_text(Visit visit) {
  for (const NamedOption& option : named_options()) visit(std::string{option.name}, std::string{option.text});
  std::string line;
  visit("cmd_quil2gfx", std::string{cmd_quil2gfx(line)});
  visit("cmd_quil2zex", std::string{cmd_quil2zex(line)});
}

Outcome run(const OptionsRequest& request) {
  const std::string file = request.file.empty() ? options_path_in(options_home()) : request.file;
  if (!read_options_file(path_of(file))) {
    if (request.json) return print_json(json_failure("options", file, "can't be read"));
    std::fprintf(stderr, "quilscene: can't read %s\n", printable(file).c_str());
    return Outcome::failed;
  }
  Json result = json_result("options", file);
  for_each_text([&](const std::string& name, const std::string& text) {
    if (request.json) {
      result["options"][name] = escaped(text);
    } else {
      std::printf("%s = %s\n", name.c_str(), printable(text).c_str());
    }
  });
  return request.json ? print_json(result) : Outcome::well;
}

}  // namespace

Work options(CLI::App& line) { return work<OptionsRequest>(line, declare, run); }
