/// @file
/// The whole graph's layout.
#include "graphlayout/layout.h"

#include "graphlayout/layered.h"
#include "graphlayout/simplegraph.h"

namespace graphlayout {

Layout layout(std::span<const Size> sizes, std::span<const Arc> arcs, const Options& options) {
  const SimpleGraph graph = simplify(sizes, arcs);
  Layout result = layered(graph, sane(options));
  result.bends = bends_of(graph, result, arcs);
  return result;
}

}  // namespace graphlayout
