/// @file
/// Random edits of a scene: which nodes and texts they are about.
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <utility>

#include "editor/model/nodenames.h"
#include "editor/model/scenegraph.h"
#include "qilib/references.h"

/// Makes up edits: mostly sensible ones, for records and arcs that are there, and some of any kind.
class EditMaker {
 public:
  explicit EditMaker(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t n) { return n == 0 ? 0 : random_() % n; }
  bool one_in(std::size_t n) { return below(n) == 0; }

  /// A node of this kind, now and then of a record that doesn't exist.
  std::string node(const Qis& scene, Word kind) {
    const std::size_t count = qi::record_count(scene, kind);
    return node_name(kind, static_cast<Word>(below(count) + (one_in(20) ? count : 0)));
  }
  std::string any_node(const Qis& scene) {
    if (one_in(20)) return one_in(2) ? "lod_0" : "newNode";
    return node(scene, kNodeKinds[below(kNodeKinds.size())].tag);
  }
  std::string same_kind(const Qis& scene, const std::string& other) {
    const Word kind = tagofnd(other);
    return kind == 0 ? other : node(scene, kind);
  }
  /// The ends of an arc that the rules may know.
  std::pair<std::string, std::string> likely_pair(const Qis& scene) {
    const auto& row = qi::references()[below(qi::references().size())];
    return {node(scene, row.parent), node(scene, row.child)};
  }
  std::pair<std::string, std::string> pair(const Qis& scene) {
    return one_in(6) ? std::pair{any_node(scene), any_node(scene)} : likely_pair(scene);
  }
  /// The ends of an arc that is there, or, in a scene without arcs, of any.
  std::pair<std::string, std::string> drawn_pair(const Qis& scene) {
    const SceneGraph graph = scene_graph(scene);
    if (graph.arcs.empty()) return pair(scene);
    const auto& arc = graph.arcs[below(graph.arcs.size())];
    return {graph.nodes[arc.parent].name, graph.nodes[arc.child].name};
  }
  /// The ends of an arc before and after a move of one of them.
  struct Move {
    std::string old_parent, old_child, new_parent, new_child;
  };
  Move move(const Qis& scene) {
    const auto [old_parent, old_child] = one_in(8) ? pair(scene) : drawn_pair(scene);
    const auto other = [&](const std::string& node) {
      return one_in(8) ? any_node(scene) : same_kind(scene, node);
    };
    if (one_in(2)) return {old_parent, old_child, old_parent, other(old_child)};
    return {old_parent, old_child, one_in(3) ? any_node(scene) : other(old_parent), old_child};
  }
  std::string text() {
    std::string text(below(12), ' ');
    for (char& c : text) c = "ab _z"[below(5)];
    return text;
  }

 private:
  std::mt19937 random_;
};
