/// @file
/// Where the nodes of a graph lie, and its bent arcs: to bring them back later.
#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "picture/geometry.h"

class VkNode;

/// Places of nodes on the plane. The nodes must still be there when they are used.
struct VkPlaces {
  using Ends = std::pair<VkNode*, VkNode*>;  ///< parent, child
  using Bends = std::vector<SgPoint>;

  struct Node {
    VkNode* node;
    SgPoint corner;       ///< the upper left one
    bool byHand = false;  ///< the user put it there
    friend bool operator==(const Node&, const Node&) = default;
  };

  std::vector<Node> nodes;
  /// The bends of the arcs between two nodes; of arcs beyond these, none.
  std::map<Ends, std::vector<Bends>> arcs;
  bool compact = false;  ///< see VkGraph::Arrangement

  /// The memory that they take.
  std::size_t bytes() const;
};

/// Leaves in both what it takes to come from the one to the other: the nodes that have another place, and the
/// arcs that are bent in another way or have such a node at an end. Nodes may have been added at the end.
void keepDifferences(VkPlaces& before, VkPlaces& after);
