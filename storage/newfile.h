/// @file
/// A new file that has no name until it is complete.
#pragma once

#include <sys/types.h>

#include <string>

#include "storage/descriptor.h"

namespace storage {

/// Where a file system can't do without a name, it has a temporary one, ".quil-*.tmp", and a process that is
/// killed leaves it behind; `remove_leftovers` takes it away. It also has one for the moment between the two
/// system calls in which it takes the place of another file, but only if the machine stops then is it left: a
/// process of its own makes these calls.
class NewFile {
 public:
  /// @param folder  where it will appear; stays open as long as this object lives
  /// @param mode    as for `open`
  NewFile(int folder, mode_t mode);
  /// What has not got its name is gone.
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// 0, or the errno of what failed: then there is no file.
  int error() const { return error_; }
  /// For reading and writing.
  int fd() const { return fd_.get(); }

  /// Gives it its name, in place of what has it. @param taken  whether something has
  /// @returns 0, or the errno of what failed: then it has no name.
  int put(const std::string& name, bool taken);

 private:
  void open_temporary(mode_t mode);
  int link_as(const std::string& name) noexcept;    ///< @returns 0, or an errno
  int rename_to(const std::string& name) noexcept;  ///< the same
  void unlink_temporary();

  int folder_;
  Descriptor fd_;
  std::string nameless_;   ///< what names it to `linkat`
  std::string temporary_;  ///< empty: none
  int error_ = 0;
};

/// Removes the temporary files from a folder that no living process writes, so far as this user may.
void remove_leftovers(int folder);

}  // namespace storage
