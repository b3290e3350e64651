/// @file
/// Reading one list: a bounds-checked cursor, the Reader that the walks are called with, and the set-ups.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "qilib/byteorder.h"
#include "qilib/listwalk.h"
#include "qilib/messages.h"
#include "qilib/qis.h"

namespace qi {

/// A place in a block of words. The first failure sticks: from then on nothing moves any more.
class ListCursor {
 public:
  explicit ListCursor(std::span<const Word> words) : words_(words) {}
  /// A block of so many bytes, a whole number of words, that begins where the file stands. It is read piece
  /// by piece, so that a large list is never held twice.
  ListCursor(std::FILE* file, std::size_t bytes) : file_(file), unread_(bytes / sizeof(Word)) {}
  ListCursor(const ListCursor&) = delete;
  ListCursor& operator=(const ListCursor&) = delete;

  /// The next n items of so many words each, good until the next call; none, and an error about `what`, when
  /// fewer are left.
  std::span<const Word> take(std::uint64_t n, std::string_view what, std::size_t words_each = 1) {
    if (!check(n, what, words_each)) return {};
    const std::size_t words = static_cast<std::size_t>(n) * words_each;
    if (words > words_.size() - pos_ && !read_on(words)) return {};
    pos_ += words;
    return words_.subspan(pos_ - words, words);
  }
  /// The words of the next n bytes; none, and an error, when n is no whole number of words.
  std::span<const Word> take_bytes(std::int64_t n, std::string_view what) {
    if (n >= 0 && n % std::int64_t{sizeof(Word)} == 0)
      return take(static_cast<std::uint64_t>(n) / sizeof(Word), what);
    fail({.code = MessageCode::no_whole_words, .what = what, .found = static_cast<std::uint64_t>(n)});
    return {};
  }
  /// Whether n items are left; an error about `what` when they are not.
  bool check(std::uint64_t n, std::string_view what, std::size_t words_each) {
    if (error_) return false;
    if (n <= left() / words_each) return true;
    const std::uint64_t item_bytes = words_each * sizeof(Word);
    const std::uint64_t most = std::numeric_limits<std::uint64_t>::max() / item_bytes;
    fail({.code = MessageCode::too_large,
          .what = what,
          .found = std::min(n, most) * item_bytes,
          .expected = left() * sizeof(Word)});
    return false;
  }
  /// Keeps the message, about what begins here unless it says where, if it is the first.
  void fail(Message message) {
    if (error_) return;
    if (!message.offset) message.offset = offset();
    error_ = std::move(message);
  }
  std::size_t left() const { return words_.size() - pos_ + unread_; }
  /// Bytes from the beginning of the block.
  std::size_t offset() const { return (before_ + pos_) * sizeof(Word); }
  const std::optional<Message>& error() const { return error_; }

 private:
  /// Reads on until so many words are at hand, as far as there are. @returns false, and an error, when they
  /// could not be had.
  bool read_on(std::size_t words);

  std::span<const Word> words_;  ///< what is at hand
  std::size_t pos_ = 0;
  std::optional<Message> error_;
  std::FILE* file_ = nullptr;
  std::size_t unread_ = 0;  ///< words of the block that are still in the file
  std::size_t before_ = 0;  ///< words that were at hand before
  Words piece_;             ///< holds what is at hand of a file
};

}  // namespace qi

/// Copies the next words into `destination`. @returns 1, or 0 when the cursor has fewer left.
int qiReadArray(qi::ListCursor& cursor, Words& destination, std::uint64_t word_count,
                std::string_view what = "array");

/// Copies two extension blocks, sizes in bytes; the second only if the first could be had.
int qiReadExtBlk1(qi::ListCursor& cursor, Words& destination1, Word size1, Words& destination2, Word size2);

/// Reads n pairs, stored as n first halves, then n second halves.
template <class Pairs>
int qiSetupExternal(qi::ListCursor& cursor, Pairs& destination, std::uint64_t n) {
  const auto words = cursor.take(n, "pairs", 2);
  destination.resize(words.size() / 2);
  for (std::size_t i = 0; i < destination.size(); ++i)
    destination[i] = {words[i], words[destination.size() + i]};
  return !cursor.error();
}

namespace qi {

/// Fills records from words of a list, or of one of its records: the Io of the walks (see walk.h) that
/// reads.
class Reader {
 public:
  Reader(std::span<const Word> words, std::string_view list, std::optional<std::size_t> record = {})
      : cursor_(words), list_(list), record_(record) {}
  Reader(std::FILE* file, std::size_t bytes, std::string_view list) : cursor_(file, bytes), list_(list) {}

  bool ok() const { return !cursor_.error(); }
  /// Says what went wrong, if anything did. @returns 1 when nothing did.
  int finish(const MessageSink& sink) const {
    if (ok()) return 1;
    Message message = *cursor_.error();
    message.list = list_;
    message.record = record_;
    sink(message);
    return 0;
  }

