/// @file
/// `quilscene options`: the converters' options as they are read.
#include <cstdio>
#include <string>

#include "cli/commandline.h"
#include "cli/printable.h"
#include "tools/cnvopts.h"
#include "tools/quil2prev.h"

namespace {

void print(std::string_view name, std::string_view text) {
  std::printf("%.*s = %s\n", static_cast<int>(name.size()), name.data(), printable(text).c_str());
}

struct Request {
  std::string file;
};

void declare(CLI::App& line, Request& request) {
  line.add_option("FILE", request.file, "The options (default: your own, ~/.quilcnvops)")->type_name("");
}

Outcome run(const Request& request) {
  const std::string file = request.file.empty() ? options_path_in(options_home()) : request.file;
  if (!read_options_file(file)) {
    std::fprintf(stderr, "quilscene: can't read %s\n", file.c_str());
    return Outcome::failed;
  }
  for (const NamedOption& option : named_options()) print(option.name, option.text);
  std::string line;
  print("cmd_quil2gfx", cmd_quil2gfx(line));
  print("cmd_quil2zex", cmd_quil2zex(line));
  return Outcome::well;
}

}  // namespace

Work options(CLI::App& line) { return work(line, declare, run); }
