/// @file
/// What the File menu shows and asks, in its order.
#include "editor/filecommands.h"

#include <gtest/gtest.h>

#include "editor/model/currentscene.h"
#include "tests/editor/recordingprompts.h"
#include "tests/support/files.h"

namespace {

using Lines = RecordingPrompts::Lines;

class Files : public testing::Test, private SceneDisplay {
 protected:
  Files() {
    write_file(good_, read_file(QUIL_TEST_DATA "/tiny_v1.quil"));
    write_file(bad_, "not a scene");
    qis = std::make_unique<Qis>();
  }

  Lines asked(void (FileCommands::*command)(), const std::string& file = {}) {
    prompts_.file = file;
    prompts_.lines.clear();
    (files_.*command)();
    return prompts_.lines;
  }

  const ScratchDirectory directory_;
  const std::string good_ = directory_ / "good.quil";
  const std::string bad_ = directory_ / "bad.quil";
  RecordingPrompts prompts_;

 private:
  void showScene() override { prompts_.note("show scene"); }
  void showNoScene() override { prompts_.note("show nothing"); }
  void showFileName(const std::string& path) override { prompts_.note("name", path); }

  FileCommands files_{prompts_, *this};
};

TEST_F(Files, AreReadAndShownWhileBusy) {
  EXPECT_EQ(asked(&FileCommands::open, good_),
            (Lines{"choose: Open", "busy: Opening...", "show scene", "name: " + good_, "ready"}));
  EXPECT_FALSE(qis->obj_list.records.empty());
}

TEST_F(Files, ThatAreNoScenesAreToldAndChangeNothing) {
  asked(&FileCommands::open, good_);
  const Qis* const scene = qis.get();
  EXPECT_EQ(asked(&FileCommands::open, bad_),
            (Lines{"choose: Open", "busy: Opening...", "ready", "warn: Can't Read QUIL File!"}));
  EXPECT_EQ(qis.get(), scene);
  EXPECT_EQ(asked(&FileCommands::save), (Lines{"confirm: Overwrite OK?", "busy: Saving...", "ready"}));
  EXPECT_EQ(read_file(bad_), "not a scene") << "the scene is still of the file before";
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
                   "warn: Can't write QUIL data!"}));
  std::filesystem::create_directory(directory_ / "no such place");
  EXPECT_EQ(asked(&FileCommands::save), (Lines{"confirm: Overwrite OK?", "busy: Saving...", "ready"}));
  EXPECT_EQ(read_file(fresh), read_file(good_));
  EXPECT_EQ(asked(&FileCommands::saveAs, bad_), (Lines{"choose: Save As", "confirm: Overwrite OK?",
                                                       "name: " + bad_, "busy: Saving...", "ready"}));
}

TEST_F(Files, CannotBeSavedWithoutAName) {
  EXPECT_EQ(asked(&FileCommands::save), (Lines{"confirm: Overwrite OK?", "warn: Can't write QUIL data!"}));
}

TEST_F(Files, StayWhatTheyAreWhenThePictureIsCleared) {
  asked(&FileCommands::open, good_);
  EXPECT_EQ(asked(&FileCommands::clear), (Lines{"confirm: All data is deleted. OK?", "show nothing"}));
  EXPECT_FALSE(qis->obj_list.records.empty());
}

}  // namespace
