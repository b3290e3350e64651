/// @file
/// The File menu and Set Output Directory.
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/case_name.h"
#include "tests/window/editorfixture.h"

namespace {

namespace fs = std::filesystem;

using support::Editor;
using support::WidgetInfo;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class FileCommands : public EditorTest {
 protected:
  bool menuIsActive(std::string_view label) {
    return editor_.await("the menu", [&](const WidgetInfo& w) { return w.viewable && w.label == label; })
        .sensitive;
  }
  std::string title() {
    return editor_.await("the title", [](const WidgetInfo& w) { return w.isAt("QUILeditor2"); }).label;
  }
};

TEST_F(FileCommands, OpenShowsTheGraphAndSaysTheFileName) {
  const std::string file = data("robot");
  newOutput();
  editor_.open(file);
  EXPECT_THAT(newOutput(), StartsWith("File name: " + file + "\n"));
  EXPECT_EQ(shownArcs(), arcsOf(file));
  EXPECT_EQ(editor_.graph().node("lod_13").label, "LOD");
  EXPECT_THAT(title(), HasSubstr("robot.quil"));
}

TEST_F(FileCommands, OpenReplacesTheGraph) {
  editor_.open(data("robot"));
  const std::string file = data("skeleton");
  editor_.open(file);
  EXPECT_EQ(shownArcs(), arcsOf(file));
}

TEST_F(FileCommands, OpenCancelledChangesNothing) {
  const std::string file = data("tiny_v1");
  editor_.open(file);
  newOutput();
  editor_.chooseMenu({"File", "Open"});
  editor_.answer(kFiles, "Cancel");
  EXPECT_EQ(newOutput(), "User canceled.\n");
  EXPECT_EQ(shownArcs(), arcsOf(file));
}

TEST_F(FileCommands, ALongOpenIsStoppedByEscapeAndChangesNothing) {
  const std::string many = dangling(150000), file = table();
  editor_.open(file);
  editor_.toggleEditMode();
  editor_.drawArc("obj_0", "mat_1");
  editor_.fillIn("strip/find", "obj_0");
  editor_.settle();
  const auto before = editor_.graph();
  const std::string titled = title();
  editor_.chooseMenu({"File", "Open"});
  editor_.fillIn(std::string(kFiles) + "/Text", many);
  editor_.click(std::string(kFiles) + "/OK");
  editor_.driver().key("Escape");
  editor_.settle();
  EXPECT_FALSE(editor_.asks(kWarning));
  EXPECT_THAT(editor_.await("mainWindow/status").label, StartsWith(many + ": stopped, nothing was opened"));
  EXPECT_EQ(title(), titled);
  EXPECT_EQ(editor_.await("strip/find").text, "obj_0");
  const auto after = editor_.graph();
  ASSERT_EQ(after.nodes.size(), before.nodes.size());
  for (const auto& node : before.nodes) {
    EXPECT_EQ(after.node(node.name).box.centre(), node.box.centre()) << node.name;
    EXPECT_EQ(after.node(node.name).selected, node.selected) << node.name;
  }
  // The scene that was there can be worked on, and what was done before can be taken back.
  editor_.chooseMenu({"Edit", "Undo link obj_0 to mat_1"});
  editor_.saveAs(path("saved.quil"));
  EXPECT_TRUE(sameBytes(read_file(path("saved.quil")), edited(file, "").bytes));
  EXPECT_EQ(shownArcs(), arcsOf(file));
  editor_.open(data("robot"));
  EXPECT_EQ(shownArcs(), arcsOf(data("robot")));
}

TEST_F(FileCommands, AFileThatCannotBeReadLeavesGraphSceneAndName) {
  const std::string file = data("tiny_v1");
  const std::string before = read_file(file);
  editor_.open(file);
  newOutput();
  write_file(path("broken.quil"), before.substr(0, 100));
  for (const std::string& bad : {path("broken.quil"), path("absent.quil")}) {
    editor_.open(bad);
    EXPECT_EQ(editor_.message(kWarning), "Can't Read QUIL File!");
    editor_.answer(kWarning, "OK");
    EXPECT_EQ(newOutput(), "");
    EXPECT_EQ(shownArcs(), arcsOf(file));
    EXPECT_THAT(title(), HasSubstr("tiny_v1.quil"));
  }
  fs::remove(file);
  editor_.chooseMenu({"File", "Save"});
  editor_.answer(kQuestion, "OK");
  editor_.settle();
  EXPECT_TRUE(sameBytes(read_file(file), before));
}

TEST_F(FileCommands, AVersion2FileGreysTheKavoToolMenuAndAVersion1FileBringsItBack) {
  EXPECT_TRUE(menuIsActive("KAVO tool"));
  editor_.open(data("tiny_v2"));
  EXPECT_FALSE(menuIsActive("KAVO tool"));
  EXPECT_TRUE(menuIsActive("QUIL2 tool"));
  editor_.open(data("tiny_v1"));
  EXPECT_TRUE(menuIsActive("KAVO tool"));
}

TEST_F(FileCommands, SaveAsksEvenForAFileThatIsGone) {
  const std::string file = data("robot");
  const std::string before = read_file(file);
  editor_.open(file);
  fs::remove(file);
  editor_.chooseMenu({"File", "Save"});
  EXPECT_EQ(editor_.message(kQuestion), "Overwrite OK?");
  editor_.answer(kQuestion, "OK");
  editor_.settle();
  EXPECT_TRUE(sameBytes(read_file(file), before)) << "and a version-1 file stays one";
}

TEST_F(FileCommands, SaveAnsweredCancelWritesNothing) {
  const std::string file = data("tiny_v1");
  editor_.open(file);
  fs::remove(file);
  editor_.chooseMenu({"File", "Save"});
  editor_.answer(kQuestion, "Cancel");
  editor_.settle();
  EXPECT_FALSE(fs::exists(file));
}

TEST_F(FileCommands, AFileSizeLimitFailsTheSaveAndTheEditorGoesOn) {
  const std::string file = data("robot"), scene = read_file(file);
  editor_.open(file);
  write_file(file, "the old file");
  rlimit whole{};
  const pid_t editor = editor_.process().id();
  ASSERT_EQ(prlimit(editor, RLIMIT_FSIZE, nullptr, &whole), 0);
  const rlimit narrow{20'000, whole.rlim_max};
  ASSERT_EQ(prlimit(editor, RLIMIT_FSIZE, &narrow, nullptr), 0);
  editor_.chooseMenu({"File", "Save"});
  editor_.answer(kQuestion, "OK");
  EXPECT_EQ(editor_.message(kWarning), "Can't write QUIL data!");
  editor_.answer(kWarning, "OK");
  EXPECT_THAT(editor_.errors(), HasSubstr("File too large"));
  EXPECT_EQ(read_file(file), "the old file");
  ASSERT_EQ(prlimit(editor, RLIMIT_FSIZE, &whole, nullptr), 0);
  editor_.chooseMenu({"File", "Save"});
  editor_.answer(kQuestion, "OK");
  editor_.settle();
  EXPECT_TRUE(sameBytes(read_file(file), scene));
}

TEST_F(FileCommands, SaveBeforeAnyFileNameWarns) {
  editor_.chooseMenu({"File", "Save"});
  editor_.answer(kQuestion, "OK");
  EXPECT_EQ(editor_.message(kWarning), "Can't write QUIL data!");
  editor_.answer(kWarning, "OK");
}

TEST_F(FileCommands, SaveAsAsksOnlyWhenTheFileExists) {
  editor_.open(data("skeleton"));
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile(path("new.quil"));
  EXPECT_FALSE(editor_.asks(kQuestion));
  EXPECT_TRUE(sameBytes(read_file(path("new.quil")), read_file(data("skeleton"))));
  EXPECT_THAT(title(), HasSubstr("new.quil"));

  write_file(path("old.quil"), "old");
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile(path("old.quil"));
  EXPECT_EQ(editor_.message(kQuestion), "Overwrite OK?");
  EXPECT_EQ(read_file(path("old.quil")), "old");
  editor_.answer(kQuestion, "OK");
  editor_.settle();
  EXPECT_TRUE(sameBytes(read_file(path("old.quil")), read_file(data("skeleton"))));
}

TEST_F(FileCommands, SaveAsAnsweredCancelKeepsTheOldFileName) {
  const std::string file = data("tiny_v1");
  const std::string before = read_file(file);
  editor_.open(file);
  write_file(path("other.quil"), "other");
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile(path("other.quil"));
  editor_.answer(kQuestion, "Cancel");
  fs::remove(file);
  editor_.chooseMenu({"File", "Save"});
  editor_.answer(kQuestion, "OK");
  editor_.settle();
  EXPECT_EQ(read_file(path("other.quil")), "other");
  EXPECT_TRUE(sameBytes(read_file(file), before));
}

TEST_F(FileCommands, SaveAsThatCannotWriteWarnsAndTakesTheName) {
  editor_.open(data("tiny_v1"));
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile(path("no/such/directory.quil"));
  EXPECT_EQ(editor_.message(kWarning), "Can't write QUIL data!");
  editor_.answer(kWarning, "OK");
  fs::create_directories(path("no/such"));
  editor_.chooseMenu({"File", "Save"});
  editor_.answer(kQuestion, "OK");
  editor_.settle();
  EXPECT_TRUE(sameBytes(read_file(path("no/such/directory.quil")), read_file(data("tiny_v1"))));
}

TEST_F(FileCommands, SaveAsOntoAPipeThatNobodyReadsWarnsInsteadOfWaiting) {
  editor_.open(data("tiny_v1"));
  ASSERT_EQ(mkfifo(path("pipe.quil").c_str(), 0600), 0);
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile(path("pipe.quil"));
  EXPECT_EQ(editor_.message(kQuestion), "Overwrite OK?");
  editor_.answer(kQuestion, "OK");
  EXPECT_EQ(editor_.message(kWarning), "Can't write QUIL data!");
  editor_.answer(kWarning, "OK");
  EXPECT_TRUE(fs::is_fifo(path("pipe.quil")));
}

TEST_F(FileCommands, SaveAsWithoutASceneWarns) {
  editor_.chooseMenu({"File", "Save As..."});
  editor_.chooseFile(path("nothing.quil"));
  EXPECT_EQ(editor_.message(kWarning), "Can't write QUIL data!");
  editor_.answer(kWarning, "OK");
  EXPECT_FALSE(fs::exists(path("nothing.quil")));
}

TEST_F(FileCommands, NewClearsTheGraphAndSaveStillWritesTheScene) {
  const std::string file = data("robot");
  const std::string before = read_file(file);
  editor_.open(file);
  editor_.chooseMenu({"File", "New"});
  EXPECT_EQ(editor_.message(kQuestion), "All data is deleted. OK?");
  editor_.answer(kQuestion, "Cancel");
  EXPECT_FALSE(editor_.graph().nodes.empty());

  editor_.chooseMenu({"File", "New"});
  editor_.answer(kQuestion, "OK");
  EXPECT_TRUE(editor_.graph().nodes.empty());
  EXPECT_TRUE(editor_.graph().arcs.empty());
  fs::remove(file);
  editor_.chooseMenu({"File", "Save"});
  editor_.answer(kQuestion, "OK");
  editor_.settle();
  EXPECT_TRUE(sameBytes(read_file(file), before));
}

/// An editor whose system calls fail or end it.
class FailingSave : public EditorTest, public testing::WithParamInterface<const char*> {
 protected:
  FailingSave() : EditorTest(24, {.executable = {}, .environment = {{"QUIL_FAULTS", GetParam()}}}) {}

  void save() {
    editor_.chooseMenu({"File", "Save"});
    editor_.answer(kQuestion, "OK");
  }
  /// Opens a scene, and puts another file in its place.
  void openAndReplace() {
    const std::string file = data("robot");
    scene_ = read_file(file);
    editor_.open(file);
    write_file(file, "the old file");
  }
  std::vector<std::string> names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(files_.path()))
      if (entry.is_regular_file()) names.push_back(entry.path().filename());
    return names;
  }

