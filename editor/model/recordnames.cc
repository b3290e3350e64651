/// @file
/// The texts by which records of the current scene are named.
#include "editor/model/recordnames.h"

#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "qilib/names.h"

Word addQuilNode(Word kind) { return kind == qi::kNameTag ? qiAddName(*qis) - 1 : 0; }

Word set_node_name(std::string_view text, Word name_index) {
  if (name_index == kUnset) name_index = addQuilNode(qi::kNameTag);
  std::string stored(text);
  qiSetName(*qis, name_index, stored);
  return name_index;
}

std::string get_name_string(Word name_index) {
  const auto& names = qis->name_list.records;
  return name_index < names.size() ? qiGetName(names[name_index]) : std::string();
}

int name_node(std::string_view node, std::string_view text) {
  const auto named = find_node(node);
  if (!named || named->kind->tag == 0) return 0;
  Word* const index = named->kind->name_index(*qis, named->number);
  if (!index || (*index != kUnset && *index >= qis->name_list.records.size())) return 0;
  *index = set_node_name(text, *index);
  return 1;
}
