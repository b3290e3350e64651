/// @file
/// What can be entered in dialogs, and what can't.
#include <filesystem>

#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/window/dialogfixture.h"

namespace {

namespace fs = std::filesystem;

using support::Editor;
using support::WidgetInfo;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class DialogEntry : public Dialogs {
 protected:
  /// The sample scene of the table, changed.
  template <class Change>
  std::string changedTable(Change change) const {
    Qis scene = samples::table();
    change(scene);
    EXPECT_EQ(qiSaveAsQb2(scene, path("changed.quil")), 1);
    return path("changed.quil");
  }
};

TEST_F(DialogEntry, ANameWhoseIndexIsOutOfRangeIsRefusedAndCanBeTakenBack) {
  edit(changedTable([](Qis& scene) { scene.mat_list.records[0].fixed.name = 9999; }));
  openDialog("mat_0", "matDialog");
  newOutput();
  enter("title.nodeName", "renamed");
  enter("prim_color.red", "0.25");
  press("OK");
  EXPECT_EQ(editor_.message(Editor::kWarning), "Can't change the record!");
  EXPECT_THAT(editor_.errors(),
              HasSubstr("mat_0: can't be renamed: its name index is 9999, and the scene has "));
  editor_.answer(Editor::kWarning, "OK");
  EXPECT_TRUE(isOpen());
  EXPECT_THAT(newOutput(), EndsWith("Mat is changed.\n"));
  EXPECT_TRUE(sameBytes(saved(), edited(file_, "").bytes));

  enter("title.nodeName", "");
  press("OK");
  EXPECT_FALSE(isOpen());
  EXPECT_TRUE(sameBytes(saved(), edited(file_, "set mat_0 prim_color.red=0.25\n").bytes));
}

TEST_F(DialogEntry, ItemsThatAreNeverWrittenCantBeUsed) {
  edit(data("skeleton"));
  openDialog("anim_1", "animDialog");
  for (const char* const item : {"quil2.pos_c.pos_c_on", "quil2.pos_c.pos_c_node"})
    EXPECT_FALSE(widget(item).sensitive) << item;
  EXPECT_TRUE(widget("anim_loop.inf").sensitive);
  press("Cancel");
  openDialog("lod_5", "lodDialog");
  EXPECT_FALSE(widget("header.nlod").sensitive);
  EXPECT_TRUE(widget("lod_set.lod_dist_group.lod_dist0").focused) << "the first that one can use";
}

TEST_F(DialogEntry, ControlCharactersDontEnterATextField) {
  edit(data("tiny_v1"));
  openDialog("mat_0", "matDialog");
  enter("title.nodeName", "left");
  for (const char* const key : {"b", "d", "e", "g", "q", "w", "y"}) editor_.driver().key(key, {"Control_L"});
  editor_.driver().key("z", {"Control_L", "Shift_L"});
  editor_.driver().type("right");
  editor_.settle();
  EXPECT_EQ(widget("title.nodeName").text, "leftright");
}

TEST_F(DialogEntry, CtrlZTakesBackWhatWasTyped) {
  edit(data("tiny_v1"));
  openDialog("mat_0", "matDialog");
  const auto undo = [&] {
    editor_.driver().key("z", {"Control_L"});
    editor_.settle();
    return widget("title.nodeName").text;
  };
  editor_.driver().key("Home");
  editor_.driver().type("ab");
  editor_.driver().key("End");
  editor_.driver().key("BackSpace");
  editor_.settle();
  EXPECT_EQ(widget("title.nodeName").text, "abplain_whit");
  EXPECT_EQ(undo(), "abplain_white");
  EXPECT_EQ(undo(), "aplain_white");
  editor_.driver().type("x");
  EXPECT_EQ(undo(), "aplain_white");
  EXPECT_EQ(undo(), "plain_white");
  EXPECT_EQ(undo(), "plain_white") << "nothing is left to take back";
  newOutput();
  press("Apply");
  EXPECT_THAT(newOutput(), HasSubstr("\nmat name = plain_white\n"));
}

TEST_F(DialogEntry, CtrlSAppliesAndSaves) {
  edit(data("tiny_v1"));
  const std::string original = path("original.quil");
  fs::copy_file(file_, original);
  openDialog("mat_0", "matDialog");
  enter("title.nodeName", "renamed");
  editor_.driver().key("s", {"Control_L"});
  EXPECT_EQ(editor_.message(Editor::kQuestion), "Overwrite OK?");
  editor_.answer(Editor::kQuestion, "OK");
  editor_.settle();
  const std::string command = "set mat_0 title.nodeName=renamed";
  EXPECT_TRUE(sameBytes(read_file(file_), edited(original, command + "\n").bytes));
  EXPECT_EQ(widget("title.nodeName").text, "renamed");
  EXPECT_TRUE(isOpen());
}

TEST_F(DialogEntry, CtrlSOutsideEditModeSavesNothingThatWouldMissWhatWasEntered) {
  file_ = data("tiny_v1");
  editor_.open(file_);
  openDialog("mat_0", "matDialog");
  enter("title.nodeName", "renamed");
  editor_.driver().key("s", {"Control_L"});
  EXPECT_FALSE(editor_.asks(Editor::kQuestion));
  EXPECT_THAT(editor_.await("mainWindow/status").label, StartsWith("mat_0: not written, Edit Mode is off"));
}

TEST_F(DialogEntry, ATextBeyondAFieldsCapacityIsRefusedWhileTyping) {
  editor_.chooseMenu({"KAVO tool", "Convert to KAVO DL", "Set Options and Go"});
  awaitDialog("quil2gfxDialog");
  const std::string most(31, 'x');
  enter("options.label", most);
  EXPECT_EQ(notice("limit"), "");
  editor_.driver().key("Home");
  editor_.driver().key("Right");
  editor_.driver().type("y");
  EXPECT_EQ(notice("limit"), "Label Name of Output Data: at most 31 characters");
  EXPECT_EQ(widget("options.label").text, most);
  editor_.driver().key("Delete");
  editor_.driver().type("z");
  EXPECT_EQ(notice("limit"), "");
  EXPECT_EQ(widget("options.label").text, "xz" + std::string(29, 'x')) << "the cursor stayed where it was";
}

TEST_F(DialogEntry, OptionsThatTheFileCantGiveBackAreNamed) {
  editor_.chooseMenu({"KAVO tool", "Convert to KAVO DL", "Set Options and Go"});
  awaitDialog("quil2gfxDialog");
  enter("options.output", "my model.c");
  press("Apply");
  EXPECT_EQ(notice("lost"), "The options file can't give back: Output File Name (*.c)");
  EXPECT_THAT(editor_.errors(), HasSubstr("The options file can't give this back: Output File Name (*.c)\n"));
  enter("options.output", "model.c");
  press("Apply");
  EXPECT_EQ(notice("lost"), "");
}

TEST_F(DialogEntry, AScriptThatRunsWithoutASceneIsTold) {
  editor_.chooseMenu({"QUIL2 tool", "Execute Script"});
  editor_.settle();
  EXPECT_THAT(newOutput(), HasSubstr("(cd ../zexview/; ../zexview/prev) &\n"));
  EXPECT_THAT(editor_.await("mainWindow/status").label, StartsWith("No scene was written for the script"));
}

}  // namespace
