/// @file
/// What is dragged to the edge of the canvas scrolls it.
#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/support/wait.h"
#include "tests/window/editorfixture.h"

namespace {

using support::Box;
using support::Point;

/// A window that shows a part of the scene only.
class EdgeScroll : public EditorTest {
 protected:
  EdgeScroll() : EditorTest(24, {}, 800, 600) {
    Qis scene = samples::harbour();
    EXPECT_EQ(qiSaveAsQb2(scene, path("harbour.quil")), 1);
    editor_.open(path("harbour.quil"));
    editor_.toggleEditMode();
  }
  Box box(std::string_view node) { return editor_.graph().node(node).box; }
  Point at(std::string_view node) { return box(node).centre(); }
  Point rightEdge() {
    const Box view = editor_.graph().view;
    return {view.x + view.width - 3, view.y + view.height / 2};
  }
  Point middle() { return editor_.graph().view.centre(); }
  /// Takes hold of a place and drags it to another, without letting it go.
  void take(Point from, Point to) {
    editor_.driver().moveTo(from);
    editor_.driver().press();
    editor_.driver().moveTo(middle());
    editor_.driver().moveTo(to);
  }
  /// Waits until the view has gone at least so far to the right.
  void awaitScroll(int pixels, int before) {
    EXPECT_TRUE(support::waitFor([&] { return box("env_0").x <= before - pixels; }));
  }
};

TEST_F(EdgeScroll, WhileAnArcIsDrawnAndNotAfterwards) {
  const int before = box("env_0").x;
  editor_.driver().hold("Control_L");
  take(at("scene_0"), rightEdge());
  awaitScroll(150, before);
  editor_.driver().moveTo(middle());
  editor_.settle();
  const int there = box("env_0").x;
  editor_.settle();
  EXPECT_EQ(box("env_0").x, there) << "the pointer has left the edge";
  const Box view = editor_.graph().view;
  editor_.driver().moveTo({view.x + 3, view.y + view.height / 2});
  EXPECT_TRUE(support::waitFor([&] { return box("env_0").x >= there + 100; })) << "back again";
  editor_.driver().release();
  editor_.driver().letGo("Control_L");
  editor_.settle();
  const int end = box("env_0").x;
  editor_.settle();
  EXPECT_EQ(box("env_0").x, end) << "the button is released";
  EXPECT_FALSE(editor_.asks(kWarning));
}

TEST_F(EdgeScroll, UntilTheNodeIsInSightThatTheArcIsToEndAt) {
  ASSERT_GT(box("obj_1").x, rightEdge().x);
  editor_.driver().hold("Control_L");
  take(at("scene_0"), rightEdge());
  ASSERT_TRUE(support::waitFor([&] { return at("obj_1").x < rightEdge().x - 60; }));
  editor_.driver().moveTo({middle().x, at("obj_1").y});
  editor_.settle();
  editor_.driver().moveTo(at("obj_1"));
  editor_.driver().release();
  editor_.driver().letGo("Control_L");
  editor_.settle();
  EXPECT_TRUE(editor_.graph().hasArc("scene_0", "obj_1"));
}

TEST_F(EdgeScroll, WhileNodesAreMoved) {
  const int before = box("env_0").x;
  take(at("scene_0"), rightEdge());
  awaitScroll(150, before);
  EXPECT_NEAR(at("scene_0").x, rightEdge().x, 60) << "stays under the pointer";
  editor_.driver().moveTo(middle());
  editor_.driver().release();
  editor_.settle();
  EXPECT_GT(box("scene_0").x - box("env_0").x, 150);
}

TEST_F(EdgeScroll, NotWhileTheBackgroundIsDragged) {
  const Box view = editor_.graph().view;
  const int before = box("env_0").x;
  take({view.x + view.width / 2, view.y + view.height - 40}, rightEdge());
  editor_.settle();
  const int panned = box("env_0").x;
  EXPECT_GT(panned, before);
  editor_.settle();
  EXPECT_EQ(box("env_0").x, panned);
  editor_.driver().release();
}

}  // namespace
