/// @file
/// `quilscene check`: what is wrong or odd in a file, whether or not its reader refuses it.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/commandline.h"
#include "cli/printable.h"
#include "qilib/checksizes.h"
#include "qilib/lists.h"
#include "qilib/names.h"
#include "qilib/opensave.h"
#include "qilib/references.h"
#include "qilib/writer.h"

namespace {

/// The findings in one file, written as they come: "FILE: SORT: TEXT".
class Report {
 public:
  explicit Report(const std::string& file) : file_(file) {}

  void finding(const char* sort, const std::string& text) {
    well_ = false;
    line(sort, text);
  }
  void note(const std::string& text) const { line("note", text); }
  void hint(const std::string& text) const { line("hint", text); }
  bool well() const { return well_; }

 private:
  void line(const char* sort, const std::string& text) const {
    std::printf("%s: %s: %s\n", file_.c_str(), sort, printable(text).c_str());
  }
  const std::string& file_;
  bool well_ = true;
};

/// Every kind of record in a scene: how many there are and which of them something refers to.
class Kinds {
 public:
  explicit Kinds(const Qis& scene) {
    qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
      Kind& kind = of(info.tag);
      kind.record = info.record;
      kind.referred.resize(qi::record_count(list));
    });
  }

  struct Kind {
    std::string_view record;     ///< what a record is called; empty: there is no such kind
    std::vector<bool> referred;  ///< by record number
    bool target = false;         ///< whether any reference can lead to this kind
  };
  Kind& of(Word tag) { return kinds_[(tag >> 16) & 0xFF]; }

 private:
  std::array<Kind, 256> kinds_;
};

std::string record_name(const Kinds::Kind& kind, std::size_t number) {
  return std::string{kind.record} + "_" + std::to_string(number);
}

/// Follows the references of one record after another: reports those that lead nowhere, marks what they lead
/// to.
class References {
 public:
  References(Kinds& kinds, Report& report) : kinds_(kinds), report_(report) {}

  void from(Word tag, std::size_t number) {
    from_ = &kinds_.of(tag);
    number_ = number;
  }

  void words(std::string_view field, Word tag, std::span<const Word> values) {
    kinds_.of(tag).target = true;
    for (const Word value : values)
      if (value != kUnset) follow(field, tag, value);
  }
  void node(std::string_view field, const QisNodeIndex& node) {
    const bool in_its_owner = (node.tag & 0xFFFF) != 0;  // a part of the same envelope or cluster shape
    if (node.tag == 0 || in_its_owner || node.index == kUnset) return;
    // An index of 0 also says "not set".
    if (node.index == 0 && kinds_.of(node.tag).referred.empty()) return;
    follow(field, node.tag, node.index);
  }

  void follow(std::string_view field, Word tag, Word value) {
    Kinds::Kind& to = kinds_.of(tag);
    if (value < to.referred.size()) {
      if (&to != from_ || value != number_) to.referred[value] = true;
      return;
    }
    report_.finding("reference", record_name(*from_, number_) + ": " + std::string{field} + " " +
                                     std::to_string(value) + " is outside its list of " +
                                     std::to_string(to.referred.size()));
  }

 private:
  Kinds& kinds_;
  Report& report_;
  const Kinds::Kind* from_ = nullptr;
  std::size_t number_ = 0;
};

void check_references(const Qis& scene, Kinds& kinds, Report& report) {
  References references{kinds, report};
  for (const qi::Reference& row : qi::references()) {
    kinds.of(row.child).target = true;
    for (Word i = 0; i < qi::record_count(scene, row.parent); ++i) {
      references.from(row.parent, i);
      for (const Word child : row.held(scene, i))
        if (!row.single || child != row.unset)
          references.follow(kinds.of(row.child).record, row.child, child);
    }
  }
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    qi::for_each_record(list, [&](std::size_t number, const auto& record) {
      references.from(info.tag, number);
      data_references(references, record);
    });
  });
}

