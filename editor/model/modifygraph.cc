/// @file
/// The link rules: a table, and what adding, deleting and moving make of its rows.
#include "editor/model/modifygraph.h"

#include <algorithm>

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
const LinkRule* find_rule(Word parent_kind, Word child_kind, Offer offer = Offer::all) {
  const auto* rule = std::find_if(std::begin(kLinkRules), std::end(kLinkRules), [&](const LinkRule& r) {
    return r.parent == parent_kind && r.child == child_kind &&
           (r.odd.offer == Offer::all || r.odd.offer == offer);
  });
  return rule == std::end(kLinkRules) ? nullptr : rule;
}

const Reference& reference(const LinkRule& rule) { return *find_reference(rule.parent, rule.child); }

bool exists(const Qis& scene, NodeId node) { return node.number < record_count(scene, node.kind); }

/// Takes an entry out of an array: the first that is the child, or, if there is none, the last. An empty
/// array is none the worse for it.
int delete_entry_or_last(Qis& scene, const Reference& kinds, const Place& place, Word parent, Word child) {
  Words& entries = *place.entries;
  if (entries.empty()) return 1;
  const auto entry = std::find(entries.begin(), entries.end(), child);
  entries.erase(entry != entries.end() ? entry : entries.end() - 1);
  --*place.count;
  resize_place(scene, kinds, place, parent, -static_cast<std::int32_t>(sizeof(Word)));
  return 1;
}

int delete_by_rule(Qis& scene, const LinkRule& rule, Word parent, Word child, const MessageSink& sink) {
  const Reference& kinds = reference(rule);
  const Place place = kinds.place(scene, parent);
  if (!place) return 0;
  if (rule.odd.absent == Absent::drops_last) return delete_entry_or_last(scene, kinds, place, parent, child);
  return delete_reference(scene, kinds, parent, child, sink) || rule.odd.absent == Absent::accepted;
}

std::size_t references_to(const Qis& scene, const Reference& kinds, Word parent, Word child) {
  if (kinds.single && child == kinds.unset) return 0;
  return static_cast<std::size_t>(std::ranges::count(kinds.held(scene, parent), child));
}

/// Why a child can't come from another parent.
Refusal why_not_moved(const Qis& scene, NodeId old_parent, NodeId new_parent, NodeId child) {
  const LinkRule* rule = find_rule(new_parent.kind, child.kind);
  if (!rule) return Refusal::no_rule;
  if (!exists(scene, old_parent)) return Refusal::no_record;
  const Refusal refusal = qi::why_not_added(scene, reference(*rule), new_parent.number, child.number);
  const bool again = refusal == Refusal::held && rule->odd.arrival == Arrival::overwriting;
  return again ? Refusal::none : refusal;
}

/// Why a parent's child can't be exchanged for another of its kind.
Refusal why_not_exchanged(const Qis& scene, NodeId parent, NodeId old_child, Word new_child) {
  const LinkRule* rule = find_rule(parent.kind, old_child.kind, Offer::child_move);
  if (!rule) return Refusal::no_rule;
  if (!exists(scene, {old_child.kind, new_child})) return Refusal::no_record;
  const Reference& kinds = reference(*rule);
  if (!kinds.has_place(scene, parent.number) || (kinds.single && old_child.number == kinds.unset))
    return Refusal::no_place;
  const auto held = kinds.held(scene, parent.number);
  if (std::ranges::find(held, old_child.number) == held.end()) return Refusal::not_referred;
  return std::ranges::find(held, new_child) == held.end() ? Refusal::none : Refusal::held;
}

}  // namespace

Refusal why_not_added(const Qis& scene, NodeId parent, NodeId child) {
  const LinkRule* rule = find_rule(parent.kind, child.kind);
  if (!rule) return Refusal::no_rule;
  const Reference& kinds = reference(*rule);
  const Refusal refusal = qi::why_not_added(scene, kinds, parent.number, child.number);
  if (refusal != Refusal::none || !kinds.single) return refusal;
  return kinds.held(scene, parent.number).front() == kinds.unset ? Refusal::none : Refusal::taken;
}

Refusal why_not_moved(const Qis& scene, NodeId old_parent, NodeId old_child, NodeId new_parent,
                      NodeId new_child) {
  if (old_parent != new_parent)
    return old_child == new_child ? why_not_moved(scene, old_parent, new_parent, old_child)
                                  : Refusal::not_one_end;
  if (old_child == new_child) return Refusal::not_one_end;
  if (old_child.kind != new_child.kind) return Refusal::other_kind;
  return why_not_exchanged(scene, old_parent, old_child, new_child.number);
}