  std::string scene_;
};

using SaveThatFails = FailingSave;

TEST_P(SaveThatFails, WarnsAndLeavesTheOldFileAndTheNextSaveIsComplete) {
  openAndReplace();
  save();
  EXPECT_EQ(editor_.message(kWarning), "Can't write QUIL data!");
  editor_.answer(kWarning, "OK");
  EXPECT_THAT(editor_.errors(), HasSubstr(path("robot.quil") + ": can't "));
  EXPECT_EQ(read_file(path("robot.quil")), "the old file");
  EXPECT_THAT(names(), testing::ElementsAre("robot.quil"));
  save();
  editor_.settle();
  EXPECT_TRUE(sameBytes(read_file(path("robot.quil")), scene_));
}

INSTANTIATE_TEST_SUITE_P(Calls, SaveThatFails, testing::Values("write:2:28", "fsync:1:5", "rename:1:5"));

using SaveThatIsKilled = FailingSave;

TEST_P(SaveThatIsKilled, LeavesTheOldFileAndNothingElse) {
  openAndReplace();
  EXPECT_THROW(save(), std::runtime_error) << "it can't be asked any more";
  EXPECT_EQ(editor_.process().waitForExit(), 128 + SIGKILL);
  EXPECT_EQ(read_file(path("robot.quil")), "the old file");
  EXPECT_THAT(names(), testing::ElementsAre("robot.quil"));
}

