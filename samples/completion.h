/// @file
/// Completing a scene that was put together record by record: every tag, number, count and size in it.
#pragma once

#include "qilib/qis.h"

namespace samples {

/// Sets the tags, record numbers, counts and sizes of a whole scene of that version from what its lists and
/// records hold; lists without a record become absent. In version 2 every record gets its version-2
/// structure. Counts that follow from no array are the caller's: keys of an animation, entries of a palette,
/// the form of an image.
void complete(Qis& scene, Word version);

}  // namespace samples
