/// @file
/// What the check of a file is put together from.
#pragma once

#include <vector>

#include "checks/finding.h"

namespace checks {

/// References that lead outside their list, come twice, are too many or lead round in a circle, and what
/// nothing refers to or reaches.
/// @param damaged  the tags of the lists that may have had more records.
void check_links(const Qis& scene, const std::vector<Word>& damaged, Report& report);

/// Textures and what their images and palettes hold.
void check_textures(const Qis& scene, Report& report);

/// Names, numbers and index words.
/// @param damaged  as above
void check_content(const Qis& scene, const std::vector<Word>& damaged, Report& report);

}  // namespace checks
