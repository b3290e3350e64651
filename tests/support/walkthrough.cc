/// @file
/// A walk through the editor with real pointer and key events on a virtual display: opens a sample, re-wires
/// it, saves it, and checks what was saved. Leaves a picture of every step.
///
///     walkthrough SCENES PICTURES
///
/// SCENES holds table.quil and receives table-rewired.quil. Ends with 0 when every step did what it should.
#include <algorithm>
#include <exception>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "tests/support/editor.h"
#include "tests/support/places.h"

namespace {

namespace fs = std::filesystem;

void check(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error("not so: " + what);
}

/// The lines of `quilscene graph`, sorted.
std::vector<std::string> graphLines(const fs::path& file) {
  const ScratchDirectory scratch;
  support::Process::Start start;
  start.command = {support::built_program("cli/quilscene").string(), "graph", file.string()};
  start.output = scratch / "graph";
  check(support::Process(start).waitForExit() == 0, file.string() + " opens");
  std::istringstream text(read_file(start.output));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  std::sort(lines.begin(), lines.end());
  return lines;
}

class Walkthrough {
 public:
  Walkthrough(fs::path scenes, fs::path pictures)
      : scenes_(fs::absolute(scenes)), pictures_(fs::absolute(pictures)) {}

  void walk() {
    step("started");

    editor_.open(scenes_ / "table.quil");
    check(editor_.graph().hasArc("obj_5", "anim_0"), "the graph shows the table");
    step("opened");

    editor_.toggleEditMode();
    editor_.drawArc("obj_0", "mat_1");
    check(editor_.graph().hasArc("obj_0", "mat_1"), "a leg has the red paint");
    step("arc-drawn");

    editor_.moveChildEnd("shape_1", "mat_0", "mat_1");
    const support::GraphState moved = editor_.graph();
    check(moved.hasArc("shape_1", "mat_1") && !moved.hasArc("shape_1", "mat_0"),
          "all legs have the red paint");
    step("arc-moved");

    editor_.selectArc("obj_5", "anim_0");
    step("arc-selected");
    editor_.chooseMenu({"Edit", "Delete Link"});
    check(!editor_.graph().hasArc("obj_5", "anim_0"), "the box has no animation");
    step("arc-deleted");

    const fs::path saved = scenes_ / "table-rewired.quil";
    fs::remove(saved);
    editor_.saveAs(saved);
    step("saved");
    check(editor_.quit() == 0, "the editor ends in order");
    check(editor_.errors().find("orrected") == std::string::npos, "no size had to be corrected");

    std::vector<std::string> expected = graphLines(scenes_ / "table.quil");
    for (const char* gone : {"arc shape_1 mat_0", "arc obj_5 anim_0", "node anim_0"})
      std::erase(expected, gone);
    expected.insert(expected.end(), {"arc obj_0 mat_1", "arc shape_1 mat_1"});
    std::sort(expected.begin(), expected.end());
    check(graphLines(saved) == expected, "the saved file holds just these changes");
    std::cout << saved.string() << " holds the three changes.\n";
  }

  /// For when a step failed: what the screen shows, and what the program said.
  void leaveEvidence() {
    step("failed");
    std::cerr << editor_.errors();
  }

 private:
  void step(const std::string& name) {
    if (editor_.process().running()) editor_.settle();
    const fs::path picture = pictures_ / (std::to_string(++steps_) + "-" + name + ".png");
    server_.screenshot(picture);
    std::cout << picture.string() << "\n";
  }

  fs::path scenes_, pictures_;
  support::XServer server_;
  support::WindowManager manager_{server_};
  support::Editor editor_{server_};
  int steps_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: walkthrough SCENES PICTURES\n";
    return 2;
  }
  try {
    Walkthrough walkthrough(argv[1], argv[2]);
    try {
      walkthrough.walk();
      return 0;
    } catch (const std::exception&) {
      walkthrough.leaveEvidence();
      throw;
    }
  } catch (const std::exception& problem) {
    std::cerr << "walkthrough: " << problem.what() << "\n";
    return 1;
  }
}
