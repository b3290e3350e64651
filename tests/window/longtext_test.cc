/// @file
/// What is too long for the toolkit's text field.
#include "editor/model/recordnames.h"
#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/window/dialogfixture.h"

namespace {

using testing::StartsWith;

class LongText : public Dialogs {
 protected:
  void open(std::size_t length) {
    Qis scene = samples::table();
    name_ = "a_name_" + std::string(length - 7, 'x');
    ASSERT_EQ(name_node(scene, "obj_7", name_), 1);
    ASSERT_EQ(qiSaveAsQb2(scene, path("long.quil")), 1);
    edit(path("long.quil"));
    openDialog("obj_7", "objDialog");
  }
  std::string name_;
};

TEST_F(LongText, ShowsItsBeginningAndSaysItsLength) {
  open(10000);
  EXPECT_EQ(widget("nodeName").text, name_.substr(0, 24) + "... (10000 characters)");
}

TEST_F(LongText, StaysAsItIs) {
  open(10000);
  editor_.driver().click(widget("nodeName").box.centre());
  editor_.driver().type("zz");
  editor_.driver().key("BackSpace");
  press("OK");
  EXPECT_TRUE(sameBytes(saved(), read_file(path("long.quil"))));
}

TEST_F(LongText, OneThatCanBeShownCanBeEdited) {
  open(1000);
  EXPECT_EQ(widget("nodeName").text, name_);
  enter("nodeName", "short");
  press("OK");
  EXPECT_EQ(quilscene({"show", path("long.quil"), "obj_7"}).find("xxx") != std::string::npos, true);
  write_file(path("saved.quil"), saved());
  EXPECT_EQ(quilscene({"show", path("saved.quil"), "obj_7"}).find("xxx"), std::string::npos);
}

}  // namespace
