/// @file
/// Pictures of graphs as files.
#include "picture/export.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

#include "picture/colors.h"
#include "tests/support/files.h"
#include "tests/support/picturefile.h"

namespace {

using picture::Color;
using picture::FileFormat;
using picture::NodeId;
using picture::united;
using support::FilledBox;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr Color kRed = picture::colorOf("#ff0000"), kBlue = picture::colorOf("#0000ff");

TEST(Colors, AreReadFromSixDigits) {
  EXPECT_EQ(picture::colorOf("#ffffff"), picture::kWhite);
  EXPECT_EQ(picture::colorOf("#12aB00"), (Color{0x1212, 0xabab, 0}));
}

TEST(Formats, GoByTheEndingOfTheName) {
  EXPECT_EQ(picture::formatOf("a.svg"), FileFormat::svg);
  EXPECT_EQ(picture::formatOf("/a.b/c.d.PDF"), FileFormat::pdf);
  EXPECT_EQ(picture::formatOf("a.Png"), FileFormat::png);
  EXPECT_EQ(picture::formatOf("a.ps"), FileFormat::ps);
  EXPECT_EQ(picture::formatOf(".eps"), FileFormat::eps);
  for (const char* other : {"", "svg", "a.", "a.svgz", "a.pdf/b", "a.quil", "a.ps "})
    EXPECT_EQ(picture::formatOf(other), std::nullopt) << other;
}

TEST(Papers, AreKnownByName) {
  EXPECT_EQ(picture::paperOf("A4"), picture::kA4);
  EXPECT_EQ(picture::paperOf("letter")->width, 612);
  for (const char* other : {"", "A", "A44", "B5"}) EXPECT_EQ(picture::paperOf(other), nullptr) << other;
}

/// Nodes of 60 x 20, exported into a scratch directory.
class Exported : public testing::Test {
 protected:
  NodeId node(double x, double y, const std::string& label, Color tint = kRed) {
    const NodeId made = drawing_.addNode();
    drawing_.resizeNode(made, 60, 20);
    drawing_.moveNode(made, {x, y});
    drawing_.showNode(made, true);
    looks_.push_back({.label = label, .tint = tint});
    return made;
  }
  std::string file(const char* name) const { return scratch_ / name; }
  /// @returns what went wrong.
  std::string write(const char* name, const picture::Paper* paper = nullptr) {
    return exportPicture(file(name), *picture::formatOf(name),
                         {.content = content_,
                          .part = wholeFrame(drawing_),
                          .partialArcs = false,
                          .font = {},
                          .images = images_,
                          .title = "a (title\xff"},
                         paper);
  }
  /// What is written without trouble.
  std::string written(const char* name, const picture::Paper* paper = nullptr) {
    EXPECT_EQ(write(name, paper), "");
    return read_file(file(name));
  }
  /// The texts of the whole picture at a zoom, sorted.
  std::vector<std::string> wordsAt(double zoom) {
    picture::Frame part = wholeFrame(drawing_);
    part = {.zoom = zoom, .corner = part.corner, .width = part.width * zoom, .height = part.height * zoom};
    EXPECT_EQ(
        exportPicture(
            file("zoomed.pdf"), FileFormat::pdf,
            {.content = content_, .part = part, .partialArcs = true, .font = {}, .images = {}, .title = ""}),
        "");
    std::vector<std::string> texts = words("zoomed.pdf");
    std::ranges::sort(texts);
    return texts;
  }
  std::vector<std::string> words(const char* name) const {
    std::vector<std::string> texts;
    for (const auto& word : support::placedWords(file(name))) texts.push_back(word.text);
    return texts;
  }

