/// @file
/// The link rules: a table, and what adding, deleting and moving make of its rows.
#include "editor/model/modifygraph.h"

#include <algorithm>
#include <cstdio>

#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "qilib/edit.h"
#include "qilib/references.h"
#include "qilib/tags.h"

namespace {

using namespace qi;

/// Which edits a pair of kinds offers.
enum class Offer {
  all,
  child_move  ///< only exchanging the child under the same parent
};

/// What deleting does when the array doesn't hold the child. (A slot is simply unset, whatever it holds.)
enum class Absent {
  refused,    ///< nothing, and the answer is 0
  accepted,   ///< nothing, but the answer is 1: the arc may go
  drops_last  ///< the last entry goes in its place
};

/// What a child that comes from another parent finds in the new parent's slot.
enum class Arrival {
  tested,      ///< the new parent refuses a child that it holds already, as the library's edits do
  overwriting  ///< whatever the slot holds is replaced, the same child included
};

/// How the old parent of a child that moves away is found.
enum class OldParent {
  by_kind,          ///< by its kind; one that has no rule for the child is an "unexpected link"
  silently_by_kind  ///< the same without the line
};

/// What sets a rule apart from the others.
struct Oddity {
  Offer offer = Offer::all;
  Absent absent = Absent::refused;
  Arrival arrival = Arrival::tested;
  OldParent old_parent = OldParent::by_kind;
  /// When not 0: a child that moves to this parent is taken from a parent of this kind, whatever kind the old
  /// parent has. A graph drawn from the records knows no other; a script may name any.
  Word assumed_old_parent = 0;
};

struct LinkRule {
  Word parent, child;
  Oddity odd = {};
};

constexpr LinkRule kLinkRules[] = {
    {kSceneTag, kObjTag, {.absent = Absent::drops_last}},
    // Lights come and go with their own records; only which of them the scene uses may change.
    {kSceneTag, kLightTag, {.offer = Offer::child_move}},
    {kSceneTag, kChainRootTag, {.absent = Absent::accepted, .assumed_old_parent = kObjTag}},

    {kObjTag, kObjTag, {.absent = Absent::drops_last}},
    {kObjTag, kShapeTag, {.arrival = Arrival::overwriting, .assumed_old_parent = kObjTag}},
    {kObjTag, kMatTag, {.arrival = Arrival::overwriting, .old_parent = OldParent::silently_by_kind}},
    {kObjTag, kAnimTag, {.arrival = Arrival::overwriting}},
    {kObjTag, kChainRootTag, {.absent = Absent::accepted}},

    {kShapeTag, kMatTag, {.arrival = Arrival::overwriting, .old_parent = OldParent::silently_by_kind}},
    {kPartTag, kMatTag, {.arrival = Arrival::overwriting, .old_parent = OldParent::silently_by_kind}},

    {kMatTag, kTexTag, {.absent = Absent::drops_last, .assumed_old_parent = kMatTag}},

    {kChainRootTag, kObjTag},
    {kChainRootTag, kAnimTag},
    {kChainRootTag, kJointTag},

    {kJointTag, kObjTag},
    {kJointTag, kAnimTag},
    {kJointTag, kJointTag},
    {kJointTag, kEffectorTag, {.assumed_old_parent = kJointTag}},

    {kEffectorTag, kObjTag},
    {kEffectorTag, kAnimTag},
};

/// The row for a pair of kinds that offers at least this, or null.
const LinkRule* find_rule(Word parent_kind, Word child_kind, Offer offer) {
  const auto* rule = std::find_if(std::begin(kLinkRules), std::end(kLinkRules), [&](const LinkRule& r) {
    return r.parent == parent_kind && r.child == child_kind &&
           (r.odd.offer == Offer::all || r.odd.offer == offer);
  });
  return rule == std::end(kLinkRules) ? nullptr : rule;
}

const Reference& reference(const LinkRule& rule) { return *find_reference(rule.parent, rule.child); }

bool exists(Word kind, Word number) { return number < record_count(*qis, kind); }

int add_link(Word parent_kind, Word parent, Word child_kind, Word child) {
  const LinkRule* rule = find_rule(parent_kind, child_kind, Offer::all);
  if (!rule) return 0;
  const Reference& kinds = reference(*rule);
  const Place place = kinds.place(*qis, parent);
  if (!place || (place.slot && *place.slot != kinds.unset)) return 0;
  return add_reference(*qis, kinds, parent, child);
}

/// Takes an entry out of an array: the first that is the child, or, if there is none, the last.
int delete_entry_or_last(const Reference& kinds, const Place& place, Word parent, Word child) {
  Words& entries = *place.entries;
  if (entries.empty()) return 0;
  const auto entry = std::find(entries.begin(), entries.end(), child);
  entries.erase(entry != entries.end() ? entry : entries.end() - 1);
  --*place.count;
  resize_place(*qis, kinds, place, parent, -static_cast<std::int32_t>(sizeof(Word)));
  return 1;
}

int delete_by_rule(const LinkRule& rule, Word parent, Word child) {
  const Reference& kinds = reference(rule);
  const Place place = kinds.place(*qis, parent);
  if (!place) return 0;
  if (rule.odd.absent == Absent::drops_last) return delete_entry_or_last(kinds, place, parent, child);
  const bool accepted = rule.odd.absent == Absent::accepted && !place.entries->empty();
  return delete_reference(*qis, kinds, parent, child, print_message) || accepted ? 1 : 0;
}

bool refers_to(const Reference& kinds, Word parent, Word child) {
  const auto held = kinds.held(*qis, parent);
  return !(kinds.single && child == kinds.unset) && std::find(held.begin(), held.end(), child) != held.end();
}

int delete_link(Word parent_kind, Word parent, Word child_kind, Word child) {
  const LinkRule* rule = find_rule(parent_kind, child_kind, Offer::all);
  if (!rule) return 0;
  // Such a number has a node (obj_-1) only where a damaged record refers to it.
  constexpr Word kLastIndex = 0x7FFFFFFF;
  if (child > kLastIndex && !refers_to(reference(*rule), parent, child)) return 0;
  return delete_by_rule(*rule, parent, child);
}

int delete_link(Word parent_kind, Word parent, const std::string& child) {
  const auto id = find_node_id(child);
  return id ? delete_link(parent_kind, parent, id->kind, id->number) : 0;
}

int unset_slot(Word parent_kind, Word parent, Word child_kind) {
  const Reference& kinds = *find_reference(parent_kind, child_kind);
  return delete_reference(*qis, kinds, parent, kinds.unset, print_message);
}

int take_from_old_parent(Word old_kind, Word old_parent, Word child_kind, Word child, OldParent manner) {
  const LinkRule* rule = find_rule(old_kind, child_kind, Offer::all);
  if (!rule) {
    if (manner == OldParent::by_kind) std::printf("unexpected link, %x\n", old_kind);
    return 0;
  }
  if (!exists(old_kind, old_parent)) return 0;
  delete_by_rule(*rule, old_parent, child);
  return 1;
}

int change_child(Word parent_kind, Word parent, Word child_kind, Word new_child, Word old_child) {
  const LinkRule* rule = find_rule(parent_kind, child_kind, Offer::child_move);
  if (!rule || !exists(child_kind, new_child)) return 0;
  const Reference& kinds = reference(*rule);
  const Place place = kinds.place(*qis, parent);
  if (!place) return 0;
  if (place.slot)
    return old_child == kinds.unset ? 0 : quilModifyOneLink({place.slot, 1}, old_child, new_child);
  return quilModifyOneLink(*place.entries, old_child, new_child);
}

int change_parent(Word child_kind, Word child, Word new_kind, Word new_parent, Word old_kind,
                  Word old_parent) {
  const LinkRule* rule = find_rule(new_kind, child_kind, Offer::all);
  if (!rule || !exists(child_kind, child) || !exists(old_kind, old_parent)) return 0;
  const Reference& kinds = reference(*rule);
  const Place place = kinds.place(*qis, new_parent);
  if (place.slot && rule->odd.arrival == Arrival::overwriting) {
    *place.slot = child;
  } else if (!add_reference(*qis, kinds, new_parent, child)) {
    return 0;
  }
  // The child has its new parent; whatever the old one answers, the move is made. An assumed old parent may
  // turn out to be the new one, which must keep what it just got.
  const Word taken_from = rule->odd.assumed_old_parent ? rule->odd.assumed_old_parent : old_kind;
  if (taken_from != new_kind || old_parent != new_parent)
    take_from_old_parent(taken_from, old_parent, child_kind, child, rule->odd.old_parent);
  return 1;
}

void print_node(const char* label, const std::string& name) {
  std::printf("%s = %0#10x, %d\n", label, tagofnd(name), static_cast<int>(indexofnd(name)));
}

}  // namespace

