/// @file
/// Clipping, distances and the lines of arcs.
#include "viewkit/sggraph/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/case_name.h"
#include "viewkit/sggraph/arcpath.h"

namespace {

using sggraph::Ports;

struct ClipRow {
  const char* name;
  SgPoint a, b;
  bool inside;
  SgPoint cutA, cutB;
};

class Clip : public testing::TestWithParam<ClipRow> {};

TEST_P(Clip, LeavesThePartInsideTheBox) {
  const ClipRow& row = GetParam();
  SgPoint a = row.a, b = row.b;
  EXPECT_EQ(sggraph::clipLine(a, b, {0, 0, 100, 50}), row.inside);
  EXPECT_EQ(a, row.cutA);
  EXPECT_EQ(b, row.cutB);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, Clip,
    testing::Values(ClipRow{"WhollyInside", {10, 10}, {90, 40}, true, {10, 10}, {90, 40}},
                    ClipRow{"AcrossTheWidth", {-100, 25}, {200, 25}, true, {0, 25}, {100, 25}},
                    ClipRow{"AcrossTheHeight", {50, 1e9}, {50, -1e9}, true, {50, 50}, {50, 0}},
                    ClipRow{"OneEndInside", {50, 25}, {50, 75}, true, {50, 25}, {50, 50}},
                    ClipRow{"AcrossACorner", {-10, 10}, {10, -10}, true, {0, 0}, {0, 0}},
                    ClipRow{"PastACorner", {-10, 5}, {5, -10}, false, {-10, 5}, {5, -10}},
                    ClipRow{"Above", {0, -1}, {100, -1}, false, {0, -1}, {100, -1}},
                    ClipRow{"OnTheEdge", {0, 0}, {100, 0}, true, {0, 0}, {100, 0}},
                    ClipRow{"APointInside", {5, 5}, {5, 5}, true, {5, 5}, {5, 5}},
                    ClipRow{"APointOutside", {-5, 5}, {-5, 5}, false, {-5, 5}, {-5, 5}}),
    CaseName());

TEST(Geometry, DistanceToALineEndsAtItsEnds) {
  const SgPoint line[] = {{0, 0}, {10, 0}}, point[] = {{0, 0}, {0, 0}};
  EXPECT_DOUBLE_EQ(sggraph::distanceToPath({5, 3}, line), 3);
  EXPECT_DOUBLE_EQ(sggraph::distanceToPath({-3, 4}, line), 5);
  EXPECT_DOUBLE_EQ(sggraph::distanceToPath({13, 4}, line), 5);
  EXPECT_DOUBLE_EQ(sggraph::distanceToPath({3, 4}, point), 5);
}

TEST(Geometry, DistanceToNoPathIsInfinite) {
  EXPECT_EQ(sggraph::distanceToPath({0, 0}, {}), std::numeric_limits<double>::infinity());
}

TEST(Geometry, PointsOfAPathAreMeasuredAlongIt) {
  const SgPoint path[] = {{0, 0}, {0, 10}, {0, 10}, {30, 10}};
  EXPECT_EQ(sggraph::pathPoint(path, 0), (SgPoint{0, 0}));
  EXPECT_EQ(sggraph::pathPoint(path, 0.25), (SgPoint{0, 10}));
  EXPECT_EQ(sggraph::pathPoint(path, 0.5), (SgPoint{10, 10}));
  EXPECT_EQ(sggraph::pathPoint(path, 1), (SgPoint{30, 10}));
  EXPECT_EQ(sggraph::pathPoint({}, 0.5), (SgPoint{0, 0}));
}

TEST(Geometry, BoundsHoldAllPoints) {
  const SgPoint points[] = {{3, 4}, {-1, 9}, {7, 5}};
  EXPECT_EQ(sggraph::boundsOf(points), (SgRectangle{-1, 4, 8, 5}));
  EXPECT_EQ(sggraph::boundsOf({}), SgRectangle{});
}

constexpr SgRectangle kUpper{0, 0, 100, 20}, kLower{200, 100, 60, 20}, kBeside{300, 0, 60, 20};

TEST(ArcPath, RunsFromBelowTheParentToAboveTheChild) {
  const auto path = sggraph::arcPath(kUpper, kLower, {}, Ports::Down, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{50, 20}, {230, 100}}));
}

TEST(ArcPath, RunsUpwardsToAParentBelow) {
  const auto path = sggraph::arcPath(kLower, kUpper, {}, Ports::Down, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{230, 100}, {50, 20}}));
}

TEST(ArcPath, RunsFromSideToSideBetweenNeighbours) {
  const auto path = sggraph::arcPath(kUpper, kBeside, {}, Ports::Down, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{100, 10}, {300, 10}}));
}

TEST(ArcPath, OfAnyDirectionRunsBetweenTheMiddles) {
  const SgRectangle below{0, 200, 100, 20};
  const auto path = sggraph::arcPath(kUpper, below, {}, Ports::Any, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{50, 20}, {50, 200}}));
}

TEST(ArcPath, GoesOverItsBends) {
  const SgPoint bends[] = {{150, 40}, {150, 80}};
  const auto path = sggraph::arcPath(kUpper, kLower, bends, Ports::Down, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{50, 20}, {150, 40}, {150, 80}, {230, 100}}));
}

TEST(ArcPath, DuplicatesKeepApartInEveryDirection) {
  const SgRectangle places[] = {kLower, kBeside, {0, 100, 100, 20}, {-900, 40, 60, 20}};
  for (const Ports ports : {Ports::Down, Ports::Any})
    for (const SgRectangle& to : places) {
      SCOPED_TRACE(testing::Message() << to.x << ' ' << to.y);
      const double one = sggraph::laneOffset(0, 2, 60), two = sggraph::laneOffset(1, 2, 60);
      const auto first = sggraph::arcPath(kUpper, to, {}, ports, {one, false});
      const auto second = sggraph::arcPath(kUpper, to, {}, ports, {two, false});
      EXPECT_GT(sggraph::distanceToPath(sggraph::pathPoint(first, 0.5), second), 2.5);
      // The way back lies beside the way there, not on it.
      const auto back = sggraph::arcPath(to, kUpper, {}, ports, {two, true});
      EXPECT_GT(sggraph::distanceToPath(sggraph::pathPoint(first, 0.5), back), 2.5);
    }
}

TEST(ArcPath, AThousandLanesStayWithinTheNode) {
  for (const std::size_t lane : {0u, 500u, 999u})
    EXPECT_LE(std::abs(sggraph::laneOffset(lane, 1000, 60)), 30);
  EXPECT_EQ(sggraph::laneOffset(0, 1, 60), 0);
}

TEST(ArcPath, ALoopLeavesAndReachesItsNodeOnTheRight) {
  const auto path = sggraph::loopPath(kUpper, 0);
  EXPECT_EQ(path.front().x, kUpper.right());
  EXPECT_EQ(path.back().x, kUpper.right());
  EXPECT_GT(sggraph::boundsOf(path).width, 10);
  EXPECT_GT(sggraph::boundsOf(sggraph::loopPath(kUpper, 1)).width, sggraph::boundsOf(path).width);
}

TEST(ArcPath, NodesOnTopOfEachOtherMakeNoNonsense) {
  for (const Ports ports : {Ports::Down, Ports::Any})
    for (const SgPoint& p : sggraph::arcPath(kUpper, kUpper, {}, ports, {5, false})) {
      EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y)) << p.x << ' ' << p.y;
      EXPECT_TRUE(kUpper.grownBy(1).contains(p)) << p.x << ' ' << p.y;
    }
}

}  // namespace
