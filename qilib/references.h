/// @file
/// References between records: which word or index array of a record points into which list.
///
/// Those that the scene's graph shows are a table, `references()`, which the edits go by, too. All others
/// (names, images, geometry, targets) are named by `data_references()`.
#pragma once

#include <span>
#include <string_view>

#include "qilib/change.h"
#include "qilib/lists.h"
#include "qilib/qis.h"

namespace qi {

/// Number of records with this record or list tag. A SceneList that is absent has no scene record to edit.
std::size_t record_count(const Qis& scene, Word tag);

/// Record `number` of the list that a member of the scene or of its extension lists holds; null when the list
/// has no such record. The scene record is number 0, where there is one.
/// Who gets a record that is not const is about to change it.
template <class S, class Owner, class R>
auto* record_in(S& scene, List<R> Owner::*list, Word number) {
  if constexpr (!std::is_const_v<S>) about_to_change(scene, list_info(list).record_tag, number);
  auto& records = list_in(scene, list).records;
  return number < records.size() ? &records[number] : nullptr;
}
template <class S>
auto* record_in(S& scene, Scene Qis::*record, Word number) {
  if constexpr (!std::is_const_v<S>) about_to_change(scene, kSceneTag, number);
  return number < record_count(scene, kSceneTag) ? &(scene.*record) : nullptr;
}

/// Where one record keeps its references to records of one kind, ready to be changed.
struct Place {
  Words* entries = nullptr;     ///< the index array; null for a slot
  Word* count = nullptr;        ///< the word that counts it
  Word* block1_size = nullptr;  ///< for an array inside a version-2 structure: the bytes of its block
  Word* slot = nullptr;         ///< the single-valued reference; null for an array
  explicit operator bool() const { return entries || slot; }
};

/// One way in which records of a kind refer to records of a kind.
struct Reference {
  static constexpr Word kNoLimit = 0xFFFFFFFF;

