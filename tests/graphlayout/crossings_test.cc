/// @file
/// Counting crossings, on drawings that were made by hand.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/graphlayout/drawing.h"

namespace {

using graphlayout::Arc;
using graphlayout::Bends;
using graphlayout::Point;
using graphlayout::Size;

struct Case {
  const char* name;
  std::vector<Point> nodes;  // without extent
  std::vector<Arc> arcs;
  std::vector<std::vector<Point>> bends;  // per arc; fewer: the rest are straight
  std::uint64_t crossings;
};

const Case kCases[] = {
    {"Nothing", {}, {}, {}, 0},
    {"OneArc", {{0, 0}, {5, 5}}, {{0, 1}}, {}, 0},
    {"TwoApart", {{0, 0}, {1, 0}, {0, 9}, {1, 9}}, {{0, 2}, {1, 3}}, {}, 0},
    {"TwoThatCross", {{0, 0}, {1, 0}, {0, 9}, {1, 9}}, {{0, 3}, {1, 2}}, {}, 1},
    {"OneOfThemUpwards", {{0, 0}, {1, 0}, {0, 9}, {1, 9}}, {{3, 0}, {1, 2}}, {}, 1},
    {"FromOneNode", {{0, 0}, {0, 9}, {1, 9}, {2, 9}}, {{0, 3}, {0, 1}, {0, 2}}, {}, 0},
    {"ToOneNode", {{0, 0}, {1, 0}, {2, 0}, {0, 9}}, {{0, 3}, {1, 3}, {2, 3}}, {}, 0},
    {"Duplicates", {{0, 0}, {1, 0}, {0, 9}, {1, 9}}, {{0, 3}, {1, 2}, {1, 2}}, {}, 2},
    {"SelfLink", {{0, 0}, {1, 9}}, {{0, 0}, {0, 1}}, {}, 0},
    {"NoSuchNode", {{0, 0}, {1, 9}}, {{0, 7}, {7, 0}, {0, 1}}, {}, 0},
    {"ThreeByThree",
     {{0, 0}, {1, 0}, {2, 0}, {0, 9}, {1, 9}, {2, 9}},
     {{0, 3}, {0, 4}, {0, 5}, {1, 3}, {1, 4}, {1, 5}, {2, 3}, {2, 4}, {2, 5}},
     {},
     9},
    {"LongArcAcrossAShortOne", {{0, 0}, {10, 90}, {4, 50}, {8, 60}}, {{0, 1}, {2, 3}}, {}, 1},
    {"ShortOneBesideALongArc", {{0, 0}, {10, 90}, {8, 50}, {9, 60}}, {{0, 1}, {2, 3}}, {}, 0},
    {"UprightLineAcrossASlantedOne", {{0, 0}, {10, 10}, {5, 4}, {5, 6}}, {{0, 1}, {2, 3}}, {}, 1},
    {"UprightLineBelowASlantedOne", {{0, 0}, {10, 10}, {5, 6}, {5, 9}}, {{0, 1}, {2, 3}}, {}, 0},
    {"BendAroundTheOther",
     {{0, 0}, {1, 0}, {0, 9}, {1, 9}},
     {{0, 3}, {1, 2}},
     {{}, {{1, 5}, {9, 6}, {1, 8}}},
     1},
    {"CrossedTwice", {{0, 0}, {0, 9}, {5, 0}, {5, 9}}, {{0, 1}, {2, 3}}, {{{9, 4}}}, 2},
};

class Crossings : public testing::TestWithParam<Case> {};

TEST_P(Crossings, AreCounted) {
  const Case& c = GetParam();
  Bends bends;
  bends.starts.push_back(0);
  for (std::size_t i = 0; i < c.arcs.size(); ++i) {
    if (i < c.bends.size()) bends.points.insert(bends.points.end(), c.bends[i].begin(), c.bends[i].end());
    bends.starts.push_back(bends.points.size());
  }
  const std::vector<Size> sizes(c.nodes.size());
  EXPECT_EQ(graphlayout::crossings(sizes, c.arcs, c.nodes, bends), c.crossings);
}

INSTANTIATE_TEST_SUITE_P(Drawings, Crossings, testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CrossingsOfNodesWithExtent, LinesRunFromBottomEdgeToTopEdge) {
  const std::vector<Size> sizes{{10, 2}, {10, 2}, {10, 2}, {10, 2}};
  const std::vector<Arc> arcs{{0, 3}, {1, 2}};
  const std::vector<Point> nodes{{0, 0}, {20, 0}, {0, 9}, {20, 9}};
  EXPECT_EQ(graphlayout::crossings(sizes, arcs, nodes, {}), 1u);
}

TEST(CrossingsOfBadInput, PositionsMissingOrNoNumbersAreLeftOut) {
  const std::vector<Size> sizes(4);
  const std::vector<Arc> arcs{{0, 3}, {1, 2}};
  const std::vector<Point> few{{0, 0}, {1, 0}}, nan{{NAN, 0}, {1, 0}, {0, 9}, {1, 9}};
  EXPECT_EQ(graphlayout::crossings(sizes, arcs, few, {}), 0u);
  EXPECT_EQ(graphlayout::crossings(sizes, arcs, nan, {}), 0u);
}

}  // namespace
