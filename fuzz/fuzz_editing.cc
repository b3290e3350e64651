/// @file
/// Everything that a person does with a scene, done to any bytes that open: its graph is laid out, its
/// textures shown, its dialogs opened, filled in and applied, its arcs and elements added, moved and deleted.
/// Then it is saved, and what is saved must open.
///
/// Run like fuzz_scene.
#include <cstdint>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <utility>

#include "dialogs/values/dispatch.h"
#include "dialogs/values/itemtext.h"
#include "editor/model/currentscene.h"
#include "editor/model/nodenames.h"
#include "editor/model/scenegraph.h"
#include "editor/model/texturepicture.h"
#include "editor/model/tracedlinks.h"
#include "fuzz/scenefile.h"
#include "graphlayout/layout.h"
#include "qilib/builders.h"
#include "qilib/checksizes.h"
#include "qilib/opensave.h"
#include "qilib/references.h"
#include "qilib/writer.h"

namespace {

constexpr std::size_t kDialogs = 40;  // of one scene
constexpr std::size_t kEdits = 60;

class Person {
 public:
  explicit Person(std::size_t seed) : random_(static_cast<std::minstd_rand::result_type>(seed)) {}

  /// Looks at the graph and its textures, and opens some of the dialogs.
  void look() {
    graph_ = scene_graph(*qis);
    const std::vector<graphlayout::Size> sizes(graph_.nodes.size(), {60, 20});
    std::vector<graphlayout::Arc> arcs;
    for (const auto& [parent, child] : graph_.arcs) arcs.push_back({parent, child});
    const auto drawn = graphlayout::layout(sizes, arcs);
    require(drawn.nodes.size() == sizes.size(), "every node has its place");
    for (std::size_t i = 0; i < graph_.nodes.size() && i < kDialogs; ++i) {
      const std::string& node = graph_.nodes[below(graph_.nodes.size())].name;
      texture_picture(*qis, indexofnd(node));
      fill_in(node);
    }
  }

  void edit() {
    switch (below(4)) {
      case 0: {
        const auto [parent, child] = likely_pair();
        quilAddLink(*qis, parent, child);
        break;
      }
      case 1: {
        const auto [parent, child] = drawn_pair();
        quilDeleteLink(*qis, parent, child);
        break;
      }
      case 2: {
        const auto [parent, child] = drawn_pair();
        const auto [other_parent, other_child] = likely_pair();
        if (below(2) == 0)
          quilModifyLink(*qis, parent, child, parent, other_child);
        else
          quilModifyLink(*qis, parent, child, other_parent, child);
        break;
      }
      default:
        build();
    }
  }

 private:
  std::size_t below(std::size_t n) { return n == 0 ? 0 : random_() % n; }

  std::string node(Word kind) {
    const std::size_t count = qi::record_count(*qis, kind);
    return node_name(kind, static_cast<Word>(below(count + 1)));
  }
  std::pair<std::string, std::string> likely_pair() {
    const auto& row = qi::references()[below(qi::references().size())];
    return {node(row.parent), node(row.child)};
  }
  /// An arc that was there when the graph was looked at.
  std::pair<std::string, std::string> drawn_pair() {
    if (graph_.arcs.empty()) return likely_pair();
    const auto& arc = graph_.arcs[below(graph_.arcs.size())];
    return {graph_.nodes[arc.parent].name, graph_.nodes[arc.child].name};
  }

  void fill_in(const std::string& node) {
    static const std::string kTexts[] = {"", "0", "1", "-1", "0xffffffff", "1e99", "nan", "a name", "07"};
    const auto on = values::dialog_of_node(node);
    auto top = on ? on->dialog->open(*qis, on->number) : nullptr;
    if (!top) return;
    std::vector<std::pair<std::string, std::string>> entries;
    values::for_each_shown(*top, [&](const std::string& path, const values::Item& item) {
      values::shown_text(item, on->dialog->lines());
      if (below(3) != 0) return;
      const std::size_t options = item.look().entries.size();
      entries.emplace_back(path, options ? std::to_string(below(options)) : kTexts[below(std::size(kTexts))]);
    });
    for (const auto& [path, text] : entries) values::edit_text(*top, path, text);
    values::applyChanges(*qis, on->dialog->name(), *top, on->number);
  }

  void build() {
    const auto number = [this](Word kind) {
      return static_cast<Word>(below(qi::record_count(*qis, kind) + std::size_t{1}));
    };
    const auto few = [this] { return static_cast<int>(below(4)) - 1; };
    switch (below(9)) {
      case 0:
        qiAddChainRoot(*qis);
        break;
      case 1:
        qiAddJoint(*qis);
        break;
      case 2:
        qiAddEffector(*qis);
        break;
      case 3:
        qiAddWeightGroup(*qis, few());
        break;
      case 4:
        qiAddEnvelope(*qis, few(), few(), few(), few(), number(qi::kShapeTag));
        break;
      case 5:
        qiAddClusterShape(*qis, few(), few(), number(qi::kShapeTag));
        break;
      case 6:
        qiAddMorphPart(*qis, number(qi::kEnvelopeTag));
        break;
      case 7:
        qiAddWeightedPart(*qis, number(qi::kEnvelopeTag));
        break;
      default:
        qiAddCluster(*qis, number(qi::kClusterTag));
    }
  }

  std::minstd_rand random_;
  SceneGraph graph_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static MemoryFile file;
  const std::string bytes(data, data + size);
  file.fill(bytes);
  auto opened = std::make_unique<Qis>();
  if (!qiOpenQb(file.name(), *opened)) return 0;
  qis = std::move(opened);
  Person person(std::hash<std::string>{}(bytes));
  person.look();
  for (std::size_t i = 0; i < kEdits; ++i) person.edit();
  person.look();
  for (const int mode : {qi::kBlocksAsRead, qi::kFromStructures}) {
    Qis saved = *qis;
    qiCheckSizes(saved, mode);
    file.fill(written(saved, mode));
    Qis again;
    require(qiOpenQb(file.name(), again) == 1, "what was edited and saved opens");
    require(qiCheckSizes(again, mode) == 0, "its sizes are right");
  }
  return 0;
}
