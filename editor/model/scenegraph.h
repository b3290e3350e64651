/// @file
/// A scene as a graph: one node per record that takes part in a reference, one arc per reference.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "editor/model/kinds.h"

struct SceneGraph {
  struct Node {
    std::string name;  ///< unique but for level-of-detail nodes, which are never looked up
    const NodeKind* kind;
    /// What is shown.
    const char* label() const { return kind->label ? kind->label : name.c_str(); }
  };
  struct Arc {
    std::uint32_t parent, child;  ///< numbers in `nodes`
  };
  std::vector<Node> nodes;  ///< in the order in which they enter the graph; the first is scene_0
  std::vector<Arc> arcs;    ///< in the order in which they are drawn
};

/// The graph of a scene. References are taken as they stand: one that lies outside its list makes a node,
/// too. Loops and self-links are arcs like any other.
SceneGraph scene_graph(const Qis& scene);

/// Nodes for the records that have none in the scene's graph, since no arc leads from them or to them.
std::vector<SceneGraph::Node> unlinked_records(const Qis& scene, const SceneGraph& graph);
