/// @file
/// For tests of edits to the current scene: running them, and what the scene looked like before and after.
#pragma once

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "editor/model/currentscene.h"
#include "editor/model/scenegraph.h"
#include "editor/model/tracedlinks.h"
#include "tests/support/builtscene.h"

// Edits of the current scene.
inline int quilAddLink(const std::string& parent, const std::string& child) {
  return quilAddLink(*qis, parent, child);
}
inline int quilDeleteLink(const std::string& parent, const std::string& child) {
  return quilDeleteLink(*qis, parent, child);
}
inline int quilModifyLink(const std::string& old_parent, const std::string& old_child,
                          const std::string& new_parent, const std::string& new_child) {
  return quilModifyLink(*qis, old_parent, old_child, new_parent, new_child);
}

/// Runs an edit and returns its answer; what it printed goes to `printed`.
template <class Edit>
int run_edit(std::string& printed, Edit edit) {
  testing::internal::CaptureStdout();
  const int answer = edit();
  printed = testing::internal::GetCapturedStdout();
  return answer;
}

/// The arcs of the current scene, as text, sorted.
using Arcs = std::multiset<std::string>;
inline Arcs arcs() {
  Arcs arcs;
  const SceneGraph graph = scene_graph(*qis);
  for (const auto& [parent, child] : graph.arcs)
    arcs.insert(graph.nodes[parent].name + " " + graph.nodes[child].name);
  return arcs;
}

/// With every size word: what no refused edit may change.
struct Snapshot {
  Arcs arcs;
  SizeWords sizes;
  friend bool operator==(const Snapshot&, const Snapshot&) = default;
};
inline Snapshot snapshot() { return {arcs(), size_words(*qis)}; }
