/// @file
/// Files of many small records of one kind, by the kind: those that take the most memory for their size.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "tests/qilib/kinds.h"
#include "tests/support/bytes.h"

/// A kind of record in a list, or of part in a record.
struct SmallRecords {
  std::string name;
  bool ext;             ///< in one of the extension lists
  std::size_t entry;    ///< of the list in the directory or in the extension table
  std::uint32_t tag;    ///< of the list
  std::size_t size_at;  ///< number of the word that states the record's size
  /// One record whose arrays hold so many items.
  std::function<Bytes(std::uint32_t n)> record;
  /// Extension block 1 holds a version-2 structure: the file is of version 2.
  bool structure = false;
};

namespace small_records {

/// So many zero words, but for those whose numbers are given.
inline Bytes words(std::size_t n, std::initializer_list<std::pair<std::size_t, std::uint32_t>> set) {
  Bytes bytes;
  for (std::size_t i = 0; i < n; ++i) bytes.u32(0);
  for (const auto& [number, word] : set) bytes.put(4 * number, word);
  return bytes;
}
/// Fixed words, of which the last two are the sizes of the blocks; arrays of `array_words`; the blocks.
inline Bytes with_blocks(std::size_t fixed_words,
                         std::initializer_list<std::pair<std::size_t, std::uint32_t>> set,
                         std::size_t array_words, const Bytes& block1, const Bytes& block2) {
  return words(fixed_words, set)
      .put(4 * (fixed_words - 2), block1.size())
      .put(4 * (fixed_words - 1), block2.size())
      .fill(array_words)
      .add(block1)
      .add(block2);
}
inline Bytes record(std::size_t fixed_words, std::initializer_list<std::pair<std::size_t, std::uint32_t>> set,
                    std::size_t array_words, std::uint32_t n) {
  return with_blocks(fixed_words, set, array_words, Bytes{}.fill(n), Bytes{}.fill(n));
}

inline Bytes tri(std::uint32_t n) {
  Bytes bytes = words(8, {{0, 0x00080100}, {2, 32 + 4 * n}, {7, n == 0 ? 0u : 1u}}).fill(n + 6);
  return n == 0 ? bytes : bytes.add(record(19, {}, 0, n));
}
inline Bytes tex(std::uint32_t n, std::uint32_t tiled, const Bytes& block1) {
  const Bytes table = tiled ? words(5, {{2, n}, {4, n}}).fill(8 * n) : words(7, {});
  return words(13, {{0, 0x000b0100}, {2, 52 + 4 * n}, {8, tiled}, {11, block1.size()}, {12, 4 * n}})
      .fill(n)
      .add(table)
      .add(block1)
      .fill(n);
}
inline Bytes teximg(std::uint32_t n, const Bytes& block1) {
  return with_blocks(6, {{0, 0x00120100}, {2, 24}}, n, block1, Bytes{}.fill(n));
}
inline Bytes anim(std::uint32_t form, std::uint32_t key_words, std::uint32_t n) {
  return record(12, {{0, 0x000c0100}, {2, 48 + 4 * n}, {5, form}, {7, n}}, n + key_words * n, n);
}
inline Bytes coll_sub(std::uint32_t n) {
  return words(4, {{0, 0x000d0100}, {2, 16 + 4 * n}, {3, 16 + 8 * n}}).fill(2 * n);
}
/// A part in an envelope: `kind` is the number of the word that counts its kind.
inline Bytes envelope(std::size_t kind, const Bytes& part) {
  constexpr std::uint32_t kParts = 100;
  Bytes bytes = words(11, {{0, 0x00220100}, {kind, kParts}});
  for (std::uint32_t i = 0; i < kParts; ++i) bytes.add(Bytes{part}.put(8, part.size()));
  return bytes;
}
inline Bytes table_record(std::uint32_t tag, std::uint32_t n, std::uint32_t entry_words) {
  return words(5, {{0, tag}, {4, n}}).fill(n * entry_words);
}

inline std::vector<SmallRecords> all() {
  using W = std::uint32_t;
  return {
      {"Env", false, 1, 0x00100000, 2,
       [](W n) {
         return record(14, {{0, 0x00100100}}, 0, n);
       }},
      {"Cam", false, 2, 0x000e0000, 2,
       [](W n) {
         return record(19, {{0, 0x000e0100}}, 0, n);
       }},
      {"Light", false, 3, 0x000f0000, 2,
       [](W n) {
         return record(12, {{0, 0x000f0100}, {9, n}}, 9 * n, n);
       }},
      {"Obj", false, 4, 0x00020000, 2,
       [](W n) {
         return record(22, {{0, 0x00020100}, {13, n}, {14, n}}, 3 * n, n);
       }},
      {"Shape", false, 5, 0x00030000, 2,
       [](W n) {
         return record(10, {{0, 0x00030100}, {7, n}}, n, n);
       }},
      {"Vtx", false, 6, 0x00040000, 0,
       [](W n) {
         return words(6, {{0, 0x00040100}, {5, n}}).fill(3 * n);
       }},
      {"Color", false, 7, 0x00050000, 0, [](W n) { return table_record(0x00050100, n, 4); }},
      {"Vector", false, 8, 0x00060000, 0, [](W n) { return table_record(0x00060100, n, 3); }},
      {"St", false, 9, 0x00070000, 0, [](W n) { return table_record(0x00070100, n, 2); }},
      {"Tri", false, 10, 0x00080000, 3, tri},
      {"Part", false, 11, 0x00090000, 2,
       [](W n) {
         return record(9, {{0, 0x00090100}, {6, n}}, n, n);
       }},
      {"Mat", false, 12, 0x000a0000, 2,
       [](W n) {
         return record(26, {{0, 0x000a0100}, {23, n}}, n, n);
       }},
      {"UntiledTex", false, 13, 0x000b0000, 3, [](W n) { return tex(n, 0, Bytes{}.fill(n)); }},
      {"TiledTex", false, 13, 0x000b0000, 3, [](W n) { return tex(n, 1, Bytes{}.fill(n)); }},
      {"Teximg", false, 14, 0x00120000, 3, [](W n) { return teximg(n, Bytes{}.fill(n)); }},
      {"AnimOfForm0", false, 15, 0x000c0000, 3, [](W n) { return anim(0, 13, n); }},
      {"AnimOfForm3", false, 15, 0x000c0000, 3, [](W n) { return anim(3, 16, n); }},
      {"AnimOfForm4", false, 15, 0x000c0000, 3, [](W n) { return anim(4, 5, n); }},
      {"AnimKey", false, 15, 0x000c0000, 3,
       [](W n) {
         return record(12, {{0, 0x000c0100}, {2, 48}, {5, 4}, {7, 1000 * (n + 1)}}, 5000 * (n + 1), 0);
       }},
      {"Coll", false, 16, 0x000d0000, 2,
       [](W n) {
         return record(8, {{0, 0x000d1000}}, 0, n);
       }},
      {"CollSub", false, 16, 0x000d0000, 2,
       [](W n) {
         constexpr W kSubs = 100;
         Bytes bytes = words(8, {{0, 0x000d1000}, {5, kSubs}}).fill(kSubs);
         for (W i = 0; i < kSubs; ++i) bytes.add(coll_sub(n));
         return bytes;
       }},
      {"Switch", false, 17, 0x00130000, 2,
       [](W n) {
         return record(9, {{0, 0x00130100}, {5, n}}, 2 * n, n);
       }},
      {"Name", false, 18, 0x00110000, 3,
       [](W n) {
         return words(4, {{0, 0x00110100}, {2, 16}}).fill(n);
       }},
      {"CiImg", true, 0, 0x00200000, 0,
       [](W n) {
         return record(21, {{0, 0x00200100}, {4, 4 * n}, {5, 1}, {6, 8}}, n, n);
       }},
      {"ColorPalette", true, 1, 0x00210000, 0,
       [](W n) {
         return record(21, {{0, 0x00210100}, {4, 2 * n}}, n, n);
       }},
      {"Envelope", true, 2, 0x00220000, 2,
       [](W n) {
         return record(11, {{0, 0x00220100}}, 0, n);
       }},
      {"FullWeightedPart", true, 2, 0x00220000, 2, [](W n) { return envelope(5, record(16, {}, 0, n)); }},
      {"WeightedPart", true, 2, 0x00220000, 2,
       [](W n) {
         return envelope(6, record(9, {{4, n}}, 8 * n, n));
       }},
      {"WeightedPartOfExternals", true, 2, 0x00220000, 2,
       [](W n) {
         return envelope(6, record(9, {{4, n}, {6, n}}, 16 * n, n));
       }},
      {"MorphPart", true, 2, 0x00220000, 2,
       [](W n) {
         return envelope(7, record(16, {{13, n}}, 5 * n, n));
       }},
      {"Cluster", true, 3, 0x00280000, 2,
       [](W n) {
         return record(9, {{0, 0x00280100}, {5, n}, {6, n}}, 39 * n, n);
       }},
      {"Weight", true, 4, 0x00230000, 2,
       [](W n) {
         return record(7, {{0, 0x00230100}, {4, n}}, n, n);
       }},
      {"ChainRoot", true, 5, 0x00240000, 2,
       [](W n) {
         return record(11, {{0, 0x00240100}, {5, n}, {6, n}}, 3 * n, n);
       }},
      {"Joint", true, 6, 0x00250000, 2,
       [](W n) {
         return record(16, {{0, 0x00250100}, {9, n}, {10, n}}, 3 * n, n);
       }},
      {"Effector", true, 7, 0x00260000, 2,
       [](W n) {
         return record(10, {{0, 0x00260100}, {5, n}, {6, n}}, 3 * n, n);
       }},
      {"ExternalName", true, 8, 0x00270000, 3,
       [](W n) {
         return words(4, {{0, 0x00270100}, {2, 16}}).fill(n);
       }},
      {"CamStructure", false, 2, 0x000e0000, 2,
       [](W n) {
         return with_blocks(19, {{0, 0x000e0100}}, 0, Bytes{}.fill(6 + n), Bytes{}.fill(n));
       },
       true},
      {"ObjStructure", false, 4, 0x00020000, 2,
       [](W n) {
         return with_blocks(22, {{0, 0x00020100}, {13, n}, {14, n}}, 3 * n,
                            words(7, {{4, n}, {5, n}, {6, n}}).fill(7 * n), Bytes{}.fill(n));
       },
       true},
      {"ShapeStructure", false, 5, 0x00030000, 2,
       [](W n) {
         return with_blocks(10, {{0, 0x00030100}, {7, n}}, n, Bytes{}.fill(3 + n), Bytes{}.fill(n));
       },
       true},
      {"MatStructure", false, 12, 0x000a0000, 2,
       [](W n) {
         return with_blocks(26, {{0, 0x000a0100}, {23, n}}, n,
                            words(26, {{23, n}, {24, n}, {25, n}}).fill(15 * n), Bytes{}.fill(n));
       },
       true},
      {"UntiledTexStructure", false, 13, 0x000b0000, 3,
       [](W n) {
         return tex(n, 0, words(5, {{4, n}}).fill(2 + 5 * n));
       },
       true},
      {"TiledTexStructure", false, 13, 0x000b0000, 3,
       [](W n) {
         return tex(n, 1, words(5, {{4, n}}).fill(7 * n));
       },
       true},
      {"TeximgStructure", false, 14, 0x00120000, 3, [](W n) { return teximg(n, Bytes{}.u32(n).fill(2 * n)); },
       true},
      {"TeximgStructureAlone", false, 14, 0x00120000, 3,
       [](W n) {
         return with_blocks(6, {{0, 0x00120100}, {2, 24}}, 0, Bytes{}.u32(n).fill(n), {});
       },
       true},
      {"AnimStructure", false, 15, 0x000c0000, 3,
       [](W n) {
         return with_blocks(
             12, {{0, 0x000c0100}, {2, 48}, {5, 1}}, 0,
             words(37, {{1, n}, {2, n}, {3, n}, {4, n}, {5, n}, {6, n}, {7, n}, {8, n}}).fill(61 * n),
             Bytes{}.fill(n));
       },
       true},
  };
}

/// A file with a list of about so many bytes. `strange_sizes`: the sizes that nothing needs are wrong.
inline std::string file(const SmallRecords& kind, std::uint32_t n, std::size_t list_bytes,
                        bool strange_sizes = false) {
  Bytes record = kind.record(n);
  const bool needed = kind.tag == 0x00120000 || kind.tag == 0x00110000 || kind.tag == 0x00270000;
  if (kind.size_at != 0) record.put(4 * kind.size_at, record.size() + (strange_sizes && !needed ? 4u : 0u));
  const auto count = static_cast<std::uint32_t>(list_bytes / (record.size() + 4));
  const bool two_kinds = kind.tag == 0x00050000 || kind.tag == 0x00060000;
  Bytes list = words(two_kinds ? 7 : 6, {{0, kind.tag}, {3, count}});
  list.put(8, list.size() + count * (record.size() + 4));
  const Bytes size = Bytes{}.u32(record.size() + (strange_sizes ? 4u : 0u));
  for (std::uint32_t i = 0; i < count; ++i) list.add(size);
  for (std::uint32_t i = 0; i < count; ++i) list.add(record);
  return kinds::file_with({kind.name, "", kind.ext, kind.entry, list, kind.structure}).bytes().str();
}

}  // namespace small_records