int add_link(Qis& scene, NodeId parent, NodeId child) {
  if (why_not_added(scene, parent, child) != Refusal::none) return 0;
  return add_reference(scene, *find_reference(parent.kind, child.kind), parent.number, child.number);
}

int delete_link(Qis& scene, NodeId parent, NodeId child, const MessageSink& sink) {
  const LinkRule* rule = find_rule(parent.kind, child.kind);
  if (!rule) return 0;
  // Such a number has a node (obj_-1) only where a damaged record refers to it.
  constexpr Word kLastIndex = 0x7FFFFFFF;
  if (child.number > kLastIndex && references_to(scene, reference(*rule), parent.number, child.number) == 0)
    return 0;
  return delete_by_rule(scene, *rule, parent.number, child.number, sink);
}

int exchange_entry(std::span<Word> entries, Word old_entry, Word new_entry, const MessageSink& sink) {
  const auto entry = std::find(entries.begin(), entries.end(), old_entry);
  if (entry == entries.end()) {
    sink({.code = MessageCode::already_changed, .found = old_entry});
    return 0;
  }
  if (std::find(entries.begin(), entries.end(), new_entry) != entries.end()) {
    sink({.code = MessageCode::already_linked, .found = new_entry});
    return 0;
  }
  *entry = new_entry;
  return 1;
}

int change_child(Qis& scene, NodeId parent, NodeId old_child, Word new_child, const MessageSink& sink) {
  const Refusal refusal = why_not_exchanged(scene, parent, old_child, new_child);
  // Of those, who exchanges the entries tells himself.
  if (refusal != Refusal::none && refusal != Refusal::held && refusal != Refusal::not_referred) return 0;
  const Place place = find_reference(parent.kind, old_child.kind)->place(scene, parent.number);
  const auto entries = place.slot ? std::span(place.slot, 1) : std::span(*place.entries);
  return exchange_entry(entries, old_child.number, new_child, sink);
}

int leave_parent(Qis& scene, NodeId parent, NodeId child, const MessageSink& sink) {
  const LinkRule* rule = find_rule(parent.kind, child.kind);
  if (!rule) {
    sink({.code = MessageCode::unexpected_link, .found = parent.kind});
    return 0;
  }
  if (!exists(scene, parent)) return 0;
  delete_by_rule(scene, *rule, parent.number, child.number, sink);
  return 1;
}

int change_parent(Qis& scene, NodeId old_parent, NodeId new_parent, NodeId child, const MessageSink& sink) {
  if (why_not_moved(scene, old_parent, new_parent, child) != Refusal::none) return 0;
  const LinkRule* rule = find_rule(new_parent.kind, child.kind);
  const Reference& kinds = reference(*rule);
  const Place place = kinds.place(scene, new_parent.number);
  if (place.slot)
    *place.slot = child.number;
  else
    add_reference(scene, kinds, new_parent.number, child.number);
  // The child has its new parent; whatever the old one answers, the move is made. An assumed old parent may
  // turn out to be the new one, which must keep what it just got.
  const NodeId left{rule->odd.assumed_old_parent ? rule->odd.assumed_old_parent : old_parent.kind,
                    old_parent.number};
  const bool silent =
      rule->odd.old_parent == OldParent::silently_by_kind && !find_rule(left.kind, child.kind);
  if (left != new_parent && !silent) leave_parent(scene, left, child, sink);
  return 1;
}

int move_link(Qis& scene, NodeId old_parent, NodeId old_child, NodeId new_parent, NodeId new_child,
              const MessageSink& sink) {
  if (old_parent != new_parent)
    return old_child == new_child ? change_parent(scene, old_parent, new_parent, old_child, sink) : 0;
  if (old_child.kind != new_child.kind || old_child == new_child) return 0;
  return change_child(scene, old_parent, old_child, new_child.number, sink);
}

bool can_be_linked(Word parent_kind, Word child_kind) {
  return find_rule(parent_kind, child_kind) != nullptr;
}

std::size_t references_held(const Qis& scene, NodeId parent, NodeId child) {
  const Reference* const kinds = find_reference(parent.kind, child.kind);
  return kinds ? references_to(scene, *kinds, parent.number, child.number) : 0;
}

int isOnly1child(Word parent_kind, Word child_kind) {
  const Reference* kinds = find_reference(parent_kind, child_kind);
  return kinds && kinds->single ? 1 : 0;
}
