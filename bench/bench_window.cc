/// @file
/// Measures what a person waits for: a large scene from its file to the first painted picture, and a step of
/// scrolling through it, on a virtual screen; and how much of what is painted is arcs.
#include <X11/Xlib.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "editor/editstep.h"
#include "editor/graphwindow.h"
#include "editor/look.h"
#include "editor/scenefiles.h"
#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/support/places.h"
#include "tests/support/scratch_home.h"
#include "tests/support/xdriver.h"
#include "tests/support/xserver.h"
#include "viewkit/vkapp.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kScrollLimit = 0.016;  // seconds a step
constexpr double kLinkLimit = 0.1;      // seconds, as long as nobody waits for it

struct Size {
  std::uint32_t objects;  ///< gives about 1.2 times as many nodes
  double limit;           ///< seconds from the file to the picture
};
constexpr std::array<Size, 4> kSizes = {{{830, 0.1}, {8300, 1.0}, {83000, 10.0}, {830000, 100.0}}};

/// Seconds since the last call.
class Stopwatch {
 public:
  double lap() {
    const auto now = Clock::now();
    const std::chrono::duration<double> passed = now - last_;
    last_ = now;
    return passed.count();
  }

 private:
  Clock::time_point last_ = Clock::now();
};

void paint(VkGraph& graph) {
  SgGraphUpdate(graph.graphWidget());
  XSync(XtDisplay(graph.graphWidget()), False);
}

/// Seconds for a step of scrolling through the middle of the picture.
double scroll_step(VkGraph& graph) {
  const Widget widget = graph.graphWidget();
  const SgRectangle all = SgGraphExtents(widget);
  const SgPoint middle{all.x + all.width / 2, all.y + all.height / 2};
  SgGraphScrollTo(widget, middle, {0, 0});
  paint(graph);
  constexpr int kSteps = 100;
  Stopwatch watch;
  for (int i = 1; i <= kSteps; ++i) {
    SgGraphScrollTo(widget, {middle.x + 60.0 * i, middle.y}, {0, 0});
    paint(graph);
  }
  return watch.lap() / kSteps;
}

/// Seconds for a new arc that becomes a step of the history, but for what the scene's record of it takes, and
/// for taking it back: the medians of some.
std::pair<double, double> link_and_undo(VkGraph& graph) {
  const std::vector<VkNode*> nodes = graph.allNodes();
  std::vector<double> links, undos;
  constexpr std::size_t kLinks = 9;
  for (std::size_t i = 0; i < kLinks; ++i) {
    VkNode* const parent = nodes[nodes.size() * (i + 1) / (kLinks + 1)];
    Stopwatch watch;
    graph.recordPlaces();
    auto change = std::make_unique<GraphChange>(graph);
    change->addArc(parent, nodes[nodes.size() * (i + 1) / (2 * kLinks)]);
    graph.displayAll();
    graph.doLayout();
    change->arranged(graph.recordedPlaces());
    links.push_back(watch.lap());
    change->undo();
    undos.push_back(watch.lap());
  }
  std::ranges::sort(links);
  std::ranges::sort(undos);
  return {links[kLinks / 2], undos[kLinks / 2]};
}

void measure(GraphWindow& window, const Size& size, const std::string& file, std::FILE* figures) {
  {
    Qis city = samples::city(size.objects, 0);
    if (!qiSaveAsQb2(city, file)) throw std::runtime_error("can't write " + file);
  }
  VkGraph& graph = window.graph();
  Stopwatch watch;
  if (quilread(file) != 1) throw std::runtime_error("can't open " + file);
  const double open = watch.lap();
  graph.clearAll();
  window.struct_graph(&graph);
  graph.displayAll();
  const double build = watch.lap();
  graph.doLayout();
  const double layout = watch.lap();
  paint(graph);
  const double first_paint = watch.lap();
  const double all = open + build + layout + first_paint;
  const double step = scroll_step(graph);
  const auto [link, undo] = link_and_undo(graph);
  std::fprintf(figures,
               "%8zu  %8.3f  %8.3f  %8.3f  %8.3f  %8.3f  %8.2f  %10.2f  %8.2f  %10.2f  %8.2f  %8.2f\n",
               graph.numNodes(), open, build, layout, first_paint, all, all / size.limit, step * 1000,
               step / kScrollLimit, link * 1000, undo * 1000, std::max(link, undo) / kLinkLimit);
}

