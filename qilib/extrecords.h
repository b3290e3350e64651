/// @file
/// The record kinds of the version-2 extension lists, described like the core records.
#pragma once

#include <array>
#include <cstdint>

#include "qilib/extstructs.h"
#include "qilib/tags.h"
#include "qilib/walk.h"
#include "qilib/words.h"

namespace qi {

/// A colour-indexed image.
struct CiImg {
  static constexpr Word kTag = record_tag(0x20);
  struct Fixed {
    Word tag, index, word2, name, width, height, index_bits;
    std::array<Word, 12> words7;
    Word block1_size, block2_size;
  } fixed{};
  Words pixels;  ///< indices of index_bits each, most significant end first
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    io.words(r.pixels, pixel_index_words(r.fixed));
    io.blocks(r);
  }
};
static_assert(sizeof(CiImg::Fixed) == 84);

/// Words that the pixel indices take, saturated so that an absurd size never wraps into a small one.
std::uint64_t pixel_index_words(const CiImg::Fixed& fixed);

/// A colour palette: 16-bit colours, two to a word.
struct ColorPalette {
  static constexpr Word kTag = record_tag(0x21);
  struct Fixed {
    Word tag, index, word2, name, entry_count;
    std::array<Word, 14> words5;
    Word block1_size, block2_size;
  } fixed{};
  Words colors;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    io.words(r.colors, r.fixed.entry_count / 2);
    io.blocks(r);
  }
};
static_assert(sizeof(ColorPalette::Fixed) == 84);

// Parts, clusters and triangles begin with a tag that isn't checked; in new ones it is their kNewTag.

/// A part of an envelope that follows one node alone.
struct FullWeightedPart {
  static constexpr Word kNewTag = kFullWeightedPartTag;
  struct Fixed {
    Word tag, index, size, name;
    QisNodeIndex node;
    QisExternal external;
    QisPoly poly;
    Word part_index, block1_size, block2_size;
  } fixed{};
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) { io.blocks(r); }
};
static_assert(sizeof(FullWeightedPart::Fixed) == 64);

/// A part of an envelope that follows several nodes, each with a weight.
struct WeightedPart {
  static constexpr Word kNewTag = kWeightedPartTag;
  struct Fixed {
    Word tag, index, size, name, node_count, part_index, external_count, block1_size, block2_size;
  } fixed{};
  CompactArray<QisNodeIndex> nodes;
  CompactArray<QisExternal> externals;
  CompactArray<float> weights;  ///< one per node, then one per external reference
  CompactArray<QisPoly> polys;  ///< likewise
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    const std::uint64_t count = std::uint64_t{r.fixed.node_count} + r.fixed.external_count;
    io.pairs(r.nodes, r.fixed.node_count);
    io.pairs(r.externals, r.fixed.external_count);
    io.items(r.weights, count);
    io.columns(r.polys, count);
    io.blocks(r);
  }
};
static_assert(sizeof(WeightedPart::Fixed) == 36);

/// A part of an envelope that lies between two nodes.
struct MorphPart {
  static constexpr Word kNewTag = kMorphPartTag;
  struct Fixed {
    Word tag, index, size, name;
    QisNodeIndex node_a;
    QisExternal external_a;
    QisNodeIndex node_b;
    QisExternal external_b;
    Word part_index, entry_count, block1_size, block2_size;
  } fixed{};
  CompactArray<QisPoly> entries;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    io.columns(r.entries, r.fixed.entry_count);
    io.blocks(r);
  }
};
static_assert(sizeof(MorphPart::Fixed) == 64);

/// One triangle of an envelope.
struct EnvelopeTri {
  static constexpr Word kNewTag = kEnvelopeTriTag;
  struct Corner {
    QisNodeIndex node;
    std::array<Word, 4> words;
    Word word6;
  };
  Word tag, index, size;
  QisNodeIndex node;
  Word word5, word6, word7;
  std::array<Corner, 3> corners;
};
static_assert(sizeof(EnvelopeTri) == 116);

