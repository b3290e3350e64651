/// @file
/// The link rules: which arcs a user may draw, delete and move in a scene, and what that does to its records.
///
/// Every function returns 1 when the records were changed and 0 when the edit is refused; a refusal changes
/// nothing. Refused are: a pair of kinds without a rule, a parent that doesn't exist, and, but for deleting,
/// a child that doesn't exist. A delete may take out a reference that dangles. Nothing is printed: what there
/// is to say of an edit goes to a sink.
#pragma once

#include <span>

#include "editor/model/nodenames.h"
#include "qilib/edit.h"
#include "qilib/messages.h"

/// Why add_link or move_link would refuse that: by the same rules, and changing nothing.
qi::Refusal why_not_added(const Qis& scene, NodeId parent, NodeId child);
qi::Refusal why_not_moved(const Qis& scene, NodeId old_parent, NodeId old_child, NodeId new_parent,
                          NodeId new_child);

/// Adds the link that an arc from `parent` to `child` stands for.
int add_link(Qis& scene, NodeId parent, NodeId child);

/// Deletes the link from `parent` to `child`.
/// An obj that is not among a scene's or an obj's children, or a texture not among a material's, takes the
/// last entry out instead, if there is one. A slot is unset whatever it holds.
int delete_link(Qis& scene, NodeId parent, NodeId child, const qi::MessageSink& sink);

/// Moves one end of a link: either the child changes to another of its kind under the same parent, or the
/// parent changes and the child stays.
int move_link(Qis& scene, NodeId old_parent, NodeId old_child, NodeId new_parent, NodeId new_child,
              const qi::MessageSink& sink);

/// Puts another child of its kind in the place of a parent's child.
int change_child(Qis& scene, NodeId parent, NodeId old_child, Word new_child, const qi::MessageSink& sink);

/// Gives a child to another parent. A single-valued reference that the new parent held is replaced.
int change_parent(Qis& scene, NodeId old_parent, NodeId new_parent, NodeId child,
                  const qi::MessageSink& sink);

/// Takes a child that moved away from its old parent, which may not be able to have one of that kind: that is
/// refused with a message. Otherwise the answer is 1, whether or not the parent had the child.
int leave_parent(Qis& scene, NodeId parent, NodeId child, const qi::MessageSink& sink);

/// Replaces, in an index array or a slot, the first entry equal to `old_entry` by `new_entry`.
/// Refused, with a message, when the old one isn't there or the new one is.
int exchange_entry(std::span<Word> entries, Word old_entry, Word new_entry, const qi::MessageSink& sink);

/// Whether an arc can be drawn from a node of the one kind to a node of the other.
bool can_be_linked(Word parent_kind, Word child_kind);

/// How often the parent's record refers to the child.
std::size_t references_held(const Qis& scene, NodeId parent, NodeId child);

/// 1 when a parent of this kind refers to at most one child of that kind, else 0.
int isOnly1child(Word parent_kind, Word child_kind);
