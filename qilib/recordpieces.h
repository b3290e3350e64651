/// @file
/// What a record or a list consists of, laid side by side: for comparing two of them, and for telling where
/// they differ.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "qilib/listwalk.h"
#include "qilib/walk.h"

namespace qi {

/// Something in a record that stands in memory as one run of bytes. It belongs to the record.
struct RecordPiece {
  enum class Sort : std::uint8_t { fixed, array, texels, text, block, parts };

  /// The place among the record's pieces, the part that it is in (from 1; 0: none), and its place there.
  using Key = std::array<std::uint32_t, 3>;
  Key key{};
  Sort sort = Sort::fixed;
  bool in_structure = false;        ///< of version 2
  std::uint32_t number = 0;         ///< among those of its sort, from 1
  std::uint32_t parts = 0;          ///< for a piece of a part: the number of the piece that counts the parts
  std::span<const std::byte> data;  ///< none for a piece that counts parts
  std::size_t items = 0;            ///< entries of the array, parts

  /// "fixed", "array2", "block1", "structure.array1", "parts1[4].fixed"
  std::string name() const;
};

/// The Io (see walk.h) that notes the pieces of a const record, in the order of their keys. A version-2
/// structure takes the place of the block that it was read from.
class PieceCollector {
 public:
  /// Forgets the last record.
  void clear() {
    pieces_.clear();
    in_ = {};
  }
  std::span<const RecordPiece> pieces() const { return pieces_; }

  void fixed(const auto& f) { add(RecordPiece::Sort::fixed, std::as_bytes(std::span(&f, 1)), 1, in_.fixed); }
  void tag(Word /*found*/, Word /*expected*/) {}
  void name_tag(Word /*found*/) {}
  void exact(const auto& /*f*/) {}
  void longer(const auto& /*f*/, const auto& rest) { array(rest); }
  void words(const auto& v, auto /*n*/) { array(v); }
  void items(const auto& v, auto /*n*/) { array(v); }
  void slots(const auto& v, auto /*n*/, std::size_t /*bytes*/) { array(v); }
  void pairs(const auto& v, auto /*n*/) { array(v); }
  void columns(const auto& v, auto /*n*/) { array(v); }
  void counted(const auto& v, auto /*missing*/) { array(v); }
  void bytes(const auto& v, auto /*n*/) {
    add(RecordPiece::Sort::texels, std::span(v), v.size(), in_.texels);
  }
  void text(const auto& v, auto /*n*/) { add(RecordPiece::Sort::text, v, in_.texts); }
  void block(const auto& v, auto /*n*/) { array(v); }
  void records(const auto& v, auto /*n*/) {
    add(RecordPiece::Sort::parts, {}, v.size(), in_.parts);
    part_list_ = in_.parts;
    for (std::size_t i = 0; i < v.size(); ++i)
      inside(static_cast<std::uint32_t>(i + 1), false, [&] { walk(*this, v[i]); });
    part_list_ = 0;
  }
  void blocks(const auto& r) {
    add(RecordPiece::Sort::block, r.block1, in_.blocks);
    add(RecordPiece::Sort::block, r.block2, in_.blocks);
  }
  void structure(const auto& r) {
    if (r.ext) {
      ++in_.blocks;
      ++in_.all;
      inside(1, true, [&] {
        walk(*this, *r.ext, tiles_of(r));
        array(r.ext->tail);
      });
    } else {
      add(RecordPiece::Sort::block, r.block1, in_.blocks);
    }
    add(RecordPiece::Sort::block, r.block2, in_.blocks);
  }

 private:
  /// How many pieces there were so far, here or in a part.
  struct Counts {
    std::uint32_t all = 0, fixed = 0, arrays = 0, texels = 0, texts = 0, blocks = 0, parts = 0;
  };

  void array(const auto& v) { add(RecordPiece::Sort::array, v, in_.arrays); }
  void add(RecordPiece::Sort sort, const auto& v, std::uint32_t& number) {
    add(sort, std::as_bytes(std::span(v)), v.size(), number);
  }
  void add(RecordPiece::Sort sort, std::span<const std::byte> data, std::size_t items,
           std::uint32_t& number) {
    ++in_.all;
    const RecordPiece::Key key =
        part_ == 0 ? RecordPiece::Key{in_.all, 0, 0} : RecordPiece::Key{outer_.all, part_, in_.all};
    pieces_.push_back({key, sort, in_structure_, ++number, part_list_, data, items});
  }
  void inside(std::uint32_t part, bool structure, auto walk_part) {
    outer_ = in_;
    in_ = {};
    part_ = part;
    in_structure_ = structure;
    walk_part();
    in_ = outer_;
    part_ = 0;
    in_structure_ = false;
  }

  std::vector<RecordPiece> pieces_;
  Counts in_, outer_;
  std::uint32_t part_ = 0, part_list_ = 0;
  bool in_structure_ = false;
};

/// Calls `visit(one, other)` for the pieces of two records that stand in the same place; the one that has no
/// fellow is null beside it.
template <class Visit>
void for_each_pair(std::span<const RecordPiece> a, std::span<const RecordPiece> b, Visit visit) {
  while (!a.empty() || !b.empty()) {
    const bool first = b.empty() || (!a.empty() && a.front().key <= b.front().key);
    const bool second = a.empty() || (!b.empty() && b.front().key <= a.front().key);
    visit(first ? &a.front() : nullptr, second ? &b.front() : nullptr);
    if (first) a = a.subspan(1);
    if (second) b = b.subspan(1);
  }
}

}  // namespace qi
