/// @file
/// A scene as a graph.
#include "editor/model/scenegraph.h"

#include <array>
#include <iterator>
#include <span>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "editor/model/nodenames.h"
#include "qilib/references.h"
#include "qilib/sizes.h"

namespace {

using qi::Reference;

class Builder {
 public:
  explicit Builder(const Qis& scene) : scene_(scene) {
    // Beside the scene's own node, a node for each obj, shape and the like is the usual case.
    std::size_t expected = 1;
    for (const NodeKind& kind : kNodeKinds) {
      const std::size_t records = qi::record_count(scene, kind.tag);
      numbers_[kind_place(kind)].resize(records, kNone);
      expected += records;
    }
    graph_.nodes.reserve(expected);
    node(kNodeKind<qi::Scene>, 0);
  }

  /// Draws what the records of one parent kind refer to, record by record; `rows` all have that parent.
  void walk(std::span<const Reference> rows) {
    const Word tag = rows.front().parent;
    const NodeKind* const parent_kind = kind_of_tag(tag);
    if (!parent_kind) return;
    std::vector<std::pair<const Reference*, const NodeKind*>> shown;
    for (const Reference& row : rows)
      if (const NodeKind* const child_kind = kind_of_tag(row.child)) shown.emplace_back(&row, child_kind);
    const std::size_t records = qi::record_count(scene_, tag);
    for (Word i = 0; i < records; ++i)
      for (const auto& [row, child_kind] : shown)
        for (const Word child : row->held(scene_, i)) {
          if (row->single && child == row->unset) continue;
          const std::uint32_t parent = node(*parent_kind, i);
          arc(parent, node(*child_kind, child));
        }
  }

  /// Hangs a node of its own under each obj that has levels of detail.
  void walk_levels_of_detail() {
    const auto& objs = scene_.obj_list.records;
    for (Word i = 0; i < objs.size(); ++i) {
      if (objs[i].fixed.lod_count == 0) continue;
      const std::uint32_t parent = node(kNodeKind<qi::Obj>, i);
      arc(parent, append(kNodeKind<LevelsOfDetail>, i));
    }
  }

  SceneGraph take() { return std::move(graph_); }

 private:
  /// The number of a record's node, which enters the graph if it isn't there yet.
  std::uint32_t node(const NodeKind& kind, Word number) {
    std::vector<std::uint32_t>& records = numbers_[kind_place(kind)];
    if (number < records.size()) {
      if (records[number] == kNone) records[number] = append(kind, number);
      return records[number];
    }
    const std::uint64_t key = std::uint64_t{kind.tag} << 32 | number;
    const auto [found, fresh] = dangling_.try_emplace(key, static_cast<std::uint32_t>(graph_.nodes.size()));
    if (fresh) append(kind, number);
    return found->second;
  }

  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  std::uint32_t append(const NodeKind& kind, Word number) {
    graph_.nodes.push_back({node_name(kind, number), &kind});
    return static_cast<std::uint32_t>(graph_.nodes.size() - 1);
  }

  void arc(std::uint32_t parent, std::uint32_t child) { graph_.arcs.push_back({parent, child}); }

  const Qis& scene_;
  SceneGraph graph_;
  /// The numbers of records' nodes, by kind and record; kNone: not in the graph yet.
  std::array<std::vector<std::uint32_t>, std::size(kNodeKinds)> numbers_;
  /// Those of nodes without a record, by kind and number.
  std::unordered_map<std::uint64_t, std::uint32_t> dangling_;
};

}  // namespace

SceneGraph scene_graph(const Qis& scene) {
  Builder builder(scene);
  auto rows = qi::references();
  const auto walk_rows_while = [&](auto&& wanted) {
    while (!rows.empty() && wanted(rows.front())) {
      std::size_t run = 1;
      while (run < rows.size() && rows[run].parent == rows.front().parent && wanted(rows[run])) ++run;
      builder.walk(rows.first(run));
      rows = rows.subspan(run);
    }
  };
  walk_rows_while([](const Reference& row) { return !qi::is_version2(row); });
  builder.walk_levels_of_detail();
  if (qiQUILver(scene.header) >= qi::kVersion2) walk_rows_while(qi::is_version2);
  return builder.take();
}

std::vector<SceneGraph::Node> unlinked_records(const Qis& scene, const SceneGraph& graph) {
  std::unordered_set<std::string_view> shown;
  for (const SceneGraph::Node& node : graph.nodes) shown.insert(node.name);
  std::vector<SceneGraph::Node> unlinked;
  for (const NodeKind& kind : kNodeKinds) {
    const std::size_t records = kind.tag == 0 ? 0 : qi::record_count(scene, kind.tag);
    for (Word number = 0; number < records; ++number)
      if (std::string name = node_name(kind, number); !shown.contains(name))
        unlinked.push_back({std::move(name), &kind});
  }
  return unlinked;
}
