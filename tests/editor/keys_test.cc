/// @file
/// The table of keys and gestures, and who must say the same.
#include "editor/keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/support/files.h"
#include "tests/support/places.h"
#include "viewkit/keys.h"

namespace {

using testing::Contains;
using testing::HasSubstr;

TEST(Keys, TheGuideSaysOfEachWhatItDoes) {
  const std::string guide = read_file(support::project_file("docs/guide.md"));
  for (const GestureGroup& group : gesture_groups())
    for (const Gesture& gesture : group.gestures)
      EXPECT_THAT(guide, HasSubstr("| " + std::string(gesture.how) + " | " + gesture.does + " |"));
}

TEST(Keys, NoneDoesTwoThingsAtOnePlace) {
  for (const GestureGroup& group : gesture_groups()) {
    std::set<std::string> first;
    for (const Gesture& gesture : group.gestures)
      EXPECT_TRUE(first.insert(std::string(viewkit::splitKeys(gesture.how).front())).second) << gesture.how;
  }
}

TEST(Keys, TheMenusTakeThemFromTheTable) {
  const auto lines = menu_key_lines();
  EXPECT_THAT(lines, Contains("*SaveAs.accelerator: Shift Ctrl<Key>s"));
  EXPECT_THAT(lines, Contains("*SaveAs.acceleratorText: Shift+Ctrl+S"));
  EXPECT_THAT(lines, Contains("*Redo.accelerator: Shift Ctrl<Key>z, Ctrl<Key>y"));
  EXPECT_THAT(lines, Contains("*Redo.acceleratorText: Shift+Ctrl+Z"));
  EXPECT_THAT(lines, Contains("*DeleteLink.accelerator: <Key>osfDelete"));
  EXPECT_THAT(lines, Contains("*ZoomIn.acceleratorText: Ctrl++"));
}

}  // namespace
