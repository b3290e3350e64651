/// @file
/// What every list looks like in the file: a walk over its pieces, like those of the records in it.
#pragma once

#include <concepts>
#include <type_traits>

#include "qilib/qis.h"
#include "qilib/sizes.h"

namespace qi {

template <class L>
concept OneKindList = requires(L& list) {
  list.records;
};
template <class L>
concept TwoKinds = requires(L& list) {
  list.records1;
};

// Beside what the records' walks ask of an Io: `rest(v)` is whatever follows the last piece.

template <class Io, Like<Scene> L>
void walk_list(Io& io, L& scene) {
  walk(io, scene);
  io.rest(scene.tail);
}

template <class Io, OneKindList L>
void walk_list(Io& io, L& list) {
  using Record = typename L::Record;
  io.fixed(list.header);
  if constexpr (std::same_as<Record, Name>) {
    io.name_list_tag(list.header.tag);
  } else {
    io.tag(list.header.tag, list_of(Record::kTag));
  }
  io.words(list.sizes, list.header.count);
  io.records(list.records, list.header.count);
  io.block(list.block1, list.header.block1_size);
  io.block(list.block2, list.header.block2_size);
  io.rest(list.tail);
}

template <class Io, TwoKinds L>
void walk_list(Io& io, L& list) {
  io.fixed(list.header);
  io.tag(list.header.tag, list_of(std::decay_t<decltype(list.records1[0])>::kTag));
  io.words(list.sizes1, list.header.count1);
  io.words(list.sizes2, list.header.count2);
  io.records(list.records1, list.header.count1);
  io.records(list.records2, list.header.count2);
  io.block(list.block1, list.header.block1_size);
  io.block(list.block2, list.header.block2_size);
  io.rest(list.tail);
}

/// The tile count that a record's version-2 structure goes by; only textures have one.
template <class R>
Word tiles_of(const R& /*record*/) {
  return 0;
}
inline Word tiles_of(const Tex& tex) { return qiCiTileNum(tex); }

}  // namespace qi
