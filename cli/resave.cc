/// @file
/// `quilscene resave`: open and save, byte for byte the same file when it was in order.
#include <cstdio>
#include <string>

#include "cli/commandline.h"
#include "cli/files.h"
#include "cli/jobs.h"
#include "cli/scenefile.h"
#include "qilib/opensave.h"

namespace {

struct ResaveRequest {
  FileSet files;
  Target target;
  bool strict = false;
};

void declare(CLI::App& line, ResaveRequest& request) {
  take_files(line, request.files);
  take_target(line, request.target);
  line.add_flag("--strict", request.strict, "Write nothing when a save would not keep every byte");
}

Changed change(const ResaveRequest& request, const Qis& scene) {
  if (!request.strict || qi::tell_dropped_bytes(scene, request.target.mode, qi::print_message) == 0)
    return {Outcome::well, true};
  std::fprintf(stderr, "quilscene: nothing is written\n");
  return {Outcome::failed, false};
}

Outcome run(const ResaveRequest& request) {
  const auto files = files_of(request.files);
  require_target(request.target, files);
  return for_each_file(files, request.files.jobs, [&](const std::string& file) -> Done {
    return {rewrite(file, request.target, [&](const Qis& scene) { return change(request, scene); }), {}};
  });
}

}  // namespace

Work resave(CLI::App& line) { return work<ResaveRequest>(line, declare, run); }
