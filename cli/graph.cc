/// @file
/// `quilscene graph`: the nodes and arcs that the editor's window shows.
#include <cstdio>

#include "cli/commandline.h"
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

struct Request {
  std::string file;
  bool dot = false;
};

void declare(CLI::App& line, Request& request) {
  take_file(line, request.file);
  line.add_flag("--dot", request.dot, "For Graphviz");
}

Outcome run(const Request& request) {
  Qis scene;
  if (!open_scene(request.file, scene)) return Outcome::failed;
  (request.dot ? print_dot : print_lines)(scene_graph(scene));
  return Outcome::well;
}

}  // namespace

Work graph(CLI::App& line) { return work(line, declare, run); }
