/// @file
/// The texts by which records of the current scene are named.
#pragma once

#include <string>
#include <string_view>

#include "qilib/qis.h"

/// Appends a record to a list of the current scene. Only the NameList (kind 0x110100) can grow in this way.
/// @returns the number of the new record; 0, with nothing added, for any other kind.
Word addQuilNode(Word kind);

/// Stores `text` as name `name_index` of the current scene; with kUnset, as a new name.
/// @returns the name index that the record should keep: the one given, or the new one.
Word set_node_name(std::string_view text, Word name_index);

/// The text of name `name_index`, blanks shown as underscores; empty when there is no such name.
std::string get_name_string(Word name_index);

/// Names the record behind a node of the current scene (`node` is the node's name, such as obj_3).
/// @returns 1, or 0 with nothing changed when no record is behind it or the record's name index dangles.
int name_node(std::string_view node, std::string_view text);
