/// @file
/// The file as it was before it is saved.
#pragma once

#include <string>

#include "storage/writeerror.h"

namespace storage {

/// Copies a file to its name with a "~", in the place of what has that name, with the owner, mode, access
/// list and extended attributes of the file so far as the system allows; where it doesn't, for this user
/// only. A symbolic link is followed. Of what is no regular file, or does not exist, there is no backup.
/// @returns what failed; the file itself is never touched.
WriteError keep_backup(const std::string& path);

}  // namespace storage
