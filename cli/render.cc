/// @file
/// `quilscene render`: the picture of the graph that the editor's window shows, as a file.
#include <cstdio>
#include <unordered_map>
#include <vector>

#include "cli/commands.h"
#include "cli/scenefile.h"
#include "editor/model/scenegraph.h"
#include "graphlayout/compact.h"
#include "graphlayout/layout.h"
#include "picture/colors.h"
#include "picture/export.h"

namespace {

constexpr picture::Inks kInks{.background = picture::kWhite,
                              .text = picture::colorOf(picture::kTextColor),
                              .arc = picture::colorOf(picture::kArcColor),
                              .farArc = picture::colorOf(picture::kFarArcColor),
                              .border = picture::colorOf(picture::kNodeBorderColor),
                              .selection = picture::colorOf(picture::kSelectionColor),
                              .handle = picture::colorOf(picture::kHandleColor)};

/// The nodes and arcs of a scene, laid out.
struct Laid {
  picture::Drawing drawing;
  std::vector<picture::NodeLook> looks;
};

Laid laid_out(const SceneGraph& scene, const picture::Font& font) {
  Laid laid;
  picture::TextMeasure measure(font);
  std::vector<graphlayout::Size> sizes;
  for (const SceneGraph::Node& node : scene.nodes) {
    laid.looks.push_back({.label = node.label(), .tint = picture::colorOf(node.kind->tint.smooth)});
    const SgRectangle box = nodeBox(laid.looks.back(), measure.width(node.label()), measure.height());
    sizes.push_back({box.width, box.height});
  }
  std::vector<graphlayout::Arc> arcs;
  for (const SceneGraph::Arc& arc : scene.arcs) arcs.push_back({arc.parent, arc.child});
  const bool compact = sizes.size() >= graphlayout::kCompactFrom;
  const graphlayout::Layout layout =
      compact ? graphlayout::compact(sizes, arcs).layout : graphlayout::layout(sizes, arcs);

  for (std::size_t i = 0; i < sizes.size(); ++i) {
    const picture::NodeId node = laid.drawing.addNode();
    laid.drawing.resizeNode(node, sizes[i].width, sizes[i].height);
    laid.drawing.moveNode(node, {layout.nodes[i].x, layout.nodes[i].y});
    laid.drawing.showNode(node, true);
  }
  for (std::size_t i = 0; i < arcs.size(); ++i) {
    std::vector<SgPoint> bends;
    for (const graphlayout::Point& bend : layout.bends.of(i)) bends.push_back({bend.x, bend.y});
    const picture::ArcId arc = laid.drawing.addArc(arcs[i].from, arcs[i].to);
    laid.drawing.setBends(arc, bends);
    if (compact)
      laid.drawing.setArcStyle(arc, bends.empty() ? picture::ArcStyle::Stubs : picture::ArcStyle::Square);
  }
  return laid;
}

}  // namespace

Outcome render(const Arguments& arguments) {
  Qis scene;
  if (!open_scene(arguments.files.front(), scene)) return Outcome::failed;
  const std::string& file = arguments.files.front();
  const picture::Font font;
  const Laid laid = laid_out(scene_graph(scene), font);
  const std::unordered_map<picture::ArcId, std::string> no_labels;
  const picture::Content content{laid.drawing, laid.looks, no_labels, kInks};
  const std::string problem = exportPicture(arguments.output, *picture::formatOf(arguments.output),
                                            {.content = content,
                                             .part = wholeFrame(laid.drawing),
                                             .partialArcs = false,
                                             .font = font,
                                             .images = {},
                                             .title = file.substr(file.rfind('/') + 1)},
                                            arguments.paper);
  if (problem.empty()) return Outcome::well;
  std::fprintf(stderr, "quilscene: %s\n", problem.c_str());
  return Outcome::failed;
}
