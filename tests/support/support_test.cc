/// @file
/// The test support itself: servers, fake devices, and the probe in a small program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "tests/support/places.h"
#include "tests/support/process.h"
#include "tests/support/program.h"
#include "tests/support/xdriver.h"
#include "tests/support/xserver.h"

namespace support {
namespace {

using testing::HasSubstr;

const std::string kTinyProgram = built_program("tests/support/tiny_program");

/// What a command prints.
std::string outputOf(const std::vector<std::string>& command) {
  const ScratchDirectory scratch;
  Process::Start start;
  start.command = command;
  start.output = scratch.path() / "output";
  EXPECT_EQ(Process(start).waitForExit(), 0) << command[0];
  return read_file(start.output);
}

TEST(Process, ReportsExitCodesAndSignals) {
  Process::Start start;
  start.command = {"sh", "-c", "exit 7"};
  EXPECT_EQ(Process(start).waitForExit(), 7);
  start.command = {"sh", "-c", "kill -TERM $$"};
  EXPECT_EQ(Process(start).waitForExit(), 128 + SIGTERM);
}

TEST(Process, RefusesAProgramThatIsNotThere) {
  Process::Start start;
  start.command = {"/no/such/program"};
  EXPECT_THROW(Process{start}, std::runtime_error);
}

TEST(Process, IsEndedWithItsObject) {
  pid_t id = 0;
  {
    Process::Start start;
    start.command = {"sleep", "1000"};
    Process process(start);
    EXPECT_TRUE(process.running());
    id = process.id();
  }
  EXPECT_NE(kill(id, 0), 0);
}

TEST(Process, DiesWithAParentThatCrashes) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const pid_t child = fork();
  if (child == 0) {
    Process::Start start;
    start.command = {"sleep", "1000"};
    const Process process(start);
    const pid_t id = process.id();
    _exit(write(ends[1], &id, sizeof id) == sizeof id ? 0 : 1);  // without the destructor, as in a crash
  }
  pid_t grandchild = 0;
  ASSERT_EQ(read(ends[0], &grandchild, sizeof grandchild), ssize_t{sizeof grandchild});
  const auto gone = [grandchild] {  // nobody here may reap it: a zombie counts as gone
    const std::filesystem::path status = "/proc/" + std::to_string(grandchild) + "/stat";
    return !exists(status) || read_file(status).find(") Z") != std::string::npos;
  };
  EXPECT_TRUE(waitFor(gone));
  waitpid(child, nullptr, 0);
  close(ends[0]);
  close(ends[1]);
}

class XServerDepth : public testing::TestWithParam<int> {};

TEST_P(XServerDepth, GivesThatDepthAndScreenshots) {
  const XServer server(GetParam());
  const std::string info = outputOf({"xdpyinfo", "-display", server.display()});
  EXPECT_THAT(info, HasSubstr("depth of root window:    " + std::to_string(GetParam())));
  const std::string id = info.substr(info.find("default visual id:  ") + 20, 4);
  const std::string visual = info.substr(info.find("visual id:    " + id));
  EXPECT_THAT(visual.substr(0, visual.find("depth:")),
              HasSubstr(GetParam() == 8 ? "PseudoColor" : "TrueColor"));

  const ScratchDirectory scratch;
  server.screenshot(scratch.path() / "pictures" / "screen.png");
  EXPECT_EQ(read_file(scratch.path() / "pictures" / "screen.png").substr(1, 3), "PNG");
}

INSTANTIATE_TEST_SUITE_P(All, XServerDepth, testing::Values(8, 16, 24), testing::PrintToStringParamName());

TEST(XServer, ManyStartAtOnce) {
  const XServer a, b, c;
  EXPECT_NE(a.display(), b.display());
  EXPECT_NE(b.display(), c.display());
  EXPECT_NE(a.display(), c.display());
}

TEST(WidgetInfo, PlacesAreTailsWithGaps) {
  WidgetInfo widget;
  widget.path = "/app/window/form/box/ok";
  for (const std::string_view where : {"ok", "box/ok", "form/ok", "app/ok", "app/form/box/ok"}) {
    EXPECT_TRUE(widget.isAt(where)) << where;
  }
  for (const std::string_view where : {"box", "ok/box", "box/form/ok", "other/ok", "k", "app/app/ok"}) {
    EXPECT_FALSE(widget.isAt(where)) << where;
  }
}

/// A small program under a window manager.
class Tiny : public testing::Test {
 protected:
  Tiny() : program_(server_, {.executable = kTinyProgram}) {}

