/// @file
/// The 28 lists of a scene in one place: name, tag, where the size stands, and the member that holds it.
#pragma once

#include <concepts>
#include <string_view>
#include <type_traits>

#include "qilib/qis.h"
#include "qilib/tags.h"

namespace qi {

/// What is the same in every scene about one list.
struct ListInfo {
  constexpr ListInfo(std::string_view list_name, std::string_view record_name, Word kind, CoreList core)
      : name(list_name), record(record_name), tag(list_tag(kind)), entry(static_cast<std::size_t>(core)) {}
  constexpr ListInfo(std::string_view list_name, std::string_view record_name, Word kind, ExtList ext)
      : name(list_name),
        record(record_name),
        tag(list_tag(kind)),
        extension(true),
        entry(static_cast<std::size_t>(ext)) {}

  std::string_view name;    ///< "ObjList"
  std::string_view record;  ///< what one of its records is called: "obj"
  Word tag;                 ///< the list's own tag, such as 0x20000
  bool extension = false;   ///< whether it is one of the nine of version 2
  std::size_t entry;        ///< of its size, in `list_num` or in the extension list size table
};

/// The word that says how many bytes the list takes in the file; 0: the list is absent.
template <class H>
requires std::same_as<std::remove_const_t<H>, Header>
auto& list_bytes(H& header, const ListInfo& info) {
  return info.extension ? header.ext_sizes[info.entry] : header.fixed.list_num[info.entry];
}

/// Calls `visit(info, list)` for every list in the order in which they stand in the file: the scene record
/// itself, then `List`s and `TwoKindList`s, the nine of version 2 last.
template <class S, class Visit>
requires std::same_as<std::remove_const_t<S>, Qis>
void for_each_list(S& scene, Visit&& visit) {
  visit(ListInfo{"SceneList", "scene", 0x01, CoreList::scene}, scene.scene);
  visit(ListInfo{"EnvList", "env", 0x10, CoreList::env}, scene.env_list);
  visit(ListInfo{"CamList", "cam", 0x0e, CoreList::cam}, scene.cam_list);
  visit(ListInfo{"LightList", "light", 0x0f, CoreList::light}, scene.light_list);
  visit(ListInfo{"ObjList", "obj", 0x02, CoreList::obj}, scene.obj_list);
  visit(ListInfo{"ShapeList", "shape", 0x03, CoreList::shape}, scene.shape_list);
  visit(ListInfo{"VtxList", "vtx", 0x04, CoreList::vtx}, scene.vtx_list);
  visit(ListInfo{"TriList", "tri", 0x08, CoreList::tri}, scene.tri_list);
  visit(ListInfo{"ColorList", "color", 0x05, CoreList::color}, scene.color_list);
  visit(ListInfo{"VectorList", "vector", 0x06, CoreList::vector}, scene.vector_list);
  visit(ListInfo{"StList", "st", 0x07, CoreList::st}, scene.st_list);
  visit(ListInfo{"PartList", "part", 0x09, CoreList::part}, scene.part_list);
  visit(ListInfo{"MatList", "mat", 0x0a, CoreList::mat}, scene.mat_list);
  visit(ListInfo{"TexList", "tex", 0x0b, CoreList::tex}, scene.tex_list);
  visit(ListInfo{"TeximgList", "teximg", 0x12, CoreList::teximg}, scene.teximg_list);
  visit(ListInfo{"AnimList", "anim", 0x0c, CoreList::anim}, scene.anim_list);
  visit(ListInfo{"CollList", "coll", 0x0d, CoreList::coll}, scene.coll_list);
  visit(ListInfo{"SwitchList", "switch", 0x13, CoreList::switch_}, scene.switch_list);
  visit(ListInfo{"NameList", "name", 0x11, CoreList::name}, scene.name_list);
  visit(ListInfo{"CiImgList", "ciimg", 0x20, ExtList::ciimg}, scene.ext.ciimg_list);
  visit(ListInfo{"ColorPaletteList", "palette", 0x21, ExtList::color_palette}, scene.ext.color_palette_list);
  visit(ListInfo{"EnvelopeList", "envelope", 0x22, ExtList::envelope}, scene.ext.envelope_list);
  visit(ListInfo{"ClusterList", "cluster", 0x28, ExtList::cluster}, scene.ext.cluster_list);
  visit(ListInfo{"WeightList", "weight", 0x23, ExtList::weight}, scene.ext.weight_list);
  visit(ListInfo{"ChainRootList", "ChainRoot", 0x24, ExtList::chain_root}, scene.ext.chain_root_list);
  visit(ListInfo{"JointList", "joint", 0x25, ExtList::joint}, scene.ext.joint_list);
  visit(ListInfo{"EffectorList", "effector", 0x26, ExtList::effector}, scene.ext.effector_list);
  visit(ListInfo{"ExternalNameList", "external_name", 0x27, ExtList::external_name},
        scene.ext.external_name_list);
}

/// How many records each kind of list holds.
constexpr std::size_t record_count(const Scene&) { return 1; }
template <class R>
std::size_t record_count(const List<R>& list) {
  return list.records.size();
}
template <class R1, class R2>
std::size_t record_count(const TwoKindList<R1, R2>& list) {
  return list.records1.size() + list.records2.size();
}

/// Calls `visit(number, record)` for every record of a list, numbered from 0 within its kind.
template <class S, class Visit>
requires std::same_as<std::remove_const_t<S>, Scene>
void for_each_record(S& scene, Visit&& visit) { visit(std::size_t{0}, scene); }
template <class L, class Visit>
requires requires(L& list) { list.records; }
void for_each_record(L& list, Visit&& visit) {
  for (std::size_t i = 0; i < list.records.size(); ++i) visit(i, list.records[i]);
}
template <class L, class Visit>
requires requires(L& list) { list.records1; }
void for_each_record(L& list, Visit&& visit) {
  for (std::size_t i = 0; i < list.records1.size(); ++i) visit(i, list.records1[i]);
  for (std::size_t i = 0; i < list.records2.size(); ++i) visit(i, list.records2[i]);
}

}  // namespace qi
