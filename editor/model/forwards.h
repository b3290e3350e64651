/// @file
/// Forwards, which hold nothing of their own: names for edits of the current scene that nobody in the program
/// calls.
///
/// Each link edit answers 1 when the records were changed and 0 when the edit was refused by the link rules
/// (see modifygraph.h). What there is to say of it is printed on standard output.
#pragma once

#include <span>
#include <string>

#include "editor/model/currentscene.h"
#include "editor/model/modifygraph.h"
#include "editor/model/recordnames.h"
#include "qilib/names.h"
#include "qilib/tags.h"

namespace forwards {

// Edits under a parent of one kind.

template <Word Kind>
int add(Word child_kind, Word child, Word parent) {
  return add_link(*qis, {Kind, parent}, {child_kind, child});
}
template <Word Kind>
int remove(Word parent, const std::string& child) {
  const auto id = find_node_id(child);
  return id ? delete_link(*qis, {Kind, parent}, *id, qi::print_message) : 0;
}
template <Word Kind>
int exchange(Word child_kind, Word new_child, Word old_child, Word parent) {
  return change_child(*qis, {Kind, parent}, {child_kind, old_child}, new_child, qi::print_message);
}
template <Word Kind>
int hand_over(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent) {
  return change_parent(*qis, {old_kind, old_parent}, {Kind, new_parent}, {child_kind, child},
                       qi::print_message);
}

// Edits of one pair of kinds. Slots are unset whatever they hold.

template <Word Kind, Word ChildKind>
int add_to(Word parent, Word child) {
  return add<Kind>(ChildKind, child, parent);
}
template <Word Kind, Word ChildKind>
int remove_from(Word parent, Word child) {
  return delete_link(*qis, {Kind, parent}, {ChildKind, child}, qi::print_message);
}
template <Word Kind, Word ChildKind>
int unset(Word parent) {
  return remove_from<Kind, ChildKind>(parent, 0);
}

// A child that moved away leaves a parent of any kind.

template <Word ChildKind>
int leave(Word parent_kind, Word parent, Word child) {
  return leave_parent(*qis, {parent_kind, parent}, {ChildKind, child}, qi::print_message);
}
template <Word ChildKind>
int leave_slot(Word parent_kind, Word parent) {
  return leave<ChildKind>(parent_kind, parent, 0);
}

}  // namespace forwards

inline int quilAddLinkScene(Word child_kind, Word child) {
  return forwards::add<qi::kSceneTag>(child_kind, child, 0);
}
inline constexpr auto& quilAddLinkObj = forwards::add<qi::kObjTag>;
inline constexpr auto& quilAddLinkShape = forwards::add<qi::kShapeTag>;
inline constexpr auto& quilAddLinkPart = forwards::add<qi::kPartTag>;
inline constexpr auto& quilAddLinkChainRoot = forwards::add<qi::kChainRootTag>;
inline constexpr auto& quilAddLinkJoint = forwards::add<qi::kJointTag>;
inline constexpr auto& quilAddLinkEffector = forwards::add<qi::kEffectorTag>;

inline int quilDeleteLinkScene(const std::string& child) { return forwards::remove<qi::kSceneTag>(0, child); }
inline constexpr auto& quilDeleteLinkObj = forwards::remove<qi::kObjTag>;
inline constexpr auto& quilDeleteLinkShape = forwards::remove<qi::kShapeTag>;
inline constexpr auto& quilDeleteLinkPart = forwards::remove<qi::kPartTag>;
inline constexpr auto& quilDeleteLinkMat = forwards::remove<qi::kMatTag>;
inline constexpr auto& quilDeleteLinkChainRoot = forwards::remove<qi::kChainRootTag>;
inline constexpr auto& quilDeleteLinkJoint = forwards::remove<qi::kJointTag>;
inline constexpr auto& quilDeleteLinkEffector = forwards::remove<qi::kEffectorTag>;

