/// @file
/// The references between records that the scene's graph doesn't show: names, images, geometry, targets.
///
/// `data_references(fields, record)` names every such field of a record. What `fields` offers:
///  - `slot(field, tag, value, unset)`: one reference to a record of the kind with this tag;
///  - `array(field, tag, values)`: an array of them, unset entries allowed;
///  - `node(field, node_index)`: a reference that says itself which list it points into.
#pragma once

#include "qilib/qis.h"
#include "qilib/tags.h"

namespace qi {

template <class Fields, class R>
void name_reference(Fields& fields, const R& r) {
  if constexpr (requires { r.fixed.name; }) fields.slot("name", kNameTag, r.fixed.name);
}

/// Kinds with nothing but a name, or not even that.
template <class Fields, class R>
void data_references(Fields& fields, const R& r) {
  name_reference(fields, r);
}

template <class Fields>
void data_references(Fields& fields, const Env& r) {
  name_reference(fields, r);
  fields.slot("background colour image", kTexTag, r.fixed.bg_color_image);
  fields.slot("background depth image", kTexTag, r.fixed.bg_depth_image);
}

template <class Fields>
void data_references(Fields& fields, const Cam& r) {
  name_reference(fields, r);
  fields.slot("lookat", kObjTag, r.fixed.lookat);
  fields.slot("eye", kObjTag, r.fixed.eye);
  fields.slot("up", kObjTag, r.fixed.up);
}

template <class Fields>
void data_references(Fields& fields, const Obj& r) {
  name_reference(fields, r);
  fields.array("level of detail", kObjTag, r.lod_objs);
}

/// The deformer tag says which of three lists the geometry is in; version 1 knows triangles only.
template <class Fields>
void data_references(Fields& fields, const Shape& r) {
  name_reference(fields, r);
  const Word deformer = r.ext ? r.ext->head.deformer_tag : 0;
  const bool tris = deformer != kEnvelopeTag && deformer != kClusterTag;
  fields.slot("geometry", kEnvelopeTag, deformer == kEnvelopeTag ? r.fixed.geometry : kUnset);
  fields.slot("geometry", kClusterTag, deformer == kClusterTag ? r.fixed.geometry : kUnset);
  fields.slot("geometry", Tri::kTag, tris ? r.fixed.geometry : kUnset);
}

/// A texture's images lie in one of two lists, those of a colour-indexed texture with palettes beside them.
template <class Fields>
void data_references(Fields& fields, const Tex& r) {
  name_reference(fields, r);
  const bool indexed = r.ext && r.ext->head.color_palette == 1;
  const Words images = r.fixed.tiled == 0 ? Words{r.table.untiled.image} : r.table.images;
  fields.array("image", CiImg::kTag, indexed ? images : Words{});
  fields.array("image", Teximg::kTag, indexed ? Words{} : images);
  fields.array("palette", ColorPalette::kTag, indexed ? r.ext->palettes : Words{});
}

template <class Fields>
void data_references(Fields& fields, const Anim& r) {
  name_reference(fields, r);
  if (!r.ext) return;
  const auto& head = r.ext->head;
  fields.node("orientation", head.orientation.node);
  fields.node("direction", head.direction.node);
  fields.node("up vector", head.up_vector.node);
  fields.node("preferred axis", head.preferred_axis.node);
  fields.node("position", head.position.node);
  fields.node("unique scale", head.unique_scale.node);
  fields.node("classic scale", head.classic_scale.node);
}

template <class Fields>
void data_references(Fields& fields, const Envelope& r) {
  name_reference(fields, r);
  for (const FullWeightedPart& part : r.full_weighted) {
    name_reference(fields, part);
    fields.node("full-weighted part", part.fixed.node);
  }
  for (const WeightedPart& part : r.weighted) {
    name_reference(fields, part);
    for (const QisNodeIndex& node : part.nodes) fields.node("weighted part", node);
  }
  for (const MorphPart& part : r.morphs) {
    name_reference(fields, part);
    fields.node("morph part", part.fixed.node_a);
    fields.node("morph part", part.fixed.node_b);
  }
}

template <class Fields>
void data_references(Fields& fields, const Cluster& r) {
  name_reference(fields, r);
  for (const ClusterEntry& cluster : r.clusters) {
    fields.slot("cluster name", kNameTag, cluster.name);
    fields.node("cluster", cluster.node);
  }
}

}  // namespace qi
