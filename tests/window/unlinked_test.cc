/// @file
/// Records without arcs, and the graph built anew.
#include <algorithm>

#include "qilib/opensave.h"
#include "tests/support/builtscene.h"
#include "tests/window/editorfixture.h"

namespace {

using support::Editor;
using support::GraphState;
using support::WidgetInfo;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class Unlinked : public EditorTest {
 protected:
  /// The table, whose texture was unlinked by mistake.
  std::string withoutTexture() {
    write_file(path("mistake.quil"), edited(table(), "delete mat_0 tex_0\n").bytes);
    return path("mistake.quil");
  }
  void toggle() {
    editor_.chooseMenu({"View", "Unlinked Records"});
    editor_.settle();
  }
  void expectSamePlaces(const GraphState& before) {
    const GraphState now = editor_.graph();
    const GraphState::Node &first = before.nodes.front(), &there = now.node(first.name);
    for (const auto& node : before.nodes) {
      EXPECT_EQ(now.node(node.name).box.x - there.box.x, node.box.x - first.box.x) << node.name;
      EXPECT_EQ(now.node(node.name).box.y - there.box.y, node.box.y - first.box.y) << node.name;
    }
  }
  void undo() {
    editor_.key("z", {"Control_L"});
    editor_.settle();
  }
  void redo() {
    editor_.key("y", {"Control_L"});
    editor_.settle();
  }
};

TEST_F(Unlinked, ATextureThatWasUnlinkedByMistakeIsLinkedAgain) {
  const std::string mistake = withoutTexture();
  editor_.open(mistake);
  ASSERT_FALSE(editor_.graph().hasNode("tex_0"));
  const GraphState before = editor_.graph();
  toggle();
  ASSERT_TRUE(editor_.graph().hasNode("tex_0"));
  expectSamePlaces(before);
  EXPECT_FALSE(editor_.find([](const WidgetInfo& w) { return w.label.starts_with("Undo"); })->sensitive);
  editor_.toggleEditMode();
  EXPECT_EQ(editor_.find([](const WidgetInfo& w) { return w.label.starts_with("Undo"); })->label, "Undo");

  editor_.doubleClickNode("tex_0");
  editor_.click("texDialog/buttons/Cancel");
  editor_.drawArc("mat_0", "tex_0");
  EXPECT_TRUE(editor_.graph().hasArc("mat_0", "tex_0"));
  editor_.saveAs(path("mended.quil"));
  EXPECT_TRUE(sameBytes(read_file(path("mended.quil")), read_file(table())));
}

TEST_F(Unlinked, AreShownAndLeftOut) {
  editor_.open(withoutTexture());
  const GraphState before = editor_.graph();
  toggle();
  for (const auto& node : editor_.graph().nodes) {
    if (before.hasNode(node.name)) continue;
    for (const auto& other : before.nodes)
      EXPECT_GE(node.box.y, other.box.y + other.box.height) << "in a block of their own";
  }
  toggle();
  EXPECT_FALSE(editor_.graph().hasNode("tex_0"));
  EXPECT_EQ(editor_.graph().nodes.size(), before.nodes.size());
  expectSamePlaces(before);
  EXPECT_EQ(editor_.quit(), 0);
}

TEST_F(Unlinked, StepsKnowThoseThatAreLeftOut) {
  editor_.open(withoutTexture());
  const auto bare = shownArcs();
  toggle();
  editor_.toggleEditMode();
  editor_.drawArc("mat_0", "tex_0");
  undo();
  toggle();
  EXPECT_FALSE(editor_.graph().hasNode("tex_0"));
  redo();
  EXPECT_TRUE(editor_.graph().hasArc("mat_0", "tex_0")) << "it comes back with its link";
  EXPECT_TRUE(editor_.graph().node("tex_0").managed);
  undo();
  EXPECT_EQ(shownArcs(), bare);
  toggle();
  toggle();
  redo();
  const auto graph = editor_.graph();
  EXPECT_EQ(std::ranges::count(graph.nodes, "tex_0", &GraphState::Node::name), 1);
}

TEST_F(Unlinked, ANodeThatWasMovedAndLeftOutCanBeMovedBack) {
  editor_.open(withoutTexture());
  toggle();
  editor_.toggleEditMode();
  editor_.click("strip/zoomFit");
  const auto from = editor_.graph().node("tex_0").box.centre();
  editor_.driver().drag(from, {from.x + 150, from.y - 40});
  editor_.settle();
  toggle();
  undo();
  redo();
  toggle();
  undo();
  EXPECT_TRUE(editor_.graph().hasNode("tex_0"));
}

TEST_F(Unlinked, TheNextRunShowsThemToo) {
  const std::string mistake = withoutTexture();
  toggle();
  editor_.open(mistake);
  EXPECT_TRUE(editor_.graph().hasNode("tex_0"));
  EXPECT_EQ(editor_.quit(), 0);
  Editor next(server_, start());
  next.open(mistake);
  EXPECT_TRUE(next.graph().hasNode("tex_0"));
  EXPECT_EQ(next.quit(), 0);
}

TEST_F(Unlinked, ComeBesideWhereOnlySomeNodesAreShown) {
  editor_.open(withoutTexture());
  editor_.toggleEditMode();
  toggle();
  editor_.drawArc("mat_0", "tex_0");
  undo();
  toggle();
  editor_.driver().click(editor_.graph().node("obj_7").box.centre());
  editor_.key("s");
  editor_.settle();
  redo();
  EXPECT_FALSE(editor_.graph().node("tex_0").hidden);
  EXPECT_TRUE(editor_.graph().hasArc("mat_0", "tex_0"));
  undo();
  toggle();
  toggle();
  EXPECT_FALSE(editor_.graph().hasNode("tex_0"));
  editor_.key("a");
  editor_.settle();
  EXPECT_FALSE(editor_.graph().node("mat_0").hidden);
}

TEST_F(Unlinked, MayBeMany) {
  constexpr Word kMany = 2000;  // of each kind
  const auto scene = built_version1_scene(kMany);
  ASSERT_EQ(qiSaveAsQb2(*scene, path("many.quil")), 1);
  editor_.open(path("many.quil"));
  EXPECT_EQ(editor_.graph().nodes.size(), 1u);
  toggle();
  EXPECT_GT(editor_.graph().nodes.size(), kMany);
  toggle();
  EXPECT_EQ(editor_.graph().nodes.size(), 1u);
}

class Rebuild : public Unlinked {
 protected:
  void rebuild() {
    editor_.chooseMenu({"View", "Rebuild Graph"});
    editor_.settle();
  }
};

TEST_F(Rebuild, AfterNewTheSceneInMemoryIsShown) {
  const std::string file = table();
  editor_.open(file);
  editor_.chooseMenu({"File", "New"});
  editor_.answer(kQuestion, "OK");
  EXPECT_THAT(editor_.graph().nodes, IsEmpty());
  rebuild();
  EXPECT_EQ(shownArcs(), arcsOf(file));
}

TEST_F(Rebuild, WithoutASceneNothingIsShown) {
  rebuild();
  EXPECT_THAT(editor_.graph().nodes, IsEmpty());
}

TEST_F(Rebuild, KeepsPlacesAndWhatIsSeen) {
  editor_.open(table());
  const auto from = editor_.graph().node("obj_7").box.centre();
  editor_.driver().drag(from, {from.x + 40, from.y + 90});
  editor_.click("strip/zoomIn");
  const GraphState before = editor_.graph();
  rebuild();
  const GraphState after = editor_.graph();
  EXPECT_EQ(after.zoom, before.zoom);
  EXPECT_EQ(after.node("scene_0").box.x, before.node("scene_0").box.x);
  EXPECT_EQ(after.node("scene_0").box.y, before.node("scene_0").box.y);
  expectSamePlaces(before);
  EXPECT_EQ(shownArcs(), arcsOf(table()));
  EXPECT_TRUE(after.node("obj_7").selected);
}

TEST_F(Rebuild, WhatWasDoneBeforeCanBeTakenBack) {
  const std::string file = table();
  editor_.open(file);
  editor_.toggleEditMode();
  editor_.drawArc("obj_7", "mat_0");
  const auto linked = shownArcs();
  rebuild();
  EXPECT_EQ(shownArcs(), linked);
  undo();
  EXPECT_EQ(shownArcs(), arcsOf(file));
  redo();
  EXPECT_EQ(shownArcs(), linked);
}

}  // namespace
