/// @file
/// Putting right the sizes that a scene states when they are not what the writer will write.
#pragma once

#include "qilib/messages.h"
#include "qilib/qis.h"

namespace qi {

/// Compares every size held in the scene (of records and their parts, version-2 blocks, size tables, lists,
/// directory and extension table, header, file) with what a save in that mode writes, and corrects those
/// that differ, with a message for each. A scene saved right after it opens again.
///
/// Some edits leave such differences on purpose: adding a texture that a material holds already grows the
/// material's size by 4 all the same.
/// @returns how many sizes were corrected.
int correct_sizes(Qis& scene, int mode, const MessageSink& sink);

}  // namespace qi

/// The same, with a line on standard error for each.
int qiCheckSizes(Qis& scene, int mode);
