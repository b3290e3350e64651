/// @file
/// What folded nodes hide, and the picture without that.
#include "graphlayout/folding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "graphlayout/compact.h"
#include "tests/graphlayout/drawing.h"

namespace {

using graphlayout::Arc;
using graphlayout::Closed;
using graphlayout::kShown;
using graphlayout::Point;
using testing::ElementsAre;

std::vector<std::uint32_t> fold(const Graph& graph, const std::vector<std::uint32_t>& folded) {
  return graphlayout::fold(graph.sizes.size(), graph.arcs, folded);
}

std::vector<bool> hidden_of(const std::vector<std::uint32_t>& faces) {
  std::vector<bool> hidden;
  for (const std::uint32_t face : faces) hidden.push_back(face != kShown);
  return hidden;
}

/// The part of a picture that is shown.
struct Shown {
  std::vector<graphlayout::Size> sizes;
  std::vector<Point> nodes;
};
Shown shown(const std::vector<graphlayout::Size>& sizes, const std::vector<Point>& nodes,
            const std::vector<bool>& hidden) {
  Shown shown;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (hidden[i]) continue;
    shown.sizes.push_back(sizes[i]);
    shown.nodes.push_back(nodes[i]);
  }
  return shown;
}

TEST(Fold, HidesWhatIsReachedThroughTheNodeOnly) {
  // 4 has another parent, and so has, through it, 5.
  const Graph graph = graph_of(7, {{0, 1}, {0, 6}, {1, 2}, {2, 3}, {2, 4}, {6, 4}, {4, 5}});
  EXPECT_THAT(fold(graph, {1}), ElementsAre(kShown, kShown, 1, 1, kShown, kShown, kShown));
  EXPECT_THAT(fold(graph, {0}), ElementsAre(kShown, 0, 0, 0, 0, 0, 0));
  EXPECT_THAT(fold(graph, {3}), ElementsAre(kShown, kShown, kShown, kShown, kShown, kShown, kShown));
}

TEST(Fold, TheOutermostStandsForAll) {
  const Graph graph = graph_of(4, {{0, 1}, {1, 2}, {2, 3}});
  EXPECT_THAT(fold(graph, {2, 1}), ElementsAre(kShown, kShown, 1, 1));
  EXPECT_THAT(fold(graph, {1, 2}), ElementsAre(kShown, kShown, 1, 1));
}

TEST(Fold, LoopsBelowANodeAreHiddenWithIt) {
  const Graph graph = graph_of(4, {{0, 1}, {1, 2}, {2, 3}, {3, 2}, {3, 1}, {2, 2}});
  EXPECT_THAT(fold(graph, {1}), ElementsAre(kShown, kShown, 1, 1));
  EXPECT_THAT(fold(graph_of(2, {{0, 1}, {1, 0}, {0, 9}}), {0, 1, 7}), ElementsAre(kShown, 0));
}

TEST(CloseUp, ClosesTheStripThatHiddenNodesLeave) {
  const std::vector<graphlayout::Size> sizes(4, {80, 24});
  const std::vector<Point> nodes{{0, 0}, {100, 0}, {220, 0}, {220, 100}};
  const graphlayout::Bends bends{{{260, 60}}, {0, 1}};
  const std::vector<bool> hidden{false, true, false, false};
  std::vector<graphlayout::Size> now = sizes;
  EXPECT_THAT(graphlayout::close_up(sizes, nodes, bends, {hidden, now}).nodes,
              ElementsAre(nodes[0], testing::_, Point{120, 0}, Point{120, 100}));
  now[0].width = 110;
  const Closed closed = graphlayout::close_up(sizes, nodes, bends, {hidden, now});
  EXPECT_THAT(closed.nodes, ElementsAre(nodes[0], testing::_, Point{150, 0}, Point{150, 100}));
  EXPECT_THAT(closed.bends.points, ElementsAre(Point{190, 60}));
}

TEST(CloseUp, GapsThatNoHiddenNodeMadeStay) {
  const std::vector<graphlayout::Size> sizes(3, {80, 24});
  const std::vector<Point> nodes{{0, 0}, {900, 0}, {0, 700}};
  const std::vector<bool> hidden{false, false, true};
  EXPECT_THAT(graphlayout::close_up(sizes, nodes, {}, {hidden, sizes}).nodes,
              ElementsAre(nodes[0], nodes[1], testing::_));
}

