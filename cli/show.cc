/// @file
/// `quilscene show`: the values of records, as their dialogs show them.
#include <fnmatch.h>

#include <cinttypes>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "cli/commandline.h"
#include "cli/files.h"
#include "cli/jobs.h"
#include "cli/json.h"
#include "cli/lines.h"
#include "cli/printable.h"
#include "cli/scenefile.h"
#include "dialogs/values/shownitems.h"
#include "editor/model/nodenames.h"
#include "qilib/checksum.h"
#include "qilib/names.h"

namespace {

struct ShowRequest {
  std::string file;
  std::vector<std::string> nodes;
  FileSet files;
  bool all = false, json = false;
};

void declare(CLI::App& line, ShowRequest& request) {
  take_file(line, request.file);
  line.add_option("NODE", request.nodes, "As graph names them")->type_name("");
  line.add_flag(
      "--all", request.all,
      "Everything: all nodes, what they refer to, and a checksum of every record; each operand is a FILE");
  take_file_options(line, request.files);
  take_json(line, request.json);
  line.footer("\nA NODE may be a pattern of several, such as 'mat_*'.\n");
}

/// Calls `visit(name)` for the nodes that show a record.
template <class Record, class Visit>
void for_each_node_of(const qi::ListInfo& info, std::size_t number, const Record& record, Visit visit) {
  const NodeKind* const kind = kind_of_tag(info.record_tag);
  if (kind) visit(node_name(*kind, static_cast<Word>(number)));
  if constexpr (std::is_same_v<Record, qi::Obj>)
    if (record.fixed.lod_count != 0) visit(node_name(kNodeKind<LevelsOfDetail>, static_cast<Word>(number)));
}

/// The nodes that a word from the command line names: itself, or all that fit a pattern.
std::vector<std::string> nodes_named(const Qis& scene, const std::string& word) {
  if (word.find_first_of("*?[") == word.npos) return {word};
  std::vector<std::string> nodes;
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    if (qi::record_count(scene, info.tag) == 0) return;
    qi::for_each_record(list, [&](std::size_t number, const auto& record) {
      for_each_node_of(info, number, record, [&](const std::string& node) {
        if (fnmatch(word.c_str(), node.c_str(), 0) == 0) nodes.push_back(node);
      });
    });
  });
  return nodes.empty() ? std::vector{word} : nodes;
}

/// "208 bytes, checksum 0123456789abcdef"
std::string text_of(const qi::ChecksumSink& sum) {
  char text[64];
  std::snprintf(text, sizeof text, "%" PRIu64 " bytes, checksum %016" PRIx64, sum.bytes(), sum.sum());
  return text;
}

/// Takes what is shown of a scene.
class Printer {
 public:
  virtual ~Printer() = default;
  /// A node's items. @param items  null: there is no such node
  virtual void node(const std::string& name, const std::vector<values::ShownItem>* items) = 0;
  /// What is told of every record with --all, after its nodes.
  virtual void record(const std::string& name, const std::vector<std::string>& children,
                      const std::optional<std::string>& text, const qi::ChecksumSink& sum) = 0;
  virtual void scene(const qi::ChecksumSink& sum) = 0;
  virtual void finish() = 0;
};

class TextPrinter final : public Printer {
 public:
  void node(const std::string& name, const std::vector<values::ShownItem>* items) override {
    if (!items) {
      std::fprintf(stderr, "quilscene: no such node: %s\n", printable(name).c_str());
      return;
    }
    for (const auto& [path, text] : *items) lines_.add(name + " " + path + " = " + printable(text));
  }
  void record(const std::string& name, const std::vector<std::string>& children,
              const std::optional<std::string>& text, const qi::ChecksumSink& sum) override {
    if (text) lines_.add(name + " text = " + printable(*text));
    for (const std::string& child : children) lines_.add("arc " + name + " " + child);
    lines_.add(name + " record = " + text_of(sum));
  }
  void scene(const qi::ChecksumSink& sum) override { lines_.add("file = " + text_of(sum)); }
  void finish() override { lines_.flush(); }

 private:
  Lines lines_;
};

