/// @file
/// Node names and kinds.
#include "editor/model/nodenames.h"

#include <algorithm>
#include <cstdlib>

#include "qilib/tags.h"

namespace {

constexpr NodeKind kNodeKinds[] = {
    {"scene", qi::kSceneTag},
    {"obj", qi::kObjTag},
    {"shape", qi::kShapeTag},
    {"part", qi::kPartTag},
    {"mat", qi::kMatTag},
    {"tex", qi::kTexTag},
    {"anim", qi::kAnimTag},
    {"cam", qi::kCamTag},
    {"light", qi::kLightTag},
    {"env", qi::kEnvTag},
    {"ChainRoot", qi::kChainRootTag},
    {"joint", qi::kJointTag},
    {"effector", qi::kEffectorTag},
};

const NodeKind* find_kind(Word tag) {
  const auto* kind = std::find_if(std::begin(kNodeKinds), std::end(kNodeKinds),
                                  [&](const NodeKind& k) { return k.tag == tag; });
  return kind == std::end(kNodeKinds) ? nullptr : kind;
}

}  // namespace

std::span<const NodeKind> node_kinds() { return kNodeKinds; }

Word tagofnd(std::string_view name) {
  const std::size_t underscore = name.find('_');
  if (underscore == std::string_view::npos) return 0;
  const std::string_view prefix = name.substr(0, underscore);
  for (const NodeKind& kind : kNodeKinds)
    if (kind.prefix == prefix) return kind.tag;
  return 0;
}

long indexofnd(std::string_view name) {
  const std::size_t underscore = name.find('_');
  if (underscore == std::string_view::npos) return 0;
  return std::strtol(std::string(name.substr(underscore + 1)).c_str(), nullptr, 10);
}

std::string string_d(std::string_view prefix, Word number) {
  return std::string(prefix) + std::to_string(static_cast<int>(number));
}

std::string node_name(Word kind, Word number) {
  const NodeKind* found = find_kind(kind);
  return found ? string_d(std::string(found->prefix) + "_", number) : std::string();
}

std::string nodename(const QisNodeIndex& node_index) {
  for (const Word kind : {qi::kObjTag, qi::kChainRootTag, qi::kJointTag, qi::kEffectorTag})
    if (node_index.tag == qi::list_of(kind)) return node_name(kind, node_index.index);
  return string_d("_", node_index.index);
}

std::optional<NodeId> find_node_id(std::string_view name) {
  const NodeId id{tagofnd(name), static_cast<Word>(indexofnd(name))};
  if (id.kind == 0 || node_name(id.kind, id.number) != name) return std::nullopt;
  return id;
}
