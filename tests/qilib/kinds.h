/// @file
/// One list of every record kind, as bytes written by hand.
#pragma once

#include <string>
#include <vector>

#include "tests/support/bytes.h"

/// A list and where it belongs.
struct KindCase {
  std::string name;
  std::string list;   ///< "ObjList"
  bool ext = false;   ///< one of the extension lists
  std::size_t entry;  ///< in the directory or the extension table
  Bytes bytes;
  /// Extension block 1 holds a version-2 structure: the file is of version 2.
  bool structure = false;
};

namespace kinds {

/// Sizes of the two extension blocks and, later, the blocks: block 1 of 8 bytes, block 2 of 4.
inline Bytes block_sizes() { return Bytes{}.count(8).count(4); }
inline Bytes blocks() { return Bytes{}.fill(2, 0xB1000000).fill(1, 0xB2000000); }

/// A list of two records of which the second has index 1 and other words.
inline Bytes list_of_two(std::uint32_t tag, Bytes (*record)(std::uint32_t index)) {
  return bytes_of_list(tag, {record(0), record(1)}, Bytes{}.fill(3, 0x11000000), Bytes{}.fill(2, 0x22000000));
}

inline Bytes scene() {
  return Bytes{}
      .u32(0x00010000)
      .count(44)
      .u32(44 + 4 * 7 + 12)
      .fill(2)
      .count(2)
      .count(1)
      .count(0)
      .count(4)
      .add(block_sizes())
      .u32s({7, 8, 1, 40, 41, 42, 43})
      .add(blocks());
}
/// Its fixed part is longer than the words that are interpreted.
inline Bytes long_scene() {
  return Bytes{}
      .u32(0x00010000)
      .count(52)
      .u32(52 + 4)
      .fill(2)
      .count(1)
      .count(0)
      .count(0)
      .count(0)
      .count(0)
      .count(0)
      .fill(2, 0xE0)
      .u32(9);
}
inline Bytes env(std::uint32_t i) {
  return Bytes{}.u32s({0x00100100, i, 56 + 12}).fill(9, i << 8).add(block_sizes()).add(blocks());
}
inline Bytes cam(std::uint32_t i) {
  return Bytes{}.u32s({0x000e0100, i, 76 + 12}).fill(14, i << 8).add(block_sizes()).add(blocks());
}
inline Bytes directional_light(std::uint32_t i) {
  return Bytes{}
      .u32s({0x000f0100, i, 48 + 72 + 12, 0, 5, 0})
      .fill(3)
      .count(2)
      .add(block_sizes())
      .fill(18, i << 8)
      .add(blocks());
}
inline Bytes positional_light(std::uint32_t i) {
  return Bytes{}
      .u32s({0x000f0100, i, 48 + 88 + 12, 0, 5, 1})
      .fill(3)
      .count(2)
      .add(block_sizes())
      .fill(22, i << 8)
      .add(blocks());
}
inline Bytes obj(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00020100, i, 88 + 4 * (2 + 2 + 3) + 12})
      .fill(10, i << 8)
      .count(2)
      .count(3)
      .fill(5, i << 12)
      .add(block_sizes())
      .f32(10.0F)
      .f32(20.5F)
      .u32s({1, 2, 3, 4, 5})
      .add(blocks());
}
inline Bytes shape(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00030100, i, 40 + 8 + 12})
      .fill(4, i << 8)
      .count(2)
      .add(block_sizes())
      .u32s({31, 32})
      .add(blocks());
}
inline Bytes vtx(std::uint32_t i) {
  return Bytes{}.u32s({0x00040100, i, 24 + 36}).fill(2).count(3).fill(9, i << 8);
}
/// Groups: 0 per triangle, 1 a table, 2 neither, 3 both bits (per triangle), 4 an empty table, 5 a table.
inline Bytes tri(std::uint32_t i) {
  const Bytes sub = Bytes{}.fill(17, 0x5B0000 + (i << 8)).add(block_sizes()).add(blocks());
  Bytes record;
  record.u32s({0x00080100, i}).count(32).u32(0).u32(4).u32(0x00223021).count(5).count(2);
  record.fill(6, 0x1000);                           // group 0: count base + 1 words
  record.count(2).fill(2, 0x2000).fill(2, 0x2100);  // group 1
  record.fill(1, 0x3000);                           // group 2
  record.fill(6, 0x4000);                           // group 3
  record.count(0);                                  // group 4
  record.count(3).fill(3, 0x6000).fill(3, 0x6100);  // group 5
  record.add(sub).add(sub);
  return record.put(12, record.size());
}
inline Bytes long_tri(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00080100, i})
      .count(40)
      .u32s({40 + 24, 4, 0})
      .u32(0)
      .count(0)
      .fill(2, 0xE0)
      .fill(6, 0x1000);
}
template <std::uint32_t Tag, std::size_t EntryWords>
Bytes table_record(std::uint32_t i) {
  return Bytes{}
      .u32s({Tag, i, static_cast<std::uint32_t>(20 + 4 * 2 * EntryWords), 3})
      .count(2)
      .fill(2 * EntryWords, i << 8);
}
/// Three records of two kinds, the first kind first.
template <std::uint32_t Tag, std::size_t EntryWords>
Bytes two_kinds() {
  const Bytes first = table_record<Tag + 0x100, EntryWords>(0);
  const Bytes second = table_record<Tag + 0x200, EntryWords>(1);
  const std::uint32_t size = 28 + 12 + first.size() + 2 * second.size() + 12;
  return Bytes{}
      .u32s({Tag, 0x77, size})
      .count(1)
      .count(2)
      .add(block_sizes())
      .u32s({first.size(), second.size(), second.size()})
      .add(first)
      .add(second)
      .add(second)
      .add(blocks());
}
inline Bytes part(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00090100, i, 36 + 12 + 12, 3, 0x80000000, 5})
      .count(3)
      .add(block_sizes())
      .fill(3, i << 8)
      .add(blocks());
}
inline Bytes mat(std::uint32_t i) {
  return Bytes{}
      .u32s({0x000a0100, i, 104 + 12 + 12})
      .fill(20, i << 8)
      .count(3)
      .add(block_sizes())
      .u32s({2, 1, 0})
      .add(blocks());
}
inline Bytes untiled_tex(std::uint32_t i) {
  return Bytes{}
      .u32s({0x000b0100, i})
      .count(52)
      .u32(52 + 28 + 12)
      .fill(4, i << 8)
      .u32(0)
      .fill(2)
      .add(block_sizes())
      .fill(7, 0x7000)
      .add(blocks());
}
inline Bytes tiled_tex(std::uint32_t i) {
  return Bytes{}
      .u32s({0x000b0100, i})
      .count(52)
      .u32(52 + 20 + 4 * (6 * 2 + 2 * 3) + 12)
      .fill(4, i << 8)
      .u32(1)
      .fill(2)
      .add(block_sizes())
      .fill(2, 0x7000)
      .count(2)
      .fill(1, 0x7002)
      .count(3)
      .fill(12, 0x8000)
      .fill(6, 0x9000)
      .add(blocks());
}
inline Bytes long_tex(std::uint32_t i) {
  return Bytes{}
      .u32s({0x000b0100, i})
      .count(56)
      .u32(56 + 28)
      .fill(4, i << 8)
      .u32(0)
      .fill(2)
      .count(0)
      .count(0)
      .fill(1, 0xE0)
      .fill(7, 0x7000);
}
inline Bytes teximg(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00120100, i})
      .count(24)
      .count(24 + 20 + 12)
      .add(block_sizes())
      .text("texels in file order")
      .add(blocks());
}
template <std::uint32_t Form, std::uint32_t KeyBytes>
Bytes anim(std::uint32_t i) {
  Bytes record =
      Bytes{}.u32s({0x000c0100, i}).count(48).u32(48 + 3 * KeyBytes + 12).fill(1, i << 8).u32s({Form, 30});
  if (KeyBytes == 0) {
    record.u32(3);  // counts keys that stand nowhere
  } else {
    record.count(3);
  }
  return record.fill(2).add(block_sizes()).fill(3 * KeyBytes / 4, 0x4E0000).add(blocks());
}
inline Bytes long_anim(std::uint32_t i) {
  return Bytes{}
      .u32s({0x000c0100, i})
      .count(60)
      .u32(60)
      .fill(1, i << 8)
      .u32s({0, 30})
      .count(0)
      .fill(2)
      .count(0)
      .count(0)
      .fill(3, 0xE0);
}
inline Bytes coll(std::uint32_t i) {
  const Bytes plain = Bytes{}.u32s({0x000d0100, 0}).count(16).count(28).fill(3, 0x5D0000);
  const Bytes longer = Bytes{}.u32s({0x000d0100, 1}).count(20).count(24).fill(1, 0xE0).fill(1, 0x5E0000);
  return Bytes{}
      .u32s({0x000d1000, i, 32 + 8 + 28 + 24 + 12, 3, 4})
      .count(2)
      .add(block_sizes())
      .u32s({70, 71})
      .add(plain)
      .add(longer)
      .add(blocks());
}
inline Bytes switch_record(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00130100, i, 36 + 24 + 12, 3, 4})
      .count(3)
      .u32(6)
      .add(block_sizes())
      .fill(6, i << 8)
      .add(blocks());
}
template <std::uint32_t Tag>
Bytes name(std::uint32_t i) {
  if (i == 0) return Bytes{}.u32s({Tag, i}).count(16).count(16 + 12).text("a long name");
  return Bytes{}.u32s({Tag, i}).count(16).count(16);
}

