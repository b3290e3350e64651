/// @file
/// What the File menu shows and asks, in its order.
#include "editor/filecommands.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>

#include "editor/model/currentscene.h"
#include "editor/scenefiles.h"
#include "qilib/opensave.h"
#include "tests/editor/recordingprompts.h"
#include "tests/support/files.h"
#include "tests/support/places.h"
#include "tests/support/scenestep.h"

namespace {

using Lines = RecordingPrompts::Lines;

class Files : public testing::Test, private SceneDisplay {
 protected:
  Files() {
    write_file(good_, read_file(support::data_file("tiny_v1.quil")));
    write_file(bad_, "not a scene");
    qis = std::make_unique<Qis>();
    setenv("XDG_STATE_HOME", directory_.path().c_str(), 1);
    unsaved_.emplace(history_, prompts_, write_scene, std::chrono::minutes(1));
    start({});
  }
  ~Files() override { unsetenv("XDG_STATE_HOME"); }

  void start(FileCommands::Habits habits) {
    SceneDisplay& display = *this;
    files_.emplace(prompts_, display, *unsaved_, habits);
  }

  Lines asked(void (FileCommands::*command)(), const std::string& file = {}) {
    prompts_.file = file;
    prompts_.lines.clear();
    ((*files_).*command)();
    return prompts_.lines;
  }
  /// Makes the scene differ from its file, so far as anybody can tell.
  void change() { history_.add(scene_step("change")); }

  /// What the library says of the file that is no scene.
  std::string why_bad() const {
    Reasons reasons;
    Qis scene;
    qi::open_scene(bad_, scene, reasons.sink());
    return reasons.line();
  }

  const ScratchDirectory directory_;
  const std::string good_ = directory_ / "good.quil";
  const std::string other_ = support::data_file("robot.quil");
  const std::string bad_ = directory_ / "bad.quil";
  RecordingPrompts prompts_;

 private:
  void showScene(const std::function<void(double)>& progress) override {
    progress(0.5);
    prompts_.note("show scene");
  }
  void showNoScene() override { prompts_.note("show nothing"); }
  void noteFile(const std::string& path) override { noted_ = path; }
  std::string writePicture(const PictureChoice& choice, picture::FileFormat) override {
    prompts_.note(choice.view_only ? "write view" : "write picture", choice.path);
    return picture_problem_;
  }
  void showFile() override {
    const std::string shown = files_->fileName() + (files_->changedOnDisk() ? " changed" : "");
    if (shown != shown_) prompts_.note("name", shown);
    shown_ = shown;
  }

  std::string shown_;

