/// @file
/// The picture as a file, compared with what the window shows.
#include <algorithm>
#include <cmath>

#include "tests/support/picturefile.h"
#include "tests/window/editorfixture.h"
#include "tests/window/screen.h"

namespace {

using support::Editor;
using support::GraphState;
using testing::HasSubstr;
using testing::StartsWith;

class ExportTest : public EditorTest {
 protected:
  /// @returns the file's contents.
  std::string exported(const std::string& name, bool view_only = false) {
    editor_.chooseMenu({"File", "Export Picture..."});
    if (view_only) editor_.click("option");
    editor_.chooseFile(path(name));
    if (editor_.asks(Editor::kQuestion)) editor_.answer(Editor::kQuestion, "OK");
    editor_.settle();
    return read_file(path(name));
  }
  /// The nodes whose middle is in view.
  static std::vector<GraphState::Node> nodesIn(const GraphState& graph) {
    std::vector<GraphState::Node> nodes;
    for (const GraphState::Node& node : graph.nodes) {
      const support::Point middle = node.box.centre();
      if (middle.x > graph.view.x && middle.x < graph.view.x + graph.view.width && middle.y > graph.view.y &&
          middle.y < graph.view.y + graph.view.height)
        nodes.push_back(node);
    }
    return nodes;
  }
};

TEST_F(ExportTest, EveryNodeOfEverySampleLiesWhereTheWindowShowsIt) {
  for (const char* const scene : {"robot", "skeleton", "tiny_v1", "tiny_v2"}) {
    SCOPED_TRACE(scene);
    editor_.open(data(scene));
    const GraphState graph = editor_.graph();
    ASSERT_EQ(graph.zoom, 1);
    const auto boxes = support::filledBoxes(exported("picture.svg"));
    exported("picture.pdf");
    const auto words = support::placedWords(path("picture.pdf"));
    ASSERT_EQ(boxes.size(), graph.nodes.size());
    ASSERT_EQ(words.size(), graph.nodes.size());
    for (std::size_t i = 0; i < boxes.size(); ++i) {
      const GraphState::Node& node = graph.nodes[i];
      SCOPED_TRACE(node.name);
      const auto right_of_first = [&](double x) { return x - graph.nodes[0].box.x; };
      EXPECT_NEAR(boxes[i].box.x - boxes[0].box.x, right_of_first(node.box.x), 1.01);
      EXPECT_NEAR(boxes[i].box.y - boxes[0].box.y, node.box.y - graph.nodes[0].box.y, 1.01);
      EXPECT_NEAR(boxes[i].box.width + 1, node.box.width, 1.01);
      EXPECT_EQ(boxes[i].color, shownColor(server_.display(), node.tint));
      const SgPoint middle = boxes[i].box.middle();
      EXPECT_TRUE(std::ranges::any_of(words, [&](const support::PlacedWord& word) {
        return word.text == node.label && std::abs(word.box.middle().x - middle.x * 0.75) < 1 &&
               std::abs(word.box.middle().y - middle.y * 0.75) < 2.5;
      }));
    }
  }
}

TEST_F(ExportTest, TheViewIsWhatTheWindowShows) {
  editor_.open(data("robot"));
  editor_.click("zoomIn");
  editor_.settle();
  const GraphState graph = editor_.graph();
  const std::vector<GraphState::Node> nodes = nodesIn(graph);
  const std::string svg = exported("view.svg", true);
  EXPECT_THAT(svg, HasSubstr("width=\"" + std::to_string(graph.view.width) + "px\" height=\"" +
                             std::to_string(graph.view.height) + "px\""));
  const auto boxes = support::filledBoxes(svg);
  for (const GraphState::Node& node : nodes) {
    SCOPED_TRACE(node.name);
    EXPECT_TRUE(std::ranges::any_of(boxes, [&](const support::FilledBox& box) {
      return std::abs(box.box.x + graph.view.x - node.box.x) < 2 &&
             std::abs(box.box.y + graph.view.y - node.box.y) < 2 &&
             box.color == shownColor(server_.display(), node.tint);
    }));
  }
  // The whole is more than that, and comes without the choice the next time.
  EXPECT_LT(boxes.size(), graph.nodes.size());
  EXPECT_EQ(support::filledBoxes(exported("whole.svg")).size(), graph.nodes.size());
}

TEST_F(ExportTest, AFileThatIsNoPictureIsNeverOverwritten) {
  const std::string scene = data("tiny_v1");
  const std::string before = read_file(scene);
  editor_.open(scene);
  editor_.chooseMenu({"File", "Export Picture..."});
  editor_.chooseFile(scene);
  EXPECT_THAT(editor_.message(Editor::kWarning), HasSubstr("Can't export the picture!"));
  editor_.answer(Editor::kWarning, "OK");
  EXPECT_TRUE(sameBytes(read_file(scene), before));
  EXPECT_THAT(exported("fine.eps"), StartsWith("%!PS-Adobe-3.0 EPSF"));
}

}  // namespace
