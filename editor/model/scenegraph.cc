/// @file
/// A scene as a graph.
#include "editor/model/scenegraph.h"

#include <span>
#include <unordered_map>

#include "editor/model/nodenames.h"
#include "qilib/references.h"
#include "qilib/sizes.h"

namespace {

using qi::Reference;

class Builder {
 public:
  explicit Builder(const Qis& scene) : scene_(scene) {
    // Beside the scene's own node, a node for each obj, shape and the like is the usual case.
    for (const NodeKind& kind : node_kinds()) expected_nodes_ += qi::record_count(scene, kind.tag);
    numbers_.reserve(expected_nodes_);
    graph_.nodes.reserve(expected_nodes_);
    node(qi::kSceneTag, 0);
  }

  /// Draws what the records of one parent kind refer to, record by record; `rows` all have that parent.
  void walk(std::span<const Reference> rows) {
    const Word parent_kind = rows.front().parent;
    const std::size_t records = qi::record_count(scene_, parent_kind);
    for (Word i = 0; i < records; ++i)
      for (const Reference& row : rows)
        for (const Word child : row.held(scene_, i)) {
          if (row.single && child == row.unset) continue;
          const std::uint32_t parent = node(parent_kind, i);
          arc(parent, node(row.child, child));
        }
  }

  /// Hangs a node of its own under each obj that has levels of detail.
  void walk_levels_of_detail() {
    const auto& objs = scene_.obj_list.records;
    for (Word i = 0; i < objs.size(); ++i) {
      if (objs[i].fixed.lod_count == 0) continue;
      const std::uint32_t parent = node(qi::kObjTag, i);
      arc(parent, append(string_d(kLodPrefix, i), std::string(kLodLabel)));
    }
  }

  SceneGraph take() { return std::move(graph_); }

 private:
  /// The number of a record's node, which enters the graph if it isn't there yet.
  std::uint32_t node(Word kind, Word number) {
    const std::uint64_t key = std::uint64_t{kind} << 32 | number;
    const auto [found, fresh] = numbers_.try_emplace(key, static_cast<std::uint32_t>(graph_.nodes.size()));
    if (fresh) {
      std::string name = node_name(kind, number);
      append(name, name);
    }
    return found->second;
  }

  std::uint32_t append(std::string name, std::string label) {
    graph_.nodes.push_back({std::move(name), std::move(label)});
    return static_cast<std::uint32_t>(graph_.nodes.size() - 1);
  }

  void arc(std::uint32_t parent, std::uint32_t child) { graph_.arcs.push_back({parent, child}); }

  const Qis& scene_;
  std::size_t expected_nodes_ = 1;
  SceneGraph graph_;
  std::unordered_map<std::uint64_t, std::uint32_t> numbers_;  ///< by kind and record number
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
