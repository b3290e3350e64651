/// @file
/// `quilscene options`: the converters' options as they are read.
#include <cstdio>

#include "cli/commands.h"
#include "cli/printable.h"
#include "tools/cnvopts.h"
#include "tools/quil2prev.h"

namespace {

void print(std::string_view name, std::string_view text) {
  std::printf("%.*s = %s\n", static_cast<int>(name.size()), name.data(), printable(text).c_str());
}

}  // namespace

Outcome options(const Arguments& arguments) {
  const std::string file =
      arguments.files.empty() ? options_path_in(options_home()) : arguments.files.front();
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
