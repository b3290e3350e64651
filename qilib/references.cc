/// @file
/// The table of references between records.
#include "qilib/references.h"

#include <algorithm>

#include "qilib/lists.h"

namespace qi {
namespace {

// Where a record keeps references to one kind.

/// An index array whose count and entries stand in the record itself.
template <auto Entries, auto Count>
struct InRecord {
  static bool is_in(const auto& record) { return (record.*Entries).size() == record.fixed.*Count; }
  static Place place(auto& record) {
    return {.entries = &(record.*Entries), .count = &(record.fixed.*Count)};
  }
  static std::span<const Word> held(const auto& record) { return record.*Entries; }
};

/// An index array in the record's version-2 structure.
template <auto Entries, auto Count>
struct InExt {
  static bool is_in(const auto& record) {
    return record.ext && ((*record.ext).*Entries).size() == record.ext->head.*Count;
  }
  static Place place(auto& record) {
    return {.entries = &((*record.ext).*Entries),
            .count = &(record.ext->head.*Count),
            .block1_size = &record.fixed.block1_size};
  }
  static std::span<const Word> held(const auto& record) {
    if (!record.ext) return {};
    return (*record.ext).*Entries;
  }
};

/// A slot among the record's fixed words.
template <auto Slot>
struct FixedWord {
  static bool is_in(const auto&) { return true; }
  static Place place(auto& record) { return {.slot = &(record.fixed.*Slot)}; }
  static std::span<const Word> held(const auto& record) { return {&(record.fixed.*Slot), 1}; }
};

template <auto Owner, class Where>
constexpr Reference reference(Word child, std::string_view field) {
  return {.parent = list_info(Owner).record_tag,
          .child = child,
          .field = field,
          .place = [](Qis& scene, Word number) -> Place {
            auto* record = record_in(scene, Owner, number);
            return record && Where::is_in(*record) ? Where::place(*record) : Place{};
          },
          .has_place =
              [](const Qis& scene, Word number) {
                const auto* record = record_in(scene, Owner, number);
                return record && Where::is_in(*record);
              },
          .held = [](const Qis& scene, Word number) -> std::span<const Word> {
            const auto* record = record_in(scene, Owner, number);
            return record ? Where::held(*record) : std::span<const Word>{};
          }};
}

template <auto Owner, auto Entries, auto Count>
constexpr Reference array(Word child, std::string_view field) {
  return reference<Owner, InRecord<Entries, Count>>(child, field);
}
template <auto Owner, auto Entries, auto Count>
constexpr Reference ext_array(Word child, std::string_view field) {
  return reference<Owner, InExt<Entries, Count>>(child, field);
}
template <auto Owner, auto Slot>
constexpr Reference slot(Word child, std::string_view field, Word unset = kUnset) {
  Reference row = reference<Owner, FixedWord<Slot>>(child, field);
  row.single = true;
  row.unset = unset;
  return row;
}
constexpr Reference limited(Reference row, Word limit) {
  row.limit = limit;
  row.repeats = true;
  return row;
}
constexpr Reference without_two_loops(Reference row) {
  row.refuses_two_loop = true;
  return row;
}

constexpr auto kChainRoots = &ExtLists::chain_root_list;
constexpr auto kJoints = &ExtLists::joint_list;
constexpr auto kEffectors = &ExtLists::effector_list;

constexpr Reference kReferences[] = {
    array<&Qis::scene, &Scene::objs, &Scene::Fixed::obj_count>(kObjTag, "objs"),
    array<&Qis::scene, &Scene::envs, &Scene::Fixed::env_count>(kEnvTag, "envs"),
    array<&Qis::scene, &Scene::cams, &Scene::Fixed::cam_count>(kCamTag, "cams"),
    array<&Qis::scene, &Scene::lights, &Scene::Fixed::light_count>(kLightTag, "lights"),

    slot<&Qis::obj_list, &Obj::Fixed::shape>(kShapeTag, "shape"),
    slot<&Qis::obj_list, &Obj::Fixed::mat>(kMatTag, "mat"),
    slot<&Qis::obj_list, &Obj::Fixed::anim>(kAnimTag, "anim"),
    without_two_loops(
        limited(array<&Qis::obj_list, &Obj::children, &Obj::Fixed::child_count>(kObjTag, "children"),
                Obj::kMaxChildren)),

    slot<&Qis::shape_list, &Shape::Fixed::mat>(kMatTag, "mat"),
    array<&Qis::shape_list, &Shape::parts, &Shape::Fixed::part_count>(kPartTag, "parts"),

    // Files say "no material" of a part in their own way; kUnset in a part is a reference like any other.
    slot<&Qis::part_list, &Part::Fixed::mat>(kMatTag, "mat", kUnsetPartMaterial),

    limited(array<&Qis::mat_list, &Mat::texs, &Mat::Fixed::tex_count>(kTexTag, "texs"), Mat::kMaxTextures),

    ext_array<&Qis::scene, &SceneExt::chain_roots, &SceneExt::Head::chain_root_count>(kChainRootTag,
                                                                                      "chain_roots"),

    ext_array<&Qis::obj_list, &ObjExt::chain_roots, &ObjExt::Head::chain_root_count>(kChainRootTag,
                                                                                     "chain_roots"),

    array<kChainRoots, &ChainRoot::objs, &ChainRoot::Fixed::obj_count>(kObjTag, "objs"),
    slot<kChainRoots, &ChainRoot::Fixed::anim>(kAnimTag, "anim"),
    slot<kChainRoots, &ChainRoot::Fixed::joint>(kJointTag, "joint"),

    array<kJoints, &Joint::objs, &Joint::Fixed::obj_count>(kObjTag, "objs"),
    slot<kJoints, &Joint::Fixed::anim>(kAnimTag, "anim"),
    slot<kJoints, &Joint::Fixed::child_joint>(kJointTag, "child_joint"),
    slot<kJoints, &Joint::Fixed::effector>(kEffectorTag, "effector"),

    array<kEffectors, &Effector::objs, &Effector::Fixed::obj_count>(kObjTag, "objs"),
    slot<kEffectors, &Effector::Fixed::anim>(kAnimTag, "anim"),
};

}  // namespace

std::size_t record_count(const Qis& scene, Word tag) {
  std::size_t count = 0;
  for_each_list(scene, [&](const ListInfo& info, const auto& list) {
    const bool absent_scene_record = info.tag == kSceneTag && list_bytes(scene.header, info) == 0;
    if (info.tag == list_of(tag) && !absent_scene_record) count = record_count(list);
  });
  return count;
}

std::span<const Reference> references() { return kReferences; }

bool is_version2(const Reference& reference) {
  return reference.parent >= kChainRootTag || reference.child >= kChainRootTag;
}

const Reference* find_reference(Word parent, Word child) {
  const auto* row = std::find_if(std::begin(kReferences), std::end(kReferences),
                                 [&](const Reference& r) { return r.parent == parent && r.child == child; });
  return row == std::end(kReferences) ? nullptr : row;
}

}  // namespace qi
