/// @file
/// Items by path and text.
#include "dialogs/values/itemtext.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/items/itemtree.h"

namespace {

using values::edit_text;
using values::Item;

TEST(ItemText, OptionsTakeALabelOrElseAnIndex) {
  const auto top = item_tree();
  const Item& option = *top->find("group.option");
  EXPECT_FALSE(edit_text(*top, "group.option", "7")) << "what it shows, though no entry";
  EXPECT_FALSE(option.changed());
  EXPECT_FALSE(edit_text(*top, "group.option", "2"));
  EXPECT_EQ(option.option(), 1) << "the label comes first";
  EXPECT_FALSE(edit_text(*top, "group.option", "0"));
  EXPECT_EQ(option.option(), 0);
  for (const char* wrong : {"3", "7", "-1", "one", "", "0x1", "1 ", "99999999999999999999"}) {
    EXPECT_EQ(edit_text(*top, "group.option", wrong), "no such entry of option: " + std::string(wrong));
    EXPECT_EQ(option.option(), 0);
  }
}

TEST(ItemText, TurningOneOfARadioOnTurnsTheOthersOff) {
  const auto top = item_tree();
  EXPECT_FALSE(edit_text(*top, "group.radio.b", "1"));
  EXPECT_FALSE(on_at(*top, "group.radio.a"));
  EXPECT_TRUE(on_at(*top, "group.radio.b"));
  EXPECT_FALSE(edit_text(*top, "group.radio.a", "0")) << "it is off";
  EXPECT_EQ(edit_text(*top, "group.radio.b", "0"), "turn on another one of radio instead of turning off: b");
  EXPECT_TRUE(on_at(*top, "group.radio.b"));
}

TEST(ItemText, ARadioIsJudgedWhenAllIsDone) {
  const auto top = item_tree();
  const auto turn = [&](std::string a, std::string b, bool b_first) {
    std::vector<values::TextEdit> edits{{"group.radio.a", std::move(a)}, {"group.radio.b", std::move(b)}};
    if (b_first) std::swap(edits[0], edits[1]);
    return values::edit_texts(*top, edits);
  };
  for (const bool b_first : {false, true}) {
    SCOPED_TRACE(b_first);
    EXPECT_FALSE(turn("0", "1", b_first));
    EXPECT_FALSE(on_at(*top, "group.radio.a"));
    EXPECT_TRUE(on_at(*top, "group.radio.b"));
    EXPECT_FALSE(turn("1", "0", b_first));
    EXPECT_TRUE(on_at(*top, "group.radio.a"));
    EXPECT_FALSE(on_at(*top, "group.radio.b"));
    EXPECT_EQ(turn("0", "0", b_first), "turn on another one of radio instead of turning off: a");
    EXPECT_TRUE(on_at(*top, "group.radio.a"));
  }
}

TEST(ItemText, RefusesWhatADialogCouldNot) {
  const auto top = item_tree();
  EXPECT_EQ(edit_text(*top, "group.x", "1"), "no such item: group.x");
  EXPECT_EQ(edit_text(*top, "x.y", "1"), "no such item: x.y");
  EXPECT_EQ(edit_text(*top, "", "1"), "no such item: ");
  EXPECT_EQ(edit_text(*top, "toggle", "on"), "toggle is 0 or 1, not: on");
  EXPECT_EQ(edit_text(*top, "group", "1"), "this item can't be changed: group");
  EXPECT_EQ(edit_text(*top, "sep", "1"), "this item can't be changed: sep");
  EXPECT_EQ(edit_text(*top, "label", "1"), "this item can't be changed: label");
  EXPECT_FALSE(top->changed());
}

TEST(ItemText, VisitsWhatHasAValueInOrder) {
  const auto top = item_tree();
  std::string all;
  values::for_each_shown(*top, [&](const std::string& path, const Item& item) {
    all += path + "=" + values::shown_text(item, {}) + " ";
  });
  EXPECT_EQ(all, "group.text=old group.radio.a=1 group.radio.b=0 group.option=7 toggle=1 label=label ");
}

}  // namespace