/// The share of the pixels outside nodes that arcs cover, in what is painted now.
double ink(VkGraph& graph, const std::vector<VkNode*>& nodes) {
  const Widget widget = graph.graphWidget();
  const SgRectangle view = SgGraphViewport(widget);
  const auto width = static_cast<int>(view.width), height = static_cast<int>(view.height);
  Pixel arc = 0, far_arc = 0;
  XtVaGetValues(widget, SgNarcColor, &arc, SgNfarArcColor, &far_arc, nullptr);
  paint(graph);
  const viewkit::ImagePtr image(XGetImage(XtDisplay(widget), XtWindow(widget), 0, 0,
                                          static_cast<unsigned>(width), static_cast<unsigned>(height),
                                          AllPlanes, ZPixmap));
  std::vector<char> is_node(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (const VkNode* const node : nodes) {
    // A node has at least a pixel.
    const SgRectangle box = SgGraphNodeRectangle(node->baseWidget());
    const auto held = [](double place, int end) {
      return static_cast<int>(std::clamp(std::lround(place), 0l, long{end}));
    };
    const int right = held(std::max(box.right(), box.x + 1), width),
              bottom = held(std::max(box.bottom(), box.y + 1), height);
    for (int y = held(box.y, height); y < bottom; ++y)
      for (int x = held(box.x, width); x < right; ++x) is_node[static_cast<std::size_t>(y * width + x)] = 1;
  }
  std::size_t outside = 0, covered = 0;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      if (is_node[static_cast<std::size_t>(y * width + x)]) continue;
      ++outside;
      const Pixel pixel = XGetPixel(image.get(), x, y);
      covered += pixel == arc || pixel == far_arc;
    }
  return static_cast<double>(covered) / static_cast<double>(std::max<std::size_t>(outside, 1));
}

struct InkLimits {
  double median, ninth;  ///< at 100 %; nine of ten windows have less than `ninth`
};

/// Prints how much of the window arcs cover, at 100 % around nodes here and there, and when all is in view.
void measure_ink(VkGraph& graph, const char* name, const InkLimits& limits, std::FILE* figures) {
  constexpr double kFittedLimit = 0.03;
  constexpr int kPlaces = 41;
  const Widget widget = graph.graphWidget();
  // Edges of nodes are no arcs.
  XtVaSetValues(widget, SgNnodeBorderColor, Pixel{0x010203}, SgNshowOverview, False, nullptr);
  SgGraphSetZoom(widget, 1);
  const std::vector<VkNode*> nodes = graph.findAll("");
  std::vector<double> shares;
  for (int i = 0; i < kPlaces; ++i) {
    const SgRectangle view = SgGraphViewport(widget);
    const std::size_t chosen = nodes.size() * static_cast<std::size_t>(2 * i + 1) / (2 * kPlaces);
    SgGraphScrollTo(widget, SgGraphNodeBounds(nodes[chosen]->baseWidget()).middle(), view.middle());
    shares.push_back(ink(graph, nodes));
  }
  std::ranges::sort(shares);
  SgGraphZoomToFit(widget);
  std::fprintf(figures, "%-28s %8zu  %8.2f (%4.1f)  %8.2f (%4.1f)  %8.2f (%4.1f)\n", name, graph.numNodes(),
               100 * shares[kPlaces / 2], 100 * limits.median, 100 * shares[kPlaces * 9 / 10],
               100 * limits.ninth, 100 * ink(graph, nodes), 100 * kFittedLimit);
}

/// Lets the program handle what the server has told it.
void handle_events() {
  const XtAppContext context = theApplication->appContext();
  XSync(theApplication->display(), False);
  while (XtAppPending(context) != 0) XtAppProcessEvent(context, XtIMAll);
}

/// Seconds from a press on a node until its neighbourhood stands out.
double press(VkGraph& graph, const VkNode* node, support::XDriver& driver) {
  const Widget widget = graph.graphWidget();
  SgGraphScrollTo(widget, SgGraphNodeBounds(node->baseWidget()).middle(), SgGraphViewport(widget).middle());
  paint(graph);
  const SgPoint place = SgGraphNodeRectangle(node->baseWidget()).middle();
  Position x = 0, y = 0;
  XtTranslateCoords(widget, static_cast<Position>(place.x), static_cast<Position>(place.y), &x, &y);
  driver.moveTo({x, y});
  handle_events();
  paint(graph);
  Stopwatch watch;
  driver.press();
  handle_events();
  paint(graph);
  const double passed = watch.lap();
  driver.release();
  handle_events();
  if (SgGraphGetSelectedNodes(widget) != std::vector<Widget>{node->baseWidget()})
    throw std::runtime_error("the press missed");
  return passed;
}

/// Prints how long a person waits for a node's neighbourhood, and for it alone.
void measure_neighbourhood(VkGraph& graph, const char* what, const std::vector<const VkNode*>& nodes,
                           support::XDriver& driver, std::FILE* figures) {
  constexpr double kLimit = 0.1;
  std::array<std::vector<double>, 4> seconds;  // a press, one step, three steps, all
  SgGraphSetZoom(graph.graphWidget(), 1);
  for (const VkNode* const node : nodes) {
    seconds[0].push_back(press(graph, node, driver));
    for (const int steps : {1, 3}) {
      Stopwatch watch;
      graph.showOnlySelected(steps);
      paint(graph);
      seconds[steps == 1 ? 1 : 2].push_back(watch.lap());
      graph.showAll();
      paint(graph);
      seconds[3].push_back(watch.lap());
      SgGraphSetZoom(graph.graphWidget(), 1);
    }
  }
  std::fprintf(figures, "%-28s %8zu", what, graph.numNodes());
  for (std::vector<double>& some : seconds) {
    std::ranges::sort(some);
    std::fprintf(figures, "  %8.1f (%5.2f)", some[some.size() / 2] * 1000, some[some.size() / 2] / kLimit);
  }
  std::fputc('\n', figures);
}