/// Some folds in each of some graphs.
class AnyFolds : public testing::TestWithParam<std::uint32_t> {
 protected:
  Graph graph_ = graph_like_a_scene(30 + 20 * GetParam(), GetParam());
  std::vector<bool> hidden_;
  std::vector<graphlayout::Size> now_ = graph_.sizes;

  AnyFolds() {
    Random random(GetParam());
    std::vector<std::uint32_t> folded;
    for (int i = 0; i < 6; ++i) folded.push_back(1 + random.below(20));
    hidden_ = hidden_of(fold(graph_, folded));
    for (const std::uint32_t head : folded) now_[head].width += 40;
  }
};

TEST_P(AnyFolds, LeaveNoOverlapInAnyPicture) {
  const graphlayout::Layout layout = layout_of(graph_);
  const Closed closed = graphlayout::close_up(graph_.sizes, layout.nodes, layout.bends, {hidden_, now_});
  const Shown left = shown(now_, closed.nodes, hidden_);
  EXPECT_EQ(overlap(left.sizes, left.nodes), "");

  const graphlayout::CompactFolding compact =
      graphlayout::compact_folding(graph_.sizes, graph_.arcs, {hidden_, now_});
  EXPECT_EQ(compact.open.nodes, graphlayout::compact(graph_.sizes, graph_.arcs).layout.nodes);
  const Shown blocks = shown(now_, compact.closed.nodes, hidden_);
  EXPECT_EQ(overlap(blocks.sizes, blocks.nodes), "");
  const bool any = std::ranges::find(hidden_, true) != hidden_.end();
  const graphlayout::CompactFolding unhidden = graphlayout::compact_folding(
      graph_.sizes, graph_.arcs, {std::vector<bool>(graph_.sizes.size(), false), now_});
  bool closer = false;  // to the upper left corner than with labels as wide, but nothing hidden
  for (std::size_t v = 0; v < now_.size(); ++v) {
    if (hidden_[v]) continue;
    const Point &now = compact.closed.nodes[v], &otherwise = unhidden.closed.nodes[v];
    EXPECT_TRUE(now.x <= otherwise.x && now.y <= otherwise.y) << v;
    closer = closer || now != otherwise;
  }
  EXPECT_EQ(closer, any);
}

TEST_P(AnyFolds, WithoutAnythingHiddenAreThePictureItself) {
  const std::vector<bool> none(graph_.sizes.size(), false);
  const graphlayout::CompactFolding compact =
      graphlayout::compact_folding(graph_.sizes, graph_.arcs, {none, graph_.sizes});
  EXPECT_EQ(compact.closed.nodes, compact.open.nodes);
  EXPECT_EQ(compact.closed.bends.points, compact.open.bends.points);
  const Closed closed =
      graphlayout::close_up(graph_.sizes, compact.open.nodes, compact.open.bends, {none, graph_.sizes});
  EXPECT_EQ(closed.nodes, compact.open.nodes);
  EXPECT_EQ(closed.bends.points, compact.open.bends.points);
}

INSTANTIATE_TEST_SUITE_P(Folding, AnyFolds, testing::Range(0u, 20u));

TEST(CompactFolding, AChainIsCutWhereItIsFolded) {
  Graph chain = graph_of(40, {});
  for (std::uint32_t i = 0; i + 1 < 40; ++i) chain.arcs.push_back({i, i + 1});
  const auto hidden = hidden_of(fold(chain, {10}));
  const graphlayout::CompactFolding picture =
      graphlayout::compact_folding(chain.sizes, chain.arcs, {hidden, chain.sizes});
  for (std::size_t i = 0; i <= 10; ++i) EXPECT_EQ(picture.closed.nodes[i], picture.open.nodes[i]) << i;
  EXPECT_FALSE(picture.closed.bends.of(9).empty());
  EXPECT_TRUE(picture.closed.bends.of(10).empty()) << "it leads to a hidden node";
}

}  // namespace