  picture::Drawing drawing_;
  std::vector<picture::NodeLook> looks_;
  std::unordered_map<picture::ArcId, std::string> arcLabels_;
  picture::Images images_;
  const picture::Content content_{
      drawing_,
      looks_,
      arcLabels_,
      {.text = {}, .arc = kBlue, .farArc = kBlue, .border = {}, .selection = {}, .handle = {}}};
  const ScratchDirectory scratch_;
};

TEST_F(Exported, AnSvgHasEveryNodeWhereItLiesInItsColour) {
  node(100, 50, "a");
  node(-30, 200, "b", kBlue);
  drawing_.addArc(0, 1);
  const std::string svg = written("a.svg");
  EXPECT_THAT(svg, HasSubstr("width=\"238px\" height=\"218px\""));
  const std::vector<FilledBox> boxes = support::filledBoxes(svg);
  ASSERT_EQ(boxes.size(), 2u);
  // The corner of the page is 24 units off the drawing's.
  EXPECT_EQ(boxes[0].box.middle(), (SgPoint{100 + 30 + 54, 50 + 10 - 26}));
  EXPECT_EQ(boxes[0].color, 0xff0000u);
  EXPECT_EQ(boxes[1].box.middle(), (SgPoint{-30 + 30 + 54, 200 + 10 - 26}));
  EXPECT_EQ(boxes[1].color, 0x0000ffu);
  EXPECT_THAT(svg, HasSubstr("d=\"M 184 44 L 54 174 \""));  // the arc
}

TEST_F(Exported, APdfHasTheTextsAndItsPageFits) {
  node(0, 0, "obj_0");
  node(400, 300, "t\xc3\xa9xt");
  written("a.pdf");
  const auto words = support::placedWords(file("a.pdf"));
  ASSERT_EQ(words.size(), 2u);
  EXPECT_EQ(words[0].text, "obj_0");
  EXPECT_NEAR(words[0].box.middle().x, (30 + 24) * 0.75, 1);
  EXPECT_NEAR(words[0].box.middle().y, (10 + 24) * 0.75, 2);
  EXPECT_EQ(words[1].text, "t\xc3\xa9xt");
  EXPECT_NEAR(words[1].box.middle().x, (430 + 24) * 0.75, 1);
}

TEST_F(Exported, PostScriptIsOneSheetUprightOrLying) {
  node(0, 0, "first");
  node(50, 900, "second");
  const auto bounds = [&](const std::string& document) {
    SgRectangle box;
    const std::string key = "%%BoundingBox:";
    std::istringstream numbers(document.substr(document.find(key) + key.size()));
    double right = 0, top = 0;
    numbers >> box.x >> box.y >> right >> top;
    return SgRectangle{box.x, box.y, right - box.x, top - box.y};
  };
  for (const bool lying : {false, true}) {
    if (lying) node(1e6, 0, "third");
    const std::string document = written("a.ps");
    EXPECT_THAT(document,
                AllOf(StartsWith("%!PS-Adobe-3.0\n"), HasSubstr("%%Title: a (title?\n"),
                      HasSubstr("%%Pages: 1\n"), HasSubstr("%%DocumentMedia: A4 595 842"),
                      HasSubstr(lying ? "%%Orientation: Landscape\n" : "%%Orientation: Portrait\n")));
    const SgRectangle box = bounds(document);
    EXPECT_TRUE(box.x >= 0 && box.y >= 0 && box.right() <= 595 && box.bottom() <= 842);
    EXPECT_GT(lying ? box.height : box.width, 0);
  }
  EXPECT_THAT(support::wordsOfPostScript(file("a.ps")), Each(testing::AnyOf("first", "second", "third")));
}

TEST_F(Exported, AnEncapsulatedPictureIsAsLargeAsItIs) {
  node(0, 0, "a");
  EXPECT_THAT(written("a.eps"),
              AllOf(StartsWith("%!PS-Adobe-3.0 EPSF-3.0\n"), HasSubstr("%%BoundingBox: 0 0 81 51\n")));
}

TEST_F(Exported, APngIsAPngOrTooLarge) {
  node(0, 0, "a");
  EXPECT_THAT(written("a.png"), StartsWith("\x89PNG\r\n"));
  node(40000, 0, "b");
  EXPECT_THAT(write("a.png"), AllOf(HasSubstr("40108 x 68 pixels"), HasSubstr("32767 each way")));
  drawing_.moveNode(1, {30000, 30000});
  EXPECT_THAT(write("b.png"), HasSubstr("100 million in all"));
  EXPECT_FALSE(std::filesystem::exists(file("b.png")));
  EXPECT_THAT(read_file(file("a.png")), StartsWith("\x89PNG\r\n"));  // the former one
}

TEST_F(Exported, SheetsTogetherShowEverythingAfterAnOverview) {
  std::set<std::string> labels;
  for (int row = 0; row < 12; ++row)
    for (int column = 0; column < 12; ++column) {
      labels.insert("n" + std::to_string(row * 12 + column));
      node(column * 150, row * 150, "n" + std::to_string(row * 12 + column));
    }
  written("a.pdf", picture::paperOf("A4"));
  std::set<std::string> overview, sheets;
  for (const auto& word : support::placedWords(file("a.pdf")))
    (word.page == 0 ? overview : sheets).insert(word.text);
  for (const std::string& label : labels) {
    EXPECT_TRUE(overview.contains(label)) << label;
    EXPECT_TRUE(sheets.contains(label)) << label;
  }
  for (const char* number : {"1.1", "2.2"}) EXPECT_TRUE(overview.contains(number) && sheets.contains(number));
}

TEST_F(Exported, SheetsWithNothingOnThemAreLeftOut) {
  node(0, 0, "a");
  node(20000, 20000, "b");
  written("a.pdf", picture::paperOf("A4"));
  const auto words = support::placedWords(file("a.pdf"));
  EXPECT_EQ(std::ranges::max(words, {}, &support::PlacedWord::page).page, 2);
}

TEST_F(Exported, WhatFitsOnOneSheetNeedsNoOverview) {
  node(0, 0, "only");
  written("a.pdf", picture::paperOf("A5"));
  EXPECT_THAT(words("a.pdf"), ElementsAre("only"));
  EXPECT_THAT(written("a.ps", picture::paperOf("A5")), HasSubstr("%%Pages: 1\n"));
}

TEST_F(Exported, NothingIsAnEmptyPage) {
  for (const char* name : {"a.svg", "a.pdf", "a.png", "a.ps", "a.eps"})
    EXPECT_FALSE(written(name).empty()) << name;
  EXPECT_THAT(words("a.pdf"), IsEmpty());
}

TEST_F(Exported, HostilePlacesAndTextsDoNoHarm) {
  node(-1e9, -1e9, "\xff\xc3(\\)%%EOF");
  node(1e9, 1e9, std::string("zero\0byte", 9));
  node(std::nan(""), 1e300, std::string(100000, 'w'));
  drawing_.resizeNode(2, 1e6, 20);
  drawing_.addArc(0, 1);
  drawing_.addArc(2, 2);
  for (const char* name : {"a.svg", "a.pdf", "a.ps", "a.eps"}) EXPECT_FALSE(written(name).empty()) << name;
  EXPECT_EQ(write("sheets.pdf", picture::kA4), "");
  EXPECT_THAT(write("a.png"), HasSubstr("pixels"));
}

TEST_F(Exported, ALabelWithoutRoomIsShortenedWithAnEllipsis) {
  node(0, 0, "a_very_long_name_indeed");
  written("a.pdf");
  ASSERT_EQ(words("a.pdf").size(), 1u);
  const std::string shown = words("a.pdf").front();
  EXPECT_THAT(shown, AllOf(StartsWith("a_v"), testing::EndsWith("\u2026")));
  EXPECT_LT(support::placedWords(file("a.pdf")).front().box.width, 60 * 0.75);
}

TEST_F(Exported, LabelsCanBeReadDownTo40PerCent) {
  node(0, 0, "obj_0");
  node(200, 0, "mat_7");
  for (const double zoom : {4.0, 1.0, 0.6, 0.5, 0.4}) {
    EXPECT_THAT(wordsAt(zoom), ElementsAre("mat_7", "obj_0")) << zoom;
    for (const auto& word : support::placedWords(file("zoomed.pdf")))
      EXPECT_GT(word.box.height, 12 * 0.54 * 0.75) << zoom;  // letters of at least 54 %
  }
  EXPECT_THAT(wordsAt(0.39), IsEmpty());
}

TEST_F(Exported, FromAfarWhatIsLargeHasAName) {
  const NodeId top = node(2000, 0, "top");
  for (int i = 0; i < 20; ++i) drawing_.addArc(top, node(i * 200, 200, "leaf"));
  const NodeId narrow = node(5000, 200, "narrow");
  drawing_.addArc(narrow, node(5050, 400, "leaf"));
  const NodeId wide = node(0, 600, "wide");
  drawing_.addArc(wide, node(3000, 800, "leaf"));
  EXPECT_THAT(wordsAt(0.1), ElementsAre("top", "wide"));
  EXPECT_THAT(wordsAt(0.001), IsEmpty());
}

TEST_F(Exported, ANameAtTheEdgeIsNotCutOff) {
  const NodeId top = node(0, 0, "a_long_name_at_the_edge");
  for (int i = 0; i < 40; ++i) drawing_.addArc(top, node(i * 200, 200, "leaf"));
  ASSERT_THAT(wordsAt(0.1), ElementsAre("a_long_name_at_the_edge"));
  EXPECT_GT(support::placedWords(file("zoomed.pdf")).front().box.x, 0);
}

TEST_F(Exported, BlocksAreShadedByTheirDepth) {
  const NodeId top = node(0, 0, "top"), left = node(20, 100, "left"), right = node(400, 100, "right"),
               inner = node(40, 200, "inner"), leaf = node(300, 200, "leaf"), last = node(60, 300, "last");
  for (const auto& [parent, child] :
       {std::pair{top, left}, {top, right}, {left, inner}, {left, leaf}, {inner, last}}) {
    const picture::ArcId arc = drawing_.addArc(parent, child);
    drawing_.setBends(arc,
                      std::array{SgPoint{drawing_.box(child).middle().x, drawing_.box(parent).bottom()}});
    drawing_.setArcStyle(arc, picture::ArcStyle::Square);
  }
  const std::string svg = written("a.svg");
  std::vector<FilledBox> boxes = support::filledBoxes(svg);
  ASSERT_EQ(boxes.size(), 2 + looks_.size());
  const SgPoint corner = wholeFrame(drawing_).corner;
  const auto holds = [&](const FilledBox& box, NodeId node) {
    const SgRectangle inside = drawing_.box(node);
    return united(box.box, {inside.x - corner.x, inside.y - corner.y, inside.width, inside.height}) ==
           box.box;
  };
  // All in one has the colour of the page, what is in it a little of the arcs' blue, what is in that not.
  EXPECT_EQ(boxes[0].color, 0xe0e0ffu);
  EXPECT_EQ(boxes[1].color, 0xffffffu);
  for (const NodeId node : {top, left, right, inner, leaf, last}) {
    EXPECT_EQ(holds(boxes[0], node), node != top && node != right) << node;
    EXPECT_EQ(holds(boxes[1], node), node == inner || node == last) << node;
  }
  EXPECT_LT(boxes[1].box.bottom(), boxes[0].box.bottom()) << "where they end together, both are seen";
}

TEST_F(Exported, PicturesOfNodesAreInIt) {
  node(0, 0, "");
  looks_[0].pictureWidth = looks_[0].pictureHeight = 2;
  int asked = 0;
  images_ = [&](NodeId) {
    ++asked;
    return picture::Image{2, 2, {0xff0000, 0x00ff00, 0x0000ff, 0xffffff}, false};
  };
  EXPECT_THAT(written("a.svg"), HasSubstr("data:image/png;base64,"));
  EXPECT_EQ(asked, 1);
  images_ = [](NodeId) { return picture::Image{}; };  // it could not be read
  EXPECT_THAT(written("a.svg"), Not(HasSubstr("data:image")));
}

TEST_F(Exported, TellsWhatWentWrong) {
  node(0, 0, "a");
  for (const char* name : {"a.svg", "a.pdf", "a.png", "a.ps", "a.eps"}) {
    const auto write_to = [&](const std::string& path) {
      return exportPicture(path, *picture::formatOf(name),
                           {.content = content_,
                            .part = wholeFrame(drawing_),
                            .partialArcs = false,
                            .font = {},
                            .images = {},
                            .title = ""});
    };
    EXPECT_THAT(write_to(file("nowhere/") + name), HasSubstr("No such file"));
    EXPECT_THAT(write_to("/dev/full"), HasSubstr("No space left")) << name;
  }
}

}  // namespace
