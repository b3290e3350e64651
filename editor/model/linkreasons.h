/// @file
/// Why the link rules refuse, in words for the user.
#pragma once

#include <string>

#include "qilib/qis.h"

/// Why an arc from the one node to the other, by their names, was just refused; the scene is as it was. Where
/// the rules have no reason of their own, that the record can't hold it.
std::string why_not_linked(const Qis& scene, const std::string& parent, const std::string& child);
/// The same for an arc of which one end was to move.
std::string why_not_moved(const Qis& scene, const std::string& old_child, const std::string& new_parent,
                          const std::string& new_child);
