/// @file
/// Measures the graph layout on scene-like graphs, against its limits and against Graphviz `dot`.
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "graphlayout/layout.h"
#include "tests/support/files.h"
#include "tests/support/scene_like_graph.h"

namespace {

using graphlayout::Arc;
using graphlayout::Bends;
using graphlayout::Point;
using graphlayout::Size;

struct Graph {
  std::vector<Size> sizes;
  std::vector<Arc> arcs;
};

Graph make_graph(std::uint32_t node_count) {
  const SceneLikeGraph scene = scene_like_graph(node_count, 1);
  Graph graph;
  // About what a label takes in a 12 pixel font.
  for (const std::string& name : scene.names)
    graph.sizes.push_back({16 + 7.0 * static_cast<double>(name.size()), 26});
  for (const auto& [from, to] : scene.arcs) graph.arcs.push_back({from, to});
  return graph;
}

struct Result {
  double seconds = 0;
  std::uint64_t crossings = 0;
};

double seconds_since(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The median time of some runs.
Result measure(const Graph& graph, int runs) {
  std::vector<double> times;
  graphlayout::Layout layout;
  for (int i = 0; i < runs; ++i) {
    const auto start = std::chrono::steady_clock::now();
    layout = graphlayout::layout(graph.sizes, graph.arcs);
    times.push_back(seconds_since(start));
  }
  std::ranges::sort(times);
  return {times[times.size() / 2],
          graphlayout::crossings(graph.sizes, graph.arcs, layout.nodes, layout.bends)};
}

/// A drawing by `dot`: the middle of each node, and where each arc's curve meets the ranks that it passes.
struct Drawing {
  std::vector<Point> nodes;
  std::map<std::pair<std::uint32_t, std::uint32_t>, std::vector<Point>> curves;  // Bézier control points
};

Point on_curve(std::span<const Point> p, double t) {
  const double s = 1 - t;
  const auto mix = [&](double Point::*c) {
    return s * s * s * p[0].*c + 3 * s * s * t * p[1].*c + 3 * s * t * t * p[2].*c + t * t * t * p[3].*c;
  };
  return {mix(&Point::x), mix(&Point::y)};
}

/// Where a curve that leads down is at height `y`: by halving, as its y grows along it.
double curve_x(std::span<const Point> curve, double y) {
  for (std::size_t i = 0; i + 3 < curve.size(); i += 3) {
    if (curve[i + 3].y < y && i + 6 < curve.size()) continue;
    double low = 0, high = 1;
    for (int step = 0; step < 40; ++step) {
      const double middle = (low + high) / 2;
      (on_curve(curve.subspan(i, 4), middle).y < y ? low : high) = middle;
    }
    return on_curve(curve.subspan(i, 4), low).x;
  }
  return curve.back().x;
}

/// The crossings of a drawing by `dot`, counted as those of ours are: between ranks, with each arc at the
/// place at which its curve passes the rank.
std::uint64_t dot_crossings(const Graph& graph, const Drawing& drawing) {
  std::vector<double> ranks;
  for (const Point& p : drawing.nodes) ranks.push_back(p.y);
  std::ranges::sort(ranks);
  ranks.erase(std::unique(ranks.begin(), ranks.end(), [](double a, double b) { return b - a < 0.01; }),
              ranks.end());
  const auto rank_of = [&](double y) {
    return static_cast<std::size_t>(std::ranges::lower_bound(ranks, y - 0.005) - ranks.begin());
  };
  const std::vector<Size> points(graph.sizes.size());
  std::vector<Point> nodes = drawing.nodes;
  for (Point& p : nodes) p.y = ranks[rank_of(p.y)];
  Bends bends;
  bends.starts.push_back(0);
  for (const Arc& arc : graph.arcs) {
    const std::size_t first = rank_of(nodes[arc.from].y), last = rank_of(nodes[arc.to].y);
    const auto curve = drawing.curves.find({arc.from, arc.to});
    for (std::size_t r = first + 1; curve != drawing.curves.end() && r < last; ++r) {
      bends.points.push_back({curve_x(curve->second, ranks[r]), ranks[r]});
    }
    bends.starts.push_back(bends.points.size());
  }
  return graphlayout::crossings(points, graph.arcs, nodes, bends);
}

/// Runs `dot -Tplain`; nothing if it isn't installed or fails.
std::optional<Result> measure_dot(const Graph& graph) {
  const ScratchDirectory folder;
  const std::string in = folder / "graph.gv", out = folder / "graph.plain";
  {
    std::ofstream file(in);
    file << "digraph g {\nnode [shape=box fixedsize=true];\n";
    for (std::size_t i = 0; i < graph.sizes.size(); ++i) {
      file << i << " [width=" << graph.sizes[i].width / 72 << " height=" << graph.sizes[i].height / 72
           << "];\n";
    }
    for (const Arc& arc : graph.arcs) file << arc.from << " -> " << arc.to << ";\n";
    file << "}\n";
  }
  const auto start = std::chrono::steady_clock::now();
  const int status = std::system(("dot -Tplain -o " + out + " " + in + " 2>/dev/null").c_str());
  Result result{seconds_since(start), 0};

  Drawing drawing;
  drawing.nodes.resize(graph.sizes.size());
  std::ifstream file(out);
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::string kind;
    words >> kind;
    if (kind == "node") {
      std::uint32_t node = 0;
      Point p;
      words >> node >> p.x >> p.y;
      if (node < drawing.nodes.size()) drawing.nodes[node] = {p.x, -p.y};
    } else if (kind == "edge") {
      std::uint32_t from = 0, to = 0;
      std::size_t count = 0;
      words >> from >> to >> count;
      std::vector<Point> curve;
      for (Point p; curve.size() < count && words >> p.x >> p.y;) curve.push_back({p.x, -p.y});
      drawing.curves[{from, to}] = std::move(curve);
    }
  }
  if (status != 0) return std::nullopt;
  result.crossings = dot_crossings(graph, drawing);
  return result;
}

struct Case {
  std::uint32_t nodes;
  double limit;  // seconds
  int runs;
  bool dot, dot_if_asked;
};
constexpr Case kCases[] = {
    {1'000, 0.1, 9, true, true},
    {3'000, 0.2, 9, true, true},
    {10'000, 0.5, 5, false, true},
    {100'000, 7, 1, false, false},
};

}  // namespace

int main(int argc, char** argv) {
  bool long_dot = false;
  for (int i = 1; i < argc; ++i) {
    if (std::string_view(argv[i]) == "--long") {
      long_dot = true;
    } else {
      std::printf("usage: bench_layout [--long]\n  --long  run dot on 10,000 nodes too (takes minutes)\n");
      return std::string_view(argv[i]) == "--help" ? 0 : 2;
    }
  }
  constexpr double kCrossingsLimit = 0.7;  // of dot's
  for (const Case& c : kCases) {
    const Graph graph = make_graph(c.nodes);
    const Result ours = measure(graph, c.runs);
    std::printf("layout %6u nodes %6zu arcs: %7.3f s, %.2f x the limit of %.1f s; %llu crossings\n", c.nodes,
                graph.arcs.size(), ours.seconds, ours.seconds / c.limit, c.limit,
                static_cast<unsigned long long>(ours.crossings));
    std::fflush(stdout);
    if (!c.dot && !(long_dot && c.dot_if_asked)) continue;
    const std::optional<Result> dot = measure_dot(graph);
    if (!dot) {
      std::printf("  dot isn't there or failed\n");
      continue;
    }
    const double ratio =
        static_cast<double>(ours.crossings) / static_cast<double>(std::max<std::uint64_t>(1, dot->crossings));
    std::printf(
        "  dot: %.2f s, %.0f x ours; %llu crossings, ours are %.2f of them, %.2f x the limit of %.1f\n",
        dot->seconds, dot->seconds / ours.seconds, static_cast<unsigned long long>(dot->crossings), ratio,
        ratio / kCrossingsLimit, kCrossingsLimit);
    std::fflush(stdout);
  }
  return 0;
}
