/// @file
/// The link rules: which arcs a user may draw, delete and move in the current scene, and what that does to
/// the records.
///
/// Nodes are given by their names (obj_3). Every function returns 1 when the records were changed and 0 when
/// the edit is refused; a refusal changes nothing. Refused are: a pair of kinds without a rule, a name that
/// is no record's, a parent that doesn't exist, and, but for deleting, a child that doesn't exist. A delete
/// may take out a reference that dangles.
#pragma once

#include <span>
#include <string>

#include "qilib/words.h"

/// Adds the link that an arc from `parent` to `child` stands for. Prints both names, kinds and numbers.
int quilAddLink(const std::string& parent, const std::string& child);

/// Deletes the link from `parent` to `child`.
/// An obj that is not among a scene's or an obj's children, or a texture not among a material's, takes the
/// last entry out instead. A slot is unset whatever it holds.
int quilDeleteLink(const std::string& parent, const std::string& child);

/// Moves one end of a link: either the child changes to another of its kind under the same parent, or the
/// parent changes and the child stays. Prints all four names, kinds and numbers.
/// A single-valued reference that the new parent held is replaced.
int quilModifyLink(const std::string& old_parent, const std::string& old_child, const std::string& new_parent,
                   const std::string& new_child);

/// 1 when a parent of this kind refers to at most one child of that kind, else 0.
int isOnly1child(Word parent_kind, Word child_kind);

/// Replaces, in an index array or a slot, the first entry equal to `old_child` by `new_child`.
/// Refused, with a line on standard output, when the old child isn't there or the new one is.
int quilModifyOneLink(std::span<Word> children, Word old_child, Word new_child);

// The rules by the parent's kind, on record numbers.

int quilAddLinkScene(Word child_kind, Word child);
int quilAddLinkObj(Word child_kind, Word child, Word parent);
int quilAddLinkShape(Word child_kind, Word child, Word parent);
int quilAddLinkPart(Word child_kind, Word child, Word parent);
int quilAddLinkChainRoot(Word child_kind, Word child, Word parent);
int quilAddLinkJoint(Word child_kind, Word child, Word parent);
int quilAddLinkEffector(Word child_kind, Word child, Word parent);

int quilDeleteLinkScene(const std::string& child);
int quilDeleteLinkObj(Word parent, const std::string& child);
int quilDeleteLinkShape(Word parent, const std::string& child);
int quilDeleteLinkPart(Word parent, const std::string& child);
int quilDeleteLinkMat(Word parent, const std::string& child);
int quilDeleteLinkChainRoot(Word parent, const std::string& child);
int quilDeleteLinkJoint(Word parent, const std::string& child);
int quilDeleteLinkEffector(Word parent, const std::string& child);

// Another child under the same parent.
int quilModifyLinkScene(Word child_kind, Word new_child, Word old_child, Word parent);
int quilModifyLinkObj(Word child_kind, Word new_child, Word old_child, Word parent);
int quilModifyLinkShape(Word child_kind, Word new_child, Word old_child, Word parent);
int quilModifyLinkPart(Word child_kind, Word new_child, Word old_child, Word parent);
int quilModifyLinkMat(Word child_kind, Word new_child, Word old_child, Word parent);
int quilModifyLinkChainRoot(Word child_kind, Word new_child, Word old_child, Word parent);
int quilModifyLinkJoint(Word child_kind, Word new_child, Word old_child, Word parent);
int quilModifyLinkEffector(Word child_kind, Word new_child, Word old_child, Word parent);

// The same child under another parent, of the kind in the function's name.
int quilModifyLinkSceneP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent);
int quilModifyLinkObjP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent);
int quilModifyLinkShapeP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent);
int quilModifyLinkPartP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent);
int quilModifyLinkMatP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent);
int quilModifyLinkChainRootP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent);
int quilModifyLinkJointP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent);
int quilModifyLinkEffectorP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent);

// What is taken from the old parent of a child that moved away. A parent kind that can't have such a child
// is refused with the line "unexpected link, %x\n"; otherwise the answer is 1.
int quilDelete_obj(Word parent_kind, Word parent, Word obj);
int quilDelete_anim(Word parent_kind, Word parent);
int quilDelete_ChainRoot(Word parent_kind, Word parent, Word chain_root);
int quilDelete_joint(Word parent_kind, Word parent);

// Single links of the current scene.
int add_scene_obj(Word obj);
int add_obj_child(Word parent, Word child);
int add_mat_tex(Word mat, Word tex);
int delete_scene_obj(Word obj);
int delete_obj_child(Word parent, Word child);
int delete_mat_tex(Word mat, Word tex);
int delete_obj_shape(Word obj);
int delete_obj_mat(Word obj);
int delete_obj_anim(Word obj);
int delete_shape_mat(Word shape);
int delete_part_mat(Word part);
