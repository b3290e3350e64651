/// @file
/// A small application on the framework, used by mouse and keyboard under a window manager.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/places.h"
#include "tests/support/process.h"
#include "tests/support/program.h"

namespace {

using support::Program;
using support::WidgetInfo;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// Three scenes, a text, a hidden file and a directory.
void fill(const std::filesystem::path& directory) {
  std::filesystem::create_directory(directory / "models");
  for (const char* name : {"robot.quil", "tiny.quil", "notes.txt", ".hidden.quil", "models/deep.quil"})
    write_file(directory / name, name);
}

class Framework : public testing::Test {
 protected:
  explicit Framework(int depth = 24, std::map<std::string, std::string> homeFiles = {})
      : server(depth),
        program(server, {.executable = support::built_program("tests/viewkit/framework_program"),
                         .home_files = std::move(homeFiles),
                         .directory = scratch.path()}) {
    fill(scratch.path());
    program.click("form/text");
    waitForFocus("form/text");
  }

  /// Waits until keys go to this widget.
  void waitForFocus(std::string_view where) {
    program.await(std::string(where) + " with the focus",
                  [where](const WidgetInfo& w) { return w.isAt(where) && w.viewable && w.focused; });
  }
  bool isShown(std::string_view where) {
    return program.find(where, [](const WidgetInfo& w) { return w.viewable; }).has_value();
  }
  WidgetInfo item(std::string_view where) {
    return program.awaitAt(where, [](const WidgetInfo&) { return true; });
  }
  void awaitOutput(const std::string& text) {
    EXPECT_TRUE(support::waitFor([&] { return program.output().find(text) != std::string::npos; }))
        << text << " is not in:\n"
        << program.output();
  }
  void key(std::string_view keysym, support::Held held = {}) { program.driver().key(keysym, held); }

