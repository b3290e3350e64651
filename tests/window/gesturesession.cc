/// @file
/// A person without a plan: random gestures on the built editor, with real pointer and key events.
///
///     gesturesession COUNT SEED SCENE...
///
/// Works on copies of the scenes. Ends with 0 when the editor lived through all of it, said nothing of memory
/// errors or undefined behaviour, and saved only files that open. The seed repeats a session, so far as the
/// server's timing does.
#include <algorithm>
#include <exception>
#include <iostream>
#include <iterator>
#include <random>
#include <stdexcept>

#include "tests/support/editor.h"
#include "tests/support/places.h"

namespace {

namespace fs = std::filesystem;
using support::Editor;
using support::GraphState;
using support::Point;
using support::WidgetInfo;

class Session {
 public:
  Session(unsigned seed, const std::vector<fs::path>& scenes) : random_(seed) {
    for (const fs::path& scene : scenes) {
      scenes_.push_back(files_.path() / scene.filename());
      fs::copy_file(scene, scenes_.back());
    }
    editor_.open(scenes_.front());
    toggleEditMode();
  }

  void run(int count) {
    constexpr int kBetweenSaves = 100;
    for (int i = 1; i <= count; ++i) {
      gesture();
      answerDialogs();
      if (i % kBetweenSaves == 0 || i == count) save();
    }
    check(editor_.quit() == 0, "the editor ends in order");
    report();
    check(editor_.errors().find("runtime error") == std::string::npos, "there is no undefined behaviour");
  }

 private:
  /// How often what was asked for, by the editor's traces.
  void report() {
    const std::string output = editor_.output();
    for (const std::string_view trace :
         {"File name: ", "In newArcCallback", "In arcMovedCallback", "In newNodeCallback", "Delete Link.",
          "In defaultActionCallback", " is changed."}) {
      int count = 0;
      for (auto at = output.find(trace); at != output.npos; at = output.find(trace, at + 1)) ++count;
      std::cout << count << "  " << trace << "\n";
    }
  }

  void check(bool holds, const std::string& what) {
    if (!holds) throw std::runtime_error("not so: " + what + "\n" + editor_.errors());
  }
  std::size_t below(std::size_t n) { return n == 0 ? 0 : random_() % n; }
  template <class Choices>
  const auto& any(const Choices& choices) {
    return *(std::begin(choices) + static_cast<std::ptrdiff_t>(below(std::size(choices))));
  }
  support::Held maybeHeld() {
    static const support::Held kHeld[] = {{}, {}, {"Shift_L"}, {"Control_L"}};
    return any(kHeld);
  }

  static bool inView(const GraphState& graph, Point p) {
    const auto& view = graph.view;
    return p.x > view.x && p.y > view.y && p.x < view.x + view.width && p.y < view.y + view.height;
  }

  /// A place in the graph: often a node, an arc or its handle.
  Point place(const GraphState& graph) {
    const auto& view = graph.view;
    std::vector<Point> places{
        {view.x + 5 + static_cast<int>(below(static_cast<std::size_t>(view.width - 10))),
         view.y + 5 + static_cast<int>(below(static_cast<std::size_t>(view.height - 10)))}};
    if (!graph.nodes.empty()) places.push_back(any(graph.nodes).box.centre());
    if (!graph.nodes.empty()) places.push_back(any(graph.nodes).box.centre());
    if (!graph.arcs.empty()) {
      const auto& arc = any(graph.arcs);
      places.insert(places.end(), {arc.middle, arc.parent_handle, arc.child_handle});
    }
    const Point chosen = any(places);
    return inView(graph, chosen) ? chosen : places.front();
  }

  /// The middle of a node that is in view, if there is one.
  Point node(const GraphState& graph) {
    std::vector<Point> places;
    for (const auto& each : graph.nodes)
      if (inView(graph, each.box.centre())) places.push_back(each.box.centre());
    return places.empty() ? place(graph) : any(places);
  }

  void gesture() {
    if (!editing_ && below(3) == 0) toggleEditMode();
    const GraphState graph = editor_.graph();
    support::XDriver& driver = editor_.driver();
    switch (below(13)) {
      case 0:
      case 1:
      case 2:
        driver.drag(node(graph), node(graph), 1, {"Control_L"});
        break;
      case 3:
        moveArc(graph);
        break;
      case 4:
      case 12:
        driver.drag(place(graph), place(graph), below(8) == 0 ? 2 : 1, maybeHeld());
        break;
      case 5:
        driver.click(place(graph), 1, maybeHeld());
        key();
        break;
      case 6:
        driver.doubleClick(place(graph));
        fillIn();
        break;
      case 7:
        driver.wheel(place(graph), below(2) == 0 ? 2 : -2, maybeHeld());
        break;
      case 8:
        key();
        break;
      case 9:
        editor_.click("strip/zoomFit");
        break;
      default:
        menu();
    }
    editor_.settle();
  }

