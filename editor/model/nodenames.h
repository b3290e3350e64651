/// @file
/// Node names and kinds: a graph node's name, such as obj_3, says which record it stands for.
///
/// A node's kind is the record tag of its list, the scene's the list tag; kind 0 means a node that is shown
/// but stands for no record that links may touch.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "qilib/qis.h"

/// A kind of node: what its names begin with, and the tag of its records.
struct NodeKind {
  std::string_view prefix;
  Word tag;
};

/// Every kind that links may touch, the scene first.
std::span<const NodeKind> node_kinds();

/// The prefix of a level-of-detail node's name; such a node has kind 0 and the label kLodLabel.
inline constexpr std::string_view kLodPrefix = "lod_";
inline constexpr std::string_view kLodLabel = "LOD";

/// The kind of the node with this name; 0 when what stands before its first underscore is no known prefix
/// (prefixes have 9 characters at most) or it has no underscore.
Word tagofnd(std::string_view name);

/// The number behind the first underscore, read as atol reads: 0 when there is none.
long indexofnd(std::string_view name);

/// `prefix` and `number` as "%s%d" writes them.
std::string string_d(std::string_view prefix, Word number);

/// The name of the node for record `number` of a kind; empty for a kind that is none.
std::string node_name(Word kind, Word number);

/// The name of the record that a reference from a deformer or an animation points at: "obj", "ChainRoot",
/// "joint" or "effector", an underscore and the index. Any other list has an empty prefix.
std::string nodename(const QisNodeIndex& node_index);

/// A node's name taken apart.
struct NodeId {
  Word kind = 0;
  Word number = 0;  ///< record number; may lie outside its list
  friend bool operator==(const NodeId&, const NodeId&) = default;
};

/// The kind and record number that a name stands for, or nothing when no node has this name: an unknown
/// prefix, or a number written in another way than node_name writes it ("obj_x", "obj_007").
std::optional<NodeId> find_node_id(std::string_view name);
