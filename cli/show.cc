/// @file
/// `quilscene show`: the values of records, as their dialogs show them.
#include <cstdio>
#include <string>
#include <vector>

#include "cli/commandline.h"
#include "cli/printable.h"
#include "cli/scenefile.h"
#include "dialogs/values/dispatch.h"
#include "dialogs/values/itemtext.h"

namespace {

struct Request {
  std::string file;
  std::vector<std::string> nodes;
};

void declare(CLI::App& line, Request& request) {
  take_file(line, request.file);
  line.add_option("NODE", request.nodes, "As graph names them")->required()->type_name("");
}

Outcome run(const Request& request) {
  Qis scene;
  if (!open_scene(request.file, scene)) return Outcome::failed;
  Outcome outcome = Outcome::well;
  for (const std::string& node : request.nodes) {
    const auto on = values::dialog_of_node(node);
    if (!on || !on->dialog->has_record(scene, on->number)) {
      std::fprintf(stderr, "quilscene: no such node: %s\n", printable(node).c_str());
      outcome = Outcome::failed;
      continue;
    }
    values::for_each_shown(
        *on->dialog->items(scene, on->number), [&](const std::string& path, const values::Item& item) {
          const std::string value = printable(values::shown_text(item, on->dialog->lines()));
          std::printf("%s %s = %s\n", node.c_str(), path.c_str(), value.c_str());
        });
  }
  return outcome;
}

}  // namespace

Work show(CLI::App& line) { return work(line, declare, run); }
