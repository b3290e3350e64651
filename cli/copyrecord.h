/// @file
/// The lines `copy` and `delete` of edit scripts for records of their own.
#pragma once

#include <string>

#include "qilib/qis.h"

/// Appends a record like that one, and prints its name. @returns 1; 0 when it can't be copied, or isn't
/// there.
int copy_node(Qis& scene, const std::string& node);
/// Takes a record out that nothing refers to. @returns 1; 0 when it can't be taken out.
int delete_node(Qis& scene, const std::string& node);

/// Why not.
std::string why_not_copied(const Qis& scene, const std::string& node);
std::string why_not_deleted(const Qis& scene, const std::string& node);
