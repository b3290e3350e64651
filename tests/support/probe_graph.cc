/// @file
/// Asking the program's own graph widget. Its functions are the program's: this library only knows their
/// names, so they are null in a program without graphs.
#include "tests/support/probe_graph.h"

#include <Xm/Xm.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <stdexcept>

#include "tests/support/probe_widgets.h"
#include "viewkit/sggraph/Graph.h"
#include "viewkit/xraii.h"

extern WidgetClass sgGraphWidgetClass __attribute__((weak));
double SgGraphZoom(Widget graph) __attribute__((weak));
Widget SgNodeGraph(Widget node) __attribute__((weak));
const char* SgNodeName(Widget node) __attribute__((weak));
Widget SgGraphFoldedInto(Widget node) __attribute__((weak));
bool SgGraphNodeIsSeen(Widget node) __attribute__((weak));
SgRectangle SgGraphViewport(Widget graph) __attribute__((weak));
SgRectangle SgGraphNodeRectangle(Widget node) __attribute__((weak));
std::vector<SgArc> SgGraphArcs(Widget graph) __attribute__((weak));
std::vector<SgArc> SgGraphGetSelectedArcs(Widget graph) __attribute__((weak));
std::vector<Widget> SgGraphGetSelectedNodes(Widget graph) __attribute__((weak));
bool SgGraphGetArcNodes(Widget graph, SgArc arc, Widget* from, Widget* to) __attribute__((weak));
bool SgGraphArcPoint(Widget graph, SgArc arc, SgPoint* middle, SgPoint* parentHandle, SgPoint* childHandle)
    __attribute__((weak));

namespace probe {

namespace {

bool programHasGraphs() {
  return &sgGraphWidgetClass != nullptr && SgGraphZoom != nullptr && SgNodeGraph != nullptr &&
         SgNodeName != nullptr && SgGraphFoldedInto != nullptr && SgGraphNodeIsSeen != nullptr &&
         SgGraphViewport != nullptr && SgGraphNodeRectangle != nullptr && SgGraphArcs != nullptr &&
         SgGraphGetSelectedArcs != nullptr && SgGraphGetSelectedNodes != nullptr &&
         SgGraphGetArcNodes != nullptr && SgGraphArcPoint != nullptr;
}

/// Adds the words of places in the graph's window, as places on the screen.
class Places {
 public:
  explicit Places(Widget graph) {
    ::Window ignored = 0;
    XTranslateCoordinates(XtDisplay(graph), XtWindow(graph), XRootWindowOfScreen(XtScreen(graph)), 0, 0, &x_,
                          &y_, &ignored);
  }
  void add(Words& line, SgPoint point) const {
    line.push_back(std::to_string(x_ + std::lround(point.x)));
    line.push_back(std::to_string(y_ + std::lround(point.y)));
  }
  void add(Words& line, const SgRectangle& box) const {
    add(line, SgPoint{box.x, box.y});
    line.push_back(std::to_string(std::lround(box.width)));
    line.push_back(std::to_string(std::lround(box.height)));
  }

 private:
  int x_ = 0, y_ = 0;
};

/// The graph keeps its nodes one level down, on a composite of its own.
std::vector<Widget> nodesOf(Widget graph) {
  std::vector<Widget> nodes;
  for (const Widget holder : children(graph)) {
    for (const Widget child : children(holder)) {
      if (SgNodeGraph(child) == graph) nodes.push_back(child);
    }
  }
  return nodes;
}

template <class T>
bool contains(const std::vector<T>& list, const T& item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

}  // namespace

std::vector<Words> describeGraph(Widget graph) {
  if (!programHasGraphs() || !XtIsSubclass(graph, sgGraphWidgetClass))
    throw std::invalid_argument("this is no graph");
  if (!XtIsRealized(graph)) throw std::invalid_argument("the graph has no window yet");
  const Places places(graph);
  std::vector<Words> result;

  Words& view = result.emplace_back(Words{"view", std::to_string(SgGraphZoom(graph))});
  places.add(view, SgGraphViewport(graph));

  const std::vector<Widget> selected_nodes = SgGraphGetSelectedNodes(graph);
  for (const Widget node : nodesOf(graph)) {
    Words line{"node", SgNodeName(node), viewkit::textResource(node, XmNlabelString)};
    places.add(line, SgGraphNodeRectangle(node));
    Pixel tint = 0;
    XtVaGetValues(node, SgNtint, &tint, nullptr);
    line.push_back(std::to_string(tint));
    line.push_back(std::string(XtIsManaged(node) ? "m" : "") + (contains(selected_nodes, node) ? "t" : "") +
                   (SgGraphFoldedInto(node) ? "f" : "") + (SgGraphNodeIsSeen(node) ? "" : "h"));
    result.push_back(line);
  }

  const std::vector<SgArc> selected_arcs = SgGraphGetSelectedArcs(graph);
  for (const SgArc arc : SgGraphArcs(graph)) {
    Widget from = nullptr, to = nullptr;
    SgPoint middle, parent_handle, child_handle;
    if (!SgGraphGetArcNodes(graph, arc, &from, &to)) continue;
    if (!SgGraphArcPoint(graph, arc, &middle, &parent_handle, &child_handle)) continue;
    Words line{"arc", SgNodeName(from), SgNodeName(to)};
    for (const SgPoint point : {middle, parent_handle, child_handle}) places.add(line, point);
    line.push_back(contains(selected_arcs, arc) ? "t" : "");
    result.push_back(line);
  }
  return result;
}

}  // namespace probe
