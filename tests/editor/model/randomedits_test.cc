/// @file
/// Random scripts of edits: what each may change, and that what they leave is a file that opens again.
#include <gmock/gmock.h>

#include "editor/model/linkreasons.h"
#include "editor/model/modifygraph.h"
#include "editor/model/nodenames.h"
#include "editor/model/recordnames.h"
#include "qilib/checksizes.h"
#include "qilib/names.h"
#include "qilib/opensave.h"
#include "qilib/references.h"
#include "qilib/sizes.h"
#include "tests/editor/model/linkedits.h"
#include "tests/support/editmaker.h"
#include "tests/support/files.h"
#include "tests/support/shared_scenes.h"
#include "tests/support/told.h"

namespace {

/// Runs random edits on the current scene and checks what each did to the arcs and sizes.
class RandomScript {
 public:
  explicit RandomScript(unsigned seed) : make_(seed) {}

  /// @returns how many edits were made.
  int run(int edits) {
    int made = 0;
    for (int i = 0; i < edits && !testing::Test::HasFailure(); ++i) made += one_edit();
    return made;
  }

  /// How often a child was accepted that the parent held already: then, alone, sizes run ahead of the
  /// contents.
  int repeats() const { return repeats_; }

 private:
  int one_edit() {
    const Snapshot before = snapshot();
    std::string printed;
    switch (make_.below(4)) {
      case 0:
        return add(before);
      case 1: {
        const auto [parent, child] = make_.one_in(5) ? make_.pair(*qis) : make_.drawn_pair(*qis);
        const bool drawn = before.arcs.contains(parent + " " + child);
        const int made = run_edit(printed, [&] { return quilDeleteLink(parent, child); });
        Arcs expected = before.arcs;
        if (made && drawn) expected.erase(expected.find(parent + " " + child));
        SCOPED_TRACE("delete " + parent + " " + child);
        if (drawn || !made) {
          EXPECT_EQ(arcs(), expected);
        }
        return checked(made, before);
      }
      case 2:
        return move(before);
      default: {
        const std::string node = make_.any_node(*qis);
        const int made = name_node(*qis, node, make_.text());
        EXPECT_EQ(arcs(), before.arcs) << "name " << node;
        return checked(made, before);
      }
    }
  }

  int add(const Snapshot& before) {
    const auto [parent, child] = make_.pair(*qis);
    SCOPED_TRACE("add " + parent + " " + child);
    const std::string arc = parent + " " + child;
    const std::string reason = why_not_linked(*qis, parent, child);
    std::string printed;
    const int made = run_edit(printed, [&, p = parent, c = child] { return quilAddLink(p, c); });
    EXPECT_EQ(made == 1, reason.empty()) << reason;
    Arcs expected = before.arcs;
    if (made && before.arcs.contains(arc)) {
      ++repeats_;
    } else if (made) {
      expected.insert(arc);
    }
    EXPECT_EQ(arcs(), expected);
    return checked(made, before);
  }

  int move(const Snapshot& before) {
    const auto [old_parent, old_child, new_parent, new_child] = make_.move(*qis);
    const bool moves_child = old_parent == new_parent;
    SCOPED_TRACE("move " + old_parent + " " + old_child + " " + new_parent + " " + new_child);
    const bool repeated = !moves_child && before.arcs.contains(new_parent + " " + new_child) &&
                          !isOnly1child(tagofnd(new_parent), tagofnd(new_child));
    const std::string reason = why_not_moved(*qis, old_parent, old_child, new_parent, new_child);
    std::string printed;
    const int made = run_edit(printed, [&, op = old_parent, oc = old_child, np = new_parent, nc = new_child] {
      return quilModifyLink(op, oc, np, nc);
    });
    EXPECT_EQ(made == 1, reason.empty()) << reason;
    const Arcs after = arcs();
    if (made) {
      EXPECT_TRUE(after.contains(new_parent + " " + new_child));
      if (repeated) ++repeats_;
    } else {
      EXPECT_EQ(after, before.arcs);
    }
    return checked(made, before);
  }

  /// A refused edit changes no size.
  static int checked(int made, const Snapshot& before) {
    if (!made) {
      EXPECT_EQ(size_words(*qis), before.sizes);
    }
    return made;
  }

  EditMaker make_;
  int repeats_ = 0;
};

std::vector<std::string> names(const Qis& scene) {
  std::vector<std::string> names;
  for (const auto& name : scene.name_list.records) names.push_back(qiGetName(name));
  return names;
}

std::vector<std::string> arcs_in_order(const Qis& scene) {
  const SceneGraph graph = scene_graph(scene);
  std::vector<std::string> arcs;
  for (const auto& [parent, child] : graph.arcs)
    arcs.push_back(graph.nodes[parent].name + " " + graph.nodes[child].name);
  return arcs;
}

class RandomEdits : public testing::TestWithParam<const char*> {
 protected:
  /// Saves the current scene in a mode and opens it again: nothing is said, nothing that it saves is lost.
  void expect_saves_and_opens(int mode) {
    SCOPED_TRACE(mode);
    const std::string path = directory_ / "edited.quil";
    Qis saved = *qis;
    qi::correct_sizes(saved, mode, ignore_message);
    EXPECT_EQ(mode == 1 ? qiSaveAsQb(saved, path) : qiSaveAsQb2(saved, path), 1);
    Qis reopened;
    Told told;
    EXPECT_EQ(qi::open_scene(path, reopened, told.sink()), 1);
    EXPECT_EQ(qi::correct_sizes(reopened, mode, told.sink()), 0);
    EXPECT_EQ(told.words(), "");
    // Mode 1 writes version-2 structures as they were read, unless their length changed.
    if (mode == 2 || qiQUILver(qis->header) == qi::kVersion1) {
      EXPECT_EQ(arcs_in_order(reopened), arcs_in_order(*qis));
    }
    EXPECT_EQ(names(reopened), names(*qis));
  }

  ScratchDirectory directory_;
};
INSTANTIATE_TEST_SUITE_P(Scenes, RandomEdits, testing::ValuesIn(kSharedScenes),
                         [](const auto& scene) { return std::string(scene.param); });

TEST_P(RandomEdits, LeaveAFileThatOpensAndHoldsThem) {
  int made = 0, with_sizes_in_step = 0;
  for (unsigned seed = 1; seed <= 25 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    qis = std::make_unique<Qis>();
    ASSERT_EQ(qiOpenQb(shared_scene(GetParam()).path, *qis), 1);
    RandomScript script(seed);
    made += script.run(60);
    if (script.repeats() == 0) {
      Qis copy = *qis;
      EXPECT_EQ(qiCheckSizes(copy, 2), 0) << "every edit but a repeated child keeps all sizes current";
      ++with_sizes_in_step;
    }
    expect_saves_and_opens(2);
    expect_saves_and_opens(1);
  }
  EXPECT_GT(made, 25) << "the scripts are worth something";
  EXPECT_GT(with_sizes_in_step, 0);
}

}  // namespace
