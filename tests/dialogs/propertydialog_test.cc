/// @file
/// The property dialogs as widgets: labels, greyed items, colours, and that a thousand of them leave nothing
/// behind.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <malloc.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "dialogs/propertydialogs.h"
#include "dialogs/values/dispatch.h"
#include "editor/model/currentscene.h"
#include "qilib/edit.h"
#include "qilib/opensave.h"
#include "tests/support/places.h"
#include "tests/viewkit/display_test.h"
#include "viewkit/vksimplewindow.h"
#include "viewkit/xraii.h"

namespace {

class PropertyDialogTest : public DisplayTest {
 protected:
  static void SetUpTestSuite() {
    DisplayTest::SetUpTestSuite();
    if (!window) window = std::make_unique<VkSimpleWindow>("window");
  }

  static void open(const std::string& scene) {
    qis = qiNewQis();
    ASSERT_EQ(qiOpenQb(support::data_file(scene + ".quil"), *qis), 1);
  }
  static std::unique_ptr<PropertyDialog> make(std::string_view node) {
    const auto on = values::dialog_of_node(node);
    return on ? makePropertyDialog(*on) : nullptr;
  }
  static std::unique_ptr<PropertyDialog> shown(std::string_view node) {
    auto dialog = make(node);
    if (dialog) dialog->show();
    handleEvents();
    return dialog;
  }
  static void handleEvents() {
    XSync(app->display(), False);
    while (XtAppPending(app->appContext())) XtAppProcessEvent(app->appContext(), XtIMAll);
  }
  static void press(PropertyDialog& dialog, const char* button) {
    XtCallCallbacks(XtNameToWidget(dialog.baseWidget(), button), XmNactivateCallback, nullptr);
    handleEvents();
  }

  static int apply(PropertyDialog& dialog) {
    return values::applyChanges(*qis, dialog.name(), dialog.item()->model(),
                                static_cast<Word>(dialog.index()));
  }

  /// The item that a path leads to. Throws when there is none of that class.
  template <class Item = VkPrefItem>
  static Item& item(const PropertyDialog& dialog, std::string_view path) {
    VkPrefItem* const found = dialog.item()->find(path);
    if (!found) throw std::out_of_range(std::string(path));
    return dynamic_cast<Item&>(*found);
  }

  static inline std::unique_ptr<VkSimpleWindow> window;
};

void forEachItem(const VkPrefGroup& group, const std::function<void(const VkPrefItem&)>& visit) {
  for (int i = 0; i < group.size(); ++i) {
    visit(*group.item(i));
    if (const auto* inner = dynamic_cast<const VkPrefGroup*>(group.item(i))) forEachItem(*inner, visit);
  }
}

/// A label line's text as resource lines count it: blanks in front are none of it.
std::string trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  return std::string(text);
}

const std::vector<std::pair<std::string, std::vector<const char*>>> kNodes = {
    {"robot",
     {"scene_0", "shape_0", "tex_0", "obj_0", "mat_0", "cam_0", "env_0", "light_0", "part_0", "anim_0",
      "lod_13"}},
    {"skeleton",
     {"shape_1", "tex_0", "obj_0", "mat_0", "anim_0", "anim_1", "lod_5", "ChainRoot_0", "joint_0",
      "effector_0"}}};

TEST_F(PropertyDialogTest, EveryLabelLineOfEveryDialogArrives) {
  for (const auto& [scene, nodes] : kNodes) {
    open(scene);
    for (const char* node : nodes) {
      SCOPED_TRACE(node);
      const values::Dialog& values = *values::dialog_of_node(node)->dialog;
      const auto dialog = shown(node);
      forEachItem(*dialog->item(), [&](const VkPrefItem& item) {
        SCOPED_TRACE(item.name());
        const std::string_view name = item.name();
        const char* const label = values::label_line(values.lines(), name, "Label");
        const bool computed = name.starts_with("lod_") || name == "nlod";
        if (label && item.labelWidget() && !computed) {
          EXPECT_EQ(viewkit::textResource(item.labelWidget(), XmNlabelString), trimmed(label));
        }
        const bool toggle = dynamic_cast<const VkPrefToggle*>(&item) != nullptr;
        EXPECT_FALSE(label && toggle && !item.labelWidget());
        const char* const base = values::label_line(values.lines(), name, "Base");
        if (base && (toggle || dynamic_cast<const VkPrefLabel*>(&item))) {
          EXPECT_EQ(viewkit::textResource(item.baseWidget(), XmNlabelString), trimmed(base));
        }
      });
    }
  }
}

