/// @file
/// The references of a scene as a graph, and what is wrong with it.
#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "checks/parts.h"
#include "qilib/names.h"
#include "qilib/references.h"

namespace checks {
namespace {

/// Every record has a number among all records of the scene.
using Node = std::uint32_t;

/// A list as the references see it.
struct Kind {
  qi::ListInfo info{};
  Node first = 0;
  std::uint32_t count = 0;
  bool damaged = false;  ///< it may have had more records
  bool target = false;   ///< whether any reference can lead to it
};

/// Those that nothing but references from data lead to.
constexpr Word kDataKinds[] = {qi::kNameTag,  qi::Teximg::kTag, qi::CiImg::kTag,  qi::ColorPalette::kTag,
                               qi::Tri::kTag, qi::Weight::kTag, qi::kEnvelopeTag, qi::kClusterTag};

class Kinds {
 public:
  Kinds(const Qis& scene, const std::vector<Word>& damaged) {
    qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
      of(info.tag) = {info, nodes_, static_cast<std::uint32_t>(qi::record_count(list)),
                      std::ranges::find(damaged, info.tag) != damaged.end()};
      nodes_ += of(info.tag).count;
    });
    for (const qi::Reference& row : qi::references()) of(row.child).target = true;
    for (const Word tag : kDataKinds) of(tag).target = true;
  }

  Kind& of(Word tag) { return kinds_[(tag >> 16) & 0xFF]; }
  Node nodes() const { return nodes_; }
  /// The record of that number; only for numbers that there are.
  std::pair<const Kind*, std::size_t> record(Node node) const {
    for (const Kind& kind : kinds_)
      if (node - kind.first < kind.count) return {&kind, node - kind.first};
    return {&kinds_[0], 0};
  }

 private:
  std::array<Kind, 256> kinds_;
  Node nodes_ = 0;
};

struct Link {
  Node from, to;
  bool arc;  ///< whether the scene's graph shows it
};
enum class Links { all, arcs, arcs_without_chain_roots };

/// Follows the references of one record after another: reports those that lead nowhere, keeps the others.
/// It is what `data_references` wants.
class Follower {
 public:
  Follower(Kinds& kinds, Report& report) : kinds_(kinds), report_(report) {}

  void from(Word tag, std::size_t number) {
    from_ = &kinds_.of(tag);
    number_ = number;
  }

  void words(std::string_view field, Word tag, std::span<const Word> values) {
    kinds_.of(tag).target = true;
    std::string path = "." + std::string{field};
    std::ranges::replace(path, ' ', '_');
    for (std::size_t i = 0; i < values.size(); ++i)
      if (values[i] != kUnset)
        follow(field, values.size() == 1 ? path : path + "[" + std::to_string(i) + "]", tag, values[i]);
  }
  void node(std::string_view field, const QisNodeIndex& node) {
    const bool in_its_owner = (node.tag & 0xFFFF) != 0;  // a part of the same envelope or cluster shape
    if (node.tag == 0 || in_its_owner || node.index == kUnset) return;
    // An index of 0 also says "not set".
    if (node.index == 0 && kinds_.of(node.tag).count == 0) return;
    std::string path = "." + std::string{field};
    std::ranges::replace(path, ' ', '_');
    follow(field, path, node.tag, node.index);
  }
  void arcs(const qi::Reference& row, std::span<const Word> held) {
    const std::string_view child = kinds_.of(row.child).info.record;
    for (std::size_t i = 0; i < held.size(); ++i)
      if (!row.single || held[i] != row.unset)
        follow(child, row.single ? "." + std::string{row.field} : entry(row.field, i), row.child, held[i],
               true);
  }

  const std::vector<Link>& links() const { return links_; }

 private:
  void follow(std::string_view field, const std::string& path, Word tag, Word value, bool arc = false) {
    const Kind& to = kinds_.of(tag);
    if (value < to.count) {
      links_.push_back({from_->first + static_cast<Node>(number_), to.first + value, arc});
    } else if (!to.damaged) {
      report_.add(kReferenceOutOfRange, from_->info, number_, path,
                  ": " + std::string{field} + " " + std::to_string(value) + " is outside its list of " +
                      std::to_string(to.count));
    }
  }

  Kinds& kinds_;
  Report& report_;
  const Kind* from_ = nullptr;
  std::size_t number_ = 0;
  std::vector<Link> links_;
};

