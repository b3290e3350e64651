/// @file
/// The link rules' refusals in words.
#include "editor/model/linkreasons.h"

#include <initializer_list>

#include "editor/model/modifygraph.h"
#include "editor/model/nodenames.h"
#include "qilib/references.h"

namespace {

std::string noun(Word tag) { return kind_of_tag(tag)->noun; }

/// "an object"
std::string with_article(Word tag) {
  const std::string text = noun(tag);
  return (std::string("aeiou").find(text.front()) == std::string::npos ? "a " : "an ") + text;
}

/// Says of the first name that is no record's that it is not; empty: all are.
std::string why_no_record(const Qis& scene, std::initializer_list<std::string> names) {
  for (const std::string& name : names) {
    const auto node = find_node_id(name);
    if (!node || node->number >= qi::record_count(scene, node->kind)) return name + " stands for no record";
  }
  return {};
}

/// @param parent, child  what would be linked then
std::string in_words(const Qis& scene, qi::Refusal refusal, NodeId parent, NodeId child) {
  const std::string from = node_name(parent.kind, parent.number), to = node_name(child.kind, child.number);
  const qi::Reference* const kinds = qi::find_reference(parent.kind, child.kind);
  switch (refusal) {
    case qi::Refusal::none:
      return {};
    case qi::Refusal::no_rule:
      return kinds
                 ? "which " + noun(child.kind) + "s " + with_article(parent.kind) + " has can't be changed so"
                 : with_article(parent.kind) + " does not refer to " + noun(child.kind) + "s";
    case qi::Refusal::taken:
      return from + " has " + node_name(child.kind, kinds->held(scene, parent.number).front()) +
             " already: move that arc's end instead";
    case qi::Refusal::held:
      return from + " has " + to + " already";
    case qi::Refusal::full:
      return with_article(parent.kind) + " holds at most " + std::to_string(kinds->limit) + " " +
             noun(child.kind) + "s";
    case qi::Refusal::two_loop:
      return to + " has " + from + ": they can't hold each other";
    case qi::Refusal::other_kind:
      return "this end can only move to another node of its kind";
    case qi::Refusal::not_one_end:
      return "an arc moves to another place by one of its ends";
    case qi::Refusal::not_referred:
      return from + " has lost the reference that this arc stands for";
    case qi::Refusal::no_record:
    case qi::Refusal::no_place:
      break;
  }
  return "the record of " + from + " has no place for " + with_article(child.kind);
}

}  // namespace

std::string why_not_linked(const Qis& scene, const std::string& parent, const std::string& child) {
  if (std::string problem = why_no_record(scene, {parent, child}); !problem.empty()) return problem;
  const NodeId from = *find_node_id(parent), to = *find_node_id(child);
  return in_words(scene, why_not_added(scene, from, to), from, to);
}

std::string why_not_moved(const Qis& scene, const std::string& old_parent, const std::string& old_child,
                          const std::string& new_parent, const std::string& new_child) {
  const auto old_from = find_node_id(old_parent), old_to = find_node_id(old_child);
  if (!old_from || !old_to) return "this arc stands for no reference";
  if (std::string problem = why_no_record(scene, {new_parent, new_child}); !problem.empty()) return problem;
  const NodeId from = *find_node_id(new_parent), to = *find_node_id(new_child);
  return in_words(scene, why_not_moved(scene, *old_from, *old_to, from, to), from, to);
}

std::string why_not_deleted(const std::string& parent, const std::string& child) {
  return parent + " holds no such reference to " + child;
}