TEST_F(PropertyDialogTest, MisspeltLinesLeaveTheDefaultLabel) {
  open("skeleton");
  const auto dialog = shown("anim_0");
  EXPECT_EQ(viewkit::textResource(item(*dialog, "quil2.scale").labelWidget(), XmNlabelString), "scaleLabel");
}

TEST_F(PropertyDialogTest, ComputedTextsReplaceTheLines) {
  open("robot");
  EXPECT_EQ(viewkit::textResource(item(*shown("light_0"), "light_type").baseWidget(), XmNlabelString),
            "light type = Directional");
  const auto lod = shown("lod_13");
  EXPECT_EQ(viewkit::textResource(item(*lod, "header.nlod").labelWidget(), XmNlabelString),
            "number of LOD Level of obj_13");
  EXPECT_EQ(
      viewkit::textResource(item(*lod, "lod_set.lod_dist_group.lod_dist2").labelWidget(), XmNlabelString),
      "distance (max)< ");
}

TEST_F(PropertyDialogTest, HasClassNameTitleAndIndexOfItsRecord) {
  open("skeleton");
  const auto dialog = shown("joint_2");
  EXPECT_STREQ(dialog->className(), "JointDialog");
  EXPECT_STREQ(dialog->name(), "jointDialog");
  EXPECT_EQ(dialog->index(), 2U);
  char* title = nullptr;
  XtVaGetValues(XtParent(dialog->baseWidget()), XmNtitle, &title, nullptr);
  EXPECT_STREQ(title, "joint_2");
  EXPECT_NE(XtNameToWidget(dialog->baseWidget(), "form.tab.default"), nullptr);
}

TEST_F(PropertyDialogTest, IsNotMadeWithoutItsRecord) {
  open("tiny_v1");
  testing::internal::CaptureStderr();
  EXPECT_EQ(make("obj_7"), nullptr);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "obj_7: there is no such record\n");
  EXPECT_EQ(make("newNode"), nullptr);
}

TEST_F(PropertyDialogTest, RenderModesAreGreyedWhileTheLoaderChoosesThem) {
  open("robot");
  const auto dialog = shown("obj_0");
  const auto& mode = item(*dialog, "render.render_pri_g.render_type0");
  EXPECT_FALSE(mode.activated());
  EXPECT_FALSE(XtIsSensitive(mode.baseWidget()));
  item<VkPrefOption>(*dialog, "render.render_pri.render_pri_sw").edit(1);
  EXPECT_EQ(apply(*dialog), 1);
  EXPECT_TRUE(XtIsSensitive(mode.baseWidget()));
  item<VkPrefOption>(*dialog, "render.render_pri.render_pri_sw").edit(0);
  EXPECT_EQ(apply(*dialog), 1);
  EXPECT_FALSE(XtIsSensitive(mode.baseWidget()));
}

TEST_F(PropertyDialogTest, KeepsACombinerCodeBeyondTheMenu) {
  open("skeleton");
  qis->mat_list.records[0].ext->head.combiner_fog.color_type0 = 0x640000FF;
  const auto dialog = shown("mat_0");
  EXPECT_EQ(item<VkPrefOption>(*dialog, "cc_g_fog.cc_kavo.kavo_color_type0.cc_a").getValue(), 0x64);
  const Widget button = item(*dialog, "cc_g_fog.cc_kavo.kavo_color_type0.cc_a").focusWidget();
  EXPECT_EQ(viewkit::textResource(button, XmNlabelString), "100");
}

/// The colour of the patch after an item, eight bits for each component: 0xRRGGBB.
unsigned colorAfter(const VkPrefItem& item) {
  const Widget patch = XtNameToWidget(item.tail(), "patch");
  XColor color{};
  Colormap colors = 0;
  XtVaGetValues(patch, XmNbackground, &color.pixel, XmNcolormap, &colors, nullptr);
  XQueryColor(XtDisplay(patch), colors, &color);
  return static_cast<unsigned>((color.red >> 8) << 16 | (color.green >> 8) << 8 | color.blue >> 8);
}