/// An envelope: skin over a skeleton.
struct Envelope {
  static constexpr Word kTag = kEnvelopeTag;
  struct Fixed {
    Word tag, index, size, name, word4;
    Word full_weighted_count, weighted_count, morph_count, tri_count;
    Word block1_size, block2_size;
  } fixed{};
  CompactArray<FullWeightedPart> full_weighted;
  CompactArray<WeightedPart> weighted;
  CompactArray<MorphPart> morphs;
  CompactArray<EnvelopeTri> tris;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    io.records(r.full_weighted, r.fixed.full_weighted_count);
    io.records(r.weighted, r.fixed.weighted_count);
    io.records(r.morphs, r.fixed.morph_count);
    io.items(r.tris, r.fixed.tri_count);
    io.blocks(r);
  }
};
static_assert(sizeof(Envelope::Fixed) == 44);

/// One cluster of a cluster shape.
struct ClusterEntry {
  static constexpr Word kNewTag = kClusterEntryTag;
  Word tag, index, size, name;
  QisNodeIndex node;
  QisExternal external;
  QisPoly poly;
  Word cluster_index;
};
static_assert(sizeof(ClusterEntry) == 56);

/// One triangle of a cluster shape.
struct ClusterTri {
  static constexpr Word kNewTag = kClusterTriTag;
  struct Corner {
    QisNodeIndex node;
    std::array<Word, 4> words;
  };
  Word tag, index, size;
  QisNodeIndex node;
  Word word5, word6;
  std::array<Corner, 3> corners;
};
static_assert(sizeof(ClusterTri) == 100);

/// A cluster shape.
struct Cluster {
  static constexpr Word kTag = kClusterTag;
  struct Fixed {
    Word tag, index, size, name, word4, cluster_count, tri_count, block1_size, block2_size;
  } fixed{};
  CompactArray<ClusterEntry> clusters;
  CompactArray<ClusterTri> tris;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    io.items(r.clusters, r.fixed.cluster_count);
    io.items(r.tris, r.fixed.tri_count);
    io.blocks(r);
  }
};
static_assert(sizeof(Cluster::Fixed) == 36);

/// A group of weights, in percent.
struct Weight {
  static constexpr Word kTag = kWeightTag;
  struct Fixed {
    Word tag, index, size, name, weight_count, block1_size, block2_size;
  } fixed{};
  CompactArray<float> weights;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    io.items(r.weights, r.fixed.weight_count);
    io.blocks(r);
  }
};
static_assert(sizeof(Weight::Fixed) == 28);

/// The variable parts of the records that skeletons are made of.
void skeleton_parts(auto& io, auto& r) {
  io.words(r.objs, r.fixed.obj_count);
  io.pairs(r.externals, r.fixed.external_count);
  io.blocks(r);
}

/// The root of a chain of joints.
struct ChainRoot {
  static constexpr Word kTag = kChainRootTag;
  struct Fixed {
    Word tag, index, size, name, word4, obj_count, external_count, anim, joint, block1_size, block2_size;
  } fixed{};
  Words objs;
  CompactArray<QisExternal> externals;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) { skeleton_parts(io, r); }
};
static_assert(sizeof(ChainRoot::Fixed) == 44);

/// A joint of a skeleton.
struct Joint {
  static constexpr Word kTag = kJointTag;
  struct Fixed {
    Word tag, index, size, name, type;
    float length;
    std::array<float, 3> axis;
    Word obj_count, external_count, child_joint, effector, anim, block1_size, block2_size;
  } fixed{};
  Words objs;
  CompactArray<QisExternal> externals;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) { skeleton_parts(io, r); }
};
static_assert(sizeof(Joint::Fixed) == 64);

/// The end of a chain of joints.
struct Effector {
  static constexpr Word kTag = kEffectorTag;
  struct Fixed {
    Word tag, index, size, name, type, obj_count, external_count, anim, block1_size, block2_size;
  } fixed{};
  Words objs;
  CompactArray<QisExternal> externals;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) { skeleton_parts(io, r); }
};
static_assert(sizeof(Effector::Fixed) == 40);

}  // namespace qi
