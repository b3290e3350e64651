/// @file
/// The table of kinds, row by row: from a node's name to its record and dialog, and from the dialog's name
/// back.
#include <gmock/gmock.h>

// Its X headers come after the test framework.
#include <filesystem>

#include "dialogs/propertydialogs.h"
#include "editor/graphwindow.h"
#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "editor/model/recordnames.h"
#include "qilib/opensave.h"
#include "tests/support/case_name.h"
#include "tests/support/places.h"
#include "tests/support/scratch_home.h"
#include "tests/viewkit/display_test.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

struct KindCase {
  const char* name;  ///< what the dialogs' class begins with
  const char* scene;
  const char* node;
  Word tag;
  const char* dialog;
  const char* trace;
};

constexpr KindCase kCases[] = {
    {"Scene", "robot", "scene_0", 0x10000, "sceneDialog", "Scene is changed.\n"},
    {"Shape", "robot", "shape_1", 0x30100, "shapeDialog", "Shape is changed.\n"},
    {"Tex", "robot", "tex_0", 0xb0100, "texDialog", "Tex is changed.\n"},
    {"Obj", "robot", "obj_2", 0x20100, "objDialog", "Obj is changed.\n"},
    {"Mat", "robot", "mat_0", 0xa0100, "matDialog", "Mat is changed.\n"},
    {"Cam", "robot", "cam_0", 0xe0100, "camDialog", "Cam is changed.\n"},
    {"Env", "robot", "env_0", 0x100100, "envDialog", "Env is changed.\n"},
    {"Light", "robot", "light_0", 0xf0100, "lightDialog", "Light is changed.\n"},
    {"Part", "robot", "part_0", 0x90100, "partDialog", "Part is changed.\n"},
    {"Anim", "robot", "anim_0", 0xc0100, "animDialog", "Anim is changed.\n"},
    {"Lod", "robot", "lod_13", 0, "lodDialog", "LOD is changed.\n"},
    {"Chainroot", "skeleton", "ChainRoot_0", 0x240100, "chrootDialog", "Chainroot is changed.\n"},
    {"Joint", "skeleton", "joint_1", 0x250100, "jointDialog", "Joint is changed.\n"},
    {"Effector", "skeleton", "effector_0", 0x260100, "effectorDialog", "Effector is changed.\n"},
};

TEST(KindCases, AreAllKinds) { EXPECT_EQ(std::size(kCases), kNodeKinds.size()); }

class EveryKind : public DisplayTest, public testing::WithParamInterface<KindCase> {
 protected:
  EveryKind() {
    std::filesystem::copy_file(support::project_file("samples/quilcnvops.template"), home_.options_file());
    window_ = std::make_unique<GraphWindow>("QUILeditor2");
    qis = std::make_unique<Qis>();
    EXPECT_EQ(qiOpenQb(support::data_file(std::string(GetParam().scene) + ".quil"), *qis), 1);
  }

  const ScratchHome home_;
  std::unique_ptr<GraphWindow> window_;
};
INSTANTIATE_TEST_SUITE_P(Rows, EveryKind, testing::ValuesIn(kCases), CaseName());

TEST_P(EveryKind, IsKnownByTheNameOfItsNodes) {
  const auto node = find_node(GetParam().node);
  ASSERT_TRUE(node);
  EXPECT_EQ(node->kind->tag, GetParam().tag);
  EXPECT_EQ(tagofnd(GetParam().node), GetParam().tag);
  EXPECT_EQ(kind_of_tag(GetParam().tag), GetParam().tag == 0 ? nullptr : node->kind);
  EXPECT_EQ(node_name(*node->kind, node->number), GetParam().node);
  EXPECT_NE(node->kind->name_index(*qis, node->number), nullptr);
  EXPECT_EQ(node->kind->name_index(*qis, 100000), nullptr);
}

TEST_P(EveryKind, IsShownInTheGraph) {
  window_->struct_graph(&window_->graph());
  const VkNode* const node = window_->graph().find(GetParam().node);
  ASSERT_NE(node, nullptr);
  EXPECT_STREQ(node->label(), GetParam().tag == 0 ? "LOD" : GetParam().node);
  EXPECT_TRUE(std::string_view(GetParam().node).starts_with(std::string(node->tintName()) + "_"));
}

/// The dialog's own name says which record to write to.
TEST_P(EveryKind, IsWrittenBackFromTheDialogOfItsNodes) {
  const auto on = values::dialog_of_node(GetParam().node);
  ASSERT_TRUE(on);
  const auto dialog = makePropertyDialog(*on);
  ASSERT_NE(dialog, nullptr);
  EXPECT_STREQ(dialog->name(), GetParam().dialog);
  EXPECT_EQ(dialog->className(), GetParam().name + std::string("Dialog"));
  EXPECT_EQ(dialog->index(), on->number);

  dialog->show();
  VkPrefItem* item = dialog->item();
  const bool named = GetParam().tag != 0;
  for (const char* name :
       named ? std::vector{"title", "nodeName"} : std::vector{"lod_set", "lod_link_group", "lod_link0"})
    item = dynamic_cast<VkPrefGroup&>(*item).item(std::string(name));
  dynamic_cast<VkPrefText&>(*item).edit(named ? "renamed" : "7");
  testing::internal::CaptureStdout();
  EXPECT_EQ(window_->applyChanges(dialog.get(), 0, 0), 1);
  EXPECT_THAT(testing::internal::GetCapturedStdout(),
              AllOf(StartsWith("This is " + std::string(GetParam().dialog) + ", index = "),
                    HasSubstr(GetParam().trace)));
  if (named)
    EXPECT_EQ(get_name_string(*qis, *on->dialog->kind().name_index(*qis, on->number)), "renamed");
  else
    EXPECT_EQ(qis->obj_list.records[on->number].lod_objs[0], 7U);
}

}  // namespace
