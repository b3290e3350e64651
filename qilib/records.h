/// @file
/// The core record kinds: for each one the file's fixed words, and its variable parts in file order (see
/// walk.h).
#pragma once

#include <algorithm>
#include <array>
#include <span>

#include "qilib/extstructs.h"
#include "qilib/heapoptional.h"
#include "qilib/tags.h"
#include "qilib/walk.h"
#include "qilib/words.h"

namespace qi {

/// The scene record: the one record of the SceneList. Its index arrays are the top of the scene.
struct Scene {
  static constexpr Word kTag = kSceneTag;
  struct Fixed {
    Word tag, fixed_size, size, video, name;
    Word obj_count, env_count, cam_count, light_count;
    Word block1_size, block2_size;
  } fixed{};
  Words fixed_rest;
  Words objs, envs, cams, lights;
  Words block1, block2;
  HeapOptional<SceneExt> ext;
  Words tail;  ///< words of the SceneList after the record

  static void variable_parts(auto& io, auto& r) {
    io.longer(r.fixed, r.fixed_rest);
    io.words(r.objs, r.fixed.obj_count);
    io.words(r.envs, r.fixed.env_count);
    io.words(r.cams, r.fixed.cam_count);
    io.words(r.lights, r.fixed.light_count);
    io.structure(r);
  }
};
static_assert(sizeof(Scene::Fixed) == 44);

/// An environment: fog, fills, backgrounds.
struct Env {
  static constexpr Word kTag = kEnvTag;
  struct Fixed {
    Word tag, index, size, name;
    Word use_fog, fog_color, fog_near, fog_far;
    Word fill_color, fill_depth, bg_color_image, bg_depth_image;
    Word block1_size, block2_size;
  } fixed{};
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) { io.blocks(r); }
};
static_assert(sizeof(Env::Fixed) == 56);

/// A camera.
struct Cam {
  static constexpr Word kTag = kCamTag;
  struct Fixed {
    Word tag, index, size, name, type;
    float near, far, right, left, top, bottom;
    float fovy, aspect, scale;
    Word lookat, eye, up;
    Word block1_size, block2_size;
  } fixed{};
  Words block1, block2;
  HeapOptional<CamExt> ext;

  static void variable_parts(auto& io, auto& r) { io.structure(r); }
};
static_assert(sizeof(Cam::Fixed) == 76);

/// One directional (36 bytes in the file) or positional (44 bytes) light of a light record.
struct LightSub {
  std::array<Word, 11> words{};
};

/// A light: an ambient colour and a number of directional or positional lights.
struct Light {
  static constexpr Word kTag = kLightTag;
  static constexpr Word kDirectional = 0;
  struct Fixed {
    Word tag, index, size, word3, name, type;
    float ambient_red, ambient_green, ambient_blue;
    Word sub_count, block1_size, block2_size;
  } fixed{};
  CompactArray<LightSub> subs;
  Words block1, block2;
  /// Bytes that one sub-record takes in the file.
  static constexpr std::size_t sub_bytes(Word type) { return type == kDirectional ? 36 : 44; }

  static void variable_parts(auto& io, auto& r) {
    io.slots(r.subs, r.fixed.sub_count, sub_bytes(r.fixed.type));
    io.blocks(r);
  }
};
static_assert(sizeof(Light::Fixed) == 48);

/// An object: a node of the scene's hierarchy.
struct Obj {
  static constexpr Word kTag = kObjTag;
  static constexpr Word kMaxChildren = 32;
  struct Fixed {
    Word tag, index, size, name;
    Word state, type, group, priority;
    RenderWords render;
    Word billboard_link, lod_count, child_count, word15;
    Word shape, mat, anim, word19;
    Word block1_size, block2_size;
  } fixed{};
  CompactArray<float> lod_distances;  ///< one per level of detail
  Words lod_objs;                     ///< the obj shown from that distance on
  Words children;
  Words block1, block2;
  HeapOptional<ObjExt> ext;

  static void variable_parts(auto& io, auto& r) {
    io.items(r.lod_distances, r.fixed.lod_count);
    io.words(r.lod_objs, r.fixed.lod_count);
    io.words(r.children, r.fixed.child_count);
    io.structure(r);
  }
};
static_assert(sizeof(Obj::Fixed) == 88);