inline Bytes ciimg(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00200100, i, 84 + 8 + 12, 3})
      .count(5)
      .count(3)
      .count(4)
      .fill(12, i << 8)
      .add(block_sizes())
      .fill(2, 0x9A0000)
      .add(blocks());
}
inline Bytes color_palette(std::uint32_t i) {  // 16 entries take 8 words, 15 take 7
  return Bytes{}
      .u32s({0x00210100, i, 84 + 4 * (8 - i) + 12, 3})
      .count(16 - i)
      .fill(14, i << 8)
      .add(block_sizes())
      .fill(8 - i, 0x9B0000)
      .add(blocks());
}
inline Bytes envelope(std::uint32_t i) {
  if (i == 1)
    return Bytes{}
        .u32s({0x00220100, i, 44 + 12, 3, 4})
        .count(0)
        .count(0)
        .count(0)
        .count(0)
        .add(block_sizes())
        .add(blocks());
  const Bytes full = Bytes{}.u32s({0x00220110, 0, 64 + 12}).fill(11).add(block_sizes()).add(blocks());
  const Bytes weighted = Bytes{}
                             .u32s({0x00220120, 0, 36 + 4 * 24 + 12, 3})
                             .count(2)
                             .u32(0)
                             .count(1)
                             .add(block_sizes())
                             .fill(4, 0xA000)   // node indices: tags, numbers
                             .fill(2, 0xA100)   // one external reference
                             .fill(3, 0xA200)   // weights
                             .fill(15, 0xA300)  // polygon entries by column
                             .add(blocks());
  const Bytes morph = Bytes{}
                          .u32s({0x00220130, 0, 64 + 40 + 12})
                          .fill(10)
                          .count(2)
                          .add(block_sizes())
                          .fill(10, 0xA400)
                          .add(blocks());
  const Bytes tri = Bytes{}.fill(29, 0xA500);
  Bytes record =
      Bytes{}.u32s({0x00220100, i, 0, 3, 4}).count(1).count(1).count(1).count(2).add(block_sizes());
  record.add(full).add(weighted).add(morph).add(tri).add(tri).add(blocks());
  return record.put(8, record.size());
}
inline Bytes cluster(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00280100, i, 36 + 2 * 56 + 100 + 12, 3, 4})
      .count(2)
      .count(1)
      .add(block_sizes())
      .fill(28, 0xA600)
      .fill(25, 0xA700)
      .add(blocks());
}
inline Bytes weight(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00230100, i, 28 + 12 + 12, 3})
      .count(3)
      .add(block_sizes())
      .fill(3, i << 8)
      .add(blocks());
}
inline Bytes chain_root(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00240100, i, 44 + 12 + 16 + 12, 3, 4})
      .count(3)
      .count(2)
      .fill(2, 0xF0)
      .add(block_sizes())
      .fill(3, i << 8)
      .u32s({1, 2, 101, 102})
      .add(blocks());
}
inline Bytes joint(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00250100, i, 64 + 12 + 16 + 12, 3, 4})
      .fill(4, 0x3F000000)
      .count(3)
      .count(2)
      .fill(3, 0xF0)
      .add(block_sizes())
      .fill(3, i << 8)
      .u32s({1, 2, 101, 102})
      .add(blocks());
}
inline Bytes effector(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00260100, i, 40 + 12 + 16 + 12, 3, 4})
      .count(3)
      .count(2)
      .u32(0xFFFFFFFF)
      .add(block_sizes())
      .fill(3, i << 8)
      .u32s({1, 2, 101, 102})
      .add(blocks());
}

