/// @file
/// wire FILE PARENT CHILD OUT: draws an arc of a scene's graph, prints where its nodes lie, saves the scene.
#include <cstdio>
#include <vector>

#include "editor/model/linkreasons.h"
#include "editor/model/modifygraph.h"
#include "editor/model/scenegraph.h"
#include "graphlayout/layout.h"
#include "qilib/opensave.h"

int main(int argc, char** argv) {
  Qis scene;
  if (argc != 5 || !qi::open_scene(argv[1], scene, qi::print_message)) return 2;
  const auto parent = find_node_id(argv[2]), child = find_node_id(argv[3]);
  if (!parent || !child || !add_link(scene, *parent, *child)) {
    std::fprintf(stderr, "%s\n", why_not_linked(scene, argv[2], argv[3]).c_str());
    return 1;
  }
  const SceneGraph graph = scene_graph(scene);
  std::vector<graphlayout::Arc> arcs;
  for (const SceneGraph::Arc& arc : graph.arcs) arcs.push_back({arc.parent, arc.child});
  const std::vector<graphlayout::Size> sizes(graph.nodes.size(), {.width = 80, .height = 24});
  const graphlayout::Layout layout = graphlayout::layout(sizes, arcs);
  for (std::size_t i = 0; i < graph.nodes.size(); ++i)
    std::printf("%s %g %g\n", graph.nodes[i].name.c_str(), layout.nodes[i].x, layout.nodes[i].y);
  qiSetFilename(argv[4], scene);
  return qi::save_scene(scene, 2, qi::print_message) ? 0 : 1;
}