/// A shape: geometry (or, in version 2, a deformer), a material and parts.
struct Shape {
  static constexpr Word kTag = kShapeTag;
  struct Fixed {
    Word tag, index, size, name, flags, geometry, mat, part_count, block1_size, block2_size;
  } fixed{};
  Words parts;
  Words block1, block2;
  HeapOptional<ShapeExt> ext;

  static void variable_parts(auto& io, auto& r) {
    io.words(r.parts, r.fixed.part_count);
    io.structure(r);
  }
};
static_assert(sizeof(Shape::Fixed) == 40);

/// A group of vertices.
struct Vtx {
  static constexpr Word kTag = record_tag(0x04);
  struct Fixed {
    Word tag, index, word2, word3, word4, vertex_count;
  } fixed{};
  CompactArray<std::array<Word, 3>> vertices;

  static void variable_parts(auto& io, auto& r) { io.items(r.vertices, r.fixed.vertex_count); }
};
static_assert(sizeof(Vtx::Fixed) == 24);

/// One attribute group of a triangle record: per-triangle entries, or a table and its entries.
struct AttributeGroup {
  std::span<const Word> table, entries;
};

/// One sub-record of a triangle record.
struct TriSub {
  struct Fixed {
    std::array<Word, 17> words;
    Word block1_size, block2_size;
  } fixed{};
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) { io.blocks(r); }
};
static_assert(sizeof(TriSub::Fixed) == 76);

/// A group of triangles.
struct Tri {
  static constexpr Word kTag = record_tag(0x08);
  static constexpr int kGroups = 6;
  struct Fixed {
    Word tag, index, fixed_size, size, word4, flags, count_base, sub_count;
  } fixed{};
  Words fixed_rest;
  Words attributes;  ///< all groups, as they stand in the file: a group with a table begins with its count
  CompactArray<TriSub> subs;
  /// Bit 4g: group g has count_base + 1 entries and no table.
  static constexpr bool per_triangle(Word flags, int group) { return (flags >> (4 * group)) & 1; }
  /// Bit 4g+1: group g has a table (unless bit 4g is set) and as many entries as the table.
  static constexpr bool has_table(Word flags, int group) { return (flags >> (4 * group + 1)) & 1; }

  static void variable_parts(auto& io, auto& r) {
    io.longer(r.fixed, r.fixed_rest);
    io.counted(r.attributes, [&](const Words& held) { return missing(r.fixed, held); });
    io.records(r.subs, r.fixed.sub_count);
  }

  /// Words that the attributes have beyond those held, as far as these tell: the counts of tables are among
  /// them.
  static std::uint64_t missing(const Fixed& fixed, const Words& held) {
    std::uint64_t end = 0;
    for (int g = 0; g < kGroups; ++g) {
      if (per_triangle(fixed.flags, g)) {
        end += std::uint64_t{fixed.count_base} + 1;
      } else if (!has_table(fixed.flags, g)) {
        ++end;
      } else if (end < held.size()) {
        end += 1 + 2 * std::uint64_t{held[end]};
      } else {
        return end + 1 - held.size();
      }
    }
    return end > held.size() ? end - held.size() : 0;
  }

  /// One of the groups; an empty one when not all of it is held.
  AttributeGroup group(int wanted) const {
    std::span<const Word> left = attributes;
    AttributeGroup group;
    const auto take = [&left](std::uint64_t n) {
      const auto words = left.first(static_cast<std::size_t>(std::min<std::uint64_t>(n, left.size())));
      left = left.subspan(words.size());
      return words;
    };
    for (int g = 0; g <= wanted; ++g) {
      std::uint64_t entries = per_triangle(fixed.flags, g) ? std::uint64_t{fixed.count_base} + 1 : 1;
      group = {};
      if (!per_triangle(fixed.flags, g) && has_table(fixed.flags, g)) {
        const auto count = take(1);
        entries = count.empty() ? 0 : count[0];
        group.table = take(entries);
      }
      group.entries = take(entries);
    }
    return group;
  }
};
static_assert(sizeof(Tri::Fixed) == 32);

