/// @file
/// The history: what can be taken back, and which contents are the same.
#include "editor/model/history.h"

#include <gtest/gtest.h>

#include <string>

namespace {

Step edit(const std::string& label) { return {.label = label, .changes_scene = true}; }

TEST(History, GivesTheStepsBackInOrder) {
  History history;
  EXPECT_EQ(history.undo(), nullptr);
  history.add(edit("a"));
  history.add(edit("b"));
  EXPECT_EQ(history.redo(), nullptr);
  EXPECT_EQ(history.to_undo()->label, "b");
  EXPECT_EQ(history.undo()->label, "b");
  EXPECT_EQ(history.to_redo()->label, "b");
  EXPECT_EQ(history.undo()->label, "a");
  EXPECT_EQ(history.undo(), nullptr);
  EXPECT_EQ(history.redo()->label, "a");
  EXPECT_EQ(history.redo()->label, "b");
  EXPECT_EQ(history.redo(), nullptr);
}

TEST(History, ANewStepTakesThePlaceOfWhatWasTakenBack) {
  History history;
  history.add(edit("a"));
  history.add(edit("b"));
  history.undo();
  history.add(edit("c"));
  EXPECT_EQ(history.to_redo(), nullptr);
  EXPECT_EQ(history.undo()->label, "c");
  EXPECT_EQ(history.undo()->label, "a");
}

TEST(History, TheSameStateMeansTheSameContents) {
  History history;
  const auto opened = history.state();
  history.add(edit("a"));
  const auto a = history.state();
  EXPECT_NE(a, opened);
  history.add({.label = "move mat_0"});
  EXPECT_EQ(history.state(), a) << "the scene is what it was";
  history.add(edit("b"));
  const auto b = history.state();
  EXPECT_NE(b, a);
  history.undo();
  EXPECT_EQ(history.state(), a);
  history.redo();
  EXPECT_EQ(history.state(), b);
  for (int i = 0; i < 3; ++i) history.undo();
  EXPECT_EQ(history.state(), opened);
  history.add(edit("c"));
  for (const auto known : {opened, a, b}) EXPECT_NE(history.state(), known);
}

TEST(History, AnotherSceneIsAnotherStateWithoutSteps) {
  History history;
  const auto empty = history.state();
  history.add(edit("a"));
  const auto a = history.state();
  history.undo();
  history.clear();
  EXPECT_EQ(history.to_undo(), nullptr);
  EXPECT_EQ(history.to_redo(), nullptr);
  EXPECT_NE(history.state(), empty);
  EXPECT_NE(history.state(), a);
}

TEST(History, TheOldestStepsGoFirstAndTheStatesStay) {
  History history;
  History::State tenth = 0, last = 0;
  for (std::size_t i = 1; i <= History::kMostSteps + 10; ++i) {
    history.add(edit(std::to_string(i)));
    if (i == 10) tenth = history.state();
    last = history.state();
  }
  std::size_t taken_back = 0;
  while (history.undo()) ++taken_back;
  EXPECT_EQ(taken_back, History::kMostSteps);
  EXPECT_EQ(history.state(), tenth);
  while (history.redo()) continue;
  EXPECT_EQ(history.state(), last);
}

TEST(History, TellsOfEveryChangeAndOfNothingElse) {
  History history;
  int told = 0;
  history.on_change([&] { ++told; });
  history.undo();
  history.redo();
  EXPECT_EQ(told, 0) << "there was nothing";
  history.add(edit("a"));
  EXPECT_EQ(told, 1);
  history.undo();
  EXPECT_EQ(told, 2);
  history.redo();
  EXPECT_EQ(told, 3);
  history.clear();
  EXPECT_EQ(told, 4);
}

}  // namespace
