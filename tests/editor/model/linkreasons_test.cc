/// @file
/// What the user hears of a refused arc.
#include "editor/model/linkreasons.h"

#include <gtest/gtest.h>

#include "tests/editor/model/linkedits.h"

namespace {

class LinkReasons : public testing::Test {
 protected:
  LinkReasons() { qis = built_version1_scene(); }
  /// The reason of a link, which then is refused.
  static std::string refused(const std::string& parent, const std::string& child) {
    std::string printed;
    const std::string reason = why_not_linked(*qis, parent, child);
    EXPECT_EQ(run_edit(printed, [&] { return quilAddLink(parent, child); }), 0) << parent << " " << child;
    return reason;
  }
  static void link(const std::string& parent, const std::string& child) {
    std::string printed;
    EXPECT_EQ(why_not_linked(*qis, parent, child), "");
    EXPECT_EQ(run_edit(printed, [&] { return quilAddLink(parent, child); }), 1) << parent << " " << child;
  }
};

TEST_F(LinkReasons, NodesWithoutARecord) {
  EXPECT_EQ(refused("newNode", "obj_0"), "newNode stands for no record");
  EXPECT_EQ(refused("obj_0", "obj_999"), "obj_999 stands for no record");
}

TEST_F(LinkReasons, KindsThatNoArcJoins) {
  EXPECT_EQ(refused("mat_0", "obj_0"), "a material does not refer to objects");
  EXPECT_EQ(refused("scene_0", "light_0"), "which lights a scene has can't be changed so");
}

TEST_F(LinkReasons, APlaceThatIsTaken) {
  link("obj_0", "mat_0");
  EXPECT_EQ(refused("obj_0", "mat_1"), "obj_0 has mat_0 already: move that arc's end instead");
}

TEST_F(LinkReasons, LoopsOfTwo) {
  link("obj_0", "obj_1");
  EXPECT_EQ(refused("obj_1", "obj_0"), "obj_0 has obj_1: they can't hold each other");
}

TEST_F(LinkReasons, AFullArray) {
  for (const char* tex : {"tex_0", "tex_1", "tex_2"}) link("mat_0", tex);
  EXPECT_EQ(refused("mat_0", "tex_3"), "a material holds at most 3 textures");
}

TEST_F(LinkReasons, AnEndThatCannotBeOfAnotherKind) {
  link("obj_0", "mat_0");
  EXPECT_EQ(why_not_moved(*qis, "obj_0", "mat_0", "obj_0", "shape_0"),
            "this end can only move to another node of its kind");
  EXPECT_EQ(why_not_moved(*qis, "obj_0", "mat_0", "obj_0", "mat_1"), "");
}

}  // namespace
