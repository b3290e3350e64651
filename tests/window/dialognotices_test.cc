/// @file
/// What dialogs say of themselves: the lines between their items and their buttons.
#include "tests/window/dialogfixture.h"

namespace {

using support::WidgetInfo;
using testing::EndsWith;
using testing::StartsWith;

constexpr const char* kEditModeIsOff = "Edit Mode is off: nothing will be written";

class DialogNotices : public Dialogs {
 protected:
  std::string status() { return editor_.await("mainWindow/status").label; }
  bool editModeIsOn() {
    editor_.settle();
    const auto toggle = editor_.find([](const WidgetInfo& w) { return w.isAt("EditMode"); });
    return toggle && toggle->set;
  }
};

TEST_F(DialogNotices, SayThatEditModeIsOffAndTurnItOn) {
  file_ = data("tiny_v1");
  editor_.open(file_);
  openDialog("mat_0", "matDialog");
  EXPECT_EQ(notice("editMode"), kEditModeIsOff);
  EXPECT_FALSE(editModeIsOn());
  enter("title.nodeName", "renamed");
  editor_.click(dialog_ + "/notices/editModeNotice/button");
  EXPECT_EQ(notice("editMode"), "");
  EXPECT_TRUE(editModeIsOn());
  newOutput();
  press("OK");
  const std::string command = "set mat_0 title.nodeName=renamed";
  EXPECT_EQ(newOutput(), trace(command) + "OK.\n");
  EXPECT_TRUE(sameBytes(saved(), edited(file_, command + "\n").bytes));
}

TEST_F(DialogNotices, FollowTheMenusToggleInEveryOpenDialog) {
  editor_.open(data("tiny_v1"));
  editor_.toggleEditMode();
  const auto expectBoth = [&](const std::string& text) {
    for (const char* const dialog : {"matDialog", "objDialog"}) {
      dialog_ = dialog;
      EXPECT_EQ(notice("editMode"), text) << dialog;
    }
  };
  openDialog("mat_0", "matDialog");
  openDialog("obj_0", "objDialog");
  expectBoth("");
  editor_.toggleEditMode();
  expectBoth(kEditModeIsOff);
  editor_.toggleEditMode();
  expectBoth("");
}

TEST_F(DialogNotices, LeaveEverythingInSight) {
  editor_.open(data("skeleton"));
  openDialog("joint_0", "jointDialog");
  const auto right = [&](const WidgetInfo& w) { return w.box.x + w.box.width; };
  const auto bottom = [&](const WidgetInfo& w) { return w.box.y + w.box.height; };
  const auto expectStacked = [&] {
    const auto dialog = editor_.await(dialog_);
    const auto text = editor_.await(dialog_ + "/notices/editModeNotice/text");
    const auto button = editor_.await(dialog_ + "/notices/editModeNotice/button");
    EXPECT_LE(right(text), button.box.x);
    EXPECT_LE(right(button), right(dialog));
    EXPECT_LE(bottom(editor_.await(dialog_ + "/typeBase")), editor_.await(dialog_ + "/tab").box.y);
    EXPECT_LE(bottom(editor_.await(dialog_ + "/tab")), text.box.y);
    EXPECT_LE(bottom(text), editor_.await(dialog_ + "/buttons").box.y);
    EXPECT_LE(bottom(editor_.await(dialog_ + "/buttons")), bottom(dialog));
  };
  expectStacked();
  editor_.toggleEditMode();
  editor_.toggleEditMode();
  EXPECT_EQ(notice("editMode"), kEditModeIsOff);
  expectStacked();
}

TEST_F(DialogNotices, AreReachedByTab) {
  editor_.open(data("skeleton"));
  openDialog("joint_0", "jointDialog");
  for (const char* const next : {"typeBase", "editModeNotice/button", "buttons/OK"}) {
    editor_.driver().key("Tab");
    editor_.await(std::string(next) + " with the focus",
                  [&](const WidgetInfo& w) { return w.isAt(dialog_ + "/" + next) && w.focused; });
  }
}

TEST_F(DialogNotices, AnOkThatLeftSomethingUnwrittenIsTold) {
  editor_.open(data("tiny_v1"));
  const std::string before = status();
  openDialog("mat_0", "matDialog");
  press("OK");  // nothing was entered
  EXPECT_EQ(status(), before);
  openDialog("mat_0", "matDialog");
  enter("title.nodeName", "renamed");
  press("OK");
  EXPECT_FALSE(isOpen());
  EXPECT_THAT(newOutput(), EndsWith("APPLY.\nOK.\n"));
  EXPECT_THAT(status(), StartsWith("mat_0: not written, Edit Mode is off"));
}

TEST_F(DialogNotices, TellWhatAnotherDialogWroteIntoTheirRecord) {
  edit(data("skeleton"));
  openDialog("lod_5", "lodDialog");
  EXPECT_EQ(notice("changed"), "");
  editor_.fillIn("strip/find", "obj_5");  // a dialog may lie on the node
  editor_.driver().key("Return");
  editor_.driver().key("Tab");
  editor_.key("Return");
  awaitDialog("objDialog");
  enter("title.nodeName", "renamed");
  press("OK");
  dialog_ = "lodDialog";
  EXPECT_EQ(notice("changed"), "lod_5 was changed after this was opened");
}

}  // namespace
