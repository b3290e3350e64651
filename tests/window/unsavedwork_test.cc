/// @file
/// Unsaved work: its mark, its recovery copies, and what asks before it goes.
#include <filesystem>
#include <sstream>

#include "tests/support/wait.h"
#include "tests/window/editorfixture.h"

namespace {

namespace fs = std::filesystem;

using support::Editor;
using support::waitFor;
using support::WidgetInfo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr std::string_view kCopies = "listDialog";
constexpr const char* kScript = "add shape_0 mat_0\n";

class Unsaved : public EditorTest {
 protected:
  /// @param settings  resources of the application
  explicit Unsaved(const std::vector<std::string>& settings = {}) : EditorTest(24, how(settings)) {}

  static support::Program::Start how(const std::vector<std::string>& settings) {
    support::Program::Start start;
    for (const std::string& setting : settings) {
      start.arguments.push_back("-xrm");
      start.arguments.push_back("quileditor." + setting);
    }
    return start;
  }

  std::string state() const { return path("state/quileditor/recovery"); }
  /// The contents of the recovery copies.
  std::vector<std::string> copies() const {
    std::vector<std::string> contents;
    if (!fs::exists(state())) return contents;
    for (const auto& entry : fs::directory_iterator(state()))
      if (entry.path().extension() == ".copy") contents.push_back(read_file(entry.path()));
    return contents;
  }

  static std::string title(Editor& editor) {
    editor.settle();
    return editor.await("the title", [](const WidgetInfo& w) { return w.isAt("QUILeditor2"); }).label;
  }
  std::string title() { return title(editor_); }
  std::string iconName() { return editor_.resource(shell(), "iconName"); }
  WidgetInfo shell() {
    return *editor_.find([](const WidgetInfo& w) { return w.isAt("QUILeditor2"); });
  }
  static std::string statusOf(Editor& editor) {
    editor.settle();
    return editor.await("mainWindow/status").label;
  }
  bool canRecover(Editor& editor) {
    editor.settle();
    return editor.find([](const WidgetInfo& w) { return w.isAt("FilePane/Recover"); })->sensitive;
  }

  /// Opens the scene and makes one change. @returns the file with that change
  std::string change() {
    scene_ = data("tiny_v1");
    const std::string changed = edited(scene_, kScript).bytes;
    editor_.open(scene_);
    editor_.toggleEditMode();
    editor_.drawArc("shape_0", "mat_0");
    return changed;
  }
  void save() {
    editor_.chooseMenu({"File", "Save"});
    editor_.answer(kQuestion, "OK");
    editor_.settle();
  }

