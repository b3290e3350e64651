/// @file
/// The item tree: changes, radios, paths, and who is told what.
#include "items/item.h"

#include <gtest/gtest.h>

#include "tests/items/itemtree.h"

namespace {

using items::Item;

TEST(Item, HasNotChangedWhenItWasSet) {
  const auto top = item_tree();
  EXPECT_FALSE(top->changed());
  top->find("group.text")->set_value({.text = "new"});
  EXPECT_FALSE(top->changed());
}

TEST(Item, ChangesItsGroupsAndNoSibling) {
  const auto top = item_tree();
  top->find("group.text")->edit({.text = "new"});
  EXPECT_TRUE(top->changed());
  EXPECT_TRUE(top->find("group")->changed());
  EXPECT_TRUE(top->find("group.text")->changed());
  EXPECT_FALSE(top->find("group.option")->changed());
  EXPECT_FALSE(top->find("toggle")->changed());
}

TEST(Item, StaysChangedUntilApplied) {
  const auto top = item_tree();
  Item& text = *top->find("group.text");
  text.edit({.text = "old"});
  EXPECT_FALSE(text.changed()) << "the value is the one that was set";
  text.edit({.text = "new"});
  text.edit({.text = "old"});
  EXPECT_TRUE(text.changed()) << "it did differ";
  text.edit({.text = "newer"});
  top->applied();
  EXPECT_FALSE(top->changed());
  EXPECT_EQ(text.text(), "newer");
  text.edit({.text = "old"});
  EXPECT_TRUE(text.changed());
}

TEST(Item, GoesBackToWhatWasLastSetOrApplied) {
  const auto top = item_tree();
  top->find("group.text")->edit({.text = "applied"});
  top->applied();
  top->find("group.text")->edit({.text = "new"});
  top->find("toggle")->edit({.on = false});
  top->revert();
  EXPECT_FALSE(top->changed());
  EXPECT_EQ(top->find("group.text")->text(), "applied");
  EXPECT_TRUE(top->find("toggle")->on());
}

TEST(Item, IsFoundByPath) {
  const auto top = item_tree();
  EXPECT_EQ(top->find("group.radio.b")->name(), "b");
  EXPECT_EQ(top->find("group")->size(), 3u);
  for (const char* path : {"x", "group.x", "toggle.x", "group..text", ".group", "text"})
    EXPECT_EQ(top->find(path), nullptr) << path;
  EXPECT_TRUE(on_at(*top, "group.radio.a"));
  EXPECT_EQ(option_at(*top, "group.option"), 7);
  EXPECT_EQ(text_at(*top, "group.text"), "old");
  EXPECT_FALSE(on_at(*top, "x"));
  EXPECT_EQ(option_at(*top, "x"), 0);
  EXPECT_EQ(text_at(*top, "x"), "");
}

TEST(Item, ShowsAnEntryBeyondItsMenuAsNumber) {
  const auto top = item_tree();
  Item& option = *top->find("group.option");
  EXPECT_EQ(option.entry(), "7");
  option.set_value({.option = -1});
  EXPECT_EQ(option.entry(), "-1");
  option.set_value({.option = 2});
  EXPECT_EQ(option.entry(), "two");
}

/// Writes down what it is told.
class Notes final : public items::Watcher {
 public:
  explicit Notes(Item& item) : item_(item) { item.watch(this); }
  ~Notes() { item_.watch(nullptr); }
  Notes(const Notes&) = delete;
  Notes& operator=(const Notes&) = delete;
  std::string taken;

 private:
  void shown() override { taken += "shown "; }
  void refused(Item& item) override { taken += "refused " + item.name() + " "; }
  void restyled() override { taken += "restyled "; }
  Item& item_;
};

TEST(Item, TellsItsWatcherOfAnotherValue) {
  const auto top = item_tree();
  Item& text = *top->find("group.text");
  const Notes notes(text);
  text.set_value({.text = "old"});
  EXPECT_EQ(notes.taken, "") << "it showed that already";
  text.set_value({.text = "new"});
  text.edit({.text = "newer"});
  text.revert();
  EXPECT_EQ(notes.taken, "shown shown shown ");
  text.edit({.text = "applied"});
  top->applied();
  EXPECT_EQ(notes.taken, "shown shown shown shown ");
}

TEST(Item, TellsTheWatchersOfItsGroups) {
  const auto top = item_tree();
  const Notes of_top(*top), of_group(*top->find("group")), of_sibling(*top->find("group.option"));
  top->find("group.text")->edit({.text = "new"});
  EXPECT_EQ(of_top.taken, "shown ");
  EXPECT_EQ(of_group.taken, "shown ");
  EXPECT_EQ(of_sibling.taken, "");
}

TEST(Item, TellsTheWatchersOfATextBeyondItsCapacity) {
  const auto top = item_tree();
  Item& text = *top->find("group.text");
  text.look().capacity = 4;
  const Notes of_top(*top), of_text(text);
  EXPECT_FALSE(text.has_room_for("five5"));
  EXPECT_TRUE(text.has_room_for("four"));
  text.refuse();
  EXPECT_EQ(text.text(), "old");
  EXPECT_FALSE(top->changed());
  EXPECT_EQ(of_text.taken, "refused text ");
  EXPECT_EQ(of_top.taken, "refused text ");
}

TEST(Item, TellsItsWatcherHowItLooks) {
  const auto top = item_tree();
  const Notes of_group(*top->find("group"));
  Item& text = *top->find("group.text");
  {
    const Notes notes(text);
    text.set_activated(false);
    text.set_label("Text");
    EXPECT_EQ(notes.taken, "restyled restyled ");
  }
  text.set_activated(true);
  EXPECT_EQ(of_group.taken, "");
  EXPECT_TRUE(text.activated());
  EXPECT_EQ(text.label(), "Text");
}

/// The states of the toggles of the radio, one digit each.
std::string states(const Item& top) {
  return std::string(on_at(top, "group.radio.a") ? "1" : "0") + (on_at(top, "group.radio.b") ? "1" : "0");
}

TEST(Item, OfARadioTheUserTurnsOnOneAtATime) {
  const auto top = item_tree();
  Item &a = *top->find("group.radio.a"), &b = *top->find("group.radio.b");
  EXPECT_TRUE(a.in_radio());
  EXPECT_FALSE(top->find("toggle")->in_radio());
  b.edit({.on = true});
  EXPECT_EQ(states(*top), "01");
  EXPECT_TRUE(a.changed());
  top->revert();
  EXPECT_EQ(states(*top), "10");
  EXPECT_FALSE(top->changed());
  b.set_value({.on = true});
  EXPECT_EQ(states(*top), "11") << "a program may show several";
  a.edit({.on = true});
  EXPECT_EQ(states(*top), "10");
}

}  // namespace
