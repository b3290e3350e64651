/// @file
/// The kinds of nodes that the graph shows: one table, which names, dialogs, write-backs and colours go by.
///
/// A kind stands for the records of one list; its key in templates is their type. Levels of detail, which are
/// no records of their own, have the key LevelsOfDetail. What a higher room adds to each kind is made by
/// per_kind, and compiles only when no kind lacks it.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "qilib/lists.h"
#include "qilib/qis.h"
#include "qilib/references.h"

/// The key of the nodes for the levels of detail of an object: lod_3 for those of obj_3.
struct LevelsOfDetail {};

/// The colour of a kind's nodes, "#rrggbb": on a screen with smoothed text, and on any other (there a colour
/// that the server's standard palette holds).
struct KindTint {
  std::string_view smooth, plain;
};

/// What is the same for all nodes of a kind. A kind is known by its place in the table: there are no copies.
struct NodeKind {
  const char* word;          ///< what the trace of a write-back begins with
  const char* noun;          ///< what a person calls one of them
  const char* dialog;        ///< the name of their dialogs
  const char* dialog_class;  ///< and their class
  KindTint tint;             ///< what the nodes are filled with
  /// What a node's name begins with, before the underscore: what a record of the list is called.
  std::string_view prefix = {};
  const char* label = nullptr;  ///< what each node shows in place of its name
  bool tied = false;            ///< whether deformers and animations refer to the records
  Word tag = 0;                 ///< of the records; 0: links may not touch the nodes
  /// The word in which record `number` keeps its name index; null when there is no such record.
  Word* (*name_index)(Qis& scene, Word number) = nullptr;
};

namespace kind_rows {

template <auto List>
using RecordOf =
    typename qi::RecordIn<std::remove_reference_t<decltype(qi::list_in(std::declval<Qis&>(), List))>>::Type;

/// A row of the table; `List` is the member that holds the records.
template <auto List, class Key_ = RecordOf<List>>
struct Row {
  using Key = Key_;
  using Record = RecordOf<List>;
  static constexpr auto kList = List;
  NodeKind kind;
};

template <auto List>
constexpr NodeKind on_list(NodeKind kind) {
  kind.name_index = [](Qis& scene, Word number) {
    auto* const record = qi::record_in(scene, List, number);
    return record ? &record->fixed.name : nullptr;
  };
  return kind;
}
template <auto List>
constexpr Row<List> records(NodeKind kind) {
  kind.prefix = qi::list_info(List).record;
  kind.tag = qi::list_info(List).record_tag;
  return {on_list<List>(kind)};
}
template <auto List>
constexpr Row<List> tied_records(NodeKind kind) {
  kind.tied = true;
  return records<List>(kind);
}

/// In the order in which the name of an applied dialog is searched for theirs.
inline constexpr std::tuple kAll{
    records<&Qis::scene>({"Scene", "scene", "sceneDialog", "SceneDialog", {"#ffe7a5", "#ffff55"}}),
    records<&Qis::shape_list>({"Shape", "shape", "shapeDialog", "ShapeDialog", {"#ceefc6", "#aaffaa"}}),
    records<&Qis::tex_list>({"Tex", "texture", "texDialog", "TexDialog", {"#f7c6de", "#ffaaff"}}),
    tied_records<&Qis::obj_list>({"Obj", "object", "objDialog", "ObjDialog", {"#c6def7", "#aaaaff"}}),
    records<&Qis::mat_list>({"Mat", "material", "matDialog", "MatDialog", {"#ffd6b5", "#ffaa55"}}),
    records<&Qis::cam_list>({"Cam", "camera", "camDialog", "CamDialog", {"#ced6de", "#bfbfbf"}}),
    records<&Qis::env_list>({"Env", "environment", "envDialog", "EnvDialog", {"#bdefef", "#55ffff"}}),
    records<&Qis::light_list>({"Light", "light", "lightDialog", "LightDialog", {"#fff7bd", "#ffffaa"}}),
    records<&Qis::part_list>({"Part", "part", "partDialog", "PartDialog", {"#e7f7de", "#aaffff"}}),
    records<&Qis::anim_list>({"Anim", "animation", "animDialog", "AnimDialog", {"#decef7", "#aaaaaa"}}),
    Row<&Qis::obj_list, LevelsOfDetail>{on_list<&Qis::obj_list>(
        {"LOD", "level of detail", "lodDialog", "LodDialog", {"#dedede", "#d5d5d5"}, "lod", "LOD"})},
    tied_records<&qi::ExtLists::chain_root_list>(
        {"Chainroot", "chain root", "chrootDialog", "ChainrootDialog", {"#f7bdb5", "#ffaaaa"}}),
    tied_records<&qi::ExtLists::joint_list>(
        {"Joint", "joint", "jointDialog", "JointDialog", {"#efd6bd", "#55aaaa"}}),
    tied_records<&qi::ExtLists::effector_list>(
        {"Effector", "effector", "effectorDialog", "EffectorDialog", {"#ded6a5", "#aaaa55"}}),
};

}  // namespace kind_rows

/// What `make.operator()<Key>()` gives for each kind, in the order of the table.
template <class Make>
constexpr auto per_kind(Make make) {
  return std::apply(
      [&]<class... Row>(const Row&...) {
        return std::array{make.template operator()<typename Row::Key>()...};
      },
      kind_rows::kAll);
}

inline constexpr auto kNodeKinds =
    std::apply([](const auto&... row) { return std::array{row.kind...}; }, kind_rows::kAll);

constexpr bool is_complete(const NodeKind& kind) {
  const auto is_color = [](std::string_view text) { return text.size() == 7 && text.front() == '#'; };
  const auto is_said = [](std::string_view text) { return !text.empty(); };
  return is_said(kind.prefix) && kind.prefix.find('_') == kind.prefix.npos && is_said(kind.word) &&
         is_said(kind.noun) && is_said(kind.dialog) && is_said(kind.dialog_class) &&
         is_color(kind.tint.smooth) && is_color(kind.tint.plain);
}
static_assert(std::ranges::all_of(kNodeKinds, is_complete), "a kind of nodes lacks something");

/// Where a kind stands in the table, and in what per_kind gives.
template <class Key>
inline constexpr std::size_t kKindPlace = [] {
  const auto same = per_kind([]<class Other>() { return std::is_same_v<Key, Other>; });
  return static_cast<std::size_t>(std::ranges::find(same, true) - same.begin());
}();
inline std::size_t kind_place(const NodeKind& kind) {
  return static_cast<std::size_t>(&kind - kNodeKinds.data());
}

/// The row of a kind, and what it says.
template <class Key>
using KindRowOf = std::tuple_element_t<kKindPlace<Key>, std::remove_const_t<decltype(kind_rows::kAll)>>;
template <class Key>
inline constexpr const NodeKind& kNodeKind = kNodeKinds[kKindPlace<Key>];
