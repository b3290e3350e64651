/// @file
/// What greets a newcomer: the empty canvas, and a scene that is named when the program is started.
#include <set>

#include "tests/support/places.h"
#include "tests/window/editorfixture.h"
#include "tests/window/screen.h"

namespace {

using support::Editor;
using support::Program;
using support::WidgetInfo;
using testing::EndsWith;
using testing::HasSubstr;

class EmptyCanvas : public EditorTest {
 protected:
  /// How many colours the middle of the canvas has.
  std::size_t colorsInTheMiddle() {
    editor_.settle();
    const support::Box canvas = editor_.graphWidget().box;
    const support::Box middle{canvas.x + canvas.width / 4, canvas.y + canvas.height / 2 - 30,
                              canvas.width / 2, 60};
    const Picture screen = pictureOf(server_.display());
    std::set<unsigned long> colors;
    for (int y = middle.y; y < middle.y + middle.height; ++y)
      for (int x = middle.x; x < middle.x + middle.width; ++x)
        colors.insert(screen.pixels[static_cast<std::size_t>(y * screen.width + x)]);
    return colors.size();
  }
};

TEST_F(EmptyCanvas, SaysWhatCanBeDoneUntilThereIsANode) {
  EXPECT_THAT(editor_.resource(editor_.graphWidget(), "emptyText"), HasSubstr("Ctrl+O opens"));
  EXPECT_GT(colorsInTheMiddle(), 1u);
  editor_.toggleEditMode();
  const support::Box canvas = editor_.graphWidget().box;
  editor_.driver().doubleClick({canvas.x + 100, canvas.y + 60});
  EXPECT_EQ(editor_.graph().nodes.size(), 1u);
  EXPECT_EQ(colorsInTheMiddle(), 1u);
  editor_.chooseMenu({"File", "New"});
  editor_.answer(kQuestion, "OK");
  EXPECT_GT(colorsInTheMiddle(), 1u);
}

TEST_F(EmptyCanvas, TheListOfKeysIsAsWideAsItsLongestLine) {
  press("F1");
  editor_.await("keysDialog/text");
  const WidgetInfo bar = editor_.await("keysDialog/HorScrollBar");
  EXPECT_EQ(editor_.resource(bar, "sliderSize"), editor_.resource(bar, "maximum")) << "nothing to scroll to";
  EXPECT_LE(editor_.await("keysDialog").box.width, 1000) << "it has room on a screen of 1024 pixels";
}

class NamedAtTheStart : public EditorTest {
 protected:
  /// Another editor beside the first, started with these arguments.
  Editor startedWith(std::vector<std::string> arguments, const std::filesystem::path& directory = {}) {
    return Editor(server_,
                  start({.executable = {}, .arguments = std::move(arguments), .directory = directory}));
  }
  static std::string title(Editor& editor) {
    return editor.await("the title", [](const WidgetInfo& w) { return w.isAt("QUILeditor2"); }).label;
  }
};

TEST_F(NamedAtTheStart, AFileIsOpened) {
  const std::string file = table();
  Editor editor = startedWith({file});
  EXPECT_THAT(editor.output(), HasSubstr("File name: " + file + "\n"));
  EXPECT_TRUE(editor.graph().hasArc("obj_5", "anim_0"));
  EXPECT_THAT(title(editor), HasSubstr("table.quil"));
  EXPECT_EQ(editor.quit(), 0);
}

TEST_F(NamedAtTheStart, ARelativeNameCountsFromTheWorkingDirectory) {
  std::filesystem::create_directory(path("scenes"));
  std::filesystem::copy_file(table(), path("scenes/there.quil"));
  Editor editor = startedWith({"../scenes/there.quil"}, "scenes");
  EXPECT_THAT(editor.output(), HasSubstr("File name: " + path("scenes/there.quil") + "\n"));
  EXPECT_EQ(editor.quit(), 0);
}

TEST_F(NamedAtTheStart, AFileThatCannotBeReadIsToldAsByOpen) {
  Editor editor = startedWith({path("absent.quil")});
  EXPECT_EQ(editor.message(kWarning), "Can't Read QUIL File!");
  editor.answer(kWarning, "OK");
  EXPECT_TRUE(editor.graph().nodes.empty());
  EXPECT_THAT(editor.errors(), HasSubstr("No such file or directory"));
  EXPECT_EQ(editor.quit(), 0);
}

TEST_F(NamedAtTheStart, TwoFilesOrAnUnknownOptionAreRefused) {
  for (const std::vector<std::string>& arguments : {std::vector{table(), table()}, {"-nonsense"}}) {
    Program::Start how = start();
    how.executable = support::built_program("editor/quileditor");
    how.arguments = arguments;
    Program program(server_, how);
    EXPECT_EQ(program.process().waitForExit(), 2);
    EXPECT_THAT(program.errors(), EndsWith("usage: quileditor [toolkit options] [FILE]\n"));
  }
}

}  // namespace
