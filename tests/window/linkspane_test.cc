/// @file
/// The list of what leads to the selected node and from it.
#include <algorithm>
#include <string_view>

#include "tests/support/wait.h"
#include "tests/window/editorfixture.h"

namespace {

using support::Editor;
using support::Point;
using support::WidgetInfo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Links : public EditorTest {
 protected:
  explicit Links(support::Program::Start how = {}) : EditorTest(24, std::move(how)) {}
  void showLinks() { editor_.chooseMenu({"View", "Links"}); }
  bool isShown() {
    return editor_.find([](const WidgetInfo& w) { return w.isAt("links") && w.viewable; }).has_value();
  }
  void select(std::string_view node) {
    editor_.driver().click(editor_.graph().node(node).box.centre());
    editor_.settle();
  }
  /// The rows of a list: the names that they begin with. The list follows when the program is idle.
  std::vector<std::string> rows(std::string_view list) {
    std::vector<std::string> names;
    const std::string text = editor_.await(list).text;
    for (std::size_t begin = 0; begin < text.size(); begin = text.find('\n', begin) + 1)
      names.push_back(text.substr(begin, text.find_first_of(" \n", begin) - begin));
    return names;
  }
  void expectRows(std::string_view list, const testing::Matcher<std::vector<std::string>>& expected) {
    support::waitFor([&] { return expected.Matches(rows(list)); });
    EXPECT_THAT(rows(list), expected) << list;
  }
  Point place(std::string_view list, const std::string& row) {
    expectRows(list, testing::Contains(row));
    const auto names = rows(list);
    const auto number = std::find(names.begin(), names.end(), row) - names.begin();
    const WidgetInfo widget = editor_.await(list);
    const int visible = std::stoi(editor_.resource(widget, "visibleItemCount"));
    return {widget.box.x + 20,
            widget.box.y + static_cast<int>(2 * number + 1) * widget.box.height / (2 * visible)};
  }
  /// Takes a row, without letting it go.
  void dragTo(Point row, Point to) {
    editor_.driver().moveTo(row);
    editor_.driver().press();
    const Box edge = editor_.graph().view;
    editor_.driver().moveTo({edge.x + edge.width - 60, row.y});
    editor_.driver().moveTo(to);
    editor_.settle();
  }
  Point at(std::string_view node) { return editor_.graph().node(node).box.centre(); }
  std::string status() { return editor_.await("status").label; }
  using Box = support::Box;
};

TEST_F(Links, AreListedForTheSelectedNode) {
  editor_.open(table());
  EXPECT_FALSE(isShown());
  showLinks();
  EXPECT_EQ(editor_.await("links/subject").label, "No node is selected");
  expectRows("children", IsEmpty());
  select("shape_1");
  expectRows("parents", ElementsAre("obj_0", "obj_1", "obj_2", "obj_3"));
  EXPECT_THAT(editor_.await("links/subject").label, StartsWith("shape_1"));
  expectRows("children", ElementsAre("mat_0"));
  EXPECT_EQ(editor_.await("parentsLabel").label, "Referred to by 4");
  EXPECT_THAT(editor_.await("children").text, HasSubstr("mat_0   ")) << "with the record's name";
  showLinks();
  EXPECT_FALSE(isShown());
}

TEST_F(Links, ADoubleClickGoesThere) {
  editor_.open(table());
  showLinks();
  select("shape_1");
  editor_.driver().doubleClick(place("children", "mat_0"));
  editor_.settle();
  EXPECT_THAT(selected(), ElementsAre("mat_0"));
  expectRows("parents", testing::Contains("shape_1"));
  editor_.driver().key("Return");
  editor_.settle();
  EXPECT_THAT(selected(), testing::Not(ElementsAre("scene_0")));
}

TEST_F(Links, DeleteDeletesTheLinkOfTheRow) {
  editor_.open(table());
  const auto before = shownArcs();
  showLinks();
  editor_.toggleEditMode();
  select("shape_1");
  editor_.driver().click(place("children", "mat_0"));
  editor_.settle();
  EXPECT_TRUE(editor_.graph().arc("shape_1", "mat_0").selected);
  EXPECT_THAT(selected(), ElementsAre("shape_1"));
  editor_.driver().key("Delete");
  editor_.settle();
  EXPECT_FALSE(editor_.graph().hasArc("shape_1", "mat_0"));
  expectRows("children", IsEmpty());
  EXPECT_THAT(newOutput(), HasSubstr("Delete Link.\n"));
  editor_.driver().key("z", {"Control_L"});
  editor_.settle();
  EXPECT_EQ(shownArcs(), before);
  expectRows("children", ElementsAre("mat_0"));
}

TEST_F(Links, ARowThatIsDraggedOntoANodeLinksTheTwo) {
  editor_.open(table());
  showLinks();
  editor_.toggleEditMode();
  editor_.click("strip/zoomFit");
  select("shape_1");
  dragTo(place("children", "mat_0"), at("obj_7"));
  EXPECT_THAT(status(), StartsWith("link obj_7 to mat_0")) << "a material refers to no object";
  editor_.driver().moveTo(at("tex_0"));
  editor_.settle();
  EXPECT_THAT(status(), StartsWith("link mat_0 to tex_0"));
  editor_.driver().moveTo(at("obj_7"));
  editor_.driver().release();
  editor_.settle();
  EXPECT_TRUE(editor_.graph().hasArc("obj_7", "mat_0"));
  EXPECT_THAT(newOutput(), HasSubstr("In newArcCallback\n"));
  editor_.driver().key("z", {"Control_L"});
  editor_.settle();
  EXPECT_FALSE(editor_.graph().hasArc("obj_7", "mat_0"));
}

TEST_F(Links, ARowOfAHiddenNodeCanBeDraggedToo) {
  editor_.open(table());
  showLinks();
  editor_.toggleEditMode();
  select("shape_1");
  editor_.key("s");
  editor_.settle();
  ASSERT_TRUE(editor_.graph().node("mat_0").hidden);
  dragTo(place("children", "mat_0"), at("shape_1"));
  EXPECT_THAT(status(), StartsWith("shape_1 has mat_0 already"));
  editor_.driver().key("Escape");
  editor_.driver().release();
  EXPECT_FALSE(editor_.graph().node("mat_0").hidden);
}

TEST_F(Links, ADragOfARowCanBeGivenUpOrRefused) {
  editor_.open(table());
  const auto before = shownArcs();
  showLinks();
  editor_.toggleEditMode();
  editor_.click("strip/zoomFit");
  select("shape_1");
  dragTo(place("children", "mat_0"), at("obj_7"));
  editor_.driver().key("Escape");
  editor_.driver().release();
  editor_.settle();
  EXPECT_EQ(shownArcs(), before);
  dragTo(place("parents", "obj_0"), at("tex_0"));
  EXPECT_THAT(status(), StartsWith("an object does not refer to textures"));
  editor_.driver().release();
  EXPECT_EQ(editor_.message(kWarning), "Can't add link!");
  editor_.answer(kWarning, "OK");
  EXPECT_EQ(shownArcs(), before);
}

TEST_F(Links, OutsideOfEditModeADragDoesNothing) {
  editor_.open(table());
  const auto before = shownArcs();
  showLinks();
  editor_.click("strip/zoomFit");
  select("shape_1");
  dragTo(place("children", "mat_0"), at("obj_7"));
  editor_.driver().release();
  editor_.settle();
  EXPECT_EQ(shownArcs(), before);
}

TEST_F(Links, AreAsLongAsAListCanShow) {
  constexpr std::uint32_t kChildren = 20000;
  editor_.open(dangling(kChildren));
  showLinks();
  editor_.key("f", {"Control_L"});
  editor_.await("the focus in the field",
                [](const WidgetInfo& w) { return w.isAt("strip/find") && w.focused; });
  editor_.driver().type("obj_0");
  editor_.settle();
  expectRows("children", testing::SizeIs(1001));
  EXPECT_THAT(editor_.await("children").text, testing::ContainsRegex("\nand 190[0-9]+ more\n"));
}

class LinksInLargeLetters : public Links {
 protected:
  LinksInLargeLetters() : Links({.executable = {}, .arguments = {"-xrm", "Xft.dpi: 192"}}) {}
};

TEST_F(LinksInLargeLetters, HaveMoreRoom) {
  showLinks();
  EXPECT_GT(editor_.await("links").box.width, 450);
}

TEST_F(Links, TheNextRunHasThePaneWithItsWidth) {
  showLinks();
  const Box pane = editor_.await("links").box;
  const WidgetInfo sash = *editor_.find(
      [](const WidgetInfo& w) { return w.class_name.find("Sash") != std::string::npos && w.viewable; });
  editor_.driver().drag(sash.box.centre(), {sash.box.centre().x - 90, sash.box.centre().y});
  editor_.settle();
  const int width = editor_.await("links").box.width;
  EXPECT_NEAR(width, pane.width + 90, 6);
  EXPECT_EQ(editor_.quit(), 0);
  Editor next(server_, start());
  EXPECT_NEAR(next.await("links").box.width, width, 2);
  EXPECT_EQ(next.quit(), 0);
}

}  // namespace
