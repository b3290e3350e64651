/// @file
/// `quilscene resave`: open and save, byte for byte the same file when it was in order.
#include "cli/commands.h"
#include "cli/scenefile.h"

Outcome resave(const Arguments& arguments) {
  Qis scene;
  const bool saved =
      open_scene(arguments.files.front(), scene) && save_scene(scene, arguments.output, arguments.mode);
  return saved ? Outcome::well : Outcome::failed;
}
