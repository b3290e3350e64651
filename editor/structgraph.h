/// @file
/// From a scene to the nodes and arcs of a graph.
#pragma once

#include <functional>
#include <string>

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
void require_memory_for(const SceneGraph& scene);

/// The node of that name in `graph`, or else a new one that is not in the graph yet; it enters with its first
/// arc.
VkNode* quil_node(VkGraph& graph, const std::string& name, const TextureDisplay& textures);