/// The fixed words shared by the colour, vector and texture-coordinate records.
struct TableFixed {
  Word tag, index, word2, word3, count;
};
static_assert(sizeof(TableFixed) == 20);

/// A record of entries of N words each: colours (4), vectors (3), texture coordinates (2).
template <Word TagValue, std::size_t N>
struct TableRecord {
  static constexpr Word kTag = TagValue;
  TableFixed fixed{};
  CompactArray<std::array<Word, N>> entries;

  static void variable_parts(auto& io, auto& r) { io.items(r.entries, r.fixed.count); }
};
using Color1 = TableRecord<record_tag(0x05), 4>;
using Color2 = TableRecord<record_tag(0x05) + 0x100, 4>;
using Vector1 = TableRecord<record_tag(0x06), 3>;
using Vector2 = TableRecord<record_tag(0x06) + 0x100, 3>;
using St = TableRecord<record_tag(0x07), 2>;

/// A part of a shape, with a material of its own.
struct Part {
  static constexpr Word kTag = kPartTag;
  struct Fixed {
    Word tag, index, size, name, mat, word5, index_count, block1_size, block2_size;
  } fixed{};
  Words indices;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    io.words(r.indices, r.fixed.index_count);
    io.blocks(r);
  }
};
static_assert(sizeof(Part::Fixed) == 36);

/// A material.
struct Mat {
  static constexpr Word kTag = kMatTag;
  static constexpr Word kMaxTextures = 3;
  struct Fixed {
    Word tag, index, size, name, mat_type, shade_type;
    CombinerWords combiner;
    QisRGBA prim_color;
    std::array<Word, 8> usr_flags;
    Word word22, tex_count, block1_size, block2_size;
  } fixed{};
  Words texs;
  Words block1, block2;
  HeapOptional<MatExt> ext;

  static void variable_parts(auto& io, auto& r) {
    io.words(r.texs, r.fixed.tex_count);
    io.structure(r);
  }
};
static_assert(sizeof(Mat::Fixed) == 104);

/// A texture's table of images: seven words, or the tiled form with a row per tile.
/// The tiled form's six arrays stand in the order of the untiled words 2 to 6 (width, height, word 4, word 5,
/// image index), and one more.
struct TexTable {
  struct Untiled {
    Word word0, word1, width, height, word4, word5, image;
  };
  struct TiledHead {
    Word word0, word1, tile_count, word3, extra_count;
  };
  union {
    Untiled untiled{};
    TiledHead tiled;
  };
  Words widths, heights, words4, words5, images, words7;  ///< tile_count words each
  Words extra0, extra1;                                   ///< extra_count words each
};

/// A texture: how an image is wrapped and stored, and which one.
struct Tex {
  static constexpr Word kTag = kTexTag;
  struct Fixed {
    Word tag, index, fixed_size, size, name, tex_type, wrap_s, wrap_t, tiled, word9, word10;
    Word block1_size, block2_size;
  } fixed{};
  static constexpr std::size_t kLeastBytes = sizeof(Fixed) + sizeof(TexTable::TiledHead);
  Words fixed_rest;
  TexTable table;
  Words block1, block2;
  HeapOptional<TexExt> ext;

  static void variable_parts(auto& io, auto& r) {
    io.longer(r.fixed, r.fixed_rest);
    auto& table = r.table;
    if (r.fixed.tiled == 0) {
      io.fixed(table.untiled);
    } else {
      io.fixed(table.tiled);
      for (auto* array :
           {&table.widths, &table.heights, &table.words4, &table.words5, &table.images, &table.words7})
        io.words(*array, table.tiled.tile_count);
      io.words(table.extra0, table.tiled.extra_count);
      io.words(table.extra1, table.tiled.extra_count);
    }
    io.structure(r);
  }
};
static_assert(sizeof(Tex::Fixed) == 52);

