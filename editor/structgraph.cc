/// @file
/// Walking the scene's references.
#include "editor/structgraph.h"

#include "editor/model/scenegraph.h"
#include "editor/newquilnode.h"

VkNode* quil_node(VkGraph& graph, const std::string& name, const TextureDisplay& textures) {
  if (VkNode* const node = graph.find(name)) return node;
  return graph.make<QuilVkNode>(textures, name.c_str());
}

void struct_graph(const Qis& scene, VkGraph& graph, const TextureDisplay& textures) {
  const SceneGraph built = scene_graph(scene);
  graph.add(quil_node(graph, built.nodes.front().name, textures));
  for (const auto& arc : built.arcs) {
    VkNode* const parent = quil_node(graph, built.nodes[arc.parent].name, textures);
    const auto& child = built.nodes[arc.child];
    graph.add(parent, child.kind == &kNodeKind<LevelsOfDetail>
                          ? graph.make<QuilVkNode>(textures, child.name.c_str(), child.label())
                          : quil_node(graph, child.name, textures));
  }
}
