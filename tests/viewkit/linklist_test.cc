/// @file
/// Ordered lists with removal in constant time.
#include "viewkit/linklist.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/support/scene_like_graph.h"

namespace {

using List = viewkit::LinkList<const int>;

std::vector<const int*> contents(const List& list) {
  std::vector<const int*> items;
  for (std::size_t i = 0; i < list.size(); ++i) items.push_back(list.at(i));
  return items;
}

TEST(LinkList, IsAVectorFromOutside) {
  constexpr std::size_t kItems = 60;
  const std::vector<int> items(kItems);
  for (const std::uint32_t kinds : {3u, 20u, 60u}) {
    Random random(kinds);
    List list;
    std::vector<const int*> expected;
    for (int round = 0; round < 3000; ++round) {
      const int* item = &items[random.below(kinds)];
      if (random.chance(round < 1500 ? 60 : 40)) {
        list.add(item);
        expected.push_back(item);
      } else {
        const auto last = std::find(expected.rbegin(), expected.rend(), item);
        EXPECT_EQ(list.remove(item), last != expected.rend());
        if (last != expected.rend()) expected.erase(std::next(last).base());
      }
      if (round % 50 == 0) {
        ASSERT_EQ(contents(list), expected);
      }
    }
    EXPECT_EQ(contents(list), expected);
  }
}

TEST(LinkList, HasNothingBeyondItsEnds) {
  const int item = 0;
  List list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.at(0), nullptr);
  EXPECT_FALSE(list.remove(&item));
  EXPECT_FALSE(list.remove(nullptr));
  list.add(&item);
  EXPECT_EQ(list.at(-1), nullptr);
  EXPECT_EQ(list.at(1), nullptr);
  EXPECT_EQ(list.at(0), &item);
}

TEST(LinkList, EndsInAMomentWhicheverEndItIsTakenFrom) {
  // Takes many minutes if each removal passes over the list.
  const std::vector<int> items(200000);
  for (const bool front : {true, false}) {
    List list;
    for (const int& item : items) list.add(&item);
    while (!list.empty()) ASSERT_TRUE(list.remove(list.at(front ? 0 : list.size() - 1)));
  }
}

}  // namespace
