/// @file
/// `quilscene dedup`: records that are equal become one.
#include <string>
#include <vector>

#include "cli/removals.h"

namespace {

struct DedupRequest {
  RemovalRequest removals;
  bool any_name = false;
};

void declare(CLI::App& line, DedupRequest& request) {
  take_removals(line, request.removals);
  line.add_flag("--any-name", request.any_name,
                "Records that differ in nothing but their names are equal; the first one's stays");
}

Outcome run(const DedupRequest& request) {
  return remove_from_files(request.removals, [&](Qis& scene) {
    std::vector<Removal> removals;
    for (const auto& [record, kept] : qi::join_equal_records(scene, request.any_name))
      removals.push_back({record, "equal to " + to_string(kept)});
    return removals;
  });
}

}  // namespace

Work dedup(CLI::App& line) { return work<DedupRequest>(line, declare, run); }
