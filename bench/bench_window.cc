/// @file
/// Measures what a person waits for: a large scene from its file to the first painted picture, and a step of
/// scrolling through it, on a virtual screen.
#include <X11/Xlib.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "editor/graphwindow.h"
#include "editor/look.h"
#include "editor/scenefiles.h"
#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/support/places.h"
#include "tests/support/scratch_home.h"
#include "tests/support/xserver.h"
#include "viewkit/vkapp.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kScrollLimit = 0.016;  // seconds a step

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
  std::fprintf(figures, "%8zu  %8.3f  %8.3f  %8.3f  %8.3f  %8.3f  %8.2f  %10.2f  %8.2f\n", graph.numNodes(),
               open, build, layout, first_paint, all, all / size.limit, step * 1000, step / kScrollLimit);
}

}  // namespace

int main(int argc, char** argv) {
  const support::XServer server;
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
  std::fprintf(figures,
               "\nFrom the file to the picture, in seconds (ratio to the limit), and a scroll step\n");
  std::fprintf(
      figures,
      "   nodes      open     build    layout     paint       all     ratio     step(ms)     ratio\n");
  for (const Size& size : kSizes) measure(window, size, home.dir() / "city.quil", figures);
  std::fclose(figures);
}
