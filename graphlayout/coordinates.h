/// @file
/// Last stage of a layered layout: from ordered ranks to coordinates and bends.
#pragma once

#include <span>

#include "graphlayout/layers.h"
#include "graphlayout/layout.h"

namespace graphlayout {

/// Keeps the order of the ranks and draws long arcs as straight as it can, parents in the middle of their
/// children.
/// @param arcs  as given to build_layers(); the bends come in their order and run from above.
Layout place(const Layers& layers, std::span<const Size> sizes, std::span<const Arc> arcs,
             const Options& options);

}  // namespace graphlayout
