/// @file
/// The texts by which records of the current scene are named.
#include "editor/model/recordnames.h"

#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "qilib/lists.h"
#include "qilib/names.h"
#include "qilib/references.h"

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

Word* name_index_of(Qis& scene, Word kind, Word number) {
  Word* index = nullptr;
  if (number >= qi::record_count(scene, kind)) return index;
  qi::for_each_list(scene, [&](const qi::ListInfo& info, auto& list) {
    if (info.tag != qi::list_of(kind)) return;
    if constexpr (requires { list.fixed.name; }) {
      index = &list.fixed.name;
    } else if constexpr (requires { list.records[number].fixed.name; }) {
      index = &list.records[number].fixed.name;
    }
  });
  return index;
}

int name_node(std::string_view node, std::string_view text) {
  const auto id = find_node_id(node);
  Word* const index = id ? name_index_of(*qis, id->kind, id->number) : nullptr;
  if (!index || (*index != kUnset && *index >= qis->name_list.records.size())) return 0;
  *index = set_node_name(text, *index);
  return 1;
}
