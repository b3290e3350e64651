/// @file
/// Records that go or come, and the references that follow.
#include "qilib/renumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <iterator>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "qilib/appendrecord.h"
#include "qilib/names.h"
#include "qilib/recordpieces.h"
#include "qilib/references.h"
#include "qilib/writer.h"

namespace qi {
namespace {

/// What may be renumbered: each kind after those that it refers to.
constexpr std::tuple kRenumberable{&Qis::teximg_list, &ExtLists::ciimg_list, &ExtLists::color_palette_list,
                                   &Qis::anim_list,   &Qis::tex_list,        &Qis::mat_list};
constexpr std::size_t kKinds = std::tuple_size_v<decltype(kRenumberable)>;

template <class Visit>
void for_each_kind(Visit visit) {
  std::apply([&](const auto... list) { (visit(list), ...); }, kRenumberable);
}

constexpr std::array<Word, kKinds> kTags =
    std::apply([](const auto... list) { return std::array{list_info(list).record_tag...}; }, kRenumberable);

/// The kind's place; kKinds for any other kind. @param tag  of its list or records
std::size_t kind_of(Word tag) {
  return static_cast<std::size_t>(
      std::ranges::find(kTags, list_of(tag), [](Word known) { return list_of(known); }) - kTags.begin());
}

/// A number for each record of the renumberable kinds.
class Numbers {
 public:
  explicit Numbers(const Qis& scene) {
    for (std::size_t kind = 0; kind < kKinds; ++kind) {
      of_[kind].resize(record_count(scene, kTags.at(kind)));
      for (Word i = 0; i < of_[kind].size(); ++i) of_[kind][i] = i;
    }
  }

  /// Where a reference leads now. One that leads nowhere stays as it is.
  Word now(Word tag, Word number) const {
    const std::size_t kind = kind_of(tag);
    return kind < kKinds && number < of_[kind].size() ? of_[kind][number] : number;
  }
  std::vector<Word>& of(Word tag) { return of_.at(kind_of(tag)); }

 private:
  std::array<std::vector<Word>, kKinds> of_;
};

/// Where a record's fields go that the graph doesn't show (see data_references). `visit(tag, word)` is called
/// for each word that may refer to a renumberable kind.
template <class Visit>
struct DataFields {
  Visit visit;
  void words(std::string_view /*field*/, Word tag, auto values) {
    if (kind_of(tag) == kKinds) return;
    for (auto& value : values) visit(tag, value);
  }
  void node(std::string_view /*field*/, auto& node) {
    const bool in_its_owner = (node.tag & 0xFFFF) != 0;
    if (!in_its_owner && kind_of(node.tag) != kKinds) visit(node.tag, node.index);
  }
};
template <class Visit>
void for_each_data_word(auto& record, Visit visit) {
  DataFields<Visit> fields{visit};
  data_references(fields, record);
}

/// The rows of the table of references that lead from that kind to renumberable ones.
std::vector<const Reference*> rows_from(Word tag) {
  std::vector<const Reference*> rows;
  for (const Reference& row : references())
    if (row.parent == tag && kind_of(row.child) != kKinds) rows.push_back(&row);
  return rows;
}

/// Calls `visit(from, tag, word)` for every word of the scene that refers to a renumberable kind, or could.
template <class Visit>
void for_each_reference(const Qis& scene, Visit visit) {
  for_each_list(scene, [&](const ListInfo& info, const auto& list) {
    const auto rows = rows_from(info.record_tag);
    for_each_record(list, [&](std::size_t number, const auto& record) {
      const RecordId from{info.record_tag, static_cast<Word>(number)};
      for (const Reference* row : rows)
        for (const Word word : row->held(scene, from.number))
          if (!row->single || word != row->unset) visit(from, row->child, word);
      for_each_data_word(record, [&](Word tag, const Word& word) { visit(from, tag, word); });
    });
  });
}

/// Gives the references of a row of the table the numbers that they lead to now.
void renumber_row(Qis& scene, const Reference& row, Word number, const Numbers& numbers) {
  const auto leads = [&](Word word) {
    return row.single && word == row.unset ? word : numbers.now(row.child, word);
  };
  if (std::ranges::all_of(row.held(scene, number), [&](Word word) { return leads(word) == word; })) return;
  const Place place = row.place(scene, number);
  if (place.slot) *place.slot = leads(*place.slot);
  if (place.entries)
    for (Word& word : *place.entries) word = leads(word);
}

/// Takes the words that are written.
class WordSink {
 public:
  explicit WordSink(Words& to) : to_(to) {}
  void words(std::span<const std::byte> bytes) {
    for (; bytes.size() >= sizeof(Word); bytes = bytes.subspan(sizeof(Word))) {
      Word word = 0;
      std::memcpy(&word, bytes.data(), sizeof word);
      to_.push_back(word);
    }
  }
  void raw(std::span<const std::byte> bytes) { words(bytes); }
  void zeros(std::uint64_t bytes) { to_.resize(to_.size() + bytes / sizeof(Word)); }

