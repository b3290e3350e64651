/// @file
/// `quilscene tree`: the hierarchy of a scene as an outline.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "cli/commandline.h"
#include "cli/lines.h"
#include "cli/printable.h"
#include "cli/scenefile.h"
#include "editor/model/recordnames.h"
#include "editor/model/scenegraph.h"

namespace {

struct TreeRequest {
  std::string file;
};

void declare(CLI::App& line, TreeRequest& request) { take_file(line, request.file); }

/// Prints a graph node by node. What is below a node stands below it the first time that it comes.
class Outline {
 public:
  Outline(Qis& scene, const SceneGraph& graph) : scene_(scene), graph_(graph), states_(graph.nodes.size()) {
    begins_.resize(graph.nodes.size() + 1);
    for (const auto& arc : graph.arcs) ++begins_[arc.parent + 1];
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) begins_[i + 1] += begins_[i];
    children_.resize(graph.arcs.size());
    std::vector<std::size_t> next(begins_.begin(), begins_.end() - 1);
    for (const auto& arc : graph.arcs) children_[next[arc.parent]++] = arc.child;
  }

  void print() {
    std::vector<bool> has_parent(graph_.nodes.size());
    for (const auto& arc : graph_.arcs) has_parent[arc.child] = true;
    from(0);
    for (const bool in_a_loop : {false, true})
      for (std::uint32_t node = 0; node < graph_.nodes.size(); ++node)
        if (states_[node] == State::fresh && has_parent[node] == in_a_loop) from(node);
    lines_.flush();
  }

 private:
  enum class State : std::uint8_t { fresh, open, done };

  void from(std::uint32_t top) {
    enter(top);
    while (!path_.empty()) {
      auto& [node, next] = path_.back();
      if (next == begins_[node + 1]) {
        states_[node] = State::done;
        path_.pop_back();
        continue;
      }
      enter(children_[next++]);
    }
  }
  void enter(std::uint32_t node) {
    const bool is_leaf = begins_[node] == begins_[node + 1];
    const char* const note = states_[node] == State::open               ? " (loop)"
                             : states_[node] == State::done && !is_leaf ? " (see above)"
                                                                        : "";
    line(node, note);
    if (states_[node] != State::fresh) return;
    states_[node] = State::open;
    path_.push_back({node, begins_[node]});
  }
  /// Where the levels would run off any screen, their number stands in place of the blanks.
  void line(std::uint32_t node, const char* note) {
    constexpr std::size_t kMostIndented = 40;
    const std::size_t level = path_.size();
    std::string text(2 * std::min(level, kMostIndented), ' ');
    if (level > kMostIndented) text += std::string("[").append(std::to_string(level)) + "] ";
    text += graph_.nodes[node].name;
    const std::string name = record_name(scene_, graph_.nodes[node].name);
    if (!name.empty()) text.append(1, ' ').append(printable(name));
    lines_.add(text + note);
  }

  Qis& scene_;
  const SceneGraph& graph_;
  std::vector<State> states_;
  std::vector<std::size_t> begins_;  ///< of each node's children
  std::vector<std::uint32_t> children_;
  struct Step {
    std::uint32_t node;
    std::size_t next;
  };
  std::vector<Step> path_;
  Lines lines_;
};

Outcome run(const TreeRequest& request) {
  Qis scene;
  if (!open_scene(request.file, scene)) return Outcome::failed;
  const SceneGraph graph = scene_graph(scene);
  Outline(scene, graph).print();
  return Outcome::well;
}

}  // namespace

Work tree(CLI::App& line) { return work<TreeRequest>(line, declare, run); }
