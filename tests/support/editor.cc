/// @file
/// The editor's menus, dialogs and gestures.
#include "tests/support/editor.h"
#include "tests/support/places.h"

#include <algorithm>
#include <stdexcept>

namespace support {

namespace {

Program::Start completed(Program::Start start) {
  start.executable = built_program("editor/quileditor");
  if (!start.home_files.contains(".quilcnvops"))
    start.home_files[".quilcnvops"] = read_file(project_file("samples/quilcnvops.template"));
  return start;
}

}  // namespace

const GraphState::Node& GraphState::node(std::string_view name) const {
  const auto found = std::find_if(nodes.begin(), nodes.end(), [&](const Node& n) { return n.name == name; });
  if (found == nodes.end()) throw std::out_of_range("no node " + std::string(name));
  return *found;
}

bool GraphState::hasNode(std::string_view name) const {
  return std::any_of(nodes.begin(), nodes.end(), [&](const Node& n) { return n.name == name; });
}

const GraphState::Arc& GraphState::arc(std::string_view parent, std::string_view child) const {
  const auto found = std::find_if(arcs.begin(), arcs.end(),
                                  [&](const Arc& a) { return a.parent == parent && a.child == child; });
  if (found == arcs.end())
    throw std::out_of_range("no arc " + std::string(parent) + " " + std::string(child));
  return *found;
}

int GraphState::countArcs(std::string_view parent, std::string_view child) const {
  return static_cast<int>(std::count_if(
      arcs.begin(), arcs.end(), [&](const Arc& a) { return a.parent == parent && a.child == child; }));
}

Editor::Editor(const XServer& server, Start start) : Program(server, completed(std::move(start))) {
  graphWidget();
}

WidgetInfo Editor::graphWidget() {
  return await("the graph", [](const WidgetInfo& w) { return w.class_name == "SgGraph" && w.viewable; });
}

std::string Editor::message(std::string_view dialog) { return await(dialog).label; }

void Editor::answer(std::string_view dialog, std::string_view button) {
  click(std::string(dialog) + "/" + std::string(button));
  if (!waitFor([&] { return !asks(dialog); })) throw std::runtime_error(std::string(dialog) + " stays");
}

bool Editor::asks(std::string_view dialog) {
  return find([&](const WidgetInfo& w) { return w.isAt(dialog) && w.managed; }).has_value();
}

void Editor::chooseFile(const std::filesystem::path& path) {
  fillIn(std::string(kFiles) + "/Text", path.string());
  answer(kFiles, "OK");
}

void Editor::key(std::string_view keysym, Held held) {
  await("the focus in the window", [](const WidgetInfo& w) { return w.class_name == "SgGraph" && w.active; });
  driver().key(keysym, held);
}

void Editor::open(const std::filesystem::path& path) {
  chooseMenu({"File", "Open"});
  chooseFile(path);
  settle();
}

void Editor::saveAs(const std::filesystem::path& path) {
  chooseMenu({"File", "Save As..."});
  chooseFile(path);
  if (asks(kQuestion)) answer(kQuestion, "OK");
  settle();
}

void Editor::toggleEditMode() { chooseMenu({"Edit", "Edit Mode"}); }

std::optional<int> Editor::quit() {
  chooseMenu({"File", "Quit"});
  return process().waitForExit();
}

GraphState Editor::graph() {
  GraphState state;
  for (const std::vector<std::string>& line : ask({"graph", graphWidget().id})) {
    const auto number = [&](std::size_t i) { return std::stoi(line.at(i)); };
    const auto box = [&](std::size_t i) {
      return Box{number(i), number(i + 1), number(i + 2), number(i + 3)};
    };
    const auto point = [&](std::size_t i) { return Point{number(i), number(i + 1)}; };
    const auto flag = [&](char c) { return line.back().find(c) != std::string::npos; };
    if (line[0] == "view") {
      state.zoom = std::stod(line.at(1));
      state.view = box(2);
    } else if (line[0] == "node") {
      state.nodes.push_back({line.at(1), line.at(2), box(3), std::stoul(line.at(7)), flag('m'), flag('t'),
                             flag('f'), flag('h')});
    } else {
      state.arcs.push_back({line.at(1), line.at(2), point(3), point(5), point(7), flag('t')});
    }
  }
  return state;
}

GraphState Editor::wholeGraph() {
  GraphState state = graph();
  const auto inView = [&](const GraphState::Node& node) {
    const Box &view = state.view, &box = node.box;
    if (node.hidden) return true;
    return box.x >= view.x && box.y >= view.y && box.x + box.width <= view.x + view.width &&
           box.y + box.height <= view.y + view.height;
  };
  if (std::all_of(state.nodes.begin(), state.nodes.end(), inView)) return state;
  click("strip/zoomFit");
  state = graph();
  if (!std::all_of(state.nodes.begin(), state.nodes.end(), inView))
    throw std::logic_error("the graph is too large");
  return state;
}

void Editor::drawArc(std::string_view parent, std::string_view child) {
  const GraphState state = wholeGraph();
  driver().drag(state.node(parent).box.centre(), state.node(child).box.centre(), 1, {"Control_L"});
  settle();
}

void Editor::doubleClickNode(std::string_view name) {
  driver().doubleClick(wholeGraph().node(name).box.centre());
  settle();
}

void Editor::selectArc(std::string_view parent, std::string_view child, Held held) {
  driver().click(wholeGraph().arc(parent, child).middle, 1, held);
  settle();
}

void Editor::moveEnd(std::string_view parent, std::string_view child, Point GraphState::Arc::*handle,
                     std::string_view to) {
  selectArc(parent, child);
  const GraphState state = graph();
  driver().drag(state.arc(parent, child).*handle, state.node(to).box.centre());
  settle();
}

void Editor::moveChildEnd(std::string_view parent, std::string_view child, std::string_view new_child) {
  moveEnd(parent, child, &GraphState::Arc::child_handle, new_child);
}

void Editor::moveParentEnd(std::string_view parent, std::string_view child, std::string_view new_parent) {
  moveEnd(parent, child, &GraphState::Arc::parent_handle, new_parent);
}

}  // namespace support
