/// @file
/// Undo and Redo with real keys: records, picture and dialogs go back and forth together.
#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <set>

#include "tests/window/dialogfixture.h"

namespace {

using support::Editor;
using support::GraphState;
using support::Point;
using support::WidgetInfo;
using testing::EndsWith;

class Undo : public Dialogs {
 protected:
  void undo() { editor_.key("z", {"Control_L"}); }
  void redo() { editor_.key("z", {"Control_L", "Shift_L"}); }

  /// The item of the Edit menu, by its widget's name.
  WidgetInfo item(const std::string& name) {
    editor_.settle();
    return editor_.find([&](const WidgetInfo& w) { return w.isAt("EditPane/" + name) || w.name() == name; })
        .value();
  }

  /// Where the nodes lie, measured from the scene's, and the arcs, with the middle of each.
  struct Picture {
    std::map<std::string, std::pair<int, int>> nodes;
    std::multiset<std::tuple<std::string, std::string, int, int>> arcs;
    friend bool operator==(const Picture&, const Picture&) = default;
  };
  Picture picture() {
    const GraphState graph = editor_.graph();
    const Point origin = graph.node("scene_0").box.centre();
    Picture picture;
    for (const auto& node : graph.nodes) {
      const Point at = node.box.centre();
      picture.nodes[node.name] = {at.x - origin.x, at.y - origin.y};
    }
    for (const auto& arc : graph.arcs)
      picture.arcs.emplace(arc.parent, arc.child, arc.middle.x - origin.x, arc.middle.y - origin.y);
    return picture;
  }
  void dragNode(const std::string& node, int dx, int dy) {
    const Point from = editor_.graph().node(node).box.centre();
    editor_.driver().drag(from, {from.x + dx, from.y + dy});
    editor_.settle();
  }
  void makeNode() {
    const support::Box view = editor_.graph().view;
    // Far enough from the edges that the node needs no scrolling.
    editor_.driver().doubleClick({view.x + 80, view.y + view.height - 60});
    editor_.settle();
  }
  void deleteLink(const std::string& parent, const std::string& child) {
    editor_.selectArc(parent, child);
    editor_.key("Delete");
  }
  void expectFile(const std::string& commands) {
    EXPECT_TRUE(sameBytes(saved(), edited(file_, commands).bytes)) << commands;
  }
};

TEST_F(Undo, TakesALinkBackAndMakesItAgain) {
  edit(table());
  const Picture before = picture();
  editor_.drawArc("obj_0", "mat_1");
  const Picture after = picture();
  newOutput();
  undo();
  EXPECT_EQ(newOutput(), "Undo link obj_0 to mat_1\n");
  EXPECT_TRUE(picture() == before);
  expectFile("");
  newOutput();
  redo();
  EXPECT_EQ(newOutput(), "Redo link obj_0 to mat_1\n");
  EXPECT_TRUE(picture() == after);
  expectFile("add obj_0 mat_1\n");
  undo();
  editor_.key("y", {"Control_L"});
  EXPECT_EQ(editor_.graph().countArcs("obj_0", "mat_1"), 1);
}

TEST_F(Undo, TheMenuNamesTheStepAndIsGreyWithoutOneOrOutsideEditMode) {
  edit(table());
  EXPECT_EQ(item("Undo").label, "Undo");
  EXPECT_FALSE(item("Undo").sensitive);
  EXPECT_FALSE(item("Redo").sensitive);
  editor_.drawArc("obj_0", "mat_1");
  EXPECT_EQ(item("Undo").label, "Undo link obj_0 to mat_1");
  EXPECT_TRUE(item("Undo").sensitive);
  editor_.chooseMenu({"Edit", "Undo link obj_0 to mat_1"});
  EXPECT_FALSE(item("Undo").sensitive);
  EXPECT_EQ(item("Redo").label, "Redo link obj_0 to mat_1");
  EXPECT_TRUE(item("Redo").sensitive);
  editor_.toggleEditMode();
  EXPECT_FALSE(item("Redo").sensitive);
  newOutput();
  redo();
  EXPECT_EQ(newOutput(), "");
  editor_.toggleEditMode();
  editor_.chooseMenu({"Edit", "Redo link obj_0 to mat_1"});
  expectFile("add obj_0 mat_1\n");
}

TEST_F(Undo, EveryStepGoesBackAndForth) {
  edit(table());
  std::vector<Picture> pictures{picture()};
  const auto step = [&](auto&& made) {
    made();
    editor_.settle();
    pictures.push_back(picture());
  };
  step([&] { editor_.drawArc("obj_0", "mat_1"); });
  step([&] { dragNode("obj_6", 30, 40); });
  step([&] { editor_.moveParentEnd("shape_0", "mat_0", "shape_2"); });  // displaces mat_1
  step([&] { deleteLink("obj_5", "anim_0"); });
  step([&] { makeNode(); });
  step([&] { dragNode("newNode", 50, -20); });
  step([&] { editor_.drawArc("mat_0", "tex_0"); });  // a second time
  step([&] {
    openDialog("mat_0", "matDialog");
    enter("title.nodeName", "renamed");
    press("OK");
  });
  const std::string edits =
      "add obj_0 mat_1\nmove shape_0 mat_0 shape_2 mat_0\ndelete obj_5 anim_0\nadd mat_0 tex_0\n"
      "set mat_0 title.nodeName=renamed\n";
  for (int round = 0; round < 2; ++round) {
    SCOPED_TRACE(round);
    for (std::size_t i = pictures.size() - 1; i > 0; --i) {
      EXPECT_TRUE(picture() == pictures[i]) << i;
      undo();
    }
    EXPECT_TRUE(picture() == pictures.front());
    EXPECT_FALSE(item("Undo").sensitive);
    expectFile("");
    for (std::size_t i = 1; i < pictures.size(); ++i) {
      redo();
      EXPECT_TRUE(picture() == pictures[i]) << i;
    }
    EXPECT_FALSE(item("Redo").sensitive);
    expectFile(edits);
  }
}

TEST_F(Undo, ARefusedGestureIsNoStep) {
  edit(table());
  editor_.drawArc("scene_0", "cam_0");
  editor_.answer(Editor::kWarning, "OK");
  openDialog("mat_0", "matDialog");
  press("OK");  // nothing was entered
  EXPECT_FALSE(item("Undo").sensitive);
}

TEST_F(Undo, OpenStartsAnewAndNewKeepsTheSteps) {
  edit(table());
  editor_.drawArc("obj_0", "mat_1");
  dragNode("obj_6", 30, 40);
  editor_.chooseMenu({"File", "New"});
  editor_.answer(Editor::kQuestion, "OK");
  EXPECT_EQ(item("Undo").label, "Undo link obj_0 to mat_1") << "the moved node is gone";
  newOutput();
  undo();
  EXPECT_EQ(newOutput(), "Undo link obj_0 to mat_1\n");
  expectFile("");
  redo();
  editor_.open(file_);
  EXPECT_FALSE(item("Undo").sensitive);
  EXPECT_FALSE(item("Redo").sensitive);
}

TEST_F(Undo, TheMarkOfUnsavedWorkGoesWithTheLastStep) {
  edit(table());
  const auto title = [&] {
    editor_.settle();
    return editor_.await("the title", [](const WidgetInfo& w) { return w.isAt("QUILeditor2"); }).label;
  };
  dragNode("obj_6", 30, 40);
  EXPECT_EQ(title(), "table.quil - QUILeditor2");
  editor_.drawArc("obj_0", "mat_1");
  EXPECT_EQ(title(), "*table.quil - QUILeditor2");
  undo();
  EXPECT_EQ(title(), "table.quil - QUILeditor2");
}

TEST_F(Undo, TheViewMovesOnlyToAChangeOutOfSight) {
  edit(table());
  deleteLink("obj_5", "anim_0");
  const auto corner = [&] { return editor_.graph().node("scene_0").box.centre(); };
  const Point before = corner();
  undo();
  EXPECT_EQ(corner(), before);
  redo();
  EXPECT_EQ(corner(), before);
  const support::Box view = editor_.graph().view;
  for (int i = 0; i < 2; ++i) editor_.driver().wheel({view.x + 2, view.y + 2}, 8, {"Control_L"});  // zooms in
  editor_.settle();
  const auto in_sight = [&](const std::string& name) {
    const GraphState graph = editor_.graph();
    const Point at = graph.node(name).box.centre();
    return at.x >= graph.view.x && at.y >= graph.view.y && at.x < graph.view.x + graph.view.width &&
           at.y < graph.view.y + graph.view.height;
  };
  ASSERT_FALSE(in_sight("obj_5"));
  undo();
  EXPECT_TRUE(in_sight("obj_5"));
}

TEST_F(Undo, ADialogSaysThatItsRecordHasChangedAndOpensAfresh) {
  edit(table());
  const auto says = [&] { return notice("changed"); };
  const std::string changed = "obj_0 was changed after this was opened";
  editor_.drawArc("obj_0", "mat_1");
  openDialog("obj_0", "objDialog");
  EXPECT_EQ(says(), "");
  editor_.chooseMenu({"Edit", "Undo link obj_0 to mat_1"});
  EXPECT_EQ(says(), changed);
  editor_.chooseMenu({"Edit", "Redo link obj_0 to mat_1"});
  EXPECT_EQ(says(), "") << "the record is as it was when it was opened";
  enter("title.nodeName", "renamed");
  press("Apply");
  EXPECT_EQ(says(), "") << "it wrote that itself";
  editor_.chooseMenu({"Edit", "Undo obj_0"});
  EXPECT_EQ(says(), changed);
  EXPECT_EQ(shown("title.nodeName"), "renamed") << "a dialog is never refreshed";
  editor_.click(dialog_ + "/notices/changedNotice/button");
  awaitDialog("objDialog");
  EXPECT_EQ(says(), "");
  EXPECT_NE(shown("title.nodeName"), "renamed");
}

TEST_F(Undo, ASurplusArcComesAndGoesWithoutTheRecord) {
  edit(table());
  const std::vector<std::string> drawn = shownArcs();
  editor_.drawArc("mat_0", "tex_0");
  EXPECT_EQ(editor_.graph().countArcs("mat_0", "tex_0"), 2);
  deleteLink("mat_0", "tex_0");
  EXPECT_EQ(shownArcs(), drawn);
  EXPECT_EQ(arcsOf(file_), drawn);
  EXPECT_EQ(editor_.asks(Editor::kWarning), false);
  saved();
  EXPECT_EQ(arcsOf(path("saved.quil")), drawn) << "the record still refers to it";
  deleteLink("mat_0", "tex_0");
  expectFile("delete mat_0 tex_0\n");
  for (int i = 0; i < 3; ++i) undo();
  EXPECT_EQ(shownArcs(), drawn);
  expectFile("");
}

TEST_F(Undo, ASurplusArcThatMovesIsALinkOfItsOwn) {
  edit(table());
  editor_.drawArc("mat_0", "tex_0");
  editor_.moveParentEnd("mat_0", "tex_0", "mat_1");
  EXPECT_EQ(editor_.graph().countArcs("mat_0", "tex_0"), 1);
  EXPECT_EQ(editor_.graph().countArcs("mat_1", "tex_0"), 1);
  saved();
  EXPECT_EQ(shownArcs(), arcsOf(path("saved.quil")));
  undo();
  undo();
  expectFile("");
}

/// After any gestures, accepted or refused, and any undo and redo of them, the window shows the arcs that the
/// saved file has, but that an arc may be drawn more than once.
TEST_F(Undo, AfterAnyGesturesTheWindowShowsWhatTheFileHolds) {
  edit(table());
  std::mt19937 random(20);
  const auto below = [&](std::size_t n) { return random() % n; };
  const auto check = [&] {
    const std::vector<std::string> shown = shownArcs();
    saved();
    const std::vector<std::string> held = arcsOf(path("saved.quil"));
    EXPECT_TRUE(std::ranges::includes(shown, held));
    EXPECT_EQ(std::set(shown.begin(), shown.end()), std::set(held.begin(), held.end()));
  };
  for (int i = 0; i < 60 && !HasFailure(); ++i) {
    SCOPED_TRACE(i);
    const GraphState graph = editor_.graph();
    const auto node = [&] { return graph.nodes[below(graph.nodes.size())].name; };
    const auto& arc = graph.arcs[below(graph.arcs.size())];
    // Most likely to be accepted: another node of the same kind.
    const auto other = [&](const std::string& like) {
      for (int tries = 0; tries < 30; ++tries)
        if (const auto& found = node(); found != like && found.starts_with(like.substr(0, 3))) return found;
      return node();
    };
    switch (below(6)) {
      case 0: {
        const bool known = below(2) == 0;
        const std::string parent = known ? arc.parent : node(), child = known ? other(arc.child) : node();
        if (parent != child) editor_.drawArc(parent, child);
        break;
      }
      case 1:
        editor_.moveChildEnd(arc.parent, arc.child, other(arc.child));
        break;
      case 2:
        editor_.moveParentEnd(arc.parent, arc.child, other(arc.parent));
        break;
      case 3:
        deleteLink(arc.parent, arc.child);
        break;
      case 4:
        undo();
        break;
      default:
        redo();
    }
    if (editor_.asks(Editor::kWarning)) editor_.answer(Editor::kWarning, "OK");
    if (i % 10 == 9) check();
  }
  while (item("Undo").sensitive) undo();
  expectFile("");
  EXPECT_EQ(shownArcs(), arcsOf(file_));
}

}  // namespace