/// Arrays that hold more than they may, or something twice.
void check_arrays(const qi::Reference& row, const Kind& from, std::size_t number, std::string_view child,
                  std::span<const Word> held, Report& report) {
  if (held.size() > row.limit)
    report.add(kTooManyReferences, from.info, number, "." + std::string{row.field},
               " has " + std::to_string(held.size()) + " " + std::string{row.field} + ", at most " +
                   std::to_string(row.limit) + " are allowed");
  std::vector<std::pair<Word, std::size_t>> sorted;
  for (std::size_t i = 0; i < held.size(); ++i) sorted.emplace_back(held[i], i);
  std::ranges::sort(sorted);
  for (std::size_t i = 1; i < sorted.size(); ++i)
    if (sorted[i].first == sorted[i - 1].first)
      report.add(kReferenceRepeated, from.info, number, entry(row.field, sorted[i].second),
                 ": " + std::string{row.field} + " hold " + std::string{child} + "_" +
                     std::to_string(sorted[i].first) + " again");
}

std::vector<Link> follow_all(const Qis& scene, Kinds& kinds, Report& report) {
  Follower follower{kinds, report};
  for (const qi::Reference& row : qi::references()) {
    const Kind& from = kinds.of(row.parent);
    for (Word i = 0; i < qi::record_count(scene, row.parent); ++i) {
      follower.from(row.parent, i);
      follower.arcs(row, row.held(scene, i));
      if (!row.single)
        check_arrays(row, from, i, kinds.of(row.child).info.record, row.held(scene, i), report);
    }
  }
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    std::size_t place = 0;  // a second kind of records is numbered on
    qi::for_each_record(list, [&](std::size_t /*number*/, const auto& record) {
      follower.from(info.tag, place++);
      data_references(follower, record);
    });
  });
  return follower.links();
}

/// Where the links of each record lead, in their order.
class Graph {
 public:
  Graph(Kinds& kinds, std::span<const Link> links, Links which) : begins_(kinds.nodes() + 1) {
    const Node nodes = kinds.nodes();
    const Kind& roots = kinds.of(qi::kChainRootTag);
    const auto counts = [&](const Link& link) {
      const bool to_root = link.to - roots.first < roots.count;
      return which == Links::all || (link.arc && (which == Links::arcs || !to_root));
    };
    for (const Link& link : links)
      if (counts(link)) ++begins_[link.from + 1];
    for (Node i = 0; i < nodes; ++i) begins_[i + 1] += begins_[i];
    targets_.resize(begins_.back());
    std::vector<std::size_t> next(begins_.begin(), begins_.end() - 1);
    for (const Link& link : links)
      if (counts(link)) targets_[next[link.from]++] = link.to;
  }

  std::span<const Node> from(Node node) const {
    return std::span(targets_).subspan(begins_[node], begins_[node + 1] - begins_[node]);
  }

 private:
  std::vector<std::size_t> begins_;
  std::vector<Node> targets_;
};

/// Finds records that are their own descendants. The editor copes with them, converters may not; only that an
/// object and its chain root refer to each other is usual.
class LoopFinder {
 public:
  /// @param through  loops are reported that one of this kind is in; null: all
  LoopFinder(const Kinds& kinds, const Graph& arcs, const Code& code, const Kind* through, Report& report)
      : kinds_(kinds),
        arcs_(arcs),
        code_(code),
        through_(through),
        report_(report),
        place_(kinds.nodes(), kNew) {}

  void from(const Kind& kind) {
    for (Node node = kind.first; node < kind.first + kind.count; ++node)
      if (place_[node] == kNew) descend(node);
  }

 private:
  static constexpr std::size_t kNew = SIZE_MAX, kDone = SIZE_MAX - 1;
  struct Step {
    Node node;
    std::size_t next;
  };

  void descend(Node top) {
    enter(top);
    while (!path_.empty()) {
      Step& step = path_.back();
      const auto below = arcs_.from(step.node);
      if (step.next == below.size()) {
        place_[step.node] = kDone;
        path_.pop_back();
        continue;
      }
      const Node child = below[step.next++];
      if (place_[child] == kNew) {
        enter(child);
      } else if (place_[child] != kDone) {
        report_loop(place_[child]);
      }
    }
  }

