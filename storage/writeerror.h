/// @file
/// Why a file could not be written.
#pragma once

#include <string>

/// What was being done when writing failed, in the order in which it is done.
enum class WriteStep {
  backup,   ///< keeping the file as it was beside itself
  open,     ///< finding the file, and whether it may be written
  create,   ///< making a new file in its folder
  write,    ///< writing the new contents
  flush,    ///< having them on the disk
  keep,     ///< giving the new file the owner, the access list, the attributes and the mode of the old one
  replace,  ///< putting the new file in the old one's place
  copy,     ///< keeping a recovery copy, which a file that can't be replaced needs
  rewrite,  ///< writing the file in place
  flush_folder  ///< having the new name on the disk
};

/// The first thing that went wrong with a file.
struct WriteError {
  int number = 0;  ///< an errno; 0: nothing went wrong
  WriteStep step = WriteStep::open;
  std::string path;  ///< the file, or the folder of recovery copies
  int kept_copy =
      0;  ///< the recovery copy that has the new contents of a file that may be incomplete; 0: none

  explicit operator bool() const { return number != 0; }

  /// A line without its end: path, step and the system's words for the number.
  std::string text() const;
};

namespace storage {

/// Whether the system said that this can't be done to this file or in this place, rather than that it failed:
/// then another way may lead to the same end.
bool is_refusal(int number);

}  // namespace storage
