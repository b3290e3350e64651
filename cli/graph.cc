/// @file
/// `quilscene graph`: the nodes and arcs that the editor's window shows.
#include <cstdio>

#include "cli/commandline.h"
#include "cli/files.h"
#include "cli/jobs.h"
#include "cli/json.h"
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

Json graph_object(const std::string& file) {
  Qis scene;
  const std::string error = open_quietly(file, scene);
  if (!error.empty()) return json_failure("graph", file, error);
  Json result = json_result("graph", file);
  const SceneGraph graph = scene_graph(scene);
  Json nodes = Json::array(), arcs = Json::array();
  for (const auto& node : graph.nodes) nodes.push_back({{"name", node.name}, {"label", node.label()}});
  for (const auto& arc : graph.arcs)
    arcs.push_back({{"parent", graph.nodes[arc.parent].name}, {"child", graph.nodes[arc.child].name}});
  result["nodes"] = std::move(nodes);
  result["arcs"] = std::move(arcs);
  return result;
}

struct GraphRequest {
  FileSet files;
  bool dot = false, json = false;
};

void declare(CLI::App& line, GraphRequest& request) {
  take_files(line, request.files);
  line.add_flag("--dot", request.dot, "For Graphviz");
  take_json(line, request.json);
}

Outcome print_file(const std::string& file, bool dot) {
  Qis scene;
  if (!open_scene(file, scene)) return Outcome::failed;
  (dot ? print_dot : print_lines)(scene_graph(scene));
  return Outcome::well;
}

Outcome run(const GraphRequest& request) {
  const auto files = files_of(request.files);
  if (request.dot && request.json) throw WrongUse("--dot and --json exclude each other");
  if (files.size() > 1 && !request.json) throw WrongUse("one FILE too many: " + files[1]);
  return for_each_file(files, request.files.jobs, [&](const std::string& file) -> Done {
    return {request.json ? print_json(graph_object(file)) : print_file(file, request.dot), {}};
  });
}

}  // namespace

Work graph(CLI::App& line) { return work<GraphRequest>(line, declare, run); }
