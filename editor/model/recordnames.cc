/// @file
/// The texts by which records of a scene are named.
#include "editor/model/recordnames.h"

#include <cstdio>

#include "editor/model/nodenames.h"
#include "qilib/names.h"

Word set_node_name(Qis& scene, std::string_view text, Word name_index) {
  if (name_index == kUnset) name_index = qiAddName(scene) - 1;
  std::string stored(text);
  qiSetName(scene, name_index, stored);
  return name_index;
}

std::string get_name_string(const Qis& scene, Word name_index) {
  const auto& names = scene.name_list.records;
  return name_index < names.size() ? qiGetName(names[name_index]) : std::string();
}

std::string record_name(Qis& scene, std::string_view node) {
  const auto named = find_node(node);
  const Word* const index = named ? named->kind->name_index(scene, named->number) : nullptr;
  return index ? get_name_string(scene, *index) : std::string();
}

bool require_nameable(const Qis& scene, std::string_view node, Word name_index) {
  const std::size_t names = scene.name_list.records.size();
  if (name_index == kUnset || name_index < names) return true;
  std::fprintf(stderr, "%.*s: can't be renamed: its name index is %u, and the scene has %zu name%s\n",
               static_cast<int>(node.size()), node.data(), name_index, names, names == 1 ? "" : "s");
  return false;
}

int name_node(Qis& scene, std::string_view node, std::string_view text) {
  const auto named = find_node(node);
  if (!named || named->kind->tag == 0) return 0;
  Word* const index = named->kind->name_index(scene, named->number);
  if (!index || !require_nameable(scene, node, *index)) return 0;
  *index = set_node_name(scene, text, *index);
  return 1;
}
