/// @file
/// Edits of all sorts are recorded, taken back and made again: the scene is the same, byte for byte.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "dialogs/values/dispatch.h"
#include "dialogs/values/itemtext.h"
#include "editor/model/modifygraph.h"
#include "editor/model/recordnames.h"
#include "qilib/builders.h"
#include "qilib/change.h"
#include "qilib/checksizes.h"
#include "qilib/edit.h"
#include "qilib/opensave.h"
#include "samples/scenes.h"
#include "tests/support/builtscene.h"
#include "tests/support/editmaker.h"
#include "tests/support/files.h"
#include "tests/support/told.h"
#include "tests/support/written.h"

namespace {

/// Makes one random edit of any sort, whether or not it is accepted.
class Editing {
 public:
  Editing(Qis& scene, unsigned seed) : scene_(scene), make_(seed) {}

  void edit() {
    switch (make_.below(10)) {
      case 0:
      case 1: {
        const auto [parent, child] = make_.pair(scene_);
        return link(parent, child, [&](NodeId from, NodeId to) { add_link(scene_, from, to); });
      }
      case 2: {
        const auto [parent, child] = make_.one_in(5) ? make_.pair(scene_) : make_.drawn_pair(scene_);
        return link(parent, child,
                    [&](NodeId from, NodeId to) { delete_link(scene_, from, to, ignore_message); });
      }
      case 3:
      case 4:
        return move();
      case 5:
        name_node(scene_, make_.any_node(scene_), make_.text());
        return;
      case 6:
        return build();
      default:
        return apply_dialog();
    }
  }

 private:
  static void link(const std::string& parent, const std::string& child,
                   const std::function<void(NodeId, NodeId)>& change) {
    const auto from = find_node_id(parent), to = find_node_id(child);
    if (from && to) change(*from, *to);
  }

  void move() {
    const auto ends = make_.move(scene_);
    link(ends.old_parent, ends.old_child, [&](NodeId old_from, NodeId old_to) {
      link(ends.new_parent, ends.new_child,
           [&](NodeId from, NodeId to) { move_link(scene_, old_from, old_to, from, to, ignore_message); });
    });
  }

  void build() {
    const auto some = [&] { return static_cast<std::int64_t>(make_.below(4)); };
    const auto number = [&](Word tag) {
      return static_cast<Word>(make_.below(qi::record_count(scene_, tag) + 1));
    };
    const Word envelope = number(qi::kEnvelopeTag), cluster = number(qi::kClusterTag);
    const Word part = static_cast<Word>(some());
    const std::function<void()> builders[] = {
        [&] { qiAddChainRoot(scene_); },
        [&] { qiAddJoint(scene_); },
        [&] { qiAddEffector(scene_); },
        [&] { qiAddWeightGroup(scene_, some()); },
        [&] { qiAddEnvelope(scene_, some(), some(), some(), some(), number(qi::kShapeTag)); },
        [&] { qiAddFullWeightedPart(scene_, envelope); },
        [&] { qiAddWeightedPart(scene_, envelope); },
        [&] { qiAddMorphPart(scene_, envelope); },
        [&] { qiAddEnvelopeTri(scene_, envelope); },
        [&] { qiAddClusterShape(scene_, some(), some(), number(qi::kShapeTag)); },
        [&] { qiAddCluster(scene_, cluster); },
        [&] { qiAddClusterTri(scene_, cluster); },
        [&] { qiAddShape_Envelope(scene_, number(qi::kShapeTag), envelope); },
        [&] { qiAddShape_ClusterShape(scene_, number(qi::kShapeTag), cluster); },
        [&] { qiAddFullWeightedPart_Obj(scene_, envelope, part, number(qi::kObjTag)); },
        [&] { qiAddWeightedPart_Obj(scene_, envelope, part, number(qi::kObjTag), 12.5F); },
        [&] { qiAddMorphPart_Node(scene_, envelope, part, qi::kObjTag, 0, qi::kJointTag, 0); },
    };
    builders[make_.below(std::size(builders))]();
  }

