/// @file
/// What can be entered in dialogs, and what can't.
#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/window/dialogfixture.h"

namespace {

using support::Editor;
using support::WidgetInfo;
using testing::EndsWith;
using testing::HasSubstr;

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

}  // namespace
