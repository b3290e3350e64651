/// @file
/// Calls of the system that fail, or end the process, at a chosen moment.
///
/// Linked into a test, this stands before the calls of the test's own process. As a library that is loaded
/// before a program (LD_PRELOAD), it reads its faults from the variable QUIL_FAULTS, each as
/// "CALL:NUMBER:WHAT" and separated by blanks; WHAT is an errno, an errno with "+" for this and all later
/// calls, or "kill". Calls count only while the file exists that QUIL_FAULTS_ARMED names, if it names one.
/// The program makes the file that QUIL_FAULTS_HAPPENED names when a fault happens.
///
/// Only calls for files that are open for writing and for folders are counted: "open", "write", "fsync",
/// "rename", "link", "close", "chmod", "chown", "setxattr", "truncate", and "tmpfile" for the opening of a
/// file without a name.
#pragma once

#include <string>
#include <vector>

namespace support {

struct Fault {
  std::string call;  ///< empty: any but "tmpfile", which counts as "open" here
  int at = 1;        ///< which of these calls, from 1
  int error = 0;  ///< the errno that it fails with; 0: the process is killed instead, but not a helper of it
  bool lasting = false;
};

/// The faults of this process while it lives; one at a time.
class Faults {
 public:
  explicit Faults(std::vector<Fault> faults);
  ~Faults();
  Faults(const Faults&) = delete;
  Faults& operator=(const Faults&) = delete;

  /// Whether the last of the faults happened.
  bool happened() const;
};

}  // namespace support
