/// @file
/// `quilscene dump`: the words of records, in rows.
#include <algorithm>
#include <bit>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <span>
#include <string>
#include <type_traits>

#include "cli/commandline.h"
#include "cli/lines.h"
#include "cli/printable.h"
#include "cli/scenefile.h"
#include "qilib/lists.h"
#include "qilib/names.h"
#include "qilib/recordpieces.h"

namespace {

struct DumpRequest {
  std::string file, list, number, as = "hex";
};

void declare(CLI::App& line, DumpRequest& request) {
  take_file(line, request.file);
  line.add_option("LIST", request.list, "As info names it, or its records: VtxList, vtx")
      ->required()
      ->type_name("");
  line.add_option("N", request.number, "The number of one record (default: all)")
      ->check(no_whole_number)
      ->type_name("");
  line.add_option("--as", request.as, "How words are written (default: hex)")->type_name("hex|int|float");
}

using WordText = std::string (*)(Word word);
template <class Value>
std::string formatted(const char* format, Value value) {
  char text[32];
  std::snprintf(text, sizeof text, format, value);
  return text;
}
WordText word_text(const std::string& as) {
  if (as == "hex") return [](Word word) { return formatted("%08" PRIx32, word); };
  if (as == "int") return [](Word word) { return formatted("%" PRId32, std::bit_cast<std::int32_t>(word)); };
  if (as == "float") return [](Word word) { return formatted("%g", double{std::bit_cast<float>(word)}); };
  throw WrongUse("words are written as hex, int or float, not " + as);
}

class Dumper {
 public:
  explicit Dumper(WordText text) : text_(text) {}

  template <class R>
  void record(const std::string& name, const R& record) {
    pieces_.clear();
    walk(pieces_, record);
    for (const qi::RecordPiece& piece : pieces_.pieces()) {
      const std::string begin = name + " " + piece.name();
      if constexpr (std::is_same_v<R, qi::Name>) {
        if (piece.sort == qi::RecordPiece::Sort::text) {
          lines_.add(begin + " = " + printable(qiNameBytes(record)));
          continue;
        }
      }
      if (piece.sort == qi::RecordPiece::Sort::parts) {
        lines_.add(begin + " = " + std::to_string(piece.items));
      } else {
        rows(begin, piece);
      }
    }
  }
  void finish() { lines_.flush(); }

 private:
  /// A row for each entry of an array, or for some words of something else.
  void rows(const std::string& begin, const qi::RecordPiece& piece) {
    constexpr std::size_t kBytesInRow = 32;
    const bool entries = piece.sort == qi::RecordPiece::Sort::array && piece.items != 0 &&
                         piece.data.size() / piece.items > sizeof(Word);
    const bool whole = piece.sort == qi::RecordPiece::Sort::fixed;
    const std::size_t each = whole     ? piece.data.size()
                             : entries ? piece.data.size() / piece.items
                                       : kBytesInRow;
    const std::size_t step = entries                                       ? 1
                             : piece.sort == qi::RecordPiece::Sort::texels ? each
                                                                           : each / sizeof(Word);
    for (std::size_t at = 0, place = 0; at < piece.data.size(); at += each, place += step) {
      const auto row = piece.data.subspan(at, std::min(each, piece.data.size() - at));
      lines_.add(begin + (whole ? "" : "[" + std::to_string(place) + "]") + " =" +
                 (piece.sort == qi::RecordPiece::Sort::texels ? bytes(row) : words(row)));
    }
  }
  std::string words(std::span<const std::byte> row) const {
    std::string text;
    for (; row.size() >= sizeof(Word); row = row.subspan(sizeof(Word))) {
      Word word = 0;
      std::memcpy(&word, row.data(), sizeof word);
      text += ' ';
      text += text_(word);
    }
    return text;
  }
  static std::string bytes(std::span<const std::byte> row) {
    std::string text;
    for (const std::byte byte : row) text += formatted(" %02x", std::to_integer<unsigned>(byte));
    return text;
  }

  WordText text_;
  qi::PieceCollector pieces_;
  Lines lines_;
};

Outcome run(const DumpRequest& request) {
  const qi::ListInfo* wanted = nullptr;
  Qis scene;
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& /*list*/) {
    if (info.name == request.list || info.record == request.list) wanted = &info;
  });
  if (!wanted) throw WrongUse("no such list: " + request.list);
  Dumper dumper{word_text(request.as)};
  if (!open_scene(request.file, scene)) return Outcome::failed;
  const std::string only = request.number.empty() ? "" : "_" + request.number;
  bool found = only.empty();
  qi::for_each_list(scene, [&](const qi::ListInfo& info, const auto& list) {
    if (&info != wanted || qi::list_bytes(scene.header, info) == 0) return;
    std::size_t place = 0;  // a second kind of records is numbered on
    qi::for_each_record(list, [&](std::size_t /*number*/, const auto& record) {
      const std::string number = "_" + std::to_string(place++);
      if (!only.empty() && number != only) return;
      found = true;
      dumper.record(std::string{info.record} + number, record);
    });
  });
  dumper.finish();
  if (found) return Outcome::well;
  std::fprintf(stderr, "quilscene: no such record: %s%s\n", wanted->record.data(), only.c_str());
  return Outcome::failed;
}

}  // namespace

Work dump(CLI::App& line) { return work<DumpRequest>(line, declare, run); }
