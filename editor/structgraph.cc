/// @file
/// Walking the scene's references.
#include "editor/structgraph.h"

#include <cstddef>
#include <memory>

#include "editor/model/nodenames.h"
#include "editor/newquilnode.h"

namespace {

// What the program was seen to take in all, and some more.
constexpr std::size_t kBytesPerNode = 2500;
constexpr std::size_t kBytesPerArc = 1000;
constexpr std::size_t kBytesForTheRest = 8 << 20;  // dialogs, messages

}  // namespace

VkNode* quil_node(VkGraph& graph, const std::string& name, const TextureDisplay& textures) {
  if (VkNode* const node = graph.find(name)) return node;
  if (VkNode* const node = graph.withdrawn(name)) return node;
  return graph.make<QuilVkNode>(textures, name.c_str());
}

void struct_graph(const Qis& scene, VkGraph& graph, const TextureDisplay& textures) {
  struct_graph(scene_graph(scene), graph, textures, [](double) {});
}

void require_memory_for(const SceneGraph& scene, std::size_t more_nodes) {
  const std::size_t bytes =
      kBytesPerNode * (scene.nodes.size() + more_nodes) + kBytesPerArc * scene.arcs.size() + kBytesForTheRest;
  const auto room = std::make_unique_for_overwrite<std::byte[]>(bytes);
  *static_cast<volatile std::byte*>(room.get()) = {};  // or the compiler leaves it all out
}

void struct_graph(const SceneGraph& built, VkGraph& graph, const TextureDisplay& textures,
                  const std::function<void(double)>& progress) {
  constexpr std::size_t kArcsPerReport = 1000;
  // Looked up by name once: a large scene has more arcs than nodes, at both ends of which are names.
  std::vector<VkNode*> made(built.nodes.size(), nullptr);
  const auto node_of = [&](std::size_t number) {
    if (!made[number]) made[number] = quil_node(graph, built.nodes[number].name, textures);
    return made[number];
  };
  graph.add(node_of(0));
  for (std::size_t i = 0; i < built.arcs.size(); ++i) {
    const auto& arc = built.arcs[i];
    if (i % kArcsPerReport == 0) progress(static_cast<double>(i) / static_cast<double>(built.arcs.size()));
    VkNode* const parent = node_of(arc.parent);
    const auto& child = built.nodes[arc.child];
    graph.add(parent, child.kind == &kNodeKind<LevelsOfDetail>
                          ? graph.make<QuilVkNode>(textures, child.name.c_str(), child.label())
                          : node_of(arc.child));
  }
}

std::vector<VkNode*> show_unlinked(VkGraph& graph, const std::vector<SceneGraph::Node>& unlinked,
                                   const TextureDisplay& textures) {
  std::vector<VkNode*> added;
  for (const SceneGraph::Node& node : unlinked)
    if (!graph.find(node.name)) added.push_back(quil_node(graph, node.name, textures));
  graph.addBlock(added);
  return added;
}

void hide_unlinked(VkGraph& graph) {
  std::vector<VkNode*> unlinked;
  for (VkNode* const node : graph.allNodes()) {
    const NodeKind* const kind = kind_of_node(node->name());
    const bool is_record = kind && kind->tag != 0 && kind != &kNodeKind<qi::Scene>;
    if (is_record && node->nParents() + node->nChildren() == 0) unlinked.push_back(node);
  }
  for (VkNode* const node : unlinked) graph.withdraw(node);
}

NamedPlaces::NamedPlaces(const VkGraph& graph) {
  const VkPlaces places = graph.places();
  for (const auto& [node, corner, by_hand] : places.nodes) nodes_.push_back({node->name(), corner, by_hand});
  for (const auto& [ends, bends] : places.arcs) arcs_[{ends.first->name(), ends.second->name()}] = bends;
  for (const Widget node : SgGraphGetSelectedNodes(graph.graphWidget()))
    selected_.emplace_back(SgNodeName(node));
  compact_ = places.compact;
  zoom_ = SgGraphZoom(graph.graphWidget());
  seen_ = SgGraphToPlane(graph.graphWidget(), {0, 0});
}

void NamedPlaces::restore(VkGraph& graph) const {
  if (nodes_.empty()) return;
  VkPlaces places;
  places.compact = compact_;
  for (const auto& [name, corner, by_hand] : nodes_)
    if (VkNode* const node = graph.find(name)) places.nodes.push_back({node, corner, by_hand});
  for (const auto& [ends, bends] : arcs_) {
    VkNode *const parent = graph.find(ends.first), *const child = graph.find(ends.second);
    if (parent && child) places.arcs[{parent, child}] = bends;
  }
  const Widget widget = graph.graphWidget();
  Boolean glides = False;
  XtVaGetValues(widget, SgNglide, &glides, nullptr);
  XtVaSetValues(widget, SgNglide, False, nullptr);  // from nowhere, as they are new
  graph.arrange(places);
  graph.doLayout();
  XtVaSetValues(widget, SgNglide, glides, nullptr);
  SgGraphSetZoom(widget, zoom_);
  SgGraphScrollTo(widget, seen_, {0, 0});
  for (const std::string& name : selected_)
    if (const VkNode* const node = graph.find(name)) SgGraphSelectNode(widget, node->baseWidget());
}
