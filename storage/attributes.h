/// @file
/// What belongs to a file beside its contents.
#pragma once

#include <sys/stat.h>

#include <string>
#include <vector>

namespace storage {

/// Owner, group, mode, access list and extended attributes of a file, to be given to another one.
class Attributes {
 public:
  /// Reads them from a file. @returns 0, or the errno of what failed.
  int read(int fd);

  /// Gives them to a new file that nobody but its owner can open: first what narrows, at last the mode, so
  /// that at no moment anybody can do more with the new file than with the old one. An owner that can't be
  /// given away stays, and the set-id bits go; so does an attribute that is the system's to give.
  /// @returns 0, or an errno; a refusal (`is_refusal`) when the group or the access list can't be kept.
  int give(int fd) const;

 private:
  struct Extended {
    std::string name, value;
  };
  int give_owner(int fd, mode_t& mode) const;
  int give_access_list(int fd) const;

  uid_t owner_ = 0;
  gid_t group_ = 0;
  mode_t mode_ = 0;
  std::vector<Extended> extended_;  ///< without the access list
  std::string access_list_;         ///< as the system keeps it; empty: none
};

}  // namespace storage
