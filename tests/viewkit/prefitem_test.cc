/// @file
/// The items of preference dialogs by themselves: values, changes, groups.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "tests/items/itemtree.h"
#include "viewkit/vkprefgroup.h"

namespace {

TEST(PrefText, HasChangedFromTheFirstDifferenceToTheNextApply) {
  VkPrefText text("text", 10);
  EXPECT_EQ(text.getValue(), "");
  text.setValue("set");
  EXPECT_FALSE(text.changed());
  text.edit("set");
  EXPECT_FALSE(text.changed());
  text.edit("typed");
  EXPECT_TRUE(text.changed());
  text.edit("set");
  EXPECT_TRUE(text.changed());
  text.edit("typed");
  text.applied();
  EXPECT_FALSE(text.changed());
  EXPECT_EQ(text.getValue(), "typed");
}

TEST(PrefText, RevertsToWhatWasLastSetOrApplied) {
  VkPrefText text("text", 10);
  text.setValue("set");
  text.edit("typed");
  text.revert();
  EXPECT_EQ(text.getValue(), "set");
  EXPECT_FALSE(text.changed());
  text.edit("typed");
  text.applied();
  text.edit("more");
  text.revert();
  EXPECT_EQ(text.getValue(), "typed");
  EXPECT_FALSE(text.changed());
}

TEST(PrefText, IsWidenedForLongNumbersOnly) {
  VkPrefText text("text", 5);
  text.setValue("0.25");
  EXPECT_EQ(text.wantedColumns(), 5);
  text.setValue("-0.333333");
  EXPECT_EQ(text.wantedColumns(), 10);
  text.setValue(std::string(2000, 'x'));
  EXPECT_LE(text.wantedColumns(), 20);
}

TEST(PrefOption, ShowsAnIndexBeyondTheMenuAsANumber) {
  VkPrefOption option("option", 2);
  option.setLabel(0, "a");
  option.setLabel(1, "b");
  option.setLabel(2, "beyond");
  option.setLabel(-1, "before");
  EXPECT_EQ(option.size(), 2);
  EXPECT_EQ(option.label(1), "b");
  option.setValue(77);
  EXPECT_EQ(option.getValue(), 77);
  EXPECT_EQ(option.label(option.getValue()), "77");
  option.setValue(-1);
  EXPECT_EQ(option.label(option.getValue()), "-1");
}

TEST(PrefGroup, CountsItsItemsInOrder) {
  VkPrefGroup group("group", true);
  group.addItem(std::make_unique<VkPrefLabel>("a"));
  VkPrefText& b = group.addItem(std::make_unique<VkPrefText>("b", 5));
  group.addItem(std::make_unique<VkPrefSeparator>("c"));
  EXPECT_EQ(group.size(), 3);
  EXPECT_STREQ(group.item(0)->name(), "a");
  EXPECT_EQ(group.item(1), &b);
  EXPECT_EQ(group.item(3), nullptr);
  EXPECT_EQ(group.item(-1), nullptr);
  EXPECT_EQ(group.item(std::string("b")), &b);
  EXPECT_EQ(group.item(std::string("d")), nullptr);
}

TEST(PrefGroup, HasChangedWhenOneOfItsItemsHas) {
  VkPrefList list("prefList");
  auto& group = list.addItem(std::make_unique<VkPrefGroup>("group"));
  auto& text = group.addItem(std::make_unique<VkPrefText>("text", 5));
  auto& toggle = group.addItem(std::make_unique<VkPrefToggle>("toggle"));
  EXPECT_FALSE(list.changed());
  toggle.edit(true);
  EXPECT_TRUE(group.changed());
  EXPECT_TRUE(list.changed());
  EXPECT_FALSE(text.changed());
  list.applied();
  EXPECT_FALSE(list.changed());
  EXPECT_TRUE(toggle.getValue());
  text.edit("x");
  list.revert();
  EXPECT_FALSE(list.changed());
  EXPECT_EQ(text.getValue(), "");
  EXPECT_TRUE(toggle.getValue());
}

TEST(PrefGroup, TakesWhatIsAddedIntoItsTree) {
  VkPrefGroup group("group");
  auto& inner = group.addItem(std::make_unique<VkPrefGroup>("inner"));
  auto& text = inner.addItem(std::make_unique<VkPrefText>("text", 5));
  text.edit("typed");
  EXPECT_EQ(group.model().find("inner.text"), &text.model());
  EXPECT_EQ(text_at(group.model(), "inner.text"), "typed");
  EXPECT_EQ(group.find("inner.text"), &text);
  EXPECT_EQ(group.find(""), &group);
  for (const char* path : {"inner.x", "x", "inner.text.x", "text"}) EXPECT_EQ(group.find(path), nullptr);
}

class PrefRadio : public testing::Test {
 protected:
  /// The states of the toggles, one digit each.
  std::string states() const {
    std::string all;
    for (int i = 0; i < radio_.size(); ++i) all += toggle(i).getValue() ? '1' : '0';
    return all;
  }
  VkPrefToggle& toggle(int number) const { return dynamic_cast<VkPrefToggle&>(*radio_.item(number)); }

