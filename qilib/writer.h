/// @file
/// Writing one list: what the walks emit, to a file or just to be counted.
#pragma once

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <span>

#include "qilib/byteorder.h"
#include "qilib/listwalk.h"
#include "qilib/qis.h"

namespace qi {

/// Where a save gets the records' extension block 1 from.
enum WriteMode : int {
  kBlocksAsRead = 1,    ///< the block as it stood in the file
  kFromStructures = 2,  ///< the version-2 structure beside the record, so that its edits are saved
};

/// Puts pieces into a file. The first failed write sticks, in errno's words.
class FileSink {
 public:
  explicit FileSink(std::FILE* file) : file_(file) {}
  bool ok() const { return ok_; }

  /// Words in host order.
  void words(std::span<const std::byte> bytes) {
    if (fits(bytes.size())) ok_ = fwriteEndianSwap4(bytes.data(), 1, bytes.size(), file_) == bytes.size();
  }
  /// Bytes in file order.
  void raw(std::span<const std::byte> bytes) {
    if (fits(bytes.size())) ok_ = std::fwrite(bytes.data(), 1, bytes.size(), file_) == bytes.size();
  }
  void zeros(std::uint64_t n) {
    static constexpr std::array<std::byte, 4096> kZeros{};
    for (; n != 0 && ok_; n -= std::min<std::uint64_t>(n, kZeros.size()))
      raw(std::span(kZeros).first(static_cast<std::size_t>(std::min<std::uint64_t>(n, kZeros.size()))));
  }

 private:
  /// A file may take 4 GiB at most: its size word holds no more.
  bool fits(std::size_t n) {
    written_ += n;
    if (ok_ && written_ > std::numeric_limits<Word>::max()) {
      errno = EFBIG;
      ok_ = false;
    }
    return ok_ && n != 0;
  }

  std::FILE* file_;
  std::uint64_t written_ = 0;
  bool ok_ = true;
};

/// Counts the bytes that would be written.
class CountSink {
 public:
  std::uint64_t total() const { return total_; }
  void words(std::span<const std::byte> bytes) { total_ += bytes.size(); }
  void raw(std::span<const std::byte> bytes) { total_ += bytes.size(); }
  void zeros(std::uint64_t n) { total_ += n; }

 private:
  std::uint64_t total_ = 0;
};

/// Whether a record's extension block 1 comes from its version-2 structure. In mode 1 the block is written
/// as it was read, unless an edit changed its length: the old words would not have the length that the record
/// states.
template <class R>
bool writes_structure(const R& record, int mode) {
  const Word size = record.fixed.block1_size;
  return record.ext && size != 0 && (mode == kFromStructures || record.block1.size() * sizeof(Word) != size);
}

/// Whether the extension list size table takes the place of header extension block 1, however long that was.
inline bool writes_table_alone(const Header& header, int mode) {
  return mode == kFromStructures && has_ext_sizes(header) && header.fixed.ext_block1_size != 0;
}

/// Emits the pieces of records in file order: the Io of the walks (see walk.h) that writes. Every piece
/// takes the room that its count or size word states: one that holds less is filled up with zeros.
template <class Sink>
class Emitter {
 public:
  Emitter(Sink& sink, int mode) : sink_(sink), mode_(mode) {}

  template <class F>
  void fixed(const F& f) {
    sink_.words(std::as_bytes(std::span(&f, 1)));
  }
  void tag(Word /*found*/, Word /*expected*/) {}
  void name_tag(Word /*found*/) {}
  void name_list_tag(Word /*found*/) {}
  template <class F>
  void exact(const F& /*f*/) {}
  template <class F>
  void longer(const F& f, const Words& rest) {
    if (f.fixed_size > sizeof(F)) items(rest, (f.fixed_size - sizeof(F)) / sizeof(Word));
  }

