/// @file
/// The sizes that a scene states, held against what the writer will write.
#pragma once

#include "qilib/messages.h"
#include "qilib/qis.h"

namespace qi {

// Nothing reads most of the sizes in a file: those of the records and of the parts of an envelope, the
// entries of the size tables, and those that the lists state of themselves. What a file says there is its
// own.

/// Notes, in `carried_sizes`, by how much they differ from the contents. Called when a file has been opened.
void carry_sizes(Qis& scene);

/// Tells of every size that a save carries although the contents take something else.
void tell_carried_sizes(const Qis& scene, const MessageSink& sink);

/// Corrects, with a message for each, every size that is not what a save in that mode writes, or, of those
/// that nothing reads, as much more or less than that as it was when the file was opened. A scene saved right
/// after it opens again.
///
/// Some edits leave such sizes on purpose: adding a texture that a material holds already grows the
/// material's size by 4 all the same.
/// @returns how many sizes were corrected.
int correct_sizes(Qis& scene, int mode, const MessageSink& sink);

}  // namespace qi

/// The same, with a line on standard error for each.
int qiCheckSizes(Qis& scene, int mode);