// Records of version 2: extension block 1 is a structure, followed by one word that nothing interprets.

/// A record without variable parts but for a structure: fixed words with the block sizes last.
inline Bytes with_structure(std::uint32_t tag, std::uint32_t i, std::size_t words_between,
                            const Bytes& middle, const Bytes& structure) {
  const Bytes block1 = Bytes{}.add(structure).fill(1, 0x7A11);
  Bytes record = Bytes{}.u32s({tag, i, 0});
  record.fill(words_between, 0).count(block1.size()).count(4).add(middle).add(block1).fill(1, 0xB2000000);
  return record.put(8, record.size());
}
inline Bytes scene_structure() {
  return Bytes{}.count(2).count(1).count(0).count(2).count(0).u32s({5, 6}).u32s({1, 101}).u32s(
      {2, 3, 102, 103});
}
inline Bytes scene2() {
  const Bytes block1 = Bytes{}.add(scene_structure()).fill(1, 0x7A11);
  Bytes record = Bytes{}.u32(0x00010000).count(44).u32(0).fill(2).count(1).count(0).count(0).count(0);
  record.count(block1.size()).count(4).u32(7).add(block1).fill(1, 0xB2000000);
  return record.put(8, record.size());
}
inline Bytes cam2(std::uint32_t i) { return with_structure(0x000e0100, i, 14, {}, Bytes{}.fill(6, 0xCA00)); }
inline Bytes obj2(std::uint32_t i) {
  const Bytes structure =
      Bytes{}.fill(4).count(2).count(1).count(2).u32s({3, 4}).u32(5).u32s({1, 101}).u32s({2, 3, 102, 103});
  Bytes record = with_structure(0x00020100, i, 17, {}, structure);
  return record.put(13 * 4, 0).put(14 * 4, 0);
}
inline Bytes shape2(std::uint32_t i) {
  Bytes record = with_structure(0x00030100, i, 5, {}, Bytes{}.fill(3, 0x5A00));
  return record.put(7 * 4, 0);
}
inline Bytes mat2(std::uint32_t i) {
  const Bytes structure = Bytes{}
                              .fill(23, 0x3A00)
                              .count(2)
                              .count(1)
                              .count(2)
                              .u32s({1, 2, 101, 102})
                              .fill(6, 0x3B00)
                              .fill(12, 0x3C00);
  Bytes record = with_structure(0x000a0100, i, 21, {}, structure);
  return record.put(23 * 4, 0);
}
inline Bytes untiled_tex2(std::uint32_t i) {
  const Bytes structure = Bytes{}.fill(4).count(1).u32(50).u32(60).u32s({1, 101}).u32s({2, 102});
  const Bytes block1 = Bytes{}.add(structure).fill(1, 0x7A11);
  Bytes record = Bytes{}.u32s({0x000b0100, i}).count(52).u32(0).fill(4).u32(0).fill(2);
  record.count(block1.size()).count(0).fill(7, 0x7000).add(block1);
  return record.put(12, record.size());
}
inline Bytes tiled_tex2(std::uint32_t i) {
  const Bytes structure =
      Bytes{}.fill(4).count(1).u32s({50, 51}).u32s({60, 61}).u32s({1, 101}).u32s({2, 102});
  const Bytes block1 = Bytes{}.add(structure).fill(1, 0x7A11);
  Bytes record = Bytes{}.u32s({0x000b0100, i}).count(52).u32(0).fill(4).u32(1).fill(2);
  record.count(block1.size()).count(0).u32s({0, 0}).count(2).u32(0).count(0).fill(12, 0x8000).add(block1);
  return record.put(12, record.size());
}
inline Bytes teximg2(std::uint32_t i) {
  return Bytes{}
      .u32s({0x00120100, i})
      .count(24)
      .count(24 + 4 + 16 + 4)
      .count(16)
      .count(4)
      .text("4tex")
      .count(2)
      .u32s({11, 12, 0x7A11})
      .fill(1, 0xB2000000);
}
inline Bytes anim2(std::uint32_t i) {
  Bytes structure = Bytes{}.fill(1, 0xF1A6);
  for (const std::uint32_t n : {1u, 1u, 0u, 2u, 1u, 2u, 1u, 2u}) structure.count(n);
  structure.fill(28, 0x7A00);                               // seven targets
  structure.fill(10, 0x100).fill(4, 0x200).fill(8, 0x300);  // entries, rotations
  structure.fill(14, 0x400).fill(16, 0x500);
  structure.fill(8, 0x600).fill(16, 0x700);  // both scale arrays
  const Bytes block1 = Bytes{}.add(structure).fill(1, 0x7A11);
  Bytes record = Bytes{}.u32s({0x000c0100, i}).count(48).u32(0).fill(1).u32s({1, 30, 0}).fill(2);
  record.count(block1.size()).count(0).add(block1);
  return record.put(12, record.size());
}

