/// @file
/// The editor's graph node: stands for one record of the scene, tinted by the record's kind.
#pragma once

#include "viewkit/vknode.h"

/// A node whose name ("obj_3") carries the kind and number of its record.
class QuilVkNode : public VkNode {
 public:
  using VkNode::VkNode;
  /// Builds the node's widget and gives it its kind's colour.
  void build(Widget parent) override;
};
