/// @file
/// A level-of-detail dialog with more rows than X has coordinates for.
#include <cstdint>
#include <string>

#include "qilib/checksizes.h"
#include "qilib/opensave.h"
#include "qilib/writer.h"
#include "samples/scenes.h"
#include "tests/window/dialogfixture.h"

namespace {

using support::WidgetInfo;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::uint32_t kLevels = 20000;

const std::string kDistances = "lod_set.lod_dist_group.lod_dist";
const std::string kLinks = "lod_set.lod_link_group.lod_link";

class LongDialog : public Dialogs {
 protected:
  void SetUp() override {
    Qis scene = samples::table();
    qi::Obj& obj = scene.obj_list.records[0];
    obj.fixed.lod_count = kLevels;
    obj.lod_distances.resize(kLevels);
    obj.lod_objs.resize(kLevels);
    for (std::uint32_t i = 0; i < kLevels; ++i) {
      obj.lod_distances[i] = static_cast<float>(i);
      obj.lod_objs[i] = i % 2;
    }
    qi::correct_sizes(scene, qi::kFromStructures, [](const qi::Message&) {});
    ASSERT_EQ(qiSaveAsQb2(scene, path("levels.quil")), 1);
    edit(path("levels.quil"));
    openDialog("lod_0", "lodDialog");
  }

  static std::string item(const std::string& column, std::uint32_t row) {
    return column + std::to_string(row);
  }
  static std::string last(const std::string& column) { return item(column, kLevels - 1); }

  /// Whether the rows' fields can be seen one below the other, next to their labels.
  void expectInSight(std::uint32_t first, std::uint32_t count) {
    for (const std::string& column : {kDistances, kLinks}) {
      const auto columnBox = widget(column.substr(0, column.rfind('.'))).box;
      int below = columnBox.y;
      for (std::uint32_t row = first; row < first + count; ++row) {
        const WidgetInfo field = widget(item(column, row)), label = widget(item(column, row), "Label");
        EXPECT_TRUE(field.viewable && label.viewable) << field.path;
        EXPECT_GE(field.box.y, below) << field.path;
        EXPECT_LE(label.box.x + label.box.width, field.box.x) << field.path;
        EXPECT_LT(std::abs(field.box.centre().y - label.box.centre().y), 2) << field.path;
        below = field.box.y + field.box.height;
        EXPECT_LE(below, columnBox.y + columnBox.height) << field.path;
        EXPECT_EQ(field.text, std::to_string(column == kDistances ? row : row % 2));
      }
    }
  }
  std::optional<WidgetInfo> madeField(const std::string& name) {
    return editor_.find([&](const WidgetInfo& w) { return w.name() == name + "Base"; });
  }
  void scrollToEnd() {
    const auto bar = widget("lod_set.rowsScrollBar", "");
    const support::Point bottom{bar.box.centre().x, bar.box.y + bar.box.height - 20};
    editor_.driver().drag(bottom, {bottom.x, bottom.y + 50}, 2);
    editor_.settle();
  }
};

TEST_F(LongDialog, ShowsEveryRowAndWritesTheLastOne) {
  EXPECT_EQ(shown("header.nlod"), std::to_string(kLevels));
  EXPECT_EQ(widget(item(kDistances, 0), "Label").label, "distance (min)< ");
  expectInSight(0, 10);
  EXPECT_FALSE(madeField("lod_dist19999")) << "costs nothing while it is out of sight";
  scrollToEnd();
  expectInSight(kLevels - 10, 10);
  EXPECT_EQ(widget(last(kDistances), "Label").label, "distance (max)< ");
  EXPECT_FALSE(madeField("lod_dist1"));

  enter(last(kDistances), "90.5");
  enter(last(kLinks), "7");
  press("OK");
  EXPECT_FALSE(isOpen());
  EXPECT_TRUE(sameBytes(
      saved(), edited(file_, "set lod_0 " + last(kDistances) + "=90.5 " + last(kLinks) + "=7\n").bytes));

  openDialog("lod_0", "lodDialog");
  scrollToEnd();
  EXPECT_EQ(shown(last(kDistances)), "90.5");
  EXPECT_EQ(shown(last(kLinks)), "7");
}

TEST_F(LongDialog, IsScrolledByTheWheelWhichTakesTheFocusAlong) {
  ASSERT_TRUE(widget(item(kDistances, 0)).focused);
  editor_.driver().key("End");
  editor_.driver().type("5");
  editor_.settle();
  const auto at = widget(item(kLinks, 3)).box.centre();
  editor_.driver().wheel(at, -40);
  editor_.settle();
  expectInSight(120, 10);
  EXPECT_TRUE(widget(item(kDistances, 120)).focused);
  EXPECT_FALSE(madeField("lod_dist0"));
  editor_.driver().wheel(at, 100);
  editor_.settle();
  EXPECT_EQ(shown(item(kDistances, 0)), "05");
  expectInSight(1, 10);
}

TEST_F(LongDialog, TabLeadsThroughEveryRowOfBothColumns) {
  const auto awaitFocus = [&](const std::string& name) {
    const auto field = editor_.await("the focus in " + name, [&](const WidgetInfo& w) {
      return w.focused && w.path.find("lodDialog") != w.path.npos && w.name() == name;
    });
    EXPECT_TRUE(field.viewable);
    return field;
  };
  for (int row = 0; row < 60; ++row) {
    awaitFocus("lod_dist" + std::to_string(row) + "Base");
    editor_.driver().key("Tab");
  }
  for (int row = 60; row > 0; --row) {
    awaitFocus("lod_dist" + std::to_string(row) + "Base");
    editor_.driver().key("Tab", {"Shift_L"});
  }
  awaitFocus("lod_dist0Base");
  scrollToEnd();
  editor_.driver().click(widget(last(kDistances)).box.centre());
  editor_.driver().key("Tab");
  awaitFocus("lod_link0Base");
  editor_.driver().key("Tab", {"Shift_L"});
  awaitFocus("lod_dist19999Base");
  editor_.driver().click(widget(item(kLinks, kLevels - 2)).box.centre());
  editor_.driver().key("Tab");
  awaitFocus("lod_link19999Base");
  editor_.driver().key("Tab");
  awaitFocus("OK");
}

}  // namespace
