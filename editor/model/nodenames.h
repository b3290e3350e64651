/// @file
/// Node names: a graph node's name, such as obj_3, says of which kind it is and which record it stands for.
///
/// Links know a kind by its tag, which is that of its records; 0 means a node that is shown but stands for no
/// record that links may touch.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "editor/model/kinds.h"

/// The kind whose prefix stands before the first underscore of a name, or whose records have this tag; null
/// when there is none.
const NodeKind* kind_of_node(std::string_view name);
const NodeKind* kind_of_tag(Word tag);

/// The tag of the kind of the node with this name; 0 when it has none.
Word tagofnd(std::string_view name);

/// The number after the first underscore, read as atol reads: 0 when there is none.
long indexofnd(std::string_view name);

/// `prefix` and `number` as "%s%d" writes them.
std::string string_d(std::string_view prefix, Word number);

/// The name of the node of a kind with this number; empty when no kind has the tag.
std::string node_name(const NodeKind& kind, Word number);
std::string node_name(Word tag, Word number);

/// The name of the record that a reference from a deformer or an animation points at; of a list that such
/// references don't point into, an underscore and the index.
std::string nodename(const QisNodeIndex& node_index);

/// A node's name taken apart.
struct NamedNode {
  const NodeKind* kind;
  Word number;  ///< record number; may lie outside its list
};

/// What a name stands for, or nothing when no node has this name: an unknown prefix, or a number written in
/// another way than node_name writes it ("obj_x", "obj_007").
std::optional<NamedNode> find_node(std::string_view name);

/// The same for links, which know a kind by its tag: nothing for nodes that they may not touch, either.
struct NodeId {
  Word kind = 0;
  Word number = 0;
  friend bool operator==(const NodeId&, const NodeId&) = default;
};
std::optional<NodeId> find_node_id(std::string_view name);