int quilAddLink(const std::string& parent, const std::string& child) {
  std::printf("parent = %s, child = %s\n", parent.c_str(), child.c_str());
  print_node(" parent", parent);
  print_node(" child ", child);
  const auto from = find_node_id(parent);
  const auto to = find_node_id(child);
  return from && to ? add_link(from->kind, from->number, to->kind, to->number) : 0;
}

int quilDeleteLink(const std::string& parent, const std::string& child) {
  const auto from = find_node_id(parent);
  return from ? delete_link(from->kind, from->number, child) : 0;
}

int quilModifyLink(const std::string& old_parent, const std::string& old_child, const std::string& new_parent,
                   const std::string& new_child) {
  std::printf("old parent = %s, old child = %s\n", old_parent.c_str(), old_child.c_str());
  std::printf("new parent = %s, new child = %s\n", new_parent.c_str(), new_child.c_str());
  print_node("old parent", old_parent);
  print_node("old child ", old_child);
  print_node("new parent", new_parent);
  print_node("new child ", new_child);
  const auto old_from = find_node_id(old_parent), old_to = find_node_id(old_child);
  const auto new_from = find_node_id(new_parent), new_to = find_node_id(new_child);
  if (!old_from || !old_to || !new_from || !new_to) return 0;

  if (old_parent == new_parent && old_to->kind == new_to->kind && old_to->number != new_to->number)
    return change_child(new_from->kind, new_from->number, new_to->kind, new_to->number, old_to->number);
  if (old_parent != new_parent && old_child == new_child)
    return change_parent(new_to->kind, new_to->number, new_from->kind, new_from->number, old_from->kind,
                         old_from->number);
  return 0;
}

