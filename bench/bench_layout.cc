/// @file
/// Measures the graph layout on scene-like graphs, against its limits and against Graphviz `dot`.
#include <algorithm>
#include <chrono>
#include <cmath>
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

#include "graphlayout/compact.h"
#include "graphlayout/layout.h"
#include "graphlayout/rearrange.h"
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

constexpr Size kNewSize{80, 26};  // of nodes that are added

/// A picture that is edited arc by arc.
class Edited {
 public:
  explicit Edited(const Graph& graph) : sizes_(graph.sizes), arcs_(graph.arcs) {
    const graphlayout::Layout layout = graphlayout::layout(sizes_, arcs_);
    nodes_ = layout.nodes;
    for (std::size_t i = 0; i < arcs_.size(); ++i) {
      const auto bends = layout.bends.of(i);
      bends_.emplace_back(bends.begin(), bends.end());
    }
  }

  /// The tree of a compact picture.
  Edited(const Graph& graph, const graphlayout::Compact& picture)
      : sizes_(graph.sizes), nodes_(picture.layout.nodes) {
    for (const std::uint32_t arc : picture.tree_arcs) {
      if (arc == graphlayout::Compact::kNoArc) continue;
      const auto bends = picture.layout.bends.of(arc);
      arcs_.push_back(graph.arcs[arc]);
      bends_.emplace_back(bends.begin(), bends.end());
    }
  }

  struct Edit {
    double seconds = 0, moved = 0;  // the share of the nodes that lie elsewhere by more than 100 pixels
  };
  /// An arc between nodes that are linked to such nodes already.
  Edit add_arc(Random& random) {
    const auto count = static_cast<std::uint32_t>(arcs_.size());
    arcs_.push_back({arcs_[random.below(count)].from, arcs_[random.below(count)].to});
    bends_.emplace_back();
    const std::uint32_t added[] = {count};
    return rearrange(added);
  }
  Edit delete_arc(Random& random) {
    const std::uint32_t gone = random.below(static_cast<std::uint32_t>(arcs_.size()));
    arcs_[gone] = arcs_.back(), arcs_.pop_back();
    bends_[gone] = std::move(bends_.back()), bends_.pop_back();
    return rearrange({});
  }
  /// A new node below one that is there.
  void add_child(std::uint32_t parent) {
    const auto child = static_cast<std::uint32_t>(sizes_.size()),
               arc = static_cast<std::uint32_t>(arcs_.size());
    sizes_.push_back(kNewSize);
    nodes_.push_back({std::nan(""), 0});
    arcs_.push_back({parent, child});
    bends_.emplace_back();
    rearrange(std::span(&arc, 1), std::span(&child, 1));
  }
  /// The smallest rectangle that holds all nodes.
  double area() const {
    double width = 0, height = 0;
    for (std::size_t v = 0; v < nodes_.size(); ++v) {
      width = std::max(width, nodes_[v].x + sizes_[v].width);
      height = std::max(height, nodes_[v].y + sizes_[v].height);
    }
    return width * height;
  }
  /// The length of all arcs, down and across.
  double length() const {
    double sum = 0;
    for (std::size_t i = 0; i < arcs_.size(); ++i) {
      const auto& [from, to] = arcs_[i];
      Point last{nodes_[from].x, nodes_[from].y + sizes_[from].height};
      const auto go = [&](const Point& next) {
        sum += std::abs(next.x - last.x) + std::abs(next.y - last.y);
        last = next;
      };
      for (const Point& bend : bends_[i]) go(bend);
      go(nodes_[to]);
    }
    return sum;
  }
  /// Crossings, against those of a fresh layout.
  double crossings_ratio() const {
    const graphlayout::Layout fresh = graphlayout::layout(sizes_, arcs_);
    const auto now = graphlayout::crossings(sizes_, arcs_, nodes_, bends());
    const auto then = graphlayout::crossings(sizes_, arcs_, fresh.nodes, fresh.bends);
    return static_cast<double>(now) / static_cast<double>(std::max<std::uint64_t>(then, 1));
  }

 private:
  Bends bends() const {
    Bends flat;
    flat.starts.push_back(0);
    for (const auto& points : bends_) {
      flat.points.insert(flat.points.end(), points.begin(), points.end());
      flat.starts.push_back(flat.points.size());
    }
    return flat;
  }
  Edit rearrange(std::span<const std::uint32_t> added, std::span<const std::uint32_t> new_nodes = {}) {
    const Bends before = bends();
    // Of some runs the shortest: the longest of many arcs shall not be what else the machine does.
    Edit edit{HUGE_VAL, 0};
    graphlayout::Changes changes;
    constexpr int kRuns = 3;
    for (int run = 0; run < kRuns; ++run) {
      const auto start = std::chrono::steady_clock::now();
      changes = graphlayout::rearrange(sizes_, arcs_, {nodes_, before, new_nodes, added, {}});
      edit.seconds = std::min(edit.seconds, seconds_since(start));
    }
    std::size_t far = 0;
    for (std::size_t i = 0; i < changes.nodes.size(); ++i) {
      Point& node = nodes_[changes.nodes[i]];
      const Point to = changes.positions[i];
      constexpr double kFar = 100;
      far += std::hypot(to.x - node.x, to.y - node.y) > kFar ? 1 : 0;
      node = to;
    }
    for (std::size_t i = 0; i < changes.arcs.size(); ++i) {
      const auto points = changes.bends.of(i);
      bends_[changes.arcs[i]].assign(points.begin(), points.end());
    }
    edit.moved = static_cast<double>(far) / static_cast<double>(nodes_.size());
    return edit;
  }

