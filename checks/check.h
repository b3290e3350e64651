/// @file
/// Checking a scene file: what is wrong or odd in it, whether or not it can be opened.
#pragma once

#include <string>

#include "checks/finding.h"

namespace checks {

/// How far a file could be read.
enum class Reading {
  whole,
  damaged,    ///< the file is there, and what could be read of it was looked at
  unreadable  ///< it isn't there, is no file, or could not be read from its device
};

/// Looks at a file. Where a list is damaged, the others are looked at all the same.
Reading check_file(const std::string& file, const FindingSink& sink);

}  // namespace checks
