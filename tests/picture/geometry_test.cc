/// @file
/// Clipping, distances and the lines of arcs.
#include "picture/geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "picture/arcpath.h"
#include "tests/support/case_name.h"

namespace {

using picture::Ports;

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
  EXPECT_EQ(picture::clipLine(a, b, {0, 0, 100, 50}), row.inside);
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
  EXPECT_DOUBLE_EQ(picture::distanceToPath({5, 3}, line), 3);
  EXPECT_DOUBLE_EQ(picture::distanceToPath({-3, 4}, line), 5);
  EXPECT_DOUBLE_EQ(picture::distanceToPath({13, 4}, line), 5);
  EXPECT_DOUBLE_EQ(picture::distanceToPath({3, 4}, point), 5);
}

TEST(Geometry, DistanceToNoPathIsInfinite) {
  EXPECT_EQ(picture::distanceToPath({0, 0}, {}), std::numeric_limits<double>::infinity());
}

TEST(Geometry, PointsOfAPathAreMeasuredAlongIt) {
  const SgPoint path[] = {{0, 0}, {0, 10}, {0, 10}, {30, 10}};
  EXPECT_EQ(picture::pathPoint(path, 0), (SgPoint{0, 0}));
  EXPECT_EQ(picture::pathPoint(path, 0.25), (SgPoint{0, 10}));
  EXPECT_EQ(picture::pathPoint(path, 0.5), (SgPoint{10, 10}));
  EXPECT_EQ(picture::pathPoint(path, 1), (SgPoint{30, 10}));
  EXPECT_EQ(picture::pathPoint({}, 0.5), (SgPoint{0, 0}));
}

TEST(Geometry, BoundsHoldAllPoints) {
  const SgPoint points[] = {{3, 4}, {-1, 9}, {7, 5}};
  EXPECT_EQ(picture::boundsOf(points), (SgRectangle{-1, 4, 8, 5}));
  EXPECT_EQ(picture::boundsOf({}), SgRectangle{});
}

constexpr SgRectangle kUpper{0, 0, 100, 20}, kLower{200, 100, 60, 20}, kBeside{300, 0, 60, 20};

TEST(ArcPath, RunsFromBelowTheParentToAboveTheChild) {
  const auto path = picture::arcPath(kUpper, kLower, {}, Ports::Down, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{50, 20}, {230, 100}}));
}

TEST(ArcPath, RunsUpwardsToAParentBelow) {
  const auto path = picture::arcPath(kLower, kUpper, {}, Ports::Down, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{230, 100}, {50, 20}}));
}

TEST(ArcPath, RunsFromSideToSideBetweenNeighbours) {
  const auto path = picture::arcPath(kUpper, kBeside, {}, Ports::Down, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{100, 10}, {300, 10}}));
}

TEST(ArcPath, OfAnyDirectionRunsBetweenTheMiddles) {
  const SgRectangle below{0, 200, 100, 20};
  const auto path = picture::arcPath(kUpper, below, {}, Ports::Any, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{50, 20}, {50, 200}}));
}

TEST(ArcPath, GoesOverItsBends) {
  const SgPoint bends[] = {{150, 40}, {150, 80}};
  const auto path = picture::arcPath(kUpper, kLower, bends, Ports::Down, {});
  EXPECT_EQ(path, (std::vector<SgPoint>{{50, 20}, {150, 40}, {150, 80}, {230, 100}}));
}

TEST(ArcPath, DuplicatesKeepApartInEveryDirection) {
  const SgRectangle places[] = {kLower, kBeside, {0, 100, 100, 20}, {-900, 40, 60, 20}};
  for (const Ports ports : {Ports::Down, Ports::Any})
    for (const SgRectangle& to : places) {
      SCOPED_TRACE(testing::Message() << to.x << ' ' << to.y);
      const double one = picture::laneOffset(0, 2, 60), two = picture::laneOffset(1, 2, 60);
      const auto first = picture::arcPath(kUpper, to, {}, ports, {one, false});
      const auto second = picture::arcPath(kUpper, to, {}, ports, {two, false});
      EXPECT_GT(picture::distanceToPath(picture::pathPoint(first, 0.5), second), 2.5);
      // The way back lies beside the way there, not on it.
      const auto back = picture::arcPath(to, kUpper, {}, ports, {two, true});
      EXPECT_GT(picture::distanceToPath(picture::pathPoint(first, 0.5), back), 2.5);
    }
}

TEST(ArcPath, AThousandLanesStayWithinTheNode) {
  for (const std::size_t lane : {0u, 500u, 999u})
    EXPECT_LE(std::abs(picture::laneOffset(lane, 1000, 60)), 30);
  EXPECT_EQ(picture::laneOffset(0, 1, 60), 0);
}

TEST(ArcPath, ALoopLeavesAndReachesItsNodeOnTheRight) {
  const auto path = picture::loopPath(kUpper, 0);
  EXPECT_EQ(path.front().x, kUpper.right());
  EXPECT_EQ(path.back().x, kUpper.right());
  EXPECT_GT(picture::boundsOf(path).width, 10);
  EXPECT_GT(picture::boundsOf(picture::loopPath(kUpper, 1)).width, picture::boundsOf(path).width);
}

TEST(ArcPath, NodesOnTopOfEachOtherMakeNoNonsense) {
  for (const Ports ports : {Ports::Down, Ports::Any})
    for (const SgPoint& p : picture::arcPath(kUpper, kUpper, {}, ports, {5, false})) {
      EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y)) << p.x << ' ' << p.y;
      EXPECT_TRUE(kUpper.grownBy(1).contains(p)) << p.x << ' ' << p.y;
    }
}

}  // namespace
