/// @file
/// `quilscene graph`: the nodes and arcs that the editor's window shows.
#include <cstdio>

#include "cli/commands.h"
#include "cli/scenefile.h"
#include "editor/model/scenegraph.h"

namespace {

void print_lines(const SceneGraph& scene) {
  for (const auto& node : scene.nodes) std::printf("node %s\n", node.name.c_str());
  for (const auto& arc : scene.arcs)
    std::printf("arc %s %s\n", scene.nodes[arc.parent].name.c_str(), scene.nodes[arc.child].name.c_str());
}

/// Node names hold letters, digits and underscores only, so nothing needs a backslash.
void print_dot(const SceneGraph& scene) {
  std::puts("digraph scene {\n  node [shape=box];");
  for (const auto& node : scene.nodes) {
    std::printf("  \"%s\"", node.name.c_str());
    if (node.label() != node.name) std::printf(" [label=\"%s\"]", node.label());
    std::puts(";");
  }
  for (const auto& arc : scene.arcs)
    std::printf("  \"%s\" -> \"%s\";\n", scene.nodes[arc.parent].name.c_str(),
                scene.nodes[arc.child].name.c_str());
  std::puts("}");
}

}  // namespace

Outcome graph(const Arguments& arguments) {
  Qis scene;
  if (!open_scene(arguments.files.front(), scene)) return Outcome::failed;
  (arguments.dot ? print_dot : print_lines)(scene_graph(scene));
  return Outcome::well;
}
