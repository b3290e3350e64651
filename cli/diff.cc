/// @file
/// `quilscene diff`: what differs between two scenes.
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cli/commandline.h"
#include "cli/json.h"
#include "cli/lines.h"
#include "cli/printable.h"
#include "cli/scenefile.h"
#include "dialogs/values/shownitems.h"
#include "editor/model/kinds.h"
#include "editor/model/nodenames.h"
#include "qilib/difference.h"
#include "qilib/names.h"

namespace {

using How = qi::Difference::How;
using qi::PieceDifference;

struct DiffRequest {
  std::string before, after;
  bool json = false, quiet = false;
};

void declare(CLI::App& line, DiffRequest& request) {
  line.add_option("A", request.before, "The one scene")->required()->type_name("");
  line.add_option("B", request.after, "The other one; either may be - for standard input")
      ->required()
      ->type_name("");
  auto* const json = line.add_flag("--json", request.json, "An object in JSON");
  line.add_flag("--quiet", request.quiet, "Print nothing: the exit status tells")->excludes(json);
}

/// "mat_0"; the list for what it says of itself, and "header" where there is none.
std::string place_of(const qi::Difference& difference) {
  if (!difference.list) return "header";
  if (!difference.number) return std::string{difference.list->name};
  return std::string{difference.list->record} + "_" + std::to_string(*difference.number);
}

std::string child_of(const qi::LinkDifference& link) { return node_name(link.kinds->child, link.child); }

/// A difference of items or names, of which one side may not be there.
using Texts = std::vector<values::ItemDifference>;

/// Takes the differences, in their order, each with what the dialogs show of it.
class Printer {
 public:
  virtual ~Printer() = default;
  virtual void print(const qi::Difference& difference, const Texts& items) = 0;
  virtual void finish() {}
};

class TextPrinter final : public Printer {
 public:
  explicit TextPrinter(const DiffRequest& request)
      : heading_("--- " + printable(request.before) + "\n+++ " + printable(request.after)) {}

  void print(const qi::Difference& difference, const Texts& items) override {
    if (!std::exchange(begun_, true)) lines_.add(heading_);
    const std::string place = place_of(difference);
    if (difference.how != How::changed)
      lines_.add((difference.how == How::added ? "+ " : "- ") + place +
                 " record = " + std::to_string(difference.words) + " words");
    for (const auto& item : items) {
      if (item.before) lines_.add("- " + place + " " + item.path + " = " + printable(*item.before));
      if (item.after) lines_.add("+ " + place + " " + item.path + " = " + printable(*item.after));
    }
    for (const qi::LinkDifference& link : difference.links)
      lines_.add((link.added ? "+ arc " : "- arc ") + place + " " + child_of(link));
    for (const PieceDifference& piece : difference.pieces)
      lines_.add("! " + place + " " + piece.piece + ": " + text_of(piece));
  }
  void finish() override { lines_.flush(); }

 private:
  static std::string text_of(const PieceDifference& piece) {
    const char* const unit = piece.unit == PieceDifference::Unit::words   ? " words"
                             : piece.unit == PieceDifference::Unit::bytes ? " bytes"
                                                                          : " parts";
    if (!piece.places.empty() && piece.before == piece.after) {
      std::string text = piece.places.size() == 1 ? "word" : "words";
      for (const std::size_t place : piece.places)
        text += (place == piece.places.front() ? " " : ", ") + std::to_string(place);
      return text + " of " + std::to_string(piece.before);
    }
    std::string text = std::to_string(piece.before);
    if (piece.before != piece.after) text += " -> " + std::to_string(piece.after);
    text += unit;
    if (piece.differing != 0) text += ", " + std::to_string(piece.differing) + " differ";
    return text;
  }

  std::string heading_;
  bool begun_ = false;
  Lines lines_;
};

class JsonPrinter final : public Printer {
 public:
  explicit JsonPrinter(const DiffRequest& request) : result_(json_result("diff", request.before)) {
    result_["other"] = escaped(request.after);
    result_["same"] = true;
    result_["differences"] = Json::array();
  }

  void print(const qi::Difference& difference, const Texts& items) override {
    result_["same"] = false;
    Json object{{"place", place_of(difference)},
                {"change", difference.how == How::added     ? "added"
                           : difference.how == How::removed ? "removed"
                                                            : "changed"}};
    if (difference.how != How::changed) object["words"] = difference.words;
    for (const auto& item : items)
      object["items"][item.path] = {item.before ? Json(escaped(*item.before)) : Json{},
                                    item.after ? Json(escaped(*item.after)) : Json{}};
    for (const qi::LinkDifference& link : difference.links)
      object["links"].push_back({{"child", child_of(link)}, {"change", link.added ? "added" : "removed"}});
    for (const PieceDifference& piece : difference.pieces) object["pieces"].push_back(object_of(piece));
    result_["differences"].push_back(std::move(object));
  }
  void finish() override { print_json(result_); }

