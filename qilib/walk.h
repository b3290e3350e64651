/// @file
/// The way over a record or a version-2 structure, piece by piece in file order.
///
/// The struct of a kind holds its fixed words and says in `variable_parts(io, record)` what follows them. The
/// reader fills the record, the writer and the size count visit a const one; nothing else in the program
/// knows where a piece stands.
///
/// What an `Io` offers:
///  - `fixed(f)`: the fixed words, exactly as many as the struct has;
///  - `tag(found, expected)`: the tag check, after the fixed words; `name_tag(found)` and
///    `name_list_tag(found)` for names, which may carry either of two tags;
///  - `exact(f)`: the fixed words state their own length in `f.fixed_size`, and it must be the struct's;
///  - `longer(f, rest)`: they do, and words beyond the struct's are kept in `rest`;
///  - `words(v, n)`: n words; `items(v, n)`: n trivially copyable items; `slots(v, n, bytes)`: n items of
///    which only the first `bytes` bytes each stand in the file;
///  - `counted(v, missing)`: words that tell themselves how many they are: `missing(v)` are to follow those
///  in v;
///  - `pairs(v, n)`: n pairs stored as n first halves, then n second halves; `columns(v, n)`: n five-word
///    entries stored column by column;
///  - `bytes(v, n)`: n bytes kept in file order; `block(v, n)`: n bytes held as words; `text(v, n)`: the
///    words of an n-byte text;
///  - `records(v, n)`: n records, each by a walk of its own;
///  - `blocks(record)`: the record's two extension blocks; `structure(record)` in the same place for the
///    kinds whose block 1 holds a version-2 structure in `record.ext`.
#pragma once

#include <concepts>
#include <type_traits>

#include "qilib/words.h"

namespace qi {

struct Name;

template <class T, class Record>
concept Like = std::same_as<std::remove_const_t<T>, Record>;

/// A record or a part of one. Tags are checked of kinds that have a `kTag`.
template <class Io, class R>
requires requires(R& r) { r.fixed; }
void walk(Io& io, R& r) {
  using Record = std::remove_const_t<R>;
  io.fixed(r.fixed);
  if constexpr (std::same_as<Record, Name>) {
    io.name_tag(r.fixed.tag);
  } else if constexpr (requires { Record::kTag; }) {
    io.tag(r.fixed.tag, Record::kTag);
  }
  Record::variable_parts(io, r);
}

/// A version-2 structure. @param tiles  the tile count of the texture that it belongs to, if it is one's.
template <class Io, class S>
requires requires(S& s) { s.head; }
void walk(Io& io, S& s, Word tiles) {
  io.fixed(s.head);
  std::remove_const_t<S>::variable_parts(io, s, tiles);
}

}  // namespace qi
