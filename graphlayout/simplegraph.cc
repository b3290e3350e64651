/// @file
/// Checks and simplifies a caller's input.
#include "graphlayout/simplegraph.h"

#include <algorithm>
#include <cmath>

#include "graphlayout/adjacency.h"

namespace graphlayout {
namespace {

double sane(double value, double otherwise) {
  return std::isnan(value) ? otherwise : std::clamp(value, 0.0, kMaxSize);
}

}  // namespace

Size sane(const Size& size) { return {sane(size.width, 0), sane(size.height, 0)}; }

Options sane(const Options& options) {
  const Options defaults;
  Options result = options;
  const auto mend = [&](double Options::*member) {
    result.*member = sane(options.*member, defaults.*member);
  };
  mend(&Options::node_gap);
  mend(&Options::rank_gap);
  mend(&Options::rank_stretch);
  mend(&Options::arc_gap);
  mend(&Options::component_gap);
  mend(&Options::aspect);
  return result;
}

SimpleGraph simplify(std::span<const Size> sizes, std::span<const Arc> arcs) {
  SimpleGraph graph;
  graph.sizes.reserve(sizes.size());
  for (const Size& size : sizes) graph.sizes.push_back(sane(size));

  graph.arc_of.assign(arcs.size(), kNone);
  std::vector<Arc> legal;
  std::vector<std::uint32_t> number;
  for (std::uint32_t i = 0; i < arcs.size(); ++i) {
    const Arc& arc = arcs[i];
    if (arc.from >= sizes.size() || arc.to >= sizes.size() || arc.from == arc.to) continue;
    legal.push_back(arc);
    number.push_back(i);
  }
  const Incidence out(sizes.size(), legal, Incidence::kOut);
  std::vector<std::uint32_t> last_from(sizes.size(), kNone), arc_to(sizes.size());
  for (std::uint32_t v = 0; v < sizes.size(); ++v) {
    for (const std::uint32_t i : out.of(v)) {
      const std::uint32_t to = legal[i].to;
      if (last_from[to] != v) {
        last_from[to] = v;
        arc_to[to] = static_cast<std::uint32_t>(graph.arcs.size());
        graph.arcs.push_back(legal[i]);
      }
      graph.arc_of[number[i]] = arc_to[to];
    }
  }
  return graph;
}

}  // namespace graphlayout