  std::vector<Size> sizes_;
  std::vector<Arc> arcs_;
  std::vector<Point> nodes_;
  std::vector<std::vector<Point>> bends_;
};

struct EditCase {
  std::uint32_t nodes;
  double median_moved, most_moved, milliseconds;  // limits; the most is the 90th percentile
};
constexpr EditCase kEditCases[] = {
    {300, 0.5, 2, 5}, {1'000, 0.5, 2, 5}, {10'000, 0.1, 0.1, 5}, {100'000, 0.1, 0.1, 100}};

/// The value at a place of the sorted values, from 0 to 1.
double at(std::vector<double> values, double place) {
  std::ranges::sort(values);
  return values[static_cast<std::size_t>(place * static_cast<double>(values.size() - 1))];
}

void print(const char* what, double value, const char* unit, double limit) {
  std::printf("  %-34s %8.3f %s, limit %g%s\n", what, value, unit, limit,
              value > limit ? "  <-- beyond" : "");
}

/// Random edits: what each moves, how long it takes, and what becomes of the crossings.
void measure_edits(const EditCase& limits) {
  constexpr int kEdits = 50;
  // What fresh layouts of small graphs reach varies: several times.
  const int times = limits.nodes <= 1000 ? 9 : 1;
  std::vector<double> moved, milliseconds, crossings, deleted;
  for (int time = 0; time < times; ++time) {
    Edited edited(make_graph(limits.nodes));
    Random random(limits.nodes + static_cast<std::uint64_t>(time));
    for (int i = 0; i < kEdits; ++i) {
      const Edited::Edit edit = edited.add_arc(random);
      moved.push_back(100 * edit.moved);
      milliseconds.push_back(1000 * edit.seconds);
    }
    crossings.push_back(edited.crossings_ratio());
    for (int i = 0; i < kEdits; ++i) deleted.push_back(100 * edited.delete_arc(random).moved);
  }
  std::printf("%u nodes, %d arcs added one by one\n", limits.nodes, kEdits);
  print("nodes moved per arc, median", at(moved, 0.5), "%", limits.median_moved);
  print("nodes moved per arc, 90 % of arcs", at(moved, 0.9), "%", limits.most_moved);
  print("crossings, of a fresh layout's", at(crossings, 0.5), "x", 1.3);
  print("crossings, most of these", at(crossings, 1), "x", 1.3);
  print("time per arc, median", at(milliseconds, 0.5), "ms", limits.milliseconds);
  print("time per arc, longest", at(milliseconds, 1), "ms", limits.milliseconds);
  print("nodes moved per deleted arc, most", at(deleted, 1), "%", 0);
  std::fflush(stdout);
}

/// The compact picture: how long it takes, and how far from square it is.
void measure_compact(std::uint32_t node_count, double limit) {
  const Graph graph = make_graph(node_count);
  std::vector<double> milliseconds;
  graphlayout::Compact picture;
  for (int i = 0; i < 5; ++i) {
    const auto start = std::chrono::steady_clock::now();
    picture = graphlayout::compact(graph.sizes, graph.arcs);
    milliseconds.push_back(1000 * seconds_since(start));
  }
  const auto& [width, height] = std::pair{picture.layout.width, picture.layout.height};
  std::printf("compact, %u nodes: %.0f x %.0f pixels\n", node_count, width, height);
  print("time, median", at(milliseconds, 0.5), "ms", limit);
  print("width to height", width / height, "x", 3);
  print("height to width", height / width, "x", 2);
  std::fflush(stdout);
}

/// What becomes of a compact picture that nodes are added to, half of them below one node.
void measure_compact_edits(std::uint32_t node_count) {
  constexpr double kLimit = 1.3;
  Graph graph = make_graph(node_count);
  Edited edited(graph, graphlayout::compact(graph.sizes, graph.arcs));
  Random random(node_count);
  const std::uint32_t popular = random.below(node_count);
  std::printf("compact, %u nodes, against a fresh picture\n", node_count);
  for (int i = 1; i <= 200; ++i) {
    const std::uint32_t parent = random.chance(50) ? popular : random.below(node_count);
    graph.arcs.push_back({parent, static_cast<std::uint32_t>(graph.sizes.size())});
    graph.sizes.push_back(kNewSize);
    edited.add_child(parent);
    if (i != 20 && i != 50 && i != 200) continue;
    const Edited fresh(graph, graphlayout::compact(graph.sizes, graph.arcs));
    const std::string nodes = std::to_string(i) + " nodes added: ";
    print((nodes + "area").c_str(), edited.area() / fresh.area(), "x", kLimit);
    print((nodes + "length of lines").c_str(), edited.length() / fresh.length(), "x", kLimit);
  }
  std::fflush(stdout);
}

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
  for (const auto& [nodes, limit] : {std::pair{300u, 5.0}, {1'000u, 5.0}, {10'000u, 5.0}, {100'000u, 100.0}})
    measure_compact(nodes, limit);
  for (const std::uint32_t nodes : {600u, 1'000u, 10'000u}) measure_compact_edits(nodes);
  for (const EditCase& limits : kEditCases) measure_edits(limits);
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