 private:
  Words& to_;
};

/// The block that a version-2 structure was read from follows it: a save in mode 1 writes the block, and the
/// old numbers in it would lead elsewhere.
void follow_structure(auto& record) {
  if constexpr (requires { record.ext; }) {
    if (!record.ext) return;
    Words block;
    WordSink sink(block);
    Emitter emitter(sink, kFromStructures);
    emitter.block1(record);
    record.block1 = std::move(block);
  }
}

void renumber_references(Qis& scene, const Numbers& numbers) {
  for_each_list(scene, [&](const ListInfo& info, auto& list) {
    const auto rows = rows_from(info.record_tag);
    for_each_record(list, [&](std::size_t number, auto& record) {
      const auto place = static_cast<Word>(number);
      for (const Reference* row : rows) renumber_row(scene, *row, place, numbers);
      bool same = true;
      for_each_data_word(std::as_const(record),
                         [&](Word tag, const Word& word) { same = same && numbers.now(tag, word) == word; });
      if (same) return;
      about_to_change(scene, info.record_tag, place);
      for_each_data_word(record, [&](Word tag, Word& word) { word = numbers.now(tag, word); });
      follow_structure(record);
    });
  });
}

std::uint64_t bytes_of(const auto& record) {
  CountSink count;
  Emitter emitter(count, kFromStructures);
  walk(emitter, record);
  return count.total();
}

/// Adds to the sizes that a list and the file state; it wraps around.
void grow(Qis& scene, const ListInfo& info, auto& list, Word bytes) {
  list.header.size += bytes;
  Word& listed = list_bytes(scene.header, info);
  listed += bytes;
  if (info.extension) scene.header.block1[info.entry] = listed;
  scene.header.fixed.file_size += bytes;
}

/// Gives a record its number, if the word that says it did.
void renumber(auto& record, Word before, Word now) {
  if (record.fixed.index == before) record.fixed.index = now;
}

/// Takes records out of one list. @param gone  their numbers, sorted
void remove_from(Qis& scene, const ListInfo& info, auto& list, std::span<const Word> gone) {
  for (Word i = gone.front(); i < list.records.size(); ++i) about_to_change(scene, info.record_tag, i);
  std::uint64_t bytes = 0;
  Word kept = gone.front();
  for (Word i = kept; i < list.records.size(); ++i) {
    if (!gone.empty() && gone.front() == i) {
      bytes += bytes_of(list.records[i]) + sizeof(Word);
      gone = gone.subspan(1);
      continue;
    }
    list.records[kept] = std::move(list.records[i]);
    list.sizes[kept] = list.sizes[i];
    renumber(list.records[kept], i, kept);
    ++kept;
  }
  list.records.resize(kept);
  list.sizes.resize(kept);
  list.header.count = kept;
  grow(scene, info, list, -static_cast<Word>(bytes));
}

/// What a file stated otherwise moves with its record.
void renumber_carried_sizes(Qis& scene, const Numbers& numbers, std::span<const RecordId> gone) {
  std::array<Word, kCoreLists + kExtLists> tags{};
  std::size_t place = 0;
  for_each_list(scene,
                [&](const ListInfo& info, const auto& /*list*/) { tags.at(place++) = info.record_tag; });
  std::erase_if(scene.carried_sizes, [&](CarriedSize& carried) {
    SizeWord& word = carried.word;
    const Word tag = tags.at(word.list);
    if (kind_of(tag) == kKinds || word.record == SizeWord::kNone) return false;
    if (std::ranges::binary_search(gone, RecordId{tag, word.record})) return true;
    word.record = numbers.now(tag, word.record);
    return false;
  });
  std::ranges::sort(scene.carried_sizes, {}, &CarriedSize::word);
}

/// Compares records by all that makes them what they are.
class Comparison {
 public:
  Comparison(const Qis& scene, bool any_name) : any_name_(any_name) {
    std::unordered_map<std::string, Word> first;
    for (const Name& name : scene.name_list.records)
      names_.push_back(first.try_emplace(qiNameBytes(name), static_cast<Word>(names_.size())).first->second);
  }

