/// @file
/// Node names, written and read.
#include "editor/model/nodenames.h"

#include <algorithm>
#include <cstdlib>

#include "qilib/tags.h"

const NodeKind* kind_of_tag(Word tag) {
  const auto kind = std::ranges::find(kNodeKinds, tag, &NodeKind::tag);
  return tag == 0 || kind == kNodeKinds.end() ? nullptr : &*kind;
}

const NodeKind* kind_of_node(std::string_view name) {
  const std::size_t underscore = name.find('_');
  if (underscore == std::string_view::npos) return nullptr;
  const auto kind = std::ranges::find(kNodeKinds, name.substr(0, underscore), &NodeKind::prefix);
  return kind == kNodeKinds.end() ? nullptr : &*kind;
}

Word tagofnd(std::string_view name) {
  const NodeKind* const kind = kind_of_node(name);
  return kind ? kind->tag : 0;
}

long indexofnd(std::string_view name) {
  const std::size_t underscore = name.find('_');
  if (underscore == std::string_view::npos) return 0;
  return std::strtol(std::string(name.substr(underscore + 1)).c_str(), nullptr, 10);
}

std::string string_d(std::string_view prefix, Word number) {
  return std::string(prefix) + std::to_string(static_cast<int>(number));
}

std::string node_name(const NodeKind& kind, Word number) {
  return string_d(std::string(kind.prefix) + "_", number);
}

std::string node_name(Word tag, Word number) {
  const NodeKind* const kind = kind_of_tag(tag);
  return kind ? node_name(*kind, number) : std::string();
}

std::string nodename(const QisNodeIndex& node_index) {
  for (const NodeKind& kind : kNodeKinds)
    if (kind.tied && node_index.tag == qi::list_of(kind.tag)) return node_name(kind, node_index.index);
  return string_d("_", node_index.index);
}

std::optional<NamedNode> find_node(std::string_view name) {
  const NodeKind* const kind = kind_of_node(name);
  const auto number = static_cast<Word>(indexofnd(name));
  if (!kind || node_name(*kind, number) != name) return std::nullopt;
  return NamedNode{kind, number};
}

std::optional<NodeId> find_node_id(std::string_view name) {
  const auto node = find_node(name);
  if (!node || node->kind->tag == 0) return std::nullopt;
  return NodeId{node->kind->tag, node->number};
}
