/// @file
/// What the scene library says on standard error, as lines to put into a report.
#pragma once

#include <string>
#include <vector>

#include "qilib/filehandle.h"

/// While it lives, standard error goes to a file in memory. Throws std::runtime_error without descriptors.
class CapturedErrors {
 public:
  CapturedErrors();
  ~CapturedErrors();
  CapturedErrors(const CapturedErrors&) = delete;
  CapturedErrors& operator=(const CapturedErrors&) = delete;

  /// The lines written so far. Called once, at the end: it moves to the start of the file.
  std::vector<std::string> lines();

 private:
  qi::File file_;
  int standard_error_ = -1;  ///< where it went before
};
