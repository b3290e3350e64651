/// @file
/// Re-wiring a scene with the pointer: what is accepted changes records and graph alike, what is refused
/// changes neither.
#include <filesystem>

#include "tests/window/editorfixture.h"

namespace {

namespace fs = std::filesystem;

using support::Editor;
using support::GraphState;
using support::Point;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class Gestures : public EditorTest {
 protected:
  /// Opens a scene in Edit Mode.
  void edit(const std::string& file) {
    file_ = file;
    editor_.open(file);
    editor_.toggleEditMode();
    newOutput();
  }

  void expectWarning(const std::string& text) {
    EXPECT_EQ(editor_.message(kWarning), text);
    editor_.answer(kWarning, "OK");
  }

  /// Saves, and expects the bytes that the command line makes of the same edits, and a graph that shows them.
  void expectEdits(const std::string& commands) {
    const std::string saved = path("saved.quil");
    fs::remove(saved);
    editor_.saveAs(saved);
    EXPECT_TRUE(sameBytes(read_file(saved), edited(file_, commands).bytes));
    EXPECT_EQ(shownArcs(), arcsOf(saved));
  }

  /// The lines that the link rules print for one command.
  std::string trace(const std::string& command, bool accepted = true) const {
    const std::string all = edited(file_, command + "\n", accepted).trace;
    return all.substr(0, all.rfind("-> "));
  }

  std::string file_;
};

TEST_F(Gestures, DoNothingOutsideEditMode) {
  const std::string file = table();
  editor_.open(file);
  newOutput();
  editor_.drawArc("obj_0", "mat_1");
  const GraphState graph = editor_.graph();
  editor_.driver().doubleClick({graph.view.x + 5, graph.view.y + graph.view.height - 5});
  editor_.selectArc("obj_5", "anim_0");
  editor_.key("Delete");
  editor_.chooseMenu({"Edit", "Delete Link"});
  EXPECT_EQ(newOutput(), "");
  EXPECT_FALSE(editor_.asks(kWarning));
  EXPECT_EQ(shownArcs(), arcsOf(file));
  EXPECT_EQ(editor_.graph().nodes.size(), graph.nodes.size());
}

TEST_F(Gestures, EditModeSwitchesBothResourcesTogether) {
  const support::WidgetInfo graph = editor_.graphWidget();
  for (const char* expected : {"1", "0"}) {
    editor_.toggleEditMode();
    EXPECT_EQ(editor_.resource(graph, "editableArcs"), expected);
    EXPECT_EQ(editor_.resource(graph, "okToAdd"), expected);
  }
  editor_.key("e", {"Control_L"});
  EXPECT_EQ(editor_.resource(graph, "editableArcs"), "1");
}

TEST_F(Gestures, ANewArcIsARecordEdit) {
  edit(table());
  editor_.drawArc("obj_0", "mat_1");
  EXPECT_EQ(newOutput(), "In newArcCallback\n" + trace("add obj_0 mat_1"));
  EXPECT_EQ(editor_.graph().countArcs("obj_0", "mat_1"), 1);
  expectEdits("add obj_0 mat_1\n");
}

TEST_F(Gestures, ARefusedArcChangesNothing) {
  edit(table());
  editor_.drawArc("scene_0", "cam_0");
  EXPECT_EQ(newOutput(), "In newArcCallback\n" + trace("add scene_0 cam_0", false));
  expectWarning("Can't add link!");
  editor_.drawArc("shape_1", "mat_1");  // it has a material
  expectWarning("Can't add link!");
  expectEdits("");
}

TEST_F(Gestures, ASelfLinkIsAnArcLikeAnother) {
  edit(table());
  const GraphState before = editor_.graph();
  const Point centre = before.node("obj_6").box.centre();
  support::XDriver& driver = editor_.driver();
  driver.hold("Control_L");
  driver.moveTo(centre);
  driver.press();
  driver.moveTo({centre.x, centre.y + 60});
  editor_.settle();  // or the toolkit makes one motion of both
  driver.moveTo(centre);
  driver.release();
  driver.letGo("Control_L");
  editor_.settle();
  EXPECT_EQ(newOutput(), "In newArcCallback\n" + trace("add obj_6 obj_6"));
  EXPECT_EQ(editor_.graph().countArcs("obj_6", "obj_6"), 1);
  expectEdits("add obj_6 obj_6\n");
}

TEST_F(Gestures, ARepeatedTextureIsShownTwiceAndTheFileStillOpens) {
  edit(table());
  editor_.drawArc("mat_0", "tex_0");
  EXPECT_EQ(editor_.graph().countArcs("mat_0", "tex_0"), 2);
  editor_.saveAs(path("saved.quil"));
  EXPECT_THAT(quilscene({"check", path("saved.quil")}), testing::Not(HasSubstr("size")));
  EXPECT_TRUE(sameBytes(read_file(path("saved.quil")), edited(file_, "add mat_0 tex_0\n").bytes));
}

TEST_F(Gestures, EscapeGivesUpADrag) {
  edit(table());
  const GraphState graph = editor_.graph();
  support::XDriver& driver = editor_.driver();
  driver.hold("Control_L");
  driver.moveTo(graph.node("obj_0").box.centre());
  driver.press();
  driver.moveTo(graph.node("mat_1").box.centre());
  editor_.key("Escape");
  driver.release();
  driver.letGo("Control_L");
  EXPECT_EQ(newOutput(), "");
  expectEdits("");
}

TEST_F(Gestures, ANewNodeStandsForNoRecord) {
  edit(table());
  const GraphState before = editor_.graph();
  editor_.driver().doubleClick({before.view.x + 5, before.view.y + before.view.height - 5});
  EXPECT_EQ(newOutput(), "In newNodeCallback\n");
  const GraphState after = editor_.graph();
  EXPECT_EQ(after.nodes.size(), before.nodes.size() + 1);
  EXPECT_EQ(after.node("newNode").label, "New Node");
  EXPECT_TRUE(after.node("newNode").managed);

  editor_.drawArc("obj_0", "newNode");
  EXPECT_THAT(newOutput(), StartsWith("In newArcCallback\nparent = obj_0, child = newNode\n"));
  expectWarning("Can't add link!");
  editor_.drawArc("newNode", "obj_0");
  expectWarning("Can't add link!");
  expectEdits("");
}

TEST_F(Gestures, EveryNewNodeIsOneMore) {
  edit(table());
  const std::size_t nodes = editor_.graph().nodes.size();
  for (std::size_t made = 1; made <= 2; ++made) {
    const support::Box view = editor_.graph().view;
    editor_.driver().doubleClick({view.x + 5, view.y + view.height - 5});
    EXPECT_EQ(editor_.graph().nodes.size(), nodes + made);
  }
}

TEST_F(Gestures, ANodeThatStandsForNoRecordOpensNothing) {
  edit(table());
  const support::Box view = editor_.graph().view;
  editor_.driver().doubleClick({view.x + 5, view.y + view.height - 5});
  newOutput();
  const auto shells = [&] {
    int shown = 0;
    for (const support::WidgetInfo& w : editor_.widgets())
      if (w.viewable && w.class_name.find("Shell") != std::string::npos) ++shown;
    return shown;
  };
  const int before = shells();
  editor_.doubleClickNode("newNode");
  EXPECT_EQ(newOutput(), "In defaultActionCallback\nNew Node\n");
  EXPECT_EQ(shells(), before);
}

TEST_F(Gestures, TheChildEndOfAnArcMoves) {
  edit(table());
  editor_.moveChildEnd("shape_1", "mat_0", "mat_1");
  EXPECT_EQ(
      newOutput(),
      "In arcMovedCallback\nnew Parent shape_1\nnew Child mat_1\nold Parent shape_1\nold Child mat_0\n" +
          trace("move shape_1 mat_0 shape_1 mat_1"));
  expectEdits("move shape_1 mat_0 shape_1 mat_1\n");
}

TEST_F(Gestures, TheParentEndOfAnArcMovesAndDisplacesWhatItFinds) {
  edit(table());
  editor_.moveParentEnd("shape_0", "mat_0", "shape_2");  // which has mat_1
  EXPECT_THAT(newOutput(), EndsWith(trace("move shape_0 mat_0 shape_2 mat_0")));
  const GraphState graph = editor_.graph();
  EXPECT_EQ(graph.countArcs("shape_2", "mat_0"), 1);
  EXPECT_FALSE(graph.hasArc("shape_2", "mat_1"));
  EXPECT_TRUE(graph.hasNode("mat_1"));
  expectEdits("move shape_0 mat_0 shape_2 mat_0\n");
}

TEST_F(Gestures, ARefusedMoveChangesNothing) {
  edit(table());
  editor_.moveChildEnd("scene_0", "obj_4", "cam_0");  // another kind
  EXPECT_EQ(
      newOutput(),
      "In arcMovedCallback\nnew Parent scene_0\nnew Child cam_0\nold Parent scene_0\nold Child obj_4\n" +
          trace("move scene_0 obj_4 scene_0 cam_0", false));
  expectWarning("Can't change link!");
  expectEdits("");
}

TEST_F(Gestures, DeleteLinkWithNothingSelectedSaysSo) {
  edit(table());
  editor_.chooseMenu({"Edit", "Delete Link"});
  EXPECT_EQ(newOutput(), "Delete Link.\n");
  expectWarning("No link selected!");
  expectEdits("");
}

TEST_F(Gestures, DeleteLinkTakesTheSelectedArcAndLeavesTheNodes) {
  edit(table());
  editor_.selectArc("obj_5", "anim_0");
  editor_.chooseMenu({"Edit", "Delete Link"});
  const std::string printed = newOutput();
  EXPECT_THAT(printed, StartsWith("Delete Link.\n"));
  EXPECT_THAT(printed, HasSubstr("from obj_5\nto   anim_0\n"));
  EXPECT_TRUE(editor_.graph().hasNode("anim_0"));
  expectEdits("delete obj_5 anim_0\n");
}

TEST_F(Gestures, DeleteLinkWithTwoArcsSelectedTakesTheFirst) {
  edit(table());
  editor_.selectArc("obj_5", "anim_0");
  editor_.selectArc("shape_2", "mat_1", {"Shift_L"});
  EXPECT_TRUE(editor_.graph().arc("obj_5", "anim_0").selected);
  EXPECT_TRUE(editor_.graph().arc("shape_2", "mat_1").selected);
  editor_.chooseMenu({"Edit", "Delete Link"});
  expectEdits("delete obj_5 anim_0\n");
}

TEST_F(Gestures, TheDeleteKeyRunsDeleteLink) {
  edit(table());
  editor_.selectArc("obj_5", "anim_0");
  editor_.key("Delete");
  expectEdits("delete obj_5 anim_0\n");
}

TEST_F(Gestures, ALinkThatNoRuleDeletesStays) {
  edit(table());
  editor_.selectArc("scene_0", "light_0");
  editor_.chooseMenu({"Edit", "Delete Link"});
  expectWarning("Can't delete link!");
  expectEdits("");
}

TEST_F(Gestures, SkeletonsAreRewiredLikeObjects) {
  edit(data("skeleton"));
  editor_.moveChildEnd("ChainRoot_1", "joint_3", "joint_1");
  editor_.drawArc("scene_0", "ChainRoot_1");
  editor_.selectArc("joint_1", "obj_4");
  editor_.chooseMenu({"Edit", "Delete Link"});
  expectEdits(
      "move ChainRoot_1 joint_3 ChainRoot_1 joint_1\nadd scene_0 ChainRoot_1\ndelete joint_1 obj_4\n");
}

TEST_F(Gestures, ADoubleClickOnANodeIsItsDefaultAction) {
  editor_.open(data("robot"));
  newOutput();
  for (const std::string name : {"obj_1", "lod_13"}) {
    editor_.doubleClickNode(name);
    EXPECT_THAT(newOutput(),
                StartsWith("In defaultActionCallback\n" + editor_.graph().node(name).label + "\n"));
  }
}

TEST_F(Gestures, ReturnOnANodeIsItsDefaultActionAndArrowKeysWalk) {
  editor_.open(data("tiny_v1"));
  newOutput();
  editor_.driver().click(editor_.graph().node("scene_0").box.centre());
  editor_.key("Down");
  EXPECT_TRUE(editor_.graph().node("obj_0").selected);
  EXPECT_FALSE(editor_.graph().node("scene_0").selected);
  editor_.key("Return");
  EXPECT_THAT(newOutput(), StartsWith("In defaultActionCallback\nobj_0\n"));
}

TEST_F(Gestures, DraggingANodeMovesItOnTheCanvasAlone) {
  edit(table());
  const GraphState before = editor_.graph();
  const Point from = before.node("obj_6").box.centre();
  editor_.driver().drag(from, {from.x + 30, from.y + 40});
  const GraphState after = editor_.graph();
  EXPECT_EQ(after.node("obj_6").box.centre(), (Point{from.x + 30, from.y + 40}));
  EXPECT_EQ(after.node("obj_5").box.centre(), before.node("obj_5").box.centre());
  EXPECT_EQ(newOutput(), "");
  expectEdits("");
}

}  // namespace