  Word parent = 0, child = 0;   ///< record tags
  std::string_view field = {};  ///< of the parent: "children"
  bool single = false;          ///< a slot, not an array
  Word unset = kUnset;          ///< what an empty slot holds
  Word limit = kNoLimit;        ///< an array of just this count takes no further entry
  /// A child that the array holds already is accepted again: no second entry, but the size grows.
  bool repeats = false;
  /// A parent that is among the child's own children is refused.
  bool refuses_two_loop = false;
  /// The place in record `number` of the parent kind; an empty one when there is no such record, when it has
  /// no version-2 structure for it, or when its count and array disagree (a file that was half read).
  Place (*place)(Qis& scene, Word number) = nullptr;
  /// Whether that is there, without changing anything.
  bool (*has_place)(const Qis& scene, Word number) = nullptr;
  /// What that place holds (a slot: its one word, set or not); nothing when the place doesn't exist.
  std::span<const Word> (*held)(const Qis& scene, Word number) = nullptr;
};

/// Every reference that the scene's graph shows, in the order of the graph's arcs: consecutive rows of one
/// parent kind are walked together, record by record. Those from the first version-2 row on are walked in
/// version-2 scenes only.
std::span<const Reference> references();

/// True for references to or from a kind that version-1 files don't have.
bool is_version2(const Reference& reference);

/// The row for this pair of record tags, or null.
const Reference* find_reference(Word parent, Word child);

/// The word as a span, which is empty unless it `applies`.
template <class W>
std::span<W> word_if(bool applies, W& word) {
  return {&word, applies ? 1U : 0U};
}

template <class Fields, class R>
void name_reference(Fields& fields, R& r) {
  if constexpr (requires { r.fixed.name; }) fields.words("name", kNameTag, word_if(true, r.fixed.name));
}

/// `data_references(fields, record)` names every field of a record that refers to another and that the graph
/// doesn't show. The record may be const, or one whose references are to be changed. What `fields` offers:
///  - `words(field, tag, words)`: a span of words that refer to records of the kind with this tag, or hold
///    kUnset; an empty one where this record could refer to such a kind but does not;
///  - `node(field, node_index)`: a reference that says itself which list it points into.
///
/// This one is for kinds with nothing but a name, or not even that.
template <class Fields, class R>
void data_references(Fields& fields, R& r) {
  name_reference(fields, r);
}

template <class Fields, Like<Env> R>
void data_references(Fields& fields, R& r) {
  name_reference(fields, r);
  fields.words("background colour image", kTexTag, word_if(true, r.fixed.bg_color_image));
  fields.words("background depth image", kTexTag, word_if(true, r.fixed.bg_depth_image));
}

template <class Fields, Like<Cam> R>
void data_references(Fields& fields, R& r) {
  name_reference(fields, r);
  fields.words("lookat", kObjTag, word_if(true, r.fixed.lookat));
  fields.words("eye", kObjTag, word_if(true, r.fixed.eye));
  fields.words("up", kObjTag, word_if(true, r.fixed.up));
}

template <class Fields, Like<Obj> R>
void data_references(Fields& fields, R& r) {
  name_reference(fields, r);
  fields.words("level of detail", kObjTag, std::span(r.lod_objs));
}

/// The deformer tag says which of three lists the geometry is in; version 1 knows triangles only.
template <class Fields, Like<Shape> R>
void data_references(Fields& fields, R& r) {
  name_reference(fields, r);
  const Word deformer = r.ext ? r.ext->head.deformer_tag : 0;
  const bool tris = deformer != kEnvelopeTag && deformer != kClusterTag;
  fields.words("geometry", kEnvelopeTag, word_if(deformer == kEnvelopeTag, r.fixed.geometry));
  fields.words("geometry", kClusterTag, word_if(deformer == kClusterTag, r.fixed.geometry));
  fields.words("geometry", Tri::kTag, word_if(tris, r.fixed.geometry));
}

/// A texture's images lie in one of two lists, those of a colour-indexed texture with palettes beside them.
template <class Fields, Like<Tex> R>
void data_references(Fields& fields, R& r) {
  name_reference(fields, r);
  const bool indexed = r.ext && r.ext->head.color_palette == 1;
  const auto images = r.fixed.tiled == 0 ? word_if(true, r.table.untiled.image) : std::span(r.table.images);
  const auto none = images.first(0);
  fields.words("image", CiImg::kTag, indexed ? images : none);
  fields.words("image", Teximg::kTag, indexed ? none : images);
  fields.words("palette", ColorPalette::kTag, indexed ? std::span(r.ext->palettes) : none);
}

template <class Fields, Like<Anim> R>
void data_references(Fields& fields, R& r) {
  name_reference(fields, r);
  if (!r.ext) return;
  auto& head = r.ext->head;
  fields.node("orientation", head.orientation.node);
  fields.node("direction", head.direction.node);
  fields.node("up vector", head.up_vector.node);
  fields.node("preferred axis", head.preferred_axis.node);
  fields.node("position", head.position.node);
  fields.node("unique scale", head.unique_scale.node);
  fields.node("classic scale", head.classic_scale.node);
}

template <class Fields, Like<Envelope> R>
void data_references(Fields& fields, R& r) {
  name_reference(fields, r);
  for (auto& part : r.full_weighted) {
    name_reference(fields, part);
    fields.node("full-weighted part", part.fixed.node);
  }
  for (auto& part : r.weighted) {
    name_reference(fields, part);
    for (auto& node : part.nodes) fields.node("weighted part", node);
  }
  for (auto& part : r.morphs) {
    name_reference(fields, part);
    fields.node("morph part", part.fixed.node_a);
    fields.node("morph part", part.fixed.node_b);
  }
}

template <class Fields, Like<Cluster> R>
void data_references(Fields& fields, R& r) {
  name_reference(fields, r);
  for (auto& cluster : r.clusters) {
    fields.words("cluster name", kNameTag, word_if(true, cluster.name));
    fields.node("cluster", cluster.node);
  }
}

}  // namespace qi
