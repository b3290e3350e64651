/// @file
/// Link edits by name, with their trace.
#include "editor/model/tracedlinks.h"

#include <cstdio>

#include "editor/model/modifygraph.h"

namespace {

void print_node(const char* label, const std::string& name) {
  std::printf("%s = %0#10x, %d\n", label, tagofnd(name), static_cast<int>(indexofnd(name)));
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
  std::printf("old parent = %s, old child = %s\n", old_parent.c_str(), old_child.c_str());
  std::printf("new parent = %s, new child = %s\n", new_parent.c_str(), new_child.c_str());
  print_node("old parent", old_parent);
  print_node("old child ", old_child);
  print_node("new parent", new_parent);
  print_node("new child ", new_child);
  const auto old_from = find_node_id(old_parent), old_to = find_node_id(old_child);
  const auto new_from = find_node_id(new_parent), new_to = find_node_id(new_child);
  if (!old_from || !old_to || !new_from || !new_to) return 0;
  return move_link(scene, *old_from, *old_to, *new_from, *new_to, qi::print_message);
}
