/// @file
/// The one scene that the program edits.
#pragma once

#include <memory>

#include "qilib/qis.h"

/// The current scene. It exists, empty, before `main` begins, and is never null.
extern std::unique_ptr<Qis> qis;
