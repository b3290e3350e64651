/// @file
/// Growing a list of records by one, and bringing an absent list into the scene with its first record.
#pragma once

#include <array>
#include <bit>
#include <type_traits>
#include <utility>

#include "qilib/lists.h"
#include "qilib/qis.h"
#include "qilib/sizes.h"

namespace qi {

/// The fixed words of a record: its `fixed` member, or all of it for the kinds that are nothing else.
template <class R>
auto& fixed_words(R& record) {
  if constexpr (requires { record.fixed; }) {
    return record.fixed;
  } else {
    return record;
  }
}

/// Makes sure that `list`, one of the scene's, can take a record. An absent list gets its tag and the 24
/// bytes of its six header words, counted in the list's size, its directory or table entry and the file's
/// size.
/// @returns false, with nothing changed, for an extension list of a scene that has no table for its size.
template <class R>
bool bring_list(Qis& scene, List<R>& list) {
  bool ready = false;
  for_each_list(scene, [&](const ListInfo& info, auto& candidate) {
    if (static_cast<const void*>(&candidate) != &list) return;
    ready = !info.extension || has_ext_sizes(scene.header);
    if (!ready || list_bytes(scene.header, info) != 0) return;
    list.header = {};
    list.header.tag = info.tag;
    qiAdjustListSizeData(scene, 0, static_cast<std::int32_t>(sizeof(ListHeader)), info.tag);
  });
  return ready;
}

}  // namespace qi

/// Appends one record to an array of records, gives it its number (word 1) and "no name" (word 3), and calls
/// `init(record)`, which fills the rest and returns the record's size in the file, in bytes.
/// @param count  the word that counts the records; one more afterwards.
/// @param sizes  the list's record size table, which gets an entry for the record; null: the array has none.
/// @returns the bytes by which the file grows: the record's size, and 4 for its size table entry. No size
///          word is changed: the caller adds this once, with qiAdjustListSizeData.
template <class Records, class Init>
Word qiAddElementToList(Word& count, Words* sizes, Records& records, Init&& init) {
  auto& record = records.emplace_back();
  auto& fixed = qi::fixed_words(record);
  auto words = std::bit_cast<std::array<Word, sizeof(fixed) / sizeof(Word)>>(fixed);
  words[1] = count++;
  words[3] = kUnset;
  fixed = std::bit_cast<std::remove_reference_t<decltype(fixed)>>(words);
  const Word bytes = std::forward<Init>(init)(record);
  if (!sizes) return bytes;
  sizes->push_back(bytes);
  return bytes + static_cast<Word>(sizeof(Word));
}

/// The same for a list of records with its size table.
template <class R, class Init>
Word qiAddElementToList(qi::List<R>& list, Init&& init) {
  return qiAddElementToList(list.header.count, &list.sizes, list.records, std::forward<Init>(init));
}