  std::string scene_;
};

TEST_F(Unsaved, WorkIsMarkedInTheTitleAndTheIconNameUntilItIsSaved) {
  EXPECT_EQ(title(), "QUILeditor2");
  const std::string changed = change();
  EXPECT_EQ(title(), "*tiny_v1.quil - QUILeditor2");
  EXPECT_EQ(iconName(), "*tiny_v1.quil");
  save();
  EXPECT_EQ(title(), "tiny_v1.quil - QUILeditor2");
  EXPECT_EQ(iconName(), "tiny_v1.quil");
  EXPECT_TRUE(sameBytes(read_file(scene_), changed));
}

TEST_F(Unsaved, WorkIsNotWhatTheLinkRulesRefuseOrTheSceneDoesNotHold) {
  editor_.open(data("tiny_v1"));
  editor_.toggleEditMode();
  editor_.drawArc("mat_0", "shape_0");
  editor_.answer(kWarning, "OK");
  EXPECT_EQ(title(), "tiny_v1.quil - QUILeditor2");
}

TEST_F(Unsaved, WorkOfADialogIsMarkedToo) {
  editor_.open(data("tiny_v1"));
  editor_.toggleEditMode();
  editor_.doubleClickNode("mat_0");
  editor_.fillIn("matDialog/usr_flag0Base", "7");
  editor_.answer("matDialog", "OK");
  EXPECT_EQ(title(), "*tiny_v1.quil - QUILeditor2");
}

TEST_F(Unsaved, WorkStaysMarkedWhenTheFileCannotBeWritten) {
  change();
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile(path("no/such.quil"));
  editor_.answer(kWarning, "OK");
  EXPECT_EQ(title(), "*such.quil - QUILeditor2");
}

TEST_F(Unsaved, WorkIsKeptOnQuitWithoutAQuestion) {
  const std::string changed = change();
  EXPECT_EQ(editor_.quit(), 0);
  ASSERT_THAT(copies(), SizeIs(1));
  EXPECT_TRUE(sameBytes(copies()[0], changed));
  EXPECT_THAT(quilscene({"recover"}), HasSubstr("  " + scene_ + "\n"));
  EXPECT_EQ(commandsRun(), "killpxsend\nkillbxsend\n");
}

TEST_F(Unsaved, NothingIsKeptOfWhatIsSaved) {
  change();
  save();
  EXPECT_EQ(editor_.quit(), 0);
  EXPECT_THAT(copies(), IsEmpty());
}

class EndSignal : public Unsaved, public testing::WithParamInterface<int> {};

TEST_P(EndSignal, KeepsUnsavedWorkAndKillsTheLoaders) {
  const std::string changed = change();
  editor_.process().signal(GetParam());
  EXPECT_EQ(editor_.process().waitForExit(), 128 + GetParam());
  ASSERT_THAT(copies(), SizeIs(1));
  EXPECT_TRUE(sameBytes(copies()[0], changed));
  EXPECT_EQ(commandsRun(), "killpxsend\nkillbxsend\n");
}

INSTANTIATE_TEST_SUITE_P(Signals, EndSignal, testing::Values(SIGTERM, SIGINT, SIGHUP));

TEST_F(Unsaved, WorkIsKeptWhenTheDisplayGoesAway) {
  const std::string changed = change();
  server_.end();
  ASSERT_TRUE(editor_.process().waitForExit());
  ASSERT_THAT(copies(), SizeIs(1));
  EXPECT_TRUE(sameBytes(copies()[0], changed));
  EXPECT_EQ(commandsRun(), "killpxsend\nkillbxsend\n");
}

TEST_F(Unsaved, WorkOfTheSceneBeforeIsKeptWhenAnotherIsOpened) {
  const std::string changed = change();
  editor_.open(data("robot"));
  EXPECT_EQ(title(), "robot.quil - QUILeditor2");
  EXPECT_EQ(statusOf(editor_).substr(0, statusOf(editor_).find("  |  ")),
            "What was not saved of " + scene_ + " is in File > Recover...");
  ASSERT_THAT(copies(), SizeIs(1));
  EXPECT_TRUE(sameBytes(copies()[0], changed));
  EXPECT_TRUE(canRecover(editor_));
}

TEST_F(Unsaved, WorkStaysTheScenesWhenAnotherCannotBeOpened) {
  const std::string changed = change();
  write_file(path("broken.quil"), "nothing");
  editor_.open(path("broken.quil"));
  editor_.answer(kWarning, "OK");
  EXPECT_EQ(title(), "*tiny_v1.quil - QUILeditor2");
  save();
  EXPECT_TRUE(sameBytes(read_file(scene_), changed));
  EXPECT_TRUE(waitFor([&] { return copies().empty(); }));
}

/// An editor that keeps a copy after a second.
class SoonKept : public Unsaved {
 protected:
  SoonKept() : Unsaved({"recoveryInterval: 1"}) {}
};

TEST_F(SoonKept, AChangeIsKeptInTheStateFolderAndASaveTakesItAway) {
  const std::string changed = change();
  ASSERT_TRUE(waitFor([&] { return copies().size() == 1; }));
  EXPECT_TRUE(sameBytes(copies()[0], changed));
  EXPECT_THAT(quilscene({"recover"}), HasSubstr(scene_ + " (in use)\n"));
  EXPECT_EQ(fs::status(state()).permissions(), fs::perms::owner_all);
  EXPECT_FALSE(canRecover(editor_)) << "it is the scene's own";
  save();
  EXPECT_TRUE(waitFor([&] { return copies().empty(); }));
}

TEST_F(SoonKept, LaterChangesReplaceTheCopy) {
  change();
  ASSERT_TRUE(waitFor([&] { return copies().size() == 1; }));
  const std::string changed = edited(scene_, std::string(kScript) + "delete shape_0 mat_0\n").bytes;
  editor_.selectArc("shape_0", "mat_0");
  editor_.key("Delete");
  ASSERT_TRUE(waitFor([&] { return copies().size() == 1 && copies()[0] == changed; }));
}

TEST_F(SoonKept, AnEditorThatIsKilledLeavesTheCopyForTheNextOne) {
  const std::string changed = change();
  ASSERT_TRUE(waitFor([&] { return copies().size() == 1; }));
  editor_.process().end();
  EXPECT_THAT(read_file(scene_), testing::Ne(changed));

  Editor next(server_, start());
  EXPECT_THAT(statusOf(next),
              StartsWith("Unsaved work of an earlier time is kept: File > Recover...  |  Click: "));
  next.chooseMenu({"File", "Recover..."});
  const WidgetInfo list = next.await(std::string(kCopies) + "/ItemsList");
  EXPECT_EQ(next.resource(list, "itemCount"), "1");
  next.answer(kCopies, "OK");
  EXPECT_EQ(title(next), "*tiny_v1.quil - QUILeditor2");
  EXPECT_TRUE(next.graph().hasArc("shape_0", "mat_0"));
  next.chooseMenu({"File", "Save"});
  next.answer(kQuestion, "OK");
  EXPECT_EQ(title(next), "tiny_v1.quil - QUILeditor2");
  EXPECT_TRUE(sameBytes(read_file(scene_), changed));
  EXPECT_TRUE(waitFor([&] { return copies().empty(); }));
  EXPECT_FALSE(canRecover(next));
}

TEST_F(Unsaved, CopiesThatAreNoneCannotBeRecovered) { EXPECT_FALSE(canRecover(editor_)); }

TEST_F(Unsaved, CopyThatIsNotChosenChangesNothing) {
  const std::string changed = change();
  editor_.open(data("robot"));
  editor_.chooseMenu({"File", "Recover..."});
  editor_.answer(kCopies, "Cancel");
  EXPECT_EQ(title(), "robot.quil - QUILeditor2");
  EXPECT_THAT(copies(), SizeIs(1));
}

/// An editor that asks before unsaved changes go.
class Asking : public Unsaved {
 protected:
  Asking() : Unsaved({"confirmUnsavedChanges: True"}) {}
};

TEST_F(Asking, QuitAsksFirst) {
  change();
  editor_.chooseMenu({"File", "Quit"});
  EXPECT_EQ(editor_.message(kQuestion), "Quit without saving the changes?");
  editor_.answer(kQuestion, "Cancel");
  editor_.settle();
  EXPECT_TRUE(editor_.process().running());
  editor_.key("F4", {"Alt_L"});  // the window manager's key for closing a window
  EXPECT_EQ(editor_.message(kQuestion), "Quit without saving the changes?");
  editor_.click("questionDialog/OK");
  EXPECT_EQ(editor_.process().waitForExit(), 0);
  EXPECT_THAT(copies(), SizeIs(1));
}

TEST_F(Asking, NothingIsAskedWhenEverythingIsSaved) {
  change();
  save();
  EXPECT_EQ(editor_.quit(), 0);
}

TEST_F(Asking, OpenAndRecoverAskFirst) {
  change();
  editor_.chooseMenu({"File", "Open"});
  EXPECT_EQ(editor_.message(kQuestion), "Open another scene without saving the changes?");
  editor_.answer(kQuestion, "Cancel");
  EXPECT_FALSE(editor_.asks(kFiles));
  editor_.chooseMenu({"File", "Open"});
  editor_.answer(kQuestion, "OK");
  editor_.chooseFile(data("robot"));
  editor_.settle();
  EXPECT_EQ(title(), "robot.quil - QUILeditor2");
  editor_.selectArc("scene_0", "obj_0");
  editor_.key("Delete");
  ASSERT_THAT(title(), StartsWith("*"));
  editor_.chooseMenu({"File", "Recover..."});
  EXPECT_EQ(editor_.message(kQuestion), "Open a recovery copy without saving the changes?");
  editor_.answer(kQuestion, "OK");
  editor_.answer(kCopies, "OK");
  EXPECT_THAT(title(), StartsWith("*"));
  EXPECT_THAT(copies(), SizeIs(2));
}

/// An editor that keeps the file before its first save.
class BackingUp : public Unsaved {
 protected:
  BackingUp() : Unsaved({"backupOnSave: True"}) {}
};

TEST_F(BackingUp, TheFileBeforeTheFirstSaveStaysBesideIt) {
  const std::string changed = change();
  const std::string before = read_file(scene_);
  fs::permissions(scene_, fs::perms{0600});
  save();
  EXPECT_TRUE(sameBytes(read_file(scene_ + "~"), before));
  EXPECT_EQ(fs::status(scene_ + "~").permissions(), fs::perms{0600});
  save();
  EXPECT_TRUE(sameBytes(read_file(scene_), changed));
  EXPECT_TRUE(sameBytes(read_file(scene_ + "~"), before)) << "the first one counts";
}

TEST_F(Unsaved, NoBackupIsKeptUnlessItIsWanted) {
  change();
  save();
  EXPECT_FALSE(fs::exists(scene_ + "~"));
}

/// What the status line says before its help on gestures.
class OnDisk : public Unsaved {
 protected:
  std::string said() {
    const std::string line = statusOf(editor_);
    return line.substr(0, line.find("  |  "));
  }
  /// Gives the focus to another window and back.
  void lookAway() {
    Editor other(server_, start());
    other.key("Escape");
    EXPECT_EQ(other.quit(), 0);
    editor_.key("Escape");
    editor_.settle();
  }
};

TEST_F(OnDisk, AFileThatSomebodyElseWroteIsToldWhenTheWindowGetsTheFocus) {
  change();
  write_file(scene_, "somebody else's");
  lookAway();
  EXPECT_EQ(title(), "*tiny_v1.quil (changed on disk) - QUILeditor2");
  EXPECT_EQ(said(), scene_ + " has changed on disk since it was opened: Save would overwrite that");
  editor_.chooseMenu({"File", "Save"});
  EXPECT_EQ(editor_.message(kQuestion), "Overwrite OK?");
  const auto shell = editor_.await("questionDialog_popup");
  EXPECT_EQ(shell.label, "Question: changed on disk");
  editor_.answer(kQuestion, "Cancel");
  EXPECT_EQ(read_file(scene_), "somebody else's");
  save();
  EXPECT_EQ(title(), "tiny_v1.quil - QUILeditor2");
}

TEST_F(OnDisk, AFileThatSomebodyElseWroteIsToldInTheQuestionAtTheLatest) {
  change();
  write_file(scene_, "somebody else's");
  editor_.chooseMenu({"File", "Save"});
  EXPECT_EQ(editor_.message(kQuestion), "Overwrite OK?");
  EXPECT_EQ(editor_.await("questionDialog_popup").label, "Question: changed on disk");
  editor_.answer(kQuestion, "OK");
  editor_.chooseMenu({"File", "New"});
  EXPECT_EQ(editor_.message(kQuestion), "All data is deleted. OK?");
  EXPECT_EQ(editor_.await("questionDialog_popup").label, "Question") << "only that question says it";
  editor_.answer(kQuestion, "Cancel");
}

TEST_F(OnDisk, TheReasonOfEveryRefusalStandsOnTheStatusLineAndOnStandardError) {
  const auto expect = [&](const std::string& warning, const std::string& reason) {
    EXPECT_EQ(editor_.message(kWarning), warning);
    EXPECT_EQ(said(), reason);
    editor_.answer(kWarning, "OK");
    EXPECT_THAT(editor_.errors(), HasSubstr(reason + "\n"));
  };
  save();
  expect("Can't write QUIL data!", "The scene has no file name yet: Save As... gives it one");
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile(path("nothing.quil"));
  expect("Can't write QUIL data!", "No scene is open");
  editor_.open(path("absent.quil"));
  EXPECT_THAT(statusOf(editor_), StartsWith("Input File Open Error"));
  editor_.answer(kWarning, "OK");
  editor_.open(data("tiny_v1"));
  EXPECT_THAT(statusOf(editor_), testing::Not(HasSubstr("Error"))) << "it is no longer so";
  editor_.toggleEditMode();
  editor_.drawArc("mat_0", "shape_0");
  expect("Can't add link!", "a material does not refer to shapes");
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile(path("no/such.quil"));
  EXPECT_THAT(statusOf(editor_),
              HasSubstr(path("no/such.quil") + ": can't be opened for writing: No such file or directory"));
  editor_.answer(kWarning, "OK");
}

}  // namespace
