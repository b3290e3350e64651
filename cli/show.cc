/// @file
/// `quilscene show`: the values of records, as their dialogs show them.
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "cli/commandline.h"
#include "cli/json.h"
#include "cli/printable.h"
#include "cli/scenefile.h"
#include "dialogs/values/dispatch.h"
#include "dialogs/values/itemtext.h"

namespace {

struct Request {
  std::string file;
  std::vector<std::string> nodes;
  bool json = false;
};

void declare(CLI::App& line, Request& request) {
  take_file(line, request.file);
  line.add_option("NODE", request.nodes, "As graph names them")->required()->type_name("");
  take_json(line, request.json);
}

/// Calls `visit(item, value)` for each item of a node's dialog. @returns whether there is such a node
template <class Visit>
bool for_each_item(Qis& scene, const std::string& node, Visit visit) {
  const auto on = values::dialog_of_node(node);
  if (!on || !on->dialog->has_record(scene, on->number)) return false;
  values::for_each_shown(*on->dialog->items(scene, on->number),
                         [&](const std::string& path, const values::Item& item) {
                           visit(path, values::shown_text(item, on->dialog->lines()));
                         });
  return true;
}

Outcome show_as_json(const Request& request) {
  Qis scene;
  const std::string error = open_quietly(request.file, scene);
  if (!error.empty()) return print_json(json_failure("show", request.file, error));
  Json result = json_result("show", request.file);
  Outcome outcome = Outcome::well;
  for (const std::string& node : request.nodes) {
    Json items = Json::object();
    const bool known = for_each_item(scene, node, [&](const std::string& path, const std::string& value) {
      items[path] = escaped(value);
    });
    if (!known) outcome = Outcome::failed;
    result["nodes"].push_back({{"name", escaped(node)}, {"items", known ? std::move(items) : Json{}}});
  }
  print_json(result);
  return outcome;
}

Outcome run(const Request& request) {
  if (request.json) return show_as_json(request);
  Qis scene;
  if (!open_scene(request.file, scene)) return Outcome::failed;
  Outcome outcome = Outcome::well;
  for (const std::string& node : request.nodes) {
    const bool known = for_each_item(scene, node, [&](const std::string& path, const std::string& value) {
      std::printf("%s %s = %s\n", node.c_str(), path.c_str(), printable(value).c_str());
    });
    if (known) continue;
    std::fprintf(stderr, "quilscene: no such node: %s\n", printable(node).c_str());
    outcome = Outcome::failed;
  }
  return outcome;
}

}  // namespace

Work show(CLI::App& line) { return work(line, declare, run); }
