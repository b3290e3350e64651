/// @file
/// What the window says and shows while an arc is drawn or moved, before the button is let go.
#include "tests/window/editorfixture.h"
#include "tests/window/screen.h"

namespace {

using support::Point;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Guidance : public EditorTest {
 protected:
  Guidance() {
    editor_.open(table());
    editor_.toggleEditMode();
  }
  std::string status() {
    editor_.settle();
    return editor_.await("status").label;
  }
  Point at(std::string_view node) { return editor_.graph().node(node).box.centre(); }
  /// Takes hold of something and drags it to a node, without letting it go.
  void dragTo(Point from, std::string_view node) {
    const Point to = at(node);
    editor_.driver().moveTo(from);
    editor_.driver().press();
    editor_.driver().moveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
    editor_.driver().moveTo(to);
  }
  void letGo() {
    editor_.driver().release();
    editor_.driver().letGo("Control_L");
    editor_.settle();
  }
  unsigned colorAt(Point place) {
    editor_.settle();
    const Picture screen = pictureOf(server_.display());
    return shownColor(server_.display(),
                      screen.pixels[static_cast<std::size_t>(place.y * screen.width + place.x)]);
  }
  /// The colour just outside the left edge of a node.
  unsigned edgeOf(std::string_view node) {
    const support::Box box = editor_.graph().node(node).box;
    return colorAt({box.x - 1, box.y + box.height / 2});
  }
};

constexpr unsigned kAllowed = 0x29a642, kRefused = 0xd6392b;

TEST_F(Guidance, AnArcThatIsDrawnSaysWhatItWouldBe) {
  editor_.driver().hold("Control_L");
  dragTo(at("obj_0"), "mat_1");
  EXPECT_THAT(status(), StartsWith("link obj_0 to mat_1"));
  EXPECT_EQ(edgeOf("mat_1"), kAllowed);
  EXPECT_EQ(edgeOf("mat_0"), kAllowed) << "lights up, too";
  editor_.driver().moveTo(at("shape_2"));
  EXPECT_THAT(status(), StartsWith("obj_0 has shape_1 already: move that arc's end instead"));
  EXPECT_EQ(edgeOf("shape_2"), kRefused);
  EXPECT_NE(edgeOf("shape_0"), kAllowed);
  editor_.driver().moveTo(at("tex_0"));
  EXPECT_THAT(status(), StartsWith("an object does not refer to textures"));
  const Point free = at("tex_0");
  editor_.driver().moveTo({free.x, free.y + 60});
  EXPECT_THAT(status(), StartsWith("Ctrl+drag")) << "nothing is there";
  letGo();
  EXPECT_THAT(edgeOf("mat_0"), Not(kAllowed)) << "nothing is lit any more";
}

TEST_F(Guidance, AskingChangesNothing) {
  const auto before = shownArcs();
  editor_.driver().hold("Control_L");
  dragTo(at("obj_0"), "mat_1");
  editor_.driver().key("Escape");
  letGo();
  EXPECT_EQ(shownArcs(), before);
  EXPECT_THAT(editor_.output(), Not(HasSubstr("In newArcCallback")));
  editor_.saveAs(path("same.quil"));
  EXPECT_TRUE(sameBytes(read_file(path("same.quil")), read_file(table())));
}

TEST_F(Guidance, AnEndThatIsMovedSaysWhyNot) {
  editor_.selectArc("obj_5", "anim_0");
  const Point handle = editor_.graph().arc("obj_5", "anim_0").child_handle;
  dragTo(handle, "mat_0");
  EXPECT_THAT(status(), StartsWith("this end can only move to another node of its kind"));
  EXPECT_EQ(edgeOf("mat_0"), kRefused);
  letGo();
  EXPECT_EQ(editor_.message(kWarning), "Can't change link!");
  editor_.answer(kWarning, "OK");
  EXPECT_THAT(status(), StartsWith("this end can only move to another node of its kind"));
  EXPECT_THAT(editor_.errors(), HasSubstr("this end can only move to another node of its kind\n"));

  editor_.selectArc("shape_1", "mat_0");
  dragTo(editor_.graph().arc("shape_1", "mat_0").child_handle, "mat_1");
  EXPECT_THAT(status(), StartsWith("move link: shape_1 to mat_1"));
  letGo();
  EXPECT_TRUE(editor_.graph().hasArc("shape_1", "mat_1"));
}

TEST_F(Guidance, ARefusalIsToldWithItsReason) {
  editor_.drawArc("mat_0", "obj_0");
  EXPECT_EQ(editor_.message(kWarning), "Can't add link!");
  editor_.answer(kWarning, "OK");
  EXPECT_THAT(status(), StartsWith("a material does not refer to objects"));
  EXPECT_THAT(editor_.errors(), HasSubstr("a material does not refer to objects\n"));
}

}  // namespace