  /// Selects an arc and drags one of its ends to a node.
  void moveArc(const GraphState& graph) {
    if (graph.arcs.empty()) return;
    const Point middle = any(graph.arcs).middle;
    if (!inView(graph, middle)) return;
    editor_.driver().click(middle);
    editor_.settle();
    for (const auto& arc : editor_.graph().arcs) {
      const Point handle = below(2) == 0 ? arc.child_handle : arc.parent_handle;
      if (!arc.selected || !inView(graph, handle)) continue;
      editor_.driver().drag(handle, node(graph));
      return;
    }
  }

  void toggleEditMode() {
    editor_.toggleEditMode();
    editing_ = !editing_;
  }

  void key() {
    struct Key {
      const char* name;
      support::Held held = {};
    };
    static const Key kKeys[] = {{"Delete"},
                                {"Delete"},
                                {"Escape"},
                                {"Return"},
                                {"Tab"},
                                {"Down"},
                                {"Right"},
                                {"z", {"Control_L"}},
                                {"z", {"Control_L"}},
                                {"y", {"Control_L"}},
                                {"z", {"Control_L", "Shift_L"}}};
    const Key& key = any(kKeys);
    editor_.driver().key(key.name, key.held);
  }

  void menu() {
    static const std::vector<std::string> kItems[] = {{"File", "New"},
                                                      {"File", "Save"},
                                                      {"Edit", "Delete Link"},
                                                      {"View", "Default"},
                                                      {"View", "Display Texture Image"},
                                                      {"KAVO tool", "kill [pb]xsend"}};
    if (below(4) == 0) {
      editor_.chooseMenu({"File", "Open"});
      editor_.chooseFile(any(scenes_));
    } else if (below(8) == 0 && sensitive("FilePane/Recover")) {
      editor_.chooseMenu({"File", "Recover..."});
    } else if (below(8) == 0) {
      toggleEditMode();
    } else {
      const auto& item = any(kItems);
      if (item[0] != "KAVO tool" || sensitive("menuBar/KAVOtool")) editor_.chooseMenu(item);
    }
  }
  bool sensitive(std::string_view where) {
    const auto widget = editor_.find([&](const WidgetInfo& w) { return w.isAt(where); });
    return widget && widget->sensitive;
  }

  /// Types into a text field of a dialog, if one has opened.
  void fillIn() {
    static const char* const kTexts[] = {"", "0", "7", "-1", "ffffffff", "1e99", "a name", "0.5"};
    editor_.settle();
    std::vector<WidgetInfo> fields;
    for (const WidgetInfo& w : editor_.widgets())
      if (w.viewable && w.sensitive && w.class_name == "XmTextField" && inDialog(w)) fields.push_back(w);
    if (fields.empty()) return;
    editor_.driver().click(any(fields).box.centre());
    editor_.driver().key("a", {"Control_L"});
    editor_.driver().type(any(kTexts));
  }
  static bool inDialog(const WidgetInfo& w) { return w.path.find("_popup/") != std::string::npos; }

  /// Until none is up: OK, Apply or Cancel, as it comes.
  void answerDialogs() {
    for (int i = 0; i < 200; ++i) {
      editor_.settle();
      std::vector<Point> buttons;
      for (const WidgetInfo& w : editor_.widgets()) {
        const bool answers = w.label == "OK" || w.label == "Cancel" || (w.label == "Apply" && i < 5);
        if (w.viewable && w.sensitive && answers && inDialog(w)) buttons.push_back(w.box.centre());
      }
      if (buttons.empty()) return;
      editor_.driver().click(any(buttons));
    }
    throw std::runtime_error("a dialog stays");
  }

  void save() {
    editor_.chooseMenu({"File", "Save"});
    editor_.answer(Editor::kQuestion, "OK");
    answerDialogs();
    for (const fs::path& scene : scenes_) {
      support::Process::Start info;
      info.command = {support::built_program("cli/quilscene").string(), "info", scene.string()};
      check(support::Process(info).waitForExit() == 0, scene.string() + " opens");
    }
  }

  std::mt19937 random_;
  const ScratchDirectory files_;
  std::vector<fs::path> scenes_;
  const support::XServer server_;
  const support::WindowManager manager_{server_};
  Editor editor_{server_};
  bool editing_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::cerr << "usage: gesturesession COUNT SEED SCENE...\n";
    return 2;
  }
  try {
    const auto seed = static_cast<unsigned>(std::stoul(argv[2]));
    std::cout << "seed " << seed << std::endl;
    Session(seed, {argv + 3, argv + argc}).run(std::stoi(argv[1]));
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 1;
  }
}
