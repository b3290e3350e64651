/// @file
/// From a scene to the nodes and arcs of a graph.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "editor/model/scenegraph.h"
#include "editor/texturedisplay.h"
#include "qilib/qis.h"
#include "viewkit/vkgraph.h"

/// Builds the scene into `graph`: a node per record that takes part in a reference and an arc per reference,
/// in their fixed order. Nodes that the graph has already are reused, but those for levels of detail are
/// always new.
/// @param textures  outlives the graph's nodes.
void struct_graph(const Qis& scene, VkGraph& graph, const TextureDisplay& textures);
/// The same for the walk of a scene that has been made already.
/// @param progress  is told again and again how much is done, 0 to 1; what it throws ends the building.
void struct_graph(const SceneGraph& scene, VkGraph& graph, const TextureDisplay& textures,
                  const std::function<void(double)>& progress);

/// Throws std::bad_alloc when there is not enough memory left to build, lay out and paint that. The toolkit
/// ends the program when it gets none, so it is asked for before.
/// @param more_nodes  that are shown besides
void require_memory_for(const SceneGraph& scene, std::size_t more_nodes = 0);

/// Shows records that no arc leads from or to, in a block of their own. Those that are in the graph already
/// stay where they are. @returns the nodes that were added.
std::vector<VkNode*> show_unlinked(VkGraph& graph, const std::vector<SceneGraph::Node>& unlinked,
                                   const TextureDisplay& textures);
/// Leaves out all nodes of records, but for the scene's own, that no arc leads from or to now.
void hide_unlinked(VkGraph& graph);

/// Where the nodes and arcs of a graph lie, by name: for another graph of the same scene.
class NamedPlaces {
 public:
  explicit NamedPlaces(const VkGraph& graph);
  /// Puts the nodes that are there now where those of their names were.
  void restore(VkGraph& graph) const;

 private:
  struct Node {
    std::string name;
    SgPoint corner;
    bool by_hand;
  };
  std::vector<Node> nodes_;
  std::map<std::pair<std::string, std::string>, std::vector<VkPlaces::Bends>> arcs_;
  std::vector<std::string> selected_;
  bool compact_;
  double zoom_;
  SgPoint seen_;  ///< what the upper left corner of the window shows
};

/// The node of that name in `graph`, or else a new one that is not in the graph yet; it enters with its first
/// arc.
VkNode* quil_node(VkGraph& graph, const std::string& name, const TextureDisplay& textures);