  XServer server_;
  WindowManager manager_{server_};
  Program program_;
};

TEST_F(Tiny, RunsInAHomeOfItsOwnAndHidesTheLogin) {
  EXPECT_EQ(program_.output(),
            "started as " + kTinyProgram + " in " + program_.home().string() + " by nobody\n");
}

TEST_F(Tiny, IsToldItsNameAndArguments) {
  Program named(server_, {.executable = kTinyProgram, .name = "tiny", .home_files = {{".opts", "hello"}}});
  EXPECT_THAT(named.output(), HasSubstr("started as tiny in"));
  EXPECT_EQ(read_file(named.home() / ".opts"), "hello");
}

TEST_F(Tiny, ShowsItsWidgets) {
  const WidgetInfo area = program_.await("window/area");
  EXPECT_EQ(area.class_name, "XmDrawingArea");
  EXPECT_EQ(area.box.width, 300);
  EXPECT_EQ(program_.resource(area, "height"), "200");
  EXPECT_THROW(program_.resource(area, "noSuchThing"), std::runtime_error);
  const auto labelled = [&](std::string_view label) {
    return program_.find([&](const WidgetInfo& w) { return w.label == label; });
  };
  ASSERT_TRUE(labelled("File"));
  EXPECT_EQ(labelled("File")->name(), "file");
  ASSERT_TRUE(labelled("A tiny program"));
  ASSERT_TRUE(labelled("Grey"));
  EXPECT_FALSE(labelled("Grey")->sensitive);
  EXPECT_FALSE(labelled("Grey")->viewable);
}

TEST_F(Tiny, TakesTypedText) {
  program_.fillIn("field", "what was there");
  program_.fillIn("field", "Save /as_it: {x} \"Q\"!");
  program_.driver().key("BackSpace");
  program_.settle();
  const WidgetInfo field = program_.await("field");
  EXPECT_EQ(field.text, "Save /as_it: {x} \"Q\"");
  EXPECT_TRUE(field.focused);
}

TEST_F(Tiny, TakesPointerEventsWhereTheWidgetIs) {
  const WidgetInfo area = program_.await("area");
  XDriver& driver = program_.driver();
  const std::size_t before = program_.output().size();
  driver.drag({area.box.x + 10, area.box.y + 20}, {area.box.x + 110, area.box.y + 90}, 1, {"Control_L"});
  driver.wheel(area.box.centre(), -1, {"Shift_L"});
  EXPECT_EQ(program_.output().substr(before),
            "press 1 at 10,20 state 4\nrelease 1 at 110,90 state 4\n"
            "press 5 at 150,100 state 1\nrelease 5 at 150,100 state 1\n");
}

TEST_F(Tiny, TogglesAreReadInSubmenus) {
  program_.chooseMenu({"File", "More", "Deep"});
  EXPECT_TRUE(
      program_.await("toggle set", [](const WidgetInfo& w) { return w.isAt("more/Deep") && w.set; }).managed);
}

TEST_F(Tiny, AnswersInsideAModalLoop) {
  program_.chooseMenu({"File", "Ask..."});
  const WidgetInfo box = program_.await("question");
  EXPECT_EQ(box.label, "Really?\nTwo lines.");
  program_.click("question/OK");
  EXPECT_THAT(program_.output(), HasSubstr("\nyes\n"));
  EXPECT_FALSE(program_.find([](const WidgetInfo& w) { return w.isAt("question"); }));
}

TEST_F(Tiny, TheProbeStaysOutOfItsCommands) {
  program_.chooseMenu({"File", "Quit"});
  EXPECT_EQ(program_.process().waitForExit(), 0);
}

TEST_F(Tiny, ACrashIsReportedWithItsErrors) {
  program_.chooseMenu({"File", "Crash"});
  ASSERT_EQ(program_.process().waitForExit(), 3);
  EXPECT_THAT([&] { program_.settle(); },
              testing::ThrowsMessage<std::runtime_error>(HasSubstr("going down")));
}

}  // namespace
}  // namespace support
