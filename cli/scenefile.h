/// @file
/// Opening and saving a scene on behalf of a command, with messages that name the file.
#pragma once

#include <string>

#include "qilib/qis.h"

/// Opens a scene file into an empty scene. On failure, the library's messages and one with the file's name
/// go to standard error.
bool open_scene(const std::string& file, Qis& scene);

/// Corrects sizes that a writer of this mode would get wrong, then saves. Messages as for `open_scene`.
bool save_scene(Qis& scene, const std::string& file, int mode);
