/// @file
/// The `set` line of edit scripts: values of a record, changed as its dialog would.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "qilib/qis.h"

/// A node, item or value that there isn't; says which.
struct ValueError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Opens the dialog of a node of the scene without a window, changes items, and applies it, with the
/// traces that the window's dialog prints.
/// @param operands  the node's name, then for each item its path and its value.
/// @returns what the write-back returns: 1. Throws ValueError, with nothing applied.
int set_values(Qis& scene, const std::vector<std::string>& operands);
