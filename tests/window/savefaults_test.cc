/// @file
/// Saves and recovery copies of the built editor that fail or are killed, call by call and at random moments.
#include <chrono>
#include <csignal>
#include <filesystem>
#include <random>
#include <thread>

#include "tests/support/wait.h"
#include "tests/window/editorfixture.h"

namespace {

namespace fs = std::filesystem;

using support::Editor;
using support::Program;
using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class EditorFaults : public EditorTest {
 protected:
  void SetUp() override {
    scene_ = data("tiny_v1");
    old_ = read_file(scene_);
    new_ = edited(scene_, "add shape_0 mat_0\n").bytes;
    editor_.quit();
  }

  /// An editor with a changed scene. From `arm` on its Nth call fails, or is its last.
  std::unique_ptr<Editor> changed(int at, const std::string& what) {
    for (const char* file : {"armed", "happened"}) fs::remove(path(file));
    fs::remove_all(path("state"));
    write_file(scene_, old_);
    Program::Start with_faults = start();
    with_faults.environment["QUIL_FAULTS"] = ":" + std::to_string(at) + ":" + what;
    with_faults.environment["QUIL_FAULTS_ARMED"] = path("armed");
    with_faults.environment["QUIL_FAULTS_HAPPENED"] = path("happened");
    auto editor = std::make_unique<Editor>(server_, with_faults);
    editor->open(scene_);
    editor->toggleEditMode();
    editor->drawArc("shape_0", "mat_0");
    return editor;
  }
  void arm() { write_file(path("armed"), ""); }
  bool happened() const { return fs::exists(path("happened")); }

  static void save(Editor& editor) {
    editor.chooseMenu({"File", "Save"});
    editor.click(std::string(kQuestion) + "/OK");
  }

  bool isOld() const { return read_file(scene_) == old_; }
  bool isNew() const { return read_file(scene_) == new_; }
  /// What a save leaves beside the scene.
  std::vector<std::string> leftovers() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(files_.path())) {
      const std::string name = entry.path().filename();
      if (name.starts_with(".quil-")) names.push_back(name);
    }
    return names;
  }
  /// The contents of the recovery copies that are listed.
  std::vector<std::string> copies() const {
    std::vector<std::string> contents;
    const fs::path folder = path("state/quileditor/recovery");
    if (!fs::exists(folder)) return contents;
    for (const auto& entry : fs::directory_iterator(folder))
      if (entry.path().extension() == ".copy") contents.push_back(read_file(entry.path()));
    return contents;
  }

  std::string scene_, old_, new_;
};

/// Every call is tried; the tests share them, so that they can run beside each other.
class EachCall : public EditorFaults, public testing::WithParamInterface<int> {
 public:
  static constexpr int kSharers = 3;
};

TEST_P(EachCall, OfASaveThatFailsLeavesTheOldOrTheNewFileAndTheWork) {
  int at = GetParam() - kSharers;
  do {
    SCOPED_TRACE(at += kSharers);
    const auto editor = changed(at, std::to_string(EIO));
    arm();
    save(*editor);
    editor->settle();
    fs::remove(path("armed"));
    EXPECT_TRUE(isOld() || isNew());
    EXPECT_THAT(leftovers(), IsEmpty());
    if (editor->asks(kWarning)) {
      EXPECT_EQ(editor->message(kWarning), "Can't write QUIL data!");
      EXPECT_THAT(editor->await("mainWindow/status").label, HasSubstr("Input/output error"));
      editor->answer(kWarning, "OK");
    } else {
      EXPECT_TRUE(isNew());
    }
    save(*editor);
    editor->settle();
    EXPECT_TRUE(isNew()) << "the next one is complete";
  } while (happened());
  EXPECT_GT(at, 8) << "calls that a save makes";
}

TEST_P(EachCall, OfASaveThatIsTheLastLeavesTheOldOrTheNewFile) {
  int at = GetParam() - kSharers;
  do {
    SCOPED_TRACE(at += kSharers);
    const auto editor = changed(at, "kill");
    arm();
    save(*editor);
    if (happened() || !support::waitFor([&] { return isNew(); }, std::chrono::seconds(1))) {
      EXPECT_EQ(editor->process().waitForExit(), 128 + SIGKILL);
    }
    EXPECT_TRUE(isOld() || isNew());
    EXPECT_THAT(leftovers(), IsEmpty());
  } while (happened());
}

TEST_P(EachCall, OfTheCopyOnQuitThatFailsLeavesTheFileAndNoHalfCopy) {
  int at = GetParam() - kSharers, kept = 0;
  do {
    SCOPED_TRACE(at += kSharers);
    const auto editor = changed(at, std::to_string(ENOSPC));
    arm();
    EXPECT_EQ(editor->quit(), 0);
    EXPECT_TRUE(isOld());
    for (const std::string& copy : copies()) EXPECT_TRUE(sameBytes(copy, new_));
    if (copies().empty()) {
      EXPECT_THAT(editor->errors(), HasSubstr("can't keep a recovery copy"));
    }
    kept += !copies().empty();
  } while (happened());
  EXPECT_GT(at, 5) << "calls that a copy takes";
  EXPECT_GT(kept, 0);
}

INSTANTIATE_TEST_SUITE_P(Shares, EachCall, testing::Range(1, EachCall::kSharers + 1));

TEST_F(EditorFaults, AKillAtARandomMomentOfASaveLeavesTheOldOrTheNewFile) {
  std::mt19937 random(std::random_device{}());
  int replaced = 0;
  for (int i = 0; i < 12; ++i) {
    const int microseconds = static_cast<int>(random() % 40'000);
    SCOPED_TRACE(microseconds);
    const auto editor = changed(1, std::to_string(EIO));  // which is never armed
    save(*editor);
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
    editor->process().signal(SIGKILL);
    EXPECT_EQ(editor->process().waitForExit(), 128 + SIGKILL);
    EXPECT_TRUE(isOld() || isNew());
    EXPECT_THAT(leftovers(), IsEmpty());
    replaced += isNew();
  }
  RecordProperty("replaced", replaced);
}

}  // namespace
