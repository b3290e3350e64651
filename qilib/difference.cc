/// @file
/// Comparing two scenes, piece by piece.
#include "qilib/difference.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <span>
#include <utility>

#include "qilib/recordpieces.h"
#include "qilib/writer.h"

namespace qi {
namespace {

using ByteView = std::span<const std::byte>;

ByteView bytes_of(const auto& words) { return std::as_bytes(std::span(words)); }

bool same(ByteView a, ByteView b) {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

Word word_at(ByteView bytes, std::size_t number) {
  Word word = 0;
  std::memcpy(&word, bytes.subspan(number * sizeof word).data(), sizeof word);
  return word;
}

/// How two runs of that name differ.
PieceDifference difference_of(std::string name, ByteView a, ByteView b, bool fixed, bool texels = false) {
  const std::size_t each = texels ? 1 : sizeof(Word);
  PieceDifference difference{.piece = std::move(name),
                             .unit = texels ? PieceDifference::Unit::bytes : PieceDifference::Unit::words,
                             .before = a.size() / each,
                             .after = b.size() / each};
  for (std::size_t i = 0; i < std::min(difference.before, difference.after); ++i) {
    if (texels ? a[i] == b[i] : word_at(a, i) == word_at(b, i)) continue;
    ++difference.differing;
    if (fixed) difference.places.push_back(i);
  }
  return difference;
}

/// Leaves out what is said otherwise. @returns whether anything is left.
template <class Said>
bool leave_unsaid(PieceDifference& difference, Said said) {
  std::erase_if(difference.places, said);
  difference.differing = difference.places.size();
  return difference.differing != 0 || difference.before != difference.after;
}

/// Notes references that only one record holds, and which words that explains.
class LinkComparison {
 public:
  explicit LinkComparison(Difference& difference) : difference_(difference) {}

  void compare(const Reference& row, std::span<const Word> before, std::span<const Word> after) {
    if (std::ranges::equal(before, after)) return;
    const std::vector<Word> a = sorted(row, before), b = sorted(row, after);
    if (a == b) return;  // in another order
    std::vector<Word> gone, came;
    std::ranges::set_difference(a, b, std::back_inserter(gone));
    std::ranges::set_difference(b, a, std::back_inserter(came));
    for (const Word child : gone) difference_.links.push_back({&row, child, false});
    for (const Word child : came) difference_.links.push_back({&row, child, true});
    said_.push_back(std::as_bytes(before));
  }
  /// Whether the links say how this word of the record before differs, or this array.
  bool says(const std::byte* at, std::size_t bytes) const {
    return std::ranges::any_of(said_,
                               [&](ByteView said) { return said.data() == at && said.size() == bytes; });
  }

 private:
  static std::vector<Word> sorted(const Reference& row, std::span<const Word> held) {
    std::vector<Word> children;
    for (const Word child : held)
      if (!row.single || child != row.unset) children.push_back(child);
    std::ranges::sort(children);
    return children;
  }

  Difference& difference_;
  std::vector<ByteView> said_;
};

class SceneComparison {
 public:
  SceneComparison(const Qis& before, const Qis& after, const DifferenceSink& sink)
      : before_(before), after_(after), sink_(sink) {}

  std::size_t run() {
    header();
    std::apply([&](const auto&... row) { (lists(row), ...); }, kLists);
    if (told_ == 0) sizes_of_header();
    return told_;
  }

 private:
  void tell(Difference& difference) {
    const bool changed = difference.how == Difference::How::changed;
    if (changed && difference.links.empty() && difference.pieces.empty()) return;
    ++told_;
    sink_(difference);
  }

  static void compare(Difference& difference, const char* name, ByteView a, ByteView b, bool fixed = false,
                      bool texels = false) {
    if (!same(a, b)) difference.pieces.push_back(difference_of(name, a, b, fixed, texels));
  }

  void header() {
    Difference difference;
    const auto own = [](const Header& h) {
      return std::array{h.fixed.version, h.fixed.header_tag, h.fixed.ext_block1_size,
                        h.fixed.ext_block2_size};
    };
    const auto a = own(before_.header), b = own(after_.header);
    compare(difference, "fixed", bytes_of(a), bytes_of(b), true);
    for (PieceDifference& piece : difference.pieces)  // as they are numbered in the file
      for (std::size_t& place : piece.places) place = std::array<std::size_t, 4>{0, 2, 23, 24}.at(place);
    for (PieceDifference& piece : difference.pieces)
      piece.before = piece.after = sizeof(Header::Fixed) / sizeof(Word);
    compare(difference, "block1", block_after_table(before_.header), block_after_table(after_.header));
    compare(difference, "block2", bytes_of(before_.header.block2), bytes_of(after_.header.block2));
    compare(difference, "trailing", before_.trailing, after_.trailing, false, true);
    tell(difference);
  }
  /// Header block 1, of which a save in mode 2 writes the table alone where there is one.
  static ByteView block_after_table(const Header& header) {
    return has_ext_sizes(header) ? ByteView{} : bytes_of(header.block1);
  }
  /// The sizes of the lists and the file follow from what is in them. Where that is the same, they are told
  /// for themselves.
  void sizes_of_header() {
    Difference difference;
    compare(difference, "fixed", std::as_bytes(std::span(&before_.header.fixed, 1)),
            std::as_bytes(std::span(&after_.header.fixed, 1)), true);
    compare(difference, "table", bytes_of(before_.header.ext_sizes), bytes_of(after_.header.ext_sizes), true);
    tell(difference);
  }

  /// Whether a save writes the list.
  static bool is_there(const Qis& scene, const ListInfo& info) {
    return list_bytes(scene.header, info) != 0 && (!info.extension || has_ext_sizes(scene.header));
  }

  template <class Owner, class L>
  void lists(const ListRow<Owner, L>& row) {
    static const L none;
    info_ = &row.info;
    rows_.clear();
    for (const Reference& reference : references())
      if (reference.parent == info_->record_tag) rows_.push_back(&reference);
    const bool in_before = is_there(before_, row.info), in_after = is_there(after_, row.info);
    const L& a = in_before ? list_in(before_, row.list) : none;
    const L& b = in_after ? list_in(after_, row.list) : none;
    const std::size_t told = told_;
    if constexpr (Like<L, Scene>) {
      if (in_before || in_after) record(0, in_before ? &a : nullptr, in_after ? &b : nullptr);
    } else if constexpr (OneKindList<L>) {
      records(0, a.records, b.records);
    } else {
      records(0, a.records1, b.records1);
      records(std::max(a.records1.size(), b.records1.size()), a.records2, b.records2);
    }
    itself(a, b, told == told_);
  }

  void records(std::size_t first, const auto& a, const auto& b) {
    for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i)
      record(static_cast<Word>(first + i), i < a.size() ? &a[i] : nullptr, i < b.size() ? &b[i] : nullptr);
  }

  template <class R>
  void record(Word number, const R* a, const R* b) {
    if (a && b) {
      collect(pieces_a_, *a);
      collect(pieces_b_, *b);
      if (std::ranges::equal(
              pieces_a_.pieces(), pieces_b_.pieces(), [](const RecordPiece& one, const RecordPiece& other) {
                return one.key == other.key && one.items == other.items && same(one.data, other.data);
              }))
        return;
    }
    Difference difference{.list = info_, .number = number};
    LinkComparison links{difference};
    for (const Reference* row : rows_)
      links.compare(*row, a ? row->held(before_, number) : std::span<const Word>{},
                    b ? row->held(after_, number) : std::span<const Word>{});
    if (a && b) {
      compare_pieces(difference, links);
    } else {
      difference.how = a ? Difference::How::removed : Difference::How::added;
      CountSink count;
      Emitter emitter(count, kFromStructures);
      walk(emitter, a ? *a : *b);
      difference.words = count.total() / sizeof(Word);
    }
    tell(difference);
  }
  static void collect(PieceCollector& collector, const auto& record) {
    collector.clear();
    walk(collector, record);
  }

  void compare_pieces(Difference& difference, const LinkComparison& links) {
    for_each_pair(
        pieces_a_.pieces(), pieces_b_.pieces(), [&](const RecordPiece* one, const RecordPiece* other) {
          const RecordPiece& piece = one ? *one : *other;
          const bool in_part = piece.parts != 0;
          if (in_part && (!one || !other)) return;  // the number of parts says it
          const ByteView a = one ? one->data : ByteView{}, b = other ? other->data : ByteView{};
          const std::size_t items_a = one ? one->items : 0, items_b = other ? other->items : 0;
          if (items_a == items_b && same(a, b)) return;
          if (piece.sort == RecordPiece::Sort::parts) {
            difference.pieces.push_back({piece.name(), PieceDifference::Unit::parts, items_a, items_b});
            return;
          }
          const bool fixed = piece.sort == RecordPiece::Sort::fixed;
          if (!fixed && a.data() && links.says(a.data(), a.size())) return;
          PieceDifference found =
              difference_of(piece.name(), a, b, fixed, piece.sort == RecordPiece::Sort::texels);
          if (fixed && !leave_unsaid(found, [&](std::size_t place) {
                return links.says(a.subspan(place * sizeof(Word)).data(), sizeof(Word)) ||
                       counts(word_at(a, place), word_at(b, place));
              }))
            return;
          difference.pieces.push_back(std::move(found));
        });
  }
  /// Whether these are the numbers of entries, or of bytes, of an array that has become longer or shorter.
  bool counts(Word before, Word after) const {
    bool found = false;
    for_each_pair(
        pieces_a_.pieces(), pieces_b_.pieces(), [&](const RecordPiece* one, const RecordPiece* other) {
          const std::size_t items_a = one ? one->items : 0, items_b = other ? other->items : 0;
          const std::size_t bytes_a = one ? one->data.size() : 0, bytes_b = other ? other->data.size() : 0;
          found |= (items_a != items_b && before == items_a && after == items_b) ||
                   (bytes_a != bytes_b && before == bytes_a && after == bytes_b);
        });
    return found;
  }

  /// What a list says of itself. Its sizes and count follow from its records and are told only where those
  /// are the same.
  template <class L>
  void itself(const L& a, const L& b, bool same_records) {
    Difference difference{.list = info_};
    if constexpr (Like<L, Scene>) {
      compare(difference, "tail", bytes_of(a.tail), bytes_of(b.tail));
    } else {
      const auto header_a = std::as_bytes(std::span(&a.header, 1)),
                 header_b = std::as_bytes(std::span(&b.header, 1));
      if (!same(header_a, header_b)) {
        PieceDifference header = difference_of("header", header_a, header_b, true);
        constexpr std::size_t kSize = 2, kBlocks = sizeof a.header / sizeof(Word) - 2;
        const auto follows = [&](std::size_t place) { return place >= kSize && place < kBlocks; };
        if (leave_unsaid(header, [&](std::size_t place) { return !same_records && follows(place); }))
          difference.pieces.push_back(std::move(header));
      }
      if (same_records) size_tables(difference, a, b);
      compare(difference, "block1", bytes_of(a.block1), bytes_of(b.block1));
      compare(difference, "block2", bytes_of(a.block2), bytes_of(b.block2));
      compare(difference, "tail", bytes_of(a.tail), bytes_of(b.tail));
    }
    tell(difference);
  }
  template <OneKindList L>
  static void size_tables(Difference& difference, const L& a, const L& b) {
    compare(difference, "sizes", bytes_of(a.sizes), bytes_of(b.sizes));
  }
  template <TwoKinds L>
  static void size_tables(Difference& difference, const L& a, const L& b) {
    compare(difference, "sizes", bytes_of(a.sizes1), bytes_of(b.sizes1));
    compare(difference, "sizes2", bytes_of(a.sizes2), bytes_of(b.sizes2));
  }

  const Qis& before_;
  const Qis& after_;
  const DifferenceSink& sink_;
  std::size_t told_ = 0;
  const ListInfo* info_ = nullptr;
  std::vector<const Reference*> rows_;  ///< of the records of that list
  PieceCollector pieces_a_, pieces_b_;
};

}  // namespace

std::size_t compare_scenes(const Qis& before, const Qis& after, const DifferenceSink& sink) {
  return SceneComparison(before, after, sink).run();
}

}  // namespace qi
