/// @file
/// Pictures of graphs as PostScript.
#include "viewkit/postscript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/files.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using viewkit::PostScriptPage;

constexpr viewkit::PrintColor kGreen{0.5, 1, 0.25};

/// Whether braces, and parentheses outside of strings' escapes, are in pairs.
bool balanced(const std::string& document) {
  int braces = 0, parentheses = 0;
  bool comment = false;
  for (std::size_t i = 0; i < document.size(); ++i) {
    const char c = document[i];
    if (parentheses == 0 && c == '%') comment = true;
    if (c == '\n') comment = false;
    if (comment) continue;
    if (parentheses > 0 && c == '\\') ++i;
    if (c == '(') ++parentheses;
    if (c == ')') --parentheses;
    if (parentheses == 0 && c == '{') ++braces;
    if (parentheses == 0 && c == '}') --braces;
    if (braces < 0 || parentheses < 0) return false;
  }
  return braces == 0 && parentheses == 0;
}

struct Box {
  int left = 0, bottom = 0, right = 0, top = 0;
};

Box boundingBox(const std::string& document) {
  Box box;
  const std::string key = "%%BoundingBox:";
  std::istringstream numbers(document.substr(document.find(key) + key.size()));
  numbers >> box.left >> box.bottom >> box.right >> box.top;
  EXPECT_TRUE(numbers.good());
  return box;
}

std::string textOf(std::string_view label) {
  PostScriptPage page;
  page.addNode({0, 0, 60, 20}, label, kGreen);
  const std::string document = page.document("t");
  const std::size_t start = document.find("250 box\n") + 8;
  EXPECT_TRUE(balanced(document));
  return document.substr(start, document.find('\n', start) - start);
}

TEST(PostScript, IsADocumentOfOnePage) {
  PostScriptPage page;
  page.addNode({0, 0, 60, 20}, "obj_0", kGreen);
  page.addNode({0, 100, 60, 20}, "mat_0", kGreen);
  const SgPoint path[] = {{30, 20}, {40, 60}, {30, 100}};
  page.addArc(path);
  const std::string document = page.document("graph");
  EXPECT_THAT(document, StartsWith("%!PS-Adobe-3.0\n%%Title: graph\n"));
  EXPECT_THAT(document, EndsWith("restore\nshowpage\n%%Trailer\n%%EOF\n"));
  EXPECT_THAT(document, HasSubstr("%%Pages: 1\n"));
  EXPECT_THAT(document,
              HasSubstr("0.0 -20.0 60.0 20.0 0.500 1.000 0.250 box\n(obj_0) 30.0 -10.0 54.0 label\n"));
  EXPECT_THAT(document, HasSubstr("30.0 -20.0 moveto\n40.0 -60.0 lineto\n30.0 -100.0 lineto\nstroke "));
  EXPECT_TRUE(balanced(document));
}

TEST(PostScript, FitsOnTheSheetUprightOrLying) {
  struct Row {
    const char* name;
    double width, height;
    bool lying;
  };
  for (const Row& row : {Row{"small", 100, 300, false}, Row{"tall", 2000, 90000, false},
                         Row{"wide", 1e6, 800, true}, Row{"square", 5000, 5000, false}}) {
    SCOPED_TRACE(row.name);
    PostScriptPage page;
    page.addNode({-50, -70, 60, 20}, "a", kGreen);
    page.addNode({row.width - 110, row.height - 90, 60, 20}, "b", kGreen);
    const std::string document = page.document("graph");
    EXPECT_THAT(document, HasSubstr(row.lying ? "Landscape" : "Portrait"));
    const Box box = boundingBox(document);
    EXPECT_TRUE(box.left >= 0 && box.bottom >= 0 && box.right <= 595 && box.top <= 842)
        << box.left << ' ' << box.bottom << ' ' << box.right << ' ' << box.top;
    EXPECT_TRUE(box.left < box.right && box.bottom < box.top);
  }
}

TEST(PostScript, EscapesWhatStringsCantHold) {
  EXPECT_THAT(textOf("a(b)\\c"), StartsWith("(a\\(b\\)\\\\c) "));
  EXPECT_THAT(textOf("((("), StartsWith("(\\(\\(\\() "));
  EXPECT_THAT(textOf("\t\n"), StartsWith("(\\011\\012) "));
  EXPECT_THAT(textOf("\xc3\xa9t\xc3\xa9"), StartsWith("(\\351t\\351) "));
  EXPECT_THAT(textOf("\xe2\x82\xac!"), StartsWith("(?!) "));
  EXPECT_THAT(textOf("\xff\xc3"), StartsWith("(?"
                                             "?) "));
}

TEST(PostScript, NothingIsAnEmptyPage) {
  const std::string document = PostScriptPage().document("");
  EXPECT_TRUE(balanced(document));
  const Box box = boundingBox(document);
  EXPECT_LE(box.right - box.left, 2);
  PostScriptPage pointless;
  const SgPoint one[] = {{3, 4}};
  pointless.addArc(one);
  EXPECT_THAT(pointless.document(""), Not(HasSubstr("\nstroke ")));
}

TEST(PostScript, TellsWhetherTheFileWasWritten) {
  PostScriptPage page;
  page.addNode({0, 0, 60, 20}, "obj_0", kGreen);
  const ScratchDirectory directory;
  EXPECT_TRUE(page.write((directory / "a.ps").c_str(), "t"));
  EXPECT_EQ(read_file(directory / "a.ps"), page.document("t"));
  EXPECT_FALSE(page.write((directory / "nowhere/a.ps").c_str(), "t"));
  EXPECT_FALSE(page.write("/dev/full", "t"));
}

}  // namespace