  void words(const Words& v, std::uint64_t n) { items(v, n); }
  template <class Missing>
  void counted(const Words& v, Missing missing) {
    rest(v);
    if (missing(v) == 0) return;
    Words whole = v;
    for (std::uint64_t more = 0; (more = missing(whole)) != 0;) whole.resize(whole.size() + more);
    sink_.zeros((whole.size() - v.size()) * sizeof(Word));
  }
  template <class T>
  void items(const CompactArray<T>& v, std::uint64_t n) {
    const std::size_t held = least(n, v.size());
    sink_.words(std::as_bytes(std::span(v).first(held)));
    sink_.zeros((n - held) * sizeof(T));
  }
  template <class T>
  void slots(const CompactArray<T>& v, std::uint64_t n, std::size_t bytes) {
    const std::size_t held = least(n, v.size());
    for (std::size_t i = 0; i < held; ++i) sink_.words(std::as_bytes(std::span(&v[i], 1)).first(bytes));
    sink_.zeros((n - held) * bytes);
  }
  /// The n first halves, then the n second halves.
  template <class T>
  void pairs(const CompactArray<T>& v, std::uint64_t n) {
    columns(v, n);
  }
  /// The first words of all, then the second words of all, and so on.
  template <class T>
  void columns(const CompactArray<T>& v, std::uint64_t n) {
    const std::size_t held = least(n, v.size());
    Words column(held);
    for (std::size_t word = 0; word < sizeof(T) / sizeof(Word); ++word) {
      for (std::size_t i = 0; i < held; ++i)
        std::memcpy(&column[i], std::as_bytes(std::span(&v[i], 1)).subspan(word * sizeof(Word)).data(),
                    sizeof(Word));
      items(column, n);
    }
  }
  void bytes(const CompactArray<std::byte>& v, std::int64_t n) {
    if (n <= 0) return;
    const std::size_t held = least(static_cast<std::uint64_t>(n), v.size());
    sink_.raw(std::span(v).first(held));
    sink_.zeros(static_cast<std::uint64_t>(n) - held);
  }
  void block(const Words& v, std::int64_t n) {
    if (n > 0) items(v, static_cast<std::uint64_t>(n) / sizeof(Word));
  }
  /// A length that is no whole number of words is rounded up.
  void text(const Words& v, std::int64_t n) {
    if (n > 0) items(v, (static_cast<std::uint64_t>(n) + sizeof(Word) - 1) / sizeof(Word));
  }
  void records(const auto& v, std::uint64_t n) {
    for (std::size_t i = 0; i < least(n, v.size()); ++i) walk(*this, v[i]);
  }
  template <class R>
  void blocks(const R& r) {
    block(r.block1, r.fixed.block1_size);
    block(r.block2, r.fixed.block2_size);
  }
  template <class R>
  void structure(const R& r) {
    block1(r);
    block(r.block2, r.fixed.block2_size);
  }
  /// Extension block 1 of a record that may have a version-2 structure.
  template <class R>
  void block1(const R& r) {
    if (writes_structure(r, mode_)) {
      walk(*this, *r.ext, tiles_of(r));
      rest(r.ext->tail);
    } else {
      block(r.block1, r.fixed.block1_size);
    }
  }
  void rest(const Words& v) { items(v, v.size()); }

 private:
  static std::size_t least(std::uint64_t n, std::size_t held) {
    return static_cast<std::size_t>(std::min<std::uint64_t>(n, held));
  }

  Sink& sink_;
  int mode_;
};

/// Writes what `emit(emitter)` emits. @returns 1, or 0 when a write failed.
template <class Emit>
int write_to(std::FILE* file, int mode, Emit emit) {
  FileSink sink(file);
  Emitter<FileSink> emitter(sink, mode);
  emit(emitter);
  return sink.ok();
}

/// Writes a list as it is held. @returns 1, or 0 when a write failed.
template <class L>
struct WriteList {
  int operator()(std::FILE* file, const L& list, int mode = kBlocksAsRead) const {
    return write_to(file, mode, [&](auto& emitter) { walk_list(emitter, list); });
  }
};

}  // namespace qi