TEST_F(PropertyDialogTest, AMaterialsSwatchFollowsWhatIsTyped) {
  open("robot");
  const auto dialog = shown("mat_0");
  const auto& color = item(*dialog, "prim_color");
  for (const char* component : {"red", "green", "blue"})
    item<VkPrefText>(*dialog, std::string("prim_color.") + component).edit("0");
  EXPECT_EQ(colorAfter(color), 0x000000U);
  item<VkPrefText>(*dialog, "prim_color.red").edit("1");
  EXPECT_EQ(colorAfter(color), 0xFF0000U);
  item<VkPrefText>(*dialog, "prim_color.green").edit("-3");
  item<VkPrefText>(*dialog, "prim_color.blue").edit("7.5");
  EXPECT_EQ(colorAfter(color), 0xFF00FFU);
  item<VkPrefText>(*dialog, "prim_color.red").edit("nan");
  EXPECT_EQ(colorAfter(color), 0x0000FFU);
}

TEST_F(PropertyDialogTest, AnEnvironmentsSwatchesReadHexadecimal) {
  open("robot");
  const auto dialog = shown("env_0");
  auto& fog = item<VkPrefText>(*dialog, "fog.fog_color");
  fog.edit("12345678");
  EXPECT_EQ(colorAfter(fog), 0x123456U);
  fog.edit("ff");
  EXPECT_EQ(colorAfter(fog), 0x000000U);
  auto& fill = item<VkPrefText>(*dialog, "fill_color.fill_color_rgb");
  fill.edit("0xabcdef");
  EXPECT_EQ(colorAfter(fill), 0xABCDEFU);
  fill.edit("abcdef80");
  EXPECT_EQ(colorAfter(fill), 0xABCDEFU);
}

/// Where no window manager cuts it down.
TEST_F(PropertyDialogTest, IsNoTallerThanTheScreen) {
  open("robot");
  auto& obj = qis->obj_list.records[13];
  constexpr Word kRows = 90;  // all of them are made; of many more, only those in sight
  obj.fixed.lod_count = kRows;
  obj.lod_distances.resize(kRows);
  obj.lod_objs.resize(kRows);
  const auto dialog = shown("lod_13");
  const auto heightOf = [](Widget widget) {
    Dimension height = 0;
    XtVaGetValues(widget, XmNheight, &height, nullptr);
    return height;
  };
  EXPECT_LT(heightOf(dialog->baseWidget()), HeightOfScreen(XtScreen(dialog->baseWidget())));
  EXPECT_GT(heightOf(dialog->item()->baseWidget()), HeightOfScreen(XtScreen(dialog->baseWidget())));
}

TEST_F(PropertyDialogTest, HasNoItemsOnceItIsClosed) {
  open("robot");
  const auto dialog = shown("mat_0");
  press(*dialog, "*Cancel");
  EXPECT_EQ(dialog->item(), nullptr);
}

TEST_F(PropertyDialogTest, ANameThatTheLanguageCannotShowIsKept) {
  open("robot");
  const std::string odd = "a\xff\tb" + std::string(100000, 'x');
  const auto dialog = shown("part_0");
  auto& name = item<VkPrefText>(*dialog, "title.nodeName");
  name.setValue(odd);
  handleEvents();
  EXPECT_EQ(name.getValue(), odd);
  EXPECT_FALSE(name.changed());
}

TEST_F(PropertyDialogTest, AThousandLeaveNoWindowsAndLittleMemoryBehind) {
  const auto windows = [] {
    ::Window root = 0, parent = 0;
    ::Window* children = nullptr;
    unsigned count = 0;
    XQueryTree(app->display(), DefaultRootWindow(app->display()), &root, &parent, &children, &count);
    const viewkit::XMem<::Window> owner(children);
    return count;
  };
  const auto bytes = [] { return mallinfo2().uordblks; };
  std::vector<std::unique_ptr<PropertyDialog>> dialogs;
  unsigned windowsBefore = 0;
  std::size_t bytesBefore = 0;
  testing::internal::CaptureStdout();
  constexpr std::size_t kMany = 1000;
  while (dialogs.size() < kMany) {
    for (const auto& [scene, nodes] : kNodes) {
      open(scene);
      for (const char* node : nodes) {
        dialogs.push_back(shown(node));
        PropertyDialog& dialog = *dialogs.back();
        if (!std::string_view(node).starts_with("lod_"))
          item<VkPrefText>(dialog, "title.nodeName").edit("renamed");
        apply(dialog);
        press(dialog, "*OK");
        EXPECT_EQ(dialog.baseWidget(), nullptr);
      }
    }
    if (windowsBefore == 0) {
      windowsBefore = windows();
      bytesBefore = bytes();
    }
  }
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(XtNameToWidget(window->baseWidget(), "*OK"), nullptr);
  EXPECT_LE(windows(), windowsBefore);
  EXPECT_LT(bytes(), bytesBefore + dialogs.size() * 20000);
}

}  // namespace
