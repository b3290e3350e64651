/// @file
/// The table of references between records.
#include "qilib/references.h"

#include <algorithm>

#include "qilib/lists.h"

namespace qi {
namespace {

/// An index array whose count and entries stand in the record itself.
template <auto Owner, auto Entries, auto Count>
constexpr Reference array(Word child) {
  return {.parent = list_info(Owner).record_tag,
          .child = child,
          .place = [](Qis& scene, Word number) -> Place {
            auto* record = record_in(scene, Owner, number);
            if (!record || (record->*Entries).size() != record->fixed.*Count) return {};
            return {.entries = &(record->*Entries), .count = &(record->fixed.*Count)};
          },
          .held = [](const Qis& scene, Word number) -> std::span<const Word> {
            const auto* record = record_in(scene, Owner, number);
            if (!record) return {};
            return record->*Entries;
          }};
}

template <auto Owner, auto Entries, auto Count>
constexpr Reference ext_array(Word child) {
  return {.parent = list_info(Owner).record_tag,
          .child = child,
          .place = [](Qis& scene, Word number) -> Place {
            auto* record = record_in(scene, Owner, number);
            if (!record || !record->ext) return {};
            auto& ext = *record->ext;
            if ((ext.*Entries).size() != ext.head.*Count) return {};
            return {.entries = &(ext.*Entries),
                    .count = &(ext.head.*Count),
                    .block1_size = &record->fixed.block1_size};
          },
          .held = [](const Qis& scene, Word number) -> std::span<const Word> {
            const auto* record = record_in(scene, Owner, number);
            if (!record || !record->ext) return {};
            return (*record->ext).*Entries;
          }};
}

template <auto Owner, auto Slot>
constexpr Reference slot(Word child, Word unset = kUnset) {
  return {.parent = list_info(Owner).record_tag,
          .child = child,
          .single = true,
          .unset = unset,
          .place = [](Qis& scene, Word number) -> Place {
            auto* record = record_in(scene, Owner, number);
            if (!record) return {};
            return {.slot = &(record->fixed.*Slot)};
          },
          .held = [](const Qis& scene, Word number) -> std::span<const Word> {
            const auto* record = record_in(scene, Owner, number);
            if (!record) return {};
            return {&(record->fixed.*Slot), 1};
          }};
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
    array<&Qis::scene, &Scene::objs, &Scene::Fixed::obj_count>(kObjTag),
    array<&Qis::scene, &Scene::envs, &Scene::Fixed::env_count>(kEnvTag),
    array<&Qis::scene, &Scene::cams, &Scene::Fixed::cam_count>(kCamTag),
    array<&Qis::scene, &Scene::lights, &Scene::Fixed::light_count>(kLightTag),

    slot<&Qis::obj_list, &Obj::Fixed::shape>(kShapeTag),
    slot<&Qis::obj_list, &Obj::Fixed::mat>(kMatTag),
    slot<&Qis::obj_list, &Obj::Fixed::anim>(kAnimTag),
    without_two_loops(
        limited(array<&Qis::obj_list, &Obj::children, &Obj::Fixed::child_count>(kObjTag), Obj::kMaxChildren)),

    slot<&Qis::shape_list, &Shape::Fixed::mat>(kMatTag),
    array<&Qis::shape_list, &Shape::parts, &Shape::Fixed::part_count>(kPartTag),

    // Files say "no material" of a part in their own way; kUnset in a part is a reference like any other.
    slot<&Qis::part_list, &Part::Fixed::mat>(kMatTag, kUnsetPartMaterial),

    limited(array<&Qis::mat_list, &Mat::texs, &Mat::Fixed::tex_count>(kTexTag), Mat::kMaxTextures),

    ext_array<&Qis::scene, &SceneExt::chain_roots, &SceneExt::Head::chain_root_count>(kChainRootTag),

    ext_array<&Qis::obj_list, &ObjExt::chain_roots, &ObjExt::Head::chain_root_count>(kChainRootTag),

    array<kChainRoots, &ChainRoot::objs, &ChainRoot::Fixed::obj_count>(kObjTag),
    slot<kChainRoots, &ChainRoot::Fixed::anim>(kAnimTag),
    slot<kChainRoots, &ChainRoot::Fixed::joint>(kJointTag),

    array<kJoints, &Joint::objs, &Joint::Fixed::obj_count>(kObjTag),
    slot<kJoints, &Joint::Fixed::anim>(kAnimTag),
    slot<kJoints, &Joint::Fixed::child_joint>(kJointTag),
    slot<kJoints, &Joint::Fixed::effector>(kEffectorTag),

    array<kEffectors, &Effector::objs, &Effector::Fixed::obj_count>(kObjTag),
    slot<kEffectors, &Effector::Fixed::anim>(kAnimTag),
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