INSTANTIATE_TEST_SUITE_P(Calls, SaveThatIsKilled, testing::Values("write:2:kill", "fsync:1:kill"));

struct DirectoryCommand {
  std::string name;
  std::vector<std::string> menu;
};

class SetDirectory : public FileCommands, public testing::WithParamInterface<DirectoryCommand> {
 protected:
  std::string outputDirectory() { return editor_.symbol("ngops"); }
};

TEST_P(SetDirectory, TakesTheDirectoryOfTheChosenFileForThisRunOnly) {
  const fs::path options = editor_.home() / ".quilcnvops";
  const std::string before = read_file(options);
  EXPECT_EQ(outputDirectory(), "./");
  editor_.chooseMenu(GetParam().menu);
  editor_.chooseFile(path("any file"));
  EXPECT_EQ(outputDirectory(), files_.path().string() + "/");
  EXPECT_TRUE(sameBytes(read_file(options), before));
}

TEST_P(SetDirectory, CancelledKeepsIt) {
  editor_.chooseMenu(GetParam().menu);
  editor_.answer(kFiles, "Cancel");
  EXPECT_EQ(outputDirectory(), "./");
}

INSTANTIATE_TEST_SUITE_P(
    All, SetDirectory,
    testing::Values(DirectoryCommand{"Kavo", {"KAVO tool", "Convert to KAVO DL", "Set Output Directory"}},
                    DirectoryCommand{"Quil2", {"QUIL2 tool", "Convert to ZEX", "Set Output Directory"}}),
    CaseName());

TEST_F(FileCommands, TheFileDialogStartsInTheWorkingDirectoryAndRemembersWhereItWas) {
  const auto directory = [&] { return editor_.resource(editor_.await(kFiles), "directory"); };
  editor_.chooseMenu({"File", "Open"});
  EXPECT_EQ(fs::path(directory()).lexically_normal(), editor_.directory() / "");
  editor_.answer(kFiles, "Cancel");
  editor_.open(data("tiny_v1"));
  editor_.chooseMenu({"File", "Open"});
  EXPECT_EQ(fs::path(directory()).lexically_normal(), files_.path() / "");
  editor_.answer(kFiles, "Cancel");
}

}  // namespace
