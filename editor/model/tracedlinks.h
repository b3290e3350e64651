/// @file
/// Link edits as gestures and scripts ask for them: by the names of nodes, such as obj_3, and with a trace on
/// standard output.
///
/// Each returns 1 when the records were changed by the link rules (see modifygraph.h), and 0 when it was
/// refused, also because a name is no record's.
#pragma once

#include <string>

#include "qilib/qis.h"

/// Prints both names, kinds and numbers.
int quilAddLink(Qis& scene, const std::string& parent, const std::string& child);

int quilDeleteLink(Qis& scene, const std::string& parent, const std::string& child);

/// Prints all four names, kinds and numbers.
int quilModifyLink(Qis& scene, const std::string& old_parent, const std::string& old_child,
                   const std::string& new_parent, const std::string& new_child);

/// The same for an arc that stands for no reference of its own: nothing is taken from its old place.
int quilModifySurplusLink(Qis& scene, const std::string& old_parent, const std::string& old_child,
                          const std::string& new_parent, const std::string& new_child);