// Another child under the same parent.
inline int quilModifyOneLink(std::span<Word> children, Word old_child, Word new_child) {
  return exchange_entry(children, old_child, new_child, qi::print_message);
}
inline constexpr auto& quilModifyLinkScene = forwards::exchange<qi::kSceneTag>;
inline constexpr auto& quilModifyLinkObj = forwards::exchange<qi::kObjTag>;
inline constexpr auto& quilModifyLinkShape = forwards::exchange<qi::kShapeTag>;
inline constexpr auto& quilModifyLinkPart = forwards::exchange<qi::kPartTag>;
inline constexpr auto& quilModifyLinkMat = forwards::exchange<qi::kMatTag>;
inline constexpr auto& quilModifyLinkChainRoot = forwards::exchange<qi::kChainRootTag>;
inline constexpr auto& quilModifyLinkJoint = forwards::exchange<qi::kJointTag>;
inline constexpr auto& quilModifyLinkEffector = forwards::exchange<qi::kEffectorTag>;

// The same child under another parent, of the kind in the name.
inline constexpr auto& quilModifyLinkSceneP = forwards::hand_over<qi::kSceneTag>;
inline constexpr auto& quilModifyLinkObjP = forwards::hand_over<qi::kObjTag>;
inline constexpr auto& quilModifyLinkShapeP = forwards::hand_over<qi::kShapeTag>;
inline constexpr auto& quilModifyLinkPartP = forwards::hand_over<qi::kPartTag>;
inline constexpr auto& quilModifyLinkMatP = forwards::hand_over<qi::kMatTag>;
inline constexpr auto& quilModifyLinkChainRootP = forwards::hand_over<qi::kChainRootTag>;
inline constexpr auto& quilModifyLinkJointP = forwards::hand_over<qi::kJointTag>;
inline constexpr auto& quilModifyLinkEffectorP = forwards::hand_over<qi::kEffectorTag>;

// What is taken from the old parent of a child that moved away.
inline constexpr auto& quilDelete_obj = forwards::leave<qi::kObjTag>;
inline constexpr auto& quilDelete_anim = forwards::leave_slot<qi::kAnimTag>;
inline constexpr auto& quilDelete_ChainRoot = forwards::leave<qi::kChainRootTag>;
inline constexpr auto& quilDelete_joint = forwards::leave_slot<qi::kJointTag>;

// Single links.
inline int add_scene_obj(Word obj) { return forwards::add_to<qi::kSceneTag, qi::kObjTag>(0, obj); }
inline constexpr auto& add_obj_child = forwards::add_to<qi::kObjTag, qi::kObjTag>;
inline constexpr auto& add_mat_tex = forwards::add_to<qi::kMatTag, qi::kTexTag>;
inline int delete_scene_obj(Word obj) { return forwards::remove_from<qi::kSceneTag, qi::kObjTag>(0, obj); }
inline constexpr auto& delete_obj_child = forwards::remove_from<qi::kObjTag, qi::kObjTag>;
inline constexpr auto& delete_mat_tex = forwards::remove_from<qi::kMatTag, qi::kTexTag>;
inline constexpr auto& delete_obj_shape = forwards::unset<qi::kObjTag, qi::kShapeTag>;
inline constexpr auto& delete_obj_mat = forwards::unset<qi::kObjTag, qi::kMatTag>;
inline constexpr auto& delete_obj_anim = forwards::unset<qi::kObjTag, qi::kAnimTag>;
inline constexpr auto& delete_shape_mat = forwards::unset<qi::kShapeTag, qi::kMatTag>;
inline constexpr auto& delete_part_mat = forwards::unset<qi::kPartTag, qi::kMatTag>;

/// Appends a record to a list. Only the NameList (kind 0x110100) can grow in this way.
/// @returns the number of the new record; 0, with nothing added, for any other kind.
inline Word addQuilNode(Word kind) { return kind == qi::kNameTag ? qiAddName(*qis) - 1 : 0; }

inline Word set_node_name(std::string_view text, Word name_index) {
  return set_node_name(*qis, text, name_index);
}
inline std::string get_name_string(Word name_index) { return get_name_string(*qis, name_index); }
