/// @file
/// The sample scenes.
#pragma once

#include <cstdint>

#include "qilib/qis.h"

namespace samples {

/// The smallest scene worth editing: a table and two boxes, one of them not in the scene yet. Version 1.
Qis table();
/// A harbour at dusk: hierarchy, textures, animations, a boat in three levels of detail, cameras, lights,
/// fog. Version 1.
Qis harbour();
/// A walking dog: a skeleton with skin on it, colour-indexed textures with palettes. Version 2.
Qis dog();
/// An arm of separate limbs, for the script that gives it a skeleton. Version 2, without extension lists.
Qis arm();

/// A scene of any size to measure with: `objects` objects in a hierarchy, sharing shapes, materials and
/// animations as modelling programs make them (about 1.3 arcs to a node), and textures of `texture_bytes` in
/// all. Version 1.
Qis city(std::uint32_t objects, std::uint64_t texture_bytes);

}  // namespace samples