  ScratchDirectory scratch;
  support::XServer server;
  support::WindowManager manager{server};
  Program program;
};

TEST_F(Framework, MenusHoldWhatTheTablesSay) {
  program.openMenu({"File", "Save As..."});
  const WidgetInfo saveAs = item("SaveAs");
  EXPECT_EQ(saveAs.class_name, "XmPushButtonGadget");
  EXPECT_EQ(saveAs.label, "Save As...");
  EXPECT_EQ(program.resource(saveAs, "acceleratorText"), "Shift+Ctrl+S");
  EXPECT_EQ(item("EditMode").class_name, "XmToggleButtonGadget");
}

TEST_F(Framework, MenuItemsRunByMouse) {
  program.chooseMenu({"File", "Save As..."});
  awaitOutput("SaveAs\n");
  program.chooseMenu({"KAVO tool", "Convert to KAVO DL", "Set Output Directory"});
  awaitOutput("SetOutputDirectory\n");
  program.chooseMenu({"Edit", "Edit Mode"});
  awaitOutput("Edit Mode 1\n");
  program.chooseMenu({"Edit", "Edit Mode"});
  awaitOutput("Edit Mode 0\n");
}

TEST_F(Framework, MenuItemsRunByMnemonics) {
  key("e", {"Alt_L"});
  program.await("EditMode");
  key("d");
  awaitOutput("DeleteLink\n");
}

TEST_F(Framework, AMnemonicWorksWithAltLetGoFirst) {
  support::XDriver& driver = program.driver();
  driver.hold("Alt_L");
  driver.hold("e");
  driver.letGo("Alt_L");
  driver.letGo("e");
  program.await("EditMode");
  key("d");
  awaitOutput("DeleteLink\n");
}

struct Lock {
  const char* name;
  const char* keysym;  ///< pressed first; null for none
};

class AcceleratorUnder : public Framework, public testing::WithParamInterface<Lock> {};

TEST_P(AcceleratorUnder, RunsItsItem) {
  if (GetParam().keysym) key(GetParam().keysym);
  key("s", {"Control_L"});
  awaitOutput("Save\n");
  key("s", {"Shift_L", "Control_L"});
  awaitOutput("SaveAs\n");
  key("e", {"Control_L"});
  awaitOutput("Edit Mode 1\n");
  program.click("form/button");
  key("Delete");
  awaitOutput("DeleteLink\n");
  EXPECT_EQ(program.await("form/text").text, "");
}

INSTANTIATE_TEST_SUITE_P(Locks, AcceleratorUnder,
                         testing::Values(Lock{"NoLock", nullptr}, Lock{"CapsLock", "Caps_Lock"},
                                         Lock{"NumLock", "Num_Lock"}),
                         CaseName{});

TEST_F(Framework, LocksStillCountForText) {
  key("Caps_Lock");
  program.driver().type("abc");
  program.settle();
  EXPECT_EQ(program.await("form/text").text, "ABC");
}

TEST_F(Framework, DeleteInATextFieldDeletesThere) {
  program.driver().type("abc");
  key("Home");
  key("Delete");
  program.settle();
  EXPECT_EQ(program.await("form/text").text, "bc");
  EXPECT_THAT(program.output(), Not(HasSubstr("DeleteLink")));
}

TEST_F(Framework, TextIsSelectedCutCopiedAndPastedByTheUsualKeys) {
  const auto awaitText = [&](const std::string& text) {
    program.await(text, [&](const WidgetInfo& w) { return w.isAt("form/text") && w.text == text; });
  };
  program.driver().type("abc");
  key("a", {"Control_L"});
  key("c", {"Control_L"});
  program.driver().type("d");
  key("v", {"Control_L"});
  awaitText("dabc");
  key("a", {"Control_L"});
  key("x", {"Control_L"});
  awaitText("");
  key("v", {"Control_L"});
  awaitText("dabc");
}

TEST_F(Framework, AGreyedPaneIsNotRunByAccelerators) {
  program.chooseMenu({"KAVO tool", "Grey"});
  awaitOutput("File 0\n");
  EXPECT_FALSE(item("menuBar/File").sensitive);
  key("s", {"Control_L"});
  program.settle();
  EXPECT_THAT(program.output(), Not(HasSubstr("Save")));

  program.chooseMenu({"KAVO tool", "Grey"});
  awaitOutput("File 1\n");
  key("s", {"Control_L"});
  awaitOutput("Save\n");
}

class UserResources : public Framework {
 protected:
  UserResources()
      : Framework(24, {{".Xdefaults", "*Save.accelerator: Ctrl<Key>w\n*status.background: #ff0000\n"}}) {}
};

TEST_F(UserResources, WinOverOurs) {
  key("w", {"Control_L"});
  awaitOutput("Save\n");
  EXPECT_EQ(program.resource(program.await("mainWindow/status"), "background"), std::to_string(0xff0000));
}

/// A way to answer a dialog.
struct Answer {
  const char* name;
  const char* click;   ///< the button to click, or null
  const char* keysym;  ///< else the key to press
  bool alt;
  const char* expected;
};

class Question : public Framework, public testing::WithParamInterface<Answer> {
 protected:
  void answer(std::string_view dialog) {
    waitForFocus(std::string(dialog) + "/OK");
    if (GetParam().click) {
      program.click(std::string(dialog) + "/" + GetParam().click);
    } else if (GetParam().alt) {
      key(GetParam().keysym, {"Alt_L"});
    } else {
      key(GetParam().keysym);
    }
  }
};

TEST_P(Question, IsAnswered) {
  program.chooseMenu({"File", "New"});
  EXPECT_EQ(program.await("questionDialog").label, "All data is deleted. OK?");
  EXPECT_FALSE(isShown("questionDialog/Help"));
  answer("questionDialog");
  awaitOutput(std::string("question ") + GetParam().expected + "\n");
  EXPECT_FALSE(isShown("questionDialog"));
}

INSTANTIATE_TEST_SUITE_P(Answers, Question,
                         testing::Values(Answer{"OkButton", "OK", nullptr, false, "OK"},
                                         Answer{"CancelButton", "Cancel", nullptr, false, "CANCEL"},
                                         Answer{"Return", nullptr, "Return", false, "OK"},
                                         Answer{"Escape", nullptr, "Escape", false, "CANCEL"},
                                         Answer{"Close", nullptr, "F4", true, "CANCEL"}),
                         CaseName{});

class Warning : public Question {};

TEST_P(Warning, IsAnswered) {
  program.chooseMenu({"KAVO tool", "Warn"});
  EXPECT_EQ(program.await("warningDialog").label, "Can't write QUIL data!");
  EXPECT_FALSE(isShown("warningDialog/Cancel"));
  answer("warningDialog");
  awaitOutput(std::string("warning ") + GetParam().expected + "\n");
  EXPECT_FALSE(isShown("warningDialog"));
}

INSTANTIATE_TEST_SUITE_P(Answers, Warning,
                         testing::Values(Answer{"OkButton", "OK", nullptr, false, "OK"},
                                         Answer{"Return", nullptr, "Return", false, "OK"},
                                         Answer{"Escape", nullptr, "Escape", false, "CANCEL"},
                                         Answer{"Close", nullptr, "F4", true, "CANCEL"}),
                         CaseName{});

TEST_F(Framework, AModalDialogKeepsInputFromTheWindow) {
  program.chooseMenu({"File", "New"});
  waitForFocus("questionDialog/OK");
  key("s", {"Control_L"});
  program.click("form/text");
  program.driver().type("abc");
  program.settle();
  EXPECT_THAT(program.output(), Not(HasSubstr("Save")));
  EXPECT_EQ(program.await("form/text").text, "");
  program.click("questionDialog/Cancel");
  awaitOutput("question CANCEL\n");
}

TEST_F(Framework, DialogsComeUpOverTheMiddleOfTheWindow) {
  const support::Point middle = program.await("mainWindow").box.centre();
  program.chooseMenu({"File", "New"});
  const support::Point dialog = program.await("questionDialog").box.centre();
  constexpr int kWindowFrame = 40;
  EXPECT_NEAR(dialog.x, middle.x, kWindowFrame);
  EXPECT_NEAR(dialog.y, middle.y, kWindowFrame);
}

TEST_F(Framework, ADialogComesAgainAsItWas) {
  for (int i = 0; i < 2; ++i) {
    program.chooseMenu({"File", "New"});
    waitForFocus("questionDialog/OK");
    key("Right");
    waitForFocus("questionDialog/Cancel");
    key("Return");
    EXPECT_TRUE(support::waitFor([&] { return !isShown("questionDialog"); }));
  }
  EXPECT_THAT(program.output(), HasSubstr("question CANCEL\nquestion CANCEL\n"));
}

TEST_F(Framework, ClosingTheWindowQuits) {
  key("F4", {"Alt_L"});
  EXPECT_EQ(program.process().waitForExit(), 0);
  EXPECT_THAT(program.output(), EndsWith("run returned 0\nwindow destroyed\n"));
  EXPECT_EQ(program.errors(), "");
}

TEST_F(Framework, QuittingInsideADialogCancelsIt) {
  program.chooseMenu({"KAVO tool", "Quit inside"});
  EXPECT_EQ(program.process().waitForExit(), 0);
  EXPECT_THAT(program.output(), EndsWith("question CANCEL\nrun returned 0\nwindow destroyed\n"));
  EXPECT_EQ(program.errors(), "");
}

TEST(FrameworkAlone, ALostDisplayEndsItAfterItsLastWords) {
  const ScratchDirectory scratch;
  support::XServer server;
  support::Process::Start start;
  start.command = {support::built_program("tests/viewkit/framework_program").string()};
  start.environment = {{"DISPLAY", server.display()}};
  start.output = scratch.path() / "output";
  start.errors = scratch.path() / "errors";
  support::Process program(start);
  support::Process::Start look;
  look.command = {"xwininfo", "-display", server.display(), "-name", "TestWindow"};
  ASSERT_TRUE(support::waitFor([&] { return support::Process(look).waitForExit() == 0; }));

  server.end();
  EXPECT_EQ(program.waitForExit(), 1);
  EXPECT_EQ(read_file(start.output), "display lost\n");
  EXPECT_THAT(read_file(start.errors), HasSubstr("connection to the display is lost"));
}

TEST_F(Framework, InputWhileBusyIsLost) {
  const support::Point button = program.await("form/button").box.centre();
  program.chooseMenu({"KAVO tool", "Busy"});
  ASSERT_TRUE(support::waitFor([&] { return std::filesystem::exists(scratch.path() / "blocked"); }));
  key("s", {"Control_L"});
  program.driver().click(button);
  program.driver().type("abc");
  write_file(scratch.path() / "go", "on");
  awaitOutput("worked\n");
  EXPECT_THAT(program.output(), Not(HasSubstr("Save")));
  EXPECT_EQ(program.await("form/text").text, "");
  key("s", {"Control_L"});
  awaitOutput("Save\n");
}

class FileDialog : public Framework {
 protected:
  void open() {
    program.chooseMenu({"File", "Open"});
    waitForFocus("fileSelectionDialog/Text");
  }
  /// How many files the list shows.
  int listed() { return std::atoi(program.resource(program.await("ItemsList"), "itemCount").c_str()); }
  std::string directory() { return program.await("fileSelectionDialog/DirText").text; }
  /// The middle of a line of a list.
  support::Point line(std::string_view list, int number) {
    const WidgetInfo widget = program.await(list);
    const int visible = std::atoi(program.resource(widget, "visibleItemCount").c_str());
    return {widget.box.x + 20, widget.box.y + (2 * number - 1) * widget.box.height / (2 * visible)};
  }
  std::string path(const char* name) { return (scratch.path() / name).string(); }
};

TEST_F(FileDialog, StartsInTheWorkingDirectoryWithTheScenes) {
  open();
  EXPECT_EQ(directory(), path(""));
  EXPECT_EQ(listed(), 2);
}

TEST_F(FileDialog, ShowsEverythingOnRequest) {
  open();
  program.click("showAll");
  EXPECT_TRUE(support::waitFor([&] { return listed() == 3; }));
  program.click("showAll");
  EXPECT_TRUE(support::waitFor([&] { return listed() == 2; }));
}

TEST_F(FileDialog, SaysThatNoFileMatchesAndTakesThatForNoName) {
  std::filesystem::create_directory(scratch.path() / "empty");
  open();
  program.driver().type("empty");
  key("Return");
  EXPECT_TRUE(support::waitFor([&] { return directory() == path("empty/"); }));
  EXPECT_EQ(program.resource(program.await("fileSelectionDialog"), "noMatchString"), "(no files)");
  EXPECT_EQ(listed(), 1);
  program.driver().doubleClick(line("ItemsList", 1));
  program.driver().click(line("ItemsList", 1));
  program.settle();
  EXPECT_EQ(program.await("fileSelectionDialog/Text").text, "");
  EXPECT_TRUE(isShown("fileSelectionDialog"));
}

TEST_F(FileDialog, TakesATypedPath) {
  open();
  program.driver().type("/no/such/../place.quil");
  key("Return");
  awaitOutput("file OK /no/place.quil");
}

TEST_F(FileDialog, TakesATypedNameInTheDirectoryShown) {
  open();
  program.driver().type("new.quil");
  program.click("fileSelectionDialog/OK");
  awaitOutput("file OK " + path("new.quil") + "\n");
}

TEST_F(FileDialog, TakesADoubleClickedFile) {
  open();
  program.driver().doubleClick(line("ItemsList", 2));
  awaitOutput("file OK " + path("tiny.quil") + "\n");
}

TEST_F(FileDialog, TakesAClickedFileWithOk) {
  open();
  program.driver().click(line("ItemsList", 1));
  program.await("name in the field", [](const WidgetInfo& w) {
    return w.isAt("fileSelectionDialog/Text") && w.text == "robot.quil";
  });
  program.click("fileSelectionDialog/OK");
  awaitOutput("file OK " + path("robot.quil") + "\n");
}

TEST_F(FileDialog, EntersADoubleClickedDirectory) {
  open();
  program.driver().doubleClick(line("DirList", 2));
  EXPECT_TRUE(support::waitFor([&] { return directory() == path("models/"); }));
  program.driver().doubleClick(line("ItemsList", 1));
  awaitOutput("file OK " + path("models/deep.quil") + "\n");
}

TEST_F(FileDialog, EntersATypedDirectoryAndStays) {
  open();
  program.driver().type("models");
  key("Return");
  EXPECT_TRUE(support::waitFor([&] { return directory() == path("models/"); }));
  EXPECT_TRUE(isShown("fileSelectionDialog"));
  EXPECT_EQ(listed(), 1);
}

TEST_F(FileDialog, WantsAName) {
  open();
  key("Return");
  program.settle();
  EXPECT_TRUE(isShown("fileSelectionDialog"));
}

TEST_F(FileDialog, RemembersWhereItWas) {
  open();
  program.driver().type(path("models/new.quil"));
  key("Return");
  awaitOutput("file OK " + path("models/new.quil") + "\n");
  open();
  EXPECT_EQ(directory(), path("models/"));
  EXPECT_EQ(program.await("fileSelectionDialog/Text").text, "");
  program.driver().doubleClick(line("DirList", 1));
  EXPECT_TRUE(support::waitFor([&] { return directory() == path(""); }));
  key("Escape");
  awaitOutput("file CANCEL");
  open();
  EXPECT_EQ(directory(), path(""));
}

TEST_F(FileDialog, KeepsTheLastChoiceWhenCancelled) {
  open();
  program.driver().type("new.quil");
  key("Return");
  awaitOutput("file OK");
  open();
  program.click("fileSelectionDialog/Cancel");
  awaitOutput("file CANCEL " + path("new.quil") + "\n");
}

class AtDepth : public Framework, public testing::WithParamInterface<int> {
 protected:
  AtDepth() : Framework(GetParam()) {}
};

TEST_P(AtDepth, RunsWithoutComplaints) {
  program.chooseMenu({"File", "Open"});
  program.click("fileSelectionDialog/Cancel");
  awaitOutput("file CANCEL");  // until then the dialog keeps the menus from input
  program.chooseMenu({"File", "New"});
  program.click("questionDialog/OK");
  awaitOutput("question OK\n");
  program.chooseMenu({"KAVO tool", "Warn"});
  program.click("warningDialog/OK");
  awaitOutput("warning OK\n");
  EXPECT_EQ(program.errors(), "");
}

INSTANTIATE_TEST_SUITE_P(Depths, AtDepth, testing::Values(8, 16, 24), testing::PrintToStringParamName());

}  // namespace
