/// @file
/// `quilscene resave`: open and save, byte for byte the same file when it was in order.
#include <cstdio>

#include "cli/commands.h"
#include "cli/scenefile.h"
#include "qilib/opensave.h"

Outcome resave(const Arguments& arguments) {
  Qis scene;
  if (!open_scene(arguments.files.front(), scene)) return Outcome::failed;
  if (arguments.strict && qi::tell_dropped_bytes(scene, arguments.mode, qi::print_message) != 0) {
    std::fprintf(stderr, "quilscene: nothing is written\n");
    return Outcome::failed;
  }
  return save_scene(scene, arguments.output, arguments.mode) ? Outcome::well : Outcome::failed;
}