  template <class F>
  void fixed(F& f) {
    fixed_at_ = cursor_.offset();
    const auto words = cursor_.take(sizeof(F) / sizeof(Word), "fixed part");
    if (!words.empty()) copy_out(words, f);
  }
  void tag(Word found, Word expected) {
    if (found != expected) fail_fixed(MessageCode::wrong_tag, found, expected);
  }
  void name_list_tag(Word found) {
    name_list_tag_ = found;
    name_tag_is(found, list_of(Name::kTag), list_of(Name::kExternalTag));
  }
  void name_tag(Word found) { name_tag_is(found, Name::kTag, Name::kExternalTag); }

  template <class F>
  void exact(const F& f) {
    if (f.fixed_size != sizeof(F)) wrong_length(f.fixed_size, sizeof(F));
  }
  template <class F>
  void longer(const F& f, Words& rest) {
    if (f.fixed_size < sizeof(F)) {
      wrong_length(f.fixed_size, sizeof(F));
    } else {
      block(rest, std::int64_t{f.fixed_size} - std::int64_t{sizeof(F)}, "fixed part");
    }
  }

  void words(Words& v, std::uint64_t n) { qiReadArray(cursor_, v, n); }
  template <class Missing>
  void counted(Words& v, Missing missing) {
    v.clear();
    for (std::uint64_t more = 0; ok() && (more = missing(v)) != 0;) {
      const auto words = cursor_.take(more, "array");
      v.reserve(v.size() + words.size());
      v.insert(v.end(), words.begin(), words.end());
    }
  }
  template <class T>
  void items(CompactArray<T>& v, std::uint64_t n) {
    slots(v, n, sizeof(T));
  }
  template <class T>
  void slots(CompactArray<T>& v, std::uint64_t n, std::size_t bytes) {
    const std::size_t item_words = bytes / sizeof(Word);
    v.clear();
    if (n == 0) return;
    const auto words = cursor_.take(n, "array", item_words);
    if (words.empty()) return;
    v.resize(static_cast<std::size_t>(n));
    if (bytes == sizeof(T)) {
      std::memcpy(std::as_writable_bytes(std::span(v)).data(), words.data(), words.size_bytes());
    } else {
      for (std::size_t i = 0; i < v.size(); ++i) copy_out(words.subspan(i * item_words, item_words), v[i]);
    }
  }
  template <class T>
  void pairs(CompactArray<T>& v, std::uint64_t n) {
    qiSetupExternal(cursor_, v, n);
  }
  void columns(CompactArray<QisPoly>& v, std::uint64_t n) {
    constexpr std::size_t kColumns = std::size(QisPoly{}.words);
    v.clear();
    const auto words = cursor_.take(n, "polygon entries", kColumns);
    v.resize(words.size() / kColumns);
    for (std::size_t i = 0; i < v.size(); ++i)
      for (std::size_t column = 0; column < kColumns; ++column)
        v[i].words[column] = words[column * v.size() + i];
  }
  void bytes(CompactArray<std::byte>& v, std::int64_t n) {
    const auto words = cursor_.take_bytes(n, "texels");
    v.resize(words.size_bytes());
    if (v.empty()) return;
    std::memcpy(v.data(), words.data(), v.size());
    endianSwap4(v.data(), v.size());
  }
  void block(Words& v, std::int64_t n, std::string_view what = "data") {
    const auto words = cursor_.take_bytes(n, what);
    v.assign(words.begin(), words.end());
  }
  /// A length that is no whole number of words is rounded down here and up by the writer.
  void text(Words& v, std::int64_t n) {
    if (n < 0) {
      block(v, n, "text");
    } else {
      qiReadArray(cursor_, v, static_cast<std::uint64_t>(n) / sizeof(Word), "text");
    }
  }
  void records(auto& v, std::uint64_t n) {
    using R = typename std::remove_reference_t<decltype(v)>::value_type;
    v.clear();
    if (!cursor_.check(n, "records", least_bytes<R>() / sizeof(Word))) return;
    v.resize(static_cast<std::size_t>(n));
    const bool numbered = !std::exchange(inside_record_, true);
    for (std::size_t i = 0; i < v.size() && ok(); ++i) {
      if (numbered) record_ = i;
      walk(*this, v[i]);
      if (!ok()) v[i] = R{};  // no counts without the arrays that they count
    }
    if (numbered) inside_record_ = false;
    if (numbered && ok()) record_.reset();
  }
  template <class R>
  void blocks(R& r) {
    if (ok()) qiReadExtBlk1(cursor_, r.block1, r.fixed.block1_size, r.block2, r.fixed.block2_size);
  }
  /// The structure in block 1 is the version-2 set-ups' work, on what is read here.
  template <class R>
  void structure(R& r) {
    blocks(r);
  }
  void rest(Words& v) { qiReadArray(cursor_, v, cursor_.left()); }

