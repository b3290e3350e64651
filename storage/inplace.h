/// @file
/// New contents for a file that stays the file that it is.
#pragma once

#include <sys/types.h>

namespace storage {

/// Copies the bytes between two offsets to the same place of another file.
/// @returns 0, or the errno of what failed
int copy_bytes(int from, int to, off_t begin, off_t end);

/// Gives a file the contents of another and flushes them to the disk. What can fail for want of room is done
/// first, so that the file is as it was when it does. Of several who do this to one file, each waits for the
/// one before to have closed it.
/// @param from     readable, from its beginning
/// @param to       writable
/// @param damaged  set when the old contents are gone and the new ones not complete
/// @returns 0, or the errno of what failed
int rewrite(int from, int to, bool& damaged);

}  // namespace storage