  void enter(Node node) {
    place_[node] = path_.size();
    path_.push_back({node, 0});
  }

  std::string name(Node node) const {
    const auto [kind, number] = kinds_.record(node);
    return std::string{kind->info.record} + "_" + std::to_string(number);
  }

  void report_loop(std::size_t start) {
    constexpr std::size_t kMostShown = 8;
    const auto is_through = [this](const Step& step) {
      return step.node - through_->first < through_->count;
    };
    if (through_ && std::none_of(path_.begin() + static_cast<std::ptrdiff_t>(start), path_.end(), is_through))
      return;
    const std::size_t length = path_.size() - start;
    const auto [kind, number] = kinds_.record(path_[start].node);
    std::string text;
    for (std::size_t i = 1; i < std::min(length, kMostShown); ++i)
      text += " -> " + name(path_[start + i].node);
    if (length > kMostShown) text += " -> (" + std::to_string(length - kMostShown) + " more)";
    report_.add(code_, kind->info, number, "", text + " -> " + name(path_[start].node));
  }

  const Kinds& kinds_;
  const Graph& arcs_;
  const Code& code_;
  const Kind* through_;
  Report& report_;
  std::vector<std::size_t> place_;  ///< of each record: on the path, or kNew or kDone
  std::vector<Step> path_;
};

/// What can be got to from a record.
std::vector<bool> reached_from(Node top, const Graph& graph, Node nodes) {
  std::vector<bool> reached(nodes);
  std::vector<Node> left{top};
  reached[top] = true;
  while (!left.empty()) {
    const Node node = left.back();
    left.pop_back();
    for (const Node next : graph.from(node)) {
      if (reached[next]) continue;
      reached[next] = true;
      left.push_back(next);
    }
  }
  return reached;
}

/// The record's own name in brackets, if it has one.
template <class R>
std::string name_of(const Qis& scene, const R& record) {
  const auto& names = scene.name_list.records;
  if constexpr (std::is_same_v<R, qi::Name>) {
    return " (" + qiGetName(record) + ")";
  } else if constexpr (requires { record.fixed.name; }) {
    if (record.fixed.name < names.size()) return " (" + qiGetName(names[record.fixed.name]) + ")";
  }
  return {};
}

/// Records that nothing refers to, and those that only such records lead to.
void note_unused(const Qis& scene, Kinds& kinds, std::span<const Link> links, Report& report) {
  std::vector<bool> referred(kinds.nodes());
  for (const Link& link : links)
    if (link.from != link.to) referred[link.to] = true;
  const bool has_top = qi::record_count(scene, qi::kSceneTag) != 0 && !kinds.of(qi::kSceneTag).damaged;
  const std::vector<bool> reached =
      has_top ? reached_from(kinds.of(qi::kSceneTag).first, Graph{kinds, links, Links::all}, kinds.nodes())
              : std::vector<bool>(kinds.nodes(), true);
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    const Kind& kind = kinds.of(info.tag);
    if (!kind.target) return;
    const bool is_name = info.tag == qi::list_of(qi::kNameTag);  // goes with its record
    qi::for_each_record(list, [&](std::size_t number, const auto& record) {
      const Node node = kind.first + static_cast<Node>(number);
      if (!referred[node]) {
        report.add(kUnused, info, number, "", name_of(scene, record) + ": nothing refers to it");
      } else if (!reached[node] && !is_name) {
        report.add(kUnreached, info, number, "",
                   name_of(scene, record) + ": nothing reaches it from scene_0");
      }
    });
  });
}

}  // namespace

void check_links(const Qis& scene, const std::vector<Word>& damaged, Report& report) {
  Kinds kinds{scene, damaged};
  const std::vector<Link> links = follow_all(scene, kinds, report);
  const Graph arcs{kinds, links, Links::arcs}, apart{kinds, links, Links::arcs_without_chain_roots};
  LoopFinder loops{kinds, apart, kLoop, nullptr, report};
  const Kind& roots = kinds.of(qi::kChainRootTag);
  LoopFinder root_loops{kinds, arcs, kChainRootLoop, &roots, report};
  for (const Word kind : {qi::kObjTag, qi::kJointTag}) loops.from(kinds.of(kind));
  root_loops.from(roots);
  if (damaged.empty()) note_unused(scene, kinds, links, report);
}

}  // namespace checks