/// Finds objects that are their own descendants. The editor copes with them, converters may not.
class LoopFinder {
 public:
  LoopFinder(const Qis& scene, Report& report)
      : objs_(scene.obj_list.records), report_(report), place_(objs_.size(), kNew) {}

  void run() {
    for (Word obj = 0; obj < objs_.size(); ++obj)
      if (place_[obj] == kNew) descend(obj);
  }

 private:
  static constexpr std::size_t kNew = SIZE_MAX, kDone = SIZE_MAX - 1;
  struct Step {
    Word obj;
    std::size_t next_child;
  };

  void descend(Word top) {
    enter(top);
    while (!path_.empty()) {
      Step& step = path_.back();
      const Words& children = objs_[step.obj].children;
      if (step.next_child == children.size()) {
        place_[step.obj] = kDone;
        path_.pop_back();
        continue;
      }
      const Word child = children[step.next_child++];
      if (child >= objs_.size() || place_[child] == kDone) continue;
      if (place_[child] == kNew) {
        enter(child);
      } else {
        report_loop(place_[child]);
      }
    }
  }

  void enter(Word obj) {
    place_[obj] = path_.size();
    path_.push_back({obj, 0});
  }

  void report_loop(std::size_t start) {
    constexpr std::size_t kMostShown = 8;
    const std::size_t length = path_.size() - start;
    std::string text;
    for (std::size_t i = 0; i < std::min(length, kMostShown); ++i)
      text += "obj_" + std::to_string(path_[start + i].obj) + " -> ";
    if (length > kMostShown) text += "(" + std::to_string(length - kMostShown) + " more) -> ";
    report_.finding("loop", text + "obj_" + std::to_string(path_[start].obj));
  }

  const std::vector<qi::Obj>& objs_;
  Report& report_;
  std::vector<std::size_t> place_;  ///< of each object: on the path, or kNew or kDone
  std::vector<Step> path_;
};

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

void note_unused_records(const Qis& scene, Kinds& kinds, const Report& report) {
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    const Kinds::Kind& kind = kinds.of(info.tag);
    if (!kind.target) return;
    qi::for_each_record(list, [&](std::size_t number, const auto& record) {
      if (!kind.referred[number])
        report.note(record_name(kind, number) + name_of(scene, record) + ": nothing refers to it");
    });
  });
}

/// Compares the sizes that the scene holds with what a writer would write of it as it was read. Those that
/// nothing reads are no more than odd.
void check_sizes(Qis& scene, Report& report) {
  qi::tell_carried_sizes(scene, [&](const qi::Message& size) { report.hint(text_of(size)); });
  qi::correct_sizes(scene, qi::kBlocksAsRead, [&](qi::Message size) {
    size.code = qi::MessageCode::size_carried;
    report.finding("size", text_of(size));
  });
}

bool check_file(const std::string& file) {
  Report report{file};
  Qis scene;
  const bool opened = qi::open_scene(file, scene, [&](const qi::Message& message) {
    std::istringstream lines{text_of(message) + '\n' + reason_of(message)};
    for (std::string line; std::getline(lines, line);)
      if (!line.empty()) report.finding("message", line);
  });
  if (!opened) {
    report.finding("message", "can't be opened");
    return false;
  }
  check_sizes(scene, report);
  for (const int mode : {qi::kBlocksAsRead, qi::kFromStructures})
    qi::tell_dropped_bytes(scene, mode, [&](const qi::Message& loss) { report.hint(text_of(loss)); });
  Kinds kinds{scene};
  check_references(scene, kinds, report);
  LoopFinder{scene, report}.run();
  note_unused_records(scene, kinds, report);
  return report.well();
}

struct Request {
  std::vector<std::string> files;
};

void declare(CLI::App& line, Request& request) {
  line.add_option("FILE", request.files, "The scenes")->required()->type_name("");
}

Outcome run(const Request& request) {
  const auto bad = std::ranges::count(request.files, false, check_file);
  return bad == 0 ? Outcome::well : Outcome::failed;
}

}  // namespace

Work check(CLI::App& line) { return work(line, declare, run); }
