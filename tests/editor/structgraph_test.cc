/// @file
/// A scene built into the window's graph.
#include <gmock/gmock.h>

// X headers come after the test framework: their macros would change it.
#include <X11/Xresource.h>
#include <Xm/ToggleBG.h>

#include <filesystem>

#include "editor/graphwindow.h"
#include "editor/model/currentscene.h"
#include "tests/support/builtscene.h"
#include "tests/support/places.h"
#include "tests/support/scratch_home.h"
#include "tests/viewkit/display_test.h"

namespace {

class StructGraph : public DisplayTest {
 protected:
  StructGraph() {
    std::filesystem::copy_file(support::project_file("samples/quilcnvops.template"), home_.options_file());
    window_ = std::make_unique<GraphWindow>("QUILeditor2");
  }
  ~StructGraph() override { window_.reset(); }

  VkGraph& graph() { return window_->graph(); }
  /// How many of the children of a node have this label.
  int childrenLabelled(const char* node, std::string_view label) {
    int count = 0;
    const VkNode* parent = graph().find(node);
    for (int i = 0; i < parent->nChildren(); ++i) count += parent->child(i)->label() == label;
    return count;
  }

  const ScratchHome home_;
  std::unique_ptr<GraphWindow> window_;
};

TEST_F(StructGraph, TwiceReusesNodesButForLevelsOfDetail) {
  qis = built_version1_scene();
  qis->scene.objs = {0};
  qis->obj_list.records[0].fixed.mat = 0;
  qis->obj_list.records[0].fixed.lod_count = 1;
  window_->struct_graph(&graph());
  const VkNode* obj = graph().find("obj_0");
  EXPECT_EQ(childrenLabelled("obj_0", "LOD"), 1);
  window_->struct_graph(&graph());
  EXPECT_EQ(graph().find("obj_0"), obj);
  EXPECT_EQ(graph().find("mat_0")->nParents(), 2) << "an arc each time";
  EXPECT_EQ(childrenLabelled("obj_0", "LOD"), 2);
  EXPECT_NE(obj->child(1), obj->child(3));
}

TEST_F(StructGraph, ANodeEntersTheGraphWithItsFirstArc) {
  VkNode* scene = window_->getQuilVkNode(&graph(), "scene_0");
  EXPECT_STREQ(scene->name(), "scene_0");
  EXPECT_STREQ(scene->label(), "scene_0");
  EXPECT_STREQ(scene->className(), "QuilVkNode");
  EXPECT_EQ(graph().find("scene_0"), nullptr);
  window_->addChild(scene, "obj_7");
  EXPECT_EQ(graph().find("scene_0"), scene);
  VkNode* obj = graph().find("obj_7");
  ASSERT_NE(obj, nullptr);
  EXPECT_EQ(window_->getQuilVkNode(&graph(), "obj_7"), obj);
  window_->addChild(scene, "obj_7");
  EXPECT_EQ(obj->nParents(), 2);
}

TEST_F(StructGraph, TheDisplacedChildIsTheFirstOtherOfItsKindUnderASingleParent) {
  VkNode* obj = window_->getQuilVkNode(&graph(), "obj_1");
  for (const char* child : {"anim_0", "mat_2", "mat_3", "mat_4", "obj_5"}) window_->addChild(obj, child);
  window_->deleteDupChild(obj, graph().find("mat_2"));
  EXPECT_EQ(childrenLabelled("obj_1", "mat_3"), 0);
  EXPECT_EQ(childrenLabelled("obj_1", "mat_4"), 1);
  EXPECT_EQ(graph().find("mat_3")->nParents(), 0) << "the node stays";
  window_->addChild(obj, "obj_6");
  window_->deleteDupChild(obj, graph().find("obj_6"));
  EXPECT_EQ(childrenLabelled("obj_1", "obj_5"), 1) << "of objs there may be many";
}

TEST_F(StructGraph, ATextureNodeKeepsThePictureThatItWasFirstBuiltWith) {
  XrmDatabase resources = XtDatabase(app->display());
  XrmPutLineResource(&resources, "*trueColorTextures: True");
  window_ = std::make_unique<GraphWindow>("QUILeditor2");
  const auto toggle = [&] {
    XmToggleButtonGadgetSetState(
        window_->menu()->findNamedItem<VkMenuToggle>("Display Texture Image")->baseWidget(), True, True);
  };
  qis = std::make_unique<Qis>();
  auto& size = qis->tex_list.records.emplace_back().table.untiled;
  size.width = size.height = 1;
  qis->teximg_list.records.emplace_back().texels.resize(4);

  toggle();
  window_->addChild(window_->getQuilVkNode(&graph(), "mat_0"), "tex_0");
  VkNode* node = graph().find("tex_0");
  const auto picture = [&] {
    Pixmap pixmap = None;
    XtVaGetValues(node->baseWidget(), XmNlabelPixmap, &pixmap, nullptr);
    return pixmap;
  };
  const Pixmap first = picture();
  EXPECT_NE(first, Pixmap{None});
  EXPECT_NE(first, Pixmap{XmUNSPECIFIED_PIXMAP});
  node->build(graph().graphWidget());
  EXPECT_EQ(picture(), first);
  qis->teximg_list.records.clear();
  node->build(graph().graphWidget());
  EXPECT_EQ(picture(), first);
}

TEST_F(StructGraph, IsTheWindowsClassAndPrints) {
  EXPECT_STREQ(window_->className(), "GraphWindow");
  window_->addChild(window_->getQuilVkNode(&graph(), "obj_1"), "mat_0");
  graph().displayAll();
  graph().doLayout();
  EXPECT_TRUE(window_->print((home_.dir() / "picture.ps").string()));
  EXPECT_TRUE(read_file(home_.dir() / "picture.ps").starts_with("%!PS"));
  EXPECT_FALSE(window_->print("/no/such/place.ps"));
}

}  // namespace