int isOnly1child(Word parent_kind, Word child_kind) {
  const Reference* kinds = find_reference(parent_kind, child_kind);
  return kinds && kinds->single ? 1 : 0;
}

int quilModifyOneLink(std::span<Word> children, Word old_child, Word new_child) {
  const auto entry = std::find(children.begin(), children.end(), old_child);
  if (entry == children.end()) {
    std::printf("already changed ??\n");
    return 0;
  }
  if (std::find(children.begin(), children.end(), new_child) != children.end()) {
    std::printf("already linked ??\n");
    return 0;
  }
  *entry = new_child;
  return 1;
}

int quilAddLinkScene(Word child_kind, Word child) { return add_link(kSceneTag, 0, child_kind, child); }
int quilAddLinkObj(Word child_kind, Word child, Word parent) {
  return add_link(kObjTag, parent, child_kind, child);
}
int quilAddLinkShape(Word child_kind, Word child, Word parent) {
  return add_link(kShapeTag, parent, child_kind, child);
}
int quilAddLinkPart(Word child_kind, Word child, Word parent) {
  return add_link(kPartTag, parent, child_kind, child);
}
int quilAddLinkChainRoot(Word child_kind, Word child, Word parent) {
  return add_link(kChainRootTag, parent, child_kind, child);
}
int quilAddLinkJoint(Word child_kind, Word child, Word parent) {
  return add_link(kJointTag, parent, child_kind, child);
}
int quilAddLinkEffector(Word child_kind, Word child, Word parent) {
  return add_link(kEffectorTag, parent, child_kind, child);
}

int quilDeleteLinkScene(const std::string& child) { return delete_link(kSceneTag, 0, child); }
int quilDeleteLinkObj(Word parent, const std::string& child) { return delete_link(kObjTag, parent, child); }
int quilDeleteLinkShape(Word parent, const std::string& child) {
  return delete_link(kShapeTag, parent, child);
}
int quilDeleteLinkPart(Word parent, const std::string& child) { return delete_link(kPartTag, parent, child); }
int quilDeleteLinkMat(Word parent, const std::string& child) { return delete_link(kMatTag, parent, child); }
int quilDeleteLinkChainRoot(Word parent, const std::string& child) {
  return delete_link(kChainRootTag, parent, child);
}
int quilDeleteLinkJoint(Word parent, const std::string& child) {
  return delete_link(kJointTag, parent, child);
}
int quilDeleteLinkEffector(Word parent, const std::string& child) {
  return delete_link(kEffectorTag, parent, child);
}

