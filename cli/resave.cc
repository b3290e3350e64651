/// @file
/// `quilscene resave`: open and save, byte for byte the same file when it was in order.
#include <cstdio>
#include <string>

#include "cli/commandline.h"
#include "cli/scenefile.h"
#include "qilib/opensave.h"

namespace {

struct Request {
  std::string file, output;
  int mode = 2;
  bool strict = false;
};

void declare(CLI::App& line, Request& request) {
  take_file(line, request.file);
  take_output(line, request.output, "The file to write; may be the one that is read")->required();
  take_mode(line, request.mode);
  line.add_flag("--strict", request.strict, "Write nothing when a save would not keep every byte");
}

Outcome run(const Request& request) {
  Qis scene;
  if (!open_scene(request.file, scene)) return Outcome::failed;
  if (request.strict && qi::tell_dropped_bytes(scene, request.mode, qi::print_message) != 0) {
    std::fprintf(stderr, "quilscene: nothing is written\n");
    return Outcome::failed;
  }
  return save_scene(scene, request.output, request.mode) ? Outcome::well : Outcome::failed;
}

}  // namespace

Work resave(CLI::App& line) { return work(line, declare, run); }
