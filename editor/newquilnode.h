/// @file
/// The editor's graph node: stands for one record of the scene.
#pragma once

#include <string>

#include "viewkit/vknode.h"

/// A node whose name ("obj_3") carries the kind and number of its record.
class QuilVkNode : public VkNode {
 public:
  explicit QuilVkNode(const char* name, const char* label = nullptr);
  const char* className() const override { return "QuilVkNode"; }

  /// The name's prefix ("obj"), so that a graph tints its nodes by kind.
  const char* tintName() const override { return prefix_.c_str(); }

 private:
  std::string prefix_;
};