int quilModifyLinkScene(Word child_kind, Word new_child, Word old_child, Word parent) {
  return change_child(kSceneTag, parent, child_kind, new_child, old_child);
}
int quilModifyLinkObj(Word child_kind, Word new_child, Word old_child, Word parent) {
  return change_child(kObjTag, parent, child_kind, new_child, old_child);
}
int quilModifyLinkShape(Word child_kind, Word new_child, Word old_child, Word parent) {
  return change_child(kShapeTag, parent, child_kind, new_child, old_child);
}
int quilModifyLinkPart(Word child_kind, Word new_child, Word old_child, Word parent) {
  return change_child(kPartTag, parent, child_kind, new_child, old_child);
}
int quilModifyLinkMat(Word child_kind, Word new_child, Word old_child, Word parent) {
  return change_child(kMatTag, parent, child_kind, new_child, old_child);
}
int quilModifyLinkChainRoot(Word child_kind, Word new_child, Word old_child, Word parent) {
  return change_child(kChainRootTag, parent, child_kind, new_child, old_child);
}
int quilModifyLinkJoint(Word child_kind, Word new_child, Word old_child, Word parent) {
  return change_child(kJointTag, parent, child_kind, new_child, old_child);
}
int quilModifyLinkEffector(Word child_kind, Word new_child, Word old_child, Word parent) {
  return change_child(kEffectorTag, parent, child_kind, new_child, old_child);
}

int quilModifyLinkSceneP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent) {
  return change_parent(child_kind, child, kSceneTag, new_parent, old_kind, old_parent);
}
int quilModifyLinkObjP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent) {
  return change_parent(child_kind, child, kObjTag, new_parent, old_kind, old_parent);
}
int quilModifyLinkShapeP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent) {
  return change_parent(child_kind, child, kShapeTag, new_parent, old_kind, old_parent);
}
int quilModifyLinkPartP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent) {
  return change_parent(child_kind, child, kPartTag, new_parent, old_kind, old_parent);
}
int quilModifyLinkMatP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent) {
  return change_parent(child_kind, child, kMatTag, new_parent, old_kind, old_parent);
}
int quilModifyLinkChainRootP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent) {
  return change_parent(child_kind, child, kChainRootTag, new_parent, old_kind, old_parent);
}
int quilModifyLinkJointP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent) {
  return change_parent(child_kind, child, kJointTag, new_parent, old_kind, old_parent);
}
int quilModifyLinkEffectorP(Word child_kind, Word child, Word new_parent, Word old_kind, Word old_parent) {
  return change_parent(child_kind, child, kEffectorTag, new_parent, old_kind, old_parent);
}

int quilDelete_obj(Word parent_kind, Word parent, Word obj) {
  return take_from_old_parent(parent_kind, parent, kObjTag, obj, OldParent::by_kind);
}
int quilDelete_anim(Word parent_kind, Word parent) {
  return take_from_old_parent(parent_kind, parent, kAnimTag, kUnset, OldParent::by_kind);
}
int quilDelete_ChainRoot(Word parent_kind, Word parent, Word chain_root) {
  return take_from_old_parent(parent_kind, parent, kChainRootTag, chain_root, OldParent::by_kind);
}
int quilDelete_joint(Word parent_kind, Word parent) {
  return take_from_old_parent(parent_kind, parent, kJointTag, kUnset, OldParent::by_kind);
}

int add_scene_obj(Word obj) { return qiAddScene_Obj(*qis, obj); }
int add_obj_child(Word parent, Word child) { return qiAddObj_Obj(*qis, parent, child); }
int add_mat_tex(Word mat, Word tex) { return qiAddMat_Tex(*qis, mat, tex); }
int delete_scene_obj(Word obj) { return delete_link(kSceneTag, 0, kObjTag, obj); }
int delete_obj_child(Word parent, Word child) { return delete_link(kObjTag, parent, kObjTag, child); }
int delete_mat_tex(Word mat, Word tex) { return delete_link(kMatTag, mat, kTexTag, tex); }
int delete_obj_shape(Word obj) { return unset_slot(kObjTag, obj, kShapeTag); }
int delete_obj_mat(Word obj) { return unset_slot(kObjTag, obj, kMatTag); }
int delete_obj_anim(Word obj) { return unset_slot(kObjTag, obj, kAnimTag); }
int delete_shape_mat(Word shape) { return unset_slot(kShapeTag, shape, kMatTag); }
int delete_part_mat(Word part) { return unset_slot(kPartTag, part, kMatTag); }
