/// @file
/// Taking records out of files.
#include "cli/removals.h"

#include "cli/jobs.h"
#include "cli/lines.h"
#include "cli/printable.h"

namespace {

std::vector<Removal> remove_found(Qis& scene, const std::function<std::vector<Removal>(Qis& scene)>& find) {
  std::vector<Removal> removals = find(scene);
  std::vector<qi::RecordId> records;
  for (const Removal& removal : removals) records.push_back(removal.record);
  qi::remove_records(scene, records);
  return removals;
}

void print(const std::vector<Removal>& removals, Word bytes) {
  Lines lines;
  for (const Removal& removal : removals)
    lines.add(to_string(removal.record) + ": " + printable(removal.text));
  lines.add(std::to_string(removals.size()) + (removals.size() == 1 ? " record" : " records") + " of " +
            std::to_string(bytes) +
            " bytes; objects, shapes, geometry and names stay, and keep their numbers");
  lines.flush();
}

}  // namespace

void take_removals(CLI::App& line, RemovalRequest& request) {
  take_files(line, request.files);
  take_target(line, request.target);
  line.add_flag("--dry-run", request.dry_run, "Print what would go, and write nothing");
}

Outcome remove_from_files(const RemovalRequest& request,
                          const std::function<std::vector<Removal>(Qis& scene)>& find) {
  const auto files = files_of(request.files);
  if (!request.dry_run) require_target(request.target, files);
  const auto change = [&](Qis& scene) -> Changed {
    const Word before = scene.header.fixed.file_size;
    const auto removals = remove_found(scene, find);
    print(removals, before - scene.header.fixed.file_size);
    return {Outcome::well, true};
  };
  return for_each_file(
      files, request.files.jobs,
      [&](const std::string& file) -> Done {
        if (!request.dry_run) return {rewrite(file, request.target, change), {}};
        Qis scene;
        return {open_scene(file, scene) ? change(scene).outcome : Outcome::failed, {}};
      },
      {}, Headings::yes);
}