  VkPrefRadio radio_ = VkPrefRadio("radio", true);

  PrefRadio() {
    for (const char* name : {"a", "b", "c"}) radio_.addItem(std::make_unique<VkPrefToggle>(name));
  }
};

TEST_F(PrefRadio, TheUserTurnsOnOneAtATime) {
  toggle(2).setValue(true);
  EXPECT_EQ(states(), "001");
  EXPECT_FALSE(radio_.changed());
  toggle(1).edit(true);
  EXPECT_EQ(states(), "010");
  EXPECT_TRUE(toggle(1).changed());
  EXPECT_TRUE(toggle(2).changed());
  EXPECT_FALSE(toggle(0).changed());
}

TEST_F(PrefRadio, RevertsAsAWhole) {
  toggle(0).setValue(true);
  toggle(1).edit(true);
  toggle(2).edit(true);
  toggle(0).edit(true);
  toggle(1).edit(true);
  EXPECT_EQ(states(), "010");
  radio_.revert();
  EXPECT_EQ(states(), "100");
  EXPECT_FALSE(radio_.changed());
}

TEST_F(PrefRadio, ShowsSeveralOrNoneIfAProgramSaysSo) {
  EXPECT_EQ(states(), "000");
  toggle(0).setValue(true);
  toggle(1).setValue(true);
  EXPECT_EQ(states(), "110");
  EXPECT_FALSE(radio_.changed());
  toggle(2).edit(true);
  EXPECT_EQ(states(), "001");
}

/// Counts how often an item says that it shows another value.
class ShownListener : public VkCallbackObject {
 public:
  explicit ShownListener(VkPrefItem& item) {
    item.addCallback(VkPrefItem::shownCallback, this, &ShownListener::shown);
  }
  int count = 0;

 private:
  void shown(VkPrefItem*, void*, void*) { ++count; }
};

TEST(PrefItem, TellsWhenItShowsAnotherValue) {
  VkPrefText text("text", 5);
  const ShownListener listener(text);
  text.setValue("a");
  text.edit("b");
  text.revert();
  EXPECT_EQ(listener.count, 3);
  text.applied();
  EXPECT_EQ(listener.count, 3);
}

TEST(PrefItem, TellsWhenAnItemInItShowsAnotherValue) {
  VkPrefGroup group("group");
  auto& text = group.addItem(std::make_unique<VkPrefText>("text", 5));
  const ShownListener listener(group);
  text.edit("b");
  EXPECT_EQ(listener.count, 1);
}

TEST(PrefItem, ShowsATreeThatIsThere) {
  auto tree = item_tree();
  items::Item& top = *tree;
  VkPrefList list(std::move(tree));
  EXPECT_EQ(&list.model(), &top);
  for (const auto& [path, name] :
       std::initializer_list<std::pair<const char*, const char*>>{{"group", "VkPrefGroup"},
                                                                  {"group.text", "VkPrefText"},
                                                                  {"group.radio", "VkPrefRadio"},
                                                                  {"group.radio.a", "VkPrefToggle"},
                                                                  {"group.option", "VkPrefOption"},
                                                                  {"sep", "VkPrefSeparator"},
                                                                  {"label", "VkPrefLabel"}}) {
    ASSERT_NE(list.find(path), nullptr) << path;
    EXPECT_STREQ(list.find(path)->className(), name);
    EXPECT_EQ(&list.find(path)->model(), top.find(path));
  }
  auto& text = dynamic_cast<VkPrefText&>(*list.find("group.text"));
  const ShownListener listener(text);
  text.edit("typed");
  EXPECT_EQ(text_at(top, "group.text"), "typed");
  EXPECT_TRUE(top.changed());
  top.find("group.text")->set_value({.text = "set"});
  EXPECT_EQ(text.getValue(), "set");
  EXPECT_FALSE(text.changed());
  EXPECT_EQ(listener.count, 2);
}

/// What showed an item is gone: nobody is told any more.
TEST(PrefItem, LeavesItsItemAsItIs) {
  const auto tree = item_tree();
  {
    VkPrefList list(*tree);
    list.find("toggle")->setActivated(false);
  }
  tree->find("toggle")->set_value({.on = false});
  tree->find("toggle")->set_activated(true);
  EXPECT_FALSE(on_at(*tree, "toggle"));
}

TEST(PrefItem, IsGreyedWithoutWidgets) {
  VkPrefOption option("option", 1);
  EXPECT_TRUE(option.activated());
  option.setActivated(false);
  EXPECT_FALSE(option.activated());
}

}  // namespace