class JsonPrinter final : public Printer {
 public:
  explicit JsonPrinter(const std::string& file) : result_(json_result("show", file)) {
    result_["nodes"] = Json::array();
  }
  void node(const std::string& name, const std::vector<values::ShownItem>* items) override {
    Json shown = items ? Json::object() : Json{};
    if (items)
      for (const auto& [path, text] : *items) shown[path] = escaped(text);
    result_["nodes"].push_back({{"name", escaped(name)}, {"items", std::move(shown)}});
  }
  void record(const std::string& name, const std::vector<std::string>& children,
              const std::optional<std::string>& text, const qi::ChecksumSink& sum) override {
    Json record{{"name", name}};
    if (text) record["text"] = escaped(*text);
    if (!children.empty()) record["children"] = children;
    add(record, sum);
    result_["records"].push_back(std::move(record));
  }
  void scene(const qi::ChecksumSink& sum) override { add(result_, sum); }
  void finish() override { print_json(result_); }

 private:
  static void add(Json& object, const qi::ChecksumSink& sum) {
    char text[17];
    std::snprintf(text, sizeof text, "%016" PRIx64, sum.sum());
    object["bytes"] = sum.bytes();
    object["checksum"] = text;
  }

  Json result_;
};

bool show_node(Qis& scene, const std::string& node, Printer& printer) {
  const auto items = values::shown_items(scene, node);
  printer.node(node, items ? &*items : nullptr);
  return items.has_value();
}

/// The nodes that a record refers to, in the order of the graph's arcs.
std::vector<std::string> children_of(const Qis& scene, Word tag, Word number) {
  std::vector<std::string> children;
  for (const qi::Reference& row : qi::references()) {
    if (row.parent != tag) continue;
    for (const Word child : row.held(scene, number))
      if (!row.single || child != row.unset) children.push_back(node_name(row.child, child));
  }
  return children;
}

void show_everything(Qis& scene, Printer& printer) {
  printer.scene(qi::checksum_of_scene(scene));
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    if (qi::record_count(scene, info.tag) == 0) return;
    std::size_t place = 0;  // a second kind of records is numbered on
    qi::for_each_record(list, [&](std::size_t number, const auto& record) {
      for_each_node_of(info, number, record,
                       [&](const std::string& node) { show_node(scene, node, printer); });
      std::optional<std::string> text;
      if constexpr (std::is_same_v<std::decay_t<decltype(record)>, qi::Name>) text = qiNameBytes(record);
      printer.record(std::string{info.record} + "_" + std::to_string(place),
                     children_of(scene, info.record_tag, static_cast<Word>(place)), text,
                     qi::checksum_of_record(record));
      ++place;
    });
  });
}

Outcome show_file(const ShowRequest& request, const std::string& file) {
  Qis scene;
  if (request.json) {
    const std::string error = open_quietly(file, scene);
    if (!error.empty()) return print_json(json_failure("show", file, error));
  } else if (!open_scene(file, scene)) {
    return Outcome::failed;
  }
  std::unique_ptr<Printer> printer = std::make_unique<TextPrinter>();
  if (request.json) printer = std::make_unique<JsonPrinter>(file);
  Outcome outcome = Outcome::well;
  if (request.all) show_everything(scene, *printer);
  for (const std::string& word : request.all ? std::vector<std::string>{} : request.nodes)
    for (const std::string& node : nodes_named(scene, word))
      if (!show_node(scene, node, *printer)) outcome = Outcome::failed;
  printer->finish();
  return outcome;
}

Outcome run(const ShowRequest& request) {
  if (!request.all) {
    if (request.nodes.empty()) throw WrongUse("a NODE is missing");
    if (request.files.folders || request.files.zeros || request.files.jobs != 0)
      throw WrongUse("there is one FILE unless --all is given");
    return show_file(request, request.file);
  }
  FileSet set = request.files;
  set.words = request.nodes;
  set.words.insert(set.words.begin(), request.file);
  return for_each_file(
      files_of(set), set.jobs,
      [&](const std::string& file) -> Done {
        return {show_file(request, file), {}};
      },
      {}, request.json ? Headings::no : Headings::yes);
}

}  // namespace

Work show(CLI::App& line) { return work<ShowRequest>(line, declare, run); }
