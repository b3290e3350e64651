/// @file
/// `quilscene prune`: records that nothing refers to go.
#include <string>
#include <vector>

#include "cli/removals.h"
#include "editor/model/recordnames.h"

namespace {

std::vector<Removal> find_unused(Qis& scene) {
  std::vector<Removal> removals;
  for (const qi::RecordId& record : qi::unused_records(scene)) {
    const std::string name = record_name(scene, to_string(record));
    removals.push_back({record, (name.empty() ? "" : name + ", ") + "nothing refers to it"});
  }
  return removals;
}

Outcome run(const RemovalRequest& request) { return remove_from_files(request, find_unused); }

}  // namespace

Work prune(CLI::App& line) { return work<RemovalRequest>(line, take_removals, run); }
