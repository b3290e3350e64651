/// @file
/// The editor with a scene that is a large tree.
#pragma once

#include <map>

#include "qilib/forwards.h"
#include "qilib/opensave.h"
#include "tests/support/builtscene.h"
#include "tests/window/editorfixture.h"

class TreeTest : public EditorTest {
 protected:
  using EditorTest::EditorTest;

  /// Opens a scene of so many nodes in Edit Mode: objects, each with four below it.
  void openTree(Word nodes) {
    const Word objects = nodes - 1;
    const auto scene = built_version1_scene(objects);
    ASSERT_TRUE(qiAddScene_Obj(*scene, 0));
    for (Word i = 1; i < objects; ++i) ASSERT_TRUE(qiAddObj_Obj(*scene, (i - 1) / 4, i));
    ASSERT_EQ(qiSaveAsQb2(*scene, path("tree.quil")), 1);
    editor_.open(path("tree.quil"));
    editor_.toggleEditMode();
  }

  /// Places in a view that was scrolled by parts of pixels are the same within one.
  using Places = std::map<std::string, std::pair<int, int>>;
  static void expectSame(const Places& found, const Places& expected) {
    ASSERT_EQ(found.size(), expected.size());
    for (const auto& [name, place] : found) {
      EXPECT_NEAR(place.first, expected.at(name).first, 1) << name;
      EXPECT_NEAR(place.second, expected.at(name).second, 1) << name;
    }
  }
};
