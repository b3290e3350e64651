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

/// The name of the record behind a node; empty when it has none, or there is no record. The scene stays as it
/// is.
std::string record_name(Qis& scene, std::string_view node);

/// Whether a record with this name index can be given a name: it has none yet, or one that is there. If not,
/// a line on standard error says so of the node.
bool require_nameable(const Qis& scene, std::string_view node, Word name_index);

/// Names the record behind a node (`node` is the node's name, such as obj_3).
/// @returns 1, or 0 with nothing changed when no record is behind it or its name index is out of range, of
///          which the latter is told (see require_nameable).
int name_node(Qis& scene, std::string_view node, std::string_view text);