  /// The bytes of a record without what may differ, one after the other.
  template <class R>
  std::uint64_t hash(const R& record, Word number) {
    std::uint64_t sum = 0xcbf29ce484222325;
    const auto add = [&](std::span<const std::byte> bytes) {
      for (const std::byte byte : bytes) sum = (sum ^ std::to_integer<std::uint64_t>(byte)) * 0x100000001b3;
    };
    const auto fixed = own_words(record, number);
    add(std::as_bytes(std::span(&fixed, 1)));
    for (const RecordPiece& piece : collect(one_, record)) add(piece.data);
    return sum;
  }
  template <class R>
  bool equal(const R& a, Word number_a, const R& b, Word number_b) {
    const auto fixed_a = own_words(a, number_a), fixed_b = own_words(b, number_b);
    return std::memcmp(&fixed_a, &fixed_b, sizeof fixed_a) == 0 &&
           std::ranges::equal(collect(one_, a), collect(other_, b), [](const auto& one, const auto& other) {
             return one.key == other.key && one.items == other.items &&
                    std::ranges::equal(one.data, other.data);
           });
  }

 private:
  template <class R>
  auto own_words(const R& record, Word number) const {
    auto fixed = record.fixed;
    if (fixed.index == number) fixed.index = 0;
    if constexpr (requires { fixed.name; }) {
      if (any_name_) {
        fixed.name = 0;
      } else if (fixed.name < names_.size()) {
        fixed.name = names_[fixed.name];
      }
    }
    return fixed;
  }
  /// All pieces but the first, which are the fixed words.
  static std::span<const RecordPiece> collect(PieceCollector& collector, const auto& record) {
    collector.clear();
    walk(collector, record);
    return collector.pieces().subspan(1);
  }

  bool any_name_;
  std::vector<Word> names_;  ///< of each name, the first one with its text
  PieceCollector one_, other_;
};

/// For each record of a list, the first one that is equal to it.
std::vector<Word> first_equals(const auto& records, Comparison& comparison) {
  std::vector<Word> first(records.size());
  std::unordered_map<std::uint64_t, std::vector<Word>> known;
  for (Word i = 0; i < records.size(); ++i) {
    auto& candidates = known[comparison.hash(records[i], i)];
    const auto equal = std::ranges::find_if(
        candidates, [&](Word other) { return comparison.equal(records[i], i, records[other], other); });
    first[i] = equal == candidates.end() ? i : *equal;
    if (equal == candidates.end()) candidates.push_back(i);
  }
  return first;
}

/// A material that has two textures which are equal goes on having two: nobody would expect one of them
/// twice.
void keep_apart_in_materials(const Qis& scene, std::vector<Word>& textures) {
  const auto lead_to = [&](Word texture) { return texture < textures.size() ? textures[texture] : texture; };
  for (const Mat& mat : scene.mat_list.records)
    for (std::size_t i = 1; i < mat.texs.size(); ++i)
      for (std::size_t j = 0; j < i; ++j)
        if (mat.texs[i] != mat.texs[j] && lead_to(mat.texs[i]) == lead_to(mat.texs[j]))
          for (const Word texture : {mat.texs[i], mat.texs[j]})
            if (texture < textures.size()) textures[texture] = texture;
}

}  // namespace

std::string to_string(const RecordId& record) {
  std::string name;
  std::apply(
      [&](const auto&... row) {
        ((row.info.record_tag == record.tag ? static_cast<void>(name = row.info.record)
                                            : static_cast<void>(0)),
         ...);
      },
      kLists);
  return name + "_" + std::to_string(record.number);
}

std::optional<RecordId> find_record(std::string_view name) {
  const std::size_t end = name.rfind('_');
  if (end == name.npos) return std::nullopt;
  RecordId found;
  std::apply(
      [&](const auto&... row) {
        ((row.info.record == name.substr(0, end) ? static_cast<void>(found.tag = row.info.record_tag)
                                                 : static_cast<void>(0)),
         ...);
      },
      kLists);
  const std::string_view digits = name.substr(end + 1);
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), found.number);
  if (found.tag == 0 || read.ec != std::errc{} || to_string(found) != name) return std::nullopt;
  return found;
}

bool is_renumberable(Word tag) { return kind_of(tag) != kKinds; }