/// A texture image: its texels, as they stand in the file.
struct Teximg {
  static constexpr Word kTag = record_tag(0x12);
  struct Fixed {
    Word tag, index, fixed_size, size, block1_size, block2_size;
  } fixed{};
  CompactArray<std::byte> texels;  ///< bytes in file order
  Words block1, block2;
  HeapOptional<TeximgExt> ext;
  /// Bytes of texels: what the record's size leaves for them. Negative when the sizes contradict each other.
  static constexpr std::int64_t texel_bytes(const Fixed& fixed) {
    return std::int64_t{fixed.size} - fixed.fixed_size - fixed.block1_size - fixed.block2_size;
  }

  static void variable_parts(auto& io, auto& r) {
    io.exact(r.fixed);
    io.bytes(r.texels, texel_bytes(r.fixed));
    io.structure(r);
  }
};
static_assert(sizeof(Teximg::Fixed) == 24);

/// An animation.
struct Anim {
  static constexpr Word kTag = kAnimTag;
  struct Fixed {
    Word tag, index, fixed_size, size, name, type, frame_rate, key_count, anim_loop, word9;
    Word block1_size, block2_size;
  } fixed{};
  Words fixed_rest;
  Words keys;  ///< as they stand in the file, one after the other
  Words block1, block2;
  HeapOptional<AnimExt> ext;
  /// Words that one key takes in the file; 0 for the forms that have none.
  static constexpr std::size_t key_words(Word type) {
    switch (type) {
      case 0:
      case 2:
        return 13;
      case 3:
        return 16;
      case 4:
        return 5;
      default:
        return 0;
    }
  }
  /// The words of one of the keys that are held.
  std::span<const Word> key(std::size_t number) const {
    const std::size_t each = key_words(fixed.type);
    return std::span<const Word>(keys).subspan(number * each, each);
  }

  static void variable_parts(auto& io, auto& r) {
    io.longer(r.fixed, r.fixed_rest);
    io.words(r.keys, std::uint64_t{r.fixed.key_count} * key_words(r.fixed.type));
    io.structure(r);
  }
};
static_assert(sizeof(Anim::Fixed) == 48);

/// One sub-record of a collision record.
struct CollSub {
  static constexpr Word kTag = record_tag(0x0d);
  struct Fixed {
    Word tag, index, fixed_size, size;
  } fixed{};
  Words fixed_rest;
  Words data;

  static void variable_parts(auto& io, auto& r) {
    io.longer(r.fixed, r.fixed_rest);
    io.block(r.data, std::int64_t{r.fixed.size} - r.fixed.fixed_size);
  }
};
static_assert(sizeof(CollSub::Fixed) == 16);

/// A collision record. Its tag breaks the pattern of the others on purpose.
struct Coll {
  static constexpr Word kTag = 0x000d1000;
  struct Fixed {
    Word tag, index, word2, word3, word4, sub_count, block1_size, block2_size;
  } fixed{};
  Words indices;
  CompactArray<CollSub> subs;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    io.words(r.indices, r.fixed.sub_count);
    io.records(r.subs, r.fixed.sub_count);
    io.blocks(r);
  }
};
static_assert(sizeof(Coll::Fixed) == 32);

/// A switch record.
struct Switch {
  static constexpr Word kTag = record_tag(0x13);
  struct Fixed {
    Word tag, index, size, word3, word4, entry_count, word6, block1_size, block2_size;
  } fixed{};
  Words entries0, entries1;
  Words block1, block2;

  static void variable_parts(auto& io, auto& r) {
    io.words(r.entries0, r.fixed.entry_count);
    io.words(r.entries1, r.fixed.entry_count);
    io.blocks(r);
  }
};
static_assert(sizeof(Switch::Fixed) == 36);

/// A name, four characters to a word, the first one in the most significant byte.
/// Also the record of the ExternalNameList, which may carry either list's tag.
struct Name {
  static constexpr Word kTag = kNameTag;
  static constexpr Word kExternalTag = record_tag(0x27);
  struct Fixed {
    Word tag, index, fixed_size, size;
  } fixed{};
  Words text;

  static void variable_parts(auto& io, auto& r) {
    io.exact(r.fixed);
    io.text(r.text, std::int64_t{r.fixed.size} - r.fixed.fixed_size);
  }
};
static_assert(sizeof(Name::Fixed) == 16);

}  // namespace qi
