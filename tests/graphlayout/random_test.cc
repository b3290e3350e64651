/// @file
/// What holds for every layout, on many graphs of a seeded generator.
#include <gtest/gtest.h>

#include <string>

#include "graphlayout/layout.h"
#include "tests/graphlayout/drawing.h"
#include "tests/support/scene_like_graph.h"

namespace {

using graphlayout::Layout;

std::vector<graphlayout::Size> random_sizes(Random& random, std::uint32_t count) {
  std::vector<graphlayout::Size> sizes;
  for (std::uint32_t i = 0; i < count; ++i) {
    sizes.push_back({20.0 + random.below(100), random.chance(10) ? 100.0 + random.below(100) : 24});
  }
  return sizes;
}

/// Arcs between any two nodes: cycles, self-links, duplicates, several components.
Graph any_graph(Random& random) {
  const std::uint32_t nodes = 1 + random.below(60), arcs = random.below(2 * nodes + 1);
  Graph graph{random_sizes(random, nodes), {}};
  for (std::uint32_t i = 0; i < arcs; ++i) graph.arcs.push_back({random.below(nodes), random.below(nodes)});
  return graph;
}

/// Arcs only from lower to higher numbers.
Graph acyclic_graph(Random& random) {
  Graph graph = any_graph(random);
  std::erase_if(graph.arcs, [](const graphlayout::Arc& arc) { return arc.from >= arc.to; });
  return graph;
}

/// A tree in which children come later than parents.
Graph tree(Random& random) {
  const std::uint32_t nodes = 1 + random.below(300);
  Graph graph{random_sizes(random, nodes), {}};
  for (std::uint32_t i = 1; i < nodes; ++i) graph.arcs.push_back({random.below(i), i});
  return graph;
}

struct Family {
  const char* name;
  Graph (*make)(Random& random);
};
std::string name_of(const testing::TestParamInfo<Family>& info) { return info.param.name; }

class RandomGraphs : public testing::TestWithParam<Family> {
 protected:
  /// Calls `check(graph)` for many graphs of the family.
  template <class Check>
  void for_each_graph(Check check) {
    for (std::uint64_t seed = 0; seed < 100 && !HasFailure(); ++seed) {
      SCOPED_TRACE(seed);
      Random random(seed);
      check(GetParam().make(random));
    }
  }
};

TEST_P(RandomGraphs, NoOverlapAndWithinTheDrawing) {
  for_each_graph([](const Graph& graph) { expect_sound(graph, layout_of(graph)); });
}

TEST_P(RandomGraphs, NoOverlapWithoutGapsAndWithEveryLeafInABlock) {
  const graphlayout::Options tight{0, 0, 1, 0, 0, 1, 1};
  for_each_graph([&](const Graph& graph) { expect_sound(graph, layout_of(graph, tight)); });
}

TEST_P(RandomGraphs, SameInputSameOutput) {
  for_each_graph([](const Graph& graph) {
    const Layout first = layout_of(graph), second = layout_of(graph);
    EXPECT_EQ(first.nodes, second.nodes);
    EXPECT_EQ(first.bends.points, second.bends.points);
  });
}

INSTANTIATE_TEST_SUITE_P(Families, RandomGraphs,
                         testing::Values(Family{"Any", any_graph}, Family{"Acyclic", acyclic_graph},
                                         Family{"Tree", tree}),
                         name_of);

TEST(AcyclicGraphs, ArcsLeadDown) {
  for (std::uint64_t seed = 0; seed < 150; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Graph graph = acyclic_graph(random);
    EXPECT_EQ(arcs_not_down(graph, layout_of(graph)), 0u);
  }
}

TEST(Trees, HaveNoCrossings) {
  for (std::uint64_t seed = 0; seed < 150; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    Graph graph = tree(random);
    EXPECT_EQ(crossings_of(graph, layout_of(graph)), 0u);
    for (graphlayout::Arc& arc : graph.arcs) std::swap(arc.from, arc.to);
    EXPECT_EQ(crossings_of(graph, layout_of(graph)), 0u) << "all arcs towards the root";
  }
}

TEST(Trees, KeepTheOrderOfTheirArcs) {
  for (std::uint64_t seed = 0; seed < 50; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    const Graph graph = tree(random);
    const Layout layout = layout_of(graph, {.wrap_leaves = 0});
    std::vector<double> last(graph.sizes.size(), -1);
    for (const graphlayout::Arc& arc : graph.arcs) {
      EXPECT_GT(layout.nodes[arc.to].x, last[arc.from]);
      last[arc.from] = layout.nodes[arc.to].x;
    }
  }
}

TEST(SceneLikeGraphs, AreSound) {
  for (const std::uint32_t nodes : {20u, 100u, 1'000u, 3'000u}) {
    SCOPED_TRACE(nodes);
    const SceneLikeGraph scene = scene_like_graph(nodes, nodes);
    Graph graph = graph_of(scene.names.size(), {});
    for (const auto& [from, to] : scene.arcs) graph.arcs.push_back({from, to});
    const Layout layout = layout_of(graph);
    expect_sound(graph, layout);
    EXPECT_EQ(arcs_not_down(graph, layout), 0u);
  }
}

}  // namespace
