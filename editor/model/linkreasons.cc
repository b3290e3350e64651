/// @file
/// The link rules' refusals in words.
#include "editor/model/linkreasons.h"

#include <algorithm>
#include <utility>

#include "editor/model/modifygraph.h"
#include "editor/model/nodenames.h"
#include "qilib/references.h"

namespace {

std::string kind_name(Word tag) { return std::string(kind_of_tag(tag)->prefix); }

bool holds(const Qis& scene, const qi::Reference& kinds, Word parent, Word child) {
  const auto held = kinds.held(scene, parent);
  return std::ranges::find(held, child) != held.end();
}

}  // namespace

std::string why_not_linked(const Qis& scene, const std::string& parent, const std::string& child) {
  const auto from = find_node_id(parent), to = find_node_id(child);
  for (const auto& [node, name] : {std::pair(from, parent), std::pair(to, child)})
    if (!node || node->number >= qi::record_count(scene, node->kind)) return name + " stands for no record";
  const qi::Reference* const kinds = qi::find_reference(from->kind, to->kind);
  if (!kinds || !can_be_linked(from->kind, to->kind))
    return "No arc can lead from " + kind_name(from->kind) + " to " + kind_name(to->kind);
  const auto held = kinds->held(scene, from->number);
  if (kinds->single && !held.empty() && held.front() != kinds->unset)
    return parent + " refers to " + node_name(to->kind, held.front()) + " already: move that arc instead";
  if (holds(scene, *kinds, from->number, to->number)) return parent + " refers to " + child + " already";
  if (held.size() >= kinds->limit)
    return parent + " refers to " + std::to_string(held.size()) + " " + kind_name(to->kind) +
           " already, and can't have more";
  if (kinds->refuses_two_loop && holds(scene, *kinds, to->number, from->number))
    return child + " refers to " + parent;
  return "The record of " + parent + " can't hold it";
}

std::string why_not_moved(const Qis& scene, const std::string& old_child, const std::string& new_parent,
                          const std::string& new_child) {
  if (tagofnd(old_child) != tagofnd(new_child))
    return "The end of an arc to " + old_child + " can only move to a node of its kind";
  return why_not_linked(scene, new_parent, new_child);
}
