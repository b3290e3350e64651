/// @file
/// The history: what can be taken back, and which contents are the same.
#include "editor/model/history.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "tests/support/scenestep.h"

namespace {

/// A change of a picture that counts how often it was carried out.
class CountedPicture final : public StepPicture {
 public:
  explicit CountedPicture(int& made) : made_(made) {}
  void undo() override { --made_; }
  void redo() override { ++made_; }
  std::size_t bytes() const override { return sizeof *this; }

 private:
  int& made_;
};

TEST(History, GivesTheStepsBackInOrder) {
  History history;
  EXPECT_EQ(history.undo(), nullptr);
  history.add(scene_step("a"));
  history.add(scene_step("b"));
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
  history.add(scene_step("a"));
  history.add(scene_step("b"));
  history.undo();
  history.add(scene_step("c"));
  EXPECT_EQ(history.to_redo(), nullptr);
  EXPECT_EQ(history.undo()->label, "c");
  EXPECT_EQ(history.undo()->label, "a");
}

TEST(History, TheSameStateMeansTheSameContents) {
  History history;
  const auto opened = history.state();
  history.add(scene_step("a"));
  const auto a = history.state();
  EXPECT_NE(a, opened);
  history.add({.label = "move mat_0"});
  EXPECT_EQ(history.state(), a) << "the scene is what it was";
  history.add(scene_step("b"));
  const auto b = history.state();
  EXPECT_NE(b, a);
  history.undo();
  EXPECT_EQ(history.state(), a);
  history.redo();
  EXPECT_EQ(history.state(), b);
  for (int i = 0; i < 3; ++i) history.undo();
  EXPECT_EQ(history.state(), opened);
  history.add(scene_step("c"));
  for (const auto known : {opened, a, b}) EXPECT_NE(history.state(), known);
}

TEST(History, AnotherSceneIsAnotherStateWithoutSteps) {
  History history;
  const auto empty = history.state();
  history.add(scene_step("a"));
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
    history.add(scene_step(std::to_string(i)));
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
  history.add(scene_step("a"));
  EXPECT_EQ(told, 1);
  history.undo();
  EXPECT_EQ(told, 2);
  history.redo();
  EXPECT_EQ(told, 3);
  history.clear();
  EXPECT_EQ(told, 4);
}

TEST(History, TheOldestStepsGoWhenTheyTakeTooMuchMemory) {
  constexpr std::size_t kStep = std::size_t{10} << 20;
  History history;
  for (const char* label : {"a", "b", "c", "d", "e", "f", "g"}) history.add(scene_step(label, kStep));
  const auto last = history.state();
  int taken_back = 0;
  while (history.undo()) ++taken_back;
  EXPECT_EQ(taken_back, 6);
  history.add(scene_step("h"));
  for (int i = 0; i < 5; ++i) history.add(scene_step("i", kStep));
  taken_back = 0;
  while (history.undo()) ++taken_back;
  EXPECT_EQ(taken_back, 6) << "what can't be made again takes no memory";
  EXPECT_NE(history.state(), last);
}

TEST(History, AClearedPictureTakesItsStepsAlong) {
  int made = 0;
  History history;
  history.add({.label = "move mat_0", .picture = std::make_unique<CountedPicture>(made)});
  history.add(scene_step("a"));
  Step both = scene_step("b");
  both.picture = std::make_unique<CountedPicture>(made);
  history.add(std::move(both));
  history.add({.label = "move mat_1", .picture = std::make_unique<CountedPicture>(made)});
  history.add(scene_step("c"));
  for (int i = 0; i < 2; ++i) history.undo();
  const auto now = history.state();
  history.forget_pictures();
  EXPECT_EQ(history.state(), now);
  EXPECT_EQ(history.to_redo()->label, "c");
  const Step* const b = history.undo();
  ASSERT_TRUE(b);
  EXPECT_EQ(b->label, "b");
  EXPECT_FALSE(b->picture);
  EXPECT_EQ(history.undo()->label, "a");
  EXPECT_EQ(history.undo(), nullptr);
}

}  // namespace