  void apply_dialog() {
    const auto on = values::dialog_of_node(make_.any_node(scene_));
    if (!on || !on->dialog->has_record(scene_, on->number)) return;
    const auto top = on->dialog->open(scene_, on->number);
    std::vector<std::string> paths;
    values::for_each_shown(*top, [&](const std::string& path, const items::Item&) { paths.push_back(path); });
    for (std::size_t i = make_.below(5); i > 0 && !paths.empty(); --i)
      edit_item(*top->find(paths[make_.below(paths.size())]));
    values::applyChanges(scene_, on->dialog->name(), *top, on->number);
  }

  void edit_item(items::Item& item) {
    static const char* const kTexts[] = {"", "0", "7", "ff", "-1", "1.5", "1e9", "junk", "a_longer_name"};
    items::Value value = item.value();
    value.on = !value.on;
    value.option = static_cast<int>(make_.below(5));
    value.text = kTexts[make_.below(std::size(kTexts))];
    if (item.kind() != items::ItemKind::label) item.edit(value);
  }

  Qis& scene_;
  EditMaker make_;
};

std::unique_ptr<Qis> made_scene(unsigned seed) {
  const Word count = 1 + seed % 7;
  switch (seed % 8) {
    case 0:
      return std::make_unique<Qis>(samples::table());
    case 1:
      return std::make_unique<Qis>(samples::harbour());
    case 2:
    case 3:
      return std::make_unique<Qis>(samples::dog());
    case 4:
      return std::make_unique<Qis>(samples::arm());
    case 5:
      return std::make_unique<Qis>(samples::city(count * 10, 0));
    case 6:
      return built_version1_scene(count);
    default:
      return built_scene(count);
  }
}

/// A scene of any sort, as it was read from a file.
class UndoneEdits : public testing::Test {
 protected:
  void open(unsigned seed) {
    auto made = made_scene(seed);
    Editing editing(*made, seed);
    for (unsigned i = 0; i < seed % 32; ++i) editing.edit();
    const std::string file = directory_ / "scene.quil";
    qi::correct_sizes(*made, 2, ignore_message);
    write_file(file, written(*made, 2));
    scene_ = std::make_unique<Qis>();
    ASSERT_EQ(qiOpenQb(file, *scene_), 1);
  }
  std::vector<std::string> both_modes() const { return {written(*scene_, 1), written(*scene_, 2)}; }

  /// Makes so many edits, takes them back and makes them again.
  void check(unsigned seed, int edits) {
    open(seed);
    const auto opened = both_modes();
    Editing editing(*scene_, 1000 + seed);
    std::vector<qi::Change> changes;
    std::vector<std::string> after;
    for (int i = 0; i < edits; ++i) {
      qi::Recording recording(*scene_);
      editing.edit();
      changes.push_back(recording.finish());
      after.push_back(written(*scene_, 2));
      made_ += changes.back().empty() ? 0 : 1;
    }
    const auto edited = both_modes();
    for (std::size_t i = changes.size(); i > 0; --i) {
      ASSERT_TRUE(written(*scene_, 2) == after[i - 1]) << "edit " << i;
      changes[i - 1].undo(*scene_);
    }
    EXPECT_TRUE(both_modes() == opened);
    for (std::size_t i = 0; i < changes.size(); ++i) {
      changes[i].redo(*scene_);
      ASSERT_TRUE(written(*scene_, 2) == after[i]) << "edit " << i + 1;
    }
    EXPECT_TRUE(both_modes() == edited);
  }

  ScratchDirectory directory_;
  std::unique_ptr<Qis> scene_;
  int made_ = 0;  ///< edits that changed something
};

TEST_F(UndoneEdits, LeaveTheSceneThatWasOpenedAndComeBack) {
  constexpr unsigned kScenes = 200;
  constexpr int kEdits = 50;
  testing::internal::CaptureStdout();
  for (unsigned seed = 1; seed <= kScenes && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    check(seed, kEdits);
  }
  testing::internal::GetCapturedStdout();
  EXPECT_GT(made_, static_cast<int>(kScenes) * kEdits / 4) << "the edits are worth something";
}

}  // namespace
