/// @file
/// The command `new` of edit scripts: elements by word, and the numbers that each takes.
#pragma once

#include <string>
#include <vector>

#include "qilib/qis.h"

/// Whether the words after `new` make sense: an element, and as many numbers as it takes. The shape of an
/// envelope or cluster shape may be a node, such as "shape_3".
bool is_new_element(const std::vector<std::string>& words);

/// Builds the element that the words ask for.
/// @returns the new count of such elements; 0 when it was refused or the words make no sense.
Word new_element(Qis& scene, const std::vector<std::string>& words);
