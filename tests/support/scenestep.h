/// @file
/// Steps of a history for tests that only need to have some.
#pragma once

#include <cstddef>
#include <string>

#include "editor/model/history.h"
#include "qilib/names.h"

/// A step that changed a scene: it takes more memory the longer the name that was given.
inline Step scene_step(const std::string& label, std::size_t name_length = 4) {
  Qis scene;
  qiAddName(scene);
  qi::Recording recording(scene);
  std::string name(name_length, 'n');
  qiSetName(scene, 0, name);
  return {.label = label, .change = recording.finish()};
}
