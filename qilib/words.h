/// @file
/// Words, blocks and references: the small types that every record is made of.
#pragma once

#include <cstdint>

#include "qilib/compactarray.h"

/// One 32-bit word of a scene file, held as a number in host order.
using Word = std::uint32_t;
using Words = qi::CompactArray<Word>;

/// A single-valued reference (slot) or name index that is not set.
inline constexpr Word kUnset = 0xFFFFFFFF;
/// The part's material slot, alone among the slots, says "not set" with this value.
inline constexpr Word kUnsetPartMaterial = 0x80000000;

/// A (list tag, record number) pair: points at a record of one of several lists.
/// The tag is the list's (low 16 bits 0), such as 0x20000 for the ObjList.
struct QisNodeIndex {
  Word tag = 0;
  Word index = 0;
  friend bool operator==(const QisNodeIndex&, const QisNodeIndex&) = default;
};

/// A reference into another file by way of its external name; both halves kUnset: none.
struct QisExternal {
  Word first = kUnset;
  Word second = kUnset;
  friend bool operator==(const QisExternal&, const QisExternal&) = default;
};

/// One entry of the envelope and cluster polygon tables: five words.
struct QisPoly {
  Word words[5] = {};
  friend bool operator==(const QisPoly&, const QisPoly&) = default;
};

/// Four colour components, 0..1.
struct QisRGBA {
  float red = 0, green = 0, blue = 0, alpha = 0;
};
