/// @file
/// The 28 lists of a scene in one table: name, tags, where the size stands, and the member that holds it.
#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "qilib/qis.h"
#include "qilib/tags.h"

namespace qi {

/// Whether edits change the sizes that a list and its records state. What is added or taken in other lists is
/// counted in the file's size alone.
enum class Resized : bool { no, yes };

/// What is the same in every scene about one list.
struct ListInfo {
  std::string_view name;    ///< "ObjList"
  std::string_view record;  ///< what one of its records is called: "obj"
  std::size_t entry;        ///< of its size, in `list_num` or in the extension list size table
  Resized resized;
  Word record_tag;  ///< the tag of its (first kind of) records, such as 0x20100; the SceneList's: its own
  bool extension;   ///< whether it is one of the nine of version 2
  Word tag = list_of(record_tag);  ///< the list's own tag, such as 0x20000
};

/// The list that a member of the scene or of its extension lists holds.
template <class S, class L>
auto& list_in(S& scene, L Qis::*list) {
  return scene.*list;
}
template <class S, class L>
auto& list_in(S& scene, L ExtLists::*list) {
  return scene.ext.*list;
}

/// The kind of record in a list, the first one if there are two.
template <class L>
struct RecordIn {
  using Type = L;  // the SceneList is its record
};
template <class R>
struct RecordIn<List<R>> {
  using Type = R;
};
template <class R1, class R2>
struct RecordIn<TwoKindList<R1, R2>> {
  using Type = R1;
};

/// A row of the table of the lists.
template <class Owner, class L>
struct ListRow {
  ListInfo info;
  L Owner::*list;

  constexpr ListRow(std::string_view name, std::string_view record, L Owner::*member, std::size_t entry,
                    Resized resized = Resized::no, Word record_tag = RecordIn<L>::Type::kTag)
      : info{name, record, entry, resized, record_tag, std::same_as<Owner, ExtLists>}, list(member) {}

  template <class Member>
  constexpr bool holds(Member member) const {
    if constexpr (std::same_as<Member, L Owner::*>) {
      return member == list;
    } else {
      return false;
    }
  }
};

/// The lists in the order in which they stand in the file: the scene record itself, then `List`s and
/// `TwoKindList`s, the nine of version 2 last.
inline constexpr std::tuple kLists{
    ListRow{"SceneList", "scene", &Qis::scene, 0, Resized::yes},
    ListRow{"EnvList", "env", &Qis::env_list, 1},
    ListRow{"CamList", "cam", &Qis::cam_list, 2},
    ListRow{"LightList", "light", &Qis::light_list, 3},
    ListRow{"ObjList", "obj", &Qis::obj_list, 4, Resized::yes},
    ListRow{"ShapeList", "shape", &Qis::shape_list, 5},
    ListRow{"VtxList", "vtx", &Qis::vtx_list, 6},
    ListRow{"TriList", "tri", &Qis::tri_list, 10},  // the directory has its size after the StList's
    ListRow{"ColorList", "color", &Qis::color_list, 7},
    ListRow{"VectorList", "vector", &Qis::vector_list, 8},
    ListRow{"StList", "st", &Qis::st_list, 9},
    ListRow{"PartList", "part", &Qis::part_list, 11},
    ListRow{"MatList", "mat", &Qis::mat_list, 12, Resized::yes},
    ListRow{"TexList", "tex", &Qis::tex_list, 13},
    ListRow{"TeximgList", "teximg", &Qis::teximg_list, 14},
    ListRow{"AnimList", "anim", &Qis::anim_list, 15},
    ListRow{"CollList", "coll", &Qis::coll_list, 16},
    ListRow{"SwitchList", "switch", &Qis::switch_list, 17},
    ListRow{"NameList", "name", &Qis::name_list, 18, Resized::yes},
    ListRow{"CiImgList", "ciimg", &ExtLists::ciimg_list, 0},
    ListRow{"ColorPaletteList", "palette", &ExtLists::color_palette_list, 1},
    ListRow{"EnvelopeList", "envelope", &ExtLists::envelope_list, 2, Resized::yes},
    ListRow{"ClusterList", "cluster", &ExtLists::cluster_list, 3, Resized::yes},
    ListRow{"WeightList", "weight", &ExtLists::weight_list, 4, Resized::yes},
    ListRow{"ChainRootList", "ChainRoot", &ExtLists::chain_root_list, 5, Resized::yes},
    ListRow{"JointList", "joint", &ExtLists::joint_list, 6, Resized::yes},
    ListRow{"EffectorList", "effector", &ExtLists::effector_list, 7, Resized::yes},
    ListRow{"ExternalNameList", "external_name", &ExtLists::external_name_list, 8, Resized::no,
            Name::kExternalTag},
};

static_assert(
    [] {
      std::array<int, kCoreLists> core{};
      std::array<int, kExtLists> ext{};
      const auto count = [&](const ListInfo& info) {
        ++(info.extension ? ext.at(info.entry) : core.at(info.entry));
      };
      std::apply([&](const auto&... row) { (count(row.info), ...); }, kLists);
      const auto once = [](int times) { return times == 1; };
      return std::ranges::all_of(core, once) && std::ranges::all_of(ext, once);
    }(),
    "every size word of the header belongs to one list");

/// The row of the list that a member of the scene or of its extension lists holds.
template <class Member>
constexpr ListInfo list_info(Member member) {
  return std::apply(
      [&](const auto&... row) {
        const ListInfo* found = nullptr;
        ((found = row.holds(member) ? &row.info : found), ...);
        return *found;
      },
      kLists);
}

/// The row of the list of that name, or null.
constexpr const ListInfo* find_list(std::string_view name) {
  return std::apply(
      [&](const auto&... row) {
        const ListInfo* found = nullptr;
        ((found = row.info.name == name ? &row.info : found), ...);
        return found;
      },
      kLists);
}

/// The word that says how many bytes the list takes in the file; 0: the list is absent.
template <class H>
requires std::same_as<std::remove_const_t<H>, Header>
auto& list_bytes(H& header, const ListInfo& info) {
  return info.extension ? header.ext_sizes[info.entry] : header.fixed.list_num[info.entry];
}

/// Calls `visit(info, list)` for every list, in the order in which they stand in the file.
template <class S, class Visit>
requires std::same_as<std::remove_const_t<S>, Qis>
void for_each_list(S& scene, Visit&& visit) {
  std::apply([&](const auto&... row) { (visit(row.info, list_in(scene, row.list)), ...); }, kLists);
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
