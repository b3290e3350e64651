/// @file
/// Opening and saving a scene on behalf of a command.
#include "cli/scenefile.h"

#include <cstdio>

#include "qilib/checksizes.h"
#include "qilib/opensave.h"

bool open_scene(const std::string& file, Qis& scene) {
  if (qiOpenQb(file, scene) == 1) return true;
  std::fprintf(stderr, "quilscene: can't read %s\n", file.c_str());
  return false;
}

bool save_scene(Qis& scene, const std::string& file, int mode) {
  qiCheckSizes(scene, mode);
  if ((mode == 1 ? qiSaveAsQb(scene, file) : qiSaveAsQb2(scene, file)) == 1) return true;
  std::fprintf(stderr, "quilscene: can't write %s\n", file.c_str());
  return false;
}