/// Around objects here and there, and around the texture that all materials of the city have.
void measure_neighbourhoods(VkGraph& graph, support::XDriver& driver, std::FILE* figures) {
  constexpr std::size_t kPlaces = 9;
  const std::vector<VkNode*> objects = graph.findAll("obj:");
  std::vector<const VkNode*> chosen;
  for (std::size_t i = 0; i < kPlaces; ++i)
    chosen.push_back(objects[objects.size() * (2 * i + 1) / (2 * kPlaces)]);
  measure_neighbourhood(graph, "an object", chosen, driver, figures);
  measure_neighbourhood(graph, "what all materials refer to", {graph.find("tex_0")}, driver, figures);
}

/// A graph of a thousand nodes with four arcs each.
void fill_densely(VkGraph& graph) {
  constexpr std::uint32_t kNodes = 1000, kArcs = 4000;
  graph.clearAll();
  std::vector<VkNode*> nodes;
  for (std::uint32_t i = 0; i < kNodes; ++i)
    nodes.push_back(graph.make<>(("node_" + std::to_string(i)).c_str()));
  std::uint32_t state = 1;
  const auto random = [&](std::uint32_t below) {
    return (state = state * 1664525u + 1013904223u) / 7 % below;
  };
  for (std::uint32_t i = 1; i < kNodes; ++i) graph.add(nodes[random(i)], nodes[i]);
  for (std::uint32_t i = kNodes; i < kArcs; ++i) graph.add(nodes[random(kNodes)], nodes[random(kNodes)]);
  graph.displayAll();
  graph.doLayout();
}

void show_city(GraphWindow& window, std::uint32_t objects, const std::string& file) {
  Qis city = samples::city(objects, 0);
  if (!qiSaveAsQb2(city, file) || quilread(file) != 1) throw std::runtime_error("can't write " + file);
  VkGraph& graph = window.graph();
  graph.clearAll();
  window.struct_graph(&graph);
  graph.displayAll();
  graph.doLayout();
}

}  // namespace

int main(int argc, char** argv) {
  const support::XServer server(24, 1920, 1200);
  setenv("DISPLAY", server.display().c_str(), 1);
  const ScratchHome home;
  std::filesystem::copy_file(support::project_file("samples/quilcnvops.template"), home.options_file());
  // The editor's own output would stand between the figures.
  std::FILE* const figures = fdopen(dup(STDOUT_FILENO), "w");
  if (!figures || !std::freopen("/dev/null", "w", stdout) || !std::freopen("/dev/null", "w", stderr))
    return 1;
  VkApp app("quileditor", &argc, argv, nullptr, 0, &editorResources);
  GraphWindow window("QUILeditor2");
  window.show();
  std::fprintf(
      figures,
      "\nFrom the file to the picture, in seconds (ratio to the limit), a scroll step, and an arc\n");
  std::fprintf(figures,
               "   nodes      open     build    layout     paint       all     ratio     step(ms)     ratio  "
               "  link(ms)  undo(ms)     ratio\n");
  for (const Size& size : kSizes) measure(window, size, home.dir() / "city.quil", figures);

  std::fprintf(figures,
               "\nThe share of the pixels outside nodes that arcs cover in a window, in %% (limit)\n");
  std::fprintf(figures, "%-28s %8s  %15s  %15s  %15s\n", "", "nodes", "100 %: median", "nine of ten",
               "all in view");
  constexpr InkLimits kUsual{0.01, 0.015}, kDense{0.05, 0.07};
  XtVaSetValues(window.baseWidget(), XmNwidth, 1917, XmNheight, 1090, nullptr);
  handle_events();
  for (const std::uint32_t objects : {25u, 250u, 830u, 8300u, 83000u}) {
    show_city(window, objects, home.dir() / "city.quil");
    measure_ink(window.graph(), "scene", kUsual, figures);
  }
  fill_densely(window.graph());
  measure_ink(window.graph(), "four arcs a node", kDense, figures);

  std::fprintf(figures, "\nNeighbourhoods, in ms (ratio to the limit)\n%-28s %8s  %16s  %16s  %16s  %16s\n",
               "", "nodes", "press", "only 1 step", "only 3 steps", "Show All");
  support::XDriver driver(server.display());
  for (const std::uint32_t objects : {830u, 8300u, 83000u}) {
    show_city(window, objects, home.dir() / "city.quil");
    measure_neighbourhoods(window.graph(), driver, figures);
  }
  std::fclose(figures);
}
