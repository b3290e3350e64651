/// @file
/// The item tree: changes, paths, and items as texts.
#include <gtest/gtest.h>

#include <string>

#include "dialogs/values/item.h"
#include "dialogs/values/itemtext.h"

namespace {

using values::edit_text;
using values::Item;
using values::ItemKind;

/// prefList{group(text radio<a b> option) toggle}
Item tree() {
  Item top(ItemKind::list, "prefList");
  Item group(ItemKind::group, "group");
  group.add(Item(ItemKind::text, "text")).setValue({.text = "old"});
  Item radio(ItemKind::radio, "radio");
  radio.add(Item(ItemKind::toggle, "a")).setValue({.on = true});
  radio.add(Item(ItemKind::toggle, "b")).setValue({.on = false});
  group.add(radio);
  group.add(Item(ItemKind::option, "option", {.entries = {"zero", "2", "two"}})).setValue({.option = 7});
  top.add(group);
  top.add(Item(ItemKind::toggle, "toggle")).setValue({.on = true});
  top.add(Item(ItemKind::separator, "sep"));
  top.add(Item(ItemKind::label, "label"));
  return top;
}

TEST(Item, HasNotChangedWhenItWasSet) {
  Item top = tree();
  EXPECT_FALSE(top.changed());
  top.find("group.text")->setValue({.text = "new"});
  EXPECT_FALSE(top.changed());
}

TEST(Item, ChangesItsGroupsAndNoSibling) {
  Item top = tree();
  top.find("group.text")->edit({.text = "new"});
  EXPECT_TRUE(top.changed());
  EXPECT_TRUE(top.find("group")->changed());
  EXPECT_TRUE(top.find("group.text")->changed());
  EXPECT_FALSE(top.find("group.option")->changed());
  EXPECT_FALSE(top.find("toggle")->changed());
}

TEST(Item, StaysChangedUntilApplied) {
  Item top = tree();
  Item& text = *top.find("group.text");
  text.edit({.text = "old"});
  EXPECT_FALSE(text.changed()) << "the value is the one that was set";
  text.edit({.text = "new"});
  text.edit({.text = "old"});
  EXPECT_TRUE(text.changed()) << "it did differ";
  text.edit({.text = "newer"});
  top.applied();
  EXPECT_FALSE(top.changed());
  EXPECT_EQ(text.text(), "newer");
  text.edit({.text = "old"});
  EXPECT_TRUE(text.changed());
}

TEST(Item, GoesBackToWhatWasLastSetOrApplied) {
  Item top = tree();
  top.find("group.text")->edit({.text = "applied"});
  top.applied();
  top.find("group.text")->edit({.text = "new"});
  top.find("toggle")->edit({.on = false});
  top.revert();
  EXPECT_FALSE(top.changed());
  EXPECT_EQ(top.find("group.text")->text(), "applied");
  EXPECT_TRUE(top.find("toggle")->on());
}

TEST(Item, TakesOverAWidgetsState) {
  Item top = tree();
  Item& text = *top.find("group.text");
  text.mirror({.text = "typed"}, true);
  EXPECT_TRUE(text.changed());
  EXPECT_EQ(text.text(), "typed");
  text.mirror({.text = "typed"}, false);
  EXPECT_FALSE(text.changed());
  text.edit({.text = "x"});
  text.revert();
  EXPECT_EQ(text.text(), "typed");
}

TEST(Item, IsFoundByPath) {
  Item top = tree();
  EXPECT_EQ(top.find("group.radio.b")->name(), "b");
  EXPECT_EQ(top.find("group")->size(), 3u);
  for (const char* path : {"x", "group.x", "toggle.x", "group..text", ".group", "text"})
    EXPECT_EQ(top.find(path), nullptr) << path;
  EXPECT_TRUE(values::on_at(top, "group.radio.a"));
  EXPECT_EQ(values::option_at(top, "group.option"), 7);
  EXPECT_EQ(values::text_at(top, "group.text"), "old");
  EXPECT_FALSE(values::on_at(top, "x"));
  EXPECT_EQ(values::option_at(top, "x"), 0);
  EXPECT_EQ(values::text_at(top, "x"), "");
}

TEST(Item, ShowsAnEntryBeyondItsMenuAsNumber) {
  Item top = tree();
  Item& option = *top.find("group.option");
  EXPECT_EQ(option.entry(), "7");
  option.setValue({.option = -1});
  EXPECT_EQ(option.entry(), "-1");
  option.setValue({.option = 2});
  EXPECT_EQ(option.entry(), "two");
}

TEST(ItemText, OptionsTakeALabelOrElseAnIndex) {
  Item top = tree();
  const Item& option = *top.find("group.option");
  EXPECT_FALSE(edit_text(top, "group.option", "7")) << "what it shows, though no entry";
  EXPECT_FALSE(option.changed());
  EXPECT_FALSE(edit_text(top, "group.option", "2"));
  EXPECT_EQ(option.option(), 1) << "the label comes first";
  EXPECT_FALSE(edit_text(top, "group.option", "0"));
  EXPECT_EQ(option.option(), 0);
  for (const char* wrong : {"3", "7", "-1", "one", "", "0x1", "1 ", "99999999999999999999"}) {
    EXPECT_EQ(edit_text(top, "group.option", wrong), "no such entry of option: " + std::string(wrong));
    EXPECT_EQ(option.option(), 0);
  }
}

TEST(ItemText, TurningOneOfARadioOnTurnsTheOthersOff) {
  Item top = tree();
  EXPECT_FALSE(edit_text(top, "group.radio.b", "1"));
  EXPECT_FALSE(values::on_at(top, "group.radio.a"));
  EXPECT_TRUE(values::on_at(top, "group.radio.b"));
  EXPECT_FALSE(edit_text(top, "group.radio.a", "0")) << "it is off";
  EXPECT_EQ(edit_text(top, "group.radio.b", "0"), "turn on another one of radio instead of turning off: b");
  EXPECT_TRUE(values::on_at(top, "group.radio.b"));
}

TEST(ItemText, RefusesWhatADialogCouldNot) {
  Item top = tree();
  EXPECT_EQ(edit_text(top, "group.x", "1"), "no such item: group.x");
  EXPECT_EQ(edit_text(top, "x.y", "1"), "no such item: x.y");
  EXPECT_EQ(edit_text(top, "", "1"), "no such item: ");
  EXPECT_EQ(edit_text(top, "toggle", "on"), "toggle is 0 or 1, not: on");
  EXPECT_EQ(edit_text(top, "group", "1"), "this item can't be changed: group");
  EXPECT_EQ(edit_text(top, "sep", "1"), "this item can't be changed: sep");
  EXPECT_EQ(edit_text(top, "label", "1"), "this item can't be changed: label");
  EXPECT_FALSE(top.changed());
}

TEST(ItemText, VisitsWhatHasAValueInOrder) {
  const Item top = tree();
  std::string all;
  values::for_each_shown(top, [&](const std::string& path, const Item& item) {
    all += path + "=" + values::shown_text(item, {}) + " ";
  });
  EXPECT_EQ(all, "group.text=old group.radio.a=1 group.radio.b=0 group.option=7 toggle=1 label=label ");
}

}  // namespace