std::optional<RecordId> referrer_of(const Qis& scene, const RecordId& record) {
  std::optional<RecordId> referrer;
  for_each_reference(scene, [&](const RecordId& from, Word tag, Word word) {
    if (!referrer && word == record.number && kind_of(tag) == kind_of(record.tag)) referrer = from;
  });
  return referrer;
}

std::vector<RecordId> unused_records(const Qis& scene) {
  std::array<std::vector<bool>, kKinds> used;
  for (std::size_t kind = 0; kind < kKinds; ++kind) used.at(kind).resize(record_count(scene, kTags.at(kind)));
  // What materials lead to counts when the material does, and so on: the kinds that refer come last.
  std::array<std::vector<std::pair<RecordId, RecordId>>, kKinds> from_kind;
  const auto use = [&](const RecordId& to) {
    auto& records = used.at(kind_of(to.tag));
    if (to.number < records.size()) records[to.number] = true;
  };
  for_each_reference(scene, [&](const RecordId& from, Word tag, Word word) {
    const std::size_t kind = kind_of(from.tag);
    if (kind == kKinds) {
      use({tag, word});
    } else if (from.number != word || kind != kind_of(tag)) {
      from_kind.at(kind).push_back({from, {tag, word}});
    }
  });
  for (bool more = true; more;) {
    more = false;
    for (std::size_t kind = kKinds; kind-- > 0;)
      std::erase_if(from_kind.at(kind), [&](const auto& link) {
        if (!used.at(kind)[link.first.number]) return false;
        use(link.second);
        return more = true;
      });
  }
  std::vector<RecordId> unused;
  for_each_list(scene, [&](const ListInfo& info, const auto& /*list*/) {
    const std::size_t kind = kind_of(info.tag);
    if (kind == kKinds) return;
    for (Word i = 0; i < used.at(kind).size(); ++i)
      if (!used.at(kind)[i]) unused.push_back({info.record_tag, i});
  });
  return unused;
}

std::vector<EqualRecords> join_equal_records(Qis& scene, bool any_name) {
  Comparison comparison(scene, any_name);
  std::vector<EqualRecords> joined;
  for_each_kind([&](auto member) {
    const ListInfo info = list_info(member);
    Numbers numbers(scene);
    auto& first = numbers.of(info.record_tag);
    if (first.empty()) return;
    first = first_equals(list_in(scene, member).records, comparison);
    if (info.record_tag == kTexTag) keep_apart_in_materials(scene, first);
    for (Word i = 0; i < first.size(); ++i)
      if (first[i] != i) joined.push_back({{info.record_tag, i}, {info.record_tag, first[i]}});
    renumber_references(scene, numbers);
  });
  std::ranges::sort(joined, {}, &EqualRecords::record);
  return joined;
}

void remove_records(Qis& scene, std::span<const RecordId> records) {
  std::vector<RecordId> gone(records.begin(), records.end());
  std::ranges::sort(gone);
  const auto twice = std::ranges::unique(gone);
  gone.erase(twice.begin(), twice.end());
  Numbers numbers(scene);
  for_each_kind([&](auto member) {
    const ListInfo info = list_info(member);
    std::vector<Word> from_list;
    for (const RecordId& record : gone)
      if (record.tag == info.record_tag && record.number < numbers.of(info.record_tag).size())
        from_list.push_back(record.number);
    if (from_list.empty()) return;
    Word before = 0;
    for (Word& number : numbers.of(info.record_tag)) {
      const bool goes = before < from_list.size() && from_list[before] == number;
      number -= before;
      before += goes;
    }
    remove_from(scene, info, list_in(scene, member), from_list);
  });
  renumber_references(scene, numbers);
  renumber_carried_sizes(scene, numbers, gone);
}

std::optional<Word> copy_record(Qis& scene, const RecordId& record) {
  std::optional<Word> copied;
  for_each_kind([&](auto member) {
    const ListInfo info = list_info(member);
    auto& list = list_in(scene, member);
    if (info.record_tag != record.tag || record.number >= list.records.size()) return;
    auto copy = list.records[record.number];
    const auto number = static_cast<Word>(list.records.size());
    renumber(copy, record.number, number);
    if constexpr (requires { copy.fixed.name; }) copy.fixed.name = kUnset;
    const auto bytes = static_cast<Word>(bytes_of(copy));
    if constexpr (requires { copy.fixed.size; }) copy.fixed.size = bytes;
    grow(scene, info, list, qiAddElementToList(list, [&](auto& added) {
           added = std::move(copy);
           return bytes;
         }));
    copied = number;
  });
  return copied;
}

}  // namespace qi
