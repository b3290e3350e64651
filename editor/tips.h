/// @file
/// What a tooltip says of a record and of a reference.
#pragma once

#include <string>

#include "viewkit/vknode.h"

/// Name, kind, a few of its record's values, and how many lead to it and from it; lines.
std::string tip_of_node(const VkNode& node);

/// The two ends of an arc.
std::string tip_of_arc(const VkNode& parent, const VkNode& child);
