/// @file
/// The texts by which records of a scene are named.
#pragma once

#include <string>
#include <string_view>

#include "qilib/qis.h"

/// Stores `text` as name `name_index`; with kUnset, as a new name.
/// @returns the name index that the record should keep: the one given, or the new one.
Word set_node_name(Qis& scene, std::string_view text, Word name_index);

/// The text of name `name_index`, blanks shown as underscores; empty when there is no such name.
std::string get_name_string(const Qis& scene, Word name_index);

/// Names the record behind a node (`node` is the node's name, such as obj_3).
/// @returns 1, or 0 with nothing changed when no record is behind it or the record's name index dangles.
int name_node(Qis& scene, std::string_view node, std::string_view text);
