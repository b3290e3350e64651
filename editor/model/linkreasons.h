/// @file
/// Why the link rules refuse, in words for the user.
#pragma once

#include <string>

#include "qilib/qis.h"

/// Why an arc from the one node to the other, by their names, would be refused: without changing anything.
/// Empty: it would be accepted.
std::string why_not_linked(const Qis& scene, const std::string& parent, const std::string& child);
/// The same for an arc of which one end is to move.
std::string why_not_moved(const Qis& scene, const std::string& old_parent, const std::string& old_child,
                          const std::string& new_parent, const std::string& new_child);
/// Why an arc was not deleted: its parent doesn't hold the reference that it stands for.
std::string why_not_deleted(const std::string& parent, const std::string& child);