inline std::vector<KindCase> all() {
  return {
      {"Scene", "SceneList", false, 0, scene()},
      {"LongScene", "SceneList", false, 0, long_scene()},
      {"Env", "EnvList", false, 1, list_of_two(0x00100000, env)},
      {"Cam", "CamList", false, 2, list_of_two(0x000e0000, cam)},
      {"DirectionalLight", "LightList", false, 3, list_of_two(0x000f0000, directional_light)},
      {"PositionalLight", "LightList", false, 3, list_of_two(0x000f0000, positional_light)},
      {"Obj", "ObjList", false, 4, list_of_two(0x00020000, obj)},
      {"Shape", "ShapeList", false, 5, list_of_two(0x00030000, shape)},
      {"Vtx", "VtxList", false, 6, list_of_two(0x00040000, vtx)},
      {"Color", "ColorList", false, 7, two_kinds<0x00050000, 4>()},
      {"Vector", "VectorList", false, 8, two_kinds<0x00060000, 3>()},
      {"St", "StList", false, 9, list_of_two(0x00070000, table_record<0x00070100, 2>)},
      {"Tri", "TriList", false, 10, list_of_two(0x00080000, tri)},
      {"LongTri", "TriList", false, 10, list_of_two(0x00080000, long_tri)},
      {"Part", "PartList", false, 11, list_of_two(0x00090000, part)},
      {"Mat", "MatList", false, 12, list_of_two(0x000a0000, mat)},
      {"UntiledTex", "TexList", false, 13, list_of_two(0x000b0000, untiled_tex)},
      {"TiledTex", "TexList", false, 13, list_of_two(0x000b0000, tiled_tex)},
      {"LongTex", "TexList", false, 13, list_of_two(0x000b0000, long_tex)},
      {"Teximg", "TeximgList", false, 14, list_of_two(0x00120000, teximg)},
      {"AnimForm0", "AnimList", false, 15, list_of_two(0x000c0000, anim<0, 52>)},
      {"AnimForm1WithoutKeys", "AnimList", false, 15, list_of_two(0x000c0000, anim<1, 0>)},
      {"AnimForm2", "AnimList", false, 15, list_of_two(0x000c0000, anim<2, 52>)},
      {"AnimForm3", "AnimList", false, 15, list_of_two(0x000c0000, anim<3, 64>)},
      {"AnimForm4", "AnimList", false, 15, list_of_two(0x000c0000, anim<4, 20>)},
      {"AnimForm5WithoutKeys", "AnimList", false, 15, list_of_two(0x000c0000, anim<5, 0>)},
      {"LongAnim", "AnimList", false, 15, list_of_two(0x000c0000, long_anim)},
      {"Coll", "CollList", false, 16, list_of_two(0x000d0000, coll)},
      {"Switch", "SwitchList", false, 17, list_of_two(0x00130000, switch_record)},
      {"Name", "NameList", false, 18, list_of_two(0x00110000, name<0x00110100>)},
      {"NameTaggedExternal", "NameList", false, 18, list_of_two(0x00270000, name<0x00270100>)},
      {"EmptyObjList", "ObjList", false, 4, bytes_of_list(0x00020000, {})},
      {"CiImg", "CiImgList", true, 0, list_of_two(0x00200000, ciimg)},
      {"ColorPalette", "ColorPaletteList", true, 1, list_of_two(0x00210000, color_palette)},
      {"Envelope", "EnvelopeList", true, 2, list_of_two(0x00220000, envelope)},
      {"Cluster", "ClusterList", true, 3, list_of_two(0x00280000, cluster)},
      {"Weight", "WeightList", true, 4, list_of_two(0x00230000, weight)},
      {"ChainRoot", "ChainRootList", true, 5, list_of_two(0x00240000, chain_root)},
      {"Joint", "JointList", true, 6, list_of_two(0x00250000, joint)},
      {"Effector", "EffectorList", true, 7, list_of_two(0x00260000, effector)},
      {"ExternalName", "ExternalNameList", true, 8, list_of_two(0x00270000, name<0x00270100>)},
      {"ExternalNameTaggedName", "ExternalNameList", true, 8, list_of_two(0x00110000, name<0x00110100>)},
      {"SceneStructure", "SceneList", false, 0, scene2(), true},
      {"CamStructure", "CamList", false, 2, list_of_two(0x000e0000, cam2), true},
      {"ObjStructure", "ObjList", false, 4, list_of_two(0x00020000, obj2), true},
      {"ShapeStructure", "ShapeList", false, 5, list_of_two(0x00030000, shape2), true},
      {"MatStructure", "MatList", false, 12, list_of_two(0x000a0000, mat2), true},
      {"UntiledTexStructure", "TexList", false, 13, list_of_two(0x000b0000, untiled_tex2), true},
      {"TiledTexStructure", "TexList", false, 13, list_of_two(0x000b0000, tiled_tex2), true},
      {"TeximgStructure", "TeximgList", false, 14, list_of_two(0x00120000, teximg2), true},
      {"AnimStructure", "AnimList", false, 15, list_of_two(0x000c0000, anim2), true},
  };
}

/// The smallest file around the list; what is not of version 1 has the scene that version 2 asks for.
inline FileBytes file_with(const KindCase& kind) {
  FileBytes file;
  if (kind.ext || kind.structure) {
    file.version = 0x0200;
    file.core[0] = scene2();
  }
  (kind.ext ? file.ext[kind.entry] : file.core[kind.entry]) = kind.bytes;
  return file;
}

}  // namespace kinds