 protected:
  std::string picture_problem_;
  std::string noted_;  ///< the file that was read or written last
  History history_;
  std::optional<UnsavedWork> unsaved_;
  std::optional<FileCommands> files_;
};

TEST_F(Files, PicturesAreWrittenWhileBusyAndNeverTheScenesFile) {
  asked(&FileCommands::open, good_);
  const std::string picture = directory_ / "good.PDF";
  EXPECT_EQ(asked(&FileCommands::exportPicture, picture),
            (Lines{"choose: Export Picture", "busy: Exporting...", "write picture: " + picture, "ready"}));
  prompts_.view_only = true;
  write_file(picture, "a picture");
  EXPECT_EQ(asked(&FileCommands::exportPicture, picture),
            (Lines{"choose: Export Picture", "confirm: Overwrite OK?", "busy: Exporting...",
                   "write view: " + picture, "ready"}));
  EXPECT_EQ(files_->fileName(), good_);

  const std::string why = ": the name of a picture ends in .svg, .pdf, .png, .ps or .eps";
  for (const std::string& other : {good_, std::string(directory_ / "pdf"), std::string(directory_ / "a.gif")})
    EXPECT_EQ(asked(&FileCommands::exportPicture, other),
              (Lines{"choose: Export Picture", "tell: " + other + why, "warn: Can't export the picture!"}));

  picture_problem_ = "no room";
  EXPECT_EQ(asked(&FileCommands::exportPicture, picture).back(), "warn: Can't export the picture!");
  prompts_.answer = false;
  EXPECT_EQ(asked(&FileCommands::exportPicture, picture), (Lines{"choose: Export Picture"}));
}

TEST_F(Files, LendTheirNameToThePicture) {
  asked(&FileCommands::exportPicture, directory_ / "first.png");
  EXPECT_EQ(prompts_.start.selection, "") << "there is no scene";
  asked(&FileCommands::open, good_);
  asked(&FileCommands::exportPicture, directory_ / "elsewhere.PDF");
  EXPECT_EQ(prompts_.start.selection, directory_ / "good.png");
  asked(&FileCommands::exportPicture, bad_);
  EXPECT_EQ(prompts_.start.selection, directory_ / "good.PDF");
  asked(&FileCommands::exportPicture, good_);
  EXPECT_EQ(prompts_.start.selection, directory_ / "good.PDF") << "that was no picture";
}

TEST_F(Files, AreReadAndShownWhileBusy) {
  EXPECT_EQ(asked(&FileCommands::open, good_),
            (Lines{"choose: Open", "busy: Opening...", "show scene", "name: " + good_, "ready"}));
  EXPECT_FALSE(qis->obj_list.records.empty());
}

TEST_F(Files, ThatAreNoScenesAreToldAndChangeNothing) {
  asked(&FileCommands::open, good_);
  const Qis* const scene = qis.get();
  EXPECT_EQ(asked(&FileCommands::open, bad_), (Lines{"choose: Open", "busy: Opening...", "ready",
                                                     "tell: " + why_bad(), "warn: Can't Read QUIL File!"}));
  EXPECT_EQ(qis.get(), scene);
  EXPECT_EQ(asked(&FileCommands::save), (Lines{"confirm: Overwrite OK?", "busy: Saving...", "ready"}));
  EXPECT_EQ(read_file(bad_), "not a scene") << "the scene is still of the file before";
}

TEST_F(Files, ThatTheUserStopsOpeningChangeNothing) {
  asked(&FileCommands::open, good_);
  const Qis* const scene = qis.get();
  prompts_.stops = true;
  EXPECT_EQ(asked(&FileCommands::open, other_), (Lines{"choose: Open", "busy: Opening...", "ready",
                                                       "tell: " + other_ + ": stopped, nothing was opened"}));
  EXPECT_EQ(qis.get(), scene);
  EXPECT_EQ(files_->fileName(), good_);
}

TEST_F(Files, ThatAreNotChosenChangeNothing) {
  asked(&FileCommands::open, good_);
  prompts_.answer = false;
  for (const auto command :
       {&FileCommands::open, &FileCommands::save, &FileCommands::saveAs, &FileCommands::clear})
    EXPECT_EQ(asked(command, bad_).size(), 1U);
}

TEST_F(Files, AreSavedUnderTheirNewNameEvenAfterAFailure) {
  asked(&FileCommands::open, good_);
  const std::string fresh = directory_ / "no such place/fresh.quil";
  EXPECT_EQ(asked(&FileCommands::saveAs, fresh),
            (Lines{"choose: Save As", "name: " + fresh, "busy: Saving...", "ready",
                   "tell: Output File Open Error  |  " + fresh +
                       ": can't be opened for writing: No such file or directory",
                   "warn: Can't write QUIL data!"}));
  std::filesystem::create_directory(directory_ / "no such place");
  EXPECT_EQ(asked(&FileCommands::save), (Lines{"confirm: Overwrite OK?", "busy: Saving...", "ready"}));
  EXPECT_EQ(read_file(fresh), read_file(good_));
  EXPECT_EQ(asked(&FileCommands::saveAs, bad_), (Lines{"choose: Save As", "confirm: Overwrite OK?",
                                                       "name: " + bad_, "busy: Saving...", "ready"}));
}

TEST_F(Files, CannotBeSavedWithoutAName) {
  EXPECT_EQ(asked(&FileCommands::save),
            (Lines{"confirm: Overwrite OK?", "tell: The scene has no file name yet: Save As... gives it one",
                   "warn: Can't write QUIL data!"}));
}

TEST_F(Files, StayWhatTheyAreWhenThePictureIsCleared) {
  asked(&FileCommands::open, good_);
  EXPECT_EQ(asked(&FileCommands::clear), (Lines{"confirm: All data is deleted. OK?", "show nothing"}));
  EXPECT_FALSE(qis->obj_list.records.empty());
}

TEST_F(Files, ThatSomebodyElseWroteAreNotOverwrittenUnnoticed) {
  asked(&FileCommands::open, good_);
  write_file(good_, "somebody else's");
  prompts_.lines.clear();
  files_->lookAtDisk();
  const Lines news{"name: " + good_ + " changed",
                   "tell: " + good_ + " has changed on disk since it was opened: Save would overwrite that"};
  EXPECT_EQ(prompts_.lines, news);
  prompts_.lines.clear();
  files_->lookAtDisk();
  EXPECT_EQ(prompts_.lines, Lines{}) << "that is known";
  EXPECT_EQ(asked(&FileCommands::save), (Lines{"confirm: Overwrite OK? (Question: changed on disk)",
                                               "busy: Saving...", "ready", "name: " + good_}));
  EXPECT_EQ(asked(&FileCommands::save), (Lines{"confirm: Overwrite OK?", "busy: Saving...", "ready"}));
}

TEST_F(Files, ThatSomebodyElseWroteAreNoticedBySaveItself) {
  asked(&FileCommands::open, good_);
  write_file(good_, "somebody else's");
  prompts_.answer = false;
  EXPECT_EQ(asked(&FileCommands::save).back(), "confirm: Overwrite OK? (Question: changed on disk)");
  write_file(good_, "and once more");
  EXPECT_EQ(asked(&FileCommands::saveAs, good_), (Lines{"choose: Save As"}));
  prompts_.answer = true;
  EXPECT_EQ(asked(&FileCommands::saveAs, good_)[1], "confirm: Overwrite OK? (Question: changed on disk)");
}

TEST_F(Files, ThatAreGoneAreSavedWithoutAWord) {
  asked(&FileCommands::open, good_);
  std::filesystem::remove(good_);
  EXPECT_EQ(asked(&FileCommands::save), (Lines{"confirm: Overwrite OK?", "busy: Saving...", "ready"}));
}

TEST_F(Files, AreRecoveredAsAnUnsavedChangeOfTheirFile) {
  asked(&FileCommands::open, good_);
  change();
  EXPECT_EQ(asked(&FileCommands::open, good_).back(),
            "tell: What was not saved of " + good_ + " is in File > Recover...");
  EXPECT_FALSE(unsaved_->exists());
  EXPECT_EQ(asked(&FileCommands::recover),
            (Lines{"choose: Recover", "busy: Opening...", "show scene", "ready"}));
  ASSERT_EQ(prompts_.rows.size(), 1U);
  EXPECT_TRUE(prompts_.rows[0].ends_with("   " + good_)) << prompts_.rows[0];
  EXPECT_TRUE(unsaved_->exists());
  EXPECT_EQ(asked(&FileCommands::save), (Lines{"confirm: Overwrite OK?", "busy: Saving...", "ready"}));
  EXPECT_FALSE(unsaved_->exists());
}

TEST_F(Files, ThatWereWrittenAfterTheRecoveryCopyCountAsChanged) {
  asked(&FileCommands::open, good_);
  change();
  asked(&FileCommands::open, good_);
  std::filesystem::last_write_time(good_,
                                   std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
  asked(&FileCommands::recover);
  EXPECT_EQ(prompts_.lines.back(),
            "tell: " + good_ + " has changed on disk since it was opened: Save would overwrite that");
}

TEST_F(Files, AskBeforeUnsavedChangesGoIfTheUserWantsThat) {
  start({.confirm_unsaved_changes = true});
  asked(&FileCommands::open, good_);
  EXPECT_TRUE(files_->mayQuit());
  change();
  prompts_.answer = false;
  EXPECT_FALSE(files_->mayQuit());
  EXPECT_EQ(asked(&FileCommands::open, good_),
            (Lines{"confirm: Open another scene without saving the changes?"}));
  EXPECT_EQ(asked(&FileCommands::recover),
            (Lines{"confirm: Open a recovery copy without saving the changes?"}));
}

TEST_F(Files, AreBackedUpBeforeTheirFirstSaveIfTheUserWantsThat) {
  start({.backup_on_save = true});
  asked(&FileCommands::open, good_);
  const std::string scene = read_file(good_);
  write_file(good_, "the file before");
  asked(&FileCommands::save);
  asked(&FileCommands::save);
  EXPECT_EQ(read_file(good_ + "~"), "the file before");
  EXPECT_EQ(read_file(good_), scene);
}

TEST_F(Files, AreSavedEvenWhenThereCanBeNoBackupWhichIsTold) {
  start({.backup_on_save = true});
  asked(&FileCommands::open, good_);
  const std::string scene = read_file(good_);
  write_file(good_, "the file before");
  std::filesystem::create_directory(good_ + "~");
  EXPECT_EQ(asked(&FileCommands::save).back(),
            "tell: " + good_ + ": can't keep a backup of it: Is a directory");
  EXPECT_EQ(read_file(good_), scene);
}

}  // namespace
