/// @file
/// Walking the scene's references.
#include "editor/structgraph.h"

#include <cstddef>
#include <memory>

#include "editor/newquilnode.h"

namespace {

// What the program was seen to take in all, and some more.
constexpr std::size_t kBytesPerNode = 2500;
constexpr std::size_t kBytesPerArc = 1000;
constexpr std::size_t kBytesForTheRest = 8 << 20;  // dialogs, messages

}  // namespace

VkNode* quil_node(VkGraph& graph, const std::string& name, const TextureDisplay& textures) {
  if (VkNode* const node = graph.find(name)) return node;
  return graph.make<QuilVkNode>(textures, name.c_str());
}

void struct_graph(const Qis& scene, VkGraph& graph, const TextureDisplay& textures) {
  struct_graph(scene_graph(scene), graph, textures, [](double) {});
}

void require_memory_for(const SceneGraph& scene) {
  const std::size_t bytes =
      kBytesPerNode * scene.nodes.size() + kBytesPerArc * scene.arcs.size() + kBytesForTheRest;
  const auto room = std::make_unique_for_overwrite<std::byte[]>(bytes);
  *static_cast<volatile std::byte*>(room.get()) = {};  // or the compiler leaves it all out
}

void struct_graph(const SceneGraph& built, VkGraph& graph, const TextureDisplay& textures,
                  const std::function<void(double)>& progress) {
  constexpr std::size_t kArcsPerReport = 1000;
  graph.add(quil_node(graph, built.nodes.front().name, textures));
  for (std::size_t i = 0; i < built.arcs.size(); ++i) {
    const auto& arc = built.arcs[i];
    if (i % kArcsPerReport == 0) progress(static_cast<double>(i) / static_cast<double>(built.arcs.size()));
    VkNode* const parent = quil_node(graph, built.nodes[arc.parent].name, textures);
    const auto& child = built.nodes[arc.child];
    graph.add(parent, child.kind == &kNodeKind<LevelsOfDetail>
                          ? graph.make<QuilVkNode>(textures, child.name.c_str(), child.label())
                          : quil_node(graph, child.name, textures));
  }
}
