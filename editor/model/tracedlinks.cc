/// @file
/// Link edits by name, with their trace.
#include "editor/model/tracedlinks.h"

#include <cstdio>
#include <optional>

#include "editor/model/modifygraph.h"

namespace {

void print_node(const char* label, const std::string& name) {
  std::printf("%s = %0#10x, %d\n", label, tagofnd(name), static_cast<int>(indexofnd(name)));
}

struct Move {
  NodeId old_parent, old_child, new_parent, new_child;
};

/// Prints what is to be moved. @returns nothing when a name is no record's.
std::optional<Move> traced_move(const std::string& old_parent, const std::string& old_child,
                                const std::string& new_parent, const std::string& new_child) {
  std::printf("old parent = %s, old child = %s\n", old_parent.c_str(), old_child.c_str());
  std::printf("new parent = %s, new child = %s\n", new_parent.c_str(), new_child.c_str());
  print_node("old parent", old_parent);
  print_node("old child ", old_child);
  print_node("new parent", new_parent);
  print_node("new child ", new_child);
  const auto old_from = find_node_id(old_parent), old_to = find_node_id(old_child);
  const auto new_from = find_node_id(new_parent), new_to = find_node_id(new_child);
  if (!old_from || !old_to || !new_from || !new_to) return std::nullopt;
  return Move{*old_from, *old_to, *new_from, *new_to};
}

}  // namespace

int quilAddLink(Qis& scene, const std::string& parent, const std::string& child) {
  std::printf("parent = %s, child = %s\n", parent.c_str(), child.c_str());
  print_node(" parent", parent);
  print_node(" child ", child);
  const auto from = find_node_id(parent), to = find_node_id(child);
  return from && to ? add_link(scene, *from, *to) : 0;
}

int quilDeleteLink(Qis& scene, const std::string& parent, const std::string& child) {
  const auto from = find_node_id(parent), to = find_node_id(child);
  return from && to ? delete_link(scene, *from, *to, qi::print_message) : 0;
}

int quilModifyLink(Qis& scene, const std::string& old_parent, const std::string& old_child,
                   const std::string& new_parent, const std::string& new_child) {
  const auto ends = traced_move(old_parent, old_child, new_parent, new_child);
  return ends ? move_link(scene, ends->old_parent, ends->old_child, ends->new_parent, ends->new_child,
                          qi::print_message)
              : 0;
}

int quilModifySurplusLink(Qis& scene, const std::string& old_parent, const std::string& old_child,
                          const std::string& new_parent, const std::string& new_child) {
  const auto ends = traced_move(old_parent, old_child, new_parent, new_child);
  if (!ends) return 0;
  const bool child_moves = ends->old_parent == ends->new_parent && ends->old_child != ends->new_child &&
                           ends->old_child.kind == ends->new_child.kind;
  const bool parent_moves = ends->old_parent != ends->new_parent && ends->old_child == ends->new_child;
  return child_moves || parent_moves ? add_link(scene, ends->new_parent, ends->new_child) : 0;
}
