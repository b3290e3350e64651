/// @file
/// Scenes, fake commands and the command line's opinion for tests of the editor.
#include "tests/window/editorfixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <utility>

#include "qilib/checksizes.h"
#include "qilib/opensave.h"
#include "qilib/writer.h"
#include "samples/scenes.h"
#include "tests/support/places.h"
#include "tests/window/screen.h"

namespace fs = std::filesystem;

using support::Editor;
using support::Process;

testing::AssertionResult sameBytes(const std::string& found, const std::string& expected) {
  const auto [at, other] = std::mismatch(found.begin(), found.end(), expected.begin(), expected.end());
  if (at == found.end() && other == expected.end()) return testing::AssertionSuccess();
  return testing::AssertionFailure() << found.size() << " bytes differ from " << expected.size()
                                     << " bytes at " << at - found.begin();
}

EditorTest::EditorTest(int depth, support::Program::Start how, int width, int height)
    : server_(depth, width, height), editor_(server_, start(std::move(how))) {}

support::Program::Start EditorTest::start(support::Program::Start how) const {
  const fs::path bin = files_ / "bin";
  fs::create_directories(bin);
  for (const char* name : {"killpxsend", "killbxsend"}) {
    write_file(bin / name, "#!/bin/sh\nbasename \"$0\" >>'" + path("commands") + "'\n");
    fs::permissions(bin / name, fs::perms::owner_all);
  }
  if (!how.directory.empty()) how.directory = files_.path() / how.directory;
  how.environment["XDG_STATE_HOME"] = path("state");
  how.environment["PATH"] = bin.string() + ":" + std::getenv("PATH");
  return how;
}

std::string EditorTest::data(const std::string& name) const {
  const std::string copy = path(name + ".quil");
  fs::copy_file(support::data_file(name + ".quil"), copy, fs::copy_options::overwrite_existing);
  return copy;
}

std::string EditorTest::table() const {
  Qis scene = samples::table();
  EXPECT_EQ(qiSaveAsQb2(scene, path("table.quil")), 1);
  return path("table.quil");
}

std::string EditorTest::dangling(std::uint32_t count) const {
  Qis scene = samples::table();
  qi::Obj& obj = scene.obj_list.records[0];
  obj.children.resize(count);
  for (std::uint32_t i = 0; i < count; ++i) obj.children[i] = 1000 + i;
  obj.fixed.child_count = count;
  qi::correct_sizes(scene, qi::kFromStructures, [](const qi::Message&) {});
  EXPECT_EQ(qiSaveAsQb2(scene, path("dangling.quil")), 1);
  return path("dangling.quil");
}

std::string EditorTest::commandsRun() const {
  return fs::exists(path("commands")) ? read_file(path("commands")) : "";
}

std::string EditorTest::quilscene(const std::vector<std::string>& arguments, int status) const {
  Process::Start start;
  start.command = arguments;
  start.command.insert(start.command.begin(), support::built_program("cli/quilscene").string());
  start.environment["XDG_STATE_HOME"] = path("state");
  start.output = path("quilscene.output");
  start.errors = path("quilscene.errors");
  EXPECT_EQ(Process(start).waitForExit(), status) << read_file(start.errors);
  return read_file(start.output);
}

EditorTest::Edited EditorTest::edited(const std::string& scene, const std::string& commands,
                                      bool accepted) const {
  write_file(path("script"), commands);
  const std::string trace =
      quilscene({"edit", scene, "-o", path("edited.quil"), "--script", path("script")}, accepted ? 0 : 1);
  return {read_file(path("edited.quil")), trace};
}

std::vector<std::string> EditorTest::shownArcs() {
  std::vector<std::string> arcs;
  for (const auto& arc : editor_.graph().arcs) arcs.push_back("arc " + arc.parent + " " + arc.child);
  std::sort(arcs.begin(), arcs.end());
  return arcs;
}

std::vector<std::string> EditorTest::arcsOf(const std::string& file) const {
  std::vector<std::string> arcs;
  std::istringstream lines(quilscene({"graph", file}));
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("arc ")) arcs.push_back(line);
  }
  std::sort(arcs.begin(), arcs.end());
  return arcs;
}

std::vector<std::string> EditorTest::selected() {
  std::vector<std::string> names;
  for (const auto& node : editor_.graph().nodes)
    if (node.selected) names.push_back(node.name);
  return names;
}

void EditorTest::press(std::string_view key, support::Held held) {
  editor_.driver().key(key, held);
  editor_.settle();
}

void EditorTest::clickNode(std::string_view name, unsigned button, support::Held held) {
  editor_.driver().click(editor_.graph().node(name).box.centre(), button, held);
}

void EditorTest::find(const std::string& text) {
  editor_.driver().key("f", {"Control_L"});
  editor_.await("the focus in the field",
                [](const support::WidgetInfo& w) { return w.isAt("strip/find") && w.focused; });
  editor_.driver().type(text);
  editor_.settle();
}

support::WidgetInfo EditorTest::popupItem(const std::string& menu, const std::string& label) {
  return editor_.await(label, [&](const support::WidgetInfo& w) {
    return w.viewable && w.label == label && w.path.find("/" + menu + "/") != std::string::npos;
  });
}

void EditorTest::choosePopupItem(const std::string& menu, const std::string& label) {
  editor_.driver().clickInMenu(popupItem(menu, label).box.centre());
  editor_.settle();
}

unsigned EditorTest::colorAt(support::Point place) {
  editor_.settle();
  const Picture screen = pictureOf(server_.display());
  return shownColor(server_.display(),
                    screen.pixels[static_cast<std::size_t>(place.y * screen.width + place.x)]);
}

std::string EditorTest::newOutput() {
  const std::string all = editor_.output();
  const std::string fresh = all.substr(read_);
  read_ = all.size();
  return fresh;
}
