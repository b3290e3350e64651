/// @file
/// Signals that would end a program in the middle of a save.
#pragma once

namespace storage {

/// From now on a file that reaches the limit of file sizes is a failed write like any other. Programs that
/// are started later have the signal as usual.
void survive_file_size_limit();

}  // namespace storage
