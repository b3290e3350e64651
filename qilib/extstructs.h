/// @file
/// The structures that extension block 1 of a version-2 record holds, beside the record in memory.
///
/// Each has a head of fixed words and says what follows it, in file order, like the records do. A block may
/// be longer than its structure; the words after it are `tail`.
#pragma once

#include <array>
#include <cstdint>

#include "qilib/words.h"

namespace qi {

template <std::size_t N>
using Entries = CompactArray<std::array<Word, N>>;

/// The scene's chain roots and external references.
struct SceneExt {
  struct Head {
    Word chain_root_count;
    std::array<Word, 4> external_counts;
  } head{};
  Words chain_roots;
  std::array<CompactArray<QisExternal>, 4> externals;
  Words tail;

  static void variable_parts(auto& io, auto& r, Word /*tiles*/) {
    io.words(r.chain_roots, r.head.chain_root_count);
    for (std::size_t i = 0; i < r.externals.size(); ++i) io.pairs(r.externals[i], r.head.external_counts[i]);
  }
};
static_assert(sizeof(SceneExt::Head) == 20);

/// A camera's six words.
struct CamExt {
  struct Head {
    std::array<Word, 6> words;
  } head{};
  Words tail;

  static void variable_parts(auto& /*io*/, auto& /*r*/, Word /*tiles*/) {}
};
static_assert(sizeof(CamExt::Head) == 24);

/// How an object is drawn: the words of its render settings, in file order.
struct RenderWords {
  Word cycle_type, pri, type0, type1;
};

/// An object's render words for fog, its chain roots and external references.
struct ObjExt {
  struct Head {
    RenderWords fog_render;
    Word chain_root_count, index_count, external_count;
  } head{};
  Words chain_roots;
  Words indices;                         ///< index_count words
  CompactArray<QisExternal> externals0;  ///< index_count pairs
  CompactArray<QisExternal> externals1;  ///< external_count pairs
  Words tail;

  static void variable_parts(auto& io, auto& r, Word /*tiles*/) {
    io.words(r.chain_roots, r.head.chain_root_count);
    io.words(r.indices, r.head.index_count);
    io.pairs(r.externals0, r.head.index_count);
    io.pairs(r.externals1, r.head.external_count);
  }
};
static_assert(sizeof(ObjExt::Head) == 28);

/// What a shape's geometry index points at: an envelope, a cluster shape, or (any other tag) triangles.
struct ShapeExt {
  struct Head {
    Word deformer_tag, word1, word2;
  } head{};
  Words tail;

  static void variable_parts(auto& /*io*/, auto& /*r*/, Word /*tiles*/) {}
};
static_assert(sizeof(ShapeExt::Head) == 12);

/// A material's colour-combiner words, in file order; their encoding depends on the material type.
struct CombinerWords {
  Word color_type0, color_type1, alpha_type0, alpha_type1;
};

/// A material's colours and its combiner settings under fog.
struct MatExt {
  struct Head {
    QisRGBA ambient, emission, diffuse;
    Word mat_type_fog;
    CombinerWords combiner_fog;
    QisRGBA prim_color_fog;
    Word word21, word22, external_count, entry_count0, entry_count1;
  } head{};
  CompactArray<QisExternal> externals;
  Entries<6> entries0, entries1;
  Words tail;

  static void variable_parts(auto& io, auto& r, Word /*tiles*/) {
    io.pairs(r.externals, r.head.external_count);
    io.items(r.entries0, r.head.entry_count0);
    io.items(r.entries1, r.head.entry_count1);
  }
};
static_assert(sizeof(MatExt::Head) == 104);

/// A texture's filter settings, palettes and external references.
struct TexExt {
  struct Head {
    Word filter, perspective, mipmap_level, color_palette, external_count;
  } head{};
  Words palettes;                                    ///< one ColorPaletteList record per tile
  Words words1;                                      ///< one word per tile
  CompactArray<QisExternal> externals0, externals1;  ///< external_count pairs each
  Words tail;

  static void variable_parts(auto& io, auto& r, Word tiles) {
    io.words(r.palettes, tiles);
    io.words(r.words1, tiles);
    io.pairs(r.externals0, r.head.external_count);
    io.pairs(r.externals1, r.head.external_count);
  }
};
static_assert(sizeof(TexExt::Head) == 20);

/// A texture image's index words.
struct TeximgExt {
  struct Head {
    Word count;
  } head{};
  Words words;
  Words tail;

  static void variable_parts(auto& io, auto& r, Word /*tiles*/) { io.words(r.words, r.head.count); }
};

/// An animation's channels and constraints.
struct AnimExt {
  /// What one of the seven constraints follows.
  struct Target {
    QisNodeIndex node;
    QisExternal external;
  };
  struct Head {
    Word flags;
    Word entry_count;
    std::array<Word, 3> rotation_counts;
    Word word5_count, word6_count, scale_count0, scale_count1;
    Target orientation, direction, up_vector, preferred_axis, position, unique_scale, classic_scale;
  } head{};
  Entries<10> entries;
  std::array<Entries<4>, 3> rotations;
  Entries<14> entries5;
  Entries<8> entries6;
  /// Both scale arrays, one directly after the other: scale_count0 entries, then scale_count1. They are
  /// written as one run, so they are held as one.
  Entries<8> scales;
  Words tail;

  static void variable_parts(auto& io, auto& r, Word /*tiles*/) {
    io.items(r.entries, r.head.entry_count);
    for (std::size_t i = 0; i < r.rotations.size(); ++i) io.items(r.rotations[i], r.head.rotation_counts[i]);
    io.items(r.entries5, r.head.word5_count);
    io.items(r.entries6, r.head.word6_count);
    io.items(r.scales, std::uint64_t{r.head.scale_count0} + r.head.scale_count1);
  }
};
static_assert(sizeof(AnimExt::Head) == 148);

}  // namespace qi
