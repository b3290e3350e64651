/// @file
/// When recovery copies come and go.
#include "editor/unsavedwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "tests/editor/recordingprompts.h"
#include "tests/support/files.h"
#include "tests/support/scenestep.h"
#include "tests/support/wait.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A scene that is a text, and a user whose minutes pass as the test says.
class Unsaved : public testing::Test {
 protected:
  Unsaved() {
    setenv("XDG_STATE_HOME", directory_.path().c_str(), 1);
    work_.emplace(
        history_, prompts_, [this](std::FILE* file) { return write(file); }, 60s);
    work_->opened("/scenes/a");
  }
  ~Unsaved() override { unsetenv("XDG_STATE_HOME"); }

  bool write(std::FILE* file) const {
    return !write_fails_ && std::fwrite(scene_.data(), 1, scene_.size(), file) == scene_.size();
  }
  void change(const std::string& scene) {
    scene_ = scene;
    history_.add(scene_step(scene));
  }
  /// Lets time pass, and the process that writes a copy come to its end.
  void pass(UnsavedWork::Clock::duration time) {
    now_ += time;
    next_ = work_->tend(now_);
    EXPECT_TRUE(support::waitFor([&] {
      next_ = work_->tend(now_);
      return next_ != 100ms;
    }));
  }
  /// A copy can't be written, for this reason, until `mend` is called.
  void expectTriedAgain(const char* reason, const std::function<void()>& mend) {
    change("one");
    pass(0s);
    pass(60s);
    EXPECT_THAT(copies(), IsEmpty());
    ASSERT_EQ(prompts_.lines.size(), 1u);
    EXPECT_THAT(prompts_.lines[0], HasSubstr(reason));
    EXPECT_EQ(next_, 60s);
    mend();
    pass(60s);
    EXPECT_THAT(copies(), ElementsAre("/scenes/a: one"));
  }
  std::vector<std::string> copies() const {
    std::error_code error;
    std::vector<std::string> found;
    for (const RecoveryCopy& copy : RecoveryStore().list(error))
      found.push_back(copy.origin + ": " + read_file(copy.path));
    return found;
  }

  const ScratchDirectory directory_;
  RecordingPrompts prompts_;
  History history_;
  std::optional<UnsavedWork> work_;
  std::string scene_ = "opened";
  bool write_fails_ = false;
  UnsavedWork::Clock::time_point now_{};
  std::optional<UnsavedWork::Clock::duration> next_;  ///< what the last `tend` said
};

TEST_F(Unsaved, WorkIsNoneAtFirstAndNothingIsDue) {
  pass(0s);
  EXPECT_FALSE(work_->exists());
  EXPECT_EQ(next_, std::nullopt);
}

TEST_F(Unsaved, WorkIsKeptAMinuteAfterItsFirstChange) {
  change("one");
  EXPECT_TRUE(work_->exists());
  pass(0s);
  EXPECT_EQ(next_, 60s);
  pass(50s);
  change("two");
  pass(9s);
  EXPECT_THAT(copies(), IsEmpty());
  EXPECT_EQ(next_, 1s) << "later changes don't put it off";
  pass(1s);
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: two"));
  EXPECT_EQ(next_, std::nullopt);
  EXPECT_TRUE(work_->exists());
}

TEST_F(Unsaved, WorkIsKeptAgainOnlyWhenThereIsMore) {
  change("one");
  pass(0s);
  pass(60s);
  fs::remove_all(directory_ / "quileditor/recovery/1.copy");
  pass(1h);
  EXPECT_THAT(copies(), IsEmpty()) << "nothing new was written";
  change("two");
  pass(0s);
  EXPECT_EQ(next_, 60s);
  pass(60s);
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: two"));
}

TEST_F(Unsaved, WorkThatIsTakenBackIsNone) {
  change("one");
  pass(0s);
  pass(60s);
  history_.undo();
  EXPECT_FALSE(work_->exists());
  pass(0s);
  EXPECT_THAT(copies(), IsEmpty());
  history_.redo();
  EXPECT_TRUE(work_->exists());
  pass(0s);
  pass(60s);
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: one"));
}

TEST_F(Unsaved, WorkThatIsSavedHasNoCopy) {
  change("one");
  work_->keep();
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: one"));
  work_->saved("/scenes/a");
  EXPECT_FALSE(work_->exists());
  pass(0s);
  EXPECT_THAT(copies(), IsEmpty());
  history_.undo();
  EXPECT_TRUE(work_->exists()) << "the file has what was taken back";
}

TEST_F(Unsaved, WorkUnderAnotherNameIsOfThatFile) {
  change("one");
  work_->saved("/scenes/b");
  change("two");
  work_->keep();
  EXPECT_THAT(copies(), ElementsAre("/scenes/b: two"));
}

TEST_F(Unsaved, WorkThatCouldNotBeSavedStays) {
  work_->notSaved("/scenes/a");
  EXPECT_TRUE(work_->exists()) << "nobody knows what the file holds";
  work_->keep();
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: opened"));
  work_->notSaved("/scenes/b");
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: opened")) << "until there is a newer one";
  work_->keep();
  EXPECT_THAT(copies(), ElementsAre("/scenes/b: opened"));
}

TEST_F(Unsaved, WorkOfTheSceneBeforeStaysKept) {
  change("one");
  work_->keep();
  history_.clear();
  work_->opened("/scenes/b");
  EXPECT_FALSE(work_->exists());
  work_->keep();
  pass(1h);
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: one"));
}

TEST_F(Unsaved, WorkThatIsRecoveredIsUnsavedAndItsCopyStaysUntilThereIsANewerOne) {
  change("one");
  work_->keep();
  work_.emplace(
      history_, prompts_, [this](std::FILE* file) { return write(file); }, 60s);
  ASSERT_EQ(work_->copies().size(), 1u);
  work_->recovered(work_->copies()[0]);
  EXPECT_TRUE(work_->exists());
  change("two");
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: one"));
  work_->keep();
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: two"));
  EXPECT_THAT(work_->copies(), IsEmpty()) << "the scene's own can't be recovered";
  work_->saved("/scenes/a");
  pass(0s);
  EXPECT_THAT(copies(), IsEmpty());
}

TEST_F(Unsaved, WorkThatCannotBeKeptIsToldAndTriedAgain) {
  write_fails_ = true;
  expectTriedAgain("can't keep a recovery copy in this folder", [this] { write_fails_ = false; });
}

TEST_F(Unsaved, WorkThatCannotBeKeptForWantOfAFolderIsToldAndTriedAgain) {
  write_file(directory_ / "quileditor", "no folder");
  expectTriedAgain("Not a directory", [this] { fs::remove(directory_ / "quileditor"); });
}

TEST_F(Unsaved, WorkGoesOnWhileACopyIsWritten) {
  change("one");
  pass(0s);
  now_ += 60s;
  EXPECT_EQ(work_->tend(now_), 100ms) << "it is being written";
  scene_ = "two";
  history_.add(scene_step("two"));
  pass(0s);
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: one"));
  EXPECT_GT(next_, 0s);
  pass(60s);
  EXPECT_THAT(copies(), ElementsAre("/scenes/a: two"));
}

TEST_F(Unsaved, WorkThatIsSavedWhileACopyIsWrittenHasNone) {
  change("one");
  pass(0s);
  now_ += 60s;
  EXPECT_EQ(work_->tend(now_), 100ms);
  work_->saved("/scenes/a");
  pass(0s);
  EXPECT_THAT(copies(), IsEmpty());
}

}  // namespace