 private:
  static Json object_of(const PieceDifference& piece) {
    const char* const unit = piece.unit == PieceDifference::Unit::words   ? "words"
                             : piece.unit == PieceDifference::Unit::bytes ? "bytes"
                                                                          : "parts";
    Json object{{"piece", piece.piece}, {unit, {piece.before, piece.after}}, {"differing", piece.differing}};
    if (!piece.places.empty()) object["places"] = piece.places;
    return object;
  }

  Json result_;
};

class NothingPrinter final : public Printer {
  void print(const qi::Difference& /*difference*/, const Texts& /*items*/) override {}
};

/// The nodes of a kind that show the records of this list; levels of detail are their objects' other face.
bool shows(const NodeKind& kind, const qi::ListInfo& list) {
  return kind.tag == list.record_tag || (kind.tag == 0 && list.record_tag == qi::kObjTag);
}

class Comparison {
 public:
  Comparison(Qis& before, Qis& after, Printer& printer) : before_(before), after_(after), printer_(printer) {}

  bool finds_something() {
    const auto sink = [this](const qi::Difference& difference) { add(difference); };
    const bool differ = qi::compare_scenes(before_, after_, sink) != 0;
    if (!names_.empty()) add_renamed();
    return differ;
  }

 private:
  void add(const qi::Difference& difference) {
    Texts items;
    const bool changed_record = difference.number && difference.how == How::changed;
    if (changed_record) items = shown(*difference.list, *difference.number);
    if (changed_record) told_.insert({difference.list->tag, *difference.number});
    const Word list = difference.list && difference.number ? difference.list->record_tag : 0;
    if (list == qi::kNameTag || list == qi::Name::kExternalTag) {
      items = name_texts(difference);
      if (list == qi::kNameTag) names_.insert(*difference.number);
    }
    printer_.print(difference, items);
  }

  /// What the dialogs of a record show otherwise.
  Texts shown(const qi::ListInfo& list, Word number) {
    Texts all;
    for (const NodeKind& kind : kNodeKinds)
      if (shows(kind, list))
        for (auto& item : values::item_differences(before_, after_, node_name(kind, number)))
          all.push_back({(kind.tag == 0 ? std::string{kind.prefix} + "." : "") + item.path,
                         std::move(item.before), std::move(item.after)});
    return all;
  }

  Texts name_texts(const qi::Difference& difference) const {
    const auto text = [&](const Qis& scene, How missing) -> std::optional<std::string> {
      const auto& list = difference.list->extension ? scene.ext.external_name_list : scene.name_list;
      if (difference.how == missing) return std::nullopt;
      return qiNameBytes(list.records.at(*difference.number));
    };
    return {{"text", text(before_, How::added), text(after_, How::removed)}};
  }

  /// Records that are the same but for the text of their name.
  void add_renamed() {
    qi::for_each_list(after_, [&](const qi::ListInfo& info, const auto& list) {
      qi::for_each_record(list, [&](std::size_t number, const auto& record) {
        if constexpr (requires { record.fixed.name; }) {
          const auto place = static_cast<Word>(number);
          if (!names_.contains(record.fixed.name) || told_.contains({info.tag, place})) return;
          const qi::Difference same{.list = &info, .number = place};
          if (const Texts items = shown(info, place); !items.empty()) printer_.print(same, items);
        }
      });
    });
  }

  Qis& before_;
  Qis& after_;
  Printer& printer_;
  std::set<Word> names_;                  ///< whose text differs
  std::set<std::pair<Word, Word>> told_;  ///< list tags and numbers
};

/// Opens one of the scenes. @returns whether that went well; if not, it was told
bool open_one(const DiffRequest& request, const std::string& file, Qis& scene) {
  if (!request.json) return open_scene(file, scene);
  const std::string error = open_quietly(file, scene);
  if (!error.empty()) print_json(json_failure("diff", file, error));
  return error.empty();
}

std::unique_ptr<Printer> printer_for(const DiffRequest& request) {
  if (request.quiet) return std::make_unique<NothingPrinter>();
  if (request.json) return std::make_unique<JsonPrinter>(request);
  return std::make_unique<TextPrinter>(request);
}

Outcome run(const DiffRequest& request) {
  if (request.before == kStandardStream && request.after == kStandardStream)
    throw WrongUse("standard input can be read once");
  Qis before, after;
  if (!open_one(request, request.before, before) || !open_one(request, request.after, after))
    return Outcome::unreadable;
  const auto printer = printer_for(request);
  const bool differ = Comparison{before, after, *printer}.finds_something();
  printer->finish();
  return differ ? Outcome::failed : Outcome::well;
}

}  // namespace

Work diff(CLI::App& line) { return work<DiffRequest>(line, declare, run); }