 private:
  /// Fills a struct of words, or its first words, from the file's.
  template <class T>
  static void copy_out(std::span<const Word> words, T& item) {
    static_assert(std::is_trivially_copyable_v<T>);
    std::memcpy(std::as_writable_bytes(std::span(&item, 1)).data(), words.data(), words.size_bytes());
  }
  /// A record takes no fewer in the file.
  template <class R>
  static constexpr std::size_t least_bytes() {
    if constexpr (requires { R::kLeastBytes; }) {
      return R::kLeastBytes;
    } else {
      return sizeof(R::fixed);
    }
  }
  /// A failure of the fixed words that were read last.
  void fail_fixed(MessageCode code, Word found, std::size_t expected) {
    cursor_.fail({.code = code, .found = found, .expected = expected, .offset = fixed_at_});
  }
  void wrong_length(Word found, std::size_t expected) {
    fail_fixed(MessageCode::wrong_length, found, expected);
  }
  void name_tag_is(Word found, Word tag1, Word tag2) {
    if (found != tag1 && found != tag2) fail_fixed(MessageCode::wrong_name_tag, name_list_tag_, found);
  }

  ListCursor cursor_;
  std::string_view list_;
  std::optional<std::size_t> record_;
  std::size_t fixed_at_ = 0;  ///< bytes from the beginning to the fixed words that were read last
  bool inside_record_ = false;
  Word name_list_tag_ = 0;
};

// A failed set-up keeps the whole records that it read; counts and what they count stay in agreement.
inline void make_whole(Scene& scene) { scene = Scene{}; }
template <OneKindList L>
void make_whole(L& list) {
  list.header.count = static_cast<Word>(list.records.size());
  list.sizes.resize(list.records.size());
}
template <TwoKinds L>
void make_whole(L& list) {
  list.header.count1 = static_cast<Word>(list.records1.size());
  list.header.count2 = static_cast<Word>(list.records2.size());
  list.sizes1.resize(list.records1.size());
  list.sizes2.resize(list.records2.size());
}

/// Parses a list's words into the list object. @returns 1, or 0 after a message, by default a printed one.
template <class L>
struct SetupList {
  std::string_view list_name;
  int operator()(std::span<const Word> buffer, L& list, const MessageSink& sink = print_message) const {
    Reader reader(buffer, list_name);
    return read(reader, list, sink);
  }
  /// The same from a file.
  int operator()(std::FILE* file, std::size_t bytes, L& list, const MessageSink& sink) const {
    Reader reader(file, bytes, list_name);
    return read(reader, list, sink);
  }

 private:
  static int read(Reader& reader, L& list, const MessageSink& sink) {
    list = L{};
    walk_list(reader, list);
    if (!reader.ok()) make_whole(list);
    return reader.finish(sink);
  }
};

/// What becomes of a list that is absent from the file: a core list stays as the empty scene made it, an
/// extension list has no records.
template <class L>
struct ResetList {
  bool extension;
  int operator()(L& list) const {
    if (extension) list = L{};
    return 1;
  }
};

/// Parses extension block 1 of version-2 records into the structures beside them. A record without a block
/// has no structure; it fails the set-up once the other records have been tried. Of what fails in a list, the
/// first is told.
template <class R>
struct SetupExt {
  std::string_view list_name;
  int operator()(List<R>& list, const MessageSink& sink = print_message) const {
    int result = 1;
    const MessageSink first_alone = [&](const Message& message) {
      if (result) sink(message);
    };
    for (std::size_t i = 0; i < list.records.size(); ++i)
      if (!one(list.records[i], i, first_alone)) result = 0;
    return result;
  }
  int operator()(R& record, const MessageSink& sink = print_message) const { return one(record, 0, sink); }

 private:
  int one(R& record, std::size_t number, const MessageSink& sink) const {
    record.ext.reset();
    if (record.fixed.block1_size == 0) {
      sink({.code = MessageCode::no_structure,
            .list = list_name,
            .record = number,
            .what = "extension block 1",
            .expected = sizeof record.ext->head,
            .offset = 0});
      return 0;
    }
    Reader reader(record.block1, list_name, number);
    auto& ext = record.ext.emplace();
    walk(reader, ext, tiles_of(record));
    reader.rest(ext.tail);
    if (!reader.ok()) record.ext.reset();
    return reader.finish(sink);
  }
};

/// Reads one list from where the file stands.
/// @param size  bytes of the list; 0: it is absent, and reset.
/// @param list_name  the list's name, such as "ObjList".
/// @returns what the list's set-up or reset returns; 0 when there is no such list, or when the file ends
///          before the list does.
int read_list(std::FILE* file, Word size, Qis& scene, std::string_view list_name, const MessageSink& sink);

}  // namespace qi

/// The same, printing its message.
int qiReadList(std::FILE* file, Word size, Qis& scene, std::string_view list_name);
