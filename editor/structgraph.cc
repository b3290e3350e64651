/// @file
/// From the current scene to the nodes and arcs of the window's graph.
#include "editor/graphwindow.h"
#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "editor/model/scenegraph.h"
#include "editor/newquilnode.h"

VkNode* GraphWindow::getQuilVkNode(VkGraph* graph, const std::string& name) const {
  if (VkNode* const node = graph->find(name)) return node;
  return graph->make<QuilVkNode>(*this, name.c_str());
}

void GraphWindow::addChild(VkNode* parent, const std::string& child_name) {
  graph_->add(parent, getQuilVkNode(graph_.get(), child_name));
}

void GraphWindow::struct_graph(VkGraph* graph) {
  const SceneGraph scene = scene_graph(*qis);
  graph->add(getQuilVkNode(graph, scene.nodes.front().name));
  for (const auto& arc : scene.arcs) {
    VkNode* const parent = getQuilVkNode(graph, scene.nodes[arc.parent].name);
    const auto& child = scene.nodes[arc.child];
    if (child.label == kLodLabel)
      graph->add(parent, graph->make<QuilVkNode>(*this, child.name.c_str(), child.label.c_str()));
    else
      addChild(parent, child.name);
  }
}
